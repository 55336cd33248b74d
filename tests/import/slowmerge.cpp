// SPDX-License-Identifier: MIT
#include "slowmerge.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>

namespace testsupport {

namespace {

const QByteArrayList days{"20240115", "20240116", "20240117", "20240229", "20241231"};
const QByteArray mark("\xef\xbb\xbf");

bool matches(const QByteArray& text, const QRegularExpression& form)
{
    return form.match(QString::fromLatin1(text)).hasMatch();
}

bool isStoredBar(const QByteArray& line)
{
    static const QRegularExpression number(QStringLiteral("\\A[+-]?[0-9]+(\\.[0-9]+)?\\z"));
    static const QRegularExpression whole(QStringLiteral("\\A[+-]?[0-9]+\\z"));
    static const QRegularExpression time(
        QStringLiteral("\\A([01][0-9]|2[0-3])[0-5][0-9][0-5][0-9]\\z"));
    const QByteArrayList fields = line.split(';');
    if (fields.size() != 8 || !matches(fields[0], time))
        return false;
    const bool isEdited = fields[5].contains('.');
    return matches(fields[1], number) && matches(fields[2], number) && matches(fields[3], number) &&
           matches(fields[4], number) && matches(fields[isEdited ? 6 : 5], whole) &&
           matches(fields[isEdited ? 5 : 6], number) && matches(fields[7], whole);
}

QByteArray regular(const QByteArray& line)
{
    QByteArrayList fields = line.split(';');
    if (fields[5].contains('.'))
        fields.swapItemsAt(5, 6);
    return fields.join(';');
}

QByteArrayList linesOf(QByteArray content)
{
    if (content.startsWith(mark))
        content = content.mid(mark.size());
    QByteArrayList lines = content.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    return lines;
}

qint64 firstBadLine(const QByteArrayList& lines)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!isStoredBar(lines[i]))
            return i + 1;
    }
    return 0;
}

// Numbers of two digits after the point, times a hundred.
qint64 hundredths(const QByteArray& text)
{
    return QByteArray(text).remove(text.indexOf('.'), 1).toLongLong();
}

QByteArray fromHundredths(qint64 number)
{
    const QByteArray digits = QByteArray::number(number).rightJustified(3, '0');
    return digits.chopped(2) + '.' + digits.last(2);
}

int secondOf(const QByteArray& time)
{
    return time.left(2).toInt() * 3600 + time.mid(2, 2).toInt() * 60 + time.mid(4, 2).toInt();
}

// The one that a second opens.
QByteArray minuteOf(const QByteArray& time)
{
    const int minute = (secondOf(time) / 60 + 1) % (24 * 60);
    return QByteArray::number(minute / 60).rightJustified(2, '0') +
           QByteArray::number(minute % 60).rightJustified(2, '0') + "00";
}

// A line for each minute of the lines of a day, whose times ascend. The last minute of a day is
// stamped as its first, before all of its seconds.
QByteArrayList minutesOf(const QByteArrayList& lines)
{
    QByteArrayList minutes;
    QByteArrayList open;
    for (const QByteArray& line : lines) {
        const QByteArrayList fields = line.split(';');
        if (!open.isEmpty() && fields[0] <= open[0]) {
            open[2] = fromHundredths(std::max(hundredths(open[2]), hundredths(fields[2])));
            open[3] = fromHundredths(std::min(hundredths(open[3]), hundredths(fields[3])));
            open[4] = fields[4];
            open[5] = QByteArray::number(open[5].toLongLong() + fields[5].toLongLong());
            open[6] = fromHundredths(hundredths(open[6]) + hundredths(fields[6]));
            open[7] = fields[7];
            minutes.last() = open.join(';');
        } else {
            open = fields;
            open[0] = minuteOf(fields[0]);
            minutes.append(open.join(';'));
        }
    }
    return minutes;
}

QByteArray textOf(const QByteArrayList& lines)
{
    return lines.isEmpty() ? QByteArray("") : lines.join('\n') + '\n';
}

QByteArrayList mergedLines(const QByteArrayList& stored, const QMap<QByteArray, QByteArray>& file,
                           ImportMode mode)
{
    QMap<QByteArray, QByteArrayList> times;
    for (const QByteArray& line : stored)
        times[line.left(6)].append(regular(line));
    for (auto bar = file.begin(); bar != file.end(); ++bar) {
        if (mode == ImportMode::Merge || !times.contains(bar.key()))
            times[bar.key()] = {*bar};
    }
    QByteArrayList lines;
    for (const QByteArrayList& ofTime : std::as_const(times))
        lines += ofTime;
    return lines;
}

// The same fields in every line of a time and number, so that equal lines come about.
QByteArray randomRest(QRandomGenerator& random, bool isEdited)
{
    const int low = random.bounded(100, 110);
    const auto price = [](int number) { return QByteArray::number(number) + ".50"; };
    const QByteArray pieces = QByteArray::number(random.bounded(3));
    const QByteArray money = QByteArray::number(random.bounded(3)) + ".25";
    return QByteArrayList{price(low + random.bounded(3)),
                          price(low + 3),
                          price(low),
                          price(low + random.bounded(3)),
                          isEdited ? money : pieces,
                          isEdited ? pieces : money,
                          "7"}
        .join(';');
}

QByteArray randomTime(QRandomGenerator& random, int timeframe)
{
    const QByteArray minute = QByteArray::number(10 + random.bounded(4));
    const QByteArray second =
        timeframe == 1 ? QByteArray::number(random.bounded(3)).rightJustified(2, '0') : "00";
    return (random.bounded(12) == 0 ? "2359" : "10" + minute) + second;
}

QByteArray randomDayFile(QRandomGenerator& random, int timeframe, bool hasBadLine)
{
    QByteArrayList lines;
    const int count = random.bounded(8);
    for (int i = 0; i < count; ++i)
        lines.append(randomTime(random, timeframe) + ';' +
                     randomRest(random, random.bounded(4) == 0));
    if (random.bounded(3) > 0)
        std::sort(lines.begin(), lines.end());
    if (hasBadLine) {
        static const QByteArrayList bad{"",
                                        "100000;1;1;1;1;1;1",
                                        "246000;1;1;1;1;0;0.00;0",
                                        "100000;1;1;1;1;0;0;0;",
                                        "100000; 1;1;1;1;0;0;0",
                                        "100000;1;1;1;1;0.5;1.5;0",
                                        "text"};
        lines.insert(random.bounded(int(lines.size()) + 1), bad[random.bounded(int(bad.size()))]);
    }
    const QByteArray end = random.bounded(6) == 0 ? "\r\n" : "\n";
    QByteArray content = lines.isEmpty() ? QByteArray("") : lines.join(end) + end;
    if (random.bounded(8) == 0 && !lines.isEmpty() && !lines.last().isEmpty())
        content.chop(end.size());
    return random.bounded(8) == 0 ? mark + content : content;
}

} // namespace

SlowResult slowMerge(const StoreTree& store, const QList<FileRecord>& file, ImportMode mode,
                     bool skipsBad, int timeframe)
{
    SlowResult result;
    result.store = store;
    QMap<QByteArray, QMap<QByteArray, QByteArray>> bars;
    for (qsizetype i = 0; i < file.size(); ++i) {
        const FileRecord& record = file[i];
        if (record.isBad && !skipsBad) {
            result.badInputLine = i + 1;
            return result;
        }
        result.badLines += record.isBad && !record.isBlank ? 1 : 0;
        if (record.isBad)
            continue;
        ++result.bars;
        bars[record.day][record.time] = record.time + ';' + record.rest;
    }
    StoreTree changed = store;
    QString lastMinutes;
    QByteArrayList lastDay;
    for (auto day = bars.begin(); day != bars.end(); ++day) {
        const QString name =
            QStringLiteral("%1_%2.iss").arg(QLatin1String(day.key())).arg(timeframe);
        const QByteArrayList stored = linesOf(store.value(name));
        if (const qint64 bad = firstBadLine(stored); bad > 0) {
            result.badFile = name;
            result.badStoredLine = bad;
            return result;
        }
        const QByteArrayList lines = mergedLines(stored, *day, mode);
        if (store.contains(name) && store.value(name) == textOf(lines))
            continue;
        ++result.days;
        changed[name] = textOf(lines);
        if (timeframe != 1)
            continue;
        lastMinutes = QLatin1String(day.key()) + QStringLiteral("_60");
        lastDay = minutesOf(lines);
        changed[lastMinutes] = textOf(lastDay);
    }
    if (!lastMinutes.isNull())
        changed[lastMinutes] = textOf(lastDay.mid(0, lastDay.size() - 1));
    result.store = changed;
    return result;
}

QByteArrayList storedTimes(const QByteArray& content)
{
    QSet<QByteArray> times;
    for (const QByteArray& line : linesOf(content))
        times.insert(line.left(6));
    return {times.begin(), times.end()};
}

QByteArrayList storedLines(const QByteArray& content, const QByteArray& time)
{
    QByteArrayList lines;
    for (const QByteArray& line : linesOf(content)) {
        if (line.startsWith(time))
            lines.append(regular(line));
    }
    return lines;
}

StoreTree randomStore(QRandomGenerator& random, int timeframe, int faults)
{
    StoreTree store;
    for (const QByteArray& day : days) {
        if (random.bounded(3) == 0)
            continue;
        const QString name = QStringLiteral("%1_%2.iss").arg(QLatin1String(day)).arg(timeframe);
        store[name] = randomDayFile(random, timeframe, random.bounded(100) < faults);
        // Neither is any of the job's business.
        store[QLatin1String(day) + QStringLiteral("_60")] = "a minute file of before\n";
        store[QStringLiteral("notes.txt")] = "text";
    }
    return store;
}

QList<FileRecord> randomFile(QRandomGenerator& random, int timeframe, bool hasBadLines)
{
    QList<FileRecord> file;
    const int count = random.bounded(14);
    for (int i = 0; i < count; ++i) {
        FileRecord record{days[random.bounded(int(days.size()))],
                          randomTime(random, timeframe),
                          randomRest(random, false),
                          {},
                          false,
                          false};
        record.line = record.day + ';' + record.time + ';' + record.rest;
        if (hasBadLines && random.bounded(5) == 0) {
            static const QByteArrayList bad{"", " \t", "\v\f", "x", "20240115;100000;1;2;3"};
            const int which = random.bounded(int(bad.size()));
            record = {{}, {}, {}, bad[which], true, which < 3};
        }
        file.append(record);
    }
    if (random.bounded(2) == 0)
        std::stable_sort(
            file.begin(), file.end(),
            [](const FileRecord& left, const FileRecord& right) { return left.line < right.line; });
    return file;
}

QByteArray textOf(const QList<FileRecord>& file)
{
    QByteArray text;
    for (const FileRecord& record : file)
        text += record.line + '\n';
    return text;
}

} // namespace testsupport
