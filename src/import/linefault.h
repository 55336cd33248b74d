// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace tadata {

/// Where a line that an import refuses is wrong, and what would fit there. A plain value.
struct LineFault
{
    /// Of the first wrong field. None where columns are missing, and where every field is right:
    /// then a clock skips the time, or a sum does not fit.
    ColumnRole role = ColumnRole::None;
    qsizetype begin = 0; ///< of the field, in the line
    qsizetype length = 0;
    qsizetype columns = 0; ///< that the line has
    qsizetype wanted = 0;  ///< columns that it needs
    /// Of a date or a time the forms that its field has; where columns are missing the separators
    /// that would give enough of them.
    QStringList fitting;
};

/// Looks at the fields in the order of the parser. Any thread.
LineFault faultOf(const QString& line, const ImportDetails& details);

} // namespace tadata
