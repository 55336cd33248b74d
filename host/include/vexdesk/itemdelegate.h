// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtWidgets/QStyledItemDelegate>

/// How the terminal's tables show their cells: numbers stand right, so that their digits are under
/// each other, and the focus is not framed cell by cell. The view that it is constructed on owns
/// it. User-interface thread only.
class VEXDESK_GUI_EXPORT ItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ItemDelegate(QObject* view);
    ~ItemDelegate() override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
