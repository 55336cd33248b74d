// SPDX-License-Identifier: MIT
#pragma once

#include "fileclock.h"
#include "importdetails.h"
#include "lineplaces.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <vector>

/// The lines of a file as the preview shows them: in columns, and with what an import would say of
/// them.
namespace tadata {

struct PreviewLine
{
    QStringList fields = {};
    bool isHeader = false;
    QString fault = {};   ///< why an import refuses the line; null where it takes it
    int faultColumn = -1; ///< where that is; -1: the line as a whole
};

/// How lines are read.
struct PreviewLayout
{
    ImportDetails details;
    FileClock clock = {};
    bool isComplete = false; ///< otherwise lines are only divided
    /// Why no line of a ticker can be imported; null where it can. Any thread.
    std::function<QString(const QString& ticker)> faultOfTicker = {};
};

/// No more columns are shown: of a file that is no table nothing else would be.
constexpr int mostPreviewColumns = 100;

/// The lines from this number (from 0) on. Any thread.
std::vector<PreviewLine> previewLines(const std::vector<ShownLine>& lines, qint64 first,
                                      const PreviewLayout& layout);

} // namespace tadata
