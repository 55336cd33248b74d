// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace tadata {

struct SampledLine
{
    /// In the file's encoding, without the line end.
    QByteArray text = {};
    /// Longer than any line of bars: the text is only its beginning.
    bool isCut = false;
};

/// The lines that a text file's format is guessed from. A plain value; any thread.
struct FileSample
{
    /// The first 1000 and the last 1000, or all where there are fewer than 2000; in their order,
    /// and without those that hold nothing but space, tab, VT, FF and CR. A byte order mark is no
    /// part of the first.
    std::vector<SampledLine> lines = {};
    /// Where the last 1000 begin among the lines; their number where all were taken.
    size_t secondHalf = 0;
    /// Whether the lines are UTF-8, all of them together; otherwise they are windows-1251.
    bool isUtf8 = true;
};

/// Reads the sample of a file. However large the file is, only its ends are read; however long its
/// lines are, 64 KB of each are kept. Fails, with a whole message, for a file that cannot be opened
/// or read, for pipes and devices, for a line longer than 256 MB, as the import does, and for
/// UTF-16 and UTF-32.
vexdesk::Result<FileSample> sampleFile(const QString& path);

} // namespace tadata
