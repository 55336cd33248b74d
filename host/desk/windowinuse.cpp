// SPDX-License-Identifier: MIT
#include "desk/windowinuse.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

#include <algorithm>

namespace vexdesk {

QWidget* windowInUse()
{
    // A dialog that has just closed may be the active one for a moment, or leave the keys nowhere.
    QWidget* active = QApplication::activeWindow();
    while (active && !active->isVisible())
        active = active->parentWidget() ? active->parentWidget()->window() : nullptr;
    if (active)
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && qobject_cast<const QMainWindow*>(window);
    });
    return found == windows.end() ? nullptr : *found;
}

} // namespace vexdesk
