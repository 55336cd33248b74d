// SPDX-License-Identifier: MIT
#include <vexdesk/history/recordline.h>

#include <vexdesk/history/digits.h>
#include <vexdesk/history/utf8.h>

#include <charconv>
#include <cstring>
#include <system_error>

namespace vexdesk {

namespace {

constexpr char separator = ';';

// Null when there is none.
const char* findSeparator(const char* begin, const char* end)
{
    return begin == end ? nullptr
                        : static_cast<const char*>(
                              std::memchr(begin, separator, static_cast<size_t>(end - begin)));
}

// Seconds since midnight of six digits "hhmmss"; -1 for every other text.
int secondOfPlainTime(QByteArrayView text)
{
    constexpr int length = 6;
    if (text.size() != length)
        return -1;
    int seconds = 0;
    for (int at = 0; at < length; at += 2) {
        const int number = readSixtieth(text.data() + at);
        if (number < 0)
            return -1;
        seconds = seconds * 60 + number;
    }
    return seconds < 24 * 60 * 60 ? seconds : -1;
}

// The forms that imports write are read as they stand; all others are left to Qt.

QTime timeOf(QByteArrayView text)
{
    const int second = secondOfPlainTime(text);
    return second < 0 ? QTime::fromString(textFromUtf8(text), QStringLiteral("hhmmss"))
                      : QTime::fromMSecsSinceStartOfDay(second * 1000);
}

int integerOf(QByteArrayView text)
{
    int number = 0;
    return readDigits(text, &number) ? number : textFromUtf8(text).toInt();
}

decimal decimalOf(QByteArrayView text)
{
    return decimal::fromText(QLatin1String(text.data(), text.size())).value_or(decimal::zero);
}

std::optional<decimal> checkedDecimal(QByteArrayView text)
{
    return decimal::fromText(QLatin1String(text.data(), text.size()));
}

// What Qt takes may have blanks around it.
template <typename Integer>
std::optional<Integer> checkedInteger(QByteArrayView text)
{
    const char* begin = text.begin();
    // The sign that std::from_chars does not know.
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    Integer number = 0;
    const auto [end, error] = std::from_chars(begin, text.end(), number);
    return error == std::errc() && end == text.end() ? std::optional(number) : std::nullopt;
}

char* writeTime(char* to, int secondOfDay)
{
    constexpr int perMinute = 60;
    to = writeTwoDigits(to, secondOfDay / (perMinute * perMinute));
    to = writeTwoDigits(to, secondOfDay / perMinute % perMinute);
    return writeTwoDigits(to, secondOfDay % perMinute);
}

char* writeNumber(char* to, const decimal& number)
{
    *to++ = separator;
    return to + number.toText(to);
}

char* writeNumber(char* to, qint64 number)
{
    constexpr int longest = 20;
    *to++ = separator;
    return std::to_chars(to, to + longest, number).ptr;
}

} // namespace

char* writeRecordLine(char* to, const StoredBar& bar)
{
    if (!bar.time.isNull())
        to = writeTime(to, bar.time.msecsSinceStartOfDay() / 1000);
    to = writeNumber(to, bar.open);
    to = writeNumber(to, bar.high);
    to = writeNumber(to, bar.low);
    to = writeNumber(to, bar.close);
    to = writeNumber(to, bar.volume);
    to = writeNumber(to, bar.value);
    to = writeNumber(to, qint64(bar.openInterest));
    *to++ = '\n';
    return to;
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

RecordFields firstRecordFields(QByteArrayView line)
{
    RecordFields fields;
    const char* begin = line.begin();
    for (QByteArrayView& field : fields) {
        const char* const end = findSeparator(begin, line.end());
        field = QByteArrayView(begin, end ? end : line.end());
        if (!end)
            break;
        begin = end + 1;
    }
    return fields;
}

StoredBar storedBar(QByteArrayView line, const QDate& day)
{
    return storedBar(firstRecordFields(line), day);
}

StoredBar storedBar(const RecordFields& fields, const QDate& day)
{
    StoredBar bar;
    bar.date = day;
    bar.time = timeOf(fields[TimeField]);
    bar.open = decimalOf(fields[OpenField]);
    bar.high = decimalOf(fields[HighField]);
    bar.low = decimalOf(fields[LowField]);
    bar.close = decimalOf(fields[CloseField]);
    bar.volume = integerOf(fields[VolumeField]);
    bar.value = decimalOf(fields[ValueField]);
    bar.openInterest = integerOf(fields[OpenInterestField]);
    return bar;
}

std::optional<CheckedBar> checkedBar(QByteArrayView line, const QDate& day)
{
    const std::optional<RecordFields> fields = splitRecordLine(line);
    if (!fields)
        return std::nullopt;
    const auto text = [&fields](RecordField field) { return (*fields)[field]; };
    const int second = secondOfPlainTime(text(TimeField));
    const auto open = checkedDecimal(text(OpenField));
    const auto high = checkedDecimal(text(HighField));
    const auto low = checkedDecimal(text(LowField));
    const auto close = checkedDecimal(text(CloseField));
    const bool isEdited = text(VolumeField).contains('.');
    const auto volume = checkedInteger<qint64>(text(isEdited ? ValueField : VolumeField));
    const auto value = checkedDecimal(text(isEdited ? VolumeField : ValueField));
    const auto openInterest = checkedInteger<qint32>(text(OpenInterestField));
    if (second < 0 || !open || !high || !low || !close || !volume || !value || !openInterest)
        return std::nullopt;
    return CheckedBar{{day, QTime::fromMSecsSinceStartOfDay(second * 1000), *open, *high, *low,
                       *close, *volume, *value, *openInterest},
                      isEdited};
}

std::array<char, 6> plainTime(int secondOfDay)
{
    std::array<char, 6> digits{};
    writeTime(digits.data(), secondOfDay);
    return digits;
}

// Of the first field, which in almost every line has six characters.
int secondOfRecordLine(QByteArrayView line)
{
    constexpr qsizetype usualLength = 6;
    if (line.size() > usualLength && line[usualLength] == separator) {
        if (const int second = secondOfPlainTime(line.first(usualLength)); second >= 0)
            return second;
    }
    const char* const end = findSeparator(line.begin(), line.end());
    const QTime time = timeOf(end ? QByteArrayView(line.begin(), end) : line);
    return time.isValid() ? time.msecsSinceStartOfDay() / 1000 : 0;
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

} // namespace vexdesk
