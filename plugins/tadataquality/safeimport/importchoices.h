// SPDX-License-Identifier: MIT
#pragma once

#include "importways.h"
#include "profiles.h"

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// What the user chooses in the window of the safe import. Plain values; any thread.
namespace tadata {

/// What was said of the layout of the files, by the user or by a profile. The rest is guessed, for
/// each file by itself.
struct GivenLayout
{
    std::optional<QString> separator = {};
    std::optional<QString> dateFormat = {}; ///< as QDate takes it
    std::optional<QString> timeFormat = {}; ///< as QTime takes it
    std::optional<bool> hasHeader = {};
    std::optional<int> timeframe = {}; ///< in seconds
    /// As in ImportDetails; without any column in it nothing is imported.
    std::optional<QMap<qint32, qint32>> columns = {};

    bool operator==(const GivenLayout&) const = default;
};

struct ImportChoices
{
    QStringList files = {};
    /// "VENUE/BOARD/SECURITY", whose last code may be "{ticker}" or "{name}", see SeriesPattern.
    QString series = {};
    GivenLayout given = {};
    ImportWays ways = {.mode = ImportMode::Merge};
};

struct ChoicesOfProfile
{
    ImportChoices choices;
    QStringList passedOver; ///< names of options that are wrong or mean nothing in the terminal
};

/// The choices with what a profile says; what it does not say of the layout is guessed again.
ChoicesOfProfile withProfile(ImportChoices choices, const ProfileOptions& profile);

} // namespace tadata
