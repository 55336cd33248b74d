// SPDX-License-Identifier: MIT
#include "compactbox.h"

#include <QtCore/QEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>

namespace tadata {

namespace {

// By the number of letters: a list may have thousands of entries, and the widest is nearly that.
void widenList(QComboBox* box)
{
    QString longest;
    for (int entry = 0; entry < box->count(); ++entry) {
        const QString text = box->itemText(entry);
        if (text.size() > longest.size())
            longest = text;
    }
    constexpr int spare = 24; // margins, and letters that are wider than others
    QAbstractItemView* const list = box->view();
    list->setMinimumWidth(box->fontMetrics().horizontalAdvance(longest) + spare +
                          list->verticalScrollBar()->sizeHint().width());
}

// As late as it opens: while entries come one after the other nobody looks at it.
class ListWidener final : public QObject
{
public:
    explicit ListWidener(QComboBox* box)
        : QObject(box)
        , m_box(box)
    {
        box->view()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
            widenList(m_box);
        return QObject::eventFilter(watched, event);
    }

private:
    QComboBox* m_box;
};

} // namespace

void makeCompact(QComboBox* box, int letters)
{
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(letters);
    box->setIconSize(QSize(0, 0));
    new ListWidener(box);
    if (!box->toolTip().isEmpty())
        return;
    const auto tell = [box] { box->setToolTip(box->currentText()); };
    QObject::connect(box, &QComboBox::currentIndexChanged, box, tell);
    tell();
}

} // namespace tadata
