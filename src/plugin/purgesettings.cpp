// SPDX-License-Identifier: MIT
#include "purgesettings.h"

#include <vexdesk/settings.h>

namespace tadata {

namespace {

const QString deleteSecondsKey = QStringLiteral("deleteSeconds");
const QString storeForDaysKey = QStringLiteral("storeForDays");

} // namespace

PurgeSettings PurgeSettings::from(const Settings& settings)
{
    const PurgeSettings defaults;
    PurgeSettings values;
    values.deleteSeconds = settings.value(deleteSecondsKey, defaults.deleteSeconds).toBool();
    values.storeForDays = settings.value(storeForDaysKey, defaults.storeForDays).toInt();
    return values;
}

void PurgeSettings::to(Settings& settings) const
{
    settings.setValue(deleteSecondsKey, deleteSeconds);
    settings.setValue(storeForDaysKey, storeForDays);
}

} // namespace tadata
