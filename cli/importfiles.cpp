// SPDX-License-Identifier: MIT
#include "importfiles.h"

#include "filesprogress.h"
#include "importstore.h"
#include "interruption.h"
#include "linequote.h"
#include "storework.h"
#include "taskrow.h"

#include "filebars.h"
#include "importfailures.h"
#include "importjob.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/utf8.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QMap>

#include <algorithm>
#include <mutex>

namespace tadata::cli {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::Result;

namespace {

// What is said of a file, and what came of it.
struct FileReport
{
    QStringList errors; ///< for standard error
    QString output;     ///< for standard output
    ImportResult result;
    bool isDone = false;
};

// The series of the command's files, and their decimals. Any thread.
class KnownSeries final
{
public:
    explicit KnownSeries(const ImportRequest& request)
        : m_request(request)
    {}

    // No value for a name that is no series.
    std::optional<SeriesCodes> codesOf(const FileToImport& file, const QString& ticker) const
    {
        return m_request.series.codesOf(file.path, ticker);
    }

    // Makes the reference data know it.
    Outcome introduce(const FileToImport& file, const SeriesCodes& codes)
    {
        const std::lock_guard lock(m_mutex);
        const QString name = codes.name();
        if (m_known.contains(name))
            return guessMore(file, codes);
        const bool isGuessed = !m_request.decimals && !isKnown(codes);
        Outcome known = makeKnown(codes, m_request.decimals, file.decimals);
        if (known)
            m_known.insert(name, isGuessed ? file.decimals : std::nullopt);
        else
            m_unknown = known.message();
        return known;
    }

    void describe(const FileToImport& file, const QString& ticker, TADataDescription* series) const
    {
        if (const auto codes = codesOf(file, ticker))
            setSeries(*series, *codes);
    }

    // That of a file is not known before its tickers are; the command line is wrong all the same.
    void checkDecimals()
    {
        const std::lock_guard lock(m_mutex);
        if (!m_unknown.isNull())
            throw UsageError{m_unknown};
    }

private:
    // Of several files of a series the most digits count: none must be lost.
    Outcome guessMore(const FileToImport& file, const SeriesCodes& codes)
    {
        std::optional<int>& guessed = m_known[codes.name()];
        if (guessed && file.decimals && *file.decimals > *guessed) {
            guessed = file.decimals;
            makeKnown(codes, *guessed);
        }
        return {};
    }

    const ImportRequest& m_request;
    std::mutex m_mutex;                        ///< of what the reference data know, and of:
    QMap<QString, std::optional<int>> m_known; ///< with the decimals that were guessed
    QString m_unknown;                         ///< why one is not known; or null
};

// All that the imports of one command have in common.
struct ImportCommand
{
    const ImportRequest& request;
    KnownSeries& known;
    ImportStore& store;
};

// The series of these tickers, once the reference data know all of them.
Result<QList<SeriesCodes>> seriesOf(const FileToImport& file, const QStringList& tickers,
                                    KnownSeries& known)
{
    QList<SeriesCodes> all;
    for (const QString& ticker : tickers) {
        const std::optional<SeriesCodes> codes = known.codesOf(file, ticker);
        if (!codes)
            return Failure{Text::tr("Код '%1' не может быть именем каталога").arg(ticker)};
        if (const Outcome introduced = known.introduce(file, *codes); !introduced)
            return introduced.failure();
        all.append(*codes);
    }
    return all;
}

ImportResult runJob(const FileToImport& file, ImportCommand& command, const ProgressSink& progress)
{
    const Surroundings surroundings{.keeper = &command.store, .stop = Interruption::flag()};
    const auto directories = [&](const QStringList& tickers) -> Result<QList<QDir>> {
        const Result<QList<SeriesCodes>> series = seriesOf(file, tickers, command.known);
        return series ? command.store.directories(*series) : series.failure();
    };
    const ImportSeries series{
        .directories = directories,
        .describe = [&](const QString& ticker, TADataDescription* description) {
            command.known.describe(file, ticker, description);
        }};
    return importByWays(file.path, file.details, command.request.ways, series, progress,
                        surroundings);
}

constexpr qsizetype longestQuoted = 65536;

// The bad line that an import has ended at, or the first that it has passed over, as the user is
// told of it, with the line itself.
QStringList firstBadLine(const FileToImport& file, const ImportCommand& command)
{
    FileBars bars(file.path, file.details, command.request.ways.clock,
                  [&](const QString& ticker, TADataDescription* series) {
                      command.known.describe(file, ticker, series);
                  });
    FileLine line;
    if (!bars.open())
        return {};
    while (bars.next(&line)) {
        if (!line.isBad() || (line.isBlank && command.request.ways.passesOverBad()))
            continue;
        ImportDetails details = file.details;
        command.known.describe(file, line.ticker, &details);
        // A damaged file may have lines of any length; of one, a part tells enough.
        const QByteArrayView part = line.text.first(std::min(line.text.size(), longestQuoted));
        return {wrongLine(line.number, line.error()).message,
                quotedLine(vexdesk::textFromUtf8(part), line.number, details, screenWidth())};
    }
    return {};
}

// A day of seconds that is right already is left alone, with its minutes, when the import is done
// again. Null where nothing is to be said.
QString aboutMinutes(const FileToImport& file, const ImportRequest& request,
                     const ImportResult& result)
{
    if (file.details.timeframe != vexdesk::secondTimeframe || result.days == 0 ||
        request.ways.mode == ImportMode::Replace || request.settings.needsPoint)
        return {};
    if (!request.settings.makesPoint)
        return Text::tr("Минутные файлы записанных дней могут быть неполными.");
    return Text::tr("Минутные файлы записанных дней могут быть неполными: прежде чем повторять "
                    "импорт, отмените этот (tadata undo).");
}

void addFailure(const FileToImport& file, const ImportCommand& command, FileReport& report)
{
    const QString message = report.result.outcome.message();
    report.errors.append(report.result.outcome.wholeMessage());
    if (const QString note = aboutMinutes(file, command.request, report.result); !note.isNull())
        report.errors.append(note);
    if (Interruption::flag()->load())
        return;
    // Others are not about a line of the file.
    const QStringList badLine = firstBadLine(file, command);
    if (badLine.value(0) == message)
        report.errors.append(badLine.value(1));
}

// What is said of an import that has gone through the whole file.
void addSuccess(const FileToImport& file, const ImportCommand& command, FileReport& report)
{
    const ImportResult& result = report.result;
    if (command.request.ways.passesOverBad())
        report.output = Text::tr("Баров: %1, дней: %2, ошибочных строк: %3")
                            .arg(result.bars)
                            .arg(result.days)
                            .arg(result.badLines) +
                        u'\n';
    report.isDone = result.bars > 0 || result.badLines == 0;
    if (!report.isDone) {
        report.errors.append(
            Text::tr("Ни одного бара не импортировано: все строки файла %1 ошибочны")
                .arg(file.path));
        report.errors += firstBadLine(file, command);
    } else if (result.bars == 0) {
        report.errors.append(
            Text::tr("Ни одного бара не импортировано: в файле %1 их нет").arg(file.path));
    }
}

FileReport importFile(const FileToImport& file, ImportCommand& command,
                      const ProgressSink& progress)
{
    FileReport report;
    if (!file.note.isNull())
        report.errors.append(file.note);
    if (!file.refusal.isNull()) {
        report.errors.append(file.refusal);
        return report;
    }
    report.result = runJob(file, command, progress);
    if (report.result.outcome)
        addSuccess(file, command, report);
    else
        addFailure(file, command, report);
    return report;
}

ExitCode tell(const FileReport& report)
{
    for (const QString& error : report.errors)
        printError(error);
    const ExitCode printed =
        report.output.isEmpty() ? ExitCode::Success : printOutput(report.output);
    return report.isDone ? printed : ExitCode::Failure;
}

// What the shell is told of a command that has failed.
ExitCode failureCode()
{
    return Interruption::exitCode().value_or(ExitCode::Failure);
}

// The point ends, or everything goes back.
ExitCode endStore(ImportStore& store, bool takesBack)
{
    const Outcome ended = store.end(takesBack);
    if (!ended) {
        printError(ended.wholeMessage());
        return fail(takesBack ? Text::tr("Не всё, что импорт изменил, возвращено.")
                              : Text::tr("То, что импорт изменил, осталось в хранилище."));
    }
    if (takesBack)
        printError(Text::tr("Всё, что импорт изменил, возвращено."));
    return ExitCode::Success;
}

ExitCode importOne(FileToImport file, ImportCommand& command)
{
    if (!file.note.isNull())
        printError(std::exchange(file.note, QString()));
    FileReport report;
    {
        ProgressBar bar;
        report = importFile(file, command, [&bar](int percent) { bar.show(percent); });
    }
    command.known.checkDecimals();
    const bool takesBack = !report.isDone && command.request.settings.needsPoint;
    const ExitCode told = tell(report);
    const ExitCode ended = endStore(command.store, takesBack);
    if (!report.isDone)
        return failureCode();
    return told == ExitCode::Success ? ended : told;
}

// The series of a file, for those that have to be known before the first of many is imported. A
// file of which they cannot be told is refused when it is its turn.
QList<SeriesCodes> seriesBeforehand(FileToImport& file, const ImportCommand& command)
{
    if (!file.refusal.isNull())
        return {};
    QStringList tickers{QString()};
    if (FileBars bars(file.path, file.details); !bars.open()) {
        file.refusal = Outcome(cannotOpen(file.path)).wholeMessage();
        return {};
    }
    if (command.request.series.hasTicker()) {
        const Result<QStringList> found =
            tickersOf(file.path, file.details, command.request.ways, Interruption::flag());
        if (!found) {
            file.refusal = found.message();
            return {};
        }
        tickers = *found;
    }
    const Result<QList<SeriesCodes>> series = seriesOf(file, tickers, command.known);
    command.known.checkDecimals();
    if (!series)
        file.refusal = series.message();
    return series.valueOr(QList<SeriesCodes>());
}

struct Totals
{
    qint64 bars = 0;
    qint64 days = 0;
    qint64 badLines = 0;
};

void printSummary(const QList<FileReport>& reports, const TaskRow& row, qint64 milliseconds)
{
    Totals totals;
    for (const FileReport& report : reports) {
        // What a merge has not brought in because it failed is not there.
        totals.bars += report.isDone || report.result.days > 0 ? report.result.bars : 0;
        totals.days += report.result.days;
        totals.badLines += report.result.badLines;
    }
    constexpr double second = 1000;
    printError(Text::tr("Файлов: %1, не удалось: %2, не начато: %3, баров: %4, дней: %5, "
                        "ошибочных строк: %6, секунд: %7")
                   .arg(reports.size())
                   .arg(row.failed())
                   .arg(row.left())
                   .arg(totals.bars)
                   .arg(totals.days)
                   .arg(totals.badLines)
                   .arg(static_cast<double>(milliseconds) / second, 0, 'f', 1));
}

// The files' own part of a command with many.
class ManyImports final
{
public:
    ManyImports(const QList<FileToImport>& files, ImportCommand& command)
        : m_files(files)
        , m_command(command)
        , m_reports(files.size())
        , m_progress(pathsOf(files))
    {}

    TaskRow::Task task(qsizetype place, const QStringList& series)
    {
        return {series, [this, place] { return import(place); }, [this, place] { say(place); }};
    }

    const QList<FileReport>& reports() const { return m_reports; }
    // Whether standard output has taken all.
    bool isTold() const { return m_isTold; }

private:
    static QStringList pathsOf(const QList<FileToImport>& files)
    {
        QStringList paths;
        for (const FileToImport& file : files)
            paths.append(file.path);
        return paths;
    }

    bool import(qsizetype place)
    {
        FileReport report = importFile(m_files[place], m_command, [this, place](int percent) {
            m_progress.show(place, percent);
        });
        m_progress.finish(place);
        const bool isDone = report.isDone;
        const std::lock_guard lock(m_mutex);
        m_reports[place] = std::move(report);
        return isDone;
    }

    void say(qsizetype place)
    {
        m_progress.whileHidden([this, place] {
            const std::lock_guard lock(m_mutex);
            const FileReport& report = m_reports[place];
            if (!report.errors.isEmpty())
                printError(Text::tr("Файл %1:").arg(escaped(m_files[place].path)));
            const bool isTold = tell(report) == ExitCode::Success;
            m_isTold = m_isTold && (isTold || !report.isDone);
        });
    }

    const QList<FileToImport>& m_files;
    ImportCommand& m_command;
    std::mutex m_mutex; ///< of the reports
    QList<FileReport> m_reports;
    FilesProgress m_progress;
    bool m_isTold = true;
};

ExitCode importMany(QList<FileToImport> files, ImportCommand& command)
{
    QElapsedTimer timer;
    timer.start();
    QList<SeriesCodes> all;
    QList<QStringList> names;
    for (FileToImport& file : files) {
        QStringList ofFile;
        for (const SeriesCodes& codes : seriesBeforehand(file, command)) {
            all.append(codes);
            ofFile.append(codes.name());
        }
        names.append(ofFile);
    }
    const Outcome begun = all.isEmpty() ? Outcome() : command.store.begin(all);
    if (!begun)
        return tellOutcomes(begun, command.store.end(false));

    QList<TaskRow::Task> tasks;
    ManyImports imports(files, command);
    for (qsizetype i = 0; i < files.size(); ++i)
        tasks.append(imports.task(i, names[i]));
    const ImportRequest& request = command.request;
    TaskRow row(tasks, request.stopsAtFailure, Interruption::flag());
    row.run(request.jobs);
    const bool isWhole = row.failed() == 0 && row.left() == 0;
    const ExitCode ended = endStore(command.store, !isWhole && request.settings.needsPoint);
    printSummary(imports.reports(), row, timer.elapsed());
    return isWhole && imports.isTold() ? ended : failureCode();
}

// Those that are known without a look into the file.
void setSeriesOfFiles(QList<FileToImport>& files, KnownSeries& known)
{
    for (FileToImport& file : files) {
        const std::optional<SeriesCodes> codes = known.codesOf(file, QString());
        if (!codes || hasUnprintable(codes->name()))
            file.refusal =
                Text::tr("--series: из имени файла «%1» не получается код").arg(escaped(file.path));
        if (!file.refusal.isNull())
            continue;
        if (const Outcome introduced = known.introduce(file, *codes); !introduced)
            known.checkDecimals();
        setSeries(file.details, *codes);
    }
}

} // namespace

ExitCode importFiles(QList<FileToImport> files, const ImportRequest& request)
{
    const Interruption interruption;
    KnownSeries known(request);
    if (!request.series.hasTicker())
        setSeriesOfFiles(files, known);
    ImportStore store(request.store, request.settings, request.ways.mode == ImportMode::Replace);
    ImportCommand command{request, known, store};
    return files.size() == 1 ? importOne(files.first(), command)
                             : importMany(std::move(files), command);
}

} // namespace tadata::cli
