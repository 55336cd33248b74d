// SPDX-License-Identifier: MIT
#include "daystrip.h"

#include "importcolours.h"
#include "textcolours.h"

#include <QtCore/QLocale>
#include <QtGui/QAccessible>
#include <QtGui/QHelpEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFocusRect>
#include <QtWidgets/QToolTip>

#include <algorithm>

using tadata::CheckedDay;
using tadata::OutlookCell;
using tadata::OutlookDay;

namespace {

constexpr int margin = 3;
constexpr int narrowest = 4; ///< pixels of a cell
constexpr int widest = 22;

// Those who cannot tell the colours apart see it by the height.
double heightOf(CheckedDay::Outcome outcome)
{
    switch (outcome) {
    case CheckedDay::Outcome::Same:
        return 0.35;
    case CheckedDay::Outcome::Merged:
        return 0.7;
    default:
        return 1;
    }
}

} // namespace

DayStrip::DayStrip(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(tr("Что станет с днями"));
}

DayStrip::~DayStrip() = default;

void DayStrip::setDays(const std::vector<OutlookDay>& days)
{
    m_days = days;
    m_current = -1;
    setAccessibleDescription(QString());
    arrange();
}

QSize DayStrip::sizeHint() const
{
    return {40 * narrowest, fontMetrics().height() + 4 * margin};
}

QSize DayStrip::minimumSizeHint() const
{
    return sizeHint();
}

void DayStrip::arrange()
{
    const int room = std::max(1, (width() - 2 * margin) / narrowest);
    m_cells = tadata::cellsOf(m_days, static_cast<size_t>(room));
    update();
}

void DayStrip::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

QRect DayStrip::placeOfCell(size_t cell) const
{
    const int count = static_cast<int>(m_cells.size());
    const int room = std::min(width() - 2 * margin, count * widest);
    const int left = margin + static_cast<int>(cell) * room / count;
    const int right = margin + (static_cast<int>(cell) + 1) * room / count;
    return {left, margin, std::max(1, right - left - 1), height() - 2 * margin};
}

size_t DayStrip::cellOf(int day) const
{
    const auto cell = std::find_if(m_cells.begin(), m_cells.end(), [day](const OutlookCell& one) {
        return static_cast<size_t>(day) <= one.last;
    });
    return static_cast<size_t>(cell - m_cells.begin());
}

QRect DayStrip::placeOf(int day) const
{
    return placeOfCell(cellOf(day));
}

int DayStrip::cellAt(const QPoint& point) const
{
    for (size_t cell = 0; cell < m_cells.size(); ++cell) {
        if (placeOfCell(cell).adjusted(0, -margin, 1, margin).contains(point))
            return static_cast<int>(cell);
    }
    return -1;
}

void DayStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    for (size_t cell = 0; cell < m_cells.size(); ++cell) {
        const QRect place = placeOfCell(cell);
        QRect bar = place;
        bar.setTop(place.bottom() - qRound(place.height() * heightOf(m_cells[cell].outcome)) + 1);
        painter.fillRect(bar, tadata::colourOf(m_cells[cell].outcome, palette()));
        if (m_cells[cell].loses) {
            QRect mark = place;
            mark.setHeight(std::max(2, place.height() / 4));
            painter.fillRect(mark, tadata::faultText(palette()));
        }
    }
    if (m_current >= 0) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawRect(placeOf(m_current).adjusted(-1, -2, 0, 1));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

QString DayStrip::sentenceAt(int day) const
{
    const OutlookCell& cell = m_cells.at(cellOf(day));
    if (cell.first == cell.last)
        return tadata::sentenceOf(m_days.at(cell.first));
    QString text;
    constexpr size_t mostSentences = 8;
    for (size_t at = cell.first; at <= cell.last && at < cell.first + mostSentences; ++at)
        text +=
            (text.isEmpty() ? QString() : QStringLiteral("\n")) + tadata::sentenceOf(m_days[at]);
    return cell.last - cell.first < mostSentences ? text : text + QStringLiteral("\n…");
}

bool DayStrip::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const int cell = cellAt(help->pos());
        if (cell >= 0)
            QToolTip::showText(help->globalPos(),
                               sentenceAt(static_cast<int>(m_cells[size_t(cell)].first)), this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

void DayStrip::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    if (m_current < 0 && !m_days.empty() && event->reason() != Qt::MouseFocusReason)
        choose(0);
}

void DayStrip::keyPressEvent(QKeyEvent* event)
{
    const int last = static_cast<int>(m_days.size()) - 1;
    if (last < 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        choose(std::max(0, m_current - 1));
        break;
    case Qt::Key_Right:
        choose(std::min(last, m_current + 1));
        break;
    case Qt::Key_Home:
        choose(0);
        break;
    case Qt::Key_End:
        choose(last);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void DayStrip::mousePressEvent(QMouseEvent* event)
{
    const int cell = cellAt(event->pos());
    if (cell >= 0)
        choose(static_cast<int>(m_cells[static_cast<size_t>(cell)].first));
}

void DayStrip::choose(int day)
{
    m_current = day;
    setAccessibleDescription(tadata::sentenceOf(m_days.at(static_cast<size_t>(day))));
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
    update();
    Q_EMIT dayChosen(day);
}
