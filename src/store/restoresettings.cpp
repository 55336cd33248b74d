// SPDX-License-Identifier: MIT
#include "restoresettings.h"

#include <vexdesk/appsettings.h>

#include <algorithm>
#include <limits>

namespace tadata {

namespace {

constexpr qint64 bytesOfMegabyte = qint64(1024) * 1024;
const QString group = QStringLiteral("TADataManager/RestorePoints");
const QString keepKey = QStringLiteral("keep");
const QString megabytesKey = QStringLiteral("megabytes");

qint64 numberAt(const Settings& settings, const QString& key, qint64 usual)
{
    bool isNumber = false;
    const qint64 number = settings.value(key, usual).toLongLong(&isNumber);
    return isNumber && number >= 0 ? number : usual;
}

} // namespace

vexdesk::RestoreLimits restoreLimits()
{
    const AppSettings settings(group);
    const vexdesk::RestoreLimits usual;
    vexdesk::RestoreLimits limits;
    const qint64 keep = numberAt(settings, keepKey, usual.keep);
    limits.keep = static_cast<int>(std::min<qint64>(keep, std::numeric_limits<int>::max()));
    limits.bytes = fromMegabytes(numberAt(settings, megabytesKey, usual.bytes / bytesOfMegabyte));
    return limits;
}

void setRestoreLimits(const vexdesk::RestoreLimits& limits)
{
    AppSettings settings(group);
    settings.setValue(keepKey, limits.keep);
    settings.setValue(megabytesKey, toMegabytes(limits.bytes));
}

qint64 fromMegabytes(qint64 megabytes)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max() / bytesOfMegabyte;
    return std::min(megabytes, most) * bytesOfMegabyte;
}

qint64 toMegabytes(qint64 bytes)
{
    return bytes / bytesOfMegabyte;
}

} // namespace tadata
