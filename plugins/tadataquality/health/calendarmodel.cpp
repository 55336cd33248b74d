// SPDX-License-Identifier: MIT
#include "calendarmodel.h"

#include "dayremarks.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace {

constexpr int weekdays = 7;
constexpr int rowsOfYear = weekdays + 1; // and its title
constexpr int weeksOfYear = 54;          // at most, with those that are cut

// The days of a year before its first Monday stand in the first week.
int daysBefore(int year)
{
    return QDate(year, 1, 1).dayOfWeek() - 1;
}

int weekOf(const QDate& day)
{
    return (day.dayOfYear() - 1 + daysBefore(day.year())) / weekdays;
}

bool isIn(const QList<QDate>& days, const QDate& day)
{
    return std::binary_search(days.begin(), days.end(), day);
}

} // namespace

CalendarModel::CalendarModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

CalendarModel::~CalendarModel() = default;

void CalendarModel::setSeries(const tadata::SharedDigest& series)
{
    beginResetModel();
    m_series = series && series->first.isValid() ? series : nullptr;
    endResetModel();
}

int CalendarModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() || !m_series)
        return 0;
    return (m_series->last.year() - m_series->first.year() + 1) * rowsOfYear;
}

int CalendarModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_series ? 0 : weeksOfYear;
}

QDate CalendarModel::dayAt(const QModelIndex& index) const
{
    if (!index.isValid() || !m_series || index.row() % rowsOfYear == 0)
        return {};
    const int year = m_series->first.year() + index.row() / rowsOfYear;
    const int weekday = index.row() % rowsOfYear - 1;
    const QDate day =
        QDate(year, 1, 1).addDays(index.column() * weekdays + weekday - daysBefore(year));
    const bool isShown = day.year() == year && day >= m_series->first && day <= m_series->last;
    return isShown ? day : QDate();
}

QModelIndex CalendarModel::indexOf(const QDate& day) const
{
    if (!m_series || !day.isValid() || day < m_series->first || day > m_series->last)
        return {};
    const int above = (day.year() - m_series->first.year()) * rowsOfYear;
    return index(above + day.dayOfWeek(), weekOf(day));
}

QDate CalendarModel::nextWrongDay(const QDate& day, int step) const
{
    if (!m_series)
        return {};
    for (QDate next = day.addDays(step); next >= m_series->first && next <= m_series->last;
         next = next.addDays(step)) {
        if (isWrong(next) || stateOf(next) == State::Missing)
            return next;
    }
    return {};
}

CalendarModel::State CalendarModel::stateOf(const QDate& day) const
{
    if (!day.isValid())
        return State::Outside;
    if (const tadata::DayMark* const mark = m_series->mark(day))
        return mark->expected > 0 ? State::Stored : State::Unusual;
    if (isIn(m_series->missingDays, day))
        return State::Missing;
    if (isIn(m_series->closed, day))
        return State::Closed;
    return isIn(m_series->unproven, day) ? State::Unproven : State::Free;
}

double CalendarModel::shareOf(const QDate& day) const
{
    const tadata::DayMark* const mark = day.isValid() ? m_series->mark(day) : nullptr;
    return mark ? mark->share() : 0;
}

bool CalendarModel::isWrong(const QDate& day) const
{
    const tadata::DayHealth* const stored = day.isValid() ? m_series->remarks(day) : nullptr;
    return stored && stored->isWrong();
}

// What lacks is told by the colour.
bool CalendarModel::hasFault(const QDate& day) const
{
    const tadata::DayHealth* const stored = day.isValid() ? m_series->remarks(day) : nullptr;
    return stored && (!stored->badLines.empty() || stored->duplicates > 0 || stored->prices > 0 ||
                      !stored->jumps.empty());
}

QVariant CalendarModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || !m_series)
        return {};
    if (index.row() % rowsOfYear == 0)
        return titleAt(m_series->first.year() + index.row() / rowsOfYear, index.column(), role);
    const QDate day = dayAt(index);
    switch (role) {
    case StateRole:
        return static_cast<int>(stateOf(day));
    case ShareRole:
        return shareOf(day);
    case WrongRole:
        return hasFault(day);
    case TitleRole:
        return false;
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return day.isValid() ? tadata::dayInWords(*m_series, day) : QString();
    default:
        return {};
    }
}

// The year over the first week, and each month over the week in which it begins.
QVariant CalendarModel::titleAt(int year, int column, int role) const
{
    if (role == TitleRole)
        return true;
    if (role == StateRole)
        return static_cast<int>(State::Outside);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    constexpr int months = 12;
    for (int month = 1; month <= months; ++month) {
        if (weekOf(QDate(year, month, 1)) == column) {
            const QString name =
                QLocale().standaloneMonthName(month, QLocale::ShortFormat).remove(u'.');
            return month == 1 ? QStringLiteral("%1").arg(year) : name;
        }
    }
    return {};
}

QVariant CalendarModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Vertical || role != Qt::DisplayRole || section % rowsOfYear == 0)
        return {};
    const QStringList names{tr("Пн"), tr("Вт"), tr("Ср"), tr("Чт"), tr("Пт"), tr("Сб"), tr("Вс")};
    return names.at(section % rowsOfYear - 1);
}

Qt::ItemFlags CalendarModel::flags(const QModelIndex& index) const
{
    return dayAt(index).isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}
