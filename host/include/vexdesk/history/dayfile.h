// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/history/filestate.h>

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// Where bars are stored. Below the store's root, which is the directory "tadata" of the terminal's
/// data directory, each series has a directory "stock/board/security", and in it one text file for
/// each day and timeframe. There is no index and no lock: the file system is the database.
/// Any thread.
namespace vexdesk {

/// The two timeframes that are stored, in seconds.
constexpr int secondTimeframe = 1;
constexpr int minuteTimeframe = 60;

/// The store's root, made when it is missing. Where it cannot be made, because something else has
/// its name or a link of its name leads nowhere, the directory that it should have been: it does
/// not exist, so nothing is found in it, and nothing in any other place is taken for the store.
VEXDESK_HISTORY_EXPORT QDir storeRoot();

/// Where the terminal's store is or would be: nothing is made.
VEXDESK_HISTORY_EXPORT QDir storePlace();

/// The directory of a series below a store's root. Nothing is looked for or made.
VEXDESK_HISTORY_EXPORT QString seriesPath(const QDir& root, const QString& stockCode,
                                          const QString& boardCode, const QString& securityName);

/// The directory of a series in the terminal's store, made when it is missing. Where it cannot be
/// made, the directory that it should have been: opening a file in it then fails by name, and
/// nothing is written to any other place.
VEXDESK_HISTORY_EXPORT QDir makeSeriesDir(const QString& stockCode, const QString& boardCode,
                                          const QString& securityName);

/// The names of the directories in a directory of the store, in no order. Hidden ones are among
/// them only with `also` = QDir::Hidden.
VEXDESK_HISTORY_EXPORT QStringList subdirectories(const QString& path,
                                                  QDir::Filters also = QDir::Filters());

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

/// The name of the day file or derived minute file in a series' directory that is the very file to
/// which the path leads, by whatever other name or link; empty when none is.
VEXDESK_HISTORY_EXPORT QString barFileThatIs(const QString& path, const QDir& seriesDir);

/// The days of an interval, both ends included, for which a directory holds a day file, in
/// ascending order. None when the interval is reversed or an end of it is no date.
VEXDESK_HISTORY_EXPORT QList<QDate> storedDays(const QDir& seriesDir, int timeframe,
                                               const QDate& from, const QDate& to);

} // namespace vexdesk
