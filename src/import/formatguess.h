// SPDX-License-Identifier: MIT
#pragma once

#include "filesample.h"
#include "importdetails.h"

#include <vexdesk/outcome.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace tadata {

/// What is known of a file before its format is guessed: only what fits it is looked for.
struct GuessHints
{
    std::optional<QString> separator = {};
    /// Patterns as QDate and QTime take them, also such that no guess would try.
    std::optional<QString> dateFormat = {};
    std::optional<QString> timeFormat = {};
    std::optional<bool> hasHeader = {};
    std::optional<int> timeframe = {};
};

/// The format of a text file of bars, as far as its lines tell it. A plain value; any thread.
struct FormatGuess
{
    qsizetype lines = 0; ///< that were looked at, the header included
    std::optional<QString> separator = {};
    bool hasHeader = false;
    std::optional<QString> dateFormat = {};
    std::optional<QString> timeFormat = {};
    int timeframe = 60; ///< in seconds
    /// As in ImportDetails: from a ColumnRole's number to the column; only what was found.
    QMap<qint32, qint32> columns = {};
    /// The most digits after the point of a price; none without prices.
    std::optional<int> decimals = {};
    /// The forms of dates between which the lines do not decide; `dateFormat` is then none.
    QStringList ambiguous = {};
    /// Of "date", "oi", "prices", "separator", "time" and "volume", sorted. The volume and the open
    /// interest only where the file names a column for them that holds something else.
    QStringList missing = {};
    /// What the header calls the columns that are none of `columns`, from left to right, as they
    /// stand there; those without a name left out.
    QStringList unused = {};

    /// Whether the file can be imported by it: nothing is ambiguous, and nothing but "oi" and
    /// "volume" is missing.
    bool isEnough() const;
};

/// Guesses the format of a file from its first and its last lines. Fails, with a whole message,
/// where they cannot be read, see sampleFile(). However large the file is, this takes a few
/// milliseconds.
vexdesk::Result<FormatGuess> guessFormat(const QString& path, const GuessHints& hints = {});
FormatGuess guessFormat(const FileSample& sample, const GuessHints& hints = {});

} // namespace tadata
