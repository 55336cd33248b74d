// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// What a fuzz target is, for the fuzzer's main() and for the replay's: one call for one input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, with the property's name on standard error, when a property does not hold.
void require(bool holds, const char* property);

} // namespace fuzz
