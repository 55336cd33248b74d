// SPDX-License-Identifier: MIT
#pragma once

namespace testsupport {

/// Whether a sanitizer looks at every access to the memory, and all takes far longer.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isInstrumented = true;
#elif defined(__has_feature)
constexpr bool isInstrumented = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool isInstrumented = false;
#endif

} // namespace testsupport
