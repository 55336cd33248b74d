// SPDX-License-Identifier: MIT
#include "linefault.h"

#include "fieldforms.h"
#include "lineparser.h"

#include <vexdesk/decimal.h>
#include <vexdesk/securitydirectory.h>

#include <QtCore/QDate>
#include <QtCore/QTime>

#include <algorithm>
#include <array>
#include <optional>

namespace tadata {

namespace {

constexpr std::array separators{",", ";", "\t", " ", "|"};

// Of a damaged file's line, which may hold any number of them, no more are looked at.
constexpr qsizetype mostColumns = 1000;

struct Field
{
    qsizetype begin = 0;
    QString text;
};

QList<Field> fieldsOf(const QString& line, const QString& separator)
{
    QList<Field> fields;
    qsizetype begin = 0;
    while (fields.size() < mostColumns) {
        const qsizetype end = separator.isEmpty() ? -1 : line.indexOf(separator, begin);
        fields.append({begin, end < 0 ? line.mid(begin) : line.mid(begin, end - begin)});
        if (end < 0)
            break;
        begin = end + separator.size();
    }
    return fields;
}

// Those in which a field is.
template <typename Form>
QStringList formsOf(const QString& text, const QStringList& patterns)
{
    const QByteArray field = text.toUtf8();
    QStringList fitting;
    for (const QString& pattern : patterns) {
        if (Form(pattern).read(field))
            fitting.append(pattern);
    }
    return fitting;
}

bool isPrice(const QString& text, const ImportDetails& details)
{
    const auto decimals = static_cast<short>(
        SecurityDirectory::i().decimalsById(details.stockId, details.boardId, details.securityId));
    std::optional<decimal> number = decimal::fromText(QStringView(text));
    if (!number)
        return false;
    try {
        number->setScale(decimals);
    } catch (const QString&) {
        return false;
    }
    return true;
}

bool isRight(ColumnRole role, const QString& text, const ImportDetails& details)
{
    bool isNumber = true;
    switch (role) {
    case ColumnRole::Date:
        return dateOfField(text, details.dateFormat).isValid();
    case ColumnRole::Time:
        return QTime::fromString(text, details.timeFormat).isValid();
    case ColumnRole::Volume:
        text.toLongLong(&isNumber);
        return isNumber;
    case ColumnRole::OpenInterest:
        text.toInt(&isNumber);
        return isNumber;
    case ColumnRole::None:
        return true;
    case ColumnRole::Ticker:
        return !text.isEmpty() && text != u"." && text != u".." && !text.contains(u'/') &&
               !text.contains(QChar::Null) && !text.contains(QChar::ReplacementCharacter);
    default:
        return isPrice(text, details);
    }
}

QStringList separatorsFor(const QString& line, qsizetype wanted)
{
    QStringList fitting;
    for (const char* separator : separators) {
        const QString text = QLatin1String(separator);
        if (line.count(text) + 1 >= wanted)
            fitting.append(text);
    }
    return fitting;
}

QStringList fittingFor(ColumnRole role, const QString& text)
{
    if (role == ColumnRole::Date)
        return formsOf<DateForm>(text, knownDateForms());
    return role == ColumnRole::Time ? formsOf<TimeForm>(text, knownTimeForms()) : QStringList();
}

} // namespace

LineFault faultOf(const QString& line, const ImportDetails& details)
{
    const QList<Field> fields = fieldsOf(line, details.separator);
    LineFault fault;
    fault.columns = fields.size();
    for (const qint32 column : details.columns)
        fault.wanted = std::max<qsizetype>(fault.wanted, column + qsizetype(1));
    if (fault.columns < fault.wanted) {
        fault.fitting = separatorsFor(line, fault.wanted);
        return fault;
    }
    // In the order of the roles' numbers, which is that of the parser.
    for (auto column = details.columns.begin(); column != details.columns.end(); ++column) {
        const auto role = static_cast<ColumnRole>(column.key());
        const Field field = fields.value(*column);
        if (isRight(role, field.text, details))
            continue;
        fault.role = role;
        fault.begin = field.begin;
        fault.length = field.text.size();
        fault.fitting = fittingFor(role, field.text);
        break;
    }
    return fault;
}

} // namespace tadata
