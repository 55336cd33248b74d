// SPDX-License-Identifier: MIT
#include "safeimport.h"

#include "dayofbars.h"
#include "dayvalues.h"
#include "importfailures.h"
#include "importjob.h"
#include "optionwords.h"
#include "undo.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QSysInfo>

#include <algorithm>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::Result;
using vexdesk::StoreJob;
using vexdesk::StoreJobSettings;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

// Whoever looked at the file has seen something else.
Outcome isAsSeen(const LaidOutFile& file)
{
    const auto state = vexdesk::fileState(file.path);
    if (state && file.state && state->isUnchanged(*file.state))
        return {};
    return Failure{Text::tr("Файл %1 изменился с тех пор, как был показан. Посмотрите, что будет "
                            "сделано теперь.")
                       .arg(file.path)};
}

QString waitingFor(const vexdesk::LockHolder& holder, const QString& series)
{
    if (holder.process == 0)
        return Text::tr("Жду, пока другая программа освободит серию %1...").arg(series);
    return Text::tr("Жду, пока %1 (процесс %2, компьютер %3) освободит серию %4...")
        .arg(holder.program, QString::number(holder.process), holder.host, series);
}

// The locks of dead processes keep nobody waiting.
bool isKept(const vexdesk::LockHolder& holder)
{
    const bool isHere = holder.host.isEmpty() || holder.host == QSysInfo::machineHostName();
    return holder.runsHere || !isHere || holder.process == 0;
}

void tellHolder(const QDir& root, const QStringList& names, const WaitSink& waits)
{
    const Result<vexdesk::RestorePlace> place = vexdesk::restorePlace(root);
    if (!waits || !place)
        return;
    for (const QString& name : names) {
        const auto holder = vexdesk::lockHolder(*place, name);
        if (!holder || !isKept(*holder))
            continue;
        waits(waitingFor(*holder, name));
        return;
    }
}

// Tells another keeper, and remembers which days it was told of.
class DaysKeeper final : public vexdesk::FileKeeper
{
public:
    explicit DaysKeeper(vexdesk::FileKeeper* keeper)
        : m_keeper(keeper)
    {}

    void setTimeframe(int timeframe) { m_timeframe = timeframe; }

    Outcome keep(const QStringList& paths) override
    {
        for (const QString& path : paths) {
            // Minutes that are derived beside the seconds are no bars of the file.
            const auto key = vexdesk::parseDayFileName(QFileInfo(path).fileName());
            if (key && key->timeframe == m_timeframe)
                m_days.insert(path, key->day);
        }
        return m_keeper->keep(paths);
    }

    const QMap<QString, QDate>& days() const { return m_days; }

private:
    vexdesk::FileKeeper* m_keeper;
    int m_timeframe = 0;
    QMap<QString, QDate> m_days; ///< by paths
};

// A day that is replaced by itself is written all the same.
bool haveSameBytes(const QString& left, const QString& right)
{
    QFile one(left);
    QFile other(right);
    return one.open(QIODevice::ReadOnly) && other.open(QIODevice::ReadOnly) &&
           one.size() == other.size() && one.readAll() == other.readAll();
}

// What an import has made of a day, of which a copy was kept where it was there before.
Result<DayChange> changeOf(const QString& path, const QString& copy, const QDate& day)
{
    if (vexdesk::isMissing(copy)) {
        StoredDay stored;
        if (const Outcome read = stored.read(path, day, vexdesk::fileState(path)); !read)
            return read.failure();
        return DayChange{.added = static_cast<int>(stored.keyCount())};
    }
    const Result<DayValues> before = DayValues::ofFile(copy, day);
    const Result<DayValues> after = DayValues::ofFile(path, day);
    if (!before || !after)
        return before ? after.failure() : before.failure();
    return before->changeTo(*after);
}

// One import, from the locks to the end of its restore point.
class ImportRun final
{
public:
    ImportRun(const SafeImportOrder& order, const ProgressSink& progress,
              const std::atomic<bool>& stop, const WaitSink& waits)
        : m_order(order)
        , m_progress(progress)
        , m_stop(stop)
        , m_waits(waits)
        , m_job(StoreJobSettings{.by = pointMaker(order.choices.ways.mode),
                                 .source = order.choices.files,
                                 .limits = order.limits,
                                 .wait = order.wait,
                                 .needsPoint = true,
                                 .stop = &stop})
        , m_keeper(m_job.keeper())
    {}

    SafeImportResult run()
    {
        Outcome outcome = begin();
        const bool hasBegun = bool(outcome);
        if (outcome)
            outcome = importFiles();
        // Whoever cancels while the last line is written wants none of it either.
        m_result.isCancelled = m_stop.load();
        if (outcome && m_result.isCancelled)
            outcome = interrupted();
        if (outcome)
            return done();
        return hasBegun ? takenBack(outcome) : failed(outcome);
    }

private:
    Outcome begin()
    {
        QStringList names;
        for (const LaidOutFile& file : m_order.files) {
            const Result<QStringList> series = seriesOfFile(file);
            if (!series)
                return series.failure();
            names += *series;
        }
        tellHolder(m_order.root, names, m_waits);
        if (Outcome begun = m_job.begin(m_order.root, vexdesk::sortedByCodePoint(names)); !begun)
            return begun;
        noteMissingDirectories(names);
        return {};
    }

    // Nobody else writes the series from here on.
    Outcome isStoreAsSeen() const
    {
        for (auto seen = m_order.stamps.cbegin(); seen != m_order.stamps.cend(); ++seen) {
            if (dayStamp(QDir(seen.key())) != seen.value())
                return Failure{
                    Text::tr("Дни в каталоге %1 изменились с тех пор, как было показано, "
                             "что сделает импорт. Посмотрите, что будет сделано "
                             "теперь.")
                        .arg(QDir::toNativeSeparators(seen.key()))};
        }
        return {};
    }

    // Those of the series and above them, the deepest first.
    void noteMissingDirectories(const QStringList& series)
    {
        const QString root = m_order.root.absolutePath();
        for (const QString& name : series) {
            QString path = m_order.root.absoluteFilePath(name);
            while (path.size() > root.size() && !QFileInfo::exists(path) &&
                   !m_missing.contains(path)) {
                m_missing.append(path);
                path = QFileInfo(path).path();
            }
        }
        std::sort(
            m_missing.begin(), m_missing.end(),
            [](const QString& left, const QString& right) { return left.size() > right.size(); });
    }

    // One that somebody else has put something into stays.
    void removeMadeDirectories() const
    {
        for (const QString& path : m_missing)
            QDir().rmdir(path);
    }

    Result<QStringList> seriesOfFile(const LaidOutFile& file) const
    {
        if (const QString why = whyNot(file, m_order.choices); !why.isNull())
            return Failure{why};
        const ImportDetails details = detailsFor(file, m_order.choices);
        QStringList tickers{QString()};
        if (details.columns.contains(static_cast<qint32>(ColumnRole::Ticker))) {
            Result<QStringList> found =
                tickersOf(file.path, details, m_order.choices.ways, &m_stop);
            if (!found)
                return found.failure();
            tickers = *std::move(found);
        }
        QStringList names;
        for (const QString& ticker : std::as_const(tickers)) {
            const auto codes = seriesOf(m_order.choices, file.path, ticker);
            if (!codes)
                return Failure{notAName(ticker)};
            if (!isKnown(*codes))
                return Failure{unknownSeries(*codes)};
            names.append(codes->name());
        }
        return names;
    }

    Outcome importFiles()
    {
        if (Outcome seen = isStoreAsSeen(); !seen)
            return seen;
        SharedProgress shared(m_order.files, m_progress);
        for (const LaidOutFile& file : m_order.files) {
            if (Outcome seen = isAsSeen(file); !seen)
                return seen;
            m_keeper.setTimeframe(file.layout.details.timeframe);
            const ImportResult result = importFile(file, shared.next());
            m_result.bars += result.bars;
            m_unchanged += QSet<QString>(result.unchanged.begin(), result.unchanged.end());
            m_result.badLines += result.badLines;
            if (!result.outcome)
                return result.outcome;
            if (Outcome seen = isAsSeen(file); !seen)
                return seen;
        }
        const bool isNothing = m_result.bars == 0 && m_result.badLines > 0;
        return isNothing ? Failure{Text::tr("Ни одной строки взять нельзя: все ошибочные.")}
                         : countBars();
    }

    // In the store itself: what is told at the end is what was done.
    Outcome countBars()
    {
        const Result<vexdesk::RestorePlace> place = vexdesk::restorePlace(m_order.root);
        if (!place)
            return place.failure();
        const QMap<QString, QDate>& days = m_keeper.days();
        for (auto day = days.cbegin(); day != days.cend(); ++day) {
            if (m_stop)
                return interrupted();
            const QString copy =
                QStringLiteral("%1/%2/%3")
                    .arg(place->path, m_job.pointId(), day.key().section(u'/', -4));
            if (haveSameBytes(day.key(), copy)) {
                m_unchanged.insert(day.key());
                continue;
            }
            m_unchanged.remove(day.key());
            ++m_result.days;
            const Result<DayChange> change = changeOf(day.key(), copy, day.value());
            if (!change)
                return change.failure();
            m_result.added += change->added;
            m_result.replaced += change->replaced;
            m_result.lost += change->lost;
        }
        m_result.sameDays = m_unchanged.size();
        m_result.wiped = m_order.wiped;
        m_result.lost += m_order.lostOfFile;
        return {};
    }

    ImportResult importFile(const LaidOutFile& file, const ProgressSink& progress)
    {
        const ImportSeries series{
            .directories = [&](const QStringList& tickers) { return directories(file, tickers); },
            .describe =
                [&](const QString& ticker, TADataDescription* description) {
                    if (const auto codes = seriesOf(m_order.choices, file.path, ticker))
                        setSeries(*description, *codes);
                }};
        return importByWays(file.path, detailsFor(file, m_order.choices), m_order.choices.ways,
                            series, progress, {.keeper = &m_keeper, .stop = &m_stop});
    }

    Result<QList<QDir>> directories(const LaidOutFile& file, const QStringList& tickers)
    {
        QList<QDir> directories;
        for (const QString& ticker : tickers) {
            const auto codes = seriesOf(m_order.choices, file.path, ticker);
            if (!codes)
                return Failure{notAName(ticker)};
            const QDir dir(
                vexdesk::seriesPath(m_order.root, codes->stock, codes->board, codes->security));
            const bool makes = m_order.choices.ways.mode == ImportMode::Replace;
            if (Outcome made = makes ? makeDirectory(dir) : Outcome(); !made)
                return made.failure();
            directories.append(dir);
        }
        return directories;
    }

    SafeImportResult done()
    {
        m_result.end = SafeImportResult::End::Done;
        const QString point = m_job.pointId();
        const Outcome ended = m_job.end();
        m_result.message = ended.message();
        if (m_order.limits.keep > 0)
            m_result.point = point;
        return m_result;
    }

    SafeImportResult takenBack(const Outcome& why)
    {
        const Outcome back = m_job.takeBack();
        removeMadeDirectories();
        m_result = {.isCancelled = m_result.isCancelled};
        m_result.end = back ? SafeImportResult::End::TakenBack : SafeImportResult::End::Failed;
        QStringList messages{why.wholeMessage(), back.wholeMessage()};
        messages.removeAll(QString());
        m_result.message = messages.join(QStringLiteral("\n\n"));
        return m_result;
    }

    SafeImportResult failed(const Outcome& why)
    {
        // No file was touched.
        m_result.end =
            m_result.isCancelled ? SafeImportResult::End::TakenBack : SafeImportResult::End::Failed;
        m_result.message = why.wholeMessage();
        return m_result;
    }

    const SafeImportOrder& m_order;
    const ProgressSink& m_progress;
    const std::atomic<bool>& m_stop;
    const WaitSink& m_waits;
    StoreJob m_job;
    DaysKeeper m_keeper;
    QSet<QString> m_unchanged; ///< day files
    QStringList m_missing;     ///< directories that were not there before
    SafeImportResult m_result;
};

} // namespace

SafeImportResult runSafeImport(const SafeImportOrder& order, const ProgressSink& progress,
                               const std::atomic<bool>& stop, const WaitSink& waits)
{
    return ImportRun(order, progress, stop, waits).run();
}

Outcome undoSafeImport(const QDir& root, const QString& point, const vexdesk::RestoreLimits& limits,
                       const std::atomic<bool>& stop, const WaitSink& waits)
{
    if (const auto place = vexdesk::restorePlace(root)) {
        if (const auto record = vexdesk::restorePoint(*place, point))
            tellHolder(root, seriesOf(*record), waits);
    }
    const UndoResult undone = undo(root, point, false, {.limits = limits, .stop = &stop});
    if (!undone.work)
        return undone.work;
    if (!undone.forbidding.isEmpty())
        return Failure{Text::tr("Импорт не отменён: эти файлы с тех пор изменились\n%1")
                           .arg(undone.forbidding.join(u'\n'))};
    return undone.end;
}

} // namespace tadata
