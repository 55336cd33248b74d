// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>

namespace testsupport {

/// While it lives, the process lives in another time zone, such as "Europe/Berlin". Afterwards it
/// is back in the one before. For tests of one thread.
class LocalZone final
{
public:
    explicit LocalZone(const QByteArray& name);
    ~LocalZone();
    Q_DISABLE_COPY_MOVE(LocalZone)

private:
    bool m_wasSet = false;
    QByteArray m_before;
};

} // namespace testsupport
