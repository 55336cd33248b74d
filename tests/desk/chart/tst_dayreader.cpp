// SPDX-License-Identifier: MIT
#include "desk/chart/dayreader.h"
#include "desk/chart/wallclock.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::writeFile;
using vexdesk::Bar;
using vexdesk::DayBars;
using vexdesk::DayStamp;
using vexdesk::ListedDay;
using vexdesk::ReadDay;
using vexdesk::wallTime;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);

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
    void theSummaryIsThatOfTheBars();
    void theSummaryAloneIsTheSame();
    void aDayOfTooManyBarsIsSummedUp();
    void zerosAtTheEndTakeNoRoom();
    void listsTheDaysOfOneTimeframeInOrder();
    void listsAndTellsWhatIsNoFile();
    void aStampIsThatOfTheFile();
    void doesNotTrustAFileThatWasJustWritten();

private:
    QString path(const QString& name) const { return m_directory->filePath(name); }
    std::shared_ptr<const DayBars> read(const QByteArray& content) const;
    /// Makes the file as old as one that nobody is writing.
    void settle(const QString& name) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestDayReader::init()
{
    testsupport::failOnStrayWarnings();
    m_directory = std::make_unique<QTemporaryDir>();
}

std::shared_ptr<const DayBars> TestDayReader::read(const QByteArray& content) const
{
    writeFile(path(dayFile(day)), content);
    return vexdesk::readDay(path(dayFile(day)), day).bars;
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
    QCOMPARE(bars->size(), qsizetype(1));
    const Bar& bar = bars->at(0);
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
    QCOMPARE(imported->at(0).volume, 1005);
    QVERIFY(imported->at(0) == edited->at(0));
    const auto plain = read("102000;1;1;1;1;0.00;33;0\n");
    QCOMPARE(plain->at(0).volume, 33);
    QCOMPARE(plain->at(0).value, 0.0);
}

void TestDayReader::readsLinesOfFiveFields()
{
    const auto bars = read("102000;1.5;2;1;1.25");
    QVERIFY(bars);
    QCOMPARE(bars->at(0).close, 1.25);
    QCOMPARE(bars->at(0).volume, 0);
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
    QCOMPARE(bars->size(), qsizetype(1));
    QCOMPARE(bars->at(0).low, -2.0);
}

void TestDayReader::putsLinesInOrder()
{
    const auto bars = read("100200;2;2;2;2;1;1.0;0\n"
                           "100100;1;1;1;1;1;1.0;0\n"
                           "100200;3;3;3;3;1;1.0;0\n");
    QCOMPARE(bars->size(), qsizetype(3));
    QCOMPARE(bars->at(0).open, 1.0);
    // Of the same time, the one that stands first is the first.
    QCOMPARE(bars->at(1).open, 2.0);
    QCOMPARE(bars->at(2).open, 3.0);
}

void TestDayReader::pricesKeepTheirDecimals()
{
    QCOMPARE(read("100100;1;1;1;1;1;1.0;0\n")->decimals(), 0);
    QCOMPARE(read("100100;1;1;1.000;1.5;1;1.0;0\n")->decimals(), 3);
    const auto bars = read("100100;0.00001;1;0.00001;1;1;1.0;0\n");
    QCOMPARE(bars->decimals(), 5);
    QCOMPARE(bars->at(0).low, 0.00001);
    QCOMPARE(read("100100;1;1;1;0.10000000000000000;1;1.0;0\n")->decimals(), 15);
}

void TestDayReader::aVolumeBeyondThirtyTwoBitsIsNothing()
{
    QCOMPARE(read("100100;1;1;1;1;3000000000;1.0;0\n")->at(0).volume, 0);
}

void TestDayReader::anHourThatTheClockSkipsIsRead()
{
    const testsupport::LocalZone zone("Europe/Berlin");
    const QDate spring(2024, 3, 31);
    writeFile(path(dayFile(spring)), barLines(QTime(1, 58), 66));
    const auto bars = vexdesk::readDay(path(dayFile(spring)), spring).bars;
    QCOMPARE(bars->size(), qsizetype(66));
    for (qsizetype i = 1; i < 66; ++i)
        QCOMPARE(bars->at(i).time - bars->at(i - 1).time, 60);
}

void TestDayReader::aMissingFileHasNoBars()
{
    const ReadDay none = vexdesk::readDay(path(QStringLiteral("none")), day);
    QVERIFY(!none.bars);
    QCOMPARE(none.summary->count, qsizetype(0));
    QVERIFY(none.outcome);
    QVERIFY(!read(""));
    QVERIFY(vexdesk::listDays(path(QStringLiteral("none")), 60)->empty());
}

void TestDayReader::aDayThatCannotBeReadToItsEndHasNoBars()
{
    QVERIFY(read(barLines(ten, 3)));
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(day), EIO, 1);
        const ReadDay read = vexdesk::readDay(path(dayFile(day)), day);
        QVERIFY(!read.bars && !read.summary);
        QCOMPARE(read.outcome.message(), qt_error_string(EIO));
        QVERIFY(fault.failed() > 0);
    }
    QCOMPARE(vexdesk::readDay(path(dayFile(day)), day).bars->size(), qsizetype(3));
}

void TestDayReader::theSummaryIsThatOfTheBars()
{
    writeFile(path(dayFile(day)), "000000;1.5;2;1;1;3;1.0;4\n"
                                  "000000;1;3;1;2;3;1.0;5\n"
                                  "100100;5;6.25;5;5.5;7;0.5;6\n"
                                  "100159;5;5;4;4;2;0.5;8\n"
                                  "110200;4;4;4;4;1;0.5;7\n");
    const vexdesk::DaySummary summary = *vexdesk::readDay(path(dayFile(day)), day).summary;
    QCOMPARE(summary.count, qsizetype(5));
    QCOMPARE(summary.midnightCount, qsizetype(2));
    QVERIFY(*summary.midnight == (Bar{wallTime(day), 1.5, 3, 1, 2, 6, 2.0, 5}));
    const qint64 end = wallTime(day, QTime(11, 2));
    QVERIFY(*summary.rest == (Bar{end, 5, 6.25, 4, 4, 10, 1.5, 7}));
    QVERIFY(summary.whole() == (Bar{end, 1.5, 6.25, 1, 4, 16, 3.5, 7}));
    QCOMPARE(summary.firstSecond, 0);
    QCOMPARE(summary.lastSecond, (11 * 60 + 2) * 60);
    QCOMPARE(summary.decimals, 2);
    QVERIFY(summary.candles == (std::array<int, 6>{3, 3, 2, 2, 2, 2}));
    // Without bars at midnight, and with no others.
    writeFile(path(dayFile(day)), "100100;5;6;5;5;7;0.5;6\n");
    const vexdesk::DaySummary later = *vexdesk::readDay(path(dayFile(day)), day).summary;
    QVERIFY(!later.midnight && later.whole() == *later.rest);
    writeFile(path(dayFile(day)), "000000;5;6;5;5;7;0.5;6\n");
    const vexdesk::DaySummary early = *vexdesk::readDay(path(dayFile(day)), day).summary;
    QVERIFY(!early.rest && early.whole() == *early.midnight);
    QVERIFY(early.candles == (std::array<int, 6>{}));
}

void TestDayReader::theSummaryAloneIsTheSame()
{
    const QByteArray inOrder = "000000;1.5;2;1;1;3;1.0;4\n"
                               "100100;5;6.25;5;5.5;7;0.5;6\n"
                               "100159;5;5;4;4;2;0.5;8\n";
    const QByteArray mixed = "100159;5;5;4;4;2;0.5;8\n" + inOrder;
    for (const QByteArray& content : {inOrder, mixed}) {
        writeFile(path(dayFile(day)), content);
        const ReadDay whole = vexdesk::readDay(path(dayFile(day)), day);
        const ReadDay summed = vexdesk::readDay(path(dayFile(day)), day, vexdesk::DayPart::Summary);
        QVERIFY(whole.bars && !summed.bars);
        QCOMPARE(whole.bytes, qint64(whole.bars->bytes()));
        QCOMPARE(summed.bytes, whole.bytes);
        QVERIFY(*summed.summary == *whole.summary);
        QVERIFY(*summed.summary == vexdesk::summaryOf(*whole.bars));
        QCOMPARE(summed.summary->firstSecond, 0);
    }
}

void TestDayReader::aDayOfTooManyBarsIsSummedUp()
{
    QByteArray content;
    for (qsizetype i = 0; i < vexdesk::mostBarsOfDay; ++i)
        content += "100100;1;2;1;2;3;0.5;0\n";
    QCOMPARE(read(content)->size(), vexdesk::mostBarsOfDay);
    writeFile(path(dayFile(day)), content + "100200;1;5;1;4;3;0.5;0\n");
    const ReadDay crowded = vexdesk::readDay(path(dayFile(day)), day);
    QVERIFY(!crowded.bars);
    QCOMPARE(crowded.summary->count, vexdesk::mostBarsOfDay + 1);
    QCOMPARE(crowded.summary->whole().high, 5.0);
    QCOMPARE(crowded.summary->whole().volume, 3 * (vexdesk::mostBarsOfDay + 1));
}

void TestDayReader::zerosAtTheEndTakeNoRoom()
{
    QByteArray content;
    for (int i = 0; i < 1000; ++i)
        content += "1" + QByteArray::number(i / 60).rightJustified(3, '0') +
                   QByteArray::number(i % 60).rightJustified(2, '0') +
                   ";60050.12000000;60150.37000000;59950.12000000;60050.12000000;5;0;0\n";
    const auto bars = read(content);
    QCOMPARE(bars->size(), qsizetype(1000));
    QCOMPARE(bars->decimals(), 8); // as the file writes them
    QCOMPARE(bars->at(7).high, 60150.37);
    QVERIFY2(bars->bytes() <= 1000 * 24 + 300, qPrintable(QString::number(bars->bytes())));
}

void TestDayReader::listsTheDaysOfOneTimeframeInOrder()
{
    for (const int offset : {2, 0, 1})
        writeFile(path(dayFile(day.addDays(offset))), barLines(ten, 3 + offset));
    writeFile(path(dayFile(day, 1)), barLines(ten, 30));
    writeFile(path(QStringLiteral("20240115_60")), barLines(ten, 30));
    writeFile(path(QStringLiteral("2024011_60.iss")), barLines(ten, 30));
    const std::vector<ListedDay> days = *vexdesk::listDays(m_directory->path(), 60);
    QCOMPARE(days.size(), 3U);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(days[size_t(i)].day, day.addDays(i));
        QCOMPARE(days[size_t(i)].stamp.size, barLines(ten, 3 + i).size());
    }
    QCOMPARE(vexdesk::listDays(m_directory->path(), 1)->size(), 1U);
}

// It may be a day that was stored.
void TestDayReader::listsAndTellsWhatIsNoFile()
{
    const QDate second = day.addDays(1);
    const QDate third = day.addDays(2);
    QVERIFY(QDir(m_directory->path()).mkdir(dayFile(day)));
    QVERIFY(QFile::link(path(QStringLiteral("nowhere")), path(dayFile(second))));
    writeFile(path(dayFile(third)), "no bar\n");
    const std::vector<ListedDay> days = *vexdesk::listDays(m_directory->path(), 60);
    QCOMPARE(days.size(), 3U);
    QVERIFY(!days[0].stamp.isSettled && !days[1].stamp.isSettled);
    const auto read = [this](const QDate& date) {
        return vexdesk::readDay(path(dayFile(date)), date);
    };
    QCOMPARE(read(day).outcome.message(), QStringLiteral("это каталог, а не файл"));
    QCOMPARE(read(second).outcome.message(), QStringLiteral("ссылка никуда не ведёт"));
    QCOMPARE(read(third).outcome.message(), QStringLiteral("в файле нет ни одного бара"));
    QVERIFY(!read(day).summary && !read(second).summary && read(third).summary);
    QVERIFY(read(day.addDays(3)).outcome); // there is none
}

void TestDayReader::aStampIsThatOfTheFile()
{
    const QString name = dayFile(day);
    const auto stamp = [this] { return vexdesk::listDays(m_directory->path(), 60)->at(0).stamp; };
    writeFile(path(name), barLines(ten, 3));
    settle(name);
    const DayStamp before = stamp();
    QVERIFY(before.isSettled);
    QVERIFY(before.isSameAs(stamp()));
    QCOMPARE(before.modified / 1000000, QFileInfo(path(name)).lastModified().toMSecsSinceEpoch());
    writeFile(path(name), barLines(ten, 2));
    settle(name);
    QVERIFY(!before.isSameAs(stamp()));
    writeFile(path(name), barLines(ten, 3, 4)); // of the same size
    QVERIFY(!before.isSameAs(stamp()));
}

void TestDayReader::doesNotTrustAFileThatWasJustWritten()
{
    const QString name = dayFile(day);
    const auto stamp = [this] { return vexdesk::listDays(m_directory->path(), 60)->at(0).stamp; };
    const QDateTime time = QDateTime::currentDateTime();
    const auto writeAt = [this, &name, &time](int number) {
        writeFile(path(name), barLine(ten, number));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    };
    writeAt(1);
    const DayStamp before = stamp();
    // The same size at the same time.
    writeAt(2);
    QCOMPARE(stamp().size, before.size);
    QCOMPARE(stamp().modified, before.modified);
    QVERIFY(!before.isSameAs(stamp()));
}

QTEST_GUILESS_MAIN(TestDayReader)
#include "tst_dayreader.moc"
