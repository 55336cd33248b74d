// SPDX-License-Identifier: MIT
#include "seriesmodel.h"

#include "dayremarks.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>

#include <algorithm>

using tadata::SeriesDigest;
using tadata::SharedDigest;

namespace {

// What a column is sorted by; names aside, in whose order the series are anyway.
double keyOf(const SeriesDigest& series, int column)
{
    switch (column) {
    case SeriesModel::Bars:
        return series.timeframe;
    case SeriesModel::Coverage:
        return series.share;
    case SeriesModel::First:
        return static_cast<double>(series.first.toJulianDay());
    case SeriesModel::Last:
        return static_cast<double>(series.last.toJulianDay());
    case SeriesModel::Count:
        return static_cast<double>(series.bars);
    case SeriesModel::Gaps:
        return static_cast<double>(series.sums.gaps);
    case SeriesModel::MissingDays:
        return static_cast<double>(series.missingDays.size());
    case SeriesModel::Broken:
        return static_cast<double>(series.brokenLines());
    case SeriesModel::Jumps:
        return static_cast<double>(series.sums.jumps);
    default:
        return 0;
    }
}

// Where there is nothing to tell, nothing catches the eye.
QString countText(qint64 count)
{
    return count == 0 ? QString() : QLocale().toString(count);
}

QString textAt(const SeriesDigest& series, int column)
{
    switch (column) {
    case SeriesModel::Series:
        return series.series;
    case SeriesModel::Bars:
        return tadata::timeframeText(series.timeframe);
    case SeriesModel::Coverage:
        return tadata::coverageText(series);
    case SeriesModel::First:
        return vexdesk::shownDate(series.first);
    case SeriesModel::Last:
        return vexdesk::shownDate(series.last);
    case SeriesModel::Count:
        return QLocale().toString(series.bars);
    case SeriesModel::Gaps:
        return countText(series.sums.gaps);
    case SeriesModel::MissingDays:
        return countText(series.missingDays.size());
    case SeriesModel::Broken:
        return countText(series.brokenLines());
    default:
        return countText(series.sums.jumps);
    }
}

} // namespace

SeriesModel::SeriesModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

SeriesModel::~SeriesModel() = default;

void SeriesModel::setSeries(const QList<SharedDigest>& series)
{
    m_all = series;
    arrange();
}

void SeriesModel::setFilter(const QString& words)
{
    const QStringList wanted = words.split(u' ', Qt::SkipEmptyParts);
    if (wanted == m_words)
        return;
    m_words = wanted;
    arrange();
}

void SeriesModel::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_order = order;
    arrange();
}

bool SeriesModel::isShown(const SeriesDigest& series) const
{
    return std::all_of(m_words.begin(), m_words.end(), [&series](const QString& word) {
        return series.series.contains(word, Qt::CaseInsensitive);
    });
}

void SeriesModel::arrange()
{
    beginResetModel();
    m_rows.clear();
    for (qsizetype i = 0; i < m_all.size(); ++i) {
        if (isShown(*m_all.at(i)))
            m_rows.push_back(i);
    }
    if (m_sortColumn == Series) {
        if (m_order == Qt::DescendingOrder)
            std::reverse(m_rows.begin(), m_rows.end());
    } else {
        std::stable_sort(m_rows.begin(), m_rows.end(), [this](qsizetype left, qsizetype right) {
            const double one = keyOf(*m_all.at(left), m_sortColumn);
            const double other = keyOf(*m_all.at(right), m_sortColumn);
            return m_order == Qt::AscendingOrder ? one < other : other < one;
        });
    }
    endResetModel();
}

QList<SharedDigest> SeriesModel::shown() const
{
    QList<SharedDigest> series;
    for (const qsizetype row : m_rows)
        series.append(m_all.at(row));
    return series;
}

const SharedDigest& SeriesModel::seriesAt(int row) const
{
    return m_all.at(m_rows[static_cast<size_t>(row)]);
}

int SeriesModel::rowOf(const QString& series, int timeframe) const
{
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [this, &series, timeframe](qsizetype row) {
            return m_all.at(row)->timeframe == timeframe && m_all.at(row)->series == series;
        });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

int SeriesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int SeriesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SeriesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::DisplayRole)
        return textAt(*seriesAt(index.row()), index.column());
    const bool isNumber = index.column() >= Coverage && index.column() <= Count;
    if (role == Qt::TextAlignmentRole && isNumber)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant SeriesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    const QStringList titles{tr("Серия"),    tr("Бары"),   tr("Покрытие"), tr("Разрывы"),
                             tr("Нет дней"), tr("Ошибки"), tr("Скачки"),   tr("Баров"),
                             tr("С"),        tr("По")};
    const QStringList meanings{tr("Биржа, режим торгов и инструмент"),
                               tr("Длина баров"),
                               tr("Доля обычных времён, в которые есть бары"),
                               tr("Сколько раз подряд не хватает пяти обычных времён и больше"),
                               tr("Дни, которые есть у соседних серий, а здесь их нет"),
                               tr("Строки не баров, повторы времени, невозможные цены"),
                               tr("Открытия дальше 10 % от закрытия предыдущего бара"),
                               tr("Сколько баров хранится"),
                               tr("Первый хранимый день"),
                               tr("Последний хранимый день")};
    if (role == Qt::DisplayRole)
        return titles.value(section);
    return role == Qt::ToolTipRole ? meanings.value(section) : QVariant();
}
