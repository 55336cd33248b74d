// SPDX-License-Identifier: MIT
#include "support/localzone.h"

#include <ctime>

namespace testsupport {

namespace {

constexpr char variable[] = "TZ";

} // namespace

LocalZone::LocalZone(const QByteArray& name)
    : m_wasSet(qEnvironmentVariableIsSet(variable))
    , m_before(qgetenv(variable))
{
    qputenv(variable, name);
    ::tzset();
}

LocalZone::~LocalZone()
{
    if (m_wasSet)
        qputenv(variable, m_before);
    else
        qunsetenv(variable);
    ::tzset();
}

} // namespace testsupport
