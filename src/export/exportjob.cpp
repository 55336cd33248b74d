// SPDX-License-Identifier: MIT
#include "exportjob.h"

#include "barexporter.h"
#include "dealsexport.h"
#include "exportbar.h"
#include "recordline.h"

#include <vexdesk/history/dayfile.h>
#include <vexdesk/history/dayfilelines.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

#include <filesystem>
#include <optional>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ExporterTAData)
};

// What cannot be looked at may be there.
bool isThere(const QString& path)
{
    std::error_code error;
    return std::filesystem::symlink_status(QFile::encodeName(path).constData(), error).type() !=
           std::filesystem::file_type::not_found;
}

// The days of an interval, in turn.
class ExportRun final
{
public:
    ExportRun(const ExportDetails& details, const ExportStart& start, const SeriesDir& seriesDir,
              const ProgressSink& progress, QTextStream& out)
        : m_details(details)
        , m_today(start.today)
        , m_seriesDir(seriesDir)
        , m_progress(progress)
        , m_shown(start.progress)
        , m_out(out)
        , m_exporter(details, out)
    {}

    // Ends early when the disk is full: the rest could not be written either.
    void writeDays()
    {
        const double days = static_cast<double>(m_details.dateFrom.daysTo(m_details.dateTo) + 1);
        for (QDate day = m_details.dateFrom; goesOn() && day.isValid() && day <= m_details.dateTo;
             day = day.addDays(1)) {
            if (day >= m_today) {
                writeDeals();
                continue;
            }
            writeStored(day);
            // The share of the days that are still to come.
            const auto left = static_cast<double>(day.daysTo(m_details.dateTo));
            show(static_cast<int>(left / days * 100));
        }
    }

    /// What could not be read; null when nothing was.
    QString error() const { return m_error; }
    QStringList unopened() const { return m_unopened; }

    void show(int percent)
    {
        m_shown = percent;
        m_progress(percent);
    }

private:
    void writeDeals()
    {
        exportDeals(m_details, m_today, {m_shown, [this](int percent) { show(percent); }}, m_out);
    }

    bool goesOn() const { return m_error.isNull() && m_out.status() != QTextStream::WriteFailed; }

    void writeStored(const QDate& day)
    {
        if (!m_dir)
            m_dir = m_seriesDir();
        const int timeframe = m_details.timeframe < vexdesk::minuteTimeframe
                                  ? vexdesk::secondTimeframe
                                  : vexdesk::minuteTimeframe;
        const QString path = m_dir->filePath(vexdesk::dayFileName(day, timeframe));
        vexdesk::DayFileLines lines(path);
        if (lines.open())
            writeLines(lines, day);
        else if (isThere(path))
            m_unopened.append(path);
    }

    void writeLines(vexdesk::DayFileLines& lines, const QDate& day)
    {
        BarDescription target;
        QByteArrayView line;
        while (lines.next(&line)) {
            m_exporter.exportBar(barFromRecordLine(line, day), target);
            // After every line, not only when a bar is finished: files that are read while the day
            // goes on hold the bar as far as it has come.
            if (target.valid)
                m_exporter.writeBar(target);
        }
        m_exporter.flush();
        const QString fault =
            lines.isMixed() ? Text::tr("он изменился, пока его читали") : lines.error();
        if (!fault.isNull())
            m_error = Text::tr("Невозможно прочитать файл %1: %2").arg(lines.path(), fault);
    }

    const ExportDetails& m_details;
    QDate m_today;
    const SeriesDir& m_seriesDir;
    const ProgressSink& m_progress;
    int m_shown;
    QTextStream& m_out;
    BarExporter m_exporter;
    std::optional<QDir> m_dir;
    QString m_error;
    QStringList m_unopened;
};

// Whether the file is a day file of any series. Links to directories are followed, as by those who
// read the store.
bool isInStore(const QString& path, const QDir& root)
{
    const auto below = [](const QString& directory) {
        QStringList paths = vexdesk::subdirectories(directory, QDir::Hidden);
        for (QString& name : paths)
            name.prepend(directory + u'/');
        return paths;
    };
    for (const QString& stock : below(root.path())) {
        for (const QString& board : below(stock)) {
            for (const QString& security : below(board)) {
                if (!vexdesk::barFileThatIs(path, QDir(security)).isEmpty())
                    return true;
            }
        }
    }
    return false;
}

} // namespace

QString refusedOutput(const ExportDetails& details, const QDir& root)
{
    if (!QFileInfo(details.outputPath).isFile() || !isInStore(details.outputPath, root))
        return QString();
    return Text::tr("Файл %1 — файл дня в хранилище: выгрузка стёрла бы его бары. Выберите другой "
                    "файл")
        .arg(details.outputPath);
}

ExportOutcome exportBars(const ExportDetails& details, const ExportStart& start,
                         const SeriesDir& seriesDir, const ProgressSink& progress)
{
    QFile file(details.outputPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return {Text::tr("Невозможно открыть файл %1").arg(details.outputPath), {}};
    QTextStream out(&file);
    out.setGenerateByteOrderMark(true);
    if (details.addHeader)
        writeHeader(out, details);

    ExportRun run(details, start, seriesDir, progress, out);
    try {
        run.writeDays();
    } catch (const QString& message) {
        // Money that no number of the host can hold.
        return {message, run.unopened()};
    }
    out.flush();
    // Some file systems say only at the end what they could not keep.
    file.close();
    if (out.status() == QTextStream::WriteFailed || file.error() != QFileDevice::NoError)
        return {Text::tr("Невозможно записать файл %1").arg(details.outputPath), run.unopened()};
    if (!run.error().isNull())
        return {run.error(), run.unopened()};
    run.show(100);
    return {QString(), run.unopened()};
}

} // namespace tadata
