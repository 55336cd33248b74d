// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QString>

/// What follows the message of a wrong line: the line itself, and what would be right there.
namespace tadata::cli {

/// Lines of text without a line end: a line of a file, cut to so many characters, with a mark under
/// its wrong field; then which role that is, what was asked for there, and what would fit. The
/// number is that of the line, from 1.
QString quotedLine(const QString& line, qint64 number, const ImportDetails& details, int width);

} // namespace tadata::cli
