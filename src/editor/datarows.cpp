// SPDX-License-Identifier: MIT
#include "datarows.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>

namespace tadata {

void DataRows::clear()
{
    *this = DataRows();
}

void DataRows::beginDay(const QDate& day, const QByteArray& text)
{
    m_days.push_back({day, day.toString(QStringLiteral("yyyyMMdd ")), text});
}

void DataRows::takeBackDay()
{
    m_rows.resize(static_cast<size_t>(firstRowOfDay(static_cast<quint32>(m_days.size() - 1))));
    m_days.pop_back();
}

void DataRows::append(int secondOfDay, qsizetype begin)
{
    m_rows.push_back({static_cast<quint32>(m_days.size() - 1), secondOfDay, begin});
}

void DataRows::append(int secondOfDay, QByteArrayView line)
{
    QByteArray& text = m_days.back().text;
    const qsizetype begin = text.size();
    append(secondOfDay, begin);
    text.resize(begin + line.size() + 1);
    char* const end = std::copy(line.begin(), line.end(), text.data() + begin);
    *end = '\n';
}

void DataRows::appendBlank()
{
    m_rows.push_back({static_cast<quint32>(m_days.size() - 1), blank, 0});
}

void DataRows::expectDays(qsizetype count)
{
    // Should the days be much shorter, squeeze() takes back what is too much.
    constexpr qsizetype most = qsizetype(8) * 1000 * 1000;
    m_rows.reserve(static_cast<size_t>(std::min(most, size() * count)));
}

void DataRows::squeeze()
{
    const auto gap = m_rows.begin() + m_gap;
    m_rows.erase(gap, gap + m_gapSize);
    m_gap = 0;
    m_gapSize = 0;
    // To give back a little would cost a copy of all the rest.
    if (m_rows.capacity() - m_rows.size() > m_rows.size() / 8)
        m_rows.shrink_to_fit();
    for (Day& day : m_days)
        day.text.squeeze();
}

qsizetype DataRows::memory() const
{
    auto bytes = static_cast<qsizetype>(m_rows.capacity()) * qsizetype(sizeof(DataRow));
    for (const Day& day : m_days)
        bytes += day.text.capacity() + static_cast<qsizetype>(sizeof(Day));
    return bytes;
}

void DataRows::remove(qsizetype row)
{
    DataRow* const rows = m_rows.data();
    if (m_gapSize == 0) {
        m_gap = row;
    } else if (row < m_gap) {
        std::move_backward(rows + row + 1, rows + m_gap, rows + m_gap + m_gapSize);
        m_gap = row;
    } else {
        std::move(rows + m_gap + m_gapSize, rows + row + m_gapSize, rows + m_gap);
        m_gap = row;
    }
    ++m_gapSize;
}

QString DataRows::timeText(qsizetype row) const
{
    const DataRow& entry = at(row);
    if (entry.second == blank)
        return QString();
    // The notation has no zone in it. Taken as UTC, which skips no time, every bar shows its own.
    const QDateTime time(date(entry), QTime(0, 0).addSecs(entry.second), Qt::UTC);
    return QLocale().toString(time, QLocale::ShortFormat);
}

QString DataRows::fieldText(qsizetype row, vexdesk::RecordField field) const
{
    const DataRow& entry = at(row);
    if (entry.second == blank)
        return QString();
    return field == vexdesk::TimeField
               ? timeText(row)
               : vexdesk::textFromUtf8((*vexdesk::splitRecordLine(line(entry)))[field]);
}

QString DataRows::key(qsizetype row) const
{
    const DataRow& entry = at(row);
    if (entry.second == blank)
        return QString();
    const auto time = vexdesk::plainTime(entry.second);
    return m_days[entry.day].keyBegin +
           QLatin1String(time.data(), static_cast<qsizetype>(time.size()));
}

QByteArray DataRows::rewritten(const QDate& day) const
{
    const auto found =
        std::lower_bound(m_days.begin(), m_days.end(), day,
                         [](const Day& known, const QDate& wanted) { return known.date < wanted; });
    if (found == m_days.end() || found->date != day)
        return QByteArray();
    const auto index = static_cast<quint32>(found - m_days.begin());
    QByteArray content;
    content.reserve(found->text.size());
    const qsizetype end = firstRowOfDay(index + 1);
    for (qsizetype row = firstRowOfDay(index); row < end; ++row) {
        const DataRow& entry = at(row);
        if (entry.second == blank)
            continue;
        vexdesk::RecordFields fields = *vexdesk::splitRecordLine(line(entry));
        const auto time = vexdesk::plainTime(entry.second);
        fields[vexdesk::TimeField] =
            QByteArrayView(time.data(), static_cast<qsizetype>(time.size()));
        vexdesk::appendRewritten(content, fields);
    }
    return content;
}

QByteArrayView DataRows::line(const DataRow& row) const
{
    const QByteArray& text = m_days[row.day].text;
    const QByteArrayView rest = QByteArrayView(text).sliced(row.begin);
    const qsizetype end = rest.indexOf('\n');
    return end < 0 ? rest : rest.first(end);
}

qsizetype DataRows::firstRowOfDay(quint32 day) const
{
    qsizetype begin = 0;
    qsizetype count = size();
    while (count > 0) {
        const qsizetype half = count / 2;
        if (at(begin + half).day < day) {
            begin += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return begin;
}

} // namespace tadata
