// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>
#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QDate>
#include <QtCore/QTime>

#include <array>
#include <optional>

/// The lines of day files: as imports and the history editor write them, and as everything that
/// reads them takes them, the charts, the export and the editor. A line that is read is UTF-8 and
/// comes without its line end, as DayFileLines gives it. Nothing here throws; any thread.
namespace vexdesk {

/// One price bar, as a day file holds it. It is stamped with the date and time at which its
/// interval ends. A plain value.
struct StoredBar
{
    QDate date;
    QTime time; ///< not valid where the line has none that can be read
    decimal open;
    decimal high;
    decimal low;
    decimal close;
    qint64 volume = 0; ///< in pieces (lots)
    decimal value;     ///< in money
    qint32 openInterest = 0;
};

/// The room that writeRecordLine() may need, in bytes.
constexpr qsizetype maxRecordLine = 6 + 5 * decimal::maxTextSize + 20 + 11 + 8;

/// Writes a bar as imports write it: time, open, high, low, close, volume, value and open interest,
/// separated by ";" and ended by "\n". The date is the file's and is not written; what is no time
/// is written as nothing. Returns the end of the line.
VEXDESK_HISTORY_EXPORT char* writeRecordLine(char* to, const StoredBar& bar);

/// The time of a second since midnight as imports write it, "hhmmss".
VEXDESK_HISTORY_EXPORT std::array<char, 6> plainTime(int secondOfDay);
/// Seconds since midnight of the time of a record line, as the history editor takes it: what is no
/// time is midnight, as it is to QDateTime.
VEXDESK_HISTORY_EXPORT int secondOfRecordLine(QByteArrayView line);

/// The fields of a record line, in their order.
enum RecordField : int {
    TimeField,
    OpenField,
    HighField,
    LowField,
    CloseField,
    VolumeField, ///< in pieces
    ValueField,  ///< in money
    OpenInterestField,
    RecordFieldCount
};

/// The fields as text; views into the line.
using RecordFields = std::array<QByteArrayView, RecordFieldCount>;

/// The first eight fields of a line; missing ones are empty, and surplus ones are left out.
VEXDESK_HISTORY_EXPORT RecordFields firstRecordFields(QByteArrayView line);

/// Reads a line of the file of a day. A missing or unreadable field counts as nothing (no time,
/// zero). The volume is read as a 32-bit number, which is what the charts take: a larger one is 0.
VEXDESK_HISTORY_EXPORT StoredBar storedBar(const RecordFields& fields, const QDate& day);
VEXDESK_HISTORY_EXPORT StoredBar storedBar(QByteArrayView line, const QDate& day);

/// A stored line that has all that a bar has. Its volume has the 64 bits that are stored.
struct CheckedBar
{
    StoredBar bar;
    bool isEdited = false; ///< whether the editor wrote the line, see appendRewritten()
};

/// Reads a line of the file of a day for those who must not take nothing for a bar: no value where
/// a field is missing, surplus, unreadable or too large. The time has six digits, a number none but
/// those of its form: no blanks, no exponent, no empty field. Pieces have 64 bits and open interest
/// 32; a sixth field with a point is the money of an edited line.
VEXDESK_HISTORY_EXPORT std::optional<CheckedBar> checkedBar(QByteArrayView line, const QDate& day);

/// Appends a line to the content of a day file that the editor writes anew.
///
/// Rewritten lines carry the value in the sixth field and the volume in the seventh, the reverse of
/// what an import writes. Kept: a reader can tell by this order that a day was edited.
VEXDESK_HISTORY_EXPORT void appendRewritten(QByteArray& content, const RecordFields& fields);

/// Splits a line the way the history editor does: no value unless it has exactly eight fields.
VEXDESK_HISTORY_EXPORT std::optional<RecordFields> splitRecordLine(QByteArrayView line);

} // namespace vexdesk
