// SPDX-License-Identifier: MIT
#pragma once

#include "formatguess.h"
#include "importchoices.h"
#include "importdetails.h"

#include <vexdesk/outcome.h>

/// What the lines of one file look like: what was said of it, and for the rest what is guessed.
namespace tadata {

struct FileLayout
{
    /// Without its series. A column of tickers is among the columns where one was found.
    ImportDetails details;
    QStringList ambiguous; ///< the forms of dates among which the file leaves a choice
    /// What the header calls columns for which nobody has found a role.
    QStringList unused = {};
    /// Sentences on columns whose role is known, and which are left out all the same.
    QStringList warnings = {};
    /// Why nothing was guessed, and what to do; null where a guess was made.
    QString notGuessed = {};

    bool hasTicker() const;
    /// Sentences that tell what is still to be chosen, in the user's language; empty: the file can
    /// be imported.
    QStringList lacks() const;

private:
    QStringList unchosen() const;
};

/// Reads the first and the last lines of the file. Fails, with a whole message, where they cannot
/// be read. Of a file whose encoding no guess reads, UTF-16 for example, all is left to be chosen:
/// it can be imported. Any thread.
vexdesk::Result<FileLayout> layoutOf(const QString& file, const GivenLayout& given);

/// What the user sees of a pattern: its title, or itself.
QString titleOfDateFormat(const QString& pattern);
QString titleOfTimeFormat(const QString& pattern);

} // namespace tadata
