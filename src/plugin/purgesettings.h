// SPDX-License-Identifier: MIT
#pragma once

class Settings;

namespace tadata {

/// What the user says on the options page about second history.
struct PurgeSettings
{
    bool deleteSeconds = true;
    int storeForDays = 7;

    /// The settings group that holds them.
    static constexpr char group[] = "TADataManager";

    static PurgeSettings from(const Settings& settings);
    void to(Settings& settings) const;
};

} // namespace tadata
