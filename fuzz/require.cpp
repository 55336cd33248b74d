// SPDX-License-Identifier: MIT
#include "target.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "Property violated: %s\n", property);
    std::abort();
}

} // namespace fuzz
