// SPDX-License-Identifier: MIT
#include "rolesheader.h"

#include "compactbox.h"

#include <QtGui/QFocusEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QTableView>

#include <array>

namespace {

struct RoleTitle
{
    ColumnRole role;
    const char* title;
};

constexpr std::array roleTitles{
    RoleTitle{ColumnRole::None, QT_TRANSLATE_NOOP("RolesHeader", "не брать")},
    RoleTitle{ColumnRole::Date, QT_TRANSLATE_NOOP("RolesHeader", "Дата")},
    RoleTitle{ColumnRole::Time, QT_TRANSLATE_NOOP("RolesHeader", "Время")},
    RoleTitle{ColumnRole::Open, QT_TRANSLATE_NOOP("RolesHeader", "Открытие")},
    RoleTitle{ColumnRole::High, QT_TRANSLATE_NOOP("RolesHeader", "Максимум")},
    RoleTitle{ColumnRole::Low, QT_TRANSLATE_NOOP("RolesHeader", "Минимум")},
    RoleTitle{ColumnRole::Close, QT_TRANSLATE_NOOP("RolesHeader", "Закрытие")},
    RoleTitle{ColumnRole::Volume, QT_TRANSLATE_NOOP("RolesHeader", "Объём")},
    RoleTitle{ColumnRole::Value, QT_TRANSLATE_NOOP("RolesHeader", "Деньги")},
    RoleTitle{ColumnRole::OpenInterest, QT_TRANSLATE_NOOP("RolesHeader", "Откр. инт.")},
    RoleTitle{ColumnRole::Ticker, QT_TRANSLATE_NOOP("RolesHeader", "Тикер")}};

} // namespace

RolesHeader::RolesHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(false);
    connect(this, &QHeaderView::sectionResized, this, &RolesHeader::placeBoxes);
}

RolesHeader::~RolesHeader() = default;

QComboBox* RolesHeader::newBox(int section)
{
    auto* const box = new QComboBox(this);
    box->setObjectName(QStringLiteral("role%1").arg(section));
    box->setCursor(Qt::ArrowCursor);
    for (const RoleTitle& title : roleTitles)
        box->addItem(tr(title.title), static_cast<int>(title.role));
    box->setMaxVisibleItems(box->count());
    // All columns of a usual file are to be in view.
    constexpr int shortest = 8;
    tadata::makeCompact(box, shortest);
    box->setAccessibleName(tr("Что в столбце %1").arg(section + 1));
    // The wheel gives it no focus: it is to scroll the table under the mouse.
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    connect(box, &QComboBox::activated, this, [this, box, section] {
        Q_EMIT roleChosen(section, static_cast<ColumnRole>(box->currentData().toInt()));
    });
    return box;
}

void RolesHeader::makeBoxes()
{
    while (m_boxes.size() > count())
        delete m_boxes.takeLast();
    while (m_boxes.size() < count()) {
        QWidget* const before = m_boxes.isEmpty() ? parentWidget() : m_boxes.last();
        QComboBox* const box = newBox(static_cast<int>(m_boxes.size()));
        m_boxes.append(box);
        box->show();
        QWidget::setTabOrder(before, box);
    }
    for (int section = 0; section < count(); ++section)
        resizeSection(section, m_boxes.at(section)->sizeHint().width());
    setColumns(m_columns);
    placeBoxes();
}

void RolesHeader::setColumns(const QMap<qint32, qint32>& columns)
{
    m_columns = columns;
    for (int section = 0; section < m_boxes.size(); ++section) {
        const qint32 role = m_columns.key(section, static_cast<qint32>(ColumnRole::None));
        m_boxes.at(section)->setCurrentIndex(m_boxes.at(section)->findData(role));
    }
}

void RolesHeader::setBoxesEnabled(bool enabled)
{
    for (QComboBox* const box : std::as_const(m_boxes))
        box->setEnabled(enabled);
}

QSize RolesHeader::sizeHint() const
{
    const QSize own = QHeaderView::sizeHint();
    const int height = m_boxes.isEmpty() ? own.height() : m_boxes.first()->sizeHint().height();
    return {own.width(), std::max(own.height(), height)};
}

void RolesHeader::placeBoxes()
{
    for (int section = 0; section < m_boxes.size(); ++section)
        m_boxes.at(section)->setGeometry(sectionViewportPosition(section), 0, sectionSize(section),
                                         height());
}

void RolesHeader::updateGeometries()
{
    QHeaderView::updateGeometries();
    placeBoxes();
}

bool RolesHeader::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const box = qobject_cast<QComboBox*>(watched);
    // Nobody changes a role by scrolling past it.
    if (box && event->type() == QEvent::Wheel && !box->hasFocus()) {
        event->ignore();
        return true;
    }
    if (box && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            showSection(box);
    }
    return QHeaderView::eventFilter(watched, event);
}

// A box that is reached with the keyboard may be scrolled away.
void RolesHeader::showSection(const QComboBox* box) const
{
    const int begin = static_cast<int>(m_boxes.indexOf(const_cast<QComboBox*>(box)));
    auto* const table = qobject_cast<QTableView*>(parentWidget());
    if (begin >= 0 && table && model()->rowCount() > 0)
        table->scrollTo(model()->index(0, begin));
}
