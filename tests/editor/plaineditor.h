// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractItemModel>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the editor's model does, done the plain way: with a text stream, lists of text and a
/// date-time for every bar. It shares nothing with the model. Slow and easy to read.
class PlainEditor final
{
public:
    void load(const QDir& dir, const QDateTime& from, const QDateTime& to, int timeframe);
    int find(const QString& key) const;
    void remove(QList<int> rows);
    void rewrite();

    /// The eight texts of each row.
    QList<QStringList> table() const;
    /// What find() compares.
    QStringList keys() const;

private:
    struct Row
    {
        QString timeText;
        QStringList fields;
        QString key;
    };
    static Row row(const QDate& day, const QTime& time, const QStringList& fields);

    QList<Row> m_rows;
    QDir m_dir;
    QDate m_from;
    QDate m_to;
    int m_timeframe = 0;
};

/// The texts that a model shows: what table() is to be compared with.
QList<QStringList> tableOf(const QAbstractItemModel& model);
