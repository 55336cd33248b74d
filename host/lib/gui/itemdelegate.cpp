#include <vexdesk/itemdelegate.h>

#include <QtCore/QLocale>

namespace {

// As bars have them; without grouping, which would be taken for a separator.
bool isNumber(const QString& text)
{
    bool isNumber = false;
    QLocale::c().toDouble(text, &isNumber);
    return isNumber;
}

} // namespace

ItemDelegate::ItemDelegate(QObject* view)
    : QStyledItemDelegate(view)
{}

ItemDelegate::~ItemDelegate() = default;

void ItemDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~QStyle::State_HasFocus;
    const bool isAligned = index.data(Qt::TextAlignmentRole).isValid();
    if (!isAligned && isNumber(option->text))
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
}
