// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QObject>

#include <functional>

/// Shows the terminal at work: goes through a list of steps, each of which waits for what the one
/// before it should have brought about, takes a picture and does something as a user would.
/// User-interface thread only.
namespace vexdesk {

/// Whether something holds by now, and if not, what is missing.
using StepCheck = std::function<Outcome()>;

struct TourStep
{
    QString title;
    /// What must hold before the step; a failure says what is still missing. May be none.
    StepCheck check = {};
    /// What the user does then. May open a modal dialog, or be none.
    std::function<void()> act = {};
    /// The name of the picture that is taken before it is done; none when empty.
    QString picture = QString();
};

/// It does not hold.
inline Outcome missing(const QString& what)
{
    return Failure{what};
}
inline Outcome missingUnless(bool holds, const QString& what)
{
    return holds ? Outcome() : missing(what);
}

class Tour final : public QObject
{
    Q_OBJECT

public:
    /// Pictures go to this directory, which must exist.
    explicit Tour(const QDir& pictures, QObject* parent = nullptr);

    void add(const TourStep& step) { m_steps.append(step); }

    /// Begins when the event loop runs. Prints each step to standard output.
    void start();

Q_SIGNALS:
    /// All steps were gone through.
    void finished();
    /// A step did not do what it should; `reason` says what was missing.
    void failed(const QString& reason);

private:
    void look();
    bool savePicture(const QString& name) const;

    QDir m_pictures;
    QList<TourStep> m_steps;
    qsizetype m_current = 0;
    int m_pictureCount = 0;
    QElapsedTimer m_waiting;
};

} // namespace vexdesk
