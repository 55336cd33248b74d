// SPDX-License-Identifier: MIT
#include "support/modalsteps.h"

#include <QtCore/QTimerEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <algorithm>

namespace testsupport {

ModalSteps::ModalSteps()
{
    startTimer(0);
}

ModalSteps::~ModalSteps() = default;

QString ModalSteps::complaint() const
{
    const auto missing = std::count_if(m_steps.cbegin(), m_steps.cend(), [](const Step& step) {
        return step.need == Need::Required;
    });
    if (!m_complaint.isNull() || missing == 0)
        return m_complaint;
    return QStringLiteral("%1 more windows were expected").arg(missing);
}

void ModalSteps::timerEvent(QTimerEvent* event)
{
    // A step may open a window in which the next step is taken, and no timer fires while its own
    // event is worked on.
    killTimer(event->timerId());
    startTimer(0);
    look();
}

void ModalSteps::look()
{
    const QPointer<QWidget> window = QApplication::activeModalWidget();
    if (!window || !window->isVisible() || window == m_last || m_busy.contains(window))
        return;
    // What a user types goes to the active window.
    if (!window->isActiveWindow()) {
        window->activateWindow();
        return;
    }
    while (!m_steps.isEmpty() && m_steps.first().need == Need::Optional &&
           !m_steps.first().fits(window))
        m_steps.removeFirst();
    if (m_steps.isEmpty() || !m_steps.first().fits(window)) {
        complain(QStringLiteral("was not expected"), window);
        return;
    }
    m_last = window;
    const Step step = m_steps.takeFirst();
    // A step may wait for what it does, and meanwhile another's window opens and closes above it.
    m_busy.append(window);
    step.act(window);
    m_busy.removeLast();
    if (step.after == After::Closed && window && window->isVisible())
        complain(QStringLiteral("did not close"), window);
}

void ModalSteps::complain(const QString& what, QWidget* window)
{
    if (m_complaint.isNull()) {
        m_complaint =
            QStringLiteral("%1 \"%2\" %3")
                .arg(QLatin1String(window->metaObject()->className()), window->windowTitle(), what);
    }
    m_steps.clear();
    if (auto* const dialog = qobject_cast<QDialog*>(window))
        dialog->done(QDialog::Rejected);
    else
        window->close();
}

} // namespace testsupport
