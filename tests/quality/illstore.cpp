// SPDX-License-Identifier: MIT
#include "illstore.h"

#include "support/dayfiles.h"
#include "support/filetree.h"

namespace testsupport {

const QString alfa = QStringLiteral("NORD/MAIN/ALFA");
const QString vega = QStringLiteral("NORD/MAIN/VEGA");
const QDate gapDay(2024, 2, 14);
const QDate missingDay(2024, 3, 5);
const QDate brokenDay(2024, 3, 20);

namespace {

constexpr int barsOfDay = 60;
constexpr int secondsPerMinute = 60;

// Bars of one price: nothing jumps.
QByteArray bars(int first, int count)
{
    constexpr int price = 100;
    QByteArray lines;
    for (int i = first; i < first + count; ++i)
        lines += barLine(QTime(10, 0).addSecs(i * secondsPerMinute), price);
    return lines;
}

QByteArray fullDay()
{
    return bars(0, barsOfDay);
}

} // namespace

QString dayPath(const QString& series, const QDate& day)
{
    return series + u'/' + dayFile(day);
}

void healDay(const QDir& root, const QDate& day)
{
    writeFile(root.filePath(dayPath(vega, day)), fullDay());
}

void makeIllStore(const QDir& root)
{
    constexpr int saturday = 6;
    for (QDate day(2024, 1, 1); day <= QDate(2024, 3, 29); day = day.addDays(1)) {
        if (day.dayOfWeek() >= saturday)
            continue;
        writeFile(root.filePath(dayPath(alfa, day)), fullDay());
        if (day != missingDay)
            healDay(root, day);
    }
    constexpr int before = 20;
    constexpr int missing = 10;
    writeFile(root.filePath(dayPath(vega, gapDay)),
              bars(0, before) + bars(before + missing, barsOfDay - before - missing));
    QByteArrayList lines = fullDay().split('\n');
    lines.insert(1, "this is no bar");
    writeFile(root.filePath(dayPath(vega, brokenDay)), lines.join('\n'));
}

} // namespace testsupport
