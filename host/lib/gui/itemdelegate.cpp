// SPDX-License-Identifier: MIT
#include <vexdesk/itemdelegate.h>

#include <QtCore/QLocale>

#include <algorithm>

namespace {

// As bars have them: no grouping, no exponent, no blanks around.
bool isNumber(const QString& text)
{
    const bool isPlain = std::all_of(text.begin(), text.end(), [](QChar character) {
        return QStringView(u"0123456789.+-").contains(character);
    });
    bool isNumber = false;
    QLocale::c().toDouble(text, &isNumber);
    return isPlain && isNumber;
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
