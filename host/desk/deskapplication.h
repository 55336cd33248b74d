#pragma once

#include <QtWidgets/QApplication>

namespace vexdesk {

/// The terminal's application object: an exception that leaves an event handler or a slot is shown
/// to the user, and the terminal goes on. It also brings the terminal's version and pictures and,
/// where Qt's own Russian texts are installed, those.
class DeskApplication final : public QApplication
{
    Q_OBJECT

public:
    DeskApplication(int& argc, char** argv);

    /// Never throws. An event whose handler threw counts as handled.
    /// A last resort: Qt's own functions that the exception has passed may not have released what
    /// they held. What runs foreign code knowingly catches there, as triggerCommand does.
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace vexdesk
