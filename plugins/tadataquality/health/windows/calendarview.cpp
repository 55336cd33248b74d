// SPDX-License-Identifier: MIT
#include "calendarview.h"

#include "calendardelegate.h"
#include "calendarmodel.h"

#include <QtCore/QEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>

CalendarView::CalendarView(CalendarModel* model, QWidget* parent)
    : QTableView(parent)
    , m_calendar(model)
{
    setModel(model);
    setItemDelegate(new CalendarDelegate(this));
    setShowGrid(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setCornerButtonEnabled(false);
    // It comes and goes with the number of years, and must not change the cells by that.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    horizontalHeader()->hide();
    for (QHeaderView* const header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->setMinimumSectionSize(1);
    }
    verticalHeader()->setSectionsClickable(false);
    fitCells();
    connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
        if (const QDate day = m_calendar->dayAt(index); day.isValid())
            Q_EMIT dayActivated(day);
    });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { Q_EMIT dayChanged(day()); });
}

CalendarView::~CalendarView() = default;

QDate CalendarView::day() const
{
    return m_calendar->dayAt(currentIndex());
}

void CalendarView::setDay(const QDate& day)
{
    const QModelIndex index = m_calendar->indexOf(day);
    setCurrentIndex(index);
    if (index.isValid())
        scrollTo(index, QAbstractItemView::PositionAtCenter);
}

// A year fits into the width, as long as the cells are not too small to be told apart or too large.
void CalendarView::fitCells()
{
    constexpr int weeks = 54;
    constexpr int most = 160; // percent of the height of the font
    constexpr int least = 90;
    constexpr int whole = 100;
    const int letter = fontMetrics().height();
    const int side =
        std::clamp(viewport()->width() / weeks, letter * least / whole, letter * most / whole);
    if (side == horizontalHeader()->defaultSectionSize())
        return;
    horizontalHeader()->setDefaultSectionSize(side);
    verticalHeader()->setDefaultSectionSize(side);
    // The names of weekdays stand in rows of this height.
    constexpr double share = 0.8;
    QFont font = this->font();
    font.setPixelSize(std::max(1, static_cast<int>(fontInfo().pixelSize() * share)));
    verticalHeader()->setFont(font);
}

void CalendarView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    fitCells();
}

// A year and a bit of the next one.
QSize CalendarView::sizeHint() const
{
    constexpr int rows = 11;
    return {QTableView::sizeHint().width(), rows * fontMetrics().height()};
}

void CalendarView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitCells();
}

QModelIndex CalendarView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QDate moved = this->moved(action, modifiers & Qt::ControlModifier);
    const QModelIndex index = m_calendar->indexOf(moved);
    return index.isValid() ? index : currentIndex();
}

QDate CalendarView::moved(CursorAction action, bool toWrong) const
{
    constexpr int week = 7;
    const tadata::SharedDigest& series = m_calendar->series();
    const QDate now = day();
    if (!series)
        return {};
    if (!now.isValid())
        return series->last;
    switch (action) {
    case MoveUp:
        return now.addDays(-1);
    case MoveDown:
        return now.addDays(1);
    case MovePrevious:
    case MoveLeft:
        return toWrong ? m_calendar->nextWrongDay(now, -1)
                       : std::max(now.addDays(-week), series->first);
    case MoveNext:
    case MoveRight:
        return toWrong ? m_calendar->nextWrongDay(now, 1)
                       : std::min(now.addDays(week), series->last);
    case MovePageUp:
        return std::max(now.addMonths(-1), series->first);
    case MovePageDown:
        return std::min(now.addMonths(1), series->last);
    case MoveHome:
        return series->first;
    case MoveEnd:
        return series->last;
    }
    return {};
}
