// SPDX-License-Identifier: MIT
#pragma once

#include "importdetails.h"

#include <QtCore/QList>
#include <QtWidgets/QHeaderView>

class QComboBox;

/// A table header with a box above each column in which the user says what the column carries. A
/// table owns it. User-interface thread.
class RolesHeader final : public QHeaderView
{
    Q_OBJECT

public:
    explicit RolesHeader(QWidget* parent = nullptr);
    ~RolesHeader() override;

    /// A box for each section of the model; call it when these are others.
    void makeBoxes();
    /// Shows these, as ImportDetails::columns has them.
    void setColumns(const QMap<qint32, qint32>& columns);
    QComboBox* box(int section) const { return m_boxes.value(section); }
    /// Boxes that are disabled keep their places.
    void setBoxesEnabled(bool enabled);

    QSize sizeHint() const override;

public Q_SLOTS:
    void placeBoxes();

Q_SIGNALS:
    /// By the user. None: the column is not imported.
    void roleChosen(int column, ColumnRole role);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void updateGeometries() override;

private:
    QComboBox* newBox(int section);
    void showSection(const QComboBox* box) const;

    QMap<qint32, qint32> m_columns;
    QList<QComboBox*> m_boxes;
};
