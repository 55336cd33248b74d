// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

namespace testsupport {

/// While it lives, temporary files go into another directory. For tests of one thread.
class TemporaryPlace final
{
public:
    explicit TemporaryPlace(const QString& path)
        : m_before(qgetenv(name))
    {
        qputenv(name, QFile::encodeName(path));
    }
    ~TemporaryPlace()
    {
        if (m_before.isNull())
            qunsetenv(name);
        else
            qputenv(name, m_before);
    }
    Q_DISABLE_COPY_MOVE(TemporaryPlace)

private:
    static constexpr const char* name = "TMPDIR";
    QByteArray m_before;
};

} // namespace testsupport
