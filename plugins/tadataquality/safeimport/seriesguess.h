// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

namespace tadata {

/// The series that the name of a file tells, "VENUE/BOARD/SECURITY": codes that the terminal knows
/// stand in it between other words, as in "NORD_MAIN_ALFA_2024.csv", or that of a security of this
/// "VENUE/BOARD" alone, unless the name has another venue or board, or goes on as the code of a
/// future does. Of codes that are parts of each other the longest counts. Empty where there is
/// none, or more than one. Any thread.
QString seriesOfFileName(const QString& file, const QString& board);

} // namespace tadata
