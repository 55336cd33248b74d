// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"

#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class QComboBox;
class QMenu;
class QPushButton;
class QToolButton;

/// The files that are to be imported, and which of them is shown. Asks for others by a dialog, or
/// by the list of those that were imported last. User-interface thread.
class FilesPicker final : public QWidget
{
    Q_OBJECT

public:
    explicit FilesPicker(QWidget* parent = nullptr);
    ~FilesPicker() override;

    void setFiles(const QStringList& files);
    /// The one that is shown; empty without any.
    QString current() const;
    void setCurrent(const QString& file);
    /// Others were imported last.
    void fillRecent();

Q_SIGNALS:
    /// By the user.
    void filesChosen(const QStringList& files);
    void currentChanged();

private:
    void ask();
    void showMissing(const QStringList& files);

    QComboBox* m_files;
    QPushButton* m_open;
    QToolButton* m_recent;
    QMenu* m_menu;
    tadata::BackgroundTask<QStringList> m_looking; // last: it ends before the rest goes
};
