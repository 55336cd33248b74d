#include "store/recordline.h"

#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QStringList>

#include <cstring>

namespace tadata {

namespace {

constexpr char separator = ';';

// Null when there is none.
const char* findSeparator(const char* begin, const char* end)
{
    return begin == end ? nullptr
                        : static_cast<const char*>(
                              std::memchr(begin, separator, static_cast<size_t>(end - begin)));
}

bool writeContent(const QString& path, const QByteArray& content)
{
    // Whole or not at all: the bars that stay must survive a full disk.
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.commit();
}

} // namespace

BarDescription barFromRecordLine(const QString& line, const QDate& day)
{
    const QStringList fields = line.split(QLatin1Char(separator));
    const auto number = [&fields](RecordField field) {
        return decimal::fromText(fields.value(field)).value_or(decimal::zero);
    };

    BarDescription bar;
    bar.valid = true;
    bar.date = day;
    bar.time = QTime::fromString(fields.value(TimeField), QStringLiteral("hhmmss"));
    bar.open = number(OpenField);
    bar.high = number(HighField);
    bar.low = number(LowField);
    bar.close = number(CloseField);
    bar.volume = fields.value(VolumeField).toInt();
    bar.value = number(ValueField);
    bar.openInterest = fields.value(OpenInterestField).toInt();
    return bar;
}

std::optional<RecordFields> splitRecordLine(QByteArrayView line)
{
    RecordFields fields;
    const char* begin = line.begin();
    int field = 0;
    for (; field < RecordFieldCount - 1; ++field) {
        const char* const end = findSeparator(begin, line.end());
        if (!end)
            return std::nullopt;
        fields[field] = QByteArrayView(begin, end);
        begin = end + 1;
    }
    if (findSeparator(begin, line.end()))
        return std::nullopt;
    fields[field] = QByteArrayView(begin, line.end());
    return fields;
}

void appendRewritten(QByteArray& content, const RecordFields& fields)
{
    constexpr std::array order{TimeField,  OpenField,  HighField,   LowField,
                               CloseField, ValueField, VolumeField, OpenInterestField};
    for (const RecordField field : order) {
        content += fields[field];
        content += field == OpenInterestField ? '\n' : separator;
    }
}

bool replaceDayFile(const QDir& dir, const QString& name, const QByteArray& content)
{
    const QString path = dir.filePath(name);
    // What is not writable is neither replaced nor removed, though its directory would allow both.
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return false;
    file.close();
    return content.isEmpty() ? file.remove() : writeContent(path, content);
}

} // namespace tadata
