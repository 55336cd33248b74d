// SPDX-License-Identifier: MIT
#include "seriesimportpage.h"

#include "importdetails.h"
#include "support/child.h"
#include "support/formrows.h"
#include "support/series.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockselectorbox.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

using testsupport::choose;

namespace {

const char red[] = "QLabel {color: red;}";

} // namespace

class TestSeriesImportPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hasItsRowsInOrder();
    void offersTheTwoTimeframes();
    void marksWhatIsMissing();
    void beginsWithNothingChosen();
    void marksWhatIsMissingAgain();
    void isValidatedThroughItsInterface();
    void offersTradingBoardsOnly();
    void tellsOfEveryChange();
    void fillsInTheSeries();
    void fillsInNothingElse();
    void keepsItsChoicesWhenLeft();

private:
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_page.get(), name);
    }
    // The style sheets of the labels of stock, board and security.
    QStringList marks() const
    {
        return {child<QLabel>("stockLabel")->styleSheet(),
                child<QLabel>("boardLabel")->styleSheet(), child<QLabel>("secLabel")->styleSheet()};
    }
    void chooseSeries(const char* stock, const char* board, const char* security)
    {
        choose(child<QComboBox>("stock"), QLatin1String(stock));
        choose(child<QComboBox>("board"), QLatin1String(board));
        choose(child<QComboBox>("security"), QLatin1String(security));
    }

    std::unique_ptr<SeriesImportPage> m_page;
};

void TestSeriesImportPage::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_page = std::make_unique<SeriesImportPage>();
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void TestSeriesImportPage::cleanup()
{
    m_page.reset();
}

void TestSeriesImportPage::hasItsRowsInOrder()
{
    QCOMPARE(m_page->objectName(), QStringLiteral("SeriesImportPage"));
    QCOMPARE(m_page->title(), QStringLiteral("Серия"));
    QVERIFY(child<StockSelectorBox>("stock"));
    QVERIFY(child<BoardSelectorBox>("board"));
    QVERIFY(child<SecuritySelectorBox>("security"));

    const QList<testsupport::FormRow> rows{{"stock", "stockLabel", "Площадка:"},
                                           {"board", "boardLabel", "Режим торгов:"},
                                           {"security", "secLabel", "Инструмент:"},
                                           {"timeFrame", "label_4", "Таймфрейм:"}};
    auto* const form = qobject_cast<QFormLayout*>(m_page->layout());
    QVERIFY(form);
    QCOMPARE(form->rowCount(), rows.size() + 1);
    compareRows(m_page.get(), 0, rows);
    QLayoutItem* const last = form->itemAt(int(rows.size()), QFormLayout::SpanningRole);
    QVERIFY(last);
    QVERIFY(last->spacerItem());
    QVERIFY(last->expandingDirections() & Qt::Vertical);
}

void TestSeriesImportPage::offersTheTwoTimeframes()
{
    const auto* const box = child<QComboBox>("timeFrame");
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemText(0), QStringLiteral("1 минута"));
    QCOMPARE(box->itemData(0).toInt(), 60);
    QCOMPARE(box->itemText(1), QStringLiteral("1 секунда"));
    QCOMPARE(box->itemData(1).toInt(), 1);
    QCOMPARE(box->currentIndex(), 0);
}

void TestSeriesImportPage::marksWhatIsMissing()
{
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marks(), QStringList({red, red, red}));

    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marks(), QStringList({"", red, red}));

    choose(child<QComboBox>("board"), QStringLiteral("ODD "));
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marks(), QStringList({"", "", red}));

    choose(child<QComboBox>("security"), QStringLiteral("VEGA "));
    QVERIFY(m_page->isComplete());
    QCOMPARE(marks(), QStringList({"", "", ""}));
}

void TestSeriesImportPage::marksWhatIsMissingAgain()
{
    chooseSeries("NORD ", "ODD ", "VEGA ");
    QVERIFY(m_page->isComplete());
    // The other board does not have it.
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marks(), QStringList({"", red, red}));
}

void TestSeriesImportPage::isValidatedThroughItsInterface()
{
    QCOMPARE(qobject_interface_iid<IValidateForm*>(),
             "com.kavo.quelmor.terminal.IValidateForm/1.0");
    auto* const form = qobject_cast<IValidateForm*>(m_page.get());
    QVERIFY(form);
    QVERIFY(!form->validate());
    QCOMPARE(marks(), QStringList({red, red, red}));
    chooseSeries("ORIENT ", "FX ", "EURUSD ");
    QVERIFY(form->validate());
    QCOMPARE(marks(), QStringList({"", "", ""}));
}

void TestSeriesImportPage::offersTradingBoardsOnly()
{
    const auto* const board = child<QComboBox>("board");
    QCOMPARE(board->count(), 0);
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QCOMPARE(board->count(), 2);
    QVERIFY(board->itemText(0).startsWith(QStringLiteral("MAIN ")));
    QVERIFY(board->itemText(1).startsWith(QStringLiteral("ODD ")));
}

void TestSeriesImportPage::tellsOfEveryChange()
{
    const QSignalSpy changed(m_page.get(), &QWizardPage::completeChanged);
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QCOMPARE(changed.size(), 1);
    choose(child<QComboBox>("board"), QStringLiteral("ODD "));
    QCOMPARE(changed.size(), 2);
    choose(child<QComboBox>("security"), QStringLiteral("VEGA "));
    QCOMPARE(changed.size(), 3);
    choose(child<QComboBox>("timeFrame"), 1);
    QCOMPARE(changed.size(), 3);
}

void TestSeriesImportPage::fillsInTheSeries()
{
    chooseSeries("ORIENT ", "FX ", "GBPUSD ");
    ImportDetails details;
    m_page->getImportDetails(details);
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({"2", "1", "103", "ORIENT", "FX", "GBPUSD", "60", "", "", "", "", ""}));

    choose(child<QComboBox>("timeFrame"), QStringLiteral("1 секунда"));
    m_page->getImportDetails(details);
    QCOMPARE(details.timeframe, 1);
}

void TestSeriesImportPage::fillsInNothingElse()
{
    chooseSeries("NORD ", "MAIN ", "ALFA ");
    ImportDetails details;
    details.separator = QStringLiteral("separator");
    details.dateFormat = QStringLiteral("date");
    details.timeFormat = QStringLiteral("time");
    details.firstLineIsHeader = true;
    details.columns = {{1, 2}};
    m_page->getImportDetails(details);
    QCOMPARE(details.separator, QStringLiteral("separator"));
    QCOMPARE(details.dateFormat, QStringLiteral("date"));
    QCOMPARE(details.timeFormat, QStringLiteral("time"));
    QVERIFY(details.firstLineIsHeader);
    QCOMPARE(details.columns, (QMap<qint32, qint32>{{1, 2}}));
}

void TestSeriesImportPage::keepsItsChoicesWhenLeft()
{
    chooseSeries("NORD ", "ODD ", "VEGA ");
    m_page->cleanupPage();
    m_page->initializePage();
    QVERIFY(m_page->isComplete());
    QCOMPARE(child<SecuritySelectorBox>("security")->getSecurityCode(), QStringLiteral("VEGA"));
}

// Not even where a list of one would choose itself: bars go where the user says.
void TestSeriesImportPage::beginsWithNothingChosen()
{
    vexdesk::ReferenceData data = vexdesk::ReferenceData::demonstration();
    data.stocks.removeIf([](const vexdesk::Stock& stock) { return stock.code != u"NORD"; });
    vexdesk::ReferenceData::install(data);
    const SeriesImportPage page;
    const auto* const stock = testsupport::child<QComboBox>(&page, "stock");
    QCOMPARE(stock->count(), 1);
    QCOMPARE(stock->currentIndex(), -1);
    QVERIFY(!page.isComplete());
}

QTEST_MAIN(TestSeriesImportPage)
#include "tst_seriesimportpage.moc"
