// SPDX-License-Identifier: MIT
#include "importjob.h"

#include "bardescription.h"
#include "minutebuilder.h"
#include "plainlineparser.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/dayfilewriter.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <utility>

bool changeOutput(QFile& file, QTextStream& stream, QString fileName)
{
    stream.flush();
    file.close();
    file.setFileName(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    stream.setDevice(&file);
    return true;
}

namespace tadata {

using vexdesk::DayFileWriter;
using vexdesk::Failure;
using vexdesk::Outcome;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImporterTAData)
};

Failure cannotOpen(const QString& path)
{
    return {Text::tr("Невозможно открыть файл %1").arg(path)};
}

Failure wouldWipe(const QString& input)
{
    return {Text::tr("Файл %1 лежит в хранилище как файл дня этой же серии: импорт стёр бы его. "
                     "Скопируйте его в другое место и импортируйте копию")
                .arg(input)};
}

// The outputs of one import: day files, and minute files beside them for second bars.
class StoreWriter final
{
public:
    StoreWriter(const QDir& dir, int timeframe, const vexdesk::FileState& input,
                vexdesk::FileKeeper* keeper)
        : m_dir(dir)
        , m_timeframe(timeframe)
        , m_input(input)
        , m_keeper(keeper)
    {}

    bool needsSwitch(const QDate& day) const { return m_day != day; }

    Outcome switchTo(const QDate& day)
    {
        m_day = day;
        if (Outcome kept = keep(day); !kept)
            return kept;
        const Outcome switched = switchTo(m_bars, vexdesk::dayFileName(day, m_timeframe));
        if (!switched || !derivesMinutes())
            return switched;
        if (const auto minute = m_minuteBuilder.take())
            m_minutes.write(*minute);
        return switchTo(m_minutes, vexdesk::minuteFileName(day));
    }

    // Throws the host's message when a sum does not fit.
    void write(const BarDescription& bar)
    {
        m_bars.write(bar);
        if (!derivesMinutes())
            return;
        if (const auto minute = m_minuteBuilder.add(bar))
            m_minutes.write(*minute);
    }

    // Ends both files, also where one of them has failed.
    Outcome finish()
    {
        const Outcome bars = close(m_bars);
        const Outcome minutes = close(m_minutes);
        return bars ? minutes : bars;
    }

private:
    bool derivesMinutes() const { return m_timeframe == vexdesk::secondTimeframe; }

    Outcome keep(const QDate& day) const
    {
        if (!m_keeper)
            return Outcome();
        QStringList paths{m_dir.filePath(vexdesk::dayFileName(day, m_timeframe))};
        if (derivesMinutes())
            paths.append(m_dir.filePath(vexdesk::minuteFileName(day)));
        return m_keeper->keep(paths);
    }

    Outcome switchTo(DayFileWriter& output, const QString& name) const
    {
        if (const Outcome closed = close(output); !closed)
            return closed;
        const QString path = m_dir.filePath(name);
        if (const auto file = vexdesk::fileState(path); file && file->isSameFile(m_input))
            return wouldWipe(path);
        return output.open(path) ? Outcome() : cannotOpen(path);
    }

    // Bars that did not reach the disk, because it is full, must not count as imported.
    static Outcome close(DayFileWriter& output)
    {
        return output.close() ? Outcome()
                              : Failure{Text::tr("Невозможно записать файл %1").arg(output.path())};
    }

    QDir m_dir;
    int m_timeframe;
    vexdesk::FileState m_input;
    vexdesk::FileKeeper* m_keeper; ///< or null
    QDate m_day;                   // of the open files
    DayFileWriter m_bars;
    DayFileWriter m_minutes;
    // The minute that is still open at the end of the input is dropped: more of its seconds may
    // come with the next file, and half a minute must not pass for a whole one.
    MinuteBuilder m_minuteBuilder;
};

// As the text streams of Qt read, so that the progress comes at the same moments.
constexpr qsizetype blockSize = 16384;

// The position runs ahead of the line, since the file is read in blocks; and a file may have grown
// or have no size of its own.
int percentDone(qint64 position, qint64 size)
{
    return position < size ? static_cast<int>(double(position) / double(size) * 100.0) : 100;
}

// One import, from its first line to its last.
class ImportRun final
{
public:
    ImportRun(vexdesk::DayFileLines& lines, const ImportDetails& details, const QDir& dir,
              const ProgressSink& progress, const Surroundings& surroundings)
        : m_lines(lines)
        , m_details(details)
        , m_progress(progress)
        , m_stop(surroundings.stop)
        , m_parser(details)
        , m_store(dir, details.timeframe, lines.state(), surroundings.keeper)
    {}

    ImportResult run()
    {
        Outcome outcome = readLines();
        // Bars that came before an error stay stored: that they are not is the worse of two errors.
        if (Outcome finished = m_store.finish(); !finished)
            outcome = std::move(finished);
        if (outcome)
            m_progress(100);
        return {outcome, m_bars};
    }

private:
    Outcome readLines()
    {
        QByteArrayView line;
        if (m_details.firstLineIsHeader && m_lines.nextBytes(&line))
            ++m_lineNumber;
        while (m_lines.nextBytes(&line)) {
            if (m_stop && m_stop->load(std::memory_order_relaxed))
                return Failure{Text::tr("Импорт прерван")};
            ++m_lineNumber;
            BarDescription bar;
            if (Outcome parsed = parse(line, &bar); !parsed)
                return parsed;
            if (Outcome stored = store(bar); !stored)
                return stored;
            ++m_bars;
        }
        const Outcome read = m_lines.outcome();
        return read ? read
                    : Failure{Text::tr("Невозможно прочитать файл %1: %2")
                                  .arg(m_lines.path(), read.message())};
    }

    Outcome parse(QByteArrayView line, BarDescription* bar)
    {
        if (m_parser.parse(line, bar))
            return Outcome();
        *bar = BarDescription();
        return bar->init(vexdesk::textFromUtf8(line), m_details) ? Outcome()
                                                                 : lineError(bar->error);
    }

    Outcome store(const BarDescription& bar)
    {
        if (m_store.needsSwitch(bar.date)) {
            m_progress(percentDone(m_lines.position(), m_lines.size()));
            if (Outcome switched = m_store.switchTo(bar.date); !switched)
                return switched;
        }
        try {
            m_store.write(bar);
        } catch (const QString& message) {
            return lineError(message);
        }
        return Outcome();
    }

    Failure lineError(const QString& what) const
    {
        return {Text::tr("Ошибка при импорте %1-й строки:\n%2.")
                    .arg(QString::number(m_lineNumber), what)};
    }

    vexdesk::DayFileLines& m_lines;
    const ImportDetails& m_details;
    const ProgressSink& m_progress;
    const std::atomic<bool>* m_stop; ///< or null
    PlainLineParser m_parser;
    StoreWriter m_store;
    qint64 m_lineNumber = 0;
    qint64 m_bars = 0;
};

} // namespace

ImportResult importBars(const QString& fileName, const ImportDetails& details,
                        const WritableSeriesDir& seriesDir, const ProgressSink& progress,
                        const Surroundings& surroundings)
{
    vexdesk::DayFileLines lines(fileName, vexdesk::DayFileLines::unlimited, blockSize);
    if (!lines.open())
        return {cannotOpen(fileName)};
    const vexdesk::Result<QDir> dir = seriesDir();
    if (!dir)
        return {dir.failure()};
    if (!vexdesk::barFileThatIs(fileName, *dir).isEmpty())
        return {wouldWipe(fileName)};
    return ImportRun(lines, details, *dir, progress, surroundings).run();
}

} // namespace tadata
