// SPDX-License-Identifier: MIT
#include "support/faults.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

using testsupport::Fault;
using testsupport::Meanwhile;
using testsupport::SystemCall;
using testsupport::WrittenPieces;

struct Fault::Rule
{
    SystemCall call;
    QByteArray pathEnd;
    int error;
    int passed;
    std::atomic<int> calls = 0;
};

struct WrittenPieces::Record
{
    QByteArray pathEnd;
    QByteArrayList pieces;
};

struct Meanwhile::Deed
{
    SystemCall call;
    QByteArray pathEnd;
    std::function<void()> act;
};

namespace {

std::mutex rulesMutex;
std::vector<std::shared_ptr<Fault::Rule>> rules;
std::vector<std::shared_ptr<WrittenPieces::Record>> records;
std::vector<std::shared_ptr<Meanwhile::Deed>> deeds;
std::atomic<int> ruleCount = 0; // of all three kinds

template <typename Rule>
void add(std::vector<std::shared_ptr<Rule>>& list, const std::shared_ptr<Rule>& rule)
{
    const std::lock_guard lock(rulesMutex);
    list.push_back(rule);
    ++ruleCount;
}

template <typename Rule>
void remove(std::vector<std::shared_ptr<Rule>>& list, const std::shared_ptr<Rule>& rule)
{
    const std::lock_guard lock(rulesMutex);
    std::erase(list, rule);
    --ruleCount;
}

template <typename Function>
Function real(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

QByteArray pathOf(int descriptor)
{
    std::array<char, PATH_MAX> path{};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const ssize_t size = ::readlink(link.constData(), path.data(), path.size());
    return size > 0 ? QByteArray(path.data(), size) : QByteArray();
}

// Not under the lock: what is done calls the system, too.
void doMeanwhile(SystemCall call, const QByteArray& path)
{
    std::vector<std::function<void()>> acts;
    {
        const std::lock_guard lock(rulesMutex);
        for (const auto& deed : deeds) {
            if (deed->call == call && deed->act && path.endsWith(deed->pathEnd))
                acts.push_back(std::exchange(deed->act, nullptr));
        }
    }
    for (const auto& act : acts)
        act();
}

// Whether this call is to fail; errno then says why.
bool fails(SystemCall call, const QByteArray& path)
{
    doMeanwhile(call, path);
    const std::lock_guard lock(rulesMutex);
    for (const auto& rule : rules) {
        if (rule->call != call || !path.endsWith(rule->pathEnd))
            continue;
        if (rule->calls++ < rule->passed)
            continue;
        errno = rule->error;
        return true;
    }
    return false;
}

bool failsOn(SystemCall call, int descriptor)
{
    return ruleCount != 0 && fails(call, pathOf(descriptor));
}

void keepPiece(int descriptor, const void* from, size_t count)
{
    const QByteArray path = pathOf(descriptor);
    const std::lock_guard lock(rulesMutex);
    for (const auto& record : records) {
        if (path.endsWith(record->pathEnd))
            record->pieces.append(
                QByteArray(static_cast<const char*>(from), static_cast<qsizetype>(count)));
    }
}

int openFile(const char* name, const char* path, int flags, mode_t mode)
{
    if (ruleCount != 0 && fails(SystemCall::Open, path))
        return -1;
    return real<int (*)(const char*, int, ...)>(name)(path, flags, mode);
}

} // namespace

Fault::Fault(SystemCall call, const QString& pathEnd, int error, int passed)
    : m_rule(new Rule{call, QFile::encodeName(pathEnd), error, passed})
{
    add(rules, m_rule);
}

Fault::~Fault()
{
    remove(rules, m_rule);
}

int Fault::failed() const
{
    return std::max(0, m_rule->calls - m_rule->passed);
}

WrittenPieces::WrittenPieces(const QString& pathEnd)
    : m_record(new Record{QFile::encodeName(pathEnd), {}})
{
    add(records, m_record);
}

WrittenPieces::~WrittenPieces()
{
    remove(records, m_record);
}

QByteArrayList WrittenPieces::pieces() const
{
    const std::lock_guard lock(rulesMutex);
    return m_record->pieces;
}

Meanwhile::Meanwhile(SystemCall call, const QString& pathEnd, const std::function<void()>& act)
    : m_deed(new Deed{call, QFile::encodeName(pathEnd), act})
{
    add(deeds, m_deed);
}

Meanwhile::~Meanwhile()
{
    remove(deeds, m_deed);
}

// What the libraries call, too: the program's own names come before those of the system.
// The system's headers call the parameters by reserved names.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
#define TESTSUPPORT_INTERPOSED extern "C" __attribute__((visibility("default")))

TESTSUPPORT_INTERPOSED ssize_t read(int descriptor, void* to, size_t count)
{
    static const auto call = real<ssize_t (*)(int, void*, size_t)>("read");
    if (failsOn(SystemCall::Read, descriptor))
        return -1;
    const ssize_t size = call(descriptor, to, count);
    return size == 0 && failsOn(SystemCall::ReadEnd, descriptor) ? -1 : size;
}

TESTSUPPORT_INTERPOSED ssize_t write(int descriptor, const void* from, size_t count)
{
    static const auto call = real<ssize_t (*)(int, const void*, size_t)>("write");
    if (ruleCount != 0)
        keepPiece(descriptor, from, count);
    return failsOn(SystemCall::Write, descriptor) ? -1 : call(descriptor, from, count);
}

TESTSUPPORT_INTERPOSED int close(int descriptor)
{
    static const auto call = real<int (*)(int)>("close");
    if (!failsOn(SystemCall::Close, descriptor))
        return call(descriptor);
    const int error = errno;
    call(descriptor);
    errno = error;
    return -1;
}

TESTSUPPORT_INTERPOSED int rename(const char* from, const char* to) noexcept
{
    static const auto call = real<int (*)(const char*, const char*)>("rename");
    return ruleCount != 0 && fails(SystemCall::Rename, to) ? -1 : call(from, to);
}

TESTSUPPORT_INTERPOSED int flock(int descriptor, int operation) noexcept
{
    static const auto call = real<int (*)(int, int)>("flock");
    if (failsOn(SystemCall::Lock, descriptor))
        return -1;
    const int result = call(descriptor, operation);
    const int error = errno;
    if (result != 0 && failsOn(SystemCall::LockRefused, descriptor))
        return -1;
    errno = error;
    return result;
}

TESTSUPPORT_INTERPOSED int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    return openFile("open", path, flags, mode);
}

TESTSUPPORT_INTERPOSED int open64(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    return openFile("open64", path, flags, mode);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
