// SPDX-License-Identifier: MIT
#include "importjob.h"

#include "bardescription.h"
#include "minutebuilder.h"
#include "plainlineparser.h"
#include "recordline.h"
#include "textlines.h"

#include <vexdesk/history/dayfile.h>
#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

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

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImporterTAData)
};

QString cannotOpen(const QString& path)
{
    return Text::tr("Невозможно открыть файл %1").arg(path);
}

QString cannotWrite(const QString& path)
{
    return Text::tr("Невозможно записать файл %1").arg(path);
}

QString wouldWipe(const QString& input)
{
    return Text::tr("Файл %1 лежит в хранилище как файл дня этой же серии: импорт стёр бы его. "
                    "Скопируйте его в другое место и импортируйте копию")
        .arg(input);
}

// The file that bars go to at the moment. Its functions return the message of what failed, or null.
//
// Every write hands over whole lines, so that whoever reads the file meanwhile finds no half of
// one.
class BarOutput final
{
public:
    BarOutput() = default;
    ~BarOutput() { close(); }
    Q_DISABLE_COPY_MOVE(BarOutput)

    // What fails shows when the file is closed.
    void write(const BarDescription& bar)
    {
        appendRecordLine(m_lines, bar);
        constexpr qsizetype enough = 16384;
        if (m_lines.text().size() >= enough)
            passOn();
    }

    QString switchTo(const QString& path, const vexdesk::FileState& input)
    {
        if (const QString error = close(); !error.isNull())
            return error;
        if (const auto file = vexdesk::fileState(path); file && file->isSameFile(input))
            return wouldWipe(path);
        m_file.setFileName(path);
        m_isWhole = true;
        // To open a pipe is to wait for somebody who reads it.
        const QFileInfo there(path);
        const bool isFile = there.isFile() || !there.exists();
        const auto mode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;
        return isFile && m_file.open(mode) ? QString() : cannotOpen(path);
    }

    // Bars that did not reach the disk, because it is full, must not count as imported. Some file
    // systems say so only now.
    QString close()
    {
        if (!m_file.isOpen())
            return QString();
        passOn();
        m_file.close();
        return m_isWhole && m_file.error() == QFileDevice::NoError ? QString()
                                                                   : cannotWrite(m_file.fileName());
    }

private:
    void passOn()
    {
        const QByteArray bytes = m_lines.text().toLatin1();
        m_isWhole = m_isWhole && m_file.write(bytes) == bytes.size();
        m_lines.clear();
    }

    QFile m_file;
    TextLines m_lines;
    bool m_isWhole = true; // whether the file has taken all that it was given
};

// The outputs of one import: day files, and minute files beside them for second bars.
class StoreWriter final
{
public:
    StoreWriter(const QDir& dir, int timeframe, const vexdesk::FileState& input)
        : m_dir(dir)
        , m_timeframe(timeframe)
        , m_input(input)
    {}

    bool needsSwitch(const QDate& day) const { return m_day != day; }

    QString switchTo(const QDate& day)
    {
        m_day = day;
        if (const QString error = m_bars.switchTo(dayFilePath(day), m_input); !error.isNull())
            return error;
        if (!derivesMinutes())
            return QString();
        if (const auto minute = m_minuteBuilder.take())
            m_minutes.write(*minute);
        return m_minutes.switchTo(m_dir.filePath(vexdesk::minuteFileName(day)), m_input);
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
    QString finish()
    {
        const QString error = m_bars.close();
        const QString minuteError = m_minutes.close();
        return error.isNull() ? minuteError : error;
    }

private:
    bool derivesMinutes() const { return m_timeframe == vexdesk::secondTimeframe; }
    QString dayFilePath(const QDate& day) const
    {
        return m_dir.filePath(vexdesk::dayFileName(day, m_timeframe));
    }

    QDir m_dir;
    int m_timeframe;
    vexdesk::FileState m_input;
    QDate m_day; // of the open files
    BarOutput m_bars;
    BarOutput m_minutes;
    // The minute that is still open at the end of the input is dropped: more of its seconds may
    // come with the next file, and half a minute must not pass for a whole one.
    MinuteBuilder m_minuteBuilder;
};

// As the text streams of the framework read, so that the progress comes at the same moments.
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
              const ProgressSink& progress)
        : m_lines(lines)
        , m_details(details)
        , m_progress(progress)
        , m_parser(details)
        , m_store(dir, details.timeframe, lines.state())
    {}

    ImportOutcome run()
    {
        QString error = readLines();
        // Bars that came before an error stay stored: that they are not is the worse of two errors.
        if (const QString lost = m_store.finish(); !lost.isNull())
            error = lost;
        if (error.isNull())
            m_progress(100);
        return {error, m_bars};
    }

private:
    QString readLines()
    {
        QByteArrayView line;
        if (m_details.firstLineIsHeader && m_lines.nextBytes(&line))
            ++m_lineNumber;
        while (m_lines.nextBytes(&line)) {
            ++m_lineNumber;
            BarDescription bar;
            if (const QString error = parse(line, &bar); !error.isNull())
                return error;
            if (const QString error = store(bar); !error.isNull())
                return error;
            ++m_bars;
        }
        return m_lines.error().isNull() ? QString()
                                        : Text::tr("Невозможно прочитать файл %1: %2")
                                              .arg(m_lines.path(), m_lines.error());
    }

    QString parse(QByteArrayView line, BarDescription* bar)
    {
        if (m_parser.parse(line, bar))
            return QString();
        *bar = BarDescription();
        return bar->init(vexdesk::textFromUtf8(line), m_details) ? QString()
                                                                 : lineError(bar->error);
    }

    QString store(const BarDescription& bar)
    {
        if (m_store.needsSwitch(bar.date)) {
            m_progress(percentDone(m_lines.position(), m_lines.size()));
            if (const QString error = m_store.switchTo(bar.date); !error.isNull())
                return error;
        }
        try {
            m_store.write(bar);
        } catch (const QString& message) {
            return lineError(message);
        }
        return QString();
    }

    QString lineError(const QString& what) const
    {
        return Text::tr("Ошибка при импорте %1-й строки:\n%2.")
            .arg(QString::number(m_lineNumber), what);
    }

    vexdesk::DayFileLines& m_lines;
    const ImportDetails& m_details;
    const ProgressSink& m_progress;
    PlainLineParser m_parser;
    StoreWriter m_store;
    qint64 m_lineNumber = 0;
    qint64 m_bars = 0;
};

} // namespace

ImportOutcome importBars(const QString& fileName, const ImportDetails& details,
                         const SeriesDir& seriesDir, const ProgressSink& progress)
{
    vexdesk::DayFileLines lines(fileName, vexdesk::DayFileLines::unlimited, blockSize);
    if (!lines.open())
        return {cannotOpen(fileName)};
    const QDir dir = seriesDir();
    if (!vexdesk::barFileThatIs(fileName, dir).isEmpty())
        return {wouldWipe(fileName)};
    return ImportRun(lines, details, dir, progress).run();
}

} // namespace tadata
