// SPDX-License-Identifier: MIT
#include "support/strictlog.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

namespace testsupport {

void failOnStrayWarnings()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 3, 0)
    // The offscreen platform says of itself what it cannot do; that is no fault of the program.
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
#endif
}

} // namespace testsupport
