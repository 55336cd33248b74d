#pragma once

#include "store/bardescription.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QDir>

#include <array>
#include <optional>

/// The lines of day files as they are written, as their readers take them and as the editor writes
/// them back. Any thread.
namespace tadata {

class TextLines;

/// Appends the line that operator<< of BarDescription writes.
void appendRecordLine(TextLines& lines, const BarDescription& bar);

/// Reads a line the way the export does: a missing or unreadable field counts as nothing (no time,
/// zero), and surplus fields are ignored. The volume is read as a 32-bit number, which is what the
/// charts take: a larger one is 0. Always valid. The line is UTF-8.
BarDescription barFromRecordLine(QByteArrayView line, const QDate& day);

/// Seconds since midnight of a time as imports write it, six digits "hhmmss"; -1 for every other
/// text, which QTime::fromString may still read.
int secondOfPlainTime(QByteArrayView text);

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

/// Splits a line the way the editor does: no value unless it has exactly eight fields.
std::optional<RecordFields> splitRecordLine(QByteArrayView line);

/// Whether splitRecordLine() gives fields; for those who only want to know.
bool isRecordLine(QByteArrayView line);

/// Appends a line to the content of a day file that the editor writes anew.
///
/// Rewritten lines carry the value in the sixth field and the volume in the seventh, the reverse of
/// what an import writes. Kept: files that were edited by earlier versions have this order, and a
/// reader can tell by it that a day was edited.
void appendRewritten(QByteArray& content, const RecordFields& fields);

/// Gives a day file that exists another content, and removes the file when that is empty. False,
/// with the file as it was, when it cannot be opened for writing or the disk is full.
bool replaceDayFile(const QDir& dir, const QString& name, const QByteArray& content);

} // namespace tadata
