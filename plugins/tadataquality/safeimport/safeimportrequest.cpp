// SPDX-License-Identifier: MIT
#include "safeimportrequest.h"

namespace tadata {

bool SafeImportRequest::isEmpty() const
{
    return *this == SafeImportRequest();
}

} // namespace tadata
