// SPDX-License-Identifier: MIT
#include "tour/toursteps.h"

#include "desk/commands.h"
#include "desk/mainwindow.h"
#include "tour/tour.h"
#include "tour/userinput.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>

#include <algorithm>

namespace vexdesk {

namespace {

QMenu* openMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

Outcome hasEntry(const QString& title)
{
    if (!openMenu())
        return missing(Tour::tr("меню не открыто"));
    const QList<QAction*> entries = openMenu()->actions();
    const bool found = std::any_of(entries.begin(), entries.end(), [&title](const QAction* entry) {
        return withoutMnemonic(entry->text()) == title;
    });
    return missingUnless(found, Tour::tr("в меню нет: %1").arg(title));
}

// The titles on the way from the container to the command, its own last; empty when it is not
// there.
QStringList pathTo(const QByteArray& command, const CommandContainer& container)
{
    for (const CommandContainer::Entry& entry : container.entries()) {
        if (entry.command && entry.command->id() == command)
            return {withoutMnemonic(entry.command->defaultText())};
        if (!entry.container)
            continue;
        QStringList path = pathTo(command, *entry.container);
        if (path.isEmpty())
            continue;
        path.prepend(withoutMnemonic(entry.container->title()));
        return path;
    }
    return {};
}

QString digitsOf(QString text)
{
    text.removeIf([](QChar character) { return !character.isDigit(); });
    return text;
}

} // namespace

void addMenuSteps(Tour& tour, MainWindow& window, const QByteArray& command,
                  const QString& windowPicture, const QString& menuPicture)
{
    QStringList path = pathTo(command, *ActionManager::instance()->menuBar());
    if (path.isEmpty()) // the step that looks for it will say so
        path = {QString(), QString::fromLatin1(command)};
    tour.add({Tour::tr("окно терминала"),
              [&window] {
                  return missingUnless(window.isVisible() && !QApplication::activeModalWidget(),
                                       Tour::tr("окна нет, или перед ним другое"));
              },
              [&window, menu = path.first()] { clickMenu(window.menuBar(), menu); },
              windowPicture});
    for (qsizetype i = 1; i < path.size(); ++i) {
        const QString& entry = path.at(i);
        tour.add({Tour::tr("выбрать «%1»").arg(entry), [entry] { return hasEntry(entry); },
                  [entry] { clickMenu(openMenu(), entry); },
                  i + 1 == path.size() ? menuPicture : QString()});
    }
}

bool isInMenu(const QByteArray& command)
{
    return !pathTo(command, *ActionManager::instance()->menuBar()).isEmpty();
}

void addFileChoice(Tour& tour, const QString& file, const QString& picture)
{
    const auto nameEdit = [] {
        auto* const dialog = activeDialog<QFileDialog>();
        return dialog ? dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")) : nullptr;
    };
    addTyping(tour, Tour::tr("имя файла"), nameEdit, file);
    addClick(
        tour, Tour::tr("выбор файла"),
        [] {
            return activeDialog<QFileDialog>()->findChild<QDialogButtonBox*>()->button(
                QDialogButtonBox::Open);
        },
        [nameEdit, file] {
            return missingUnless(nameEdit() && nameEdit()->text() == file,
                                 Tour::tr("имя файла не введено"));
        },
        picture);
}

void addClick(Tour& tour, const QString& title, const std::function<QAbstractButton*()>& button,
              const StepCheck& check, const QString& picture)
{
    tour.add({title,
              [button, check] {
                  if (const Outcome holds = check ? check() : Outcome(); !holds)
                      return holds;
                  return missingUnless(button() && button()->isEnabled(),
                                       Tour::tr("кнопка недоступна"));
              },
              [button] { click(button()); }, picture});
}

Outcome isOnPage(const char* name)
{
    const auto* const wizard = activeDialog<QWizard>();
    if (!wizard)
        return missing(Tour::tr("мастер не открыт"));
    return missingUnless(wizard->currentPage() &&
                             wizard->currentPage()->objectName() == QLatin1String(name),
                         Tour::tr("открыта не та страница"));
}

void addWizardClick(Tour& tour, const char* page, QWizard::WizardButton button,
                    const StepCheck& check, const QString& picture)
{
    addClick(
        tour, Tour::tr("продолжить"), [button] { return activeDialog<QWizard>()->button(button); },
        [page, check] {
            const Outcome here = isOnPage(page);
            return here && check ? check() : here;
        },
        picture);
}

void addAnswer(Tour& tour, const QString& title, QMessageBox::Icon kind,
               QMessageBox::StandardButton answer, const QString& picture)
{
    addClick(
        tour, title, [answer] { return activeDialog<QMessageBox>()->button(answer); },
        [kind] {
            const auto* const box = activeDialog<QMessageBox>();
            if (!box)
                return missing(Tour::tr("нет сообщения"));
            return missingUnless(box->icon() == kind, box->text());
        },
        picture);
}

void addLook(Tour& tour, const QString& title, const StepCheck& check)
{
    tour.add({title, [check] {
                  return QApplication::activeModalWidget() ? missing(Tour::tr("окно не закрыто"))
                                                           : check();
              }});
}

EntryFinder entryWith(const QVariant& data)
{
    return [data](const QComboBox& list) { return list.findData(data); };
}

EntryFinder entryOfCode(const QString& code)
{
    return [code](const QComboBox& list) {
        const int exact = list.findText(code, Qt::MatchExactly);
        return exact >= 0 ? exact
                          : list.findText(code + QStringLiteral(" —"),
                                          Qt::MatchStartsWith | Qt::MatchCaseSensitive);
    };
}

EntryFinder entryAt(int index)
{
    return [index](const QComboBox& list) { return index < list.count() ? index : -1; };
}

void addChoice(Tour& tour, const QString& title, const std::function<QComboBox*()>& list,
               const EntryFinder& entry, const QString& picture)
{
    tour.add({Tour::tr("открыть список: %1").arg(title),
              [list] { return missingUnless(list(), Tour::tr("нет списка")); },
              [list] { click(list()); }});
    tour.add({Tour::tr("выбрать из списка: %1").arg(title),
              [list, entry] {
                  if (!list() || !list()->view()->isVisible())
                      return missing(Tour::tr("список не открыт"));
                  return missingUnless(entry(*list()) >= 0,
                                       Tour::tr("в списке нет того, что нужно"));
              },
              [list, entry] { chooseEntry(list(), entry(*list())); }, picture});
    tour.add({Tour::tr("выбрано: %1").arg(title), [list, entry] {
                  return missingUnless(list() && list()->currentIndex() == entry(*list()),
                                       Tour::tr("выбрано не то, что нужно"));
              }});
}

namespace {

QString keysOfPart(const QDateTimeEdit& edit, QDateTimeEdit::Section part, const QDateTime& moment)
{
    const bool hasHalves = edit.displayedSections().testFlag(QDateTimeEdit::AmPmSection);
    switch (part) {
    case QDateTimeEdit::YearSection:
        return moment.toString(QStringLiteral("yyyy"));
    case QDateTimeEdit::MonthSection:
        return moment.toString(QStringLiteral("MM"));
    case QDateTimeEdit::DaySection:
        return moment.toString(QStringLiteral("dd"));
    case QDateTimeEdit::HourSection:
        return hasHalves ? moment.toString(QStringLiteral("hh ap")).left(2)
                         : moment.toString(QStringLiteral("HH"));
    case QDateTimeEdit::MinuteSection:
        return moment.toString(QStringLiteral("mm"));
    case QDateTimeEdit::SecondSection:
        return moment.toString(QStringLiteral("ss"));
    default:
        return edit.locale().toString(moment, QStringLiteral("AP"));
    }
}

QString keysOf(const QDateTimeEdit& edit, const QDateTime& moment)
{
    QString keys;
    for (int part = 0; part < edit.sectionCount(); ++part)
        keys += keysOfPart(edit, edit.sectionAt(part), moment);
    return keys;
}

bool shows(const QDateTimeEdit& edit, const QDateTime& moment)
{
    const bool hasTime = edit.displayedSections().testFlag(QDateTimeEdit::MinuteSection);
    return edit.date() == moment.date() && (!hasTime || edit.time() == moment.time());
}

// What is typed, asked when it is time, and whether the field has it then.
struct Typing
{
    std::function<QString()> keys;
    std::function<bool()> isEntered;
};

void addTypingSteps(Tour& tour, const QString& title, const std::function<QWidget*()>& field,
                    const Typing& typing)
{
    tour.add({Tour::tr("перейти к полю: %1").arg(title),
              [field] { return missingUnless(field(), Tour::tr("нет поля")); },
              [field] {
                  field()->window()->activateWindow();
                  field()->clearFocus();
                  field()->setFocus(Qt::TabFocusReason);
              }});
    // Without the focus a dialog takes what is typed for something else.
    tour.add({Tour::tr("ввести: %1").arg(title),
              [field] {
                  return missingUnless(field() && field()->hasFocus(), Tour::tr("поле не активно"));
              },
              [field, typing] { typeText(field(), typing.keys()); }});
    tour.add({Tour::tr("введено: %1").arg(title), [field, typing] {
                  const QString text = field() ? field()->property("text").toString() : QString();
                  return missingUnless(field() && typing.isEntered(),
                                       Tour::tr("введено «%1»").arg(text));
              }});
}

} // namespace

void addTyping(Tour& tour, const QString& title, const std::function<QWidget*()>& field,
               const QString& text)
{
    addTypingSteps(tour, title, field,
                   {[field, text] {
                        const bool isEditOfParts = qobject_cast<QAbstractSpinBox*>(field());
                        return isEditOfParts ? digitsOf(text) : text;
                    },
                    [field, text] { return field()->property("text").toString() == text; }});
}

void addTyping(Tour& tour, const QString& title, const std::function<QDateTimeEdit*()>& field,
               const QDateTime& moment)
{
    addTypingSteps(tour, title, field,
                   {[field, moment] {
                        // As Tab does in a window that was active before.
                        field()->setSelectedSection(field()->sectionAt(0));
                        return keysOf(*field(), moment);
                    },
                    [field, moment] { return shows(*field(), moment); }});
}

void addSeriesChoice(Tour& tour, const std::function<QComboBox*(const char*)>& box,
                     const QString& picture)
{
    addChoice(
        tour, Tour::tr("площадка"), [box] { return box("stock"); },
        entryOfCode(QStringLiteral("NORD")));
    addChoice(
        tour, Tour::tr("режим торгов"), [box] { return box("board"); },
        entryOfCode(QStringLiteral("MAIN")));
    addChoice(
        tour, Tour::tr("инструмент"), [box] { return box("security"); },
        entryOfCode(QStringLiteral("ALFA")), picture);
}

} // namespace vexdesk
