// SPDX-License-Identifier: MIT
#include "exportjob.h"

#include "barexporter.h"
#include "dealsexport.h"
#include "exportbar.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;

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

// The file that is exported to. It begins with a byte order mark, as soon as there is anything in
// it.
class OutputFile final
{
public:
    explicit OutputFile(const QString& path)
        : m_file(path)
    {}

    Outcome open()
    {
        constexpr auto mode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;
        return m_file.open(mode) ? Outcome() : failed(Text::tr("Невозможно открыть файл %1"));
    }

    void write(QByteArrayView lines)
    {
        if (!std::exchange(m_hasBegun, true))
            writeBytes("\xef\xbb\xbf");
        writeBytes(lines);
    }

    // Whether the file has taken all that it was given.
    bool isWhole() const { return bool(m_written); }

    // Some file systems say only at the end what they could not keep.
    Outcome close()
    {
        m_file.close();
        if (m_written && m_file.error() != QFileDevice::NoError)
            m_written = notWritten();
        return m_written;
    }

private:
    // A disk that becomes full takes a part, and says why it does not take the rest.
    void writeBytes(QByteArrayView bytes)
    {
        while (m_written && !bytes.isEmpty()) {
            const qint64 taken = m_file.write(bytes.data(), bytes.size());
            if (taken > 0)
                bytes = bytes.sliced(taken);
            else
                m_written = notWritten();
        }
    }

    // The text is what the terminal's plug-in shows; the reason is kept beside it.
    Failure failed(const QString& text) const
    {
        return {text.arg(m_file.fileName()), m_file.errorString()};
    }
    Failure notWritten() const { return failed(Text::tr("Невозможно записать файл %1")); }

    QFile m_file;
    bool m_hasBegun = false;
    Outcome m_written;
};

QByteArray heading(const ExportDetails& details)
{
    QString text;
    QTextStream stream(&text);
    writeHeader(stream, details);
    return text.toUtf8();
}

// The days of an interval, in turn.
class ExportRun final
{
public:
    ExportRun(const ExportDetails& details, const ExportStart& start, const SeriesDir& seriesDir,
              const ProgressSink& progress, OutputFile& output)
        : m_details(details)
        , m_today(start.today)
        , m_seriesDir(seriesDir)
        , m_progress(progress)
        , m_shown(start.progress)
        , m_output(output)
        , m_exporter(details, [&output](QByteArrayView lines) { output.write(lines); })
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
        m_exporter.finish();
    }

    /// Whether all was read.
    const Outcome& outcome() const { return m_outcome; }
    QStringList unopened() const { return m_unopened; }
    std::vector<std::pair<QString, vexdesk::FileState>> takeRead() { return std::move(m_read); }

    void show(int percent)
    {
        m_shown = percent;
        m_progress(percent);
    }

private:
    void writeDeals()
    {
        exportDeals(m_details, m_today, {m_shown, [this](int percent) { show(percent); }},
                    m_exporter);
        m_exporter.flush();
    }

    bool goesOn() const { return m_outcome && m_output.isWhole(); }

    void writeStored(const QDate& day)
    {
        if (!m_dir)
            m_dir = m_seriesDir();
        const QString path =
            m_dir->filePath(vexdesk::dayFileName(day, m_details.storedTimeframe()));
        vexdesk::DayFileLines lines(path);
        if (lines.open()) {
            m_read.emplace_back(path, lines.state());
            writeLines(lines, day);
        } else if (isThere(path)) {
            m_unopened.append(path);
        }
    }

    void writeLines(vexdesk::DayFileLines& lines, const QDate& day)
    {
        BarDescription target;
        QByteArrayView line;
        while (lines.next(&line)) {
            m_exporter.exportBar(barFromRecordLine(line, day), target);
            // After every line, not only when a bar is finished: files that are read while the day
            // goes on hold the bar as far as it has come.
            m_exporter.writeBar(target);
        }
        m_exporter.flush();
        const Outcome read =
            lines.isMixed() ? Failure{Text::tr("он изменился, пока его читали")} : lines.outcome();
        if (!read) {
            m_outcome = Failure{
                Text::tr("Невозможно прочитать файл %1: %2").arg(lines.path(), read.message())};
        }
    }

    const ExportDetails& m_details;
    QDate m_today;
    const SeriesDir& m_seriesDir;
    const ProgressSink& m_progress;
    int m_shown;
    OutputFile& m_output;
    BarExporter m_exporter;
    std::optional<QDir> m_dir;
    Outcome m_outcome;
    QStringList m_unopened;
    std::vector<std::pair<QString, vexdesk::FileState>> m_read;
};

// That the file is no day file of any series. Links to directories are followed, as by those who
// read the store.
Outcome isOutsideStore(const QString& path, const QDir& root)
{
    const vexdesk::StoreDirectories store = vexdesk::storeDirectories(root);
    for (const QString& directory : store.series) {
        const auto name = vexdesk::barFileThatIs(path, QDir(directory));
        if (!name && vexdesk::mayBeIn(QDir(directory), path))
            return name.failure();
        if (name && !name->isEmpty())
            return Failure{Text::tr("Файл %1 — файл дня в хранилище: выгрузка стёрла бы его бары. "
                                    "Выберите другой файл")
                               .arg(path)};
    }
    for (const QString& directory : store.unreadable) {
        if (vexdesk::mayBeIn(QDir(directory), path))
            return Failure{Text::tr("Невозможно прочитать каталог %1").arg(directory)};
    }
    return {};
}

} // namespace

QStringList ExportResult::changed() const
{
    QStringList paths;
    for (const auto& [path, asRead] : read) {
        const auto now = vexdesk::fileState(path);
        if (!now || !now->isUnchanged(asRead))
            paths.append(path);
    }
    return paths;
}

Outcome mayWriteOutput(const ExportDetails& details, const QDir& root)
{
    const QFileInfo output(details.outputPath);
    // What cannot be looked at may be a day file, a device is none.
    const bool mayBeFile =
        output.isFile() || (!output.exists() && !vexdesk::isMissing(details.outputPath));
    return mayBeFile ? isOutsideStore(details.outputPath, root) : Outcome();
}

ExportResult exportBars(const ExportDetails& details, const ExportStart& start,
                        const SeriesDir& seriesDir, const ProgressSink& progress)
{
    OutputFile output(details.outputPath);
    if (const Outcome opened = output.open(); !opened)
        return {opened, {}, {}};
    if (details.addHeader)
        output.write(heading(details));

    ExportRun run(details, start, seriesDir, progress, output);
    try {
        run.writeDays();
    } catch (const QString& message) {
        // Money that no number of the host can hold.
        return {Failure{message}, run.unopened(), {}};
    }
    if (const Outcome written = output.close(); !written)
        return {written, run.unopened(), {}};
    if (run.outcome())
        run.show(100);
    return {run.outcome(), run.unopened(), run.takeRead()};
}

} // namespace tadata
