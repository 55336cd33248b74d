#include "import/columnsheader.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QComboBox>
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
    box->installEventFilter(this);
    connect(box, &QComboBox::currentIndexChanged, m_page, &QWizardPage::completeChanged);
    return box;
}

void ColumnsHeader::fill()
{
    constexpr int margins = 4;
    for (int section = 0; section < count(); ++section) {
        // In the order of the columns, behind the table that holds the header.
        QWidget* const before = m_boxes.isEmpty() ? parentWidget() : m_boxes.last();
        QComboBox* const box = newHeaderBox();
        m_boxes.append(box);
        box->show();
        resizeSection(section, box->sizeHint().width() + margins);
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

// A box that is reached with the keyboard may be scrolled away. One that is clicked stays under the
// mouse.
bool ColumnsHeader::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && byKeyboard(*static_cast<QFocusEvent*>(event))) {
        const auto section = m_boxes.indexOf(static_cast<QComboBox*>(watched));
        auto* const table = qobject_cast<QTableView*>(parentWidget());
        if (section >= 0 && table)
            table->scrollTo(model()->index(0, static_cast<int>(section)));
    }
    return QHeaderView::eventFilter(watched, event);
}
