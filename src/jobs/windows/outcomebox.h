// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QMessageBox>

/// A message box that tells how a command went: no parent, a button OK, and the text as it is,
/// whatever a file's name or a field looks like. A long text is shown with its middle left out, and
/// its beginning is under details; the window stays quick however long the text is.
/// User-interface thread.
class OutcomeBox final : public QMessageBox
{
    Q_OBJECT

public:
    OutcomeBox(QMessageBox::Icon icon, const QString& title, const QString& text);

    /// Shows a box and returns when the user has closed it.
    static void tell(QMessageBox::Icon icon, const QString& title, const QString& text);

    /// What the box shows of a text: all of it as long as it fits.
    static QString shown(const QString& text);
    /// What stands under details: all of the text as long as a window can show it in no time.
    static QString details(const QString& text);

private:
    /// Window managers cut a title that is longer than its window is wide.
    void makeRoomForTitle();
};
