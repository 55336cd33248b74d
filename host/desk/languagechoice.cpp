// SPDX-License-Identifier: MIT
#include "desk/languagechoice.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/icore.h>

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
constexpr auto notKeptText = QT_TRANSLATE_NOOP(
    "vexdesk::LanguageChoice", "Выбор языка не записан: каталог %1 или файл vexdesk.ini в нём не "
                               "принимает запись. На один запуск язык задаёт параметр --language.");
constexpr auto laterText = QT_TRANSLATE_NOOP("vexdesk::LanguageChoice", "Позже");

// Texts in a language that is not the one of the application.
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
            m_items.insert(language, item);
        }
    }
}

void LanguageChoice::choose(Language language, QWidget* window)
{
    AppSettings settings(settingsGroup);
    settings.setValue(languageKey, languageCode(language));
    if (!settings.sync()) {
        tellThatItIsNotKept(language, window);
        return;
    }
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

void LanguageChoice::tellThatItIsNotKept(Language language, QWidget* window)
{
    if (QAction* const item = m_items.value(m_spoken))
        item->setChecked(true);
    const OtherLanguage chosen(language);
    const QString directory = ICore::getDir(QString(), false).path();
    QMessageBox box(QMessageBox::Warning, chosen.text(titleText),
                    chosen.text(notKeptText).arg(QDir::toNativeSeparators(directory)),
                    QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace vexdesk
