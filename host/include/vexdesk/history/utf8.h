// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

namespace vexdesk {

/// The text of a line, or of a field of it, that is UTF-8. Unlike QString::fromUtf8 it drops no
/// byte order mark: only the mark at a file's start is none of its text, and that is not in the
/// line any more. What is no UTF-8 becomes replacement characters. Any thread.
VEXDESK_HISTORY_EXPORT QString textFromUtf8(QByteArrayView bytes);

/// Whether all bytes are ASCII. Any thread.
VEXDESK_HISTORY_EXPORT bool isAscii(QByteArrayView bytes);

} // namespace vexdesk
