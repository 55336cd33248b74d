// SPDX-License-Identifier: MIT
#include "columnsheader.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QFocusEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QWizardPage>

namespace {

bool byKeyboard(const QFocusEvent& event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

} // namespace

ColumnsHeader::ColumnsHeader(QWizardPage* page, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
    , m_page(page)
{}

QStringList ColumnsHeader::roleTitles()
{
    return {tr("Не импор-ть"),  tr("Дата окон-я"), tr("Вр. окон-я"), tr("Цена откр."),
            tr("Цена макс."),   tr("Цена мин."),   tr("Цена закр."), tr("Объем в шт."),
            tr("Объем в ден."), tr("Откр. инт.")};
}

QComboBox* ColumnsHeader::newHeaderBox()
{
    auto* const box = new QComboBox(this);
    box->setCursor(Qt::ArrowCursor);
    box->addItems(roleTitles());
    box->setMaxVisibleItems(box->count());
    // The wheel gives it no focus: it is to scroll the table under the mouse.
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QComboBox::currentIndexChanged, m_page, &QWizardPage::completeChanged);
    return box;
}

int ColumnsHeader::sectionWidth(const QComboBox& box)
{
    constexpr int margins = 4;
    return box.sizeHint().width() + margins;
}

void ColumnsHeader::fill()
{
    for (int section = 0; section < count(); ++section) {
        // In the order of the columns, behind the table that holds the header.
        QWidget* const before = m_boxes.isEmpty() ? parentWidget() : m_boxes.last();
        QComboBox* const box = newHeaderBox();
        m_boxes.append(box);
        box->show();
        resizeSection(section, sectionWidth(*box));
        placeBox(section);
        QWidget::setTabOrder(before, box);
    }
    connect(this, &QHeaderView::sectionResized, this, &ColumnsHeader::fixComboPositions);
}

void ColumnsHeader::fixComboPositions()
{
    for (int section = 0; section < m_boxes.size(); ++section)
        placeBox(section);
}

void ColumnsHeader::placeBox(int section)
{
    m_boxes.at(section)->setGeometry(sectionViewportPosition(section) + 2, 0,
                                     sectionSize(section) - 4, height());
}

bool ColumnsHeader::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const box = qobject_cast<QComboBox*>(watched);
    if (!box)
        return QHeaderView::eventFilter(watched, event);
    if (event->type() == QEvent::Wheel && !box->hasFocus()) {
        scrollTable(static_cast<QWheelEvent*>(event));
        return true;
    }
    // A box that is reached with the keyboard may be scrolled away. One that is clicked stays under
    // the mouse.
    if (event->type() == QEvent::FocusIn && byKeyboard(*static_cast<QFocusEvent*>(event)))
        showSection(box);
    return QHeaderView::eventFilter(watched, event);
}

void ColumnsHeader::showSection(const QComboBox* box) const
{
    const auto section = m_boxes.indexOf(box);
    auto* const table = qobject_cast<QTableView*>(parentWidget());
    if (section >= 0 && table)
        table->scrollTo(model()->index(0, static_cast<int>(section)));
}

// Sideways where all rows are shown already.
void ColumnsHeader::scrollTable(QWheelEvent* event) const
{
    const auto* const table = qobject_cast<QTableView*>(parentWidget());
    if (!table)
        return;
    const QPoint turned = event->angleDelta();
    QScrollBar* const vertical = table->verticalScrollBar();
    const bool sideways =
        qAbs(turned.x()) > qAbs(turned.y()) || vertical->minimum() == vertical->maximum();
    QCoreApplication::sendEvent(sideways ? table->horizontalScrollBar() : vertical, event);
}
