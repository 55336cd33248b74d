// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QStringConverter>

#include <limits>
#include <optional>

namespace vexdesk {

/// The lines of a day file, or of another text file, as UTF-8 bytes, one after the other: the very
/// lines that a text stream gives, without their line ends. A byte order mark at the file's start
/// is not part of the first line, any other is text like all else; files in UTF-16 and UTF-32 that
/// begin with one are read too.
///
/// Whoever has come to the end asks error(): what could not be read to its end was not read. The
/// part of a line that was there before an error is never given as a line. One thread at a time.
class VEXDESK_HISTORY_EXPORT DayFileLines final
{
public:
    /// A longer line is an error, in bytes.
    static constexpr qsizetype maxLine = qsizetype(256) * 1024 * 1024;
    /// More than a day file may have, in bytes: what has more is none. The day's text may be kept.
    static constexpr qint64 maxDayFile = qint64(1024) * 1024 * 1024;
    static constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

    /// Reads this many bytes at a time. A file of more than `maxSize` bytes is an error.
    explicit DayFileLines(const QString& path, qint64 maxSize = maxDayFile,
                          qsizetype blockSize = qsizetype(256) * 1024);

    /// False for a file that is missing or cannot be opened, and for what is no file: a pipe, a
    /// socket or a device is never waited for.
    bool open();
    QString path() const { return m_file.fileName(); }
    /// What the file was when it was opened.
    const FileState& state() const { return m_state; }
    /// Whether the open file is no longer what it was then: somebody has written into it.
    bool isChanged() const;
    /// Whether somebody has done so between two of the reads: what was read may be the beginning of
    /// one content and the end of another.
    bool isMixed() const { return m_reads > 1 && isChanged(); }
    /// The size of the file in bytes when it was opened.
    qint64 size() const { return m_state.size; }
    /// How far the file has been read, in bytes: up to a block further than the line.
    qint64 position() const { return m_position; }

    /// The whole text of a day file of ASCII characters with no carriage return among them, which
    /// is what imports write: its lines are the bytes between line feeds. For those who keep the
    /// text; to be called before next(). No value for every other file, and for one that is empty
    /// or cannot be read: next() then takes what there is.
    std::optional<QByteArray> plainText();

    /// Takes the next line; false at the end, and where reading failed. The line is valid until the
    /// next call.
    bool next(QByteArrayView* line);
    /// The same with its bytes as the file has them, those too that are no UTF-8: for those who
    /// decode the line themselves.
    bool nextBytes(QByteArrayView* line);

    /// Why the file was not read to its end, in the user's language; null when nothing failed.
    QString error() const { return m_error; }

private:
    bool findLineEnd(const char** end);
    bool readBlock();
    qint64 readBytes(char* to, qint64 count);
    qint64 readWhatIsComing(char* to, qint64 count);
    void append(qsizetype kept);
    void beginText();
    QByteArray inUtf8(QByteArrayView bytes);
    QByteArray restOfUtf8();
    QByteArrayView withoutErrors(QByteArrayView line);

    QFile m_file;
    qint64 m_maxSize;
    qsizetype m_blockSize;
    FileState m_state;
    qint64 m_position = 0;
    qint64 m_reads = 0; ///< that gave something
    QString m_error;
    bool m_isAtEnd = false; ///< of the file

    QByteArray m_buffer; ///< what was read and not yet given, and before it what was given
    qsizetype m_begin = 0;
    qsizetype m_searched = 0; ///< up to here there is no line end after m_begin
    bool m_isAscii = true;    ///< the buffer
    bool m_hasBegun = false;  ///< whether the first bytes, which may be a mark, were looked at
    bool m_hasGiven = false;  ///< a line
    std::optional<QStringDecoder> m_decoder; ///< of a file that is not UTF-8
    QStringEncoder m_encoder;
    QByteArray m_line; ///< the one that was given last, where it is no part of the buffer
};

} // namespace vexdesk
