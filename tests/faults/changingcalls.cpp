// SPDX-License-Identifier: MIT
// A library that counts the calls of the system that change something on a disk, and at one of them
// ends the program or lets the call fail. A program under test is started with it in LD_PRELOAD:
//   TADATA_TEST_KILL_AT=N      SIGKILL before the N-th call
//   TADATA_TEST_FAIL_AT=N:E    the N-th call fails, once, with the error number E
//   TADATA_TEST_SIGNAL_AT=N:S  the program gets the signal S before the N-th call
//   TADATA_TEST_CALLS=FILE     how many calls there were, written when the program ends by itself
// Standard output and standard error are no disk.

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int descriptors = 4096;

std::atomic<int> calls = 0;
std::array<std::atomic<bool>, descriptors> isWritten{};

template <typename Function>
Function real(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

struct Orders
{
    Orders()
    {
        if (const char* const kill = ::getenv("TADATA_TEST_KILL_AT"))
            killAt = std::atoi(kill);
        if (const char* const fail = ::getenv("TADATA_TEST_FAIL_AT"))
            std::sscanf(fail, "%d:%d", &failAt, &error);
        if (const char* const signalled = ::getenv("TADATA_TEST_SIGNAL_AT"))
            std::sscanf(signalled, "%d:%d", &signalAt, &signalNumber);
    }
    ~Orders()
    {
        const char* const path = ::getenv("TADATA_TEST_CALLS");
        if (!path)
            return;
        if (std::FILE* const file = std::fopen(path, "w")) {
            std::fprintf(file, "%d", calls.load());
            std::fclose(file);
        }
    }

    int killAt = 0;
    int failAt = 0;
    int error = 0;
    int signalAt = 0;
    int signalNumber = 0;
};

const Orders orders;

// Whether this call is to fail; errno then says why.
bool fails()
{
    const int number = ++calls;
    if (number == orders.killAt)
        ::raise(SIGKILL);
    if (number == orders.signalAt)
        ::raise(orders.signalNumber);
    if (number != orders.failAt)
        return false;
    errno = orders.error;
    return true;
}

bool isDisk(int descriptor)
{
    return descriptor > STDERR_FILENO;
}

bool isForWriting(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0;
}

int opened(int descriptor, int flags)
{
    if (descriptor >= 0 && descriptor < descriptors)
        isWritten[static_cast<size_t>(descriptor)] = (flags & O_ACCMODE) != O_RDONLY;
    return descriptor;
}

} // namespace

#define INTERPOSED extern "C" __attribute__((visibility("default")))

#define INTERPOSED_OPEN(name)                                                                      \
    INTERPOSED int name(const char* path, int flags, ...)                                          \
    {                                                                                              \
        static const auto call = real<int (*)(const char*, int, ...)>(#name);                      \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const mode_t mode = isForWriting(flags) ? va_arg(rest, mode_t) : 0;                        \
        va_end(rest);                                                                              \
        if (isForWriting(flags) && fails())                                                        \
            return -1;                                                                             \
        return opened(call(path, flags, mode), flags);                                             \
    }

INTERPOSED_OPEN(open)
INTERPOSED_OPEN(open64)

// A call that changes something whatever it is given.
#define INTERPOSED_CALL(name, declared, given)                                                     \
    INTERPOSED int name declared noexcept                                                          \
    {                                                                                              \
        static const auto call = real<int(*) declared>(#name);                                     \
        return fails() ? -1 : call given;                                                          \
    }

INTERPOSED_CALL(rename, (const char* from, const char* to), (from, to))
INTERPOSED_CALL(renameat2,
                (int fromDir, const char* from, int toDir, const char* to, unsigned flags),
                (fromDir, from, toDir, to, flags))
INTERPOSED_CALL(unlink, (const char* path), (path))
INTERPOSED_CALL(unlinkat, (int dir, const char* path, int flags), (dir, path, flags))
INTERPOSED_CALL(rmdir, (const char* path), (path))
INTERPOSED_CALL(mkdir, (const char* path, mode_t mode), (path, mode))
INTERPOSED_CALL(link, (const char* from, const char* to), (from, to))
INTERPOSED_CALL(symlink, (const char* from, const char* to), (from, to))
INTERPOSED_CALL(ftruncate, (int descriptor, off_t size), (descriptor, size))
INTERPOSED_CALL(fchmod, (int descriptor, mode_t mode), (descriptor, mode))
INTERPOSED_CALL(fchown, (int descriptor, uid_t user, gid_t group), (descriptor, user, group))
INTERPOSED_CALL(futimens, (int descriptor, const struct timespec* times), (descriptor, times))

INTERPOSED ssize_t write(int descriptor, const void* from, size_t count)
{
    static const auto call = real<ssize_t (*)(int, const void*, size_t)>("write");
    return isDisk(descriptor) && fails() ? -1 : call(descriptor, from, count);
}

// Only what was open for writing has something to say at its end. It is closed all the same.
INTERPOSED int close(int descriptor)
{
    static const auto call = real<int (*)(int)>("close");
    const bool counts = isDisk(descriptor) && descriptor < descriptors &&
                        isWritten[static_cast<size_t>(descriptor)].exchange(false);
    if (!counts || !fails())
        return call(descriptor);
    const int error = errno;
    call(descriptor);
    errno = error;
    return -1;
}
