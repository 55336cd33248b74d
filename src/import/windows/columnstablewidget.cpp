// SPDX-License-Identifier: MIT
#include "columnstablewidget.h"

#include "columnsheader.h"

ColumnsTableWidget::ColumnsTableWidget(QWidget* parent)
    : QTableWidget(parent)
{}

void ColumnsTableWidget::setColumnsHeader(ColumnsHeader* header)
{
    setHorizontalHeader(header);
    m_header = header;
}

void ColumnsTableWidget::scrollContentsBy(int dx, int dy)
{
    QTableWidget::scrollContentsBy(dx, dy);
    if (dx != 0 && m_header)
        m_header->fixComboPositions();
}
