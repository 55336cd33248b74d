// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>

#include <optional>

/// Dates as people type them. Any thread.
namespace vexdesk {

/// Among which days one is typed, and the one that it is about where parts are left out.
struct OfferedDays
{
    QDate first;
    QDate last;
    QDate usual;

    bool has(const QDate& day) const { return first <= day && day <= last; }
};

/// The day that is meant by a text of numbers, in the order of the format, which has one run each
/// of d, M and y: "29.02.2024", "29/2/24", "290224", "29022024"; "2024-02-29" in every order. What
/// is left out is that of `usual`: "29.02" and "2902" have its year and "29" its month too;
/// "02.2024" is the first day of the month. Where there is no such day between `first` and `last`,
/// it is that of the nearest year or month in which there is one, such as 29 February; where none
/// of them has it, the nearest one at all. No value for what is no day.
std::optional<QDate> dayOfText(const QString& text, const QString& format,
                               const OfferedDays& offered);

} // namespace vexdesk
