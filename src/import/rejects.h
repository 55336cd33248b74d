// SPDX-License-Identifier: MIT
#pragma once

#include "importways.h"

#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

namespace tadata {

struct FileLine;

/// The lines of a text file with every byte that it has, their line ends too, in UTF-8, UTF-16 and
/// UTF-32 alike. Lines are counted as vexdesk::DayFileLines counts them. One thread at a time.
class RawLines final
{
public:
    explicit RawLines(const QString& path);

    /// Reads the byte order mark.
    [[nodiscard]] bool open();
    QString path() const { return m_file.fileName(); }
    const QByteArray& mark() const { return m_mark; }
    /// A line by its number, from 1, which is greater than that of the call before.
    vexdesk::Result<QByteArray> line(qint64 number);

private:
    QByteArray nextLine();
    bool endsLine(QByteArray* line);

    QFile m_file;
    QByteArray m_mark;
    qsizetype m_unit = 1; ///< bytes of the smallest character
    bool m_isBigEndian = false;
    qint64 m_number = 0; ///< of the line that was read last
};

/// What becomes of the bad lines of a file: they end the import, or are passed over, and the file
/// for rejects is made with the first of them: a file that can be mended and imported in turn. One
/// thread at a time.
class BadLines final
{
public:
    BadLines(const QString& input, const ImportWays& ways, bool hasHeader);
    ~BadLines();
    Q_DISABLE_COPY_MOVE(BadLines)

    /// Fails for the line that ends the import, and where the rejects cannot be written.
    vexdesk::Outcome take(const FileLine& line);
    /// How many lines were bad; those of nothing but blanks are none when they are passed over.
    qint64 count() const { return m_count; }
    /// Fails where the rejects were not written: the disk may say so only now.
    vexdesk::Outcome finish();

private:
    vexdesk::Outcome reject(qint64 number);
    vexdesk::Outcome begin();
    vexdesk::Outcome copyLine(qint64 number);
    vexdesk::Outcome write(const QByteArray& bytes);
    vexdesk::Outcome writeOut();
    vexdesk::Failure notWritten() const;

    bool m_passesOver;
    bool m_hasHeader;
    qint64 m_count = 0;
    RawLines m_lines;
    QFile m_rejects;
    QByteArray m_unwritten; ///< lines that the rejects have not got yet
};

/// Whether the file for rejects can be made where it is to be. It must not become one of the files
/// that an import writes into one of these directories.
vexdesk::Outcome checkRejectsPlace(const QString& rejects, const QList<QDir>& directories);

} // namespace tadata
