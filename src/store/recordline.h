// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QDate>

/// The lines of day files as imports write them; they are read by <vexdesk/history/recordline.h>.
/// Any thread.
namespace tadata {

class TextLines;

/// Appends the line that operator<< of BarDescription writes.
void appendRecordLine(TextLines& lines, const BarDescription& bar);

/// What vexdesk::storedBar() reads, as a bar of this plug-in. Always valid.
BarDescription barFromRecordLine(QByteArrayView line, const QDate& day);

} // namespace tadata
