// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/database/datetime.h>
#include <vexdesk/database/exception.h>
#include <vexdesk/database/rowlayout.h>
#include <vexdesk/database/xdecimal.h>
#include <vexdesk/decimal.h>
#include <vexdesk/export.h>

#include <QtCore/QString>

/// One value of a row, by reference: Record::field() makes it for the moment of reading or writing.
/// It must not outlive the row.
///
/// Assignment converts to the type of the column and makes the value present:
///
/// | from              | to                                                                     |
/// |-------------------|------------------------------------------------------------------------|
/// | int, long long    | the integers, double, decimal, xdecimal, text (the number's digits)     |
/// | double            | double, text (the shortest digits that read back as the same number)   |
/// | decimal, xdecimal | decimal, xdecimal, double, text                                        |
/// | datetime          | date-time, text                                                        |
/// | text              | everything but date-time; the whole text must be the number            |
///
/// Any other pair throws incompatibleType(); a value that the type cannot take (a text that is no
/// number, an integer that does not fit) throws incompatibleValue(). The field is then unchanged.
///
/// Rows have no lock of their own: reading and writing one row from several threads needs the
/// table's lock. A row that has been given away (inserted into a table, posted to a queue) is no
/// longer written to.
class VEXDESK_CORE_EXPORT Field final
{
public:
    Field(unsigned char* row, const vexdesk::ColumnLayout& column) noexcept
        : m_row(row)
        , m_column(column)
    {}

    vexdesk::FieldType type() const noexcept { return m_column.type; }
    bool isPresent() const noexcept { return m_column.isPresent(m_row); }
    /// Makes the value absent.
    void clear();

    Field& operator=(int value);
    Field& operator=(long long value);
    Field& operator=(double value);
    Field& operator=(const decimal& value);
    Field& operator=(const xdecimal& value);
    Field& operator=(const datetime& value);
    Field& operator=(const QString& value);

    /// The value's text form, which no locale changes. Empty when the value is absent.
    QString toString() const;

    /// "Can't convert from %1 to %2" with the names of the types.
    static Exception incompatibleType(vexdesk::FieldType from, vexdesk::FieldType to);
    /// "Can't convert from '%1'' to %2" with the value's text and the name of the type. The doubled
    /// quote is kept: people search their logs for the message as it has always been.
    static Exception incompatibleValue(const QString& value, vexdesk::FieldType to);

private:
    Q_DISABLE_COPY_MOVE(Field)

    template <typename T>
    void store(const T& value);
    void storeInteger(qint64 value, vexdesk::FieldType from);
    void storeExtended(const xdecimal& value, vexdesk::FieldType from);

    unsigned char* m_row;
    const vexdesk::ColumnLayout& m_column;
};
