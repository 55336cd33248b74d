// SPDX-License-Identifier: MIT
#pragma once

#include "tour/tour.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QVariant>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QWidget>
#include <QtWidgets/QWizard>

#include <functional>

class QAbstractButton;
class QComboBox;
class QDateTimeEdit;

/// Steps and look-ups that the tours of several commands share. User-interface thread only.
namespace vexdesk {

class MainWindow;

/// The modal dialog in front, or null when it is none of this class.
template <typename Dialog>
Dialog* activeDialog()
{
    return qobject_cast<Dialog*>(QApplication::activeModalWidget());
}

/// A widget of the modal dialog in front; null when there is none of this class and name.
template <typename Widget>
Widget* inDialog(const char* name)
{
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog ? dialog->findChild<Widget*>(QLatin1String(name)) : nullptr;
}

/// Goes from a menu of the menu bar over its sub-menus to the command with this id. Pictures of the
/// window and of the menu that holds the command are taken when they are given a name.
void addMenuSteps(Tour& tour, MainWindow& window, const QByteArray& command,
                  const QString& windowPicture = QString(), const QString& menuPicture = QString());

/// Whether some menu has the command.
bool isInMenu(const QByteArray& command);

/// Chooses a file in the open file dialog, by its name. The picture is of the name typed in.
void addFileChoice(Tour& tour, const QString& file, const QString& picture = QString());

/// Clicks on a button that is enabled, as soon as the check holds.
void addClick(Tour& tour, const QString& title, const std::function<QAbstractButton*()>& button,
              const StepCheck& check = {}, const QString& picture = QString());

/// Whether the modal dialog in front is a wizard that shows the page of this object name.
Outcome isOnPage(const char* name);

/// Clicks on a button of the wizard when it shows this page and the check holds.
void addWizardClick(Tour& tour, const char* page, QWizard::WizardButton button,
                    const StepCheck& check = {}, const QString& picture = QString());

/// Answers the message box of this kind.
void addAnswer(Tour& tour, const QString& title, QMessageBox::Icon kind,
               QMessageBox::StandardButton answer, const QString& picture = QString());

/// Waits until no dialog is open and the check holds.
void addLook(Tour& tour, const QString& title, const StepCheck& check);

/// Which entry of a list is meant, whatever the language of its text: a number, or -1 where the
/// list does not have it.
using EntryFinder = std::function<int(const QComboBox&)>;

/// The entry with this item data.
EntryFinder entryWith(const QVariant& data);
/// The entry that is this code, or in which it stands before a name.
EntryFinder entryOfCode(const QString& code);
/// The entry with this number, counted from 0.
EntryFinder entryAt(int index);

/// Opens a list with the mouse and chooses an entry with the keyboard. The picture is of the open
/// list.
void addChoice(Tour& tour, const QString& title, const std::function<QComboBox*()>& list,
               const EntryFinder& entry, const QString& picture = QString());

/// Goes to a field as the Tab key does, which selects what is in it, and types this text over it:
/// in a line of text as it is, in a field of dates or numbers its digits alone.
void addTyping(Tour& tour, const QString& title, const std::function<QWidget*()>& field,
               const QString& text);

/// The same for a field of a date, or of a date and a time: part by part, in the order in which the
/// field shows them.
void addTyping(Tour& tour, const QString& title, const std::function<QDateTimeEdit*()>& field,
               const QDateTime& moment);

/// Chooses the demonstration's series in the boxes "stock", "board" and "security", which `box`
/// finds by their names. The picture is of the open list of securities.
void addSeriesChoice(Tour& tour, const std::function<QComboBox*(const char*)>& box,
                     const QString& picture = QString());

} // namespace vexdesk
