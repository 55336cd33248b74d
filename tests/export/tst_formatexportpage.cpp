// SPDX-License-Identifier: MIT
#include "formatexportpage.h"

#include "exportdetails.h"
#include "support/markingtranslator.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

#include <memory>

using testsupport::choose;
using testsupport::click;

namespace {

using Items = QList<std::pair<QString, QString>>;

// Text and data of every item.
Items items(const QComboBox* box)
{
    Items all;
    for (int i = 0; i < box->count(); ++i)
        all.append({box->itemText(i), box->itemData(i).toString()});
    return all;
}

} // namespace

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
        return m_page->findChild<Widget*>(QLatin1String(name));
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

    struct Row
    {
        const char* field;
        const char* label;
        const char* text;
    };
    const QList<Row> rows{{"lineFormat", "label_4", "Формат строки:"},
                          {"separator", "label", "Разделитель:"},
                          {"dateFormat", "label_2", "Формат даты:"},
                          {"timeFormat", "label_3", "Формат времени:"}};
    auto* const form = qobject_cast<QFormLayout*>(m_page->layout());
    QVERIFY(form);
    for (int i = 0; i < rows.size(); ++i) {
        const auto* const label =
            qobject_cast<QLabel*>(form->itemAt(i, QFormLayout::LabelRole)->widget());
        QWidget* const field = form->itemAt(i, QFormLayout::FieldRole)->widget();
        QVERIFY(label);
        QCOMPARE(label->objectName(), QLatin1String(rows[i].label));
        QCOMPARE(label->text(), QString::fromUtf8(rows[i].text));
        QCOMPARE(field->objectName(), QLatin1String(rows[i].field));
        QVERIFY(qobject_cast<QComboBox*>(field));
        QCOMPARE(label->buddy(), field);
    }
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
    QStringList lineFormats;
    for (int i = 0; i < child<QComboBox>("lineFormat")->count(); ++i)
        lineFormats.append(child<QComboBox>("lineFormat")->itemText(i));
    QCOMPARE(
        lineFormats,
        QStringList({"TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT",
                     "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,OPEN_INT",
                     "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VAL,OPEN_INT",
                     "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL",
                     "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,Q_TY",
                     "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE",
                     "TICKER,PER,DATE,TIME,CLOSE,VOL,OPEN_INT",
                     "TICKER,PER,DATE,TIME,CLOSE,VAL,OPEN_INT", "TICKER,PER,DATE,TIME,CLOSE,VOL",
                     "TICKER,PER,DATE,TIME,CLOSE,VAL", "TICKER,PER,DATE,TIME,CLOSE",
                     "DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,OPEN_INT",
                     "DATE,TIME,OPEN,HIGH,LOW,CLOSE,VAL,OPEN_INT", "DATE,TIME,OPEN,HIGH,LOW,CLOSE",
                     "DATE,TIME,CLOSE"}));
    QCOMPARE(items(child<QComboBox>("separator")),
             (Items{{"запятая (,)", ","}, {"точка с запятой (;)", ";"}, {"пробел ( )", " "}}));
    QCOMPARE(items(child<QComboBox>("dateFormat")), (Items{{"ггггммдд", "yyyyMMdd"},
                                                           {"ггммдд", "yyMMdd"},
                                                           {"ддммгг", "ddMMyy"},
                                                           {"дд.мм.гг", "dd.MM.yy"},
                                                           {"дд/мм/гг", "dd/MM/yy"}}));
    QCOMPARE(
        items(child<QComboBox>("timeFormat")),
        (Items{
            {"ччммсс", "hhmmss"}, {"ччмм", "hhmm"}, {"чч:мм:сс", "hh:mm:ss"}, {"чч:мм", "hh:mm"}}));
}

void TestFormatExportPage::beginsWithTheFirstOfEach()
{
    const ExportDetails details = this->details();
    QCOMPARE(details.lineFormat,
             QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT"));
    QCOMPARE(details.separator, QStringLiteral(","));
    QCOMPARE(details.dateFormat, QStringLiteral("yyyyMMdd"));
    QCOMPARE(details.timeFormat, QStringLiteral("hhmmss"));
    QVERIFY(details.addHeader);
}

void TestFormatExportPage::fillsInWhatIsChosen_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("index");
    for (const char* name : {"lineFormat", "separator", "dateFormat", "timeFormat"}) {
        for (int i = 0; i < FormatExportPage().findChild<QComboBox*>(QLatin1String(name))->count();
             ++i)
            QTest::addRow("%s %d", name, i) << QString::fromLatin1(name) << i;
    }
}

void TestFormatExportPage::fillsInWhatIsChosen()
{
    QFETCH(const QString, box);
    QFETCH(const int, index);
    auto* const combo = m_page->findChild<QComboBox*>(box);
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
    QCOMPARE(details.stockId, 1);
    QCOMPARE(details.boardId, 2);
    QCOMPARE(details.securityId, 3);
    QCOMPARE(details.stockCode, QStringLiteral("stock"));
    QCOMPARE(details.boardCode, QStringLiteral("board"));
    QCOMPARE(details.securityName, QStringLiteral("security"));
    QCOMPARE(details.timeframe, 4);
    QCOMPARE(details.dateFrom, QDate(2024, 3, 1));
    QCOMPARE(details.dateTo, QDate(2024, 3, 15));
    QCOMPARE(details.outputPath, QStringLiteral("path"));
    QCOMPARE(details.dateFormatTitle, QString());
    QCOMPARE(details.timeFormatTitle, QString());
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
    testsupport::MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const FormatExportPage page;
    for (const char* name : {"separator", "dateFormat", "timeFormat"}) {
        const auto* const box = page.findChild<QComboBox*>(QLatin1String(name));
        for (int i = 0; i < box->count(); ++i)
            QVERIFY2(box->itemText(i).startsWith(u"FormatExportPage|"),
                     qPrintable(box->itemText(i)));
    }
    QCOMPARE(page.title(), QStringLiteral("FormatExportPage|Формат"));
}

QTEST_MAIN(TestFormatExportPage)
#include "tst_formatexportpage.moc"
