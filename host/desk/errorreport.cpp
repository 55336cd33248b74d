// SPDX-License-Identifier: MIT
#include "desk/errorreport.h"

#include "desk/windowinuse.h"

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QThread>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

namespace vexdesk {

namespace {

constexpr qsizetype maxWaitingReports = 16;

// An open popup holds the mouse and the keyboard: the box behind it could not be closed.
void closePopups()
{
    while (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            break;
    }
}

void showBox(const QString& text)
{
    closePopups();
    // Not on the stack: the parent may be destroyed, and the box with it, while it is open.
    const QPointer<QMessageBox> box = new QMessageBox(
        QMessageBox::Critical, QCoreApplication::translate("vexdesk::ErrorReport", "Ошибка"), text,
        QMessageBox::Ok, windowInUse());
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->exec();
    delete box;
}

// User-interface thread only.
void showInTurn(const QString& text)
{
    // The first one is on the screen.
    static QStringList reports;
    if (!reports.isEmpty()) {
        if (reports.contains(text))
            return;
        if (reports.size() < maxWaitingReports)
            reports.append(text);
        else
            qCritical("%s", qUtf8Printable(text));
        return;
    }
    reports.append(text);
    while (!reports.isEmpty()) {
        try {
            showBox(reports.constFirst());
        } catch (...) {
            qCritical("%s", qUtf8Printable(reports.constFirst()));
        }
        reports.removeFirst();
    }
}

} // namespace

QString exceptionText(const std::exception_ptr& error)
{
    QString text;
    try {
        if (error)
            std::rethrow_exception(error);
    } catch (const QString& message) {
        text = message;
    } catch (const std::exception& exception) {
        text = QString::fromUtf8(exception.what());
    } catch (...) { // NOLINT(bugprone-empty-catch): the general sentence below is for these
    }
    if (text.trimmed().isEmpty())
        text = QCoreApplication::translate("vexdesk::ErrorReport", "Произошла неизвестная ошибка.");
    return text;
}

void reportError(const QString& text) noexcept
{
    try {
        QCoreApplication* const application = QCoreApplication::instance();
        if (!qobject_cast<QApplication*>(application))
            qCritical("%s", qUtf8Printable(text));
        else if (QThread::currentThread() != application->thread())
            QMetaObject::invokeMethod(
                application, [text] { reportError(text); }, Qt::QueuedConnection);
        else
            showInTurn(text);
    } catch (...) {
        qCritical("An error could not be reported");
    }
}

void reportException(const std::exception_ptr& error) noexcept
{
    try {
        reportError(exceptionText(error));
    } catch (...) {
        qCritical("An error could not be reported");
    }
}

} // namespace vexdesk
