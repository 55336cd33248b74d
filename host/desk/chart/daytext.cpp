// SPDX-License-Identifier: MIT
#include "desk/chart/daytext.h"

#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr qsizetype yearDigits = 4;
constexpr qsizetype partDigits = 2;

/// What was typed; 0 is what was left out.
struct Parts
{
    int year = 0;
    int month = 0;
    int day = 0;

    int& of(QChar sign) { return sign == u'y' ? year : sign == u'M' ? month : day; }
};

// "dMy", "Mdy" or "yMd".
QString orderOf(const QString& format)
{
    QString order = QStringLiteral("dMy");
    std::sort(order.begin(), order.end(), [&format](QChar left, QChar right) {
        return format.indexOf(left) < format.indexOf(right);
    });
    return order;
}

int fullYear(const QString& digits)
{
    constexpr int lastOfThis = 69;
    const int year = digits.toInt();
    if (digits.size() > partDigits)
        return year;
    return year <= lastOfThis ? 2000 + year : 1900 + year;
}

// Digits without signs between them, as long as the parts have places.
QStringList partsOfRun(const QString& run, const QString& order)
{
    constexpr qsizetype dayAndMonth = 2 * partDigits;
    const bool hasLongYear = run.size() == dayAndMonth + yearDigits;
    if (!hasLongYear && run.size() != dayAndMonth + partDigits && run.size() != dayAndMonth)
        return {run};
    QStringList parts;
    qsizetype at = 0;
    for (const QChar sign : order) {
        const bool isYear = sign == u'y';
        if (isYear && run.size() == dayAndMonth)
            continue;
        const qsizetype length = isYear && hasLongYear ? yearDigits : partDigits;
        parts.append(run.mid(at, length));
        at += length;
    }
    return parts;
}

// Which of the parts they are, from the left to the right.
QString signsOf(const QStringList& numbers, const QString& order)
{
    const auto isYear = [&numbers](qsizetype i) { return numbers.at(i).size() == yearDigits; };
    if (numbers.size() == 1)
        return QStringLiteral("d");
    if (numbers.size() == 2) {
        if (isYear(0))
            return QStringLiteral("yM");
        return isYear(1) ? QStringLiteral("My") : QString(order).remove(u'y');
    }
    return isYear(0) ? QStringLiteral("yMd") : order;
}

std::optional<Parts> partsOf(const QString& text, const QString& order)
{
    static const QRegularExpression blanks(QStringLiteral("[\\s.,/\\\\-]+"));
    QStringList numbers = text.split(blanks, Qt::SkipEmptyParts);
    if (numbers.size() == 1)
        numbers = partsOfRun(numbers.constFirst(), order);
    if (numbers.isEmpty() || numbers.size() > order.size())
        return std::nullopt;
    const QString signs = signsOf(numbers, order);
    Parts parts;
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        const QString& digits = numbers.at(i);
        const bool isYear = signs.at(i) == u'y';
        const bool isNumber = std::all_of(digits.begin(), digits.end(),
                                          [](QChar one) { return one >= u'0' && one <= u'9'; });
        if (!isNumber || digits.size() > (isYear ? yearDigits : partDigits))
            return std::nullopt;
        parts.of(signs.at(i)) = isYear ? fullYear(digits) : digits.toInt();
        if (parts.of(signs.at(i)) == 0)
            return std::nullopt;
    }
    if (!signs.contains(u'd'))
        parts.day = 1;
    return parts;
}

} // namespace

std::optional<QDate> dayOfText(const QString& text, const QString& format,
                               const OfferedDays& offered)
{
    const std::optional<Parts> typed = partsOf(text, orderOf(format));
    if (!typed)
        return std::nullopt;
    const auto dayIn = [&typed](const QDate& month) {
        return QDate(month.year(), month.month(), typed->day);
    };
    const QDate usual(typed->year ? typed->year : offered.usual.year(),
                      typed->month ? typed->month : offered.usual.month(), 1);
    std::optional<QDate> nearest;
    // Between two leap years there may be eight.
    const int farthest = typed->year ? 0 : 8;
    for (int distance = 0; distance <= farthest; ++distance) {
        for (const int step : {-distance, distance}) {
            const QDate day = dayIn(typed->month ? usual.addYears(step) : usual.addMonths(step));
            if (day.isValid() && offered.has(day))
                return day;
            if (day.isValid() && !nearest)
                nearest = day;
        }
    }
    return nearest;
}

} // namespace vexdesk
