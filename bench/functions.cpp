// SPDX-License-Identifier: MIT
// The functions that run once for every line, bar or row, each by itself.
//
//   bench_functions [--benchmark_filter=REGEX] [--benchmark_repetitions=N]

#include "bardescription.h"
#include "barexporter.h"
#include "editortadatamodel.h"
#include "exportbar.h"
#include "exportdetails.h"
#include "importdetails.h"
#include "plainlineparser.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int barsOfDay = 500;
constexpr int days = 200;
constexpr int decimals = 2;
constexpr int stockId = 1;
constexpr int boardId = 1;
constexpr qint64 firstSecurityId = 1;
constexpr int securities = 1000;

const QDate firstDay(2024, 1, 15);

// Takes what is written and keeps none of it, so that a run does not grow.
class NoDevice final : public QIODevice
{
public:
    NoDevice() { open(QIODevice::WriteOnly); }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override { return size; }
};

void installSecurities()
{
    vexdesk::ReferenceData data;
    data.stocks = {{stockId, QStringLiteral("S"), QString()}};
    data.boards = {{QStringLiteral("S"), boardId, QStringLiteral("B"), QString(), 0}};
    for (int i = 0; i < securities; ++i)
        data.securities.append({QStringLiteral("S"), QStringLiteral("B"), firstSecurityId + i,
                                QString::number(i), QString(), decimals});
    vexdesk::ReferenceData::install(data);
}

// One-minute bars of a day, from 09:30 on.
const std::vector<BarDescription>& bars()
{
    static const std::vector<BarDescription> made = [] {
        std::vector<BarDescription> list;
        for (int i = 0; i < barsOfDay; ++i) {
            BarDescription bar;
            bar.valid = true;
            bar.date = firstDay;
            bar.time = QTime(9, 30).addSecs((i + 1) * vexdesk::minuteTimeframe);
            const qint64 price = 12000 + i * 37 % 400; // in hundredths
            bar.open = decimal(price, decimals);
            bar.high = decimal(price + i % 15, decimals);
            bar.low = decimal(price - i % 13, decimals);
            bar.close = decimal(price + i % 7, decimals);
            bar.volume = 1 + i * 131 % 5000;
            bar.value = decimal(price * bar.volume, decimals);
            list.push_back(bar);
        }
        return list;
    }();
    return made;
}

QByteArray recordLines(const std::vector<BarDescription>& list)
{
    QByteArray text;
    QTextStream stream(&text);
    for (const BarDescription& bar : list)
        stream << bar;
    stream.flush();
    return text;
}

QByteArrayList splitLines(QByteArray text)
{
    text.chop(1);
    return text.split('\n');
}

ImportDetails importDetails()
{
    ImportDetails details;
    details.stockId = stockId;
    details.boardId = boardId;
    details.securityId = firstSecurityId;
    details.timeframe = vexdesk::minuteTimeframe;
    details.separator = QStringLiteral(",");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    for (qint32 role = static_cast<qint32>(ColumnRole::Date);
         role <= static_cast<qint32>(ColumnRole::Value); ++role)
        details.columns.insert(role, role + 1);
    return details;
}

QStringList importLines()
{
    QStringList lines;
    for (const BarDescription& bar : bars())
        lines.append(QStringLiteral("DEMO,60,%1,%2,%3,%4,%5,%6,%7,%8")
                         .arg(bar.date.toString(QStringLiteral("yyyyMMdd")),
                              bar.time.toString(QStringLiteral("hhmmss")), bar.open.toString(),
                              bar.high.toString(), bar.low.toString(), bar.close.toString(),
                              QString::number(bar.volume), bar.value.toString()));
    return lines;
}

ExportDetails exportDetails()
{
    ExportDetails details;
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = 5 * vexdesk::minuteTimeframe;
    details.separator = QStringLiteral(",");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    details.lineFormat =
        QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT");
    return details;
}

// Opens the first bar of the day anew in each round; otherwise everything would fold into its last.
void restartDay(const BarDescription& source, BarDescription& target)
{
    if (&source == &bars().front())
        target = BarDescription();
}

// Runs the work for each element of the list in turn; one element is one item.
template <typename List, typename Work>
void forEach(benchmark::State& state, const List& list, const Work& work)
{
    for (auto _ : state) {
        for (const auto& element : list)
            work(element);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(list.size()));
}

void importedLineIn(benchmark::State& state)
{
    const ImportDetails details = importDetails();
    forEach(state, importLines(), [&](const QString& line) {
        BarDescription bar;
        if (!bar.init(line, details))
            state.SkipWithError(qUtf8Printable(bar.error));
        benchmark::DoNotOptimize(bar);
    });
}
BENCHMARK(importedLineIn)->Name("BarDescription::init");

void plainLineIn(benchmark::State& state)
{
    const ImportDetails details = importDetails();
    tadata::PlainLineParser parser(details);
    QByteArrayList lines;
    for (const QString& line : importLines())
        lines.append(line.toLatin1());
    forEach(state, lines, [&](const QByteArray& line) {
        BarDescription bar;
        if (!parser.parse(line, &bar))
            state.SkipWithError("A line is not for this parser");
        benchmark::DoNotOptimize(bar);
    });
}
BENCHMARK(plainLineIn)->Name("tadata::PlainLineParser::parse");

void recordLineOut(benchmark::State& state)
{
    NoDevice device;
    QTextStream stream(&device);
    forEach(state, bars(), [&](const BarDescription& bar) { stream << bar; });
}
BENCHMARK(recordLineOut)->Name("operator<<(QTextStream, BarDescription)");

void recordLineIn(benchmark::State& state)
{
    forEach(state, splitLines(recordLines(bars())), [](const QByteArray& line) {
        benchmark::DoNotOptimize(tadata::barFromRecordLine(line, firstDay));
    });
}
BENCHMARK(recordLineIn)->Name("tadata::barFromRecordLine");

void exportedBar(benchmark::State& state)
{
    const ExportDetails details = exportDetails();
    NoDevice device;
    QTextStream stream(&device);
    BarDescription target;
    forEach(state, bars(), [&](const BarDescription& bar) {
        restartDay(bar, target);
        exportBar(bar, target, details, stream);
    });
}
BENCHMARK(exportedBar)->Name("exportBar");

void writtenBar(benchmark::State& state)
{
    const ExportDetails details = exportDetails();
    NoDevice device;
    QTextStream stream(&device);
    forEach(state, bars(), [&](const BarDescription& bar) { writeBar(bar, stream, details); });
}
BENCHMARK(writtenBar)->Name("writeBar");

void exporterFolds(benchmark::State& state)
{
    const ExportDetails details = exportDetails();
    tadata::BarExporter exporter(details, [](QByteArrayView) {});
    BarDescription target;
    forEach(state, bars(), [&](const BarDescription& bar) {
        restartDay(bar, target);
        exporter.exportBar(bar, target);
    });
}
BENCHMARK(exporterFolds)->Name("tadata::BarExporter::exportBar");

void exporterWrites(benchmark::State& state)
{
    const ExportDetails details = exportDetails();
    tadata::BarExporter exporter(details, [](QByteArrayView) {});
    forEach(state, bars(), [&](const BarDescription& bar) { exporter.writeBar(bar); });
}
BENCHMARK(exporterWrites)->Name("tadata::BarExporter::writeBar");

template <typename Text>
void decimalFromText(benchmark::State& state)
{
    std::vector<QByteArray> bytes;
    std::vector<QString> texts;
    for (const BarDescription& bar : bars()) {
        texts.push_back(bar.open.toString());
        bytes.push_back(texts.back().toLatin1());
    }
    const auto read = [](Text text) { benchmark::DoNotOptimize(decimal::fromText(text)); };
    if constexpr (std::is_same_v<Text, QStringView>)
        forEach(state, texts, [&read](const QString& text) { read(text); });
    else
        forEach(state, bytes, [&read](const QByteArray& text) { read(QLatin1String(text)); });
}
BENCHMARK(decimalFromText<QStringView>)->Name("decimal::fromText(QStringView)");
BENCHMARK(decimalFromText<QLatin1String>)->Name("decimal::fromText(QLatin1String)");

void decimalToText(benchmark::State& state)
{
    char text[decimal::maxTextSize];
    forEach(state, bars(), [&text](const BarDescription& bar) {
        benchmark::DoNotOptimize(bar.open.toText(text));
        benchmark::ClobberMemory();
    });
}
BENCHMARK(decimalToText)->Name("decimal::toText");

void decimalToString(benchmark::State& state)
{
    forEach(state, bars(), [](const BarDescription& bar) {
        const QString text = bar.open.toString();
        benchmark::DoNotOptimize(text.constData());
    });
}
BENCHMARK(decimalToString)->Name("decimal::toString");

void decimalsById(benchmark::State& state)
{
    std::vector<qint64> ids;
    ids.reserve(securities);
    for (int i = 0; i < securities; ++i)
        ids.push_back(firstSecurityId + i * qint64(37) % securities);
    forEach(state, ids, [](qint64 id) {
        benchmark::DoNotOptimize(SecurityDirectory::i().decimalsById(stockId, boardId, id));
    });
}
BENCHMARK(decimalsById)->Name("SecurityDirectory::decimalsById");

// A series of day files, each with the same bars; made once.
class StoredSeries final
{
public:
    static const StoredSeries& instance()
    {
        static const StoredSeries series;
        return series;
    }

    void loadInto(EditorTADataModel& model) const
    {
        model.load(QDir(m_directory.path()), from(), to(), vexdesk::minuteTimeframe);
    }
    static QDateTime from() { return firstDay.startOfDay(); }
    static QDateTime to() { return firstDay.addDays(days - 1).endOfDay(); }

private:
    StoredSeries()
    {
        const QByteArray content = recordLines(bars());
        for (int i = 0; i < days; ++i) {
            const QString name =
                vexdesk::dayFileName(firstDay.addDays(i), vexdesk::minuteTimeframe);
            QFile file(m_directory.filePath(name));
            if (file.open(QIODevice::WriteOnly))
                file.write(content);
        }
    }

    QTemporaryDir m_directory;
};

void editorLoad(benchmark::State& state)
{
    const StoredSeries& series = StoredSeries::instance();
    EditorTADataModel model(nullptr);
    for ([[maybe_unused]] auto _ : state)
        series.loadInto(model);
    constexpr int rows = days * barsOfDay;
    if (model.rowCount() != rows)
        state.SkipWithError("Not all bars are shown");
    state.SetItemsProcessed(state.iterations() * rows);
}
BENCHMARK(editorLoad)->Name("EditorTADataModel::load")->Unit(benchmark::kMillisecond);

void editorFind(benchmark::State& state)
{
    EditorTADataModel model(nullptr);
    StoredSeries::instance().loadInto(model);
    constexpr int keyCount = 1000;
    QStringList keys;
    const qint64 length = StoredSeries::from().secsTo(StoredSeries::to());
    for (int i = 0; i < keyCount; ++i) {
        const QDateTime time =
            StoredSeries::from().addSecs(length * (i * 37 % keyCount) / keyCount);
        keys.append(time.toString(QStringLiteral("yyyyMMdd hhmmss")));
    }
    forEach(state, keys,
            [&model](const QString& key) { benchmark::DoNotOptimize(model.find(key)); });
}
BENCHMARK(editorFind)->Name("EditorTADataModel::find");

} // namespace

int main(int argc, char** argv)
{
    // Before the application makes the user's locale the process's: numbers of options have a
    // point.
    benchmark::Initialize(&argc, argv);
    const QCoreApplication application(argc, argv);
    installSecurities();
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return EXIT_FAILURE;
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
