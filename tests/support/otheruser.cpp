// SPDX-License-Identifier: MIT
#include "support/otheruser.h"

#include <QtCore/QFile>
#include <QtTest/QTest>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace testsupport {

namespace {

constexpr mode_t permissionBits = 07777;

std::vector<gid_t> groups()
{
    std::vector<gid_t> list(static_cast<std::size_t>(::getgroups(0, nullptr)));
    const int count = ::getgroups(static_cast<int>(list.size()), list.data());
    list.resize(static_cast<std::size_t>(count));
    return list;
}

// The saved ids stay the superuser's: they are the way back. The user goes last, since nobody else
// may change groups.
bool becomeNobody()
{
    return ::setgroups(0, nullptr) == 0 && ::setresgid(noGroup, noGroup, 0) == 0 &&
           ::setresuid(nobody, nobody, 0) == 0;
}

bool becomeSuperuser(const std::vector<gid_t>& groups)
{
    return ::setresuid(0, 0, 0) == 0 && ::setresgid(0, 0, 0) == 0 &&
           ::setgroups(groups.size(), groups.data()) == 0;
}

} // namespace

OtherUser::OtherUser()
{
    if (::geteuid() != 0)
        return;
    m_groups = groups();
    m_changed = true;
    QVERIFY2(becomeNobody(), "the superuser cannot become another user");
}

OtherUser::~OtherUser()
{
    if (m_changed && !becomeSuperuser(m_groups))
        qFatal("the superuser did not come back");
}

Permissions::Permissions(const QString& path, mode_t mode)
    : m_path(QFile::encodeName(path))
{
    struct stat status
    {};
    QCOMPARE(::stat(m_path.constData(), &status), 0);
    m_before = status.st_mode & permissionBits;
    QCOMPARE(::chmod(m_path.constData(), mode), 0);
}

Permissions::~Permissions()
{
    ::chmod(m_path.constData(), m_before);
}

} // namespace testsupport
