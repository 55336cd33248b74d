// SPDX-License-Identifier: MIT
// A whole export: what it writes is what the plain way makes of the lines, with texts of Qt alone
// and the functions for a single bar.
//
// The first two bytes of an input are choices, the rest is the day file of 2024-01-15 up to a zero
// byte, and then that of the day after.

#include "target.h"

#include "bardescription.h"
#include "exportbar.h"
#include "exportjob.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

namespace {

using fuzz::require;

const QDate firstDay(2024, 1, 15);

ExportDetails detailsOf(const std::uint8_t* header)
{
    static constexpr int timeframes[] = {1, 60, 300, 600, 1800, 3600, 86400};
    static const char* const formats[] = {
        "TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT", "DATE,TIME,CLOSE",
        "TIME,DATE,OPEN", "DATE,Q_TY"};
    ExportDetails details;
    details.securityName = QStringLiteral("ALFA");
    details.timeframe = timeframes[header[0] % 7];
    details.separator = header[1] % 2 == 0 ? QStringLiteral(",") : QStringLiteral("; ");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = header[1] % 3 == 0 ? QStringLiteral("hh:mm") : QStringLiteral("hhmmss");
    details.lineFormat = QLatin1String(formats[header[1] / 4 % 4]);
    details.addHeader = header[1] >= 128;
    details.dateFrom = firstDay;
    details.dateTo = firstDay.addDays(1);
    return details;
}

// The text that is exported; none where the sum of the money does not fit.
QString exportPlainly(const QByteArrayList& days, const ExportDetails& details)
{
    QString text;
    QTextStream out(&text);
    if (details.addHeader)
        writeHeader(out, details);
    for (qsizetype i = 0; i < days.size(); ++i) {
        BarDescription open;
        QBuffer buffer;
        buffer.setData(days[i]);
        buffer.open(QIODevice::ReadOnly);
        QTextStream in(&buffer);
        while (!in.atEnd()) {
            const QByteArray line = in.readLine().toUtf8();
            exportBar(tadata::barFromRecordLine(line, firstDay.addDays(i)), open, details, out);
            if (open.valid)
                writeBar(open, out, details);
        }
    }
    out.flush();
    return text;
}

QByteArray exported(const QString& path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the output can be read");
    const QByteArray bytes = file.readAll();
    require(bytes.isEmpty() || bytes.startsWith("\xef\xbb\xbf"), "the output begins with a mark");
    return bytes.mid(3);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t headerSize = 2;
    if (size < headerSize)
        return 0;
    const QByteArray text(reinterpret_cast<const char*>(data + headerSize),
                          static_cast<qsizetype>(size - headerSize));
    const qsizetype end = text.indexOf('\0');
    const QByteArrayList days{text.left(end), end < 0 ? QByteArray() : text.mid(end + 1)};
    const QTemporaryDir place;
    const QDir dir(place.path());
    ExportDetails details = detailsOf(data);
    details.outputPath = dir.filePath(QStringLiteral("out.txt"));
    const int stored = details.timeframe == 1 ? 1 : 60;
    for (qsizetype i = 0; i < days.size(); ++i) {
        QFile file(dir.filePath(vexdesk::dayFileName(firstDay.addDays(i), stored)));
        require(file.open(QIODevice::WriteOnly) && file.write(days[i]) == days[i].size(),
                "a file can be written");
    }

    const auto result = tadata::exportBars(
        details, {firstDay.addDays(9), 0}, [&dir] { return dir; }, [](int) {});
    QString wanted;
    try {
        wanted = exportPlainly(days, details);
    } catch (const QString& message) {
        require(result.outcome.message() == message, "a sum that does not fit ends the export");
        return 0;
    }
    require(static_cast<bool>(result.outcome) && result.unopened.isEmpty(), "all is exported");
    require(exported(details.outputPath) == wanted.toUtf8(), "the plain way writes the same");
    return 0;
}
