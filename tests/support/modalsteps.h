// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <functional>

class QWidget;

namespace testsupport {

/// Takes the part of the user while a call shows modal windows: each step says of which class the
/// next window is and what is done with it. A window that no step waits for is noted and closed,
/// so that a wrong program ends in a failed test and not in a hanging one.
class ModalSteps final : public QObject
{
public:
    ModalSteps();
    ~ModalSteps() override;

    /// The next window is of this class, and `act` closes it.
    template <typename Window>
    void on(std::function<void(Window*)> act)
    {
        m_steps.append(step<Window>(std::move(act), After::Closed));
    }

    /// The next window is of this class. It closes by itself, or a later step sees to it.
    template <typename Window>
    void during(std::function<void(Window*)> act)
    {
        m_steps.append(step<Window>(std::move(act), After::Open));
    }

    /// A window of this class may come and go by itself.
    template <typename Window>
    void letPass()
    {
        m_steps.append(step<Window>([](Window*) {}, After::Open, Need::Optional));
    }

    /// Null when every step was taken and nothing else was shown, otherwise the first thing that
    /// was not so.
    QString complaint() const;

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    enum class After { Closed, Open };
    enum class Need { Required, Optional };
    struct Step
    {
        std::function<bool(QWidget*)> fits;
        std::function<void(QWidget*)> act;
        After after = After::Closed;
        Need need = Need::Required;
    };

    template <typename Window>
    static Step step(std::function<void(Window*)> act, After after, Need need = Need::Required)
    {
        return {[](QWidget* window) { return qobject_cast<Window*>(window) != nullptr; },
                [act = std::move(act)](QWidget* window) { act(qobject_cast<Window*>(window)); },
                after, need};
    }

    void look();
    void complain(const QString& what, QWidget* window);

    QList<Step> m_steps;
    QPointer<QWidget> m_last;        // the window of the step that was taken last
    QList<QPointer<QWidget>> m_busy; // those in which a step is being taken
    QString m_complaint;
};

} // namespace testsupport
