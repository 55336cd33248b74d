// SPDX-License-Identifier: MIT
#include "previewview.h"

#include "importcolours.h"
#include "rolesheader.h"
#include "textcolours.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTableView>

#include <algorithm>
#include <limits>
#include <utility>

using tadata::PreviewModel;

namespace {

class LineDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideRight;
        if (index.data(PreviewModel::HeaderRole).toBool()) {
            option->font.setItalic(true);
            option->palette.setColor(QPalette::Text,
                                     option->palette.color(QPalette::PlaceholderText));
        }
        if (index.data(PreviewModel::FaultRole).toBool()) {
            // Also in the line that is chosen.
            option->state &= ~QStyle::State_Selected;
            option->backgroundBrush = tadata::faultBackground(option->palette);
            option->palette.setColor(QPalette::Text, tadata::faultText(option->palette));
        } else if (index.data(PreviewModel::NoticeRole).toBool()) {
            option->backgroundBrush = tadata::noticeBackground(option->palette);
        }
    }
};

} // namespace

PreviewView::PreviewView(QWidget* parent)
    : QWidget(parent)
    , m_model(new PreviewModel(this))
    , m_table(new QTableView)
    , m_roles(new RolesHeader(m_table))
    , m_bar(new QScrollBar(Qt::Vertical))
{
    m_table->setObjectName(QStringLiteral("preview"));
    m_table->setAccessibleName(tr("Строки файла"));
    m_table->setHorizontalHeader(m_roles);
    m_table->setModel(m_model);
    m_table->setItemDelegate(new LineDelegate(m_table));
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    QHeaderView* const lines = m_table->verticalHeader();
    lines->setSectionResizeMode(QHeaderView::Fixed);
    lines->setDefaultSectionSize(lines->minimumSectionSize());
    m_bar->setObjectName(QStringLiteral("previewBar"));
    m_bar->setFocusPolicy(Qt::NoFocus);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_table);
    layout->addWidget(m_bar);

    m_table->installEventFilter(this);
    m_table->viewport()->installEventFilter(this);
    connect(m_table->horizontalScrollBar(), &QScrollBar::valueChanged, m_roles,
            &RolesHeader::placeBoxes);
    connect(m_bar, &QScrollBar::valueChanged, this, [this](int line) { m_model->showFrom(line); });
    connect(m_model, &PreviewModel::linesFound, this, &PreviewView::followModel);
    connect(m_model, &PreviewModel::pageChanged, this, &PreviewView::followModel);
    connect(m_model, &PreviewModel::columnsChanged, this, [this] {
        m_roles->makeBoxes();
        if (m_wanted > 0 && m_model->columnCount() > 0)
            showLine(std::exchange(m_wanted, 0));
    });
}

PreviewView::~PreviewView() = default;

bool PreviewView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_table->viewport()) {
        if (event->type() == QEvent::Resize)
            fitPage();
        else if (event->type() == QEvent::Wheel)
            return takeWheel(static_cast<QWheelEvent*>(event)->angleDelta().y());
    }
    if (watched == m_table && event->type() == QEvent::KeyPress) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        return takeKey(key->key(), key->modifiers().testFlag(Qt::ControlModifier));
    }
    return QWidget::eventFilter(watched, event);
}

// Only lines that are seen as a whole.
void PreviewView::fitPage()
{
    const int line = m_table->verticalHeader()->defaultSectionSize();
    m_model->setPageSize(std::max(1, m_table->viewport()->height() / line));
}

void PreviewView::followModel()
{
    const QSignalBlocker quiet(m_bar);
    constexpr qint64 most = std::numeric_limits<int>::max();
    const qint64 last = m_model->lineCount() - m_model->pageSize();
    m_bar->setRange(0, static_cast<int>(std::clamp<qint64>(last, 0, most)));
    m_bar->setPageStep(m_model->pageSize());
    m_bar->setValue(static_cast<int>(std::min(m_model->firstLine(), most)));
    // The numbers become longer on the way through the file.
    QHeaderView* const lines = m_table->verticalHeader();
    const QString number = QString::number(m_model->firstLine() + m_model->pageSize());
    constexpr int margins = 12;
    lines->setFixedWidth(lines->fontMetrics().horizontalAdvance(number) + margins);
}

bool PreviewView::takeWheel(int delta)
{
    constexpr int notch = 40; // a third of what a wheel's click turns: three lines a click
    m_wheel += delta;
    const int lines = m_wheel / notch;
    m_wheel -= lines * notch;
    if (delta != 0)
        scrollBy(-lines);
    return delta != 0;
}

void PreviewView::scrollBy(qint64 lines)
{
    m_model->showFrom(m_model->firstLine() + lines);
}

bool PreviewView::takeKey(int key, bool isControl)
{
    const int row = m_table->currentIndex().row();
    const int last = m_model->rowCount() - 1;
    switch (key) {
    case Qt::Key_Down:
        if (row < last)
            return false;
        scrollBy(1);
        break;
    case Qt::Key_Up:
        if (row > 0)
            return false;
        scrollBy(-1);
        break;
    case Qt::Key_PageDown:
        scrollBy(m_model->pageSize());
        break;
    case Qt::Key_PageUp:
        scrollBy(-m_model->pageSize());
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (!isControl)
            return false;
        m_model->showFrom(key == Qt::Key_Home ? 0 : m_model->lineCount());
        makeCurrent(key == Qt::Key_Home ? 0 : m_model->rowCount() - 1);
        return true;
    default:
        return false;
    }
    makeCurrent(std::clamp(row, 0, std::max(0, last)));
    return true;
}

void PreviewView::makeCurrent(int row)
{
    const int column = std::max(0, m_table->currentIndex().column());
    m_table->setCurrentIndex(m_model->index(row, column));
}

void PreviewView::showLine(qint64 number)
{
    // Of another file nothing may have been read yet.
    if (m_model->columnCount() == 0) {
        m_wanted = number;
        return;
    }
    const qint64 line = number - 1;
    const qint64 first = m_model->firstLine();
    if (line < first || line >= first + m_model->pageSize())
        m_model->showFrom(line - m_model->pageSize() / 2);
    makeCurrent(static_cast<int>(line - m_model->firstLine()));
}
