// SPDX-License-Identifier: MIT
// The editor: whatever the day files of a series hold, its model shows, finds, removes and writes
// back what a plain implementation does.
//
// The first line of an input has the times of day from which and to which it is opened, as hhmmss,
// and the rows that are deleted: "100000 183000 0 2 5". The rest are the files of days that follow
// each other, with a form feed between two of them: it is opened from the first to the last.

#include "target.h"

#include "editor/plaineditor.h"
#include "editortadatamodel.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <optional>

namespace {

using fuzz::require;

constexpr int timeframe = 60;

QDate dayOf(qsizetype number)
{
    return QDate(2024, 1, 15).addDays(number);
}

QString pathOf(const QDir& series, qsizetype number)
{
    return series.filePath(vexdesk::dayFileName(dayOf(number), timeframe));
}

void writeDays(const QDir& series, const QByteArrayList& days)
{
    for (qsizetype i = 0; i < days.size(); ++i) {
        QFile file(pathOf(series, i));
        require(file.open(QIODevice::WriteOnly) && file.write(days[i]) == days[i].size(),
                "a file can be written");
    }
}

std::optional<QByteArray> dayIn(const QDir& series, qsizetype number)
{
    QFile file(pathOf(series, number));
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

// What somebody does in the editor.
struct Visit
{
    explicit Visit(const QByteArray& line)
    {
        const QByteArrayList words = line.split(' ');
        from = timeOf(words.value(0), QTime(0, 0));
        to = timeOf(words.value(1), QTime(23, 59, 59));
        for (const QByteArray& word : words.mid(2))
            rows.append(word.toInt());
    }

    static QTime timeOf(const QByteArray& word, const QTime& otherwise)
    {
        const QTime time = QTime::fromString(QString::fromLatin1(word), QStringLiteral("hhmmss"));
        return time.isValid() ? time : otherwise;
    }

    QTime from;
    QTime to;
    QList<int> rows;
};

void checkFinding(const EditorTADataModel& model, const PlainEditor& plain)
{
    QStringList keys = plain.keys();
    for (const char* time : {"", " 000000", " 095959", " 100000", " 235959"})
        keys.append(dayOf(1).toString(QStringLiteral("yyyyMMdd")) + QLatin1String(time));
    for (const QString& key : keys)
        require(model.find(key) == plain.find(key), "a time is found where it stands");
}

void check(const Visit& visit, const QByteArrayList& days)
{
    const QTemporaryDir temporary;
    const QTemporaryDir plainTemporary;
    const QDir series(temporary.path());
    const QDir plainSeries(plainTemporary.path());
    writeDays(series, days);
    writeDays(plainSeries, days);

    const QDateTime from(dayOf(0), visit.from);
    const QDateTime to(dayOf(days.size() - 1), visit.to);
    EditorTADataModel model(nullptr);
    PlainEditor plain;
    model.load(series, from, to, timeframe);
    plain.load(plainSeries, from, to, timeframe);
    require(tableOf(model) == plain.table(), "the editor shows the lines of its interval");
    checkFinding(model, plain);

    model.delRows(visit.rows);
    plain.remove(visit.rows);
    require(tableOf(model) == plain.table(), "the deleted rows have gone, and no other one");

    model.delRowsFromFiles();
    plain.rewrite();
    for (qsizetype i = 0; i < days.size(); ++i)
        require(dayIn(series, i) == dayIn(plainSeries, i), "the files hold the rows that are left");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr qsizetype most = 4;
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype lineEnd = input.indexOf('\n');
    if (lineEnd < 0)
        return 0;
    QByteArrayList days = input.mid(lineEnd + 1).split('\f');
    days.resize(std::min(most, days.size()));
    check(Visit(input.first(lineEnd)), days);
    return 0;
}
