// SPDX-License-Identifier: MIT
// A library that counts the calls of the system on the files below one directory, and lets
// something happen at one of them. A program under test is started with it in LD_PRELOAD:
//   TADATA_TEST_BELOW=DIRECTORY  by its canonical path; calls on other files do not count
//   TADATA_TEST_COUNTED=changing only the calls that change something on a disk count
//   TADATA_TEST_CALLS=FILE       the calls that there were, a line each: "NAME PATH", of renames
//                                and links "NAME PATH FROM"; "!" stands before the name where
//                                something happened. Written when the program ends by itself
//   TADATA_TEST_ORDER=N DEED E   what happens at the N-th call (see Deed), with this number
// What is done by a file's descriptor counts where the file was opened below the directory.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>

namespace {

enum class Deed {
    Nothing,
    Fail,      // the call fails with the error number E
    FailOn,    // this call and all that follow
    Half,      // a write takes half of its bytes, and all writes that follow fail with E
    Short,     // a write takes half of its bytes
    Kill,      // SIGKILL before the call
    KillAfter, // SIGKILL after it
    KillHalf,  // a write takes half of its bytes, then SIGKILL
    Signal,    // the signal E before the call
};

enum class Kind { Looks, Changes, Writes };

struct Order
{
    Order()
    {
        constexpr std::array names{"",     "fail",      "failon",   "half",  "short",
                                   "kill", "killafter", "killhalf", "signal"};
        std::array<char, 16> name{};
        const char* const text = ::getenv("TADATA_TEST_ORDER");
        if (!text || std::sscanf(text, "%d %15s %d", &at, name.data(), &number) != 3)
            return;
        for (size_t i = 1; i < names.size(); ++i) {
            if (std::string_view(names[i]) == name.data())
                deed = static_cast<Deed>(i);
        }
    }

    int at = 0;
    int number = 0;
    Deed deed = Deed::Nothing;
};

// What is to become of a call.
enum class Fate { Passes, Fails, IsHalf, EndsAll, IsHalfAndEndsAll };

constexpr int descriptors = 4096;

class Calls final
{
public:
    Calls()
    {
        const char* const below = ::getenv("TADATA_TEST_BELOW");
        const char* const counted = ::getenv("TADATA_TEST_COUNTED");
        m_below = below ? std::string(below) + '/' : std::string();
        m_onlyChanging = counted && std::string_view(counted) == "changing";
    }
    ~Calls()
    {
        const char* const path = ::getenv("TADATA_TEST_CALLS");
        if (!path)
            return;
        if (std::FILE* const file = std::fopen(path, "w")) {
            std::fwrite(m_made.data(), 1, m_made.size(), file);
            std::fclose(file);
        }
    }

    bool isBelow(const char* path) const
    {
        return path && !m_below.empty() &&
               std::string_view(path).substr(0, m_below.size()) == m_below;
    }

    // With the line that tells of it.
    Fate next(const std::string& line, Kind kind)
    {
        const std::lock_guard lock(m_mutex);
        if (m_onlyChanging && kind == Kind::Looks)
            return Fate::Passes;
        ++m_count;
        const bool isSignal = m_count == m_order.at && m_order.deed == Deed::Signal;
        const bool isBefore = m_count < m_order.at || m_order.at == 0;
        const Fate fate = isBefore ? Fate::Passes : fateFrom(kind);
        m_made += (isSignal || fate != Fate::Passes ? "!" : "") + line + '\n';
        if (isSignal)
            ::raise(m_order.number);
        if (fate == Fate::Fails)
            errno = m_order.number;
        return fate;
    }

private:
    // From the call of the order on.
    Fate fateFrom(Kind kind) const
    {
        const bool isIt = m_count == m_order.at;
        const bool isWrite = kind == Kind::Writes;
        switch (m_order.deed) {
        case Deed::Fail:
            return isIt ? Fate::Fails : Fate::Passes;
        case Deed::FailOn:
            return Fate::Fails;
        case Deed::Half:
            return isWrite ? (isIt ? Fate::IsHalf : Fate::Fails) : Fate::Passes;
        case Deed::Short:
            return isIt && isWrite ? Fate::IsHalf : Fate::Passes;
        case Deed::Kill:
            if (isIt)
                ::raise(SIGKILL);
            return Fate::Passes;
        case Deed::KillAfter:
            return isIt ? Fate::EndsAll : Fate::Passes;
        case Deed::KillHalf:
            return isIt && isWrite ? Fate::IsHalfAndEndsAll : Fate::Passes;
        default:
            return Fate::Passes;
        }
    }

    Order m_order;
    std::string m_below;
    bool m_onlyChanging = false;
    std::mutex m_mutex;
    std::string m_made;
    int m_count = 0;
};

// Libraries call the system before this one is set up.
Calls& calls()
{
    static Calls calls;
    return calls;
}

// What is known of a descriptor.
enum : unsigned char { Unknown = 0, Below = 1, Written = 2 };
std::array<std::atomic<unsigned char>, descriptors> known{};

bool isKnown(int descriptor, unsigned char what)
{
    return descriptor >= 0 && descriptor < descriptors &&
           (known[static_cast<size_t>(descriptor)] & what) != 0;
}

void setKnown(int descriptor, unsigned char what)
{
    if (descriptor >= 0 && descriptor < descriptors)
        known[static_cast<size_t>(descriptor)] = what;
}

template <typename Function>
Function real(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

std::string pathOf(int descriptor)
{
    static const auto readLink = real<ssize_t (*)(const char*, char*, size_t)>("readlink");
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t size = readLink(link.c_str(), path.data(), path.size());
    return size > 0 ? std::string(path.data(), static_cast<size_t>(size)) : std::string();
}

std::string lineOf(const char* name, const std::string& path)
{
    return std::string(name) + ' ' + path;
}

Fate fateOf(const char* name, Kind kind, const char* path)
{
    return calls().isBelow(path) ? calls().next(lineOf(name, path), kind) : Fate::Passes;
}

// Of a call that gives something another name.
Fate fateOfMove(const char* name, const char* from, const char* to)
{
    if (!calls().isBelow(to))
        return Fate::Passes;
    return calls().next(lineOf(name, to) + ' ' + from, Kind::Changes);
}

Fate fateOf(const char* name, Kind kind, int descriptor)
{
    return isKnown(descriptor, Below) ? calls().next(lineOf(name, pathOf(descriptor)), kind)
                                      : Fate::Passes;
}

// By a path from a directory, or by the directory itself.
Fate fateOf(const char* name, Kind kind, int directory, const char* path)
{
    if (path && (*path == '/' || directory == AT_FDCWD))
        return fateOf(name, kind, path);
    if (!isKnown(directory, Below))
        return Fate::Passes;
    const std::string from = pathOf(directory);
    return calls().next(lineOf(name, path && *path ? from + '/' + path : from), kind);
}

template <typename Result, typename Call>
Result carryOut(Fate fate, Result failure, Call call)
{
    if (fate == Fate::Fails)
        return failure;
    const Result result = call();
    if (fate == Fate::EndsAll)
        ::raise(SIGKILL);
    return result;
}

bool mayCreate(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

const char* nameOfOpen(int flags)
{
    return mayCreate(flags) ? "create" : "open";
}

Kind kindOfOpen(int flags)
{
    return mayCreate(flags) ? Kind::Changes : Kind::Looks;
}

int opened(int descriptor, int flags, bool isBelow)
{
    const bool isWritten = (flags & O_ACCMODE) != O_RDONLY;
    setKnown(descriptor, static_cast<unsigned char>((isBelow ? Below : Unknown) |
                                                    (isWritten ? Written : Unknown)));
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
        const mode_t mode = mayCreate(flags) ? va_arg(rest, mode_t) : 0;                           \
        va_end(rest);                                                                              \
        const Fate fate = fateOf(nameOfOpen(flags), kindOfOpen(flags), path);                      \
        return carryOut(fate, -1, [&] {                                                            \
            return opened(call(path, flags, mode), flags, calls().isBelow(path));                  \
        });                                                                                        \
    }

INTERPOSED_OPEN(open)
INTERPOSED_OPEN(open64)

#define INTERPOSED_OPENAT(name)                                                                    \
    INTERPOSED int name(int directory, const char* path, int flags, ...)                           \
    {                                                                                              \
        static const auto call = real<int (*)(int, const char*, int, ...)>(#name);                 \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const mode_t mode = mayCreate(flags) ? va_arg(rest, mode_t) : 0;                           \
        va_end(rest);                                                                              \
        const Fate fate = fateOf(nameOfOpen(flags), kindOfOpen(flags), directory, path);           \
        return carryOut(fate, -1, [&] {                                                            \
            return opened(call(directory, path, flags, mode), flags,                               \
                          calls().isBelow(path) || isKnown(directory, Below));                     \
        });                                                                                        \
    }

INTERPOSED_OPENAT(openat)
INTERPOSED_OPENAT(openat64)

// NOLINTBEGIN(bugprone-macro-parentheses): "declared" has its own
// A call that is known by a path (the one that it makes or removes), or by a descriptor.
#define INTERPOSED_CALL(name, kind, by, declared, given)                                           \
    INTERPOSED int name declared noexcept                                                          \
    {                                                                                              \
        static const auto call = real<int(*) declared>(#name);                                     \
        return carryOut(fateOf(#name, kind, by), -1, [&] { return call given; });                  \
    }

#define INTERPOSED_AT(name, kind, directory, path, declared, given)                                \
    INTERPOSED int name declared noexcept                                                          \
    {                                                                                              \
        static const auto call = real<int(*) declared>(#name);                                     \
        return carryOut(fateOf(#name, kind, directory, path), -1, [&] { return call given; });     \
    }

#define INTERPOSED_MOVE(name, from, to, declared, given)                                           \
    INTERPOSED int name declared noexcept                                                          \
    {                                                                                              \
        static const auto call = real<int(*) declared>(#name);                                     \
        return carryOut(fateOfMove(#name, from, to), -1, [&] { return call given; });              \
    }
// NOLINTEND(bugprone-macro-parentheses)

INTERPOSED_MOVE(rename, from, to, (const char* from, const char* to), (from, to))
INTERPOSED_MOVE(link, from, to, (const char* from, const char* to), (from, to))
// The names are whole: nobody works with a directory's descriptor.
INTERPOSED_MOVE(renameat2, from, to,
                (int fromDir, const char* from, int toDir, const char* to, unsigned flags),
                (fromDir, from, toDir, to, flags))
INTERPOSED_CALL(unlink, Kind::Changes, path, (const char* path), (path))
INTERPOSED_AT(unlinkat, Kind::Changes, dir, path, (int dir, const char* path, int flags),
              (dir, path, flags))
INTERPOSED_CALL(rmdir, Kind::Changes, path, (const char* path), (path))
INTERPOSED_CALL(mkdir, Kind::Changes, path, (const char* path, mode_t mode), (path, mode))
INTERPOSED_CALL(symlink, Kind::Changes, to, (const char* from, const char* to), (from, to))
INTERPOSED_CALL(ftruncate, Kind::Changes, file, (int file, off_t size), (file, size))
INTERPOSED_CALL(ftruncate64, Kind::Changes, file, (int file, off64_t size), (file, size))
INTERPOSED_CALL(fchmod, Kind::Changes, file, (int file, mode_t mode), (file, mode))
INTERPOSED_CALL(fchown, Kind::Changes, file, (int file, uid_t user, gid_t group),
                (file, user, group))
INTERPOSED_CALL(futimens, Kind::Changes, file, (int file, const struct timespec* times),
                (file, times))

INTERPOSED_CALL(stat, Kind::Looks, path, (const char* path, struct stat* to), (path, to))
INTERPOSED_CALL(stat64, Kind::Looks, path, (const char* path, struct stat64* to), (path, to))
INTERPOSED_CALL(lstat, Kind::Looks, path, (const char* path, struct stat* to), (path, to))
INTERPOSED_CALL(lstat64, Kind::Looks, path, (const char* path, struct stat64* to), (path, to))
INTERPOSED_CALL(fstat, Kind::Looks, file, (int file, struct stat* to), (file, to))
INTERPOSED_CALL(fstat64, Kind::Looks, file, (int file, struct stat64* to), (file, to))
INTERPOSED_CALL(access, Kind::Looks, path, (const char* path, int mode), (path, mode))
INTERPOSED_AT(fstatat, Kind::Looks, dir, path,
              (int dir, const char* path, struct stat* to, int flags), (dir, path, to, flags))
INTERPOSED_AT(fstatat64, Kind::Looks, dir, path,
              (int dir, const char* path, struct stat64* to, int flags), (dir, path, to, flags))
INTERPOSED_AT(faccessat, Kind::Looks, dir, path, (int dir, const char* path, int mode, int flags),
              (dir, path, mode, flags))
INTERPOSED_AT(statx, Kind::Looks, dir, path,
              (int dir, const char* path, int flags, unsigned mask, struct statx* to),
              (dir, path, flags, mask, to))

INTERPOSED ssize_t readlink(const char* path, char* to, size_t size) noexcept
{
    static const auto call = real<ssize_t (*)(const char*, char*, size_t)>("readlink");
    return carryOut(fateOf("readlink", Kind::Looks, path), ssize_t(-1),
                    [&] { return call(path, to, size); });
}

INTERPOSED char* realpath(const char* path, char* to) noexcept
{
    static const auto call = real<char* (*)(const char*, char*)>("realpath");
    return carryOut(fateOf("realpath", Kind::Looks, path), static_cast<char*>(nullptr),
                    [&] { return call(path, to); });
}

INTERPOSED DIR* opendir(const char* path)
{
    static const auto call = real<DIR* (*)(const char*)>("opendir");
    return carryOut(fateOf("opendir", Kind::Looks, path), static_cast<DIR*>(nullptr), [&] {
        DIR* const directory = call(path);
        if (directory && calls().isBelow(path))
            setKnown(::dirfd(directory), Below);
        return directory;
    });
}

INTERPOSED int closedir(DIR* directory)
{
    static const auto call = real<int (*)(DIR*)>("closedir");
    setKnown(::dirfd(directory), Unknown);
    return call(directory);
}

INTERPOSED struct dirent* readdir(DIR* directory)
{
    static const auto call = real<struct dirent* (*)(DIR*)>("readdir");
    return carryOut(fateOf("readdir", Kind::Looks, ::dirfd(directory)),
                    static_cast<struct dirent*>(nullptr), [&] { return call(directory); });
}

INTERPOSED struct dirent64* readdir64(DIR* directory)
{
    static const auto call = real<struct dirent64* (*)(DIR*)>("readdir64");
    return carryOut(fateOf("readdir", Kind::Looks, ::dirfd(directory)),
                    static_cast<struct dirent64*>(nullptr), [&] { return call(directory); });
}

INTERPOSED ssize_t read(int descriptor, void* to, size_t count)
{
    static const auto call = real<ssize_t (*)(int, void*, size_t)>("read");
    return carryOut(fateOf("read", Kind::Looks, descriptor), ssize_t(-1),
                    [&] { return call(descriptor, to, count); });
}

#define INTERPOSED_PREAD(name, offset)                                                             \
    INTERPOSED ssize_t name(int descriptor, void* to, size_t count, offset from)                   \
    {                                                                                              \
        static const auto call = real<ssize_t (*)(int, void*, size_t, offset)>(#name);             \
        return carryOut(fateOf("read", Kind::Looks, descriptor), ssize_t(-1),                      \
                        [&] { return call(descriptor, to, count, from); });                        \
    }

INTERPOSED_PREAD(pread, off_t)
INTERPOSED_PREAD(pread64, off64_t)

INTERPOSED ssize_t write(int descriptor, const void* from, size_t count)
{
    static const auto call = real<ssize_t (*)(int, const void*, size_t)>("write");
    const Fate fate = fateOf("write", Kind::Writes, descriptor);
    const bool isHalf = fate == Fate::IsHalf || fate == Fate::IsHalfAndEndsAll;
    const bool ends = fate == Fate::EndsAll || fate == Fate::IsHalfAndEndsAll;
    return carryOut(ends ? Fate::EndsAll : fate, ssize_t(-1), [&] {
        return call(descriptor, from, isHalf && count > 1 ? count / 2 : count);
    });
}

// The copy of a descriptor is known like the first.
#define INTERPOSED_FCNTL(name)                                                                     \
    INTERPOSED int name(int descriptor, int command, ...)                                          \
    {                                                                                              \
        static const auto call = real<int (*)(int, int, ...)>(#name);                              \
        va_list rest;                                                                              \
        va_start(rest, command);                                                                   \
        void* const argument = va_arg(rest, void*);                                                \
        va_end(rest);                                                                              \
        const int result = call(descriptor, command, argument);                                    \
        if ((command == F_DUPFD || command == F_DUPFD_CLOEXEC) && result >= 0 &&                   \
            descriptor < descriptors)                                                              \
            setKnown(result, known[static_cast<size_t>(descriptor)]);                              \
        return result;                                                                             \
    }

INTERPOSED_FCNTL(fcntl)
INTERPOSED_FCNTL(fcntl64)

// It is closed all the same. What was open for reading alone has nothing to lose.
INTERPOSED int close(int descriptor)
{
    static const auto call = real<int (*)(int)>("close");
    const bool isWritten = isKnown(descriptor, Written);
    const Fate fate = fateOf(isWritten ? "close" : "release",
                             isWritten ? Kind::Changes : Kind::Looks, descriptor);
    const int error = errno;
    setKnown(descriptor, Unknown);
    const int closed = call(descriptor);
    if (fate != Fate::Fails)
        return carryOut(fate, -1, [closed] { return closed; });
    errno = error;
    return -1;
}
