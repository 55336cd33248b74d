// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/language.h>

#include <QtWidgets/QApplication>

#include <memory>
#include <vector>

namespace vexdesk {

using Texts = std::vector<std::unique_ptr<QTranslator>>;

/// Installs the texts of a language, the terminal's and Qt's own, for as long as the value lives.
/// With an application object of whatever kind.
[[nodiscard]] Texts installTexts(Language language);

QString terminalVersion();

/// The terminal's application object: an exception that leaves an event handler or a slot is shown
/// to the user, and the terminal goes on. It also brings the terminal's version and pictures, the
/// texts of its language, a DialogPlacer, a ScreenFitter, FileDialogDates and LetterKeys, and sees
/// to it that hints can be read on every ground.
class DeskApplication final : public QApplication
{
    Q_OBJECT

public:
    /// Speaks Russian until told otherwise.
    DeskApplication(int& argc, char** argv);
    ~DeskApplication() override;

    Language language() const { return m_language; }
    /// From here on texts are made in this language, those of Qt where they are installed, and
    /// dates, calendars and numbers are written as it is usual in it (the default QLocale); what is
    /// on the screen already stays as it is. QLocale::system() stays the user's.
    void setLanguage(Language language);

    /// Never throws. An event whose handler threw counts as handled.
    /// A last resort: Qt's own functions that the exception has passed may not have released what
    /// they held. What runs foreign code knowingly catches there, as triggerCommand does.
    bool notify(QObject* receiver, QEvent* event) override;

protected:
    bool event(QEvent* event) override;

private:
    void mendHints();

    Language m_language = Language::Russian;
    Texts m_texts;
};

} // namespace vexdesk
