// SPDX-License-Identifier: MIT
// A library that makes calls of the system fail in a program under test, which is started with it
// in LD_PRELOAD. The environment variable TADATA_TEST_FAULT says which ones: "CALL ERROR PASSED
// PATHEND", with the call as open, read, write, close or rename, the number of the error, and how
// many calls work before.

#include "support/faults.h"

#include <QtCore/QStringList>

#include <optional>

namespace {

using testsupport::SystemCall;

struct PreloadedFault
{
    PreloadedFault()
    {
        const QStringList words = qEnvironmentVariable("TADATA_TEST_FAULT").split(u' ');
        const QStringList calls{QStringLiteral("open"), QStringLiteral("read"),
                                QStringLiteral("write"), QStringLiteral("close"),
                                QStringLiteral("rename")};
        if (words.size() == 4)
            fault.emplace(SystemCall(calls.indexOf(words[0])), words[3], words[1].toInt(),
                          words[2].toInt());
    }

    std::optional<testsupport::Fault> fault;
};

const PreloadedFault preloaded;

} // namespace
