// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtWidgets/QMessageBox>

#include <functional>
#include <memory>

class QPluginLoader;
namespace vexdesk {
class Core;
}

/// What the tests of the plug-in's commands share: the plug-in loaded from its file into a core,
/// and the windows that a command shows.
namespace testsupport {

class ModalSteps;

/// The plug-in in a terminal of its own, whose data are the folder "user" beside the test's
/// program. Each test makes one and ends it; what the terminal stored goes with it.
class LoadedPlugin final
{
public:
    LoadedPlugin();
    /// Unloads the plug-in and removes the folder; fails the test when a window is left.
    ~LoadedPlugin();

    vexdesk::Core& core() const { return *m_core; }
    /// The terminal's data directory; the plug-in may not have made it yet.
    QDir user() const { return m_user; }
    QDir store() const { return QDir(m_user.filePath(QStringLiteral("tadata"))); }

    /// Triggers the command as the menu does and returns when it is over.
    static void trigger(const char* command);

private:
    Q_DISABLE_COPY_MOVE(LoadedPlugin)

    QDir m_user;
    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<QPluginLoader> m_loader;
};

/// A message box as the user saw it.
struct Shown
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    bool hasParent = true;
    Qt::TextFormat format = Qt::PlainText; ///< of names and fields nothing is taken for markup
    bool titleFits = true;                 ///< into the title bar of a common window manager
    QString details = QString();

    bool operator==(const Shown& other) const = default;
};

/// For QCOMPARE, which finds it by this name.
char* toString(const Shown& shown);

/// Boxes without a parent and with a button OK alone.
Shown warning(const QString& title, const QString& text);
Shown information(const QString& title, const QString& text);

/// Reads the next message box and closes it with OK.
void readBox(ModalSteps& steps, Shown* shown);

/// Closes the window as the window system does when the user asks for it; false when it refuses.
bool closeFromOutside(QWidget* window);

/// Runs something when a window of a class is about to be seen, before the event loop of that
/// window begins.
class WhenShown final : public QObject
{
public:
    WhenShown(const char* className, std::function<void(QWidget*)> act);
    int times() const { return m_times; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const char* m_className;
    std::function<void(QWidget*)> m_act;
    int m_times = 0;
};

} // namespace testsupport
