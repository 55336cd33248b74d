// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/table.h>

#include <memory>

namespace vexdesk {

class ReferenceTable;

/// The securities of the reference data as the table that SecurityDirectory::table() describes;
/// null when there are none.
std::unique_ptr<Table> makeSecurityRegister(const ReferenceTable& reference);

} // namespace vexdesk
