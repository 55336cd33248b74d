// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtWidgets/QHeaderView>

class QComboBox;
class QWheelEvent;
class QWizardPage;

/// A table header with a box in each section in which the user says what the column carries.
/// The item's index is the number of the ColumnRole. The table owns the header.
class ColumnsHeader final : public QHeaderView
{
    Q_OBJECT

public:
    /// The page's completeChanged() follows every choice.
    explicit ColumnsHeader(QWizardPage* page, QWidget* parent = nullptr);

    /// The box of a section.
    QComboBox* box(int section) const { return m_boxes.at(section); }
    /// The boxes, in the order of the sections; none before fill().
    const QList<QComboBox*>& boxes() const { return m_boxes; }

    /// Makes a box for each section of the model. Call it once, when the table has the header.
    void fill();
    /// Makes a box with the roles, a child of the header that belongs to no section yet.
    QComboBox* newHeaderBox();

    /// How wide a section is at first, so that the roles of its box can be read.
    static int sectionWidth(const QComboBox& box);
    /// What the boxes offer, in the order of ColumnRole.
    static QStringList roleTitles();

public Q_SLOTS:
    /// Puts each box over its section.
    void fixComboPositions();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeBox(int section);
    void showSection(const QComboBox* box) const;
    void scrollTable(QWheelEvent* event) const;

    QWizardPage* m_page;
    QList<QComboBox*> m_boxes;
};
