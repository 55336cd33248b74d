// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/recordline.h>

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QString>

#include <vector>

namespace tadata {

/// The rows of the editor's table: lines of day files, day after day in ascending order and within
/// a day in the file's order. A row of other than eight fields is a blank one. Rows are appended
/// and removed, never changed. One thread at a time.
class DataRows final
{
public:
    void clear();
    /// Rows that are appended from here on are of this day, which is after the ones before. `text`
    /// is the text that DayFileLines::plainText() gave of a day file, or empty.
    void beginDay(const QDate& day, const QByteArray& text = QByteArray());
    /// Takes back the day that was begun last, with its rows; none may have been removed yet.
    void takeBackDay();
    /// Appends the line that begins there in the day's text; it must have eight fields.
    void append(int secondOfDay, qsizetype begin);
    /// Appends a line without its line end; it must have eight fields and no line feed in it.
    void append(int secondOfDay, QByteArrayView line);
    void appendBlank();
    /// Makes room for so many days like those that are there.
    void expectDays(qsizetype count);
    /// Gives back memory that was held for more rows.
    void squeeze();

    qsizetype size() const { return static_cast<qsizetype>(m_rows.size()) - m_gapSize; }
    /// What the rows take, in bytes.
    qsizetype memory() const;

    /// Removes a row. Cheap when each call removes a row above that of the call before.
    void remove(qsizetype row);

    bool isBlank(qsizetype row) const { return at(row).second == blank; }
    /// The bar's date and time in the short notation of the default locale; empty for a blank row.
    QString timeText(qsizetype row) const;
    /// A field as the file has it; empty for a blank row. The time is timeText()'s.
    QString fieldText(qsizetype row, vexdesk::RecordField field) const;
    /// The bar's date and time as "yyyyMMdd hhmmss"; empty for a blank row.
    QString key(qsizetype row) const;

    /// A day's rows as the content of its rewritten day file: without the blank ones, and each time
    /// as the key has it.
    QByteArray rewritten(const QDate& day) const;

private:
    static constexpr qint32 blank = -1;

    struct DataRow
    {
        quint32 day = 0;       ///< index in m_days
        qint32 second = blank; ///< of the day
        qint64 begin = 0;      ///< of the line in the day's text; its line feed ends it
    };
    struct Day
    {
        QDate date;
        QString keyBegin; ///< "yyyyMMdd "
        QByteArray text;
    };

    const DataRow& at(qsizetype row) const { return m_rows[row < m_gap ? row : row + m_gapSize]; }
    const QDate& date(const DataRow& row) const { return m_days[row.day].date; }
    QByteArrayView line(const DataRow& row) const;
    qsizetype firstRowOfDay(quint32 day) const;

    std::vector<Day> m_days;
    // Removed rows leave a gap, which moves to where rows are removed: each row moves once at most
    // while rows are removed from the last to the first.
    std::vector<DataRow> m_rows;
    qsizetype m_gap = 0;
    qsizetype m_gapSize = 0;
};

} // namespace tadata
