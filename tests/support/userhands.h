// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QAbstractButton;
class QComboBox;
class QDate;
class QDateEdit;
class QLineEdit;
class QWidget;

/// What a user does with mouse and keys. Each function fails the test when the thing cannot be
/// done because it is hidden, disabled or not there.
namespace testsupport {

/// Clicks a button.
void click(QAbstractButton* button);

/// Opens the list of a box with the mouse and takes an item with arrow keys and Return.
void choose(QComboBox* box, int index);
/// The item with this text or, where there is none, the first whose text begins so.
void choose(QComboBox* box, const QString& beginning);

/// Types a text over the one that is shown, or empties the field.
void type(QLineEdit* edit, const QString& text);
/// Types a date over the one that is shown, in whatever order the editor shows it.
void typeDate(QDateEdit* edit, const QDate& date);

/// Drops files on a window as a file manager does, and tells whether it took them.
[[nodiscard]] bool dropFiles(QWidget* window, const QStringList& paths);

/// While it lives, the letters that are typed into a list belong together, however slow the
/// machine is.
class UnhurriedTyping final
{
public:
    UnhurriedTyping();
    ~UnhurriedTyping();

private:
    Q_DISABLE_COPY_MOVE(UnhurriedTyping)

    int m_before;
};

/// Presses Tab, as often as it takes to come round, and tells which widgets had the focus, the one
/// that has it now first. A field through whose parts Tab goes counts once.
QList<QWidget*> tabOrder(QWidget* window);

} // namespace testsupport
