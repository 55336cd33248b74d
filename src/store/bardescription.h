// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/recordline.h>

#include <QtCore/QString>

class QTextStream;
struct ImportDetails;

/// One price bar, as the store has it: a plain value; every field may be used from any thread that
/// owns the object.
struct BarDescription : vexdesk::StoredBar
{
    bool valid = false; ///< whether the bar holds data
    QString error;      ///< why init() refused the line; in the user's language
    /// Whether a price or the money of the line had more digits after the point than the security,
    /// zeros at the end aside.
    bool isRounded = false;

    /// Reads one line of an external text file into this bar, which must be a fresh one. False
    /// when the line is wrong: `error` then says what is wrong with it, and fields that were read
    /// before keep what was read. Throws nothing; any thread. Defined with the import.
    bool init(const QString& line, const ImportDetails& details);
};

/// Writes one record line of a day file: time, open, high, low, close, volume, value and open
/// interest, separated by ";" and ended by "\n". The date is the file's and is not written.
QTextStream& operator<<(QTextStream& stream, const BarDescription& bar);

namespace tadata {

/// A line of a day file as vexdesk::storedBar() reads it. Always valid. Any thread.
BarDescription barFromRecordLine(QByteArrayView line, const QDate& day);

} // namespace tadata
