// SPDX-License-Identifier: MIT
#pragma once

class QLabel;

namespace tadata {

/// Shows the label in red when what it stands for is missing or wrong; returns `isValid`.
/// User-interface thread.
bool markLabel(QLabel* label, bool isValid);

} // namespace tadata
