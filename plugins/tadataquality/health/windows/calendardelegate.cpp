// SPDX-License-Identifier: MIT
#include "calendardelegate.h"

#include "calendarcolors.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace {

using State = CalendarModel::State;

// Two lines through the cell.
void paintCross(QPainter& painter, const QRectF& box)
{
    const double inner = box.width() / 4;
    const QRectF cross = box.adjusted(inner, inner, -inner, -inner);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
}

// What stands in the cell of a day without a file.
void paintAbsent(QPainter& painter, const QRectF& box, const CalendarColors& colors, State state)
{
    constexpr double missingLine = 1.6;
    constexpr double dot = 0.14;
    if (state == State::Missing) {
        painter.setPen(QPen(colors.missing, missingLine));
        painter.drawRect(box.adjusted(1, 1, -1, -1));
        paintCross(painter, box);
    } else if (state == State::Unproven) {
        painter.setPen(QPen(colors.quiet, 1));
        painter.drawRect(box.adjusted(1, 1, -1, -1));
    } else if (state == State::Closed) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.quiet);
        painter.drawEllipse(box.center(), box.width() * dot, box.height() * dot);
    }
}

// A corner of the cell.
void paintFault(QPainter& painter, const QRectF& box, const CalendarColors& colors)
{
    const double side = box.width() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.fault);
    painter.drawPolygon(QPolygonF{box.topRight(), box.topRight() - QPointF(side, 0),
                                  box.topRight() + QPointF(0, side)});
}

} // namespace

CalendarDelegate::CalendarDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{}

CalendarDelegate::~CalendarDelegate() = default;

void CalendarDelegate::paintDay(QPainter& painter, const QRectF& cell, const CalendarColors& colors,
                                State state, double share, bool isWrong)
{
    const QRectF box = cell.adjusted(1, 1, -1, -1);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    if (state == State::Stored || state == State::Unusual)
        painter.fillRect(box, state == State::Stored ? colors.ofShare(share) : colors.unusual);
    else
        paintAbsent(painter, box, colors, state);
    if (isWrong)
        paintFault(painter, box, colors);
    painter.restore();
}

void CalendarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    // Titles are no days, and as such disabled: they are not grey for that.
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(QPalette::Active);
    const CalendarColors colors = CalendarColors::of(palette);
    if (index.data(CalendarModel::TitleRole).toBool()) {
        // A name is longer than its week is wide; the weeks beside it are empty here.
        painter->setPen(colors.text);
        painter->drawText(option.rect.adjusted(1, 0, option.rect.width() * 4, 0),
                          Qt::AlignLeft | Qt::AlignBottom, index.data(Qt::DisplayRole).toString());
        return;
    }
    const auto state = static_cast<State>(index.data(CalendarModel::StateRole).toInt());
    if (state == State::Outside)
        return;
    paintDay(*painter, option.rect, colors, state, index.data(CalendarModel::ShareRole).toDouble(),
             index.data(CalendarModel::WrongRole).toBool());
    if (option.state & QStyle::State_Selected) {
        constexpr double line = 2;
        const bool hasFocus = option.state & QStyle::State_Active;
        painter->setPen(QPen(hasFocus ? palette.color(QPalette::Highlight) : colors.text, line));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(QRectF(option.rect).adjusted(1, 1, -1, -1));
    }
}
