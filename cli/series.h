// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "tadatadescription.h"

#include <QtCore/QDir>

#include <optional>

namespace tadata::cli {

/// The codes of a series. Each is the name of a directory in the store.
struct SeriesCodes
{
    QString stock;
    QString board;
    QString security;
};

/// Takes "STOCK/BOARD/SECURITY" apart. Throws UsageError for anything that would not be three
/// directory names, so that nothing can be written outside the store.
SeriesCodes parseSeries(const QString& text);

/// Refuses codes that no list could show as they are: with control characters, or bytes that are no
/// UTF-8. Throws UsageError.
void refuseUnprintable(const SeriesCodes& codes);

/// A code as a part of one printed line, whatever characters it has: control characters and what is
/// no UTF-8 as "\x0a" and "\u2028". A backslash before an x or a u is doubled.
QString escaped(const QString& code);

/// The value of --store, none for the terminal's own store. Throws UsageError for an empty one.
std::optional<QString> parseStore(const CommandLine& line);

/// The directory of the series in this store or the terminal's own, made when it is missing. One
/// that cannot be made shows when a file in it is opened.
QDir makeSeriesDirIn(const std::optional<QString>& store, const SeriesCodes& codes);

/// Makes the directories answer from the reference data of --reference, or from the terminal's.
/// Null text, or what is wrong with them.
QString installReferenceData(const CommandLine& line);

/// Whether the reference data hold the security.
bool isKnown(const SeriesCodes& codes);

/// Makes the security known with these decimals, see vexdesk::ReferenceData::setSeries.
void makeKnown(const SeriesCodes& codes, int decimals);

/// Fills in the codes and the ids that the reference data have for them.
void setSeries(TADataDescription& description, const SeriesCodes& codes);

} // namespace tadata::cli
