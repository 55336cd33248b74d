// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtWidgets/QMessageBox>

#include <functional>

class QProgressDialog;

/// What the tests of the plug-in's commands share: the windows that a command shows.
namespace testsupport {

class ModalSteps;

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

/// Triggers a command; fails the test for a window that the steps did not wait for, and for a step
/// that no window came for.
void run(const ModalSteps& steps, const char* command);
/// The same with a last step: the message box that it gives back was closed with OK.
Shown lastBox(ModalSteps& steps, const char* command);

/// Fails the test unless this is the dialog of a running job: modal, with this title and text, and
/// neither a key nor the window system can close it.
void checkThatItStays(QProgressDialog* dialog, const QString& title, const QString& text);

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
