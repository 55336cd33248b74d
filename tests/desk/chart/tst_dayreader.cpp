// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"
#include "desk/chart/wallclock.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::Bar;
using vexdesk::BarSeries;
using vexdesk::ReadDays;
using vexdesk::wallTime;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);

bool goOn(int, int)
{
    return true;
}

} // namespace

class TestDayReader final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_directory.reset(); }

    void readsWhatAnImportHasWritten();
    void readsTheVolumeOfAnEditedLine();
    void readsLinesOfFiveFields();
    void passesOverWhatIsNoBar();
    void putsLinesInOrder();
    void pricesKeepTheirDecimals();
    void aVolumeBeyondThirtyTwoBitsIsNothing();
    void anHourThatTheClockSkipsIsRead();
    void aMissingFileHasNoBars();
    void aDayThatCannotBeReadToItsEndHasNoBars();
    void readsTheDaysOfOneTimeframeInOrder();
    void readsAgainOnlyWhatHasChanged();
    void doesNotTrustAFileThatWasJustWritten();
    void forgetsADayWhoseFileIsGone();
    void anEmptyDayIsNoDayOfTheSeries();
    void stopsWhenItIsTold();

private:
    QString path(const QString& name) const { return m_directory->filePath(name); }
    BarSeries::Day read(const QByteArray& content) const;
    /// Makes the file as old as one that nobody is writing.
    void settle(const QString& name) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestDayReader::init()
{
    testsupport::failOnStrayWarnings();
    m_directory = std::make_unique<QTemporaryDir>();
}

BarSeries::Day TestDayReader::read(const QByteArray& content) const
{
    writeFile(path(dayFile(day)), content);
    return vexdesk::readDay(path(dayFile(day)), day);
}

void TestDayReader::settle(const QString& name) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-60),
                             QFileDevice::FileModificationTime));
}

void TestDayReader::readsWhatAnImportHasWritten()
{
    const auto bars = read("102000;120.03;120.06;120.01;120.05;180;21609.00;7\n");
    QVERIFY(bars);
    QCOMPARE(bars->bars().size(), 1U);
    const Bar& bar = bars->bars().front();
    QCOMPARE(bar.time, wallTime(day, QTime(10, 20)));
    QCOMPARE(bar.open, 120.03);
    QCOMPARE(bar.high, 120.06);
    QCOMPARE(bar.low, 120.01);
    QCOMPARE(bar.close, 120.05);
    QCOMPARE(bar.volume, 180);
    QCOMPARE(bar.value, 21609.0);
    QCOMPARE(bar.openInterest, 7);
    QCOMPARE(bars->decimals(), 2);
}

void TestDayReader::readsTheVolumeOfAnEditedLine()
{
    const auto imported = read(barLine(ten, 5));
    const auto edited = read(testsupport::editedBarLine(ten, 5));
    QCOMPARE(imported->bars().front().volume, 1005);
    QVERIFY(imported->bars().front() == edited->bars().front());
    const auto plain = read("102000;1;1;1;1;0.00;33;0\n");
    QCOMPARE(plain->bars().front().volume, 33);
    QCOMPARE(plain->bars().front().value, 0.0);
}

void TestDayReader::readsLinesOfFiveFields()
{
    const auto bars = read("102000;1.5;2;1;1.25");
    QVERIFY(bars);
    QCOMPARE(bars->bars().front().close, 1.25);
    QCOMPARE(bars->bars().front().volume, 0);
}

void TestDayReader::passesOverWhatIsNoBar()
{
    const auto bars = read("\n"
                           "text\n"
                           "250000;1;1;1;1;1;1;1\n"
                           ";1;1;1;1;1;1;1\n"
                           "100000;1;1;1;;1;1;1\n"
                           "100000;1;1;x;1;1;1;1\n"
                           "100000;1;1;1\n"
                           "100100;-1;0;-2;0;1;1.0;1\n");
    QVERIFY(bars);
    QCOMPARE(bars->bars().size(), 1U);
    QCOMPARE(bars->bars().front().low, -2.0);
}

void TestDayReader::putsLinesInOrder()
{
    const auto bars = read("100200;2;2;2;2;1;1.0;0\n"
                           "100100;1;1;1;1;1;1.0;0\n"
                           "100200;3;3;3;3;1;1.0;0\n");
    QCOMPARE(bars->bars().size(), 3U);
    QCOMPARE(bars->bars()[0].open, 1.0);
    // Of the same time, the one that stands first is the first.
    QCOMPARE(bars->bars()[1].open, 2.0);
    QCOMPARE(bars->bars()[2].open, 3.0);
}

void TestDayReader::pricesKeepTheirDecimals()
{
    QCOMPARE(read("100100;1;1;1;1;1;1.0;0\n")->decimals(), 0);
    QCOMPARE(read("100100;1;1;1.000;1.5;1;1.0;0\n")->decimals(), 3);
    const auto bars = read("100100;0.00001;1;0.00001;1;1;1.0;0\n");
    QCOMPARE(bars->decimals(), 5);
    QCOMPARE(bars->bars().front().low, 0.00001);
    QCOMPARE(read("100100;1;1;1;0.10000000000000000;1;1.0;0\n")->decimals(), 15);
}

void TestDayReader::aVolumeBeyondThirtyTwoBitsIsNothing()
{
    QCOMPARE(read("100100;1;1;1;1;3000000000;1.0;0\n")->bars().front().volume, 0);
}

void TestDayReader::anHourThatTheClockSkipsIsRead()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    const QDate spring(2024, 3, 31);
    writeFile(path(dayFile(spring)), barLines(QTime(1, 58), 66));
    const auto bars = vexdesk::readDay(path(dayFile(spring)), spring);
    QCOMPARE(bars->bars().size(), 66U);
    for (size_t i = 1; i < 66; ++i)
        QCOMPARE(bars->bars()[i].time - bars->bars()[i - 1].time, 60);
}

void TestDayReader::aMissingFileHasNoBars()
{
    QVERIFY(!vexdesk::readDay(path(QStringLiteral("none")), day));
    QVERIFY(!read(""));
    QVERIFY(vexdesk::readDays(path(QStringLiteral("none")), 60, {}, goOn).empty());
}

void TestDayReader::aDayThatCannotBeReadToItsEndHasNoBars()
{
    QVERIFY(read(barLines(ten, 3)));
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 2));
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(day), EIO, 1);
        QVERIFY(!vexdesk::readDay(path(dayFile(day)), day));
        QVERIFY(fault.failed() > 0);
        // The other days are shown.
        const ReadDays days = vexdesk::readDays(m_directory->path(), 60, {}, goOn);
        QCOMPARE(vexdesk::seriesOf(days).size(), 2);
    }
    QCOMPARE(vexdesk::readDay(path(dayFile(day)), day)->bars().size(), 3U);
}

void TestDayReader::readsTheDaysOfOneTimeframeInOrder()
{
    for (const int offset : {2, 0, 1})
        writeFile(path(dayFile(day.addDays(offset))), barLines(ten, 3 + offset, 10 * offset));
    writeFile(path(dayFile(day, 1)), barLines(ten, 30));
    writeFile(path(QStringLiteral("20240115_60")), barLines(ten, 30));
    writeFile(path(QStringLiteral("2024011_60.iss")), barLines(ten, 30));
    const BarSeries series =
        vexdesk::seriesOf(vexdesk::readDays(m_directory->path(), 60, {}, goOn));
    QCOMPARE(series.size(), 12);
    QCOMPARE(series.at(0).time, wallTime(day, ten));
    QCOMPARE(series.at(3).time, wallTime(day.addDays(1), ten));
    QCOMPARE(series.lastTime(), wallTime(day.addDays(2), QTime(10, 4)));
    const BarSeries seconds =
        vexdesk::seriesOf(vexdesk::readDays(m_directory->path(), 1, {}, goOn));
    QCOMPARE(seconds.size(), 30);
}

void TestDayReader::readsAgainOnlyWhatHasChanged()
{
    for (int i = 0; i < 3; ++i) {
        writeFile(path(dayFile(day.addDays(i))), barLines(ten, 3));
        settle(dayFile(day.addDays(i)));
    }
    const ReadDays before = vexdesk::readDays(m_directory->path(), 60, {}, goOn);
    writeFile(path(dayFile(day.addDays(1))), barLines(ten, 2, 7));
    const ReadDays after = vexdesk::readDays(m_directory->path(), 60, before, goOn);
    QCOMPARE(after.at(day).bars, before.at(day).bars);
    QCOMPARE(after.at(day.addDays(2)).bars, before.at(day.addDays(2)).bars);
    QCOMPARE(after.at(day.addDays(1)).bars->bars().size(), 2U);
}

void TestDayReader::doesNotTrustAFileThatWasJustWritten()
{
    const QString name = dayFile(day);
    writeFile(path(name), barLine(ten, 1));
    const ReadDays before = vexdesk::readDays(m_directory->path(), 60, {}, goOn);
    const QDateTime time = QFileInfo(path(name)).lastModified();
    // The same size at the same time.
    writeFile(path(name), barLine(ten, 2));
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    const ReadDays after = vexdesk::readDays(m_directory->path(), 60, before, goOn);
    QCOMPARE(after.at(day).bars->bars().front().volume, 1002);
}

void TestDayReader::forgetsADayWhoseFileIsGone()
{
    writeFile(path(dayFile(day)), barLine(ten, 1));
    writeFile(path(dayFile(day.addDays(1))), barLine(ten, 1));
    const ReadDays before = vexdesk::readDays(m_directory->path(), 60, {}, goOn);
    QCOMPARE(before.size(), 2U);
    QVERIFY(QFile::remove(path(dayFile(day))));
    const ReadDays after = vexdesk::readDays(m_directory->path(), 60, before, goOn);
    QCOMPARE(after.size(), 1U);
    QCOMPARE(vexdesk::seriesOf(after).firstTime(), wallTime(day.addDays(1), ten));
}

void TestDayReader::anEmptyDayIsNoDayOfTheSeries()
{
    writeFile(path(dayFile(day)), "");
    writeFile(path(dayFile(day.addDays(1))), barLine(ten, 1));
    const BarSeries series =
        vexdesk::seriesOf(vexdesk::readDays(m_directory->path(), 60, {}, goOn));
    QCOMPARE(series.days().size(), 1U);
    QCOMPARE(series.size(), 1);
}

void TestDayReader::stopsWhenItIsTold()
{
    for (int i = 0; i < 10; ++i)
        writeFile(path(dayFile(day.addDays(i))), barLine(ten, 1));
    QList<int> told;
    const ReadDays read = vexdesk::readDays(m_directory->path(), 60, {}, [&](int done, int total) {
        told.append(done);
        return total == 10 && done < 4;
    });
    QCOMPARE(told, QList<int>({0, 1, 2, 3, 4}));
    QCOMPARE(read.size(), 4U);
}

QTEST_GUILESS_MAIN(TestDayReader)
#include "tst_dayreader.moc"
