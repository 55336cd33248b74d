// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/outcome.h>

#include <QtCore/QList>
#include <QtCore/QString>

/// Venues, boards and securities: the table that StockDirectory, BoardDirectory and
/// SecurityDirectory answer from. For programs that embed the terminal's library; a plug-in asks
/// the directories.
///
/// The file form is JSON in UTF-8:
///
///     { "stocks":     [ { "id": 1, "code": "NORD", "name": "Северная площадка" } ],
///       "boards":     [ { "stock": "NORD", "id": 1, "code": "SPOT", "name": "...", "flags": 4 } ],
///       "securities": [ { "stock": "NORD", "board": "SPOT", "id": 101, "code": "ALFA",
///                         "title": "...", "decimals": 2 } ] }
///
/// Ids are positive. Ids and codes are unique within what they belong to, and that is in the file
/// too: the venue of a board, the board of a security.
namespace vexdesk {

struct Stock
{
    int id = 0;
    QString code;
    QString name;
};

struct Board
{
    QString stockCode;
    int id = 0;
    QString code;
    QString name;
    int flags = 0;
};

struct Security
{
    QString stockCode;
    QString boardCode;
    qint64 id = 0;
    QString code;
    QString title;
    int decimals = 0; ///< digits after the point of a price, 0 to 15
};

struct VEXDESK_CORE_EXPORT ReferenceData
{
    static constexpr int maxDecimals = 15;

    QList<Stock> stocks;
    QList<Board> boards;
    QList<Security> securities;

    /// The invented venues and securities that are built into the library, named in the language
    /// of the installed translation; everything else is the same in all languages.
    static ReferenceData demonstration();

    /// Reads a file. The message of a failure says what is wrong and where.
    static Result<ReferenceData> fromFile(const QString& path);

    /// What the terminal uses on this machine: the file "reference.json" in its data directory
    /// (see ICore::getDir; nothing is created), or the demonstration data when there is none.
    static Result<ReferenceData> standard();

    /// What the directories answer from now. The demonstration data until something is installed.
    static ReferenceData installed();

    /// Makes the directories answer from `data`, for all threads at once. May be called again;
    /// readers never wait. The tables of earlier calls stay in memory until the process ends.
    static void install(const ReferenceData& data);

    /// Makes the series known with this number of decimals: changes the security, or adds it and
    /// the board and venue that it needs with free ids.
    void setSeries(const QString& stockCode, const QString& boardCode, const QString& securityCode,
                   int decimals);
};

} // namespace vexdesk
