// SPDX-License-Identifier: MIT
#pragma once

#include "safeimport.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QTime>

/// Files for the safe import, and what a user would choose for them.
namespace testsupport {

/// The reference data know the series S/B/X and S/B/Y with two decimals, and no other of S.
inline void knowSeries()
{
    auto data = vexdesk::ReferenceData::demonstration();
    for (const char* code : {"X", "Y"})
        data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QLatin1String(code), 2);
    vexdesk::ReferenceData::install(data);
}

/// Lines that a guess understands: a header, and for each day so many minutes from 10:00 on, of a
/// price. The last column is the ticker where one is given.
inline QByteArray barFile(const QList<QDate>& days, int minutes, int price,
                          const QByteArray& ticker = {})
{
    QByteArray text = ticker.isEmpty()
                          ? "<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>\n"
                          : "<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<TICKER>\n";
    for (const QDate& day : days) {
        for (int minute = 0; minute < minutes; ++minute) {
            const QTime time = QTime(10, 0).addSecs(minute * 60);
            const int open = price + minute % 3;
            text += day.toString(QStringLiteral("yyyyMMdd")).toLatin1() + ',' +
                    time.toString(QStringLiteral("hhmmss")).toLatin1() + ',' +
                    QByteArray::number(open) + ".25," + QByteArray::number(open + 2) + ".50," +
                    QByteArray::number(open - 1) + ".00," + QByteArray::number(open + 1) + ".75," +
                    QByteArray::number(100 + minute);
            text += ticker.isEmpty() ? QByteArray("\n") : ',' + ticker + '\n';
        }
    }
    return text;
}

inline tadata::ImportChoices choicesOf(const QStringList& files, ImportMode mode,
                                       const char* series = "S/B/X")
{
    tadata::ImportChoices choices;
    choices.files = files;
    choices.series = QLatin1String(series);
    choices.ways.mode = mode;
    return choices;
}

inline tadata::SafeImportOrder orderOf(const tadata::ImportChoices& choices, const QDir& root)
{
    const std::atomic<bool> goesOn = false;
    return {.choices = choices,
            .files = tadata::layOutFiles(choices.files, choices.given, goesOn),
            .root = root,
            .limits = {},
            .wait = std::chrono::milliseconds(0)};
}

} // namespace testsupport
