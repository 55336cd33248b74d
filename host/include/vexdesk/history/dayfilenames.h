// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/// The files of a series: one for each day and timeframe. Any thread.
namespace vexdesk {

/// The two timeframes that are stored, in seconds.
constexpr int secondTimeframe = 1;
constexpr int minuteTimeframe = 60;

/// "20181214_60.iss": the bars of one day at one timeframe.
VEXDESK_HISTORY_EXPORT QString dayFileName(const QDate& day, int timeframe);

/// "20181214_60", without an extension: the minute bars that an import of second bars derives.
/// Kept apart from the day file of the same day, so that they never replace real minute bars; the
/// tools that collect them know them by this name.
VEXDESK_HISTORY_EXPORT QString minuteFileName(const QDate& day);

/// What a day file's name says.
struct DayFileKey
{
    QDate day;
    int timeframe = 0;
};

/// No value for any name that dayFileName would not have made.
VEXDESK_HISTORY_EXPORT std::optional<DayFileKey> parseDayFileName(const QString& name);

/// Whether a file of this name in a series' directory holds bars: a day file or a derived minute
/// file.
VEXDESK_HISTORY_EXPORT bool isBarFileName(const QString& name);

/// The wildcard of the names of second files without an extension, which are kept for some days
/// only. No day file has such a name.
VEXDESK_HISTORY_EXPORT QString oldSecondFilePattern();
/// The day that a file's name begins with, up to its first "_"; not valid where that is no date.
VEXDESK_HISTORY_EXPORT QDate dayInName(const QString& name);

/// The name of the day file or derived minute file in a series' directory that is the very file to
/// which the path leads, by whatever other name or link; empty when none is. Fails where the
/// directory cannot be read, or the system cannot tell what one of the files is.
VEXDESK_HISTORY_EXPORT Result<QString> barFileThatIs(const QString& path, const QDir& seriesDir);
/// Whether the file may be in a directory for which barFileThatIs() has failed: under another name,
/// or as a file of its own.
VEXDESK_HISTORY_EXPORT bool mayBeIn(const QDir& directory, const QString& path);

/// The days of an interval, both ends included, for which a directory holds a day file, or a link
/// that leads nowhere, in ascending order. None when the interval is reversed or an end of it is no
/// date. Fails where the directory cannot be read.
VEXDESK_HISTORY_EXPORT Result<QList<QDate>> storedDays(const QDir& seriesDir, int timeframe,
                                                       const QDate& from, const QDate& to);

} // namespace vexdesk
