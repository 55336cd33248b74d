// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

namespace vexdesk {

/// What a column of a table holds. The numbers are the codes by which plug-ins tell the types
/// apart; they never change.
enum class FieldType : int {
    Int32 = 1,    ///< qint32
    Int64 = 2,    ///< qint64
    Double = 3,   ///< double
    Decimal = 4,  ///< decimal
    XDecimal = 5, ///< xdecimal
    Code = 6,     ///< QString: a code of the reference data or of the market
    DateTime = 7, ///< datetime: milliseconds since the epoch in a qint64
    Text = 8,     ///< QString: a text for people
};

/// "int32", "datetime" and so on, for messages. Any thread.
VEXDESK_CORE_EXPORT QString typeName(FieldType type);

} // namespace vexdesk
