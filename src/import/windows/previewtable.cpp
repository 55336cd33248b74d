// SPDX-License-Identifier: MIT
#include "previewtable.h"

#include <QtWidgets/QTableWidget>

#include <algorithm>

namespace tadata {

namespace {

// A binary file may be one line of a million fields, which no table shows in any useful time.
constexpr qsizetype maxColumns = 1000;

// Nor is a field of a million characters ever read there; to lay it out takes minutes.
constexpr qsizetype maxCharacters = 1000;

QString shown(const QString& field)
{
    return field.size() > maxCharacters ? field.left(maxCharacters) + u'…' : field;
}

} // namespace

void setPreviewSize(QTableWidget& table, const QList<QString>& lines, const QString& separator)
{
    const qsizetype fields = lines.isEmpty() ? 0 : lines.first().count(separator) + 1;
    table.setColumnCount(static_cast<int>(std::min(fields, maxColumns)));
    table.setRowCount(static_cast<int>(lines.size()));
}

void fillPreview(QTableWidget& table, const QList<QString>& lines, const QString& separator)
{
    table.clearContents();
    for (int row = 0; row < table.rowCount(); ++row) {
        const QStringList fields = lines.at(row).split(separator);
        const int columns =
            static_cast<int>(std::min<qsizetype>(fields.size(), table.columnCount()));
        for (int column = 0; column < columns; ++column)
            table.setItem(row, column, new QTableWidgetItem(shown(fields.at(column))));
    }
}

} // namespace tadata
