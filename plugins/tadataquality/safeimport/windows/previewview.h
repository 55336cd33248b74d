// SPDX-License-Identifier: MIT
#pragma once

#include "previewmodel.h"

#include <QtWidgets/QWidget>

class QScrollBar;
class QTableView;
class RolesHeader;

/// Shows a file with the roles above its columns, and in red what an import refuses of it. The
/// scroll bar and the keys go through the whole file, of which only the lines in view are read.
/// User-interface thread.
class PreviewView final : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewView(QWidget* parent = nullptr);
    ~PreviewView() override;

    tadata::PreviewModel& model() const { return *m_model; }
    RolesHeader& roles() const { return *m_roles; }
    QTableView* table() const { return m_table; }

    /// Brings a line (from 1) into view and makes it the current one.
    void showLine(qint64 number);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitPage();
    void followModel();
    bool takeKey(int key, bool isControl);
    bool takeWheel(int delta);
    void scrollBy(qint64 lines);
    void makeCurrent(int row);

    tadata::PreviewModel* m_model;
    QTableView* m_table;
    RolesHeader* m_roles;
    QScrollBar* m_bar;
    qint64 m_wanted = 0; ///< the line to be made the current one, when there are columns; or 0
    int m_wheel = 0;     ///< turned by less than a line
};
