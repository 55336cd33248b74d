// SPDX-License-Identifier: MIT
#pragma once

#include "importoutlook.h"

#include <QtCore/QAbstractItemModel>

namespace tadata {

/// What is wrong or odd in the files: the kinds, and below each the lines that are listed of it.
/// User-interface thread.
class ProblemsModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        FileRole = Qt::UserRole, ///< of a line: the path of its file
        LineRole,                ///< of a line: its number from 1
    };

    explicit ProblemsModel(QObject* parent = nullptr);
    ~ProblemsModel() override;

    void setOutlooks(const std::vector<FileOutlook>& files);
    /// What is said of the lines of a file, by their numbers: for the preview.
    QMap<qint64, QString> noticesOf(const QString& file) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    struct Line
    {
        QString file;
        qint64 number = 0;
        QString text;
    };
    struct Kind
    {
        ProblemKind kind = ProblemKind::BadLine;
        qint64 count = 0; ///< of all
        std::vector<Line> lines = {};
        qint64 unlisted() const { return count - static_cast<qint64>(lines.size()); }
    };

    static QString textOf(const Kind& kind);
    QVariant dataOfKind(const Kind& kind, int role) const;
    QVariant dataOfLine(const Kind& kind, int row, int role) const;

    std::vector<Kind> m_kinds; ///< that occur
    bool m_hasManyFiles = false;
};

} // namespace tadata
