// SPDX-License-Identifier: MIT
#include <vexdesk/database/fieldtype.h>

namespace vexdesk {

QString typeName(FieldType type)
{
    switch (type) {
    case FieldType::Int32:
        return QStringLiteral("int32");
    case FieldType::Int64:
        return QStringLiteral("int64");
    case FieldType::Double:
        return QStringLiteral("double");
    case FieldType::Decimal:
        return QStringLiteral("decimal");
    case FieldType::XDecimal:
        return QStringLiteral("xdecimal");
    case FieldType::Code:
        return QStringLiteral("code");
    case FieldType::DateTime:
        return QStringLiteral("datetime");
    case FieldType::Text:
        return QStringLiteral("text");
    }
    return QString::number(static_cast<int>(type));
}

} // namespace vexdesk
