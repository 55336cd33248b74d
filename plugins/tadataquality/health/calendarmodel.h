// SPDX-License-Identifier: MIT
#pragma once

#include "healthdigest.h"

#include <QtCore/QAbstractTableModel>

/// The days of a series as a calendar: weeks across, weekdays down, the years one below the other.
/// Above the seven rows of a year there is one with its number and its months. User-interface
/// thread.
class CalendarModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// What is known of a day.
    enum class State {
        Outside,  ///< no day of the year, or one before the first or behind the last stored one
        Free,     ///< no file, and none is expected
        Stored,   ///< a file with usual times
        Unusual,  ///< a file, but no usual times to compare it with
        Missing,  ///< no file, though others have one
        Closed,   ///< no file, and no other has one
        Unproven, ///< no file, and there is no other to ask
    };
    enum Role {
        StateRole = Qt::UserRole, ///< a State, as a number
        ShareRole,                ///< of usual times that have bars, 0 to 1; of stored days
        WrongRole,                ///< whether something is wrong with what is stored, not lacking
        TitleRole,                ///< whether it stands in the row above a year
    };

    explicit CalendarModel(QObject* parent = nullptr);
    ~CalendarModel() override;

    /// Null for none.
    void setSeries(const tadata::SharedDigest& series);
    const tadata::SharedDigest& series() const { return m_series; }

    /// Not valid where there is none between the first and the last stored day.
    QDate dayAt(const QModelIndex& index) const;
    QModelIndex indexOf(const QDate& day) const;
    /// The stored day after it that is wrong, or missing; before it where `step` is -1. Not valid
    /// where there is none.
    QDate nextWrongDay(const QDate& day, int step) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    State stateOf(const QDate& day) const;
    double shareOf(const QDate& day) const;
    bool isWrong(const QDate& day) const;
    bool hasFault(const QDate& day) const;
    QVariant titleAt(int year, int column, int role) const;

    tadata::SharedDigest m_series;
};
