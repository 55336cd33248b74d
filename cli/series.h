// SPDX-License-Identifier: MIT
#pragma once

#include "commandline.h"

#include "tadatadescription.h"

#include <vexdesk/outcome.h>

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

/// The codes of "VENUE/BOARD/SECURITY"; no value for anything that would not be three directory
/// names.
std::optional<SeriesCodes> seriesFrom(const QString& name);

/// A name such as "NORD/{ticker}/{name}": the place "{name}" stands for the name of a file up to
/// its last dot, "{ticker}" for the code that a line of the file carries.
class SeriesPattern final
{
public:
    explicit SeriesPattern(const QString& text = QString());

    bool hasTicker() const;
    /// The place that something between braces was probably to be; empty where nothing is.
    QString mistypedPlace() const;
    /// No value where a code would be empty, "." or "..", or would not be one code.
    std::optional<SeriesCodes> codesOf(const QString& file,
                                       const QString& ticker = QString()) const;

private:
    QStringList m_codes;
};

/// The value of --series of a command that takes places in it. Throws UsageError.
SeriesPattern parseSeriesPattern(const CommandLine& line);

/// The value of --series. Throws UsageError for anything that would not be three directory names,
/// so that nothing can be written outside the store.
SeriesCodes parseSeries(const CommandLine& line);

/// The value of --store, none for the terminal's own store. Throws UsageError for an empty one.
std::optional<QString> parseStore(const CommandLine& line);

/// The directory of the series in this store or the terminal's own, made when it is missing. One
/// that cannot be made shows when a file in it is opened.
QDir makeSeriesDirIn(const std::optional<QString>& store, const SeriesCodes& codes);

/// Makes the directories answer from the reference data of --reference, or from the terminal's.
vexdesk::Outcome installReferenceData(const CommandLine& line);

/// Whether the reference data hold the security.
bool isKnown(const SeriesCodes& codes);

/// The same, where they do not hold it yet, or always with what was given. Fails where there is
/// neither that nor a guess.
vexdesk::Outcome makeKnown(const SeriesCodes& codes, std::optional<int> given,
                           std::optional<int> guessed);

/// Makes the security known with these decimals, see vexdesk::ReferenceData::setSeries.
void makeKnown(const SeriesCodes& codes, int decimals);

/// Fills in the codes and the ids that the reference data have for them.
void setSeries(TADataDescription& description, const SeriesCodes& codes);

} // namespace tadata::cli
