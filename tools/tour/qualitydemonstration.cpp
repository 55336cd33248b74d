// SPDX-License-Identifier: MIT
#include "tour/qualitydemonstration.h"

#include <QtCore/QDate>
#include <QtCore/QTime>

namespace vexdesk {

namespace {

constexpr int barsOfDay = 60;
constexpr int firstLost = 12;
const QString whole = QStringLiteral("BARK");
const QString ill = QStringLiteral("VEGA");

// Prices wander as those of a market do, and always in the same way.
class Wandering final
{
public:
    explicit Wandering(int price)
        : m_price(price)
    {}

    // Open, high, low and close of a bar, and its volume.
    QByteArray next()
    {
        const int open = m_price;
        m_price = qMax(1000, open + step(-6, 6));
        const int high = qMax(open, m_price) + step(0, 4);
        const int low = qMin(open, m_price) - step(0, 4);
        return text(open) + ',' + text(high) + ',' + text(low) + ',' + text(m_price) + ',' +
               QByteArray::number(step(20, 400));
    }
    int step(int from, int to)
    {
        m_random = m_random * 1664525 + 1013904223;
        return from + static_cast<int>((m_random >> 16) % static_cast<quint32>(to - from + 1));
    }

private:
    static QByteArray text(int hundredths)
    {
        return QByteArray::number(hundredths / 100) + '.' +
               QByteArray::number(hundredths % 100).rightJustified(2, '0');
    }

    int m_price; // in hundredths
    quint32 m_random = 1;
};

// How many bars in the middle of a day a source has lost.
int lostOn(const QString& code, const QDate& day, Wandering& wandering)
{
    const int lot = wandering.step(0, 9);
    if (code != ill || lot < 7)
        return 0;
    return day.month() == 3 ? 45 : lot * 3;
}

bool isLost(const QString& code, const QDate& day)
{
    const bool isInMay = day >= QDate(2024, 5, 13) && day <= QDate(2024, 5, 17);
    return code == ill && (isInMay || day == QDate(2024, 2, 20));
}

QByteArray barsOf(const QString& code, int price)
{
    constexpr int saturday = 6;
    Wandering wandering(price);
    QByteArray lines;
    for (QDate day(2024, 1, 9); day <= QDate(2024, 6, 28); day = day.addDays(1)) {
        if (day.dayOfWeek() >= saturday || isLost(code, day))
            continue;
        const int lost = lostOn(code, day, wandering);
        for (int bar = 1; bar <= barsOfDay; ++bar) {
            if (bar > firstLost && bar <= firstLost + lost)
                continue;
            lines += code.toLatin1() + ',' + day.toString(QStringLiteral("yyyyMMdd")).toLatin1() +
                     ',' +
                     QTime(10, 0).addSecs(60 * bar).toString(QStringLiteral("hhmmss")).toLatin1() +
                     ',' + wandering.next() + '\n';
        }
        if (code == ill && day == QDate(2024, 6, 14))
            lines += code.toLatin1() + ",20240614,110100,n/a,n/a,n/a,n/a,0\n";
    }
    return lines;
}

} // namespace

QStringList qualityCodes()
{
    return {whole, ill};
}

QByteArray qualityInput()
{
    return "<TICKER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n" + barsOf(whole, 20000) +
           barsOf(ill, 12000);
}

} // namespace vexdesk
