// SPDX-License-Identifier: MIT
#include "desk/filedialogdates.h"

#include <QtCore/QAbstractProxyModel>
#include <QtCore/QDateTime>
#include <QtCore/QEvent>
#include <QtGui/QFileSystemModel>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTreeView>

namespace vexdesk {

namespace {

constexpr int dateColumn = 3; // of QFileSystemModel, behind name, size and type

class DateDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        QModelIndex source = index;
        while (const auto* const proxy = qobject_cast<const QAbstractProxyModel*>(source.model()))
            source = proxy->mapToSource(source);
        if (const auto* const files = qobject_cast<const QFileSystemModel*>(source.model()))
            option->text = QLocale().toString(files->lastModified(source), QLocale::ShortFormat);
    }
};

} // namespace

FileDialogDates::FileDialogDates(QObject* parent)
    : QObject(parent)
{}

bool FileDialogDates::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Show || !qobject_cast<QFileDialog*>(watched))
        return false;
    // There is none in a dialog of the desktop.
    auto* const files = watched->findChild<QTreeView*>(QStringLiteral("treeView"));
    if (files && !files->itemDelegateForColumn(dateColumn))
        files->setItemDelegateForColumn(dateColumn, new DateDelegate(files));
    return false;
}

} // namespace vexdesk
