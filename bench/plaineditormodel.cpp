// SPDX-License-Identifier: MIT
#include "plaineditormodel.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>

#include <algorithm>
#include <functional>
#include <utility>

PlainEditorModel::PlainEditorModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

void PlainEditorModel::load(const QDir& dir, const QDateTime& from, const QDateTime& to,
                            int timeframe)
{
    beginResetModel();
    m_rows.clear();
    for (QDate day = from.date(); day <= to.date(); day = day.addDays(1)) {
        const QString name = QStringLiteral("%1_%2.iss")
                                 .arg(day.toString(QStringLiteral("yyyyMMdd")))
                                 .arg(timeframe);
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            continue;
        QTextStream stream(&file);
        while (!stream.atEnd()) {
            const QStringList fields = stream.readLine().split(u';');
            const QDateTime time(day, QTime::fromString(fields[0], QStringLiteral("hhmmss")));
            if (time < from)
                continue;
            if (to < time)
                break;
            DataRow row;
            if (fields.size() == columns) {
                row.fields[0] = QLocale().toString(time, QLocale::ShortFormat);
                std::copy(fields.begin() + 1, fields.end(), row.fields.begin() + 1);
                row.key = time.toString(QStringLiteral("yyyyMMdd hhmmss"));
            }
            m_rows.append(row);
        }
    }
    endResetModel();
}

int PlainEditorModel::find(const QString& key) const
{
    int low = 0;
    int high = rowCount();
    while (high - 1 > low) {
        const int middle = (low + high) / 2;
        (key < m_rows[middle].key ? high : low) = middle;
    }
    return low;
}

void PlainEditorModel::delRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : std::as_const(rows)) {
        beginRemoveRows(QModelIndex(), row, row);
        m_rows.removeAt(row);
        endRemoveRows();
    }
}

int PlainEditorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int PlainEditorModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant PlainEditorModel::data(const QModelIndex& index, int role) const
{
    return role == Qt::DisplayRole && index.isValid()
               ? QVariant(m_rows[index.row()].fields[index.column()])
               : QVariant();
}
