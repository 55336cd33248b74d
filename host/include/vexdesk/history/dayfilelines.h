// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <limits>
#include <memory>
#include <optional>

namespace vexdesk {

/// The lines of a day file, or of another text file, as UTF-8 bytes, one after the other: the very
/// lines that a text stream gives, without their line ends; but a line that ends within a character
/// is never joined with the next one, wherever the blocks end. A byte order mark at the file's
/// start is not part of the first line, any other is text like all else; files in UTF-16 and UTF-32
/// that begin with one are read too.
///
/// Whoever has come to the end asks outcome(): what could not be read to its end was not read. The
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
    ~DayFileLines();
    Q_DISABLE_COPY_MOVE(DayFileLines)

    /// False for a file that is missing or cannot be opened, and for what is no file: a pipe, a
    /// socket or a device is never waited for.
    [[nodiscard]] bool open();
    QString path() const;
    /// What the file was when it was opened.
    const FileState& state() const;
    /// Whether the open file is no longer what it was then: somebody has written into it.
    bool isChanged() const;
    /// Whether somebody has done so between two of the reads: what was read may be the beginning of
    /// one content and the end of another.
    bool isMixed() const;
    /// The size of the file in bytes when it was opened.
    qint64 size() const { return state().size; }
    /// How far the file has been read, in bytes: up to a block further than the line.
    qint64 position() const;

    /// The whole text of a day file of ASCII characters with no carriage return among them, which
    /// is what imports write: its lines are the bytes between line feeds. For those who keep the
    /// text; to be called before next(). No value for every other file, and for one that is empty
    /// or cannot be read: next() then takes what there is.
    std::optional<QByteArray> plainText();

    /// For those who must take nothing for a bar that is none: the file is UTF-8, whatever it
    /// begins with, and the bytes of a character that its end has cut off, which a text stream
    /// passes over, stay in the line. To be called before anything is read.
    void beStrict();

    /// Takes the next line; false at the end, and where reading failed. The line is valid until the
    /// next call.
    bool next(QByteArrayView* line);
    /// The same with its bytes as the file has them, those too that are no UTF-8: for those who
    /// decode the line themselves.
    bool nextBytes(QByteArrayView* line);

    /// Whether nothing has failed so far. The message says why, without the file's name.
    const Outcome& outcome() const;

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
