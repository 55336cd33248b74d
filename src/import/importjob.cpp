#include "import/importjob.h"

#include "import/minutebuilder.h"
#include "import/plainlineparser.h"
#include "store/bardescription.h"
#include "store/recordline.h"
#include "store/textlines.h"

#include <vexdesk/history/dayfile.h>
#include <vexdesk/history/dayfilelines.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

bool changeOutput(QFile& file, QTextStream& stream, QString fileName)
{
    stream.flush();
    file.close();
    file.setFileName(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    // A stream ties itself to its device anew each time and never lets go, and each tie is called
    // when the file is closed: with a day for each of thousands of files that is most of the work.
    QObject::disconnect(&file, &QIODevice::aboutToClose, nullptr, nullptr);
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

// The file that bars go to at the moment. Its functions return the message of what failed, or null.
class BarOutput final
{
public:
    BarOutput()
    {
        // Asks for a byte-order mark, which attaching a file takes back: stored files have none.
        m_stream.setGenerateByteOrderMark(true);
    }

    QString path() const { return m_file.fileName(); }

    // Many lines at a time: the stream would make room for each.
    void write(const BarDescription& bar)
    {
        appendRecordLine(m_lines, bar);
        constexpr qsizetype enough = 16384;
        if (m_lines.text().size() >= enough)
            passOn();
    }

    QString switchTo(const QString& path)
    {
        if (const QString error = flush(); !error.isNull())
            return error;
        return changeOutput(m_file, m_stream, path) ? QString() : cannotOpen(path);
    }

    // Bars that did not reach the disk, because it is full, must not count as imported.
    QString flush()
    {
        passOn();
        m_stream.flush();
        return m_stream.status() == QTextStream::WriteFailed
                   ? Text::tr("Невозможно записать файл %1").arg(path())
                   : QString();
    }

    // The lines before the one that ended an import stay stored.
    ~BarOutput() { passOn(); }
    Q_DISABLE_COPY_MOVE(BarOutput)

private:
    void passOn()
    {
        if (m_lines.text().isEmpty())
            return;
        m_stream << m_lines.text();
        m_lines.clear();
    }

    QFile m_file; // outlives the stream, which writes its rest when it goes
    QTextStream m_stream;
    TextLines m_lines;
};

// The outputs of one import: day files, and minute files beside them for second bars.
class StoreWriter final
{
public:
    StoreWriter(const QDir& dir, int timeframe)
        : m_dir(dir)
        , m_timeframe(timeframe)
    {}

    bool needsSwitch(const QDate& day) const { return m_day != day; }

    QString switchTo(const QDate& day)
    {
        m_day = day;
        if (const QString error = m_bars.switchTo(dayFilePath(day)); !error.isNull())
            return error;
        if (!derivesMinutes())
            return QString();
        if (const auto minute = m_minuteBuilder.take())
            m_minutes.write(*minute);
        return m_minutes.switchTo(m_dir.filePath(vexdesk::minuteFileName(day)));
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

    QString finish()
    {
        QString error = m_bars.flush();
        return error.isNull() && derivesMinutes() ? m_minutes.flush() : error;
    }

private:
    bool derivesMinutes() const { return m_timeframe == vexdesk::secondTimeframe; }
    QString dayFilePath(const QDate& day) const
    {
        return m_dir.filePath(vexdesk::dayFileName(day, m_timeframe));
    }

    QDir m_dir;
    int m_timeframe;
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

} // namespace

QString importBars(const QString& fileName, const ImportDetails& details,
                   const SeriesDir& seriesDir, const ProgressSink& progress)
{
    vexdesk::DayFileLines lines(fileName, blockSize);
    // What is no file, such as a pipe, has no lines to come back to.
    if (!lines.open())
        return cannotOpen(fileName);
    qint64 lineNumber = 0;
    const auto lineError = [&lineNumber](const QString& what) {
        return Text::tr("Ошибка при импорте %1-й строки:\n%2.")
            .arg(QString::number(lineNumber), what);
    };

    QByteArrayView line;
    QString text;
    if (details.firstLineIsHeader) {
        lines.next(&line, &text);
        ++lineNumber;
    }

    StoreWriter store(seriesDir(), details.timeframe);
    PlainLineParser parser(details);
    const qint64 size = lines.size();
    while (lines.next(&line, &text)) {
        ++lineNumber;

        BarDescription bar;
        if (!lines.isAscii() || !parser.parse(line, &bar)) {
            if (lines.isAscii())
                text = QString::fromLatin1(line);
            bar = BarDescription();
            if (!bar.init(text, details))
                return lineError(bar.error);
        }

        if (store.needsSwitch(bar.date)) {
            progress(percentDone(lines.position(), size));
            if (const QString error = store.switchTo(bar.date); !error.isNull())
                return error;
        }
        try {
            store.write(bar);
        } catch (const QString& message) {
            return lineError(message);
        }
    }
    if (const QString error = store.finish(); !error.isNull())
        return error;
    progress(100);
    return QString();
}

} // namespace tadata
