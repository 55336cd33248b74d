// SPDX-License-Identifier: MIT
#include <vexdesk/history/filekeeper.h>

namespace vexdesk {

FileKeeper::FileKeeper() = default;
FileKeeper::~FileKeeper() = default;

} // namespace vexdesk
