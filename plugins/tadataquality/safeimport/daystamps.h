// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QString>

namespace tadata {

/// Numbers of series, by their directories: another one as soon as a day file of the series has
/// changed, come or gone.
using DayStamps = QHash<QString, size_t>;

/// Of the day files that a series has now, without a look into them; 0 where they cannot be listed.
/// Any thread.
size_t dayStamp(const QDir& series);

} // namespace tadata
