// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/language.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QTranslator>

namespace vexdesk {

QString languageCode(Language language)
{
    return language == Language::English ? QStringLiteral("en") : QStringLiteral("ru");
}

std::optional<Language> languageOf(const QString& code)
{
    for (const Language language : {Language::Russian, Language::English}) {
        if (code == languageCode(language))
            return language;
    }
    return std::nullopt;
}

Language chooseLanguage(const QStringList& wishes, const QStringList& userLanguages)
{
    for (const QString& wish : wishes) {
        if (const auto language = languageOf(wish))
            return *language;
    }
    // "C" is what there is without a choice of the user: it is no wish for English.
    const QString first = userLanguages.value(0).section(u'-', 0, 0);
    return languageOf(first.toLower()).value_or(Language::Russian);
}

QStringList translationDirectories()
{
    const QDir program(QCoreApplication::applicationDirPath());
    QStringList directories;
    for (const QString& path :
         {QStringLiteral("translations"), QStringLiteral(VEXDESK_TRANSLATION_PATH)})
        directories.append(QDir::cleanPath(program.absoluteFilePath(path)));
    return directories;
}

std::unique_ptr<QTranslator> loadTranslation(const QString& name, Language language,
                                             const QStringList& directories)
{
    auto translator = std::make_unique<QTranslator>();
    // The whole file name: QTranslator would also take a file for another language of the name's
    // beginning.
    const QString file = name + u'_' + languageCode(language) + QStringLiteral(".qm");
    for (const QString& directory : directories) {
        const QString path = QDir(directory).filePath(file);
        if (QFile::exists(path) && translator->load(path))
            return translator;
    }
    return nullptr;
}

} // namespace vexdesk
