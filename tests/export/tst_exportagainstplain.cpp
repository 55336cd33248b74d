// SPDX-License-Identifier: MIT
// The export of random bars beside a plain one that shares nothing with it.

#include "exportbar.h"

#include "plainexport.h"
#include "support/lineformats.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <algorithm>
#include <tuple>

using testsupport::lineFormats;

namespace {

constexpr int timeframes[] = {1, 60, 300, 600, 1800, 3600, 86400};
constexpr const char* separators[] = {",", ";", " "};

// The lines of all bars, the last one included.
QString linesOf(const QList<BarDescription>& sources, const ExportDetails& details)
{
    QString text;
    QTextStream out(&text);
    BarDescription open;
    for (const BarDescription& source : sources)
        exportBar(source, open, details, out);
    writeBar(open, out, details);
    return text;
}

QString headerOf(const ExportDetails& details)
{
    QString text;
    QTextStream out(&text);
    writeHeader(out, details);
    return text;
}

// A price with or without digits after the point; few sizes, so that equal ones meet.
decimal randomNumber(QRandomGenerator& random)
{
    const int scale = random.bounded(4);
    const int unit = scale == 0 ? 1 : scale == 1 ? 10 : scale == 2 ? 100 : 1000;
    return decimal(random.bounded(-3, 12) * unit + (random.bounded(2) ? 0 : random.bounded(unit)),
                   scale);
}

QTime randomTime(QRandomGenerator& random)
{
    constexpr int length = 24 * 60 * 60;
    constexpr int whole[] = {1, 60, 300, 600, 1800, 3600};
    const int kind = random.bounded(20);
    if (kind == 0)
        return QTime();
    if (kind == 1)
        return QTime(0, 0);
    if (kind == 2)
        return QTime(23, 59, 59, 999);
    const int step = whole[random.bounded(6)];
    const int second = random.bounded(length / step) * step;
    return QTime(0, 0).addSecs(second).addMSecs(random.bounded(3) ? 0 : random.bounded(1000));
}

// Four days, mostly in order; some bars come too early.
QList<BarDescription> randomBars(QRandomGenerator& random, const QDate& first, int count)
{
    QList<BarDescription> bars;
    for (int i = 0; i < count; ++i) {
        BarDescription bar;
        bar.valid = true;
        bar.date = first.addDays(random.bounded(4));
        bar.time = randomTime(random);
        bar.open = randomNumber(random);
        bar.high = randomNumber(random);
        bar.low = randomNumber(random);
        bar.close = randomNumber(random);
        bar.volume = random.bounded(-5, 1'000'000);
        bar.value = randomNumber(random);
        bar.openInterest = random.bounded(-5, 1'000'000);
        bars.append(bar);
    }
    const auto before = [](const BarDescription& left, const BarDescription& right) {
        return std::tie(left.date, left.time) < std::tie(right.date, right.time);
    };
    std::stable_sort(bars.begin(), bars.end(), before);
    for (int i = 0; i < count / 10; ++i) {
        const int early = random.bounded(count - 3);
        bars.swapItemsAt(early, early + 1 + random.bounded(3));
    }
    return bars;
}

} // namespace

class TestExportAgainstPlain final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void writesWhatThePlainExportWrites_data();
    void writesWhatThePlainExportWrites();
};

void TestExportAgainstPlain::writesWhatThePlainExportWrites_data()
{
    QTest::addColumn<QString>("lineFormat");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<int>("timeframe");
    for (const char* lineFormat : lineFormats) {
        for (const char* separator : separators) {
            for (const int timeframe : timeframes) {
                QTest::addRow("%s '%s' %d", lineFormat, separator, timeframe)
                    << QString::fromLatin1(lineFormat) << QString::fromLatin1(separator)
                    << timeframe;
            }
        }
    }
}

void TestExportAgainstPlain::writesWhatThePlainExportWrites()
{
    QFETCH(const QString, lineFormat);
    QFETCH(const QString, separator);
    QFETCH(const int, timeframe);
    const QStringList dates{"yyyyMMdd", "yyMMdd", "ddMMyy", "dd.MM.yy", "dd/MM/yy"};
    const QStringList times{"hhmmss", "hhmm", "hh:mm:ss", "hh:mm"};
    // The last days of a year, of a February, and those around a jump of the clock.
    const QList<QDate> firstDays{QDate(2023, 12, 30), QDate(2024, 2, 27), QDate(2024, 3, 8)};

    ExportDetails details;
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = timeframe;
    details.lineFormat = lineFormat;
    details.separator = separator;
    QRandomGenerator random(quint32(timeframe) + quint32(lineFormat.size()));
    for (int round = 0; round < 20; ++round) {
        details.dateFormat = dates.at(round % dates.size());
        details.timeFormat = times.at(round % times.size());
        const PlainExport plain(details);
        const QList<BarDescription> sources =
            randomBars(random, firstDays.at(round % firstDays.size()), 100);
        const QList<BarDescription> expected = plain.folded(sources);
        // One bar for each day at least; those of midnight come on top.
        QVERIFY(expected.size() >= (timeframe < 3600 ? 20 : 4));
        QCOMPARE(headerOf(details), plain.header());
        QCOMPARE(linesOf(sources, details), plain.lines(expected));
    }
}

QTEST_GUILESS_MAIN(TestExportAgainstPlain)
#include "tst_exportagainstplain.moc"
