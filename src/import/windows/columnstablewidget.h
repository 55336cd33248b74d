// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QTableWidget>

class ColumnsHeader;

/// The preview table under a ColumnsHeader, whose boxes follow when the table scrolls sideways.
class ColumnsTableWidget final : public QTableWidget
{
    Q_OBJECT

public:
    explicit ColumnsTableWidget(QWidget* parent = nullptr);

    /// Takes the header, which must have this table as its parent; an earlier one is destroyed.
    void setColumnsHeader(ColumnsHeader* header);

protected:
    void scrollContentsBy(int dx, int dy) override;

private:
    QPointer<ColumnsHeader> m_header;
};
