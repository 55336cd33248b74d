// SPDX-License-Identifier: MIT
#pragma once

class QComboBox;

namespace tadata {

/// Makes a box as narrow as so many letters, for a window that is to fit a small screen: its list
/// opens as wide as its entries are, whatever they become, and its tool tip is what is chosen, if
/// it has none yet. User-interface thread.
void makeCompact(QComboBox* box, int letters);

} // namespace tadata
