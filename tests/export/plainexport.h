// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "exportdetails.h"

#include <QtCore/QList>
#include <QtCore/QString>

/// What the export writes for a stream of bars, done the plain way: whole lists and texts, and
/// integers for the intervals. It shares nothing with the export. Slow and easy to read.
class PlainExport final
{
public:
    explicit PlainExport(const ExportDetails& details)
        : m_details(details)
    {}

    /// The bars that the source bars make, the last one included.
    QList<BarDescription> folded(const QList<BarDescription>& sources) const;
    /// The lines of these bars.
    QString lines(const QList<BarDescription>& bars) const;
    QString header() const;

private:
    BarDescription begun(const BarDescription& source) const;
    QString text(const QString& column, const BarDescription& bar) const;

    ExportDetails m_details;
};
