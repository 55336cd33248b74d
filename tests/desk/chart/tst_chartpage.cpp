// SPDX-License-Identifier: MIT
// One chart with what belongs to it: timeframes, studies, nights, what is read out, scrolling,
// marks, and what it does when the store changes.

#include "chartsupport.h"
#include "desk/chart/chartmemory.h"
#include "desk/chart/chartpage.h"
#include "desk/chart/charts.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/chartview.h"
#include "desk/chart/fittedlabel.h"
#include "desk/chart/marksources.h"
#include "desk/chart/wallclock.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QHelpEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QToolTip>

#include <memory>
#include <optional>
#include <utility>

using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::Candle;
using vexdesk::ChartMark;
using vexdesk::ChartPage;
using vexdesk::ChartState;
using vexdesk::ChartView;
using vexdesk::FittedLabel;
using vexdesk::SeriesName;
using vexdesk::Study;
using vexdesk::Timeframe;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);

SeriesName alfa()
{
    return {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")};
}

// Says one thing of one day, and notes for which days it was asked.
class OneMark final : public vexdesk::IChartMarks
{
public:
    QList<ChartMark> marks(const SeriesName& series, const QDate& first, const QDate& last) override
    {
        asked.append({first, last});
        if (throws)
            throw 1;
        if (!(series == alfa()) || mark.day < first || mark.day > last)
            return {};
        return {mark};
    }

    // At the first bar of the stretch.
    ChartMark mark{ChartMark::Kind::Warning, day, QTime(10, 6), QTime(10, 31),
                   QStringLiteral("Пропущены сделки")};
    bool throws = false;
    QList<std::pair<QDate, QDate>> asked;
};

} // namespace

class TestChartPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showsTheSeries();
    void saysWhatIsMissing();
    void showsWhatIsImportedMeanwhile();
    void offersWhatTheStoredBarsCanBe_data();
    void offersWhatTheStoredBarsCanBe();
    void showsTheChosenTimeframe();
    void aTimeframeChosenWhileAllIsShownIsSeen();
    void goesToTheSecondsAndBack();
    void aStepBackIsSeenInTheRow();
    void saysWhenALongerTimeframeIsShown();
    void aNoteWithoutRoomIsCutAtItsEndOnly();
    void nightsAreSwitched();
    void studiesAreSwitched();
    void readsOutTheBarAtTheMouse();
    void readsOutTheBarOfTheKeyboard();
    void theChartDoesNotJumpWhenTheReadoutComes();
    void theReadoutHasNoEmptyLines();
    void whatHasNoRoomIsInTheToolTip();
    void showsAllByTheButton();
    void theScrollBarMovesTheView();
    void theViewMovesTheScrollBar();
    void goesToADay();
    void goesToAMoment();
    void goesWhereItWasToldBeforeItWasShown();
    void goesToADayInTheTimeframeThatHasIt_data();
    void goesToADayInTheTimeframeThatHasIt();
    void goesToSecondsWhileMinutesAreRead();
    void goesToTheFirstSecondsThatCameWhileItWasHidden();
    void comesBackAsItWas();
    void everythingComesBackInAnotherSize();
    void keepsItsPlaceWhenItIsHiddenAndShown();
    void keepsItsPlaceWhileTheStoreIsAway();
    void keepsNoBarsWhileItIsHidden();
    void followsTheFiles();
    void asksForMarks();
    void asksAgainWhenMarksHaveChanged();
    void marksThatThrowAreNone();
    void copiesTheBars();
    void copiesBarsThatWereNotRead();
    void copyingIsGivenUpByKey();
    void asksBeforeDaysAreLeftOut();
    void nothingIsCopiedOfNothing();
    void copiesThePicture();
    void tabGoesThroughTheRowAndTheChart();
    void aClickLeavesTheKeysToTheChart();
    void theBoxIsDrivenByKeysToo();
    void theWheelChoosesNoTimeframe();
    void isSmallEnough();

private:
    void start(const ChartState& state = {});
    void startWithSeconds();
    void write(const QDate& date, const QByteArray& content, int timeframe = 60) const;
    void writeDays(int days, int bars) const;
    template <typename Widget>
    Widget* widget(const char* name) const
    {
        return testsupport::child<Widget>(m_page.get(), name);
    }
    QComboBox* timeframeBox() const { return widget<QComboBox>("chartTimeframe"); }
    ChartView* view() const { return &m_page->view(); }
    QString readout() const { return widget<QLabel>("chartReadout")->text(); }
    QString message() const
    {
        const auto* const label = widget<QLabel>("chartMessage");
        return label->isVisible() ? label->text() : QString();
    }
    bool areBarsThere() const { return view()->isVisible() && !candles().empty(); }
    std::vector<Candle> candles() const;
    void pointAt(const QTime& time) const;
    QStringList offered() const;
    FittedLabel* note() const { return widget<FittedLabel>("chartNote"); }
    void markManyDays();

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<vexdesk::MarkSources> m_marks;
    std::unique_ptr<ChartPage> m_page;
};

void TestChartPage::init()
{
    testsupport::failOnStrayWarnings();
    m_root = std::make_unique<QTemporaryDir>();
    m_marks = std::make_unique<vexdesk::MarkSources>();
}

void TestChartPage::cleanup()
{
    m_page.reset();
    m_marks.reset();
    m_root.reset();
}

void TestChartPage::start(const ChartState& state)
{
    ChartState named = state;
    named.series = alfa();
    m_page = std::make_unique<ChartPage>(m_root->path(), named, *m_marks);
    m_page->resize(800, 450);
    m_page->show();
    m_page->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void TestChartPage::write(const QDate& date, const QByteArray& content, int timeframe) const
{
    writeFile(m_root->filePath(QStringLiteral("NORD/MAIN/ALFA/") + dayFile(date, timeframe)),
              content);
}

void TestChartPage::writeDays(int days, int bars) const
{
    for (int i = 0; i < days; ++i)
        write(day.addDays(i), barLines(ten, bars, 100));
}

std::vector<Candle> TestChartPage::candles() const
{
    std::vector<Candle> all;
    for (const auto& placed : view()->chart().candles)
        all.push_back(placed.candle);
    return all;
}

void TestChartPage::pointAt(const QTime& time) const
{
    const auto& chart = view()->chart();
    for (const auto& placed : chart.candles) {
        if (vexdesk::wallClock(placed.candle.end) != time)
            continue;
        testsupport::moveMouse(view(), testsupport::placeOf(chart, placed));
        return;
    }
    QFAIL("no such candle");
}

QStringList TestChartPage::offered() const
{
    QStringList texts;
    for (int i = 0; i < timeframeBox()->count(); ++i)
        texts.append(timeframeBox()->itemText(i));
    return texts;
}

void TestChartPage::showsTheSeries()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    QVERIFY(message().isEmpty());
    QVERIFY(m_page->series() == alfa());
    QVERIFY(!m_page->isEmpty());
    QCOMPARE(m_page->storedDays(), QList<QDate>{day});
}

void TestChartPage::saysWhatIsMissing()
{
    start();
    QTRY_COMPARE(message(), QStringLiteral("Этой серии больше нет в хранилище."));
    QVERIFY(m_page->isEmpty());
    for (const char* name : {"chartNights", "chartStudies", "chartShowAll", "chartTimeframe"})
        QVERIFY2(!widget<QWidget>(name)->isEnabled(), name);
    // A day file without a bar is a series without bars.
    write(day, "no bar\n");
    QTRY_COMPARE(message(), QStringLiteral("В этой серии нет баров, которые можно показать."));
    QVERIFY(!view()->isVisible());
}

void TestChartPage::showsWhatIsImportedMeanwhile()
{
    start();
    QTRY_VERIFY(!message().isEmpty());
    write(day, barLines(ten, 30));
    QTRY_COMPARE(candles().size(), 30U);
    QVERIFY(message().isEmpty());
    QVERIFY(widget<QPushButton>("chartShowAll")->isEnabled());
}

void TestChartPage::offersWhatTheStoredBarsCanBe_data()
{
    QTest::addColumn<QList<int>>("stored");
    QTest::addColumn<QStringList>("offered");
    QTest::addColumn<QString>("chosen");
    const QStringList fromMinutes{"1 мин", "5 мин", "10 мин", "30 мин",
                                  "1 ч",   "1 д",   "1 нед",  "1 мес"};
    QTest::newRow("minutes") << QList<int>{60} << fromMinutes << QStringLiteral("1 мин");
    QTest::newRow("seconds") << QList<int>{1} << (QStringList{"1 с"} + fromMinutes)
                             << QStringLiteral("1 мин");
    QTest::newRow("both") << QList<int>{60, 1} << (QStringList{"1 с"} + fromMinutes)
                          << QStringLiteral("1 мин");
    QTest::newRow("five minutes") << QList<int>{300} << fromMinutes.mid(1)
                                  << QStringLiteral("5 мин");
    QTest::newRow("hours") << QList<int>{3600} << fromMinutes.mid(4) << QStringLiteral("1 ч");
}

void TestChartPage::offersWhatTheStoredBarsCanBe()
{
    QFETCH(const QList<int>, stored);
    for (const int timeframe : stored)
        write(day, barLines(ten, 20), timeframe);
    start();
    QTRY_VERIFY(areBarsThere());
    QTEST(offered(), "offered");
    QTEST(timeframeBox()->currentText(), "chosen");
}

void TestChartPage::showsTheChosenTimeframe()
{
    write(day, barLines(ten, 200));
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::choose(timeframeBox(), QStringLiteral("30 мин"));
    QCOMPARE(view()->timeframe(), Timeframe::Minutes30);
    QCOMPARE(m_page->timeframe(), std::optional(Timeframe::Minutes30));
    // Bars that end at 10:00 to 13:19.
    QTRY_COMPARE(candles().size(), 8U);
    QCOMPARE(candles().front().bar.open, 1.10);
}

void TestChartPage::aTimeframeChosenWhileAllIsShownIsSeen()
{
    writeDays(5, 500);
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QVERIFY(view()->shownTimeframe() > Timeframe::Minutes5);
    testsupport::choose(timeframeBox(), QStringLiteral("5 мин"));
    QCOMPARE(view()->shownTimeframe(), Timeframe::Minutes5);
    QCOMPARE(note()->text(), QString());
    // What stands in the box already can be chosen too.
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QVERIFY(view()->shownTimeframe() > Timeframe::Minutes5);
    testsupport::choose(timeframeBox(), QStringLiteral("5 мин"));
    QCOMPARE(view()->shownTimeframe(), Timeframe::Minutes5);
    // A look at the files changes nothing in that.
    testsupport::click(widget<QPushButton>("chartShowAll"));
    const Timeframe shown = view()->shownTimeframe();
    write(day.addDays(5), barLines(ten, 500, 100));
    QTRY_COMPARE(m_page->storedDays().constLast(), day.addDays(5));
    QVERIFY(view()->shownTimeframe() >= shown);
}

// 20 minutes, and 50 seconds of the first one.
void TestChartPage::startWithSeconds()
{
    QByteArray seconds;
    for (int i = 0; i < 50; ++i)
        seconds += testsupport::barLine(ten.addSecs(i), i + 1);
    write(day, barLines(ten, 20));
    write(day, seconds, 1);
    start();
}

void TestChartPage::goesToTheSecondsAndBack()
{
    startWithSeconds();
    QTRY_COMPARE(candles().size(), 20U);
    testsupport::choose(timeframeBox(), QStringLiteral("1 с"));
    QTRY_COMPARE(view()->timeframe(), Timeframe::Second);
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QTRY_COMPARE(candles().size(), 50U);
    testsupport::choose(timeframeBox(), QStringLiteral("1 мин"));
    QTRY_COMPARE(candles().size(), 20U);
}

void TestChartPage::aStepBackIsSeenInTheRow()
{
    startWithSeconds();
    QTRY_COMPARE(candles().size(), 20U);
    testsupport::choose(timeframeBox(), QStringLiteral("1 с"));
    QTRY_COMPARE(view()->timeframe(), Timeframe::Second);
    testsupport::choose(timeframeBox(), QStringLiteral("5 мин"));
    QTRY_COMPARE(view()->timeframe(), Timeframe::Minutes5);
    view()->goBack();
    QTRY_COMPARE(timeframeBox()->currentText(), QStringLiteral("1 с"));
    QCOMPARE(m_page->state().timeframe, Timeframe::Second);
    QTRY_COMPARE(view()->shownTimeframe(), Timeframe::Second);
    auto* const nights = widget<QToolButton>("chartNights");
    testsupport::click(nights);
    QVERIFY(view()->areNightsShown());
    view()->goBack();
    QVERIFY(!view()->areNightsShown());
    QVERIFY(!nights->isChecked() && !m_page->state().areNightsShown);
}

void TestChartPage::aNoteWithoutRoomIsCutAtItsEndOnly()
{
    FittedLabel label;
    const QString text = QStringLiteral("показаны свечи: 1 нед");
    label.setText(text);
    for (int width = label.fontMetrics().horizontalAdvance(text); width > 40; width -= 7) {
        label.resize(width, 20);
        QCOMPARE(label.shownLines().size(), 1);
        QString shown = label.shownLines().constFirst();
        if (shown.endsWith(u'…'))
            shown.chop(1);
        QVERIFY2(text.startsWith(shown.trimmed()), qPrintable(shown));
    }
}

void TestChartPage::saysWhenALongerTimeframeIsShown()
{
    writeDays(5, 500);
    start();
    QTRY_VERIFY(areBarsThere());
    const auto* const note = widget<QLabel>("chartNote");
    QCOMPARE(note->text(), QString());
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QTRY_VERIFY(view()->shownTimeframe() > Timeframe::Minute);
    QTRY_VERIFY2(note->text().startsWith(QStringLiteral("показаны свечи: ")),
                 qPrintable(note->text()));
    QCOMPARE(timeframeBox()->currentText(), QStringLiteral("1 мин"));
    hands::keyClick(view(), Qt::Key_End);
    for (int i = 0; i < 30; ++i)
        hands::keyClick(view(), Qt::Key_Plus);
    QCOMPARE(view()->shownTimeframe(), Timeframe::Minute);
    QCOMPARE(note->text(), QString());
}

void TestChartPage::nightsAreSwitched()
{
    writeDays(3, 20);
    start();
    QTRY_VERIFY(areBarsThere());
    auto* const button = widget<QToolButton>("chartNights");
    QVERIFY(!button->isChecked());
    testsupport::click(button);
    QVERIFY(view()->areNightsShown());
    QVERIFY(m_page->areNightsShown() && m_page->state().areNightsShown);
    button->setFocus();
    hands::keyClick(button, Qt::Key_Space);
    QVERIFY(!view()->areNightsShown());
}

void TestChartPage::studiesAreSwitched()
{
    write(day, barLines(ten, 60));
    start();
    QTRY_VERIFY(areBarsThere());
    QVERIFY(view()->chart().studies.empty());
    const QList<QAction*> items = widget<QToolButton>("chartStudies")->menu()->actions();
    QCOMPARE(items.size(), 2);
    items.at(0)->trigger();
    QVERIFY(items.at(0)->isChecked() && m_page->isShown(Study::MovingAverage));
    QCOMPARE(view()->chart().studies.size(), 1U);
    items.at(1)->trigger();
    QCOMPARE(view()->chart().studies.size(), 2U);
    items.at(0)->trigger();
    QVERIFY(!items.at(0)->isChecked());
    QCOMPARE(view()->chart().studies.size(), 1U);
    QVERIFY(m_page->state().studies == QList<Study>{Study::VolumeByPrice});
}

void TestChartPage::readsOutTheBarAtTheMouse()
{
    write(day, barLines(ten, 20, 100));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    QCOMPARE(readout(), QString());
    pointAt(QTime(10, 7));
    QCOMPARE(readout(), QStringLiteral("15.01.2024 10:07   Откр. 107.10   Макс. 107.40   "
                                       "Мин. 107.05   Закр. 107.20   Объём 1\u00a0107   "
                                       "Объём в деньгах 2\u00a0107.50   Откр. интерес 107"));
    testsupport::leaveWidget(view());
    QCOMPARE(readout(), QString());
}

void TestChartPage::readsOutTheBarOfTheKeyboard()
{
    write(day, barLines(ten, 20, 100));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_Left);
    QVERIFY(readout().startsWith(QStringLiteral("15.01.2024 10:")));
    const QString first = readout();
    hands::keyClick(view(), Qt::Key_Left);
    QVERIFY(!readout().isEmpty() && readout() != first);
    hands::keyClick(view(), Qt::Key_Escape);
    QCOMPARE(readout(), QString());
}

void TestChartPage::theChartDoesNotJumpWhenTheReadoutComes()
{
    write(day, barLines(ten, 20));
    for (const int width : {800, 400}) {
        start();
        m_page->resize(width, 450);
        QTRY_COMPARE(candles().size(), 20U);
        QCoreApplication::processEvents();
        const QRect before = view()->geometry();
        pointAt(QTime(10, 7));
        QCoreApplication::processEvents();
        QCOMPARE(view()->geometry(), before);
        // And all of it can be read.
        QVERIFY(!readout().isEmpty() && !widget<FittedLabel>("chartReadout")->isElided());
    }
}

void TestChartPage::theReadoutHasNoEmptyLines()
{
    write(day, barLines(ten, 20));
    start();
    m_page->resize(900, 450);
    QTRY_COMPARE(candles().size(), 20U);
    const auto* const label = widget<FittedLabel>("chartReadout");
    QTRY_COMPARE(label->lines(), 1);
    m_page->resize(430, 450);
    QTRY_VERIFY(label->lines() > 1);
    pointAt(QTime(10, 19)); // the one with the longest numbers
    QCOMPARE(label->shownLines().size(), label->lines());
    QCOMPARE(label->shownLines().join(u' ').simplified(), readout().simplified());
    // No number is torn from its name.
    for (const QString& line : label->shownLines())
        QVERIFY2(line.back().isDigit(), qPrintable(line));
    for (const QString& line : label->shownLines().mid(1))
        QVERIFY2(line.front().isLetter(), qPrintable(line));
}

void TestChartPage::whatHasNoRoomIsInTheToolTip()
{
    writeDays(5, 500);
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QTRY_VERIFY(!note()->text().isEmpty());
    m_page->resize(m_page->minimumSizeHint().width(), 450);
    QTRY_VERIFY(note()->isElided());
    QTRY_VERIFY(note()->width() == 0 || note()->shownLines().constFirst().endsWith(u'…'));
    QHelpEvent help(QEvent::ToolTip, {1, 1}, note()->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(note(), &help);
    QVERIFY2(QToolTip::text().startsWith(note()->text()), qPrintable(QToolTip::text()));
    m_page->resize(1300, 450);
    QTRY_VERIFY(!note()->isElided());
    QCOMPARE(note()->shownLines(), QStringList{note()->text()});
}

void TestChartPage::showsAllByTheButton()
{
    writeDays(3, 20);
    start();
    QTRY_VERIFY(areBarsThere());
    hands::keyClick(view(), Qt::Key_Plus);
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QTRY_COMPARE(candles().size(), 60U);
}

void TestChartPage::theScrollBarMovesTheView()
{
    writeDays(3, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    auto* const bar = widget<QScrollBar>("chartScrollBar");
    QTRY_VERIFY(bar->maximum() > 0);
    QVERIFY(bar->value() > bar->maximum() * 9 / 10);
    const double length = view()->range().length();
    bar->setFocus();
    hands::keyClick(bar, Qt::Key_Home);
    QVERIFY(qAbs(view()->range().begin - view()->reach().begin) < 1);
    QVERIFY(qAbs(view()->range().length() - length) < 1e-3);
    const double begin = view()->range().begin;
    hands::keyClick(bar, Qt::Key_PageDown);
    QVERIFY(qAbs(view()->range().begin - begin - length) < 1);
}

void TestChartPage::theViewMovesTheScrollBar()
{
    writeDays(3, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    const auto* const bar = widget<QScrollBar>("chartScrollBar");
    QTRY_VERIFY(bar->maximum() > 0);
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_Home);
    QVERIFY(bar->value() < bar->maximum() / 10);
    hands::keyClick(view(), Qt::Key_End);
    QVERIFY(bar->value() > bar->maximum() * 9 / 10);
}

void TestChartPage::goesToADay()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    m_page->goTo(day.addDays(4), QTime());
    QTRY_VERIFY(view()->pointed());
    QTRY_COMPARE(vexdesk::wallDate(view()->pointed()->begin), day.addDays(4));
    QVERIFY(view()->canGoBack());
}

void TestChartPage::goesToAMoment()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    m_page->goTo(day.addDays(2), QTime(12, 30));
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("17.01.2024 12:30 ")), qPrintable(readout()));
}

void TestChartPage::goesWhereItWasToldBeforeItWasShown()
{
    writeDays(10, 300);
    ChartState state;
    state.series = alfa();
    m_page = std::make_unique<ChartPage>(m_root->path(), state, *m_marks);
    m_page->goTo(day.addDays(2), QTime(12, 30));
    m_page->resize(800, 450);
    m_page->show();
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("17.01.2024 12:30 ")), qPrintable(readout()));
}

// As plug-ins have it shown, whichever timeframe the chart stands at.
void TestChartPage::goesToADayInTheTimeframeThatHasIt_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<Timeframe>("timeframe");
    QTest::addColumn<QString>("begin");
    const QDate ofSeconds = day.addDays(8);
    QTest::newRow("at once") << "" << ofSeconds << QTime(10, 2) << Timeframe::Second
                             << "23.01.2024 10:02:00 ";
    QTest::newRow("from minutes") << "1 мин" << ofSeconds << QTime(10, 2) << Timeframe::Second
                                  << "23.01.2024 10:02:00 ";
    QTest::newRow("from hours, a day")
        << "1 ч" << ofSeconds << QTime() << Timeframe::Second << "23.01.2024 10:00:00 ";
    QTest::newRow("from seconds") << "1 с" << day << QTime(10, 2) << Timeframe::Minute
                                  << "15.01.2024 10:02 ";
    QTest::newRow("in both, at seconds")
        << "1 с" << day.addDays(1) << QTime(10, 2) << Timeframe::Second << "16.01.2024 10:02:00 ";
    QTest::newRow("in both, at minutes") << "5 мин" << day.addDays(1) << QTime(10, 5)
                                         << Timeframe::Minutes5 << "16.01.2024 10:00 – 10:05 ";
}

void TestChartPage::goesToADayInTheTimeframeThatHasIt()
{
    QFETCH(const QString, chosen);
    QFETCH(const QDate, date);
    QFETCH(const QTime, time);
    QFETCH(const Timeframe, timeframe);
    QFETCH(const QString, begin);
    QByteArray seconds;
    for (int i = 0; i < 300; ++i)
        seconds += testsupport::barLine(ten.addSecs(i), i + 1);
    writeDays(5, 100);
    for (const int days : {1, 8})
        write(day.addDays(days), seconds, 1);
    vexdesk::ChartMemory().store(); // none of what was open before
    vexdesk::ChartTabs tabs(m_root->path(), *m_marks);
    vexdesk::Charts charts(m_root->path(), tabs, *m_marks);
    tabs.resize(800, 450);
    tabs.show();
    if (!chosen.isEmpty()) {
        ChartPage& page = tabs.open(alfa());
        QTRY_VERIFY(!page.isEmpty());
        testsupport::choose(testsupport::child<QComboBox>(&page, "chartTimeframe"), chosen);
    }
    std::optional<vexdesk::ChartShown> shown;
    charts.show(alfa(), date, time, [&shown](vexdesk::ChartShown told) { shown = told; });
    QTRY_VERIFY(shown);
    QCOMPARE(*shown, vexdesk::ChartShown::Moment);
    ChartPage& page = *tabs.current();
    auto* const readout = testsupport::child<QLabel>(&page, "chartReadout");
    QTRY_VERIFY2(readout->text().startsWith(begin), qPrintable(readout->text()));
    QCOMPARE(page.timeframe(), timeframe);
    QCOMPARE(page.view().shownTimeframe(), timeframe);
    QCOMPARE(testsupport::child<QComboBox>(&page, "chartTimeframe")->currentData().toInt(),
             static_cast<int>(timeframe));
}

void TestChartPage::goesToSecondsWhileMinutesAreRead()
{
    writeDays(3, 100);
    const QDate other = day.addDays(4);
    write(other, testsupport::barLine(ten, 1), 1);
    ChartState state;
    state.series = alfa();
    m_page = std::make_unique<ChartPage>(m_root->path(), state, *m_marks);
    const auto goThere = [this, other] { m_page->goTo(other, ten, {1}); };
    bool isTold = false;
    connect(m_page.get(), &ChartPage::changed, this, [this, goThere, &isTold] {
        if (!m_page->timeframes().isEmpty() && !std::exchange(isTold, true))
            QTimer::singleShot(0, m_page.get(), goThere);
    });
    m_page->resize(800, 450);
    m_page->show();
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("19.01.2024 10:00:00 ")),
                 qPrintable(readout()));
}

void TestChartPage::goesToTheFirstSecondsThatCameWhileItWasHidden()
{
    writeDays(2, 20);
    start();
    QTRY_VERIFY(areBarsThere());
    m_page->hide();
    const QDate other = day.addDays(4);
    write(other, testsupport::barLine(ten, 1), 1);
    m_page->show();
    m_page->goTo(other, ten, {1});
    QTRY_VERIFY2(readout().startsWith(QStringLiteral("19.01.2024 10:00:00 ")),
                 qPrintable(readout()));
}

void TestChartPage::comesBackAsItWas()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::choose(timeframeBox(), QStringLiteral("5 мин"));
    m_page->show(Study::MovingAverage, true);
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_PageUp);
    hands::keyClick(view(), Qt::Key_Plus);
    QTRY_VERIFY(areBarsThere());
    const ChartState before = m_page->state();
    QVERIFY(before.end > 0 && before.slotsInView > 0);
    const qint64 last = candles().back().end;
    start(before);
    QTRY_VERIFY(areBarsThere());
    QTRY_COMPARE(candles().back().end, last);
    QCOMPARE(timeframeBox()->currentText(), QStringLiteral("5 мин"));
    QVERIFY(m_page->isShown(Study::MovingAverage));
    const ChartState after = m_page->state();
    QCOMPARE(after.end, before.end);
    QVERIFY(qAbs(after.slotsInView - before.slotsInView) < 1);
}

void TestChartPage::everythingComesBackInAnotherSize()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::click(widget<QPushButton>("chartShowAll"));
    const ChartState before = m_page->state();
    QVERIFY(before.isAll);
    ChartState named = before;
    m_page = std::make_unique<ChartPage>(m_root->path(), named, *m_marks);
    m_page->resize(450, 300);
    m_page->show();
    QTRY_VERIFY(areBarsThere());
    QTRY_COMPARE(vexdesk::wallDate(candles().back().end), day.addDays(9));
    QTRY_COMPARE(vexdesk::wallDate(candles().front().end), day);
    QVERIFY(m_page->state() == before);
}

void TestChartPage::keepsItsPlaceWhenItIsHiddenAndShown()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    hands::keyClick(view(), Qt::Key_Home);
    QTRY_VERIFY(areBarsThere());
    const ChartState before = m_page->state();
    m_page->hide();
    QVERIFY(m_page->state() == before);
    write(day.addDays(10), barLines(ten, 20));
    m_page->show();
    QTRY_COMPARE(m_page->storedDays().constLast(), day.addDays(10));
    QTRY_VERIFY(areBarsThere());
    QTRY_COMPARE(vexdesk::wallDate(candles().front().begin), day);
    QVERIFY(qAbs(m_page->state().slotsInView - before.slotsInView) < 1);
}

// A network drive that goes, and is there again.
void TestChartPage::keepsItsPlaceWhileTheStoreIsAway()
{
    writeDays(10, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    hands::keyClick(view(), Qt::Key_Home);
    hands::keyClick(view(), Qt::Key_Plus);
    QTRY_VERIFY(areBarsThere());
    const ChartState before = m_page->state();
    const QString there = m_root->filePath(QStringLiteral("NORD"));
    const QString away = m_root->filePath(QStringLiteral("away"));
    for (int time = 0; time < 2; ++time) {
        QVERIFY(QDir().rename(there, away));
        QTRY_VERIFY(!message().isEmpty());
        QVERIFY(m_page->state() == before);
        QVERIFY(QDir().rename(away, there));
        QTRY_VERIFY(message().isEmpty());
        QTRY_VERIFY(areBarsThere());
        QTRY_COMPARE(vexdesk::wallDate(candles().front().begin), day);
        QVERIFY(qAbs(m_page->state().slotsInView - before.slotsInView) < 1);
    }
}

void TestChartPage::keepsNoBarsWhileItIsHidden()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    m_page->hide();
    QCOMPARE(candles().size(), 0U);
    m_page->show();
    QTRY_COMPARE(candles().size(), 20U);
}

void TestChartPage::followsTheFiles()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    write(day, barLines(ten, 25));
    QTRY_COMPARE(candles().size(), 25U);
    const QString file = m_root->filePath(QStringLiteral("NORD/MAIN/ALFA/") + dayFile(day));
    QVERIFY(QFile::remove(file));
    QTRY_VERIFY(!message().isEmpty());
    write(day, barLines(ten, 30));
    QTRY_COMPARE(candles().size(), 30U);
    // A timeframe that comes is offered.
    write(day, testsupport::barLine(ten, 1), 1);
    QTRY_COMPARE(offered().value(0), QStringLiteral("1 с"));
    QCOMPARE(timeframeBox()->currentText(), QStringLiteral("1 мин"));
}

void TestChartPage::asksForMarks()
{
    OneMark source;
    m_marks->add(&source);
    writeDays(3, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    QTRY_VERIFY(!source.asked.isEmpty());
    QVERIFY(source.asked.constFirst().second >= day.addDays(2));
    m_page->goTo(day, QTime(10, 7));
    QTRY_VERIFY2(readout().contains(source.mark.text), qPrintable(readout()));
    // Not at every step.
    QCoreApplication::processEvents();
    const auto count = source.asked.size();
    for (int i = 0; i < 20; ++i)
        hands::keyClick(view(), Qt::Key_Left);
    QCoreApplication::processEvents();
    QVERIFY2(source.asked.size() <= count + 1, qPrintable(QString::number(source.asked.size())));
    m_marks->remove(&source);
}

void TestChartPage::asksAgainWhenMarksHaveChanged()
{
    OneMark source;
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    m_marks->add(&source);
    QTRY_COMPARE(source.asked.size(), 1);
    pointAt(QTime(10, 7));
    QTRY_VERIFY2(readout().contains(source.mark.text), qPrintable(readout()));
    source.mark.text = QStringLiteral("Найдены сделки");
    m_marks->tellChange({QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA")});
    QCoreApplication::processEvents();
    QCOMPARE(source.asked.size(), 1);
    m_marks->tellChange(alfa());
    m_marks->tellChange(alfa());
    QTRY_COMPARE(source.asked.size(), 2);
    QTRY_VERIFY2(readout().contains(source.mark.text), qPrintable(readout()));
    m_marks->remove(&source);
    QTRY_VERIFY2(!readout().contains(source.mark.text), qPrintable(readout()));
    QVERIFY(!readout().isEmpty());
}

void TestChartPage::marksThatThrowAreNone()
{
    OneMark source;
    OneMark broken;
    broken.throws = true;
    m_marks->add(&broken);
    m_marks->add(&source);
    m_marks->add(&source); // a second time is passed over
    QCOMPARE(m_marks->marks(alfa(), day, day).size(), 1);
    QCOMPARE(broken.asked.size(), 1);
    m_marks->remove(&source);
    m_marks->remove(&source);
    QCOMPARE(m_marks->marks(alfa(), day, day).size(), 0);
}

void TestChartPage::copiesTheBars()
{
    write(day, barLines(ten, 20, 100));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 21); // with a heading
    QVERIFY2(lines.at(1).contains(u'\t'), qPrintable(lines.at(1)));
}

// 40 days of which a few are in memory, all marked, and the minutes shown.
void TestChartPage::markManyDays()
{
    writeDays(40, 300);
    start();
    QTRY_VERIFY(areBarsThere());
    testsupport::click(widget<QPushButton>("chartShowAll"));
    QCOMPARE(view()->shownTimeframe(), Timeframe::Day);
    QTRY_COMPARE(candles().size(), 40U);
    view()->setFocus();
    // No event by the way: the days would be read that are shown meanwhile.
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(view(), Qt::Key_Left, i == 0 ? Qt::NoModifier : Qt::ShiftModifier);
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(view(), Qt::Key_Plus);
    QCOMPARE(view()->shownTimeframe(), Timeframe::Minute);
    QVERIFY(view()->hasMark());
}

void TestChartPage::copiesBarsThatWereNotRead()
{
    markManyDays();
    QSignalSpy told(m_page.get(), &ChartPage::told);
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("before"));
    // No event by the way: the bars are read from one to the next.
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    // Nothing in part: the clipboard waits for all, and the chart says what it is waiting for.
    QCOMPARE(clipboard->text(), QStringLiteral("before"));
    QVERIFY2(note()->text().startsWith(QStringLiteral("Копирование баров: день ")),
             qPrintable(note()->text()));
    QCOMPARE(told.last().front().toString(), note()->text());
    QTRY_COMPARE(told.last().front().toString(),
                 QStringLiteral("Скопировано баров: 12\u00a0000, таймфрейм: 1 мин"));
    const QStringList lines = clipboard->text().split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 40 * 300 + 1);
    QVERIFY2(lines.at(1).startsWith(QStringLiteral("15.01.2024\t10:00:00\t")),
             qPrintable(lines.at(1)));
    QVERIFY2(lines.last().startsWith(QStringLiteral("23.02.2024\t14:59:00\t")),
             qPrintable(lines.last()));
    QCOMPARE(note()->text(), QString());
}

void TestChartPage::copyingIsGivenUpByKey()
{
    markManyDays();
    QSignalSpy told(m_page.get(), &ChartPage::told);
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("before"));
    // No event by the way: the bars would have been read by then.
    QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
    // First the mark and the crosshair go, as ever.
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(view(), Qt::Key_Escape);
    QCOMPARE(told.last().front().toString(), QStringLiteral("Копирование баров отменено"));
    const auto count = told.count();
    QCOMPARE(note()->text(), QString());
    hands::keyClick(view(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(told.count(), count);
    QCOMPARE(clipboard->text(), QStringLiteral("before"));
}

void TestChartPage::asksBeforeDaysAreLeftOut()
{
    for (const int other : {0, 2})
        write(day.addDays(other), barLines(ten, 20));
    write(day.addDays(1), "no bar\n");
    start();
    QTRY_COMPARE(candles().size(), 40U);
    QClipboard* const clipboard = QGuiApplication::clipboard();
    clipboard->setText(QStringLiteral("before"));
    testsupport::ModalSteps steps;
    steps.on<QMessageBox>([](QMessageBox* box) {
        QVERIFY2(box->text().contains(QStringLiteral("16.01.2024")), qPrintable(box->text()));
        hands::keyClick(box, Qt::Key_Escape);
    });
    steps.on<QMessageBox>([clipboard](QMessageBox* box) {
        QCOMPARE(clipboard->text(), QStringLiteral("before"));
        for (QAbstractButton* const button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::AcceptRole)
                button->click();
        }
    });
    // The day is looked at once more: it may be readable by now.
    for (int i = 0; i < 2; ++i) {
        QSignalSpy told(m_page.get(), &ChartPage::told);
        hands::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
        QTRY_VERIFY(!told.isEmpty() &&
                    !told.back().front().toString().contains(QStringLiteral("Esc")));
    }
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(clipboard->text().split(u'\n', Qt::SkipEmptyParts).size(), 41);
}

void TestChartPage::nothingIsCopiedOfNothing()
{
    write(day, barLines(ten, 20));
    write(day.addDays(30), barLines(ten, 20));
    start();
    QTRY_VERIFY(areBarsThere());
    m_page->showNights(true);
    m_page->goTo(day.addDays(15), QTime(12, 0));
    QTRY_VERIFY(candles().empty());
    QSignalSpy told(m_page.get(), &ChartPage::told);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    m_page->copyBars();
    QTRY_COMPARE(told.count(), 1);
    QVERIFY(told.front().front().toString().startsWith(QStringLiteral("Копировать нечего")));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

void TestChartPage::copiesThePicture()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    m_page->copyPicture();
    QCOMPARE(QGuiApplication::clipboard()->image().size(), view()->size());
}

void TestChartPage::tabGoesThroughTheRowAndTheChart()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_VERIFY(areBarsThere());
    timeframeBox()->setFocus(Qt::TabFocusReason);
    QCOMPARE(testsupport::tabOrder(m_page.get()),
             (QList<QWidget*>{timeframeBox(), widget<QToolButton>("chartNights"),
                              widget<QToolButton>("chartStudies"),
                              widget<QPushButton>("chartShowAll"), view()}));
    timeframeBox()->setFocus();
    m_page->setFocus();
    QCOMPARE(QApplication::focusWidget(), view());
}

void TestChartPage::aClickLeavesTheKeysToTheChart()
{
    writeDays(2, 20);
    start();
    QTRY_VERIFY(areBarsThere());
    const auto keysAreTheCharts = [this] {
        QCOMPARE(QApplication::focusWidget(), view());
        hands::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QVERIFY(view()->pointed());
        hands::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    };
    // Else a list that was opened just now would take the click for a second one.
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);
    const auto restore =
        qScopeGuard([interval] { QApplication::setDoubleClickInterval(interval); });
    for (const bool hadKeys : {false, true}) {
        if (hadKeys)
            timeframeBox()->setFocus(Qt::TabFocusReason);
        hands::mouseClick(timeframeBox(), Qt::LeftButton);
        QAbstractItemView* const list = timeframeBox()->view();
        QTRY_VERIFY(list->isVisible());
        const QModelIndex row = list->model()->index(hadKeys ? 0 : 2, 0);
        const QPoint place = list->visualRect(row).center();
        testsupport::moveMouse(list->viewport(), place);
        hands::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTRY_VERIFY(!list->isVisible());
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
        QCOMPARE(timeframeBox()->currentIndex(), row.row());
        keysAreTheCharts();
    }
    for (const char* name : {"chartNights", "chartShowAll"}) {
        testsupport::click(widget<QAbstractButton>(name));
        keysAreTheCharts();
    }
}

void TestChartPage::theBoxIsDrivenByKeysToo()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_VERIFY(areBarsThere());
    timeframeBox()->setFocus(Qt::TabFocusReason);
    hands::keyClick(timeframeBox(), Qt::Key_Down);
    QCOMPARE(view()->timeframe(), Timeframe::Minutes5);
    hands::keyClick(timeframeBox(), Qt::Key_Down);
    QCOMPARE(view()->timeframe(), Timeframe::Minutes10);
    QCOMPARE(QApplication::focusWidget(), timeframeBox());
}

void TestChartPage::theWheelChoosesNoTimeframe()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_VERIFY(areBarsThere());
    for (const bool hasKeys : {false, true}) {
        if (hasKeys)
            timeframeBox()->setFocus(Qt::TabFocusReason);
        for (const int angle : {-120, 120, -120}) {
            const QPoint place = timeframeBox()->rect().center();
            QWheelEvent event(place, timeframeBox()->mapToGlobal(QPointF(place)), QPoint(),
                              {0, angle}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(timeframeBox(), &event);
        }
        QCOMPARE(timeframeBox()->currentText(), QStringLiteral("1 мин"));
        QCOMPARE(view()->timeframe(), Timeframe::Minute);
    }
}

void TestChartPage::isSmallEnough()
{
    write(day, barLines(ten, 20));
    start();
    QTRY_COMPARE(candles().size(), 20U);
    QVERIFY2(m_page->minimumSizeHint().width() <= 450,
             qPrintable(QString::number(m_page->minimumSizeHint().width())));
    QVERIFY(m_page->minimumSizeHint().height() <= 300);
    m_page->resize(450, 300);
    QTRY_VERIFY(view()->chart().prices.place.height() > 60);
    QVERIFY(view()->chart().prices.place.width() > 200);
}

QTEST_MAIN(TestChartPage)
#include "tst_chartpage.moc"
