#pragma once

#include "store/bardescription.h"

#include <vexdesk/history/recordline.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QDir>

/// The lines of day files as they are written, and as the editor writes them back; they are read by
/// <vexdesk/history/recordline.h>. Any thread.
namespace tadata {

class TextLines;

/// Appends the line that operator<< of BarDescription writes.
void appendRecordLine(TextLines& lines, const BarDescription& bar);

/// What vexdesk::storedBar() reads, as a bar of this plug-in. Always valid.
BarDescription barFromRecordLine(QByteArrayView line, const QDate& day);

/// Appends a line to the content of a day file that the editor writes anew.
///
/// Rewritten lines carry the value in the sixth field and the volume in the seventh, the reverse of
/// what an import writes. Kept: files that were edited by earlier versions have this order, and a
/// reader can tell by it that a day was edited.
void appendRewritten(QByteArray& content, const vexdesk::RecordFields& fields);

/// Gives a day file that exists another content, and removes the file when that is empty. False,
/// with the file as it was, when it cannot be opened for writing or the disk is full.
bool replaceDayFile(const QDir& dir, const QString& name, const QByteArray& content);

} // namespace tadata
