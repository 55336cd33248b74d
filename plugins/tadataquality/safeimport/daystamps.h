// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QString>

namespace tadata {

/// Numbers of series, by their directories: another one as soon as a day file of the series has
/// changed, come or gone, or may be read where it might not be before, or the other way round.
using DayStamps = QHash<QString, size_t>;

/// Of what has the name of a day file in a series now, without a look into it. Any thread.
size_t dayStamp(const QDir& series);

} // namespace tadata
