// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "importways.h"

#include <vexdesk/history/filestate.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QDate>
#include <QtCore/QString>

#include <optional>
#include <vector>

/// What merging makes of a day: its stored lines and the bars that a file has for it. One thread at
/// a time.
namespace tadata {

/// A line of a day in a text of many, without its line end.
struct DayLine
{
    int second = 0; ///< since midnight
    qsizetype begin = 0;
    qsizetype size = 0;
    bool isEdited = false; ///< money before pieces
};

/// A day file as it is stored.
class StoredDay final
{
public:
    /// Reads it; one that is missing is a day without lines. Fails for what cannot be read to its
    /// end. A file that is still in a state in which it had no bad line is read more quickly.
    vexdesk::Outcome read(const QString& path, const QDate& day,
                          const std::optional<vexdesk::FileState>& faultless = {});

    const QString& path() const { return m_path; }
    /// When it was opened; no value for a missing file.
    const std::optional<vexdesk::FileState>& state() const { return m_state; }
    /// The first line that is no bar, from 1; 0 when there is none.
    qint64 firstBadLine() const { return m_firstBadLine; }
    /// Those that are bars, in their order.
    const std::vector<DayLine>& lines() const { return m_lines; }
    QByteArrayView textOf(const DayLine& line) const;
    /// How many times of the day have a bar.
    qint64 keyCount() const;
    /// The largest amount of money of a bar, sign aside and about.
    double largestValue() const;
    /// Whether the file has these very bytes.
    bool holds(const QByteArray& content) const { return m_isAsRead && m_text == content; }

private:
    void readPlain(const QDate& day);
    void add(QByteArrayView line, qsizetype begin, const QDate& day);
    void addFaultless(QByteArrayView line, qsizetype begin);

    QString m_path;
    std::optional<vexdesk::FileState> m_state;
    QByteArray m_text;
    bool m_isFaultless = false; ///< as is known beforehand
    bool m_isAsRead = false;    ///< the text is the very content of the file
    std::vector<DayLine> m_lines;
    qint64 m_lineCount = 0;
    qint64 m_firstBadLine = 0;
};

/// The bars that a file has for a day, in the order of the file.
class FileDay final
{
public:
    void clear();
    void add(const vexdesk::StoredBar& bar);
    /// A line as an import writes it, without its line end.
    void add(int second, QByteArrayView line);

    bool isEmpty() const { return m_lines.empty(); }
    const std::vector<DayLine>& lines() const { return m_lines; }
    /// The lines, each with its line end.
    QByteArrayView text() const { return QByteArrayView(m_room).first(m_size); }
    /// Whether each bar is later than the one before.
    bool isAscending() const { return m_isAscending; }

private:
    char* makeRoom(qsizetype size);
    void addLine(int second, const char* end);

    QByteArray m_room; ///< for the text; grows by more than a line
    qsizetype m_size = 0;
    std::vector<DayLine> m_lines;
    bool m_isAscending = true;
};

/// A day as it becomes.
struct MergedDay
{
    QByteArray content;  ///< where nothing is stored, a view into the text of the file's day
    qint64 keyCount = 0; ///< times that have a bar
    bool isSame = false; ///< the file has these very bytes already
};

/// A file's bar replaces all stored lines of its time, or comes in only where there is none; of the
/// file's of one time the last counts. The lines are ascending by time, stored ones of one time in
/// their order; edited ones are written in the regular order. Bad stored lines are left out.
MergedDay mergedDay(const StoredDay& stored, const FileDay& file, ImportMode mode);

/// An amount of money for a comparison with StoredDay::largestValue().
double sizeOfValue(const decimal& value);

} // namespace tadata
