// SPDX-License-Identifier: MIT
// The chart with its choice of series: what is stored, what is remembered, and what is read out.

#include "chartsupport.h"
#include "desk/chart/chartpanel.h"
#include "desk/chart/chartview.h"
#include "desk/chart/seriesbox.h"
#include "desk/chart/wallclock.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/icore.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>

#include <memory>

using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::Candle;
using vexdesk::ChartPanel;
using vexdesk::ChartView;
using vexdesk::SeriesBox;
using vexdesk::wallTime;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);

} // namespace

class TestChartPanel final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anEmptyStoreSaysHowToImport();
    void showsWhatIsImportedIntoAnEmptyStore();
    void listsTheStoredSeriesByTheirTexts();
    void showsTheChosenSeries();
    void showsTheChosenTimeframe();
    void offersATimeframeThatIsNotUsual();
    void readsOutTheBarAtTheMouse();
    void readsOutAnEditedBarWithItsVolume();
    void readsOutTheIntervalOfSeveralBars();
    void theReadoutGoesWithTheMouse();
    void theChartDoesNotJumpWhenTheReadoutComes();
    void showsAllByTheButton();
    void theScrollBarMovesTheView();
    void theViewMovesTheScrollBar();
    void seesANewSeries();
    void seesANewSeriesWhenTheListOpens();
    void anotherSeriesTakesThePlaceOfOneThatIsGone();
    void remembersSeriesAndTimeframe();
    void keepsItsPlaceWhenItIsHiddenAndShown();
    void tabGoesThroughBoxesButtonAndChart();
    void isSmallEnoughForADock();

private:
    void start();
    void write(const QString& series, const QDate& date, const QByteArray& content,
               int timeframe = 60) const;
    template <typename Widget>
    Widget* widget(const char* name) const
    {
        return testsupport::child<Widget>(m_panel.get(), name);
    }
    SeriesBox* seriesBox() const { return m_panel->findChild<SeriesBox*>(); }
    QComboBox* timeframeBox() const { return widget<QComboBox>("chartTimeframe"); }
    ChartView* view() const { return m_panel->findChild<ChartView*>(); }
    QString readout() const { return widget<QLabel>("chartReadout")->text(); }
    QString message() const
    {
        const auto* const label = widget<QLabel>("chartMessage");
        return label->isVisible() ? label->text() : QString();
    }
    size_t candles() const { return view()->isVisible() ? view()->chart().candles.size() : 0; }
    void pointAt(const QTime& time) const;

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<ChartPanel> m_panel;
};

void TestChartPanel::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    m_root = std::make_unique<QTemporaryDir>();
}

void TestChartPanel::cleanup()
{
    m_panel.reset();
    m_root.reset();
}

void TestChartPanel::start()
{
    m_panel.reset();
    m_panel = std::make_unique<ChartPanel>(m_root->path());
    m_panel->resize(800, 450);
    m_panel->show();
    m_panel->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
}

void TestChartPanel::write(const QString& series, const QDate& date, const QByteArray& content,
                           int timeframe) const
{
    writeFile(m_root->filePath(series + u'/' + dayFile(date, timeframe)), content);
}

void TestChartPanel::pointAt(const QTime& time) const
{
    for (const Candle& candle : view()->chart().candles) {
        if (vexdesk::wallClock(candle.end) != time)
            continue;
        testsupport::moveMouse(view(), testsupport::placeOf(view()->chart(), candle));
        return;
    }
    QFAIL("no such candle");
}

void TestChartPanel::anEmptyStoreSaysHowToImport()
{
    start();
    QTRY_VERIFY2(message().contains(QStringLiteral("команду импорта")), qPrintable(message()));
    // The terminal knows no module's menu and no module's keys.
    QVERIFY2(!message().contains(u'›') && !message().contains(u'+'), qPrintable(message()));
    QVERIFY(!view()->isVisible());
    QCOMPARE(seriesBox()->count(), 0);
    QVERIFY(!widget<QPushButton>("chartShowAll")->isEnabled());
}

void TestChartPanel::showsWhatIsImportedIntoAnEmptyStore()
{
    QVERIFY(m_root->remove()); // not even the root is there
    start();
    QTRY_VERIFY(!message().isEmpty());
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 30));
    QTRY_COMPARE(candles(), 30U);
    QVERIFY(message().isEmpty());
    QVERIFY(widget<QPushButton>("chartShowAll")->isEnabled());
}

void TestChartPanel::listsTheStoredSeriesByTheirTexts()
{
    for (const char* series : {"NORD/MAIN/ZETA", "NORD/MAIN/ALFA", "SUED/MAIN/BETA"})
        write(QLatin1String(series), day, barLines(ten, 3));
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 3), 1);
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("NORD/MAIN/VOID")));
    start();
    QTRY_COMPARE(seriesBox()->count(), 3);
    // With the title where the terminal knows one.
    QString title;
    for (const vexdesk::Security& security : vexdesk::ReferenceData::installed().securities) {
        if (security.stockCode == QStringLiteral("NORD") &&
            security.boardCode == QStringLiteral("MAIN") && security.code == QStringLiteral("ALFA"))
            title = security.title;
    }
    QVERIFY(!title.isEmpty());
    QCOMPARE(seriesBox()->itemText(0), QStringLiteral("ALFA — MAIN — NORD (%1)").arg(title));
    QCOMPARE(seriesBox()->itemText(1), QStringLiteral("BETA — MAIN — SUED"));
    QVERIFY(seriesBox()->itemText(2).startsWith(QStringLiteral("ZETA — MAIN — NORD")));
    // A narrow box shows the begin of it.
    QVERIFY(seriesBox()->toolTip().startsWith(seriesBox()->itemText(0)));
}

void TestChartPanel::showsTheChosenSeries()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    write(QStringLiteral("NORD/MAIN/VEGA"), day.addDays(5), barLines(ten, 30));
    start();
    QTRY_COMPARE(candles(), 20U);
    testsupport::choose(seriesBox(), QStringLiteral("VEGA"));
    QTRY_COMPARE(candles(), 30U);
    QCOMPARE(view()->chart().candles.back().end, wallTime(day.addDays(5), QTime(10, 29)));
}

void TestChartPanel::showsTheChosenTimeframe()
{
    QByteArray seconds;
    for (int i = 0; i < 50; ++i)
        seconds += testsupport::barLine(ten.addSecs(i), i + 1);
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    write(QStringLiteral("NORD/MAIN/ALFA"), day, seconds, 1);
    write(QStringLiteral("NORD/MAIN/VEGA"), day, seconds, 1);
    start();
    QTRY_COMPARE(candles(), 20U);
    QCOMPARE(timeframeBox()->itemText(0), QStringLiteral("1 минута"));
    QCOMPARE(timeframeBox()->itemText(1), QStringLiteral("1 секунда"));
    testsupport::choose(timeframeBox(), QStringLiteral("1 секунда"));
    QTRY_COMPARE(view()->chart().timeframe, 1);
    QTest::mouseClick(widget<QPushButton>("chartShowAll"), Qt::LeftButton);
    QCOMPARE(candles(), 50U);
    testsupport::choose(timeframeBox(), QStringLiteral("1 минута"));
    QTRY_COMPARE(view()->chart().timeframe, 60);
    // A series without minutes shows what it has.
    testsupport::choose(seriesBox(), QStringLiteral("VEGA"));
    QTRY_COMPARE(view()->chart().timeframe, 1);
    QCOMPARE(timeframeBox()->count(), 1);
}

void TestChartPanel::offersATimeframeThatIsNotUsual()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20), 300);
    start();
    QTRY_COMPARE(timeframeBox()->currentText(), QStringLiteral("Бары: 5 мин"));
}

void TestChartPanel::readsOutTheBarAtTheMouse()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20, 100));
    start();
    QTRY_COMPARE(candles(), 20U);
    QCOMPARE(readout(), QString());
    pointAt(QTime(10, 7));
    QCOMPARE(readout(), QStringLiteral("15.01.2024 10:07   Откр. 107.10   Макс. 107.40   "
                                       "Мин. 107.05   Закр. 107.20   Объём 1 107   "
                                       "Объём в деньгах 2 107.50   Откр. интерес 107"));
}

void TestChartPanel::readsOutAnEditedBarWithItsVolume()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, testsupport::editedBarLines(ten, 20, 100));
    start();
    QTRY_COMPARE(candles(), 20U);
    pointAt(QTime(10, 7));
    QVERIFY2(readout().contains(QStringLiteral("Объём 1 107   Объём в деньгах 2 107.50")),
             qPrintable(readout()));
}

void TestChartPanel::readsOutTheIntervalOfSeveralBars()
{
    for (int i = 0; i < 30; ++i)
        write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(i), barLines(ten, 400, 100));
    start();
    QTRY_VERIFY(candles() > 0);
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QVERIFY(view()->chart().interval > 3600);
    const Candle& candle = view()->chart().candles[3];
    pointAt(vexdesk::wallClock(candle.end));
    const QString day1 = QStringLiteral("15.01.2024 ");
    QVERIFY2(readout().contains(QStringLiteral(" ч)")), qPrintable(readout()));
    QVERIFY2(readout().startsWith(day1), qPrintable(readout()));
}

void TestChartPanel::theReadoutGoesWithTheMouse()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    pointAt(QTime(10, 7));
    QVERIFY(!readout().isEmpty());
    testsupport::leaveWidget(view());
    QCOMPARE(readout(), QString());
}

void TestChartPanel::theChartDoesNotJumpWhenTheReadoutComes()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    for (const int width : {800, 400}) {
        start();
        m_panel->resize(width, 450);
        QTRY_COMPARE(candles(), 20U);
        QCoreApplication::processEvents();
        const QRect before = view()->geometry();
        pointAt(QTime(10, 7));
        QCoreApplication::processEvents();
        QCOMPARE(view()->geometry(), before);
        // And all of it can be read.
        const auto* const label = widget<QLabel>("chartReadout");
        QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }
}

void TestChartPanel::showsAllByTheButton()
{
    for (int i = 0; i < 3; ++i)
        write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(i), barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QCOMPARE(view()->range(), view()->limits().all());
}

void TestChartPanel::theScrollBarMovesTheView()
{
    for (int i = 0; i < 3; ++i)
        write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(i), barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    auto* const bar = widget<QScrollBar>("chartScrollBar");
    QVERIFY(bar->maximum() > 0);
    QVERIFY(bar->value() > bar->maximum() * 9 / 10);
    const double length = view()->range().length();
    bar->setFocus();
    QTest::keyClick(bar, Qt::Key_Home);
    const double begin = view()->limits().reach(length).begin;
    QVERIFY(qAbs(view()->range().begin - begin) < 2);
    QVERIFY(qAbs(view()->range().length() - length) < 1e-3);
    QTest::keyClick(bar, Qt::Key_PageDown);
    QVERIFY(qAbs(view()->range().begin - begin - length) < 3);
}

void TestChartPanel::theViewMovesTheScrollBar()
{
    for (int i = 0; i < 3; ++i)
        write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(i), barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    const auto* const bar = widget<QScrollBar>("chartScrollBar");
    view()->setFocus();
    QTest::keyClick(view(), Qt::Key_Home);
    QCOMPARE(bar->value(), 0);
    QTest::keyClick(view(), Qt::Key_End);
    QVERIFY(bar->value() >= bar->maximum() - 1);
    view()->showAll();
    QCOMPARE(bar->maximum(), 0); // nothing to scroll
}

void TestChartPanel::seesANewSeries()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    write(QStringLiteral("NORD/MAIN/VEGA"), day, barLines(ten, 30));
    QTRY_COMPARE(seriesBox()->count(), 2);
    QCOMPARE(candles(), 20U); // the chosen one stays
    write(QStringLiteral("WEST/SPOT/BETA"), day, barLines(ten, 30));
    QTRY_COMPARE(seriesBox()->count(), 3);
}

void TestChartPanel::seesANewSeriesWhenTheListOpens()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    write(QStringLiteral("NORD/MAIN/VEGA"), day, barLines(ten, 30));
    QTest::mouseClick(seriesBox(), Qt::LeftButton); // at once
    QVERIFY(seriesBox()->view()->isVisible());      // a large store is not waited for
    QTRY_COMPARE(seriesBox()->count(), 2);
    QVERIFY(seriesBox()->view()->isVisible());
    QTest::keyClick(seriesBox()->view(), Qt::Key_Escape);
}

void TestChartPanel::anotherSeriesTakesThePlaceOfOneThatIsGone()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    write(QStringLiteral("NORD/MAIN/VEGA"), day, barLines(ten, 30));
    start();
    QTRY_COMPARE(candles(), 20U);
    testsupport::choose(seriesBox(), QStringLiteral("VEGA"));
    QTRY_COMPARE(candles(), 30U);
    const QString vega = m_root->filePath(QStringLiteral("NORD/MAIN/VEGA/") + dayFile(day));
    QVERIFY(QFile::remove(vega));
    QTRY_COMPARE(candles(), 20U);
    QVERIFY(seriesBox()->currentText().startsWith(QStringLiteral("ALFA")));
    // It was the user's choice: it is shown when it is there again.
    writeFile(vega, barLines(ten, 25));
    QTRY_COMPARE(candles(), 25U);
    QVERIFY(QFile::remove(vega));
    QVERIFY(QFile::remove(m_root->filePath(QStringLiteral("NORD/MAIN/ALFA/") + dayFile(day))));
    QTRY_VERIFY(message().contains(QStringLiteral("команду импорта")));
}

void TestChartPanel::remembersSeriesAndTimeframe()
{
    for (const char* series : {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA"}) {
        write(QLatin1String(series), day, barLines(ten, 20));
        write(QLatin1String(series), day, barLines(ten, 30), 1);
    }
    start();
    QTRY_COMPARE(seriesBox()->count(), 2);
    testsupport::choose(seriesBox(), QStringLiteral("VEGA"));
    testsupport::choose(timeframeBox(), QStringLiteral("1 секунда"));
    start();
    QTRY_COMPARE(seriesBox()->count(), 2);
    QVERIFY(seriesBox()->currentText().startsWith(QStringLiteral("VEGA")));
    QCOMPARE(timeframeBox()->currentText(), QStringLiteral("1 секунда"));
    QTRY_COMPARE(view()->chart().timeframe, 1);
}

void TestChartPanel::keepsItsPlaceWhenItIsHiddenAndShown()
{
    for (int i = 0; i < 3; ++i)
        write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(i), barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    QTest::keyClick(view(), Qt::Key_Home);
    const vexdesk::TimeRange before = view()->range();
    m_panel->hide();
    write(QStringLiteral("NORD/MAIN/ALFA"), day.addDays(3), barLines(ten, 20));
    m_panel->show();
    QTRY_VERIFY(view()->limits().lastTime() > double(wallTime(day.addDays(3))));
    QVERIFY(qAbs(view()->range().length() - before.length()) < 1);
    QVERIFY(qAbs(view()->range().begin - before.begin) < 1);
}

void TestChartPanel::tabGoesThroughBoxesButtonAndChart()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), QDate(2024, 1, 15), "100100;1;2;1;2;10;0;0\n");
    start();
    QTRY_VERIFY(candles() > 0);
    // Whoever comes from the window above begins with the first box, not with the chart.
    const QWidget* first = m_panel->nextInFocusChain();
    while (!(first->focusPolicy() & Qt::TabFocus) || !first->isVisible())
        first = first->nextInFocusChain();
    QCOMPARE(first, seriesBox());
    seriesBox()->setFocus(Qt::TabFocusReason);
    QCOMPARE(testsupport::tabOrder(m_panel.get()),
             (QList<QWidget*>{seriesBox(), timeframeBox(), widget<QPushButton>("chartShowAll"),
                              view()}));
}

void TestChartPanel::isSmallEnoughForADock()
{
    write(QStringLiteral("NORD/MAIN/ALFA"), day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles(), 20U);
    QVERIFY2(m_panel->minimumSizeHint().width() <= 400,
             qPrintable(QString::number(m_panel->minimumSizeHint().width())));
    QVERIFY(m_panel->minimumSizeHint().height() <= 300);
    m_panel->resize(400, 300);
    QTRY_VERIFY(view()->chart().prices.place.height() > 60);
    QVERIFY(view()->chart().prices.place.width() > 200);
}

QTEST_MAIN(TestChartPanel)
#include "tst_chartpanel.moc"
