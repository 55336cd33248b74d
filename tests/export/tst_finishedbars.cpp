// SPDX-License-Identifier: MIT
// An export of finished bars alone is the whole export without the lines that a later one of the
// same interval follows.

#include "exportjob.h"

#include "support/filetree.h"
#include "support/series.h"
#include "support/strictlog.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>
#include <mutex>

using testsupport::readFile;
using testsupport::writeFile;

namespace {

const QDate firstDay(2024, 1, 15);
const QDate today(2024, 1, 18);

// Times that meet often, those about midnight among them; mostly ascending.
QTime randomTime(QRandomGenerator& random, int step, int steps)
{
    if (random.bounded(12) == 0)
        return random.bounded(2) == 0 ? QTime(0, 0) : QTime(23, 59, 59);
    const int jitter = random.bounded(5) == 0 ? random.bounded(-4000, 4000) : 0;
    const int second = step * 86000 / steps + jitter;
    return QTime(0, 0).addSecs(std::clamp(second, 0, 86399) / 10 * 10);
}

QByteArray randomDayFile(QRandomGenerator& random)
{
    QByteArray lines;
    const int count = random.bounded(0, 60);
    for (int i = 0; i < count; ++i) {
        const QTime time = randomTime(random, i, count);
        lines += random.bounded(20) == 0 ? QByteArray("none")
                                         : time.toString(QStringLiteral("hhmmss")).toLatin1();
        for (int field = 0; field < 4; ++field)
            lines += ';' + QByteArray::number(random.bounded(1, 5));
        lines += ";1;2.50;" + QByteArray::number(random.bounded(9)) + '\n';
    }
    return lines;
}

// The pieces of a text, each with the mark that ends it.
QByteArrayList piecesOf(const QByteArray& text, char end)
{
    QByteArrayList pieces = text.split(end);
    pieces.removeLast();
    for (QByteArray& piece : pieces)
        piece += end;
    return pieces;
}

} // namespace

class TestFinishedBars final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void areTheLastOfTheirLines_data();
    void areTheLastOfTheirLines();
    void meetAcrossMidnight();
    void standBehindTheHeader();
    void stayWhenTheExportEndsEarly();

private:
    ExportDetails details(const QString& format) const;
    QByteArray exported(const ExportDetails& details) const;
    void fillStore(QRandomGenerator& random) const;
    void addDeals(QRandomGenerator& random) const;
    void store(const char* name, const QByteArray& content) const
    {
        writeFile(m_dir->filePath(QStringLiteral("series/") + QLatin1String(name)), content);
    }

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestFinishedBars::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_core = std::make_unique<vexdesk::Core>();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("series")));
}

void TestFinishedBars::cleanup()
{
    m_dir.reset();
    m_core.reset();
}

ExportDetails TestFinishedBars::details(const QString& format) const
{
    ExportDetails details;
    testsupport::setSeries(details, "NORD", "MAIN", "ALFA");
    details.timeframe = 60;
    details.separator = QStringLiteral(";");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat = format;
    details.dateFrom = firstDay;
    details.dateTo = today;
    details.outputPath = m_dir->filePath(QStringLiteral("out.txt"));
    return details;
}

// Without the byte order mark.
QByteArray TestFinishedBars::exported(const ExportDetails& details) const
{
    const QDir dir(m_dir->filePath(QStringLiteral("series")));
    tadata::exportBars(
        details, {today, 0}, [&dir] { return dir; }, [](int) {});
    return readFile(details.outputPath).mid(3);
}

void TestFinishedBars::fillStore(QRandomGenerator& random) const
{
    for (QDate day = firstDay; day < today; day = day.addDays(1)) {
        for (const char* end : {"_60.iss", "_1.iss"}) {
            const QString name = day.toString(QStringLiteral("yyyyMMdd")) + QLatin1String(end);
            store(qPrintable(name), randomDayFile(random));
        }
    }
}

void TestFinishedBars::addDeals(QRandomGenerator& random) const
{
    Table* const table = vexdesk::dealsTable(*m_core->database());
    const vexdesk::DealWriter writer(table);
    const ExportDetails series = details(QString());
    vexdesk::Deal deal;
    deal.stockId = series.stockId;
    deal.boardId = series.boardId;
    deal.securityId = series.securityId;
    const std::lock_guard lock(*table);
    const int count = random.bounded(0, 40);
    for (int i = 0; i < count; ++i) {
        deal.moment =
            datetime(QDateTime(today, randomTime(random, i, count), Qt::UTC).toMSecsSinceEpoch());
        deal.price = decimal(random.bounded(1, 5), 0);
        deal.quantity = random.bounded(1, 9);
        table->insert(writer.row(deal));
    }
}

void TestFinishedBars::areTheLastOfTheirLines_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<char>("end");
    QTest::newRow("all columns") << QStringLiteral(
                                        "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT")
                                 << '\n';
    QTest::newRow("no date and no time") << QStringLiteral("CLOSE,VOL") << '\n';
    QTest::newRow("no time") << QStringLiteral("DATE,CLOSE") << '\n';
    QTest::newRow("no date") << QStringLiteral("TIME,OPEN_INT") << '\n';
    QTest::newRow("all bars on one line") << QStringLiteral("VOL,Q_TY") << ';';
}

void TestFinishedBars::areTheLastOfTheirLines()
{
    QFETCH(const QString, format);
    QFETCH(const char, end);
    QRandomGenerator random(20240115);
    int dropped = 0;
    for (int round = 0; round < 8; ++round) {
        fillStore(random);
        m_core.reset();
        m_core = std::make_unique<vexdesk::Core>();
        addDeals(random);
        for (const int timeframe : {1, 60, 300, 600, 1800, 3600, 86400}) {
            ExportDetails stamps = details(QStringLiteral("DATE,TIME"));
            ExportDetails lines = details(format);
            stamps.timeframe = lines.timeframe = timeframe;
            const QByteArrayList moments = piecesOf(exported(stamps), '\n');
            const QByteArrayList all = piecesOf(exported(lines), end);
            QCOMPARE(all.size(), moments.size());
            QByteArray wanted;
            for (qsizetype i = 0; i < all.size(); ++i) {
                const bool isLast = i + 1 == all.size() || moments[i + 1] != moments[i];
                wanted += isLast ? all[i] : QByteArray();
                dropped += isLast ? 0 : 1;
            }
            lines.finishedOnly = true;
            QCOMPARE(exported(lines), wanted);
        }
    }
    QVERIFY(dropped > 400);
}

// The last bar of a day has the moment of one that the next day begins with, and that of the last
// stored day the moment of the first deal.
void TestFinishedBars::meetAcrossMidnight()
{
    store("20240116_60.iss", "235930;1;1;1;1;1;1;1\n");
    store("20240117_60.iss", "000000;2;2;2;2;2;2;2\n"
                             "235930;3;3;3;3;3;3;3\n");
    Table* const table = vexdesk::dealsTable(*m_core->database());
    ExportDetails lines = details(QStringLiteral("DATE,TIME,CLOSE"));
    vexdesk::Deal deal;
    deal.stockId = lines.stockId;
    deal.boardId = lines.boardId;
    deal.securityId = lines.securityId;
    deal.moment = datetime(QDateTime(today, QTime(0, 0), Qt::UTC).toMSecsSinceEpoch());
    deal.price = decimal(4, 0);
    {
        const std::lock_guard lock(*table);
        table->insert(vexdesk::DealWriter(table).row(deal));
    }
    lines.finishedOnly = true;
    QCOMPARE(exported(lines), QByteArray("20240117;000000;2\n"
                                         "20240118;000000;4\n"));
}

void TestFinishedBars::standBehindTheHeader()
{
    store("20240116_60.iss", "100000;1;1;1;1;1;1;1\n"
                             "100000;2;2;2;2;2;2;2\n");
    ExportDetails lines = details(QStringLiteral("TIME,CLOSE"));
    lines.addHeader = true;
    lines.finishedOnly = true;
    QCOMPARE(exported(lines), QByteArray("<TIME>;<CLOSE>\n100000;2\n"));
}

// What was written by then stays: of it, too, the last line of each interval.
void TestFinishedBars::stayWhenTheExportEndsEarly()
{
    store("20240116_60.iss", "100000;1;1;1;1;1;1;1\n"
                             "100100;2;2;2;2;2;36028797018963967;2\n"
                             "100130;3;3;3;3;3;36028797018963967;3\n");
    ExportDetails lines = details(QStringLiteral("TIME,CLOSE"));
    lines.timeframe = 300;
    lines.finishedOnly = true;
    QCOMPARE(exported(lines), QByteArray("100000;1\n100500;2\n"));
}

QTEST_GUILESS_MAIN(TestFinishedBars)
#include "tst_finishedbars.moc"
