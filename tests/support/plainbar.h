// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/recordline.h>

#include <QtCore/QStringList>

namespace testsupport {

/// The line of a day file taken apart field by field, as the format is described: by Qt alone,
/// nothing here is the readers'.
inline vexdesk::StoredBar plainBar(const QString& line, const QDate& day)
{
    const QStringList fields = line.split(u';');
    const auto number = [&fields](int field) {
        try {
            return decimal(fields.value(field));
        } catch (const QString&) {
            return decimal::zero;
        }
    };
    vexdesk::StoredBar bar;
    bar.date = day;
    bar.time = QTime::fromString(fields.value(0), QStringLiteral("hhmmss"));
    bar.open = number(1);
    bar.high = number(2);
    bar.low = number(3);
    bar.close = number(4);
    bar.volume = fields.value(5).toInt();
    bar.value = number(6);
    bar.openInterest = fields.value(7).toInt();
    return bar;
}

} // namespace testsupport
