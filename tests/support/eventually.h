// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QTest>

// What comes of work in another thread. Qt's own QTRY_... give up after five seconds, which is
// short where reading is slow: a sanitizer, a machine that has much else to do.
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, testsupport::patience)
#define EVENTUALLY2(condition, said)                                                               \
    QTRY_VERIFY2_WITH_TIMEOUT(condition, said, testsupport::patience)
#define EVENTUALLY_EQUAL(actual, expected)                                                         \
    QTRY_COMPARE_WITH_TIMEOUT(actual, expected, testsupport::patience)

namespace testsupport {

constexpr int patience = 30'000; // milliseconds; only a test that fails needs all of them

} // namespace testsupport
