// SPDX-License-Identifier: MIT
// A long row of bars beside the same bars one by one: what the exporter remembers from bar to bar
// must not show.

#include "barexporter.h"

#include "exportbar.h"
#include "exportdetails.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <limits>
#include <utility>

class TestBarExporter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void writesARowAsBarByBar_data();
    void writesARowAsBarByBar();
    void writesTimesOfEveryPattern_data();
    void writesTimesOfEveryPattern();
    void givesItsLinesAwayAsItGoes();
    void keepsTheLastLineOfAMomentWhereOneIsEnough();
};

namespace {

ExportDetails detailsOf(int timeframe, const QString& timeFormat)
{
    ExportDetails details;
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = timeframe;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyy-MM-dd");
    details.timeFormat = timeFormat;
    details.lineFormat =
        QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT");
    return details;
}

BarDescription randomBar(QRandomGenerator& random, const QDate& day)
{
    BarDescription bar;
    bar.valid = true;
    // Now and then out of the order of time, of another day or without a time.
    bar.date = random.bounded(50) == 0 ? day.addDays(random.bounded(-2, 3)) : day;
    if (random.bounded(60) != 0)
        bar.time = QTime::fromMSecsSinceStartOfDay(random.bounded(24 * 60) * 60 * 1000 +
                                                   (random.bounded(9) == 0 ? 500 : 0));
    const auto price = [&random] {
        return decimal(random.bounded(-500, 100000), random.bounded(3));
    };
    bar.open = price();
    bar.high = price();
    bar.low = price();
    bar.close = price();
    bar.value = price();
    bar.volume = random.bounded(5) == 0 ? std::numeric_limits<qint64>::max() - random.bounded(100)
                                        : random.bounded(1000);
    bar.openInterest = random.bounded(-10, 10);
    return bar;
}

} // namespace

void TestBarExporter::writesARowAsBarByBar_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("day");
    // Days of all kinds: an hour is left out, shown twice, midnight does not exist, a whole day
    // too.
    for (const char* zone : {"UTC", "Europe/Moscow"})
        QTest::addRow("%s", zone) << QByteArray(zone) << QDate(2024, 1, 15);
    QTest::newRow("New York in spring") << QByteArray("America/New_York") << QDate(2024, 3, 10);
    QTest::newRow("New York in autumn") << QByteArray("America/New_York") << QDate(2024, 11, 3);
    QTest::newRow("Havana in spring") << QByteArray("America/Havana") << QDate(2024, 3, 10);
    QTest::newRow("Havana in autumn") << QByteArray("America/Havana") << QDate(2024, 11, 3);
    QTest::newRow("Lord Howe in spring") << QByteArray("Australia/Lord_Howe") << QDate(2024, 10, 6);
    QTest::newRow("Apia without a day") << QByteArray("Pacific/Apia") << QDate(2011, 12, 29);
}

void TestBarExporter::writesARowAsBarByBar()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QDate, day);
    const testsupport::LocalZone local(zone);
    for (const int timeframe : {1, 60, 300, 3600, 86400}) {
        const ExportDetails details = detailsOf(timeframe, QStringLiteral("hhmmss"));
        QRandomGenerator random(20240115);
        QByteArray row;
        QByteArray single;
        QTextStream singleOut(&single);
        tadata::BarExporter exporter(details, [&row](QByteArrayView lines) { row += lines; });
        BarDescription rowTarget;
        BarDescription singleTarget;
        for (int i = 0; i < 3000; ++i) {
            const BarDescription bar = randomBar(random, day.addDays(i / 1000));
            exporter.exportBar(bar, rowTarget);
            exportBar(bar, singleTarget, details, singleOut);
            if (i % 3 == 0) {
                exporter.writeBar(rowTarget);
                writeBar(singleTarget, singleOut, details);
            }
        }
        exporter.flush();
        singleOut.flush();
        if (row != single) {
            const QByteArrayList rowLines = row.split('\n');
            const QByteArrayList singleLines = single.split('\n');
            for (qsizetype i = 0; i < rowLines.size(); ++i)
                QCOMPARE(rowLines.at(i), singleLines.value(i));
        }
        QCOMPARE(row, single);
    }
}

void TestBarExporter::writesTimesOfEveryPattern_data()
{
    QTest::addColumn<QString>("pattern");
    for (const char* pattern :
         {"hhmmss",    "hhmm",   "hh:mm:ss", "hh:mm",       "h:m:s",  "hh:mm:ss.zzz", "HH:mm",
          "hh 'h' mm", "hhhmm",  "hh:mm ap", "mm hh ss hh", "",       "ss",           "hh-mm-t",
          "hh😀mm",     "час hh", "hh'mm'ss", "hh''mm",      "'hh'mm", "hh'",          "''",
          "HH",        "tt",     "zz",       "hm",          "h:m "})
        QTest::newRow(*pattern ? pattern : "empty") << QString::fromUtf8(pattern);
}

void TestBarExporter::writesTimesOfEveryPattern()
{
    QFETCH(const QString, pattern);
    ExportDetails details = detailsOf(1, pattern);
    details.lineFormat = QStringLiteral("TIME");
    BarDescription bar;
    for (int msec = 0; msec < 24 * 60 * 60 * 1000; msec += 1234567) {
        bar.time = QTime::fromMSecsSinceStartOfDay(msec);
        QString line;
        QTextStream out(&line);
        writeBar(bar, out, details);
        out.flush();
        QCOMPARE(line, bar.time.toString(pattern) + u'\n');
    }
    bar.time = QTime();
    QString line;
    QTextStream out(&line);
    writeBar(bar, out, details);
    out.flush();
    QCOMPARE(line, QStringLiteral("\n"));
}

// Many at a time, but never all of a long row.
void TestBarExporter::givesItsLinesAwayAsItGoes()
{
    const ExportDetails details = detailsOf(1, QStringLiteral("hhmmss"));
    constexpr int count = 3000;
    QByteArrayList pieces;
    tadata::BarExporter exporter(
        details, [&pieces](QByteArrayView lines) { pieces.append(lines.toByteArray()); });
    QRandomGenerator random(20240115);
    for (int i = 0; i < count; ++i)
        exporter.writeBar(randomBar(random, QDate(2024, 1, 15)));
    QVERIFY(pieces.size() > 1 && pieces.size() < count / 10);
    exporter.flush();
    for (const QByteArray& piece : std::as_const(pieces))
        QVERIFY(piece.endsWith('\n') && piece.size() < 65536);
    QCOMPARE(pieces.join().count('\n'), count);
    const qsizetype before = pieces.size();
    exporter.flush();
    QCOMPARE(pieces.size(), before);
}

void TestBarExporter::keepsTheLastLineOfAMomentWhereOneIsEnough()
{
    ExportDetails details = detailsOf(60, QStringLiteral("hhmm"));
    details.lineFormat = QStringLiteral("DATE,TIME,OPEN");
    QByteArray text;
    BarDescription bar;
    const auto write = [&](tadata::BarExporter& exporter) {
        int number = 0;
        for (const auto& [day, minute] : {std::pair(15, 0), {15, 0}, {15, 1}, {16, 1}, {16, 1}}) {
            bar.date = QDate(2024, 1, day);
            bar.time = QTime(10, minute);
            bar.open = decimal(++number, 0);
            exporter.writeBar(bar);
        }
        exporter.flush();
    };
    const tadata::LineSink sink = [&text](QByteArrayView lines) { text += lines; };
    {
        tadata::BarExporter all(details, sink);
        write(all);
        QCOMPARE(text, QByteArray("2024-01-15;1000;1\n2024-01-15;1000;2\n2024-01-15;1001;3\n"
                                  "2024-01-16;1001;4\n2024-01-16;1001;5\n"));
    }
    text.clear();
    details.finishedOnly = true;
    tadata::BarExporter finished(details, sink);
    write(finished);
    const QByteArray first = "2024-01-15;1000;2\n2024-01-15;1001;3\n";
    QCOMPARE(text, first);
    // Of the last one nobody knows that no other comes.
    finished.finish();
    QCOMPARE(text, first + "2024-01-16;1001;5\n");
    finished.finish();
    QCOMPARE(text, first + "2024-01-16;1001;5\n");
}

QTEST_GUILESS_MAIN(TestBarExporter)
#include "tst_barexporter.moc"
