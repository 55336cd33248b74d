// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

/// The bars that the tour works on: a trading hour, 10:00 to 11:00, on each of three days from
/// 15 January 2024 on. They are made up and the same on every run. Any thread.
namespace vexdesk {

struct Demonstration
{
    QByteArray input;                   ///< the text file that is imported
    QMap<QString, QByteArray> dayFiles; ///< what the store holds then, by the files' names
};

Demonstration makeDemonstration();

/// Where the bars go: the series NORD/MAIN/ALFA of the terminal's store.
QString demonstrationFilePath(const QString& dayFile);

/// Whether the store holds these day files; a failure says what differs.
Outcome areStored(const QMap<QString, QByteArray>& dayFiles);

} // namespace vexdesk
