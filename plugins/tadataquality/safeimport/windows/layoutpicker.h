// SPDX-License-Identifier: MIT
#pragma once

#include "filelayout.h"

#include <QtWidgets/QWidget>

class QCheckBox;
class QComboBox;

/// The boxes that show what the lines of a file look like, and in which the user says so where the
/// guess is wrong. User-interface thread.
class LayoutPicker final : public QWidget
{
    Q_OBJECT

public:
    explicit LayoutPicker(QWidget* parent = nullptr);
    ~LayoutPicker() override;

    /// Shows that nothing is known.
    void clear();
    /// Shows a layout; what was not found is not chosen.
    void show(const tadata::FileLayout& layout);
    /// Adds what the user has just chosen.
    tadata::GivenLayout given(tadata::GivenLayout before) const;

Q_SIGNALS:
    /// By the user.
    void layoutChosen();

private:
    void choose(QComboBox* box, const QString& pattern, const QString& title);

    QComboBox* m_separator;
    QComboBox* m_date;
    QComboBox* m_time;
    QComboBox* m_timeframe;
    QCheckBox* m_header;
    QObject* m_touched = nullptr; ///< what the user has just changed
};
