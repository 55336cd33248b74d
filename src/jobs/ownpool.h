// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QThreadPool>

namespace tadata {

/// The threads of one object's work in the background, which wait for nobody else's. Not those of
/// the application's global pool: Qt paints large areas with their help, and a window would stand
/// still while all of them are busy. Goes when all that was begun has ended.
class OwnPool final : public QThreadPool
{
public:
    OwnPool()
    {
        // What is not wanted any more may take a while to notice.
        constexpr int enough = 4;
        setMaxThreadCount(enough);
    }

    /// As QtConcurrent::run() takes it.
    QThreadPool* get() { return this; }
};

} // namespace tadata
