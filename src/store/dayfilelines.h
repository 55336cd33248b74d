#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QTextStream>

namespace tadata {

/// The lines of a day file as UTF-8 bytes, one after the other: the very lines that a text stream
/// gives, without their line ends. A byte order mark is not part of the first line, and files in
/// UTF-16 that begin with one are read too.
///
/// Lines of ASCII characters, which is all that an import writes, are taken from the file's blocks
/// as they are; from the first other character on a text stream reads the file. One thread at a
/// time; throws nothing.
class DayFileLines final
{
public:
    explicit DayFileLines(const QString& path);

    /// False for a file that is missing or cannot be read, and for what is no file.
    bool open();
    /// The size of the open file in bytes.
    qint64 size() const { return m_file.size(); }
    /// Takes the next line; false at the end. The line is valid until the next call.
    bool next(QByteArrayView* line);

private:
    bool nextOfBlocks(QByteArrayView* line);
    bool nextOfStream(QByteArrayView* line);
    bool readBlock();
    void switchToStream();

    QFile m_file;
    QByteArray m_buffer; ///< what was read and not yet given, and before it what was given
    qsizetype m_begin = 0;
    qsizetype m_searched = 0; ///< up to here there is no line end after m_begin
    qint64 m_given = 0;       ///< lines

    bool m_usesStream = false;
    QTextStream m_stream;
    QByteArray m_line; ///< the one that the stream gave last
};

} // namespace tadata
