// SPDX-License-Identifier: MIT
#include "tour/exportedbars.h"

#include "tour/demonstration.h"
#include "tour/tour.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/database/datetime.h>
#include <vexdesk/database/idatabase.h>
#include <vexdesk/database/table.h>
#include <vexdesk/decimal.h>
#include <vexdesk/icore.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QDateTime>
#include <QtCore/QFile>

#include <algorithm>
#include <mutex>
#include <optional>

namespace vexdesk {

namespace {

const QString stock = QStringLiteral("NORD");
const QString board = QStringLiteral("MAIN");
const QString security = QStringLiteral("ALFA");

const QByteArray heading = "\xef\xbb\xbf<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,"
                           "<VOL>,<VAL>,<OPEN_INT>\n";

struct Bar
{
    QDateTime end; // as the clock of the market shows it
    decimal open;
    decimal high;
    decimal low;
    decimal close;
    qint64 volume = 0;
    decimal value;
    qint64 openInterest = 0;

    void add(const Bar& next)
    {
        high = std::max(high, next.high);
        low = std::min(low, next.low);
        close = next.close;
        volume += next.volume;
        value += next.value;
        openInterest = next.openInterest;
    }

    QByteArray line(int timeframe) const
    {
        const QStringList columns{security,
                                  QString::number(timeframe),
                                  end.toString(QStringLiteral("yyyyMMdd")),
                                  end.toString(QStringLiteral("hhmmss")),
                                  open.toString(),
                                  high.toString(),
                                  low.toString(),
                                  close.toString(),
                                  QString::number(volume),
                                  value.toString(),
                                  QString::number(openInterest)};
        return columns.join(u',').toUtf8() + '\n';
    }
};

// Up to the end of an interval; the end belongs to it.
QDateTime intervalEnd(const QDateTime& time, int timeframe)
{
    const qint64 length = timeframe * qint64(1000);
    const qint64 passed = time.time().msecsSinceStartOfDay();
    return time.addMSecs((passed + length - 1) / length * length - passed);
}

Bar storedBar(const QString& dayFile, const QByteArray& line)
{
    const QStringList fields = QString::fromLatin1(line).split(u';');
    Bar bar;
    bar.end =
        QDateTime::fromString(dayFile.left(8) + fields.at(0), QStringLiteral("yyyyMMddhhmmss"));
    bar.end.setTimeSpec(Qt::UTC);
    bar.open = decimal(fields.at(1));
    bar.high = decimal(fields.at(2));
    bar.low = decimal(fields.at(3));
    bar.close = decimal(fields.at(4));
    // Lines that were edited have the money first, which is no number of pieces.
    bar.volume = fields.at(5).toInt();
    bar.value = decimal(fields.at(6));
    return bar;
}

QByteArray storedLines(const QString& dayFile, int timeframe)
{
    QFile file(demonstrationFilePath(dayFile));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    QByteArray lines;
    std::optional<Bar> open;
    const QByteArrayList records = file.readAll().chopped(1).split('\n');
    for (const QByteArray& record : records) {
        Bar bar = storedBar(dayFile, record);
        if (open && bar.end <= open->end) {
            open->add(bar);
        } else {
            if (open)
                lines += open->line(timeframe);
            bar.end = intervalEnd(bar.end, timeframe);
            open = bar;
        }
        lines += open->line(timeframe);
    }
    return lines;
}

// The deals of today in the order of their arrival, each as a bar.
QList<Bar> dealsOfToday()
{
    const Table& deals = *ICore::instance()->database()->table(dealsTableName());
    const int stockId = StockDirectory::i().idByCode(stock);
    const int boardId = BoardDirectory::i().idByCode(stock, board);
    const long long securityId = SecurityDirectory::i().idByCode(stock, board, security);
    const std::lock_guard lock(deals);
    QList<Bar> bars;
    for (const Record& row : deals.masterIndex()) {
        const auto cell = [&deals, &row](const char* column) {
            return deals.dataPtr(row.data(), deals.columnIndex(QLatin1String(column)));
        };
        if (cell("stock_id").as<qint32>() != stockId || cell("board_id").as<qint32>() != boardId ||
            cell("sec_id").as<qint64>() != securityId)
            continue;
        Bar bar;
        bar.end = QDateTime::fromMSecsSinceEpoch(cell("moment").as<datetime>().msecsSinceEpoch(),
                                                 Qt::UTC);
        if (bar.end.date() != QDate::currentDate())
            continue;
        bar.open = bar.high = bar.low = bar.close = cell("price").as<decimal>();
        bar.volume = cell("quantity").as<qint64>();
        if (cell("value").present)
            bar.value = cell("value").as<decimal>();
        bars.append(bar);
    }
    return bars;
}

qint64 volumeOf(const QByteArray& file)
{
    constexpr int volumeColumn = 8;
    qint64 volume = 0;
    const QByteArrayList lines = file.mid(heading.size()).split('\n');
    for (const QByteArray& line : lines)
        volume += line.split(',').value(volumeColumn).toLongLong();
    return volume;
}

} // namespace

Outcome hasStoredBars(const QByteArray& file)
{
    constexpr int timeframe = 300;
    QByteArray wanted = heading;
    const QStringList dayFiles = makeDemonstration().dayFiles.keys();
    for (const QString& dayFile : dayFiles)
        wanted += storedLines(dayFile, timeframe);
    return missingUnless(file == wanted, Tour::tr("записано не то, что хранится"));
}

Outcome hasDealsOfToday(const QByteArray& file)
{
    constexpr int timeframe = 60;
    qint64 left = volumeOf(file);
    QByteArray wanted = heading;
    std::optional<Bar> open;
    const QList<Bar> deals = dealsOfToday();
    for (Bar bar : deals) {
        if (left <= 0)
            break;
        left -= bar.volume;
        if (open && bar.end <= open->end) {
            open->add(bar);
            continue;
        }
        if (open)
            wanted += open->line(timeframe);
        bar.end = intervalEnd(bar.end, timeframe);
        open = bar;
    }
    if (open)
        wanted += open->line(timeframe);
    return missingUnless(file == wanted, Tour::tr("записаны не сегодняшние сделки"));
}

} // namespace vexdesk
