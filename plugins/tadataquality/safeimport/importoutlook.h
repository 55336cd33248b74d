// SPDX-License-Identifier: MIT
#pragma once

#include "choicescheck.h"

#include <algorithm>
#include <array>

/// What the user is told of an import beforehand, over all files and series. Any thread.
namespace tadata {

constexpr size_t dayOutcomes = static_cast<size_t>(CheckedDay::Outcome::Merged) + 1;

/// A day as the strip shows it: of several files and series the worst.
struct OutlookDay
{
    QDate day;
    CheckedDay::Outcome outcome = CheckedDay::Outcome::New;
    qint64 bars = 0;     ///< of the files
    qint64 stored = 0;   ///< now
    qint64 result = 0;   ///< afterwards
    qint64 replaced = 0; ///< bars that get other values
    qint64 lost = 0;
    bool isShared = false; ///< several files have it of one series
};

/// Neighbouring days that are shown as one, because there is no room for each.
struct OutlookCell
{
    size_t first = 0; ///< in ImportOutlook::days
    size_t last = 0;
    CheckedDay::Outcome outcome = CheckedDay::Outcome::New; ///< the worst
    bool loses = false;                                     ///< bars
};

struct ImportOutlook
{
    bool wouldImport = false;
    QStringList stops;    ///< why it would not, or would end early; whole texts
    QStringList warnings; ///< on what of the files is left out or goes elsewhere; sentences
    QStringList unused;   ///< columns of the files
    qint64 bars = 0;
    qint64 badLines = 0;
    qint64 series = 0; ///< that get bars
    qint64 countedFiles = 0;
    qint64 refusedFiles = 0; ///< of which nothing is counted
    qint64 added = 0;        ///< bars of times that have none
    qint64 replaced = 0;     ///< bars that get other values
    qint64 replacedDays = 0; ///< of series, that have such bars
    qint64 lost = 0;         ///< bars
    /// Bars of files that replace days, and come back to one that they had left.
    qint64 wiped = 0;
    qint64 lostOfFile = 0; ///< times among the lost that only those bars had
    /// Of series, that several files have. What is said of them is true of each file alone.
    qint64 sharedDays = 0;
    std::array<qint64, dayOutcomes> dayCounts = {}; ///< of days of series, by outcome
    std::array<qint64, problemKinds> problems = {}; ///< by kind
    std::vector<OutlookDay> days;                   ///< ascending, each once

    /// Bars of the files that change nothing: the store has them, or their times are taken.
    qint64 idle() const { return std::max<qint64>(0, bars - added - replaced - wiped); }
    qint64 count(CheckedDay::Outcome outcome) const
    {
        return dayCounts[static_cast<size_t>(outcome)];
    }
};

/// Files that would replace the same day of a series do not go together: the last of them would be
/// all that stays of it.
ImportOutlook outlookOf(const std::vector<FileOutlook>& files);
/// Why it would not come to its end, as long as a reader may want it: the first of the stops.
QString whyItStops(const ImportOutlook& outlook);
/// What is to be read before it begins, likewise; empty for nothing.
QString whatToHeed(const ImportOutlook& outlook);

/// At most so many cells, of as equal numbers of days as can be.
std::vector<OutlookCell> cellsOf(const std::vector<OutlookDay>& days, size_t mostCells);

/// In the user's language.
QString titleOf(CheckedDay::Outcome outcome);
/// Sentences on the days, the bars that get lost, and the bad lines; none where nothing was
/// counted.
QStringList sentencesOf(const ImportOutlook& outlook);
/// Of bars that get lost; without a full stop, as all of these.
QString wordsOfLost(qint64 bars);
/// Of bars that a file replaces itself; without a full stop, as all of these.
QString wordsOfWiped(qint64 bars);
/// A day in words: what becomes of it, and its bars.
QString sentenceOf(const OutlookDay& day);

} // namespace tadata
