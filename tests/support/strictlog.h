// SPDX-License-Identifier: MIT
#pragma once

namespace testsupport {

/// From here to the end of the running test function, a warning that was not announced with
/// QTest::ignoreMessage fails it. Call it in init(), which runs before every test function.
/// Does nothing before Qt 6.3, which brought the check.
void failOnStrayWarnings();

} // namespace testsupport
