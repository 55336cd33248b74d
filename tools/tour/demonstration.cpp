// SPDX-License-Identifier: MIT
#include "tour/demonstration.h"

#include "tour/tour.h"

#include <vexdesk/icore.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace vexdesk {

Demonstration makeDemonstration()
{
    constexpr int days = 3;
    constexpr int barsPerDay = 60;
    Demonstration result;
    result.input = "<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<VOL>\n";
    const auto price = [](int hundredths) {
        return QByteArray::number(hundredths / 100) + '.' +
               QByteArray::number(hundredths % 100).rightJustified(2, '0');
    };
    // Prices wander as those of a market do, and always in the same way.
    quint32 random = 1;
    const auto step = [&random](int from, int to) {
        random = random * 1664525 + 1013904223;
        return from + static_cast<int>((random >> 16) % static_cast<quint32>(to - from + 1));
    };
    int open = 12000;
    for (int d = 0; d < days; ++d) {
        const QDate day = QDate(2024, 1, 15).addDays(d);
        QByteArray& stored =
            result.dayFiles[day.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral("_60.iss")];
        for (int bar = 1; bar <= barsPerDay; ++bar) {
            const QTime time = QTime(10, 0).addSecs(60 * bar);
            const int close = open + step(-6, 6);
            const int high = qMax(open, close) + step(0, 4);
            const int low = qMin(open, close) - step(0, 4);
            const QByteArray prices = price(open) + ';' + price(high) + ';' + price(low) + ';' +
                                      price(close) + ';' + QByteArray::number(step(20, 400));
            result.input += day.toString(QStringLiteral("dd.MM.yy")).toLatin1() + ';' +
                            time.toString(QStringLiteral("hh:mm")).toLatin1() + ';' + prices + '\n';
            stored +=
                time.toString(QStringLiteral("hhmmss")).toLatin1() + ';' + prices + ";0.00;0\n";
            open = close;
        }
    }
    return result;
}

QString demonstrationFilePath(const QString& dayFile)
{
    return ICore::getDir(QStringLiteral("tadata"), false)
        .filePath(QStringLiteral("NORD/MAIN/ALFA/") + dayFile);
}

Outcome areStored(const QMap<QString, QByteArray>& dayFiles)
{
    for (auto day = dayFiles.begin(); day != dayFiles.end(); ++day) {
        QFile file(demonstrationFilePath(day.key()));
        if (!file.open(QIODevice::ReadOnly))
            return missing(Tour::tr("нет файла %1").arg(file.fileName()));
        if (file.readAll() != day.value())
            return missing(Tour::tr("в файле %1 не то, что ожидалось").arg(file.fileName()));
    }
    return {};
}

} // namespace vexdesk
