// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QString>

#include <exception>

/// How the terminal tells the user about an error that nobody handled.
namespace vexdesk {

/// What the exception says about itself: a QString as it is, what() of a std::exception, otherwise
/// a general sentence. Never empty. Any thread.
QString exceptionText(const std::exception_ptr& error);

/// Shows the text in a message box "Ошибка" and returns when the user has closed it.
///
/// A report that comes while another is on the screen is shown after it; the same text again is
/// dropped, so that an error which repeats with every repaint or timer tick does not pile up boxes.
/// From another thread the report is passed to the user-interface thread and the call returns at
/// once. Without an application that has windows the text goes to the log.
void reportError(const QString& text) noexcept;

/// reportError with the exception's text.
void reportException(const std::exception_ptr& error) noexcept;

/// Runs a call into a plug-in. Fails with the text of the exception that left it; the exception
/// itself may be of the plug-in's own type and does not outlive this function.
template <typename Call>
Outcome outcomeOf(const Call& call)
{
    try {
        call();
        return Outcome();
    } catch (...) {
        return Failure{exceptionText(std::current_exception())};
    }
}

} // namespace vexdesk
