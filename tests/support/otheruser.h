// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <sys/types.h>

#include <vector>

/// For tests of what may not be read or written: the superuser may do everything.
namespace testsupport {

/// A user, and a group, who own nothing on this machine.
constexpr uid_t nobody = 65534;
constexpr gid_t noGroup = 65534;

/// Where the superuser runs the tests, the process lives as the user "nobody" for as long as the
/// object does, with nobody's group and no other; whoever else runs it stays who he is. What a
/// program that is started meanwhile is allowed follows. Make files that this user is to own, and
/// temporary directories that he is to enter, after it. For tests of one thread.
class OtherUser final
{
public:
    /// Fails the test when the superuser cannot become anybody else.
    OtherUser();
    ~OtherUser();
    Q_DISABLE_COPY_MOVE(OtherUser)

private:
    bool m_changed = false;
    std::vector<gid_t> m_groups;
};

/// Gives a file or directory other permissions for as long as it lives.
class Permissions final
{
public:
    Permissions(const QString& path, mode_t mode);
    ~Permissions();
    Q_DISABLE_COPY_MOVE(Permissions)

private:
    QByteArray m_path;
    mode_t m_before = 0;
};

} // namespace testsupport
