// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QDir>
#include <QtCore/QString>

/// A store with known faults: two series of one board with an hour of minute bars on each workday
/// from 1 January to 29 March 2024.
namespace testsupport {

extern const QString alfa; ///< "NORD/MAIN/ALFA": nothing is wrong with it
extern const QString vega; ///< "NORD/MAIN/VEGA": has all the faults

extern const QDate gapDay;     ///< ten bars of VEGA are missing, from 10:20 to 10:29
extern const QDate missingDay; ///< VEGA has no file
extern const QDate brokenDay;  ///< the second line of VEGA's file is no bar

void makeIllStore(const QDir& root);
/// The path of a day file below the root.
QString dayPath(const QString& series, const QDate& day);
/// Gives the day what the other days have.
void healDay(const QDir& root, const QDate& day);

} // namespace testsupport
