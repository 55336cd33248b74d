#include "support/asuser.h"

#include <QtTest/QTest>

#include <unistd.h>

namespace testsupport {

AsUser::AsUser(uid_t user)
{
    // The group first: whoever is no longer root may not change it.
    QCOMPARE(setegid(user), 0);
    QCOMPARE(seteuid(user), 0);
}

AsUser::~AsUser()
{
    [[maybe_unused]] const bool isBack = seteuid(0) == 0 && setegid(0) == 0;
    Q_ASSERT(isBack);
}

bool AsUser::isPossible()
{
    return geteuid() == 0;
}

} // namespace testsupport
