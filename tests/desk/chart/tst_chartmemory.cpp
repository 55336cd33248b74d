// SPDX-License-Identifier: MIT
// What is remembered of charts: as a text, in the settings, and which of them.

#include "desk/chart/chartmemory.h"
#include "desk/chart/timeframecode.h"
#include "support/strictlog.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/icore.h>

#include <QtTest/QTest>

using vexdesk::ChartMemory;
using vexdesk::ChartState;
using vexdesk::SeriesName;
using vexdesk::Study;
using vexdesk::Timeframe;

namespace {

SeriesName alfa()
{
    return {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")};
}

SeriesName other(int number)
{
    return {QStringLiteral("NORD"), QStringLiteral("MAIN"), QString::number(number)};
}

// With nothing as it is at first.
ChartState fullState()
{
    ChartState state;
    state.series = alfa();
    state.timeframe = Timeframe::Hour;
    state.areNightsShown = true;
    state.studies = {Study::MovingAverage, Study::VolumeByPrice};
    state.end = 1705312800;
    state.slotsInView = 120.5;
    state.isAll = true;
    return state;
}

ChartState freshState(const SeriesName& series)
{
    ChartState state;
    state.series = series;
    return state;
}

} // namespace

class TestChartMemory final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void everyTimeframeHasACode();
    void aStateIsItsText();
    void aTextThatIsNoState_data();
    void aTextThatIsNoState();
    void partsThatMakeNoSenseAreAsInANewChart_data();
    void partsThatMakeNoSenseAreAsInANewChart();
    void theLastOpenedComesFirst();
    void aChartComesBackAsItWas();
    void isInTheSettings();
    void takesNothingStrangeFromTheSettings();
    void forgetsTheOldestButNotATab();
};

void TestChartMemory::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
}

void TestChartMemory::everyTimeframeHasACode()
{
    QStringList codes;
    for (const Timeframe timeframe : vexdesk::allTimeframes) {
        const QString code = vexdesk::timeframeCode(timeframe);
        QCOMPARE(vexdesk::timeframeOfCode(code), std::optional(timeframe));
        QVERIFY2(!codes.contains(code), qPrintable(code));
        codes.append(code);
    }
    QCOMPARE(vexdesk::timeframeCode(Timeframe::Minutes10), QStringLiteral("Minutes10"));
    for (const char* strange : {"", "minute", "60", "Minutes"})
        QVERIFY2(!vexdesk::timeframeOfCode(QLatin1String(strange)), strange);
}

void TestChartMemory::aStateIsItsText()
{
    for (const ChartState& state : {fullState(), freshState(alfa())}) {
        const auto read = vexdesk::chartStateOf(vexdesk::toText(state));
        QVERIFY(read);
        QVERIFY(*read == state);
    }
}

void TestChartMemory::aTextThatIsNoState_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("no object") << QStringLiteral("[1]");
    QTest::newRow("cut off") << vexdesk::toText(fullState()).chopped(5);
    QTest::newRow("no security") << QStringLiteral(R"({"stock":"A","board":"B"})");
    QTest::newRow("no text") << QStringLiteral(R"({"stock":1,"board":"B","security":"C"})");
}

void TestChartMemory::aTextThatIsNoState()
{
    QFETCH(const QString, text);
    QVERIFY(!vexdesk::chartStateOf(text));
}

void TestChartMemory::partsThatMakeNoSenseAreAsInANewChart_data()
{
    QTest::addColumn<QString>("part");
    QTest::newRow("nothing") << QStringLiteral(R"("x":1)");
    QTest::newRow("timeframe") << QStringLiteral(R"("timeframe":"Century")");
    QTest::newRow("nights") << QStringLiteral(R"("nights":"yes")");
    QTest::newRow("studies") << QStringLiteral(R"("studies":["Astrology",7])");
    QTest::newRow("end") << QStringLiteral(R"("end":"soon")");
    QTest::newRow("everything") << QStringLiteral(R"("all":"yes")");
    QTest::newRow("slots") << QStringLiteral(R"("slots":-3)");
    QTest::newRow("too many slots") << QStringLiteral(R"("slots":1e999)");
}

void TestChartMemory::partsThatMakeNoSenseAreAsInANewChart()
{
    QFETCH(const QString, part);
    const auto state = vexdesk::chartStateOf(
        QStringLiteral(R"({"stock":"NORD","board":"MAIN","security":"ALFA",%1})").arg(part));
    if (part.contains(QLatin1String("1e999")) && !state)
        return; // a number that is none makes the whole text none
    QVERIFY(state);
    QVERIFY(*state == freshState(alfa()));
}

void TestChartMemory::theLastOpenedComesFirst()
{
    ChartMemory memory;
    for (const int number : {1, 2, 3, 1})
        memory.open(other(number));
    QList<SeriesName> recent;
    for (const ChartState& state : memory.recent())
        recent.append(state.series);
    QVERIFY((recent == QList<SeriesName>{other(1), other(3), other(2)}));
}

void TestChartMemory::aChartComesBackAsItWas()
{
    ChartMemory memory;
    QVERIFY(memory.stateOf(alfa()) == freshState(alfa()));
    memory.open(alfa());
    memory.remember(fullState());
    memory.open(other(1));
    QVERIFY(memory.recent().constLast() == fullState()); // its place stays
    memory.open(alfa());
    QVERIFY(memory.stateOf(alfa()) == fullState());
}

void TestChartMemory::isInTheSettings()
{
    ChartMemory memory;
    memory.open(other(1));
    memory.open(alfa());
    memory.remember(fullState());
    memory.setTabs({alfa(), other(1)}, other(1));
    memory.store();
    const ChartMemory again = ChartMemory::stored();
    QVERIFY(again.recent() == memory.recent());
    QVERIFY((again.tabs() == QList<SeriesName>{alfa(), other(1)}));
    QVERIFY(again.currentTab() == std::optional(other(1)));
    memory.setTabs({}, std::nullopt);
    memory.store();
    QVERIFY(ChartMemory::stored().tabs().isEmpty());
    QVERIFY(!ChartMemory::stored().currentTab());
}

void TestChartMemory::takesNothingStrangeFromTheSettings()
{
    {
        AppSettings settings(QStringLiteral("Desk/Charts"));
        const QString text = vexdesk::toText(fullState());
        settings.setValue(QStringLiteral("recent"),
                          QStringList{QStringLiteral("nonsense"), text, text});
        settings.setValue(QStringLiteral("tabs"),
                          QStringList{QStringLiteral("NORD/MAIN/ALFA"), QStringLiteral("A/B/C"),
                                      QStringLiteral("NORD/MAIN/ALFA")});
        settings.setValue(QStringLiteral("current"), QStringLiteral("A/B/C"));
    }
    const ChartMemory memory = ChartMemory::stored();
    QCOMPARE(memory.recent().size(), 1);
    QVERIFY((memory.tabs() == QList<SeriesName>{alfa()}));
    QVERIFY(!memory.currentTab());
}

void TestChartMemory::forgetsTheOldestButNotATab()
{
    constexpr int many = 150;
    ChartMemory memory;
    memory.open(alfa());
    memory.open(other(0));
    memory.setTabs({alfa()}, alfa());
    for (int i = 1; i <= many; ++i)
        memory.open(other(i));
    QVERIFY(memory.recent().constFirst().series == other(many));
    QVERIFY2(memory.recent().size() < many + 2,
             qPrintable(QString::number(memory.recent().size())));
    memory.remember(fullState());
    QVERIFY(memory.stateOf(alfa()) == fullState());
}

QTEST_GUILESS_MAIN(TestChartMemory)
#include "tst_chartmemory.moc"
