// SPDX-License-Identifier: MIT
#include <vexdesk/database/field.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QtNumeric>

#include <limits>
#include <optional>

using vexdesk::FieldType;
using vexdesk::typeName;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Field)
};

QString shortestText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

// The number nearest to the decimal: its text is read, since a division would round twice.
double toDouble(const xdecimal& value)
{
    return value.toString().toDouble();
}

// What decimals read, without a point.
std::optional<qint64> integerFromText(const QString& text)
{
    const std::optional<xdecimal> number = xdecimal::fromText(text);
    return number && number->scale() == 0 ? std::optional(number->mantissa()) : std::nullopt;
}

// A finite number without blanks around it.
std::optional<double> doubleFromText(const QString& text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    ok = ok && qIsFinite(number) && text.size() == QStringView(text).trimmed().size();
    return ok ? std::optional(number) : std::nullopt;
}

std::optional<decimal> narrow(const xdecimal& number)
{
    if (number.mantissa() < decimal::minMantissa || number.mantissa() > decimal::maxMantissa)
        return std::nullopt;
    return decimal(number.mantissa(), number.scale());
}

} // namespace

Exception Field::incompatibleType(FieldType from, FieldType to)
{
    return Exception(Text::tr("Can't convert from %1 to %2").arg(typeName(from), typeName(to)));
}

Exception Field::incompatibleValue(const QString& value, FieldType to)
{
    return Exception(Text::tr("Can't convert from '%1'' to %2").arg(value, typeName(to)));
}

void Field::clear()
{
    // A text is let go at once; numbers are not looked at while they are absent.
    if (type() == FieldType::Code || type() == FieldType::Text)
        m_column.value<QString>(m_row) = QString();
    m_column.setPresent(m_row, false);
}

template <typename T>
void Field::store(const T& value)
{
    m_column.value<T>(m_row) = value;
    m_column.setPresent(m_row, true);
}

Field& Field::operator=(int value)
{
    storeInteger(value, FieldType::Int32);
    return *this;
}

Field& Field::operator=(long long value)
{
    storeInteger(value, FieldType::Int64);
    return *this;
}

void Field::storeInteger(qint64 value, FieldType from)
{
    switch (type()) {
    case FieldType::Int32:
        if (value < std::numeric_limits<qint32>::min() ||
            value > std::numeric_limits<qint32>::max())
            throw incompatibleValue(QString::number(value), type());
        store(static_cast<qint32>(value));
        return;
    case FieldType::Int64:
        store(value);
        return;
    case FieldType::DateTime:
        throw incompatibleType(from, type());
    case FieldType::Double:
        store(static_cast<double>(value));
        return;
    default:
        storeExtended(xdecimal(value), from);
    }
}

void Field::storeExtended(const xdecimal& value, FieldType from)
{
    switch (type()) {
    case FieldType::Double:
        store(toDouble(value));
        return;
    case FieldType::Decimal:
        if (const std::optional<decimal> number = narrow(value))
            store(*number);
        else
            throw incompatibleValue(value.toString(), type());
        return;
    case FieldType::XDecimal:
        store(value);
        return;
    case FieldType::Code:
    case FieldType::Text:
        store(value.toString());
        return;
    default:
        throw incompatibleType(from, type());
    }
}

Field& Field::operator=(double value)
{
    if (type() == FieldType::Double)
        store(value);
    else if (type() == FieldType::Code || type() == FieldType::Text)
        store(shortestText(value));
    else
        throw incompatibleType(FieldType::Double, type());
    return *this;
}

Field& Field::operator=(const decimal& value)
{
    if (type() == FieldType::Decimal)
        store(value);
    else
        storeExtended(xdecimal(value), FieldType::Decimal);
    return *this;
}

Field& Field::operator=(const xdecimal& value)
{
    storeExtended(value, FieldType::XDecimal);
    return *this;
}

Field& Field::operator=(const datetime& value)
{
    if (type() == FieldType::DateTime)
        store(value);
    else if (type() == FieldType::Code || type() == FieldType::Text)
        store(value.toString());
    else
        throw incompatibleType(FieldType::DateTime, type());
    return *this;
}

Field& Field::operator=(const QString& value)
{
    const auto storeParsed = [this, &value](const auto& parsed) {
        if (!parsed)
            throw incompatibleValue(value, type());
        store(*parsed);
    };
    switch (type()) {
    case FieldType::Int32:
    case FieldType::Int64:
        if (const std::optional<qint64> number = integerFromText(value))
            storeInteger(*number, FieldType::Text);
        else
            throw incompatibleValue(value, type());
        break;
    case FieldType::Double:
        storeParsed(doubleFromText(value));
        break;
    case FieldType::Decimal:
        storeParsed(decimal::fromText(value));
        break;
    case FieldType::XDecimal:
        storeParsed(xdecimal::fromText(value));
        break;
    case FieldType::Code:
    case FieldType::Text:
        store(value);
        break;
    case FieldType::DateTime:
        throw incompatibleType(FieldType::Text, type());
    }
    return *this;
}

QString Field::toString() const
{
    if (!isPresent())
        return QString();
    switch (type()) {
    case FieldType::Int32:
        return QString::number(m_column.value<qint32>(m_row));
    case FieldType::Int64:
        return QString::number(m_column.value<qint64>(m_row));
    case FieldType::Double:
        return shortestText(m_column.value<double>(m_row));
    case FieldType::Decimal:
        return m_column.value<decimal>(m_row).toString();
    case FieldType::XDecimal:
        return m_column.value<xdecimal>(m_row).toString();
    case FieldType::DateTime:
        return m_column.value<datetime>(m_row).toString();
    case FieldType::Code:
    case FieldType::Text:
        break;
    }
    return m_column.value<QString>(m_row);
}
