// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/language.h>

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>

class QAction;
class QWidget;

namespace vexdesk {

/// The menu "Язык": remembers the language that the user chooses for the next start of the terminal
/// and offers to start it again. User-interface thread only.
class LanguageChoice final : public QObject
{
    Q_OBJECT

public:
    /// `spoken` is the language that the terminal speaks now.
    explicit LanguageChoice(Language spoken, QObject* parent = nullptr);

    /// The code of the language that the user has chosen; empty when none was.
    static QString stored();

    /// As the language itself says it, with a mnemonic.
    static QString nameOf(Language language);
    static QByteArray commandOf(Language language);

    /// Among these items of the menu bar, those of the languages get check marks.
    void markItems(const QList<QAction*>& items);

    /// Stores the choice. Where that fails a box says so, and the mark goes back. Where it is not
    /// the language spoken now, a box over `window` says in the chosen one when it will be, and
    /// returns when the user has answered.
    void choose(Language language, QWidget* window);

Q_SIGNALS:
    /// The user wants the terminal to be started again now.
    void restartWanted();

private:
    void tellThatItIsNotKept(Language language, QWidget* window);

    Language m_spoken;
    QMap<Language, QAction*> m_items;
};

} // namespace vexdesk
