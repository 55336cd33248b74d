// Day files: whatever a file in the store holds and whatever it is called, reading it gives bars
// and rows, and writing these gives a file that reads as the same ones.
//
// The first line of an input is the file's name, the rest its content.

#include "target.h"

#include "store/dayfile.h"
#include "store/recordline.h"

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

namespace {

using fuzz::require;
using tadata::RecordText;

QStringList readLines(const QByteArray& content)
{
    QBuffer buffer;
    buffer.setData(content);
    buffer.open(QIODevice::ReadOnly);
    QTextStream stream(&buffer);
    QStringList lines;
    while (!stream.atEnd())
        lines.append(stream.readLine());
    return lines;
}

void checkName(const QString& name)
{
    if (const auto key = tadata::parseDayFileName(name)) {
        require(key->day.isValid() && key->timeframe > 0, "a day file's name means something");
        require(tadata::dayFileName(key->day, key->timeframe) == name,
                "only names that are given to day files are taken for such");
    }
}

// The bar as a line of a day file, without the line's end.
QString recordLine(const BarDescription& bar)
{
    QString record;
    QTextStream stream(&record);
    stream << bar;
    stream.flush();
    return record.chopped(1);
}

void checkBar(const QString& line)
{
    const QDate day(2024, 1, 15);
    const BarDescription bar = tadata::barFromRecordLine(line, day);
    require(bar.valid && bar.date == day, "every line of a day file gives a bar of its day");

    // A line may hold anything; what it was taken for is written and read without a loss.
    const QString record = recordLine(bar);
    const BarDescription again = tadata::barFromRecordLine(record, day);
    require(recordLine(again) == record, "a bar that was read is written the same way again");
    require(bar.open == again.open && bar.high == again.high && bar.low == again.low &&
                bar.close == again.close && bar.value == again.value,
            "prices and money are written without a loss");
    require(bar.time == again.time && bar.volume == again.volume &&
                bar.openInterest == again.openInterest,
            "time and counts are written without a loss");
}

QList<RecordText> rowsOf(const QStringList& lines)
{
    QList<RecordText> rows;
    for (const QString& line : lines) {
        const auto row = tadata::splitRecordLine(line);
        require(row.has_value() == (line.count(u';') == 7), "a row is a line of eight fields");
        if (row)
            rows.append(*row);
    }
    return rows;
}

// The rows as lines, with money and volume in the order of a rewritten file or of an imported one.
QStringList linesOf(const QList<RecordText>& rows, bool isRewritten)
{
    QStringList lines;
    for (const RecordText& row : rows) {
        const QString& sixth = isRewritten ? row.value : row.volume;
        const QString& seventh = isRewritten ? row.volume : row.value;
        lines.append(QStringList{row.time, row.open, row.high, row.low, row.close, sixth, seventh,
                                 row.openInterest}
                         .join(u';'));
    }
    return lines;
}

// Whether the rows survive being text: half a character is no UTF-8, a carriage return before the
// line's end is a part of that end, and a byte order mark at the file's start is none of its text.
bool isPlainText(const QList<RecordText>& rows)
{
    const QStringList lines = linesOf(rows, false);
    for (const QString& line : lines) {
        if (line.endsWith(u'\r') || QString::fromUtf8("." + line.toUtf8()).mid(1) != line)
            return false;
    }
    return rows.isEmpty() || !rows.first().time.startsWith(QChar(QChar::ByteOrderMark));
}

QByteArray rewritten(QDir& dir, const QList<RecordText>& rows)
{
    const QString name = QStringLiteral("20240115_60.iss");
    require(tadata::rewriteDayFile(dir, name, rows), "a day file can be rewritten");
    QFile file(dir.filePath(name));
    require(file.exists() == !rows.isEmpty(), "a day file without rows is removed");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void checkRewriting(const QList<RecordText>& rows)
{
    static const QTemporaryDir temporary;
    static QDir dir(temporary.path());

    const QByteArray once = rewritten(dir, rows);
    if (!isPlainText(rows))
        return;
    const QStringList lines = readLines(once);
    require(lines == linesOf(rows, true), "a rewritten file holds the rows, money before volume");

    // Money and volume change places once more: the text is that of an import again.
    const QByteArray twice = rewritten(dir, rowsOf(lines));
    require(readLines(twice) == linesOf(rows, false), "a file rewritten twice is as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype lineEnd = input.indexOf('\n');
    checkName(QString::fromUtf8(input.left(lineEnd)));

    const QStringList lines = readLines(input.mid(lineEnd + 1));
    for (const QString& line : lines)
        checkBar(line);
    checkRewriting(rowsOf(lines));
    return 0;
}
