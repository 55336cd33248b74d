// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QTest>

#include <csignal>

#include <sys/resource.h>

namespace testsupport {

/// While it lives, no file of this process grows beyond a size: what a full disk looks like.
class FileSizeLimit final
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{bytes, m_before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace testsupport
