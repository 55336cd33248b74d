// SPDX-License-Identifier: MIT
#pragma once

#include "textformats.h"

class QComboBox;

namespace tadata {

/// The boxes of a page in which the layout of an external text file is chosen.
struct FormatBoxes
{
    QComboBox& separator;
    QComboBox& date;
    QComboBox& time;

    /// Offers what there is, behind what the boxes offer already. User-interface thread.
    void fill(FormatPage page) const;
};

} // namespace tadata
