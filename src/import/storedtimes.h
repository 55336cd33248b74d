// SPDX-License-Identifier: MIT
#pragma once

#include "timesofday.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QString>

namespace tadata {

/// The times of the bars in a day file; lines that are no bar are passed over. Fails where the file
/// cannot be read. Any thread.
vexdesk::Result<TimesOfDay> storedTimes(const QString& path, const QDate& day);

} // namespace tadata
