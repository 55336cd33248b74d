// SPDX-License-Identifier: MIT
#pragma once

class QComboBox;

namespace tadata {

/// Chooses in a box of codes the entry whose code was typed in full: a box by itself goes on from
/// the entry that is chosen, and so comes to a longer code that begins likewise. User-interface
/// thread.
void preferTypedCode(QComboBox* box);

} // namespace tadata
