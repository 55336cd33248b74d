#pragma once

#include <sys/types.h>

namespace testsupport {

/// A user who owns nothing on this machine.
constexpr uid_t nobody = 65534;

/// From here to the end of the scope this process, all its threads, counts as another user: what
/// root may do hides what other users may not. Needs root, see isPossible().
class AsUser final
{
public:
    explicit AsUser(uid_t user);
    ~AsUser();

    AsUser(const AsUser&) = delete;
    AsUser& operator=(const AsUser&) = delete;

    static bool isPossible();
};

} // namespace testsupport
