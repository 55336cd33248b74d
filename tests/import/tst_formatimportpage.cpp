// SPDX-License-Identifier: MIT
#include "formatimportpage.h"

#include "importdetails.h"
#include "support/child.h"
#include "support/formrows.h"
#include "support/markingtranslator.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTableWidget>

using testsupport::choose;
using testsupport::compareRows;
using testsupport::items;

namespace {

enum Separator { NotSet, Comma, Semicolon, Blank };

using Cells = QList<QStringList>;

// The texts of the table; a cell without an item is a null text.
Cells cells(const QTableWidget* table)
{
    Cells rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < table->columnCount(); ++column) {
            const QTableWidgetItem* const item = table->item(row, column);
            texts.append(item ? item->text() : QString());
        }
        rows.append(texts);
    }
    return rows;
}

} // namespace

class TestFormatImportPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hasItsRowsInOrder();
    void offersItsFormatsInOrder();
    void itsTextsAreItsOwn();
    void showsTheBeginningOfAHugeField();
    void showsAThousandColumnsAtMost_data();
    void showsAThousandColumnsAtMost();
    void showsNothingBeforeASeparatorIsChosen();
    void showsTheFields_data();
    void showsTheFields();
    void showsTheFieldsOfAnotherSeparator();
    void showsWholeLinesWithoutASeparator();
    void fitsRowsAndColumnsToTheFields();
    void isCompleteWhenTheCountsAgree_data();
    void isCompleteWhenTheCountsAgree();
    void theHeaderLineCountsInTheComparison();
    void tellsOfEverySeparator();
    void fillsInTheFormats_data();
    void fillsInTheFormats();
    void fillsInNothingElse();
    void keepsItsChoicesWhenLeft();

private:
    void open(const QStringList& lines);
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_page.get(), name);
    }
    QComboBox* separator() const { return child<QComboBox>("separator"); }
    QTableWidget* table() const { return child<QTableWidget>("fileData"); }

    QStringList m_lines; // outlives the page
    std::unique_ptr<FormatImportPage> m_page;
};

void TestFormatImportPage::init()
{
    testsupport::failOnStrayWarnings();
}

void TestFormatImportPage::cleanup()
{
    m_page.reset();
}

void TestFormatImportPage::open(const QStringList& lines)
{
    m_lines = lines;
    m_page = std::make_unique<FormatImportPage>(m_lines);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void TestFormatImportPage::hasItsRowsInOrder()
{
    open({"a,b"});
    QCOMPARE(m_page->objectName(), QStringLiteral("FormatImportPage"));
    QCOMPARE(m_page->title(), QStringLiteral("Формат"));
    auto* const form = qobject_cast<QFormLayout*>(m_page->layout());
    QVERIFY(form);
    QCOMPARE(form->rowCount(), 6);

    const auto* const header = child<QCheckBox>("firstStringIsHead");
    QVERIFY(header);
    QCOMPARE(header->text(), QStringLiteral("Первая строка содержит заголовок"));
    QVERIFY(header->isChecked());
    QCOMPARE(form->itemAt(0, QFormLayout::SpanningRole)->widget(), header);

    compareRows(m_page.get(), 1,
                {{"separator", "sepLabel", "Разделитель:"},
                 {"dateFormat", "label_2", "Формат даты:"},
                 {"timeFormat", "label_3", "Формат времени:"}});

    const auto* const line = child<QFrame>("line");
    QVERIFY(line);
    QCOMPARE(line->frameShape(), QFrame::HLine);
    QCOMPARE(form->itemAt(4, QFormLayout::SpanningRole)->widget(), line);
    QVERIFY(table());
    QCOMPARE(table()->toolTip(), QStringLiteral("Импортируемый файл"));
    QCOMPARE(form->itemAt(5, QFormLayout::SpanningRole)->widget(), table());
}

void TestFormatImportPage::offersItsFormatsInOrder()
{
    open({"a,b"});
    QCOMPARE(items(separator()),
             (testsupport::Items{{"не задан", "\n"}} + testsupport::separatorItems()));
    QCOMPARE(items(child<QComboBox>("dateFormat")), testsupport::dateFormatItems());
    QCOMPARE(items(child<QComboBox>("timeFormat")), testsupport::timeFormatItems());
    for (const char* name : {"separator", "dateFormat", "timeFormat"})
        QCOMPARE(child<QComboBox>(name)->currentIndex(), 0);
    QCOMPARE(m_page->separator(), QStringLiteral("\n"));
    QCOMPARE(m_page->dateFormat(), QStringLiteral("yyyyMMdd"));
    QCOMPARE(m_page->timeFormat(), QStringLiteral("hhmmss"));
}

void TestFormatImportPage::showsNothingBeforeASeparatorIsChosen()
{
    open({"a,b", "c,d"});
    QCOMPARE(table()->rowCount(), 0);
    QCOMPARE(table()->columnCount(), 0);
    choose(child<QComboBox>("dateFormat"), 1);
    choose(child<QComboBox>("timeFormat"), 1);
    QCOMPARE(table()->rowCount(), 0);
}

void TestFormatImportPage::showsTheFields_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("separator");
    QTest::addColumn<Cells>("expected");
    const QString none;
    const QString empty = QStringLiteral("");
    QTest::newRow("two by two") << QStringList{"a,b", "c,d"} << int(Comma)
                                << Cells{{"a", "b"}, {"c", "d"}};
    QTest::newRow("one line") << QStringList{"a;b;c"} << int(Semicolon) << Cells{{"a", "b", "c"}};
    QTest::newRow("empty fields are kept") << QStringList{",b,", "a,,"} << int(Comma)
                                           << Cells{{empty, "b", empty}, {"a", empty, empty}};
    QTest::newRow("longer lines are cut") << QStringList{"a b", "c d e f", "g"} << int(Blank)
                                          << Cells{{"a", "b"}, {"c", "d"}, {"g", none}};
    QTest::newRow("shorter lines leave cells without an item")
        << QStringList{"a b c", "d", ""} << int(Blank)
        << Cells{{"a", "b", "c"}, {"d", none, none}, {empty, none, none}};
    QTest::newRow("other separators stay in the text")
        << QStringList{"a,b c;d", "1"} << int(Semicolon) << Cells{{"a,b c", "d"}, {"1", none}};
    QTest::newRow("empty first line")
        << QStringList{"", "a,b"} << int(Comma) << Cells{{empty}, {"a"}};
    QTest::newRow("blank next to blank")
        << QStringList{"a  b"} << int(Blank) << Cells{{"a", empty, "b"}};
    QTest::newRow("ten lines") << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}
                               << int(Comma) << Cells{{"1"}, {"2"}, {"3"}, {"4"}, {"5"},
                                                      {"6"}, {"7"}, {"8"}, {"9"}, {"10"}};
}

void TestFormatImportPage::showsTheFields()
{
    QFETCH(const QStringList, lines);
    QFETCH(const int, separator);
    QFETCH(const Cells, expected);
    open(lines);
    choose(this->separator(), separator);
    const Cells shown = cells(table());
    QCOMPARE(shown, expected);
    for (qsizetype row = 0; row < expected.size(); ++row) {
        for (qsizetype column = 0; column < expected[row].size(); ++column)
            QCOMPARE(shown[row][column].isNull(), expected[row][column].isNull());
    }
}

void TestFormatImportPage::showsTheFieldsOfAnotherSeparator()
{
    open({"a,b;c,d", "e,f;g,h"});
    choose(separator(), Comma);
    QCOMPARE(cells(table()), Cells({{"a", "b;c", "d"}, {"e", "f;g", "h"}}));
    choose(separator(), Semicolon);
    QCOMPARE(cells(table()), Cells({{"a,b", "c,d"}, {"e,f", "g,h"}}));
    choose(separator(), Comma);
    QCOMPARE(cells(table()), Cells({{"a", "b;c", "d"}, {"e", "f;g", "h"}}));

    // Of what was shown before, nothing is left in a line that has become shorter.
    open({"a,b;c", "1,2"});
    choose(separator(), Comma);
    QCOMPARE(cells(table()), Cells({{"a", "b;c"}, {"1", "2"}}));
    choose(separator(), Semicolon);
    QCOMPARE(cells(table()), Cells({{"a,b", "c"}, {"1,2", QString()}}));
}

void TestFormatImportPage::showsWholeLinesWithoutASeparator()
{
    open({"a,b", "c"});
    choose(separator(), Comma);
    choose(separator(), NotSet);
    QCOMPARE(cells(table()), Cells({{"a,b"}, {"c"}}));
}

void TestFormatImportPage::fitsRowsAndColumnsToTheFields()
{
    open({"a,a long text that no column has room for by default", "b,c"});
    choose(separator(), Comma);
    QVERIFY(table()->columnWidth(0) < table()->columnWidth(1));
    const QList<int> widths{table()->columnWidth(0), table()->columnWidth(1)};
    const QList<int> heights{table()->rowHeight(0), table()->rowHeight(1)};
    table()->resizeRowsToContents();
    table()->resizeColumnsToContents();
    QCOMPARE(widths, QList<int>({table()->columnWidth(0), table()->columnWidth(1)}));
    QCOMPARE(heights, QList<int>({table()->rowHeight(0), table()->rowHeight(1)}));
    QVERIFY(widths.at(1) > table()->fontMetrics().horizontalAdvance(table()->item(0, 1)->text()));
}

void TestFormatImportPage::isCompleteWhenTheCountsAgree_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QList<bool>>("complete"); // by separator
    QTest::newRow("one line") << QStringList{"a,b"} << QList<bool>{false, true, true, true};
    QTest::newRow("as many commas")
        << QStringList{"a,b,c", "1,2,3"} << QList<bool>{false, true, true, true};
    QTest::newRow("fewer commas") << QStringList{"a,b,c", "1,2"}
                                  << QList<bool>{false, false, true, true};
    QTest::newRow("more semicolons")
        << QStringList{"a;b", "1;2;3"} << QList<bool>{false, true, false, true};
    QTest::newRow("blank at the end")
        << QStringList{"a b", "1 2 "} << QList<bool>{false, true, true, false};
    QTest::newRow("only the first two lines count")
        << QStringList{"a,b", "1,2", "1,2,3"} << QList<bool>{false, true, true, true};
    QTest::newRow("empty lines") << QStringList{"", ""} << QList<bool>{false, true, true, true};
}

void TestFormatImportPage::isCompleteWhenTheCountsAgree()
{
    QFETCH(const QStringList, lines);
    QFETCH(const QList<bool>, complete);
    open(lines);
    // From the last, so that the first is a choice, too.
    for (int index = Blank; index >= NotSet; --index) {
        choose(separator(), index);
        QCOMPARE(m_page->isComplete(), complete.at(index));
        QCOMPARE(child<QLabel>("sepLabel")->styleSheet(),
                 complete.at(index) ? QStringLiteral("QLabel {color: black;}")
                                    : QStringLiteral("QLabel {color: red;}"));
    }
}

void TestFormatImportPage::theHeaderLineCountsInTheComparison()
{
    open({"<DATE>,<TIME>", "20240115,100000,1"});
    choose(separator(), Comma);
    QVERIFY(!m_page->isComplete());
    testsupport::click(child<QCheckBox>("firstStringIsHead"));
    QVERIFY(!m_page->isComplete());
}

void TestFormatImportPage::tellsOfEverySeparator()
{
    open({"a,b"});
    const QSignalSpy changed(m_page.get(), &QWizardPage::completeChanged);
    choose(separator(), Comma);
    QVERIFY(!changed.isEmpty());
    const auto first = changed.size();
    choose(child<QComboBox>("dateFormat"), 1);
    QCOMPARE(changed.size(), first);
    choose(separator(), Blank);
    QVERIFY(changed.size() > first);
}

void TestFormatImportPage::fillsInTheFormats_data()
{
    QTest::addColumn<QString>("separatorTitle");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("dateTitle");
    QTest::addColumn<QString>("date");
    QTest::addColumn<QString>("timeTitle");
    QTest::addColumn<QString>("time");
    QTest::addColumn<bool>("header");
    QTest::newRow("first of each") << "запятая (,)"
                                   << ","
                                   << "ггггммдд"
                                   << "yyyyMMdd"
                                   << "ччммсс"
                                   << "hhmmss" << true;
    QTest::newRow("others") << "точка с запятой (;)"
                            << ";"
                            << "ддммгг"
                            << "ddMMyy"
                            << "чч:мм:сс"
                            << "hh:mm:ss" << false;
    QTest::newRow("last of each") << "пробел ( )"
                                  << " "
                                  << "дд/мм/гг"
                                  << "dd/MM/yy"
                                  << "чч:мм"
                                  << "hh:mm" << false;
}

void TestFormatImportPage::fillsInTheFormats()
{
    QFETCH(const QString, separatorTitle);
    QFETCH(const QString, dateTitle);
    QFETCH(const QString, timeTitle);
    QFETCH(const bool, header);
    open({"a"});
    choose(separator(), separatorTitle);
    choose(child<QComboBox>("dateFormat"), dateTitle);
    choose(child<QComboBox>("timeFormat"), timeTitle);
    if (!header)
        testsupport::click(child<QCheckBox>("firstStringIsHead"));

    ImportDetails details;
    m_page->getImportDetails(details);
    QTEST(details.separator, "separator");
    QTEST(details.dateFormat, "date");
    QTEST(details.timeFormat, "time");
    QCOMPARE(details.dateFormatTitle, dateTitle);
    QCOMPARE(details.timeFormatTitle, timeTitle);
    QCOMPARE(details.firstLineIsHeader, header);
    QCOMPARE(m_page->separator(), details.separator);
    QCOMPARE(m_page->dateFormat(), details.dateFormat);
    QCOMPARE(m_page->timeFormat(), details.timeFormat);
}

void TestFormatImportPage::fillsInNothingElse()
{
    open({"a"});
    ImportDetails details;
    details.stockId = 1;
    details.securityName = QStringLiteral("name");
    details.timeframe = 60;
    details.columns = {{1, 2}};
    m_page->getImportDetails(details);
    QCOMPARE(details.stockId, 1);
    QCOMPARE(details.securityName, QStringLiteral("name"));
    QCOMPARE(details.timeframe, 60);
    QCOMPARE(details.columns, (QMap<qint32, qint32>{{1, 2}}));
}

void TestFormatImportPage::keepsItsChoicesWhenLeft()
{
    open({"a,b"});
    choose(separator(), Comma);
    choose(child<QComboBox>("dateFormat"), 3);
    m_page->cleanupPage();
    m_page->initializePage();
    QCOMPARE(m_page->separator(), QStringLiteral(","));
    QCOMPARE(m_page->dateFormat(), QStringLiteral("dd.MM.yy"));
    QCOMPARE(cells(table()), Cells({{"a", "b"}}));
}

void TestFormatImportPage::itsTextsAreItsOwn()
{
    const testsupport::MarkingTranslator translator;
    const QStringList lines{"1"};
    const FormatImportPage page(lines);
    QCOMPARE(page.findChildren<QComboBox*>().size(), 3);
    testsupport::compareContext(&page, {"separator", "dateFormat", "timeFormat"},
                                QStringLiteral("FormatImportPage"));
    QCOMPARE(page.title(), QStringLiteral("FormatImportPage|Формат"));
}

// To lay out all of it would hold up the window for half a minute.
void TestFormatImportPage::showsTheBeginningOfAHugeField()
{
    const QString usual(1000, u'1');
    const QString huge(10'000'000, u'X');
    const QList<QString> lines{usual + u',' + huge};
    FormatImportPage page(lines);
    testsupport::child<QComboBox>(&page, "separator")->setCurrentIndex(Comma);
    const auto* const table = testsupport::child<QTableWidget>(&page, "fileData");
    QCOMPARE(table->item(0, 0)->text(), usual);
    QCOMPARE(table->item(0, 1)->text(), QString(huge.left(1000) + u'…'));
}

void TestFormatImportPage::showsAThousandColumnsAtMost_data()
{
    QTest::addColumn<int>("fields");
    QTest::addColumn<int>("columns");
    QTest::newRow("less") << 999 << 999;
    QTest::newRow("as many") << 1000 << 1000;
    QTest::newRow("more") << 1001 << 1000;
    QTest::newRow("a million") << 1'000'000 << 1000;
}

// More than that take no table any useful time.
void TestFormatImportPage::showsAThousandColumnsAtMost()
{
    QFETCH(const int, fields);
    QFETCH(const int, columns);
    open({QString(fields - 1, u','), QStringLiteral("1,2")});
    choose(child<QComboBox>("separator"), Comma);
    const auto* const table = child<QTableWidget>("fileData");
    QCOMPARE(table->columnCount(), columns);
    QVERIFY(table->item(0, columns - 1));
    QCOMPARE(table->item(1, 1)->text(), QStringLiteral("2"));
}

QTEST_MAIN(TestFormatImportPage)
#include "tst_formatimportpage.moc"
