// SPDX-License-Identifier: MIT
// A whole import of minute bars: the fast way stores and says what the plain way does, line by line
// with texts of Qt alone and BarDescription::init.
//
// The first two bytes of an input are choices, the rest is the file.

#include "target.h"

#include "bardescription.h"
#include "importjob.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QStringDecoder>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

namespace {

using fuzz::require;

using Tree = QMap<QString, QByteArray>;

ImportDetails detailsOf(const std::uint8_t* header)
{
    static const char* const separators[] = {",", ";", "\t", " "};
    static const char* const dates[] = {"yyyyMMdd", "ddMMyy", "dd.MM.yyyy", "yyyy-MM-dd"};
    static const char* const times[] = {"hhmmss", "hh:mm", "hhmm", "hh:mm:ss"};
    ImportDetails details;
    details.timeframe = 60;
    details.separator = QLatin1String(separators[header[0] % 4]);
    details.dateFormat = QLatin1String(dates[header[0] / 4 % 4]);
    details.timeFormat = QLatin1String(times[header[0] / 16 % 4]);
    details.firstLineIsHeader = header[0] >= 128;
    details.columns = {{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}};
    if (header[1] % 2 == 0)
        details.columns.insert(7, 6);
    if (header[1] % 3 == 0)
        details.columns.insert(8, 7);
    return details;
}

struct Imported
{
    Tree files;
    qint64 wrongLine = 0;
    QString error;
};

// Decoded as a whole: a stream that decodes block after block joins two lines where the end of a
// block cuts a line that ends within a character.
QString textOf(QByteArrayView bytes)
{
    QStringDecoder decode(QStringDecoder::encodingForData(bytes).value_or(QStringDecoder::Utf8));
    return decode(bytes);
}

Imported importPlainly(QByteArrayView bytes, const ImportDetails& details)
{
    QString text = textOf(bytes);
    QTextStream stream(&text);
    Imported imported;
    QDate day;
    // A file that holds a mark and no character has a line: a stream that knows a file, and not yet
    // its text, is not at its end.
    const auto atEnd = [&](qint64 number) {
        return number == 1 ? bytes.isEmpty() : stream.atEnd();
    };
    for (qint64 number = 1; !atEnd(number); ++number) {
        const QString line = stream.readLine();
        if (number == 1 && details.firstLineIsHeader)
            continue;
        BarDescription bar;
        if (!bar.init(line, details)) {
            imported.wrongLine = number;
            imported.error = bar.error;
            break;
        }
        const QString name = vexdesk::dayFileName(bar.date, details.timeframe);
        // A day is replaced each time that the file comes to it.
        if (bar.date != day)
            imported.files.insert(name, QByteArray());
        day = bar.date;
        QString record;
        QTextStream out(&record);
        out << bar;
        out.flush();
        imported.files[name] += record.toUtf8();
    }
    return imported;
}

Tree filesIn(const QDir& dir)
{
    Tree files;
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden)) {
        QFile file(dir.filePath(name));
        require(file.open(QIODevice::ReadOnly), "a file can be read");
        files.insert(name, file.readAll());
    }
    return files;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool installed =
        (vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration()), true);
    Q_UNUSED(installed)
    constexpr std::size_t headerSize = 2;
    if (size < headerSize)
        return 0;
    const ImportDetails details = detailsOf(data);
    const QTemporaryDir place;
    const QDir dir(place.filePath(QStringLiteral("series")));
    require(QDir().mkpath(dir.path()), "a directory can be made");
    const QByteArrayView bytes(data + headerSize, static_cast<qsizetype>(size - headerSize));
    const fuzz::InputFile input(data + headerSize, size - headerSize);

    const Imported wanted = importPlainly(bytes, details);
    const auto result = tadata::importBars(
        input.path(), details, [&dir] { return vexdesk::Result<QDir>(dir); }, [](int) {});
    require(static_cast<bool>(result.outcome) == (wanted.wrongLine == 0),
            "an import ends where the plain way does");
    if (!result.outcome) {
        const QString message = result.outcome.message();
        require(message.contains(QString::number(wanted.wrongLine)) &&
                    message.contains(QString::fromUtf8(fuzz::inUtf8(wanted.error))),
                "the message has the line and what is wrong with it");
    }
    require(filesIn(dir) == wanted.files, "the same files are stored");
    return 0;
}
