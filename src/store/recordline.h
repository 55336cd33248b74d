#pragma once

#include "store/bardescription.h"

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QStringList>

#include <optional>

/// The lines of day files as their readers take them and as the editor writes them back.
/// Writing a new bar is operator<< of BarDescription. Any thread.
namespace tadata {

/// Reads a line the way the export does: a missing or unreadable field counts as nothing (no time,
/// zero), and surplus fields are ignored. The volume is read as a 32-bit number, which is what the
/// charts take: a larger one is 0. Always valid.
BarDescription barFromRecordLine(const QString& line, const QDate& day);

/// The fields of a record line as text.
struct RecordText
{
    QString time;
    QString open;
    QString high;
    QString low;
    QString close;
    QString volume;
    QString value;
    QString openInterest;
};

/// Splits a line the way the editor does: no value unless it has exactly eight fields.
std::optional<RecordText> splitRecordLine(const QString& line);

/// Writes a day file anew with these rows, as the editor leaves it, and removes the file when it is
/// empty then. False, with the file as it was, when it cannot be opened for writing.
///
/// Rewritten lines carry the value in the sixth field and the volume in the seventh, the reverse of
/// what an import writes. Kept: files that were edited by earlier versions have this order, and a
/// reader can tell by it that a day was edited.
bool rewriteDayFile(QDir& dir, const QString& name, const QList<RecordText>& rows);

} // namespace tadata
