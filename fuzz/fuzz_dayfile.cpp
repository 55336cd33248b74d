// SPDX-License-Identifier: MIT
// Day files: whatever a file in the store holds and whatever it is called, reading it gives bars
// and rows, and writing these gives a file that reads as the same ones.
//
// The first line of an input is the file's name, the rest its content.

#include "target.h"

#include "bardescription.h"
#include "support/plainbar.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/dayfilerewrite.h>
#include <vexdesk/history/fieldlengths.h>

#include <QtCore/QBuffer>
#include <QtCore/QFileInfo>
#include <QtCore/QStringConverter>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <algorithm>

namespace {

using fuzz::require;
using testsupport::plainBar;

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
    if (const auto key = vexdesk::parseDayFileName(name)) {
        require(key->day.isValid() && key->timeframe > 0, "a day file's name means something");
        require(vexdesk::dayFileName(key->day, key->timeframe) == name,
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
    const BarDescription bar = tadata::barFromRecordLine(line.toUtf8(), day);
    require(bar.valid && bar.date == day, "every line of a day file gives a bar of its day");

    // A line may hold anything; what it was taken for is written and read without a loss.
    const QString record = recordLine(bar);
    const BarDescription again = tadata::barFromRecordLine(record.toUtf8(), day);
    require(recordLine(again) == record, "a bar that was read is written the same way again");
    require(bar.open == again.open && bar.high == again.high && bar.low == again.low &&
                bar.close == again.close && bar.value == again.value,
            "prices and money are written without a loss");
    require(bar.time == again.time && bar.volume == again.volume &&
                bar.openInterest == again.openInterest,
            "time and counts are written without a loss");
}

bool areSame(const decimal& left, const decimal& right)
{
    return left == right && left.scale() == right.scale();
}

bool areSame(const vexdesk::StoredBar& left, const vexdesk::StoredBar& right)
{
    return left.date == right.date && left.time == right.time && areSame(left.open, right.open) &&
           areSame(left.high, right.high) && areSame(left.low, right.low) &&
           areSame(left.close, right.close) && left.volume == right.volume &&
           areSame(left.value, right.value) && left.openInterest == right.openInterest;
}

void checkAgainstThePlainWay(const QByteArray& line)
{
    const QDate day(2024, 1, 15);
    // A byte order mark is text: it is none of the file's start.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(line);
    require(areSame(vexdesk::storedBar(line, day), plainBar(text, day)),
            "a stored bar is what its fields say");
    const qsizetype fields = text.split(u';').size();
    const bool isRecord = vexdesk::splitRecordLine(line).has_value();
    require(isRecord == (fields == vexdesk::RecordFieldCount),
            "a record line is one of eight fields");
    const bool isRow = vexdesk::FieldLengths().add(line) != vexdesk::FieldLengths::Line::NoRecord;
    require(isRow == isRecord, "the editor's rows are the record lines");
}

// The lines that the editor shows and writes back.
QByteArrayList rowsOf(const QByteArrayList& lines)
{
    QByteArrayList rows;
    for (const QByteArray& line : lines) {
        const auto fields = vexdesk::splitRecordLine(line);
        require(fields.has_value() == (line.count(';') == 7), "a row is a line of eight fields");
        if (fields)
            rows.append(line);
    }
    return rows;
}

QByteArray exchanged(const QByteArray& row)
{
    QByteArrayList fields = row.split(';');
    fields.swapItemsAt(vexdesk::VolumeField, vexdesk::ValueField);
    return fields.join(';');
}

// Whether the rows survive being a file: a carriage return before the line's end is a part of that
// end, and a byte order mark at the file's start is none of its text.
bool isPlainText(const QByteArrayList& rows)
{
    const QByteArray byteOrderMark = QByteArrayLiteral("\xef\xbb\xbf");
    return std::none_of(rows.begin(), rows.end(),
                        [](const QByteArray& row) { return row.endsWith('\r'); }) &&
           (rows.isEmpty() || !rows.first().startsWith(byteOrderMark));
}

QByteArrayList readDayFile(const QString& path)
{
    vexdesk::DayFileLines file(path);
    QByteArrayList lines;
    QByteArrayView line;
    if (file.open()) {
        while (file.next(&line))
            lines.append(line.toByteArray());
    }
    return lines;
}

std::optional<QByteArray> plainTextOf(const QString& path)
{
    vexdesk::DayFileLines file(path);
    return file.open() ? file.plainText() : std::nullopt;
}

const QString& dayFilePath()
{
    static const QTemporaryDir temporary;
    static const QString path = temporary.filePath(QStringLiteral("20240115_60.iss"));
    return path;
}

void write(const QByteArray& content)
{
    QFile file(dayFilePath());
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                file.write(content) == content.size(),
            "a file can be written");
}

QByteArrayList rewritten(const QByteArrayList& rows)
{
    QByteArray content;
    for (const QByteArray& row : rows)
        vexdesk::appendRewritten(content, *vexdesk::splitRecordLine(row));
    const QFileInfo file(dayFilePath());
    const auto state = vexdesk::fileState(file.filePath());
    require(state && vexdesk::rewriteDayFile(file.dir(), file.fileName(), content, *state),
            "a day file can be rewritten");
    require(file.exists() == !rows.isEmpty(), "a day file without rows is removed");
    return readDayFile(file.filePath());
}

void checkRewriting(const QByteArrayList& rows)
{
    const QByteArrayList once = rewritten(rows);
    if (!isPlainText(rows) || rows.isEmpty())
        return;
    QByteArrayList wanted;
    for (const QByteArray& row : rows)
        wanted.append(exchanged(row));
    require(once == wanted, "a rewritten file holds the rows, money before volume");

    // Money and volume change places once more: the text is that of an import again.
    require(rewritten(once) == rows, "a file rewritten twice is as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype lineEnd = input.indexOf('\n');
    checkName(QString::fromUtf8(input.left(lineEnd)));

    const QByteArray content = input.mid(lineEnd + 1);
    const QStringList lines = readLines(content);
    for (const QString& line : lines)
        checkBar(line);

    write(content);
    const QByteArrayList bytes = readDayFile(dayFilePath());
    for (const QByteArray& line : bytes)
        checkAgainstThePlainWay(line);
    // As they stand in the file, too: of the readers' own bytes nothing is taken for granted.
    const QByteArrayList raw = content.split('\n');
    for (const QByteArray& line : raw)
        checkAgainstThePlainWay(line);
    require(bytes.size() == lines.size(), "a day file has the lines of its text");
    for (qsizetype i = 0; i < lines.size(); ++i)
        require(bytes.at(i) == fuzz::inUtf8(lines.at(i)),
                "lines are read as a text stream reads them");
    if (const auto text = plainTextOf(dayFilePath())) {
        QByteArrayList plain = text->split('\n');
        if (plain.last().isEmpty())
            plain.removeLast();
        require(plain == bytes, "the text of a file has the file's lines");
    }
    checkRewriting(rowsOf(bytes));
    return 0;
}
