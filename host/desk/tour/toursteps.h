#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <functional>

class QComboBox;

/// Steps and look-ups that the tours of several commands share. User-interface thread only.
namespace vexdesk {

class MainWindow;
class Tour;

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

/// Goes from a menu of the menu bar over its sub-menus to a command. Pictures of the window and of
/// the menu that holds the command are taken when they are given a name.
void addMenuPath(Tour& tour, MainWindow& window, const QStringList& path,
                 const QString& windowPicture = QString(), const QString& menuPicture = QString());

/// The same to a command of the history plug-in.
void addMenuSteps(Tour& tour, MainWindow& window, const QString& command,
                  const QString& windowPicture = QString(), const QString& menuPicture = QString());

/// Opens a list with the mouse and chooses an entry with the keyboard: the one with this text or
/// code, or the first one that begins so. The picture is of the open list.
void addChoice(Tour& tour, const QString& title, const std::function<QComboBox*()>& list,
               const QString& entry, const QString& picture = QString());

/// Goes to a field as the Tab key does, which selects what is in it, and types this text over it:
/// in a line of text as it is, in a field of dates or numbers its digits alone.
void addTyping(Tour& tour, const QString& title, const std::function<QWidget*()>& field,
               const QString& text);

/// Chooses the demonstration's series in the boxes "stock", "board" and "security", which `box`
/// finds by their names. The picture is of the open list of securities.
void addSeriesChoice(Tour& tour, const std::function<QComboBox*(const char*)>& box,
                     const QString& picture = QString());

} // namespace vexdesk
