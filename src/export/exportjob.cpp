#include "export/exportjob.h"

#include "export/barexporter.h"
#include "export/dealsexport.h"
#include "export/exportbar.h"
#include "store/recordline.h"

#include <vexdesk/history/dayfile.h>
#include <vexdesk/history/dayfilelines.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <optional>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ExporterTAData)
};

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
        for (QDate day = m_details.dateFrom;
             day <= m_details.dateTo && m_out.status() != QTextStream::WriteFailed;
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

    void writeStored(const QDate& day)
    {
        if (!m_dir)
            m_dir = m_seriesDir();
        const int timeframe = m_details.timeframe < vexdesk::minuteTimeframe
                                  ? vexdesk::secondTimeframe
                                  : vexdesk::minuteTimeframe;
        vexdesk::DayFileLines lines(m_dir->filePath(vexdesk::dayFileName(day, timeframe)));
        if (!lines.open())
            return;
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
    }

    const ExportDetails& m_details;
    QDate m_today;
    const SeriesDir& m_seriesDir;
    const ProgressSink& m_progress;
    int m_shown;
    QTextStream& m_out;
    BarExporter m_exporter;
    std::optional<QDir> m_dir;
};

} // namespace

QString exportBars(const ExportDetails& details, const ExportStart& start,
                   const SeriesDir& seriesDir, const ProgressSink& progress)
{
    QFile file(details.outputPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return Text::tr("Невозможно открыть файл %1").arg(details.outputPath);
    QTextStream out(&file);
    out.setGenerateByteOrderMark(true);
    if (details.addHeader)
        writeHeader(out, details);

    ExportRun run(details, start, seriesDir, progress, out);
    try {
        run.writeDays();
    } catch (const QString& message) {
        // Money that no number of the host can hold.
        return message;
    }
    out.flush();
    if (out.status() == QTextStream::WriteFailed)
        return Text::tr("Невозможно записать файл %1").arg(details.outputPath);
    run.show(100);
    return QString();
}

} // namespace tadata
