#include "support/strictlog.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

namespace testsupport {

void failOnStrayWarnings()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 3, 0)
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
#endif
}

} // namespace testsupport
