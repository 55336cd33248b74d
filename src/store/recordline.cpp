#include "store/recordline.h"

#include <QtCore/QFile>
#include <QtCore/QTextStream>

namespace tadata {

namespace {

constexpr char16_t separator = u';';

// The places of the fields in a line.
enum Field { Time, Open, High, Low, Close, Volume, Value, OpenInterest, FieldCount };

QTextStream& writeRewritten(QTextStream& stream, const RecordText& row)
{
    const QChar to(separator);
    return stream << row.time << to << row.open << to << row.high << to << row.low << to
                  << row.close << to << row.value << to << row.volume << to << row.openInterest
                  << '\n';
}

} // namespace

BarDescription barFromRecordLine(const QString& line, const QDate& day)
{
    const QStringList fields = line.split(separator);
    const auto number = [&fields](Field field) {
        return decimal::fromText(fields.value(field)).value_or(decimal::zero);
    };

    BarDescription bar;
    bar.valid = true;
    bar.date = day;
    bar.time = QTime::fromString(fields.value(Time), QStringLiteral("hhmmss"));
    bar.open = number(Open);
    bar.high = number(High);
    bar.low = number(Low);
    bar.close = number(Close);
    bar.volume = fields.value(Volume).toInt();
    bar.value = number(Value);
    bar.openInterest = fields.value(OpenInterest).toInt();
    return bar;
}

std::optional<RecordText> splitRecordLine(const QString& line)
{
    const QStringList fields = line.split(separator);
    if (fields.size() != FieldCount)
        return std::nullopt;
    return RecordText{fields[Time],  fields[Open],   fields[High],  fields[Low],
                      fields[Close], fields[Volume], fields[Value], fields[OpenInterest]};
}

bool rewriteDayFile(QDir& dir, const QString& name, const QList<RecordText>& rows)
{
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    {
        QTextStream stream(&file);
        for (const RecordText& row : rows)
            writeRewritten(stream, row);
    }
    file.close();
    if (file.size() == 0)
        dir.remove(name);
    return true;
}

} // namespace tadata
