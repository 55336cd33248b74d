// SPDX-License-Identifier: MIT
#include "choicescheck.h"

#include "filebars.h"
#include "filewarnings.h"
#include "importfailures.h"

#include <vexdesk/history/storepaths.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

LaidOutFile layOutFile(const QString& path, const GivenLayout& given)
{
    LaidOutFile file{
        .path = path, .state = vexdesk::fileState(path), .mayBeRead = tadata::mayBeRead(path)};
    const Result<FileLayout> layout = layoutOf(path, given);
    if (layout)
        file.layout = *layout;
    else
        file.refusal = Outcome(layout.failure()).wholeMessage();
    return file;
}

QDir directoryOf(const QDir& root, const std::optional<SeriesCodes>& codes)
{
    return codes ? QDir(vexdesk::seriesPath(root, codes->stock, codes->board, codes->security))
                 : root;
}

// An import of what the terminal does not know would not begin. A ticker that only stands in lines
// that are passed over is not asked for.
void refuseUnknown(const std::optional<SeriesCodes>& codes, bool isTicker, ImportCheck& check)
{
    if (!codes || isKnown(*codes) || (isTicker && check.bars == 0))
        return;
    check.wouldImport = false;
    check.stop = ImportStop{.message = unknownSeries(*codes)};
    check.days.clear();
}

// The message as this window's user can follow it: the companion's option is a button here.
void nameTheButton(ImportCheck& check)
{
    if (!check.stop)
        return;
    QString& message = check.stop->message;
    message.replace(QLatin1String("--mode merge"), Text::tr("режимом «Добавить»"));
    if (check.stop->isOfStoredLine)
        message += Text::tr(". Исправьте или удалите этот файл, или выберите «Заменить дни»: тогда "
                            "день будет записан заново, а прежние его бары пропадут.");
}

ProgressSink secondHalfOf(const ProgressSink& progress)
{
    constexpr int half = 50;
    return [&progress](int percent) { progress(half + percent / 2); };
}

// With what is found in its lines before they are checked.
QStringList warningsOf(const LaidOutFile& file, const ImportChoices& choices,
                       const ProgressSink& progress, const std::atomic<bool>& stop)
{
    const ProgressSink firstHalf = [&progress](int percent) { progress(percent / 2); };
    QStringList warnings = file.layout.warnings;
    for (const QString& warning :
         {warningOfHeader(file, choices), warningOfTickers(file, choices, firstHalf, stop)}) {
        if (!warning.isNull())
            warnings.append(warning);
    }
    return warnings;
}

Result<FileOutlook> checkFile(const ImportChoices& choices, const LaidOutFile& file,
                              const QDir& root, qint64 maxProblems, const ProgressSink& progress,
                              const std::atomic<bool>& stop)
{
    const ImportDetails details = detailsFor(file, choices);
    const bool hasTickers = details.columns.contains(static_cast<qint32>(ColumnRole::Ticker));
    FileOutlook outlook{.path = file.path,
                        .mode = choices.ways.mode,
                        .timeframe = details.timeframe,
                        .unused = file.layout.unused,
                        .warnings = warningsOf(file, choices, progress, stop)};
    const CheckedSeries series{.directory =
                                   [&](const QString& ticker) {
                                       const QDir dir =
                                           directoryOf(root, seriesOf(choices, file.path, ticker));
                                       outlook.stamps.insert(dir.path(), dayStamp(dir));
                                       return dir;
                                   },
                               .describe =
                                   [&](const QString& ticker, TADataDescription* description) {
                                       if (const auto codes = seriesOf(choices, file.path, ticker))
                                           setSeries(*description, *codes);
                                   },
                               .countsBars = true};
    const Result<std::vector<TickerCheck>> checks =
        checkTickers(file.path, details, choices.ways, series, maxProblems,
                     leavesTickers(file, choices) ? secondHalfOf(progress) : progress, &stop);
    if (stop)
        return interrupted();
    if (!checks) {
        outlook.refusal = Outcome(checks.failure()).wholeMessage();
        return outlook;
    }
    // Each ticker has its own; together they are not to be more.
    auto left = static_cast<size_t>(maxProblems);
    for (const TickerCheck& one : *checks) {
        const auto codes = seriesOf(choices, file.path, one.ticker);
        outlook.series.push_back({codes ? codes->name() : one.ticker, one.check});
        ImportCheck& check = outlook.series.back().check;
        nameTheButton(check);
        refuseUnknown(codes, hasTickers, check);
        std::vector<FileProblem>& problems = check.problems;
        problems.resize(std::min(problems.size(), left));
        left -= problems.size();
    }
    return outlook;
}

} // namespace

QString whyNot(const LaidOutFile& file, const ImportChoices& choices)
{
    if (!file.refusal.isNull())
        return file.refusal;
    if (const QStringList lacks = file.layout.lacks(); !lacks.isEmpty())
        return lacks.join(u' ');
    const SeriesPattern pattern(choices.series);
    if (!pattern.codesOf(file.path, QStringLiteral("x")))
        return Text::tr("Выберите площадку, режим торгов и инструмент.");
    if (pattern.hasTicker() && !file.layout.hasTicker())
        return Text::tr("Назовите над таблицей столбец с тикером: инструмент берётся из него.");
    return {};
}

bool LaidOutFile::isUnchanged(const LaidOutFile& since) const
{
    const bool isSame = state && since.state ? state->isUnchanged(*since.state)
                                             : state.has_value() == since.state.has_value();
    return isSame && mayBeRead == since.mayBeRead;
}

bool mayBeRead(const QString& path)
{
    return QFileInfo(path).isReadable();
}

std::vector<LaidOutFile> layOutFiles(const QStringList& files, const GivenLayout& given,
                                     const std::atomic<bool>& stop)
{
    std::vector<LaidOutFile> found;
    for (const QString& path : files) {
        if (stop)
            break;
        found.push_back(layOutFile(path, given));
    }
    return found;
}

ImportDetails detailsFor(const LaidOutFile& file, const ImportChoices& choices)
{
    ImportDetails details = file.layout.details;
    if (!SeriesPattern(choices.series).hasTicker()) {
        details.columns.remove(static_cast<qint32>(ColumnRole::Ticker));
        if (const auto codes = seriesOf(choices, file.path, QString()))
            setSeries(details, *codes);
    }
    return details;
}

std::optional<SeriesCodes> seriesOf(const ImportChoices& choices, const QString& file,
                                    const QString& ticker)
{
    return SeriesPattern(choices.series).codesOf(file, ticker);
}

QString unknownSeries(const SeriesCodes& codes)
{
    return Text::tr("Инструмента %1 нет в справочнике терминала: неизвестно, сколько знаков после "
                    "точки в его ценах.")
        .arg(codes.name());
}

QString notAName(const QString& ticker)
{
    return Text::tr("Код '%1' не может быть именем каталога").arg(ticker);
}

QString faultOfTicker(const ImportChoices& choices, const QString& file, const QString& ticker)
{
    const auto codes = seriesOf(choices, file, ticker);
    if (!codes || !isDirectoryName(ticker))
        return notAName(ticker);
    return isKnown(*codes) ? QString() : unknownSeries(*codes);
}

Result<std::vector<FileOutlook>>
checkChoices(const ImportChoices& choices, const std::vector<LaidOutFile>& files, const QDir& root,
             qint64 maxProblems, const ProgressSink& progress, const std::atomic<bool>& stop)
{
    std::vector<FileOutlook> outlooks;
    SharedProgress shared(files, progress);
    for (const LaidOutFile& file : files) {
        const ProgressSink ofFile = shared.next();
        if (const QString why = whyNot(file, choices); !why.isNull()) {
            outlooks.push_back({.path = file.path, .refusal = why});
            continue;
        }
        Result<FileOutlook> outlook = checkFile(choices, file, root, maxProblems, ofFile, stop);
        if (!outlook)
            return outlook.failure();
        outlooks.push_back(*std::move(outlook));
    }
    return outlooks;
}

ProgressSink tellingChanges(const ProgressSink& sink)
{
    return [sink, last = -1](int percent) mutable {
        if (std::exchange(last, percent) != percent)
            sink(percent);
    };
}

SharedProgress::SharedProgress(const std::vector<LaidOutFile>& files, const ProgressSink& sink)
    : m_sink(sink)
{
    for (const LaidOutFile& file : files) {
        m_sizes.push_back(file.state ? file.state->size + 1 : 1);
        m_all += m_sizes.back();
    }
}

ProgressSink SharedProgress::next()
{
    constexpr double whole = 100;
    const qint64 done = m_done;
    const qint64 size = m_sizes[m_next++];
    m_done += size;
    return [this, done, size](int percent) {
        const double share = double(done) + double(size) * percent / whole;
        m_sink(static_cast<int>(share * whole / double(m_all)));
    };
}

} // namespace tadata
