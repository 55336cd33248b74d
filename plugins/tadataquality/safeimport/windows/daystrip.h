// SPDX-License-Identifier: MIT
#pragma once

#include "importoutlook.h"

#include <QtWidgets/QWidget>

/// The days that an import would come to, one beside the other, coloured by what becomes of them;
/// what loses bars has a red mark. Where there are more days than room, neighbours share a place.
/// The arrow keys, Home and End go from day to day, and what is said of each is its description for
/// screen readers. User-interface thread.
class DayStrip final : public QWidget
{
    Q_OBJECT

public:
    explicit DayStrip(QWidget* parent = nullptr);
    ~DayStrip() override;

    void setDays(const std::vector<tadata::OutlookDay>& days);
    /// The day on which the user is; -1 without any.
    int currentDay() const { return m_current; }
    /// What is said of a day or of those that share its place.
    QString sentenceAt(int day) const;
    /// Where a day is painted.
    QRect placeOf(int day) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// By the user.
    void dayChosen(int day);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void arrange();
    QRect placeOfCell(size_t cell) const;
    int cellAt(const QPoint& point) const;
    size_t cellOf(int day) const;
    void choose(int day);

    std::vector<tadata::OutlookDay> m_days;
    std::vector<tadata::OutlookCell> m_cells;
    int m_current = -1;
};
