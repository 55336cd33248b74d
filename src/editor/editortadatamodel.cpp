// SPDX-License-Identifier: MIT
#include "editortadatamodel.h"

#include "timeofdayrange.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/dayfilerewrite.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/filestate.h>

#include <algorithm>
#include <functional>
#include <utility>

using tadata::TimeOfDayRange;
using vexdesk::FieldLengths;

namespace {

// A column shows the field of its number.
constexpr int columns = vexdesk::RecordFieldCount;

} // namespace

EditorTADataModel::EditorTADataModel(QObject* parent)
    : QAbstractItemModel(parent)
{}

EditorTADataModel::~EditorTADataModel() = default;

void EditorTADataModel::load(const QDir& dir, const QDateTime& from, const QDateTime& to,
                             int timeframe)
{
    beginResetModel();
    m_dir = dir;
    m_fromDate = from.date();
    m_toDate = to.date();
    m_timeframe = timeframe;
    m_rows.clear();
    m_lengths = FieldLengths();
    m_rowsOfText.clear();
    const QList<QDate> days = listDays();
    m_loaded.clear();
    m_loaded.reserve(days.size());
    for (const QDate& day : days) {
        m_loaded.append(readDay(day, from, to));
        // Most days are about as long as the first one.
        if (day == days.first())
            m_rows.expectDays(days.size());
    }
    m_rows.squeeze();
    endResetModel();
}

QList<QDate> EditorTADataModel::listDays()
{
    const auto days = vexdesk::storedDays(m_dir, m_timeframe, m_fromDate, m_toDate);
    if (!days)
        m_problems.append(days.message());
    return days.valueOr(QList<QDate>());
}

QString EditorTADataModel::dayPath(const QDate& day) const
{
    return m_dir.filePath(vexdesk::dayFileName(day, m_timeframe));
}

EditorTADataModel::LoadedDay EditorTADataModel::readDay(const QDate& day, const QDateTime& from,
                                                        const QDateTime& to)
{
    vexdesk::DayFileLines lines(dayPath(day));
    if (!lines.open())
        return {day, std::nullopt};
    readLines(lines, day, TimeOfDayRange(day, from, to));
    const vexdesk::Outcome read = lines.outcome() && lines.isChanged()
                                      ? vexdesk::Failure{tr("он изменился, пока его читали")}
                                      : lines.outcome();
    if (read)
        return {day, lines.state()};
    takeBackDay();
    m_problems.append(tr("Бары файла %1 не показаны, потому что его не удалось прочитать до "
                         "конца: %2; покажите интервал ещё раз или импортируйте этот день заново.")
                          .arg(lines.path(), read.message()));
    return {day, std::nullopt};
}

void EditorTADataModel::readLines(vexdesk::DayFileLines& lines, const QDate& day,
                                  const TimeOfDayRange& range)
{
    if (range.isWholeDay()) {
        if (const auto text = lines.plainText()) {
            readWholeDay(day, *text);
            return;
        }
    }
    m_rows.beginDay(day);
    QByteArrayView line;
    while (lines.next(&line)) {
        const int second = vexdesk::secondOfRecordLine(line);
        switch (range.place(second)) {
        case TimeOfDayRange::Place::Before:
            break;
        case TimeOfDayRange::Place::After:
            return;
        case TimeOfDayRange::Place::Inside:
            if (isRecordLine(line))
                m_rows.append(second, line);
            else
                m_rows.appendBlank();
        }
    }
}

// Of the line that makes the next row.
bool EditorTADataModel::isRecordLine(QByteArrayView line)
{
    const FieldLengths::Line kind = m_lengths.add(line);
    if (kind == FieldLengths::Line::Text)
        m_rowsOfText.push_back(static_cast<int>(m_rows.size()));
    return kind != FieldLengths::Line::NoRecord;
}

void EditorTADataModel::takeBackDay()
{
    m_rows.takeBackDay();
    while (!m_rowsOfText.empty() && m_rowsOfText.back() >= m_rows.size())
        m_rowsOfText.pop_back();
}

// The rows are lines of the text as it was read.
void EditorTADataModel::readWholeDay(const QDate& day, const QByteArray& text)
{
    m_rows.beginDay(day, text);
    const char* begin = text.begin();
    while (const auto rest = static_cast<size_t>(text.end() - begin)) {
        const char* const found = std::char_traits<char>::find(begin, rest, '\n');
        const QByteArrayView line(begin, found ? found : text.end());
        if (isRecordLine(line))
            m_rows.append(vexdesk::secondOfRecordLine(line), begin - text.begin());
        else
            m_rows.appendBlank();
        begin = found ? found + 1 : text.end();
    }
}

int EditorTADataModel::find(const QString& key) const
{
    int low = 0;
    int high = rowCount();
    while (high - 1 > low) {
        const int middle = (low + high) / 2;
        if (key < m_rows.key(middle))
            high = middle;
        else
            low = middle;
    }
    return low;
}

void EditorTADataModel::delRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : std::as_const(rows)) {
        if (row < 0 || row >= rowCount())
            continue;
        beginRemoveRows(QModelIndex(), row, row);
        m_rows.remove(row);
        endRemoveRows();
    }
}

void EditorTADataModel::delRowsFromFiles(vexdesk::FileKeeper* keeper)
{
    for (const LoadedDay& loaded : std::as_const(m_loaded)) {
        if (!keep(loaded, keeper))
            break;
        rewrite(loaded);
    }
    for (const QDate& day : listDays()) {
        if (!isLoaded(day)) {
            m_problems.append(tr("Файл %1 не переписан: он появился после того, как был показан "
                                 "интервал; покажите интервал ещё раз и повторите удаление.")
                                  .arg(dayPath(day)));
        }
    }
    forget();
}

bool EditorTADataModel::keep(const LoadedDay& loaded, vexdesk::FileKeeper* keeper)
{
    if (!keeper || !loaded.state)
        return true;
    const vexdesk::Outcome kept = keeper->keep({dayPath(loaded.day)});
    if (!kept)
        m_problems.append(kept.message());
    return bool(kept);
}

void EditorTADataModel::rewrite(const LoadedDay& loaded)
{
    if (loaded.state) {
        const auto rewritten =
            vexdesk::rewriteDayFile(m_dir, vexdesk::dayFileName(loaded.day, m_timeframe),
                                    m_rows.rewritten(loaded.day), *loaded.state);
        if (!rewritten)
            m_problems.append(rewritten.message());
    } else if (const QString path = dayPath(loaded.day); !vexdesk::isMissing(path)) {
        m_problems.append(tr("Файл %1 не переписан: его не удалось прочитать; проверьте права на "
                             "файл или импортируйте этот день заново.")
                              .arg(path));
    }
}

bool EditorTADataModel::isLoaded(const QDate& day) const
{
    const auto found = std::lower_bound(
        m_loaded.begin(), m_loaded.end(), day,
        [](const LoadedDay& loaded, const QDate& wanted) { return loaded.day < wanted; });
    return found != m_loaded.end() && found->day == day;
}

QStringList EditorTADataModel::takeProblems()
{
    return std::exchange(m_problems, {});
}

// A view that is still attached must not go on showing rows that are gone.
void EditorTADataModel::forget()
{
    beginResetModel();
    m_dir = QDir(QString());
    m_timeframe = 0;
    m_fromDate = QDate();
    m_toDate = QDate();
    m_rows.clear();
    m_rowsOfText.clear();
    m_loaded.clear();
    endResetModel();
}

QModelIndex EditorTADataModel::index(int row, int column, const QModelIndex& parent) const
{
    return !parent.isValid() && hasIndex(row, column, parent) ? createIndex(row, column)
                                                              : QModelIndex();
}

QModelIndex EditorTADataModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int EditorTADataModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int EditorTADataModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant EditorTADataModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid() || !hasIndex(index.row(), index.column()))
        return QVariant();
    return m_rows.fieldText(index.row(), static_cast<vexdesk::RecordField>(index.column()));
}

QVariant EditorTADataModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractItemModel::headerData(section, orientation, role);
    switch (section) {
    case vexdesk::TimeField:
        return tr("Время");
    case vexdesk::OpenField:
        return tr("Открытие");
    case vexdesk::HighField:
        return tr("Максимум");
    case vexdesk::LowField:
        return tr("Минимум");
    case vexdesk::CloseField:
        return tr("Закрытие");
    case vexdesk::VolumeField:
        return tr("Объём в шт.");
    case vexdesk::ValueField:
        return tr("Объём в деньгах");
    case vexdesk::OpenInterestField:
        return tr("Откр. интерес");
    default:
        return QAbstractItemModel::headerData(section, orientation, role);
    }
}

Qt::ItemFlags EditorTADataModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}
