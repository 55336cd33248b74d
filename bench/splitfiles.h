// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>

/// What the editor's loading is measured against: the day files of a series are read and their
/// lines split into fields, and nothing is kept.
struct SplitFiles
{
    qint64 lines = 0;
    qint64 fields = 0;

    static SplitFiles read(const QDir& dir, int timeframe);
};
