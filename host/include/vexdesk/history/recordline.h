// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>
#include <vexdesk/export.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QDate>
#include <QtCore/QTime>

#include <array>
#include <optional>

/// The lines of day files, as everything that reads them takes them: the charts, the export and the
/// history editor. A line is UTF-8 and comes without its line end, as DayFileLines gives it.
/// Nothing here throws; any thread.
namespace vexdesk {

/// A bar as a day file holds it. It is stamped with the date and time at which its interval ends.
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

/// Seconds since midnight of a time as imports write it, six digits "hhmmss"; -1 for every other
/// text, which QTime::fromString may still read.
VEXDESK_HISTORY_EXPORT int secondOfPlainTime(QByteArrayView text);

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

/// Splits a line the way the history editor does: no value unless it has exactly eight fields.
VEXDESK_HISTORY_EXPORT std::optional<RecordFields> splitRecordLine(QByteArrayView line);

/// Whether splitRecordLine() gives fields; for those who only want to know.
VEXDESK_HISTORY_EXPORT bool isRecordLine(QByteArrayView line);

} // namespace vexdesk
