// SPDX-License-Identifier: MIT
#include "formatexportpage.h"

#include "exportdetails.h"
#include "support/child.h"
#include "support/formrows.h"
#include "support/lineformats.h"
#include "support/markingtranslator.h"
#include "support/series.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>

#include <memory>

using testsupport::choose;
using testsupport::click;
using testsupport::compareRows;
using testsupport::fieldsOf;
using testsupport::items;

class TestFormatExportPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itsTextsAreItsOwn();
    void cleanup();

    void hasItsRowsInOrder();
    void hasASizeToBeginWith();
    void theBoxesFitTheirContents();
    void showsWholeLineFormats();
    void offersItsFormatsInOrder();
    void beginsWithTheFirstOfEach();
    void fillsInWhatIsChosen_data();
    void fillsInWhatIsChosen();
    void fillsInNothingElse();
    void isAlwaysComplete();

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_page.get(), name);
    }
    ExportDetails details() const
    {
        ExportDetails details;
        m_page->getExportDetails(details);
        return details;
    }

    std::unique_ptr<FormatExportPage> m_page;
};

void TestFormatExportPage::init()
{
    testsupport::failOnStrayWarnings();
    m_page = std::make_unique<FormatExportPage>();
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void TestFormatExportPage::cleanup()
{
    m_page.reset();
}

void TestFormatExportPage::hasItsRowsInOrder()
{
    QCOMPARE(m_page->objectName(), QStringLiteral("FormatExportPage"));
    QCOMPARE(m_page->title(), QStringLiteral("Формат"));
    QCOMPARE(m_page->windowTitle(), QStringLiteral("Form"));

    compareRows(m_page.get(), 0,
                {{"lineFormat", "label_4", "Формат строки:"},
                 {"separator", "label", "Разделитель:"},
                 {"dateFormat", "label_2", "Формат даты:"},
                 {"timeFormat", "label_3", "Формат времени:"}});
    const auto* const header = child<QCheckBox>("writeHead");
    QVERIFY(header);
    QCOMPARE(header->text(), QStringLiteral("Добавить заголовок"));
    QVERIFY(header->y() > child<QComboBox>("timeFormat")->y());
}

void TestFormatExportPage::hasASizeToBeginWith()
{
    QCOMPARE(FormatExportPage().size(), QSize(546, 380));
}

void TestFormatExportPage::theBoxesFitTheirContents()
{
    for (const char* name : {"separator", "dateFormat", "timeFormat"})
        QCOMPARE(child<QComboBox>(name)->sizeAdjustPolicy(), QComboBox::AdjustToContents);
}

void TestFormatExportPage::showsWholeLineFormats()
{
    const auto* const box = child<QComboBox>("lineFormat");
    QVERIFY(box->width() >= box->sizeHint().width());
    QVERIFY(box->width() > box->fontMetrics().horizontalAdvance(box->itemText(0)));
}

void TestFormatExportPage::offersItsFormatsInOrder()
{
    QStringList offered;
    for (const auto& [text, data] : items(child<QComboBox>("lineFormat")))
        offered.append(text);
    QCOMPARE(offered,
             QStringList(std::begin(testsupport::lineFormats), std::end(testsupport::lineFormats)));
    QCOMPARE(items(child<QComboBox>("separator")), testsupport::separatorItems());
    QCOMPARE(items(child<QComboBox>("dateFormat")), testsupport::dateFormatItems());
    QCOMPARE(items(child<QComboBox>("timeFormat")), testsupport::timeFormatItems());
}

void TestFormatExportPage::beginsWithTheFirstOfEach()
{
    const ExportDetails details = this->details();
    QCOMPARE(details.lineFormat, QLatin1String(testsupport::lineFormats[0]));
    QCOMPARE(fieldsOf(details),
             QStringList({"0", "0", "0", "", "", "", "0", ",", "yyyyMMdd", "hhmmss", "", ""}));
    QVERIFY(details.addHeader);
}

void TestFormatExportPage::fillsInWhatIsChosen_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("index");
    const FormatExportPage page;
    for (const char* name : {"lineFormat", "separator", "dateFormat", "timeFormat"}) {
        for (int i = 0; i < testsupport::child<QComboBox>(&page, name)->count(); ++i)
            QTest::addRow("%s %d", name, i) << QString::fromLatin1(name) << i;
    }
}

void TestFormatExportPage::fillsInWhatIsChosen()
{
    QFETCH(const QString, box);
    QFETCH(const int, index);
    auto* const combo = child<QComboBox>(qPrintable(box));
    choose(combo, index);
    click(child<QCheckBox>("writeHead"));

    const ExportDetails details = this->details();
    const auto expected = [&](const char* name) {
        const auto* const each = child<QComboBox>(name);
        const QVariant data = each->itemData(box == QLatin1String(name) ? index : 0);
        return data.toString();
    };
    QCOMPARE(details.lineFormat,
             child<QComboBox>("lineFormat")->itemText(box == u"lineFormat" ? index : 0));
    QCOMPARE(details.separator, expected("separator"));
    QCOMPARE(details.dateFormat, expected("dateFormat"));
    QCOMPARE(details.timeFormat, expected("timeFormat"));
    QVERIFY(!details.addHeader);
}

void TestFormatExportPage::fillsInNothingElse()
{
    ExportDetails details;
    details.stockId = 1;
    details.boardId = 2;
    details.securityId = 3;
    details.stockCode = QStringLiteral("stock");
    details.boardCode = QStringLiteral("board");
    details.securityName = QStringLiteral("security");
    details.timeframe = 4;
    details.dateFrom = QDate(2024, 3, 1);
    details.dateTo = QDate(2024, 3, 15);
    details.outputPath = QStringLiteral("path");
    m_page->getExportDetails(details);
    QCOMPARE(fieldsOf(details), QStringList({"1", "2", "3", "stock", "board", "security", "4", ",",
                                             "yyyyMMdd", "hhmmss", "", ""}));
    QCOMPARE(details.dateFrom, QDate(2024, 3, 1));
    QCOMPARE(details.dateTo, QDate(2024, 3, 15));
    QCOMPARE(details.outputPath, QStringLiteral("path"));
}

void TestFormatExportPage::isAlwaysComplete()
{
    QVERIFY(m_page->isComplete());
    choose(child<QComboBox>("lineFormat"), 14);
    click(child<QCheckBox>("writeHead"));
    QVERIFY(m_page->isComplete());
}

void TestFormatExportPage::itsTextsAreItsOwn()
{
    const testsupport::MarkingTranslator translator;
    const FormatExportPage page;
    testsupport::compareContext(&page, {"separator", "dateFormat", "timeFormat"},
                                QStringLiteral("FormatExportPage"));
    QCOMPARE(page.title(), QStringLiteral("FormatExportPage|Формат"));
}

QTEST_MAIN(TestFormatExportPage)
#include "tst_formatexportpage.moc"
