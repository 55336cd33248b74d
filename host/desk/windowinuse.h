// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace vexdesk {

/// In front of which a box or a dialog without a parent belongs: the active window, or the
/// terminal's while none is active; null where nothing is seen of it. User-interface thread only.
QWidget* windowInUse();

} // namespace vexdesk
