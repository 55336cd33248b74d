// SPDX-License-Identifier: MIT
#include <vexdesk/database/datetime.h>

#include <vexdesk/database/field.h>

#include <QtCore/QDate>

#include <array>

namespace {

constexpr qint64 msecsPerSecond = 1000;
constexpr qint64 msecsPerMinute = 60 * msecsPerSecond;
constexpr qint64 msecsPerHour = 60 * msecsPerMinute;
constexpr qint64 msecsPerDay = 24 * msecsPerHour;
constexpr qint64 julianDayOfEpoch = 2440588;

// Where the numbers stand in the text form, and what stands between them.
constexpr char16_t shape[] = u"0000-00-00 00:00:00.000";
constexpr qsizetype fullLength = std::size(shape) - 1;
constexpr qsizetype shortLength = fullLength - 4;

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool hasShape(QStringView text)
{
    if (text.size() != fullLength && text.size() != shortLength)
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (shape[i] == u'0' ? !isDigit(text.at(i)) : text.at(i) != shape[i])
            return false;
    }
    return true;
}

// Only for a text that has the shape; 0 where it ends before.
int number(QStringView text, qsizetype at, qsizetype digits)
{
    int result = 0;
    for (qsizetype i = at; i < at + digits && i < text.size(); ++i)
        result = result * 10 + (text.at(i).unicode() - u'0');
    return result;
}

void putNumber(QChar* text, qsizetype at, qsizetype digits, qint64 value)
{
    for (qsizetype i = at + digits - 1; i >= at; --i) {
        text[i] = QChar(static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    }
}

} // namespace

datetime::datetime(const QString& text)
{
    const std::optional<datetime> parsed = fromText(text);
    if (!parsed)
        throw Field::incompatibleValue(text, vexdesk::FieldType::DateTime);
    *this = *parsed;
}

std::optional<datetime> datetime::fromText(QStringView text) noexcept
{
    if (!hasShape(text))
        return std::nullopt;
    const QDate date(number(text, 0, 4), number(text, 5, 2), number(text, 8, 2));
    const int hour = number(text, 11, 2);
    const int minute = number(text, 14, 2);
    const int second = number(text, 17, 2);
    if (!date.isValid() || hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    return datetime((date.toJulianDay() - julianDayOfEpoch) * msecsPerDay + hour * msecsPerHour +
                    minute * msecsPerMinute + second * msecsPerSecond + number(text, 20, 3));
}

QString datetime::toString() const
{
    // The time counts from the day's start before the epoch too.
    qint64 days = m_msecs / msecsPerDay;
    qint64 time = m_msecs % msecsPerDay;
    if (time < 0) {
        time += msecsPerDay;
        --days;
    }
    const QDate date = QDate::fromJulianDay(days + julianDayOfEpoch);
    if (date.year() < 1 || date.year() > 9999)
        return QString::number(m_msecs);

    const qint64 msecs = time % msecsPerSecond;
    QString text = QStringView(shape, msecs != 0 ? fullLength : shortLength).toString();
    putNumber(text.data(), 0, 4, date.year());
    putNumber(text.data(), 5, 2, date.month());
    putNumber(text.data(), 8, 2, date.day());
    putNumber(text.data(), 11, 2, time / msecsPerHour);
    putNumber(text.data(), 14, 2, time % msecsPerHour / msecsPerMinute);
    putNumber(text.data(), 17, 2, time % msecsPerMinute / msecsPerSecond);
    if (msecs != 0)
        putNumber(text.data(), 20, 3, msecs);
    return text;
}
