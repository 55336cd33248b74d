// SPDX-License-Identifier: MIT
#include "support/dayfiles.h"

namespace testsupport {

namespace {

QByteArray line(const QTime& time, int number, const QByteArray& sixth, const QByteArray& seventh)
{
    const QByteArray price = QByteArray::number(number);
    return time.toString(QStringLiteral("hhmmss")).toLatin1() + ';' + price + ".10;" + price +
           ".40;" + price + ".05;" + price + ".20;" + sixth + ';' + seventh + ';' + price + '\n';
}

QByteArray volume(int number)
{
    return QByteArray::number(1000 + number);
}

QByteArray value(int number)
{
    return QByteArray::number(2000 + number) + ".50";
}

constexpr int secondsPerMinute = 60;

} // namespace

QByteArray barLine(const QTime& time, int number)
{
    return line(time, number, volume(number), value(number));
}

QByteArray editedBarLine(const QTime& time, int number)
{
    return line(time, number, value(number), volume(number));
}

QByteArray barLines(const QTime& first, int count, int number)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += barLine(first.addSecs(i * secondsPerMinute), number + i);
    return lines;
}

QByteArray editedBarLines(const QTime& first, int count, int number)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += editedBarLine(first.addSecs(i * secondsPerMinute), number + i);
    return lines;
}

QString dayFile(const QDate& day, int timeframe)
{
    return QStringLiteral("%1_%2.iss").arg(day.toString(QStringLiteral("yyyyMMdd"))).arg(timeframe);
}

} // namespace testsupport
