// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

class QTranslator;

/// The languages that the terminal and its companions speak, and their translation files.
///
/// The texts in the sources are Russian; a translation file "NAME_en.qm" holds the English ones and
/// "NAME_ru.qm", where there is one, the plural forms. Any thread, except where it says otherwise.
namespace vexdesk {

enum class Language { Russian, English };

/// "ru" or "en", as settings and command lines write it.
VEXDESK_CORE_EXPORT QString languageCode(Language language);

/// The language with this code; nothing for any other text.
VEXDESK_CORE_EXPORT std::optional<Language> languageOf(const QString& code);

/// The language to speak. `wishes` are codes as somebody asked for them, the strongest first, and
/// the first that is one decides. Otherwise the user's languages do, as QLocale::uiLanguages gives
/// them: English when the first one is English. Whoever is in doubt gets Russian.
VEXDESK_CORE_EXPORT Language chooseLanguage(const QStringList& wishes,
                                            const QStringList& userLanguages);

/// Where the translation files of a program and of the libraries that came with it are: in
/// "translations" beside the program, then where an installed one has them. Absolute, without
/// doubles; they need not exist.
VEXDESK_CORE_EXPORT QStringList translationDirectories();

/// The file NAME_xx.qm from the first of the directories that has it, to be given to
/// QCoreApplication::installTranslator. Null when none has. User-interface thread only.
VEXDESK_CORE_EXPORT std::unique_ptr<QTranslator>
loadTranslation(const QString& name, Language language, const QStringList& directories);

} // namespace vexdesk
