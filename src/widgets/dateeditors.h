// SPDX-License-Identifier: MIT
#pragma once

class QDateTimeEdit;

namespace tadata {

/// Gives an editor of dates, or of moments, the notation of the terminal's language, and its
/// calendar the first day of the week that the system has. User-interface thread.
void setUpDateEditor(QDateTimeEdit& editor);

} // namespace tadata
