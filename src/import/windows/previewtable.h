// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

class QTableWidget;

/// The table that shows the first lines of the file, split into columns, on two pages of the import
/// wizard. User-interface thread only.
namespace tadata {

/// A column for each field of the first line and a row for each line.
void setPreviewSize(QTableWidget& table, const QList<QString>& lines, const QString& separator);

/// Shows the fields of every line; those beyond the columns are not shown.
void fillPreview(QTableWidget& table, const QList<QString>& lines, const QString& separator);

} // namespace tadata
