// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace tadata {

/// What is known when the window of the safe import is asked for. A plain value.
struct SafeImportRequest
{
    QStringList files = {};
    QString series = {}; ///< "VENUE/BOARD/SECURITY"; empty: as the user chose it last
    int timeframe = 0;   ///< in seconds; 0: as it is guessed
    bool isFill = false; ///< only what the store lacks

    bool operator==(const SafeImportRequest&) const = default;

    /// Whether nothing is wanted but the window.
    bool isEmpty() const;
};

} // namespace tadata
