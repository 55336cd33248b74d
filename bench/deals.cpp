// SPDX-License-Identifier: MIT
// The export's scan of today's deals beside a loop over plain structs in memory: the same deals,
// the same filter, the same sums.
//
//   bench_deals [DEALS] [SECURITIES]

#include "dealsexport.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <cstdio>
#include <ctime>
#include <mutex>
#include <vector>

namespace {

const QDate today(2024, 1, 15);

struct PlainDeal
{
    int stockId;
    int boardId;
    qint64 securityId;
    qint64 moment;
    qint64 price; // in hundredths
    qint64 quantity;
};

double seconds(std::clock_t since)
{
    return double(std::clock() - since) / CLOCKS_PER_SEC;
}

std::vector<PlainDeal> makeDeals(int count, int securities)
{
    std::vector<PlainDeal> deals;
    const qint64 midnight = QDateTime(today, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    quint64 state = 1;
    for (int i = 0; i < count; ++i) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        const auto random = static_cast<qint64>(state >> 33);
        deals.push_back({1, 1, 1 + random % securities, midnight + 80000000LL * i / count,
                         12000 + random % 100, 1 + random % 50});
    }
    return deals;
}

void fill(vexdesk::Core& core, const std::vector<PlainDeal>& deals)
{
    const vexdesk::DealWriter writer(vexdesk::dealsTable(*core.database()));
    const std::lock_guard lock(*writer.table());
    for (const PlainDeal& plain : deals) {
        vexdesk::Deal deal;
        deal.stockId = plain.stockId;
        deal.boardId = plain.boardId;
        deal.securityId = plain.securityId;
        deal.moment = datetime(plain.moment);
        deal.price = decimal(plain.price, 2);
        deal.quantity = plain.quantity;
        deal.value = decimal(plain.price * plain.quantity, 2);
        writer.table()->insert(writer.row(deal));
    }
}

// The volume of each minute of one security's deals.
std::vector<qint64> plainScan(const std::vector<PlainDeal>& deals, qint64 securityId)
{
    std::vector<qint64> minutes;
    qint64 minute = -1;
    for (const PlainDeal& deal : deals) {
        if (deal.stockId != 1 || deal.boardId != 1 || deal.securityId != securityId)
            continue;
        const qint64 end = (deal.moment + 59999) / 60000;
        if (end != minute)
            minutes.push_back(0);
        minute = end;
        minutes.back() += deal.quantity;
    }
    return minutes;
}

QByteArray linesOf(const std::vector<qint64>& volumes)
{
    QByteArray lines;
    for (const qint64 volume : volumes)
        lines += QByteArray::number(volume) + '\n';
    return lines;
}

QByteArray scan(qint64 securityId)
{
    ExportDetails details;
    details.stockId = 1;
    details.boardId = 1;
    details.securityId = securityId;
    details.timeframe = 60;
    details.separator = QStringLiteral(",");
    details.lineFormat = QStringLiteral("VOL");
    QByteArray lines;
    tadata::BarExporter exporter(details, [&lines](QByteArrayView written) { lines += written; });
    tadata::exportDeals(details, today, {0, [](int) {}}, exporter);
    exporter.finish();
    return lines;
}

void makeReferenceData(int securities)
{
    vexdesk::ReferenceData data;
    data.stocks = {{1, QStringLiteral("S"), QString()}};
    data.boards = {{QStringLiteral("S"), 1, QStringLiteral("B"), QString(), 0}};
    for (int i = 1; i <= securities; ++i)
        data.securities.append(
            {QStringLiteral("S"), QStringLiteral("B"), i, QString::number(i), QString(), 2});
    vexdesk::ReferenceData::install(data);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int count = QCoreApplication::arguments().value(1, QStringLiteral("1000000")).toInt();
    const int securities = QCoreApplication::arguments().value(2, QStringLiteral("50")).toInt();
    if (count < 1 || securities < 1) {
        std::fprintf(stderr, "bench_deals [DEALS] [SECURITIES]\n");
        return EXIT_FAILURE;
    }
    makeReferenceData(securities);
    vexdesk::Core core;
    const std::vector<PlainDeal> deals = makeDeals(count, securities);
    std::clock_t start = std::clock();
    fill(core, deals);
    std::printf("%d deals of %d securities, put into the table in %.3f s\n", count, securities,
                seconds(start));
    constexpr int runs = 5;
    for (int run = 0; run < runs; ++run) {
        const qint64 securityId = 1 + run % securities;
        start = std::clock();
        const QByteArray ours = scan(securityId);
        const double oursTime = seconds(start);
        start = std::clock();
        const QByteArray plain = linesOf(plainScan(deals, securityId));
        const double plainTime = seconds(start);
        std::printf("scan %.2f ms (%.1f million deals a second), plain loop %.2f ms, ratio %.2f\n",
                    oursTime * 1e3, count / oursTime / 1e6, plainTime * 1e3, oursTime / plainTime);
        if (ours != plain) {
            std::fprintf(stderr, "The two do not give the same volumes.\n");
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
