#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QTextStream>

#include <optional>

namespace vexdesk {

/// The whole text of a day file of ASCII characters with no carriage return among them, which is
/// what imports write: its lines are the bytes between line feeds. No value for every other file,
/// and for one that is empty, missing or cannot be read; DayFileLines takes what there is. For
/// those who keep the text. Any thread; throws nothing.
VEXDESK_HISTORY_EXPORT std::optional<QByteArray> plainDayFile(const QString& path);

/// The lines of a day file, or of another text file, as UTF-8 bytes, one after the other: the very
/// lines that a text stream gives, without their line ends. A byte order mark is not part of the
/// first line, and files in UTF-16 that begin with one are read too.
///
/// Lines of ASCII characters, which is all that an import writes, are taken from the file's blocks
/// as they are; from the first other character on a text stream reads the file. One thread at a
/// time; throws nothing.
class VEXDESK_HISTORY_EXPORT DayFileLines final
{
public:
    /// Reads this many bytes at a time.
    explicit DayFileLines(const QString& path, qsizetype blockSize = qsizetype(256) * 1024);

    /// False for a file that is missing or cannot be read, and for what is no file.
    bool open();
    /// The size of the open file in bytes.
    qint64 size() const { return m_file.size(); }
    /// How far the file has been read, in bytes: up to a block further than the line.
    qint64 position() const { return m_file.pos(); }
    /// Whether the line that was given last, and all before it, are ASCII characters of the file.
    bool isAscii() const { return !m_usesStream; }
    /// Takes the next line; false at the end. The line is valid until the next call.
    bool next(QByteArrayView* line);
    /// The same without a copy of lines that are not ASCII: where isAscii() says so it gives the
    /// line in `ascii`, and otherwise in `text`.
    bool next(QByteArrayView* ascii, QString* text);

private:
    bool nextOfBlocks(QByteArrayView* line);
    bool readBlock();
    void switchToStream();

    QFile m_file;
    qsizetype m_blockSize;
    QByteArray m_buffer; ///< what was read and not yet given, and before it what was given
    qsizetype m_begin = 0;
    qsizetype m_searched = 0; ///< up to here there is no line end after m_begin
    qint64 m_given = 0;       ///< lines

    bool m_usesStream = false;
    QTextStream m_stream;
    QByteArray m_line; ///< the one that the stream gave last
};

} // namespace vexdesk
