#include "desk/languagechoice.h"

#include <vexdesk/appsettings.h>

#include <QtCore/QTranslator>
#include <QtGui/QAction>
#include <QtGui/QActionGroup>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk");
const QString languageKey = QStringLiteral("language");

constexpr auto context = "vexdesk::LanguageChoice";
constexpr auto titleText = QT_TRANSLATE_NOOP("vexdesk::LanguageChoice", "Язык");
constexpr auto explanationText =
    QT_TRANSLATE_NOOP("vexdesk::LanguageChoice", "Язык изменится после перезапуска терминала.");
constexpr auto restartText = QT_TRANSLATE_NOOP("vexdesk::LanguageChoice", "Перезапустить");
constexpr auto laterText = QT_TRANSLATE_NOOP("vexdesk::LanguageChoice", "Позже");

/// Texts in a language that is not the one of the application.
class OtherLanguage final
{
public:
    explicit OtherLanguage(Language language)
        : m_translation(
              loadTranslation(QStringLiteral("vexdesk"), language, translationDirectories()))
    {}

    QString text(const char* source) const
    {
        const QString translated =
            m_translation ? m_translation->translate(context, source) : QString();
        return translated.isEmpty() ? QString::fromUtf8(source) : translated;
    }

private:
    std::unique_ptr<QTranslator> m_translation;
};

} // namespace

LanguageChoice::LanguageChoice(Language spoken, QObject* parent)
    : QObject(parent)
    , m_spoken(spoken)
{}

QString LanguageChoice::stored()
{
    return AppSettings(settingsGroup).value(languageKey).toString();
}

QString LanguageChoice::nameOf(Language language)
{
    // The same in every language: whoever opened the terminal in a foreign one finds his own.
    return language == Language::English ? QStringLiteral("&English") : QStringLiteral("&Русский");
}

QByteArray LanguageChoice::commandOf(Language language)
{
    return "Desk.Language." + languageCode(language).toLatin1();
}

void LanguageChoice::markItems(const QList<QAction*>& items)
{
    auto* const group = new QActionGroup(this);
    for (QAction* const item : items) {
        for (const Language language : {Language::Russian, Language::English}) {
            if (item->data().toByteArray() != commandOf(language))
                continue;
            item->setCheckable(true);
            item->setChecked(language == m_spoken);
            group->addAction(item);
        }
    }
}

void LanguageChoice::choose(Language language, QWidget* window)
{
    AppSettings(settingsGroup).setValue(languageKey, languageCode(language));
    if (language == m_spoken)
        return;
    const OtherLanguage chosen(language);
    QMessageBox box(QMessageBox::Information, chosen.text(titleText), chosen.text(explanationText),
                    QMessageBox::NoButton, window);
    QPushButton* const restart = box.addButton(chosen.text(restartText), QMessageBox::AcceptRole);
    QPushButton* const later = box.addButton(chosen.text(laterText), QMessageBox::RejectRole);
    box.setDefaultButton(restart);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == restart)
        Q_EMIT restartWanted();
}

} // namespace vexdesk
