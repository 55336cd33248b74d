// SPDX-License-Identifier: MIT
#pragma once

#include "formatguess.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// A guessed format in words.
namespace tadata::cli {

/// The options of an import that say the same, as a shell takes them:
/// "--separator semicolon --no-header ...". What was not found is left out.
QString guessedOptions(const FormatGuess& guess);
/// The same for every form of dates that the guess leaves open; one where it leaves none.
QStringList guessedAlternatives(const FormatGuess& guess);

/// Sentences on what was not found and what is ambiguous; empty where nothing is amiss.
QStringList guessTroubles(const FormatGuess& guess);

/// What --separator calls a separator.
QString separatorWord(const QString& separator);

/// A word of a command line as a shell takes it, quoted where it must be.
QString shellWord(const QString& word);

} // namespace tadata::cli
