// SPDX-License-Identifier: MIT
#include "plaineditor.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>

#include <algorithm>

namespace {

constexpr int fieldCount = 8;

QString fileName(const QDate& day, int timeframe)
{
    return day.toString(QStringLiteral("yyyyMMdd")) + u'_' + QString::number(timeframe) +
           QStringLiteral(".iss");
}

// Or on one beside it. By noons: a midnight that comes twice is one moment or the other, as the
// C library happens to take it.
bool isClockChanged(const QDate& day)
{
    const auto offset = [](const QDate& date) {
        return QDateTime(date, QTime(12, 0)).offsetFromUtc();
    };
    return offset(day.addDays(-1)) != offset(day.addDays(1));
}

// Moments, except on a day on which the clock is changed: there a time may be no moment or two of
// them, and what the clock shows is compared.
bool isBefore(const QDateTime& left, const QDateTime& right)
{
    if (!isClockChanged(left.date()) && !isClockChanged(right.date()))
        return left < right;
    const auto shown = [](const QDateTime& time) {
        const QDateTime local = time.timeSpec() == Qt::LocalTime ? time : time.toLocalTime();
        return QDateTime(local.date(), local.time(), Qt::UTC);
    };
    return shown(left) < shown(right);
}

} // namespace

PlainEditor::Row PlainEditor::row(const QDate& day, const QTime& time, const QStringList& fields)
{
    if (fields.size() != fieldCount)
        return {QString(), QStringList(fieldCount, QString()), QString()};
    const QTime known = time.isValid() ? time : QTime(0, 0);
    QDateTime dateTime(day, known);
    // A time that the local clock skips: the day and the time of the file.
    if (!dateTime.isValid() || dateTime.date() != day || dateTime.time() != known)
        dateTime = QDateTime(day, known, Qt::UTC);
    return {QLocale().toString(dateTime, QLocale::ShortFormat), fields,
            dateTime.toString(QStringLiteral("yyyyMMdd hhmmss"))};
}

void PlainEditor::load(const QDir& dir, const QDateTime& from, const QDateTime& to, int timeframe)
{
    m_dir = dir;
    m_from = from.date();
    m_to = to.date();
    m_timeframe = timeframe;
    m_rows.clear();
    for (QDate day = m_from; day.isValid() && day <= m_to; day = day.addDays(1)) {
        QFile file(dir.filePath(fileName(day, timeframe)));
        if (!file.exists() || !file.open(QIODevice::ReadOnly))
            continue;
        QTextStream stream(&file);
        while (!stream.atEnd()) {
            const QStringList fields = stream.readLine().split(u';');
            const QTime time = QTime::fromString(fields.first(), QStringLiteral("hhmmss"));
            const QDateTime dateTime(day, time.isValid() ? time : QTime(0, 0));
            if (isBefore(dateTime, from))
                continue;
            if (isBefore(to, dateTime))
                break;
            m_rows.append(row(day, time, fields));
        }
    }
}

int PlainEditor::find(const QString& key) const
{
    int low = 0;
    int high = static_cast<int>(m_rows.size());
    while (high - 1 > low) {
        const int middle = (low + high) / 2;
        if (key < m_rows.at(middle).key)
            high = middle;
        else
            low = middle;
    }
    return low;
}

void PlainEditor::remove(QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    while (!rows.isEmpty()) {
        const int row = rows.takeLast();
        if (row >= 0 && row < m_rows.size())
            m_rows.removeAt(row);
    }
}

void PlainEditor::rewrite()
{
    for (QDate day = m_from; day.isValid() && day <= m_to; day = day.addDays(1)) {
        QFile file(m_dir.filePath(fileName(day, m_timeframe)));
        if (!file.exists() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            continue;
        QTextStream stream(&file);
        const QString dayText = day.toString(QStringLiteral("yyyyMMdd"));
        for (const Row& row : std::as_const(m_rows)) {
            const QStringList key = row.key.split(u' ');
            if (key.first() != dayText)
                continue;
            const QStringList& fields = row.fields;
            stream << key.at(1) << ';' << fields.at(1) << ';' << fields.at(2) << ';' << fields.at(3)
                   << ';' << fields.at(4) << ';' << fields.at(6) << ';' << fields.at(5) << ';'
                   << fields.at(7) << '\n';
        }
        stream.flush();
        const bool isEmpty = file.size() == 0;
        file.close();
        if (isEmpty)
            file.remove();
    }
    *this = PlainEditor();
}

QList<QStringList> PlainEditor::table() const
{
    QList<QStringList> table;
    for (const Row& row : m_rows) {
        QStringList texts = row.fields;
        texts.first() = row.timeText;
        table.append(texts);
    }
    return table;
}

QStringList PlainEditor::keys() const
{
    QStringList keys;
    for (const Row& row : m_rows)
        keys.append(row.key);
    return keys;
}

QList<QStringList> tableOf(const QAbstractItemModel& model)
{
    QList<QStringList> rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList texts;
        for (int column = 0; column < model.columnCount(); ++column)
            texts.append(model.index(row, column).data().toString());
        rows.append(texts);
    }
    return rows;
}
