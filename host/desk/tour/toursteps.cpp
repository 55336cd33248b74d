#include "desk/tour/toursteps.h"

#include "desk/commands.h"
#include "desk/mainwindow.h"
#include "desk/tour/tour.h"
#include "desk/tour/userinput.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <algorithm>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::TourSteps)
};

QMenu* openMenu()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QString entryMissing(const QString& title)
{
    if (!openMenu())
        return Text::tr("меню не открыто");
    const QList<QAction*> entries = openMenu()->actions();
    const bool found = std::any_of(entries.begin(), entries.end(), [&title](const QAction* entry) {
        return withoutMnemonic(entry->text()) == title;
    });
    return found ? QString() : Text::tr("в меню нет: %1").arg(title);
}

// The entry with this text or, where a code stands before a name, with this code; or the first one
// that begins so.
int entryOf(const QComboBox& list, const QString& text)
{
    const int exact = list.findText(text, Qt::MatchExactly);
    if (exact >= 0)
        return exact;
    constexpr auto begins = Qt::MatchStartsWith | Qt::MatchCaseSensitive;
    const int code = list.findText(text + QStringLiteral(" —"), begins);
    return code >= 0 ? code : list.findText(text, begins);
}

QString digitsOf(QString text)
{
    text.removeIf([](QChar character) { return !character.isDigit(); });
    return text;
}

} // namespace

void addMenuPath(Tour& tour, MainWindow& window, const QStringList& path,
                 const QString& windowPicture, const QString& menuPicture)
{
    tour.add({Text::tr("окно терминала"),
              [&window] {
                  return window.isVisible() && !QApplication::activeModalWidget()
                             ? QString()
                             : Text::tr("окна нет, или перед ним другое");
              },
              [&window, menu = path.first()] { clickMenu(window.menuBar(), menu); },
              windowPicture});
    for (qsizetype i = 1; i < path.size(); ++i) {
        const QString& entry = path.at(i);
        tour.add({Text::tr("выбрать «%1»").arg(entry), [entry] { return entryMissing(entry); },
                  [entry] { clickMenu(openMenu(), entry); },
                  i + 1 == path.size() ? menuPicture : QString()});
    }
}

void addMenuSteps(Tour& tour, MainWindow& window, const QString& command,
                  const QString& windowPicture, const QString& menuPicture)
{
    addMenuPath(tour, window, {Text::tr("Тех. анализ"), Text::tr("Управление данными ТА"), command},
                windowPicture, menuPicture);
}

void addChoice(Tour& tour, const QString& title, const std::function<QComboBox*()>& list,
               const QString& entry, const QString& picture)
{
    tour.add({Text::tr("открыть список: %1").arg(title),
              [list] { return list() ? QString() : Text::tr("нет списка"); },
              [list] { click(list()); }});
    tour.add({Text::tr("выбрать «%1»").arg(entry),
              [list, entry] {
                  if (!list() || !list()->view()->isVisible())
                      return Text::tr("список не открыт");
                  return entryOf(*list(), entry) < 0 ? Text::tr("в списке нет: %1").arg(entry)
                                                     : QString();
              },
              [list, entry] { chooseEntry(list(), entryOf(*list(), entry)); }, picture});
    tour.add({Text::tr("выбрано «%1»").arg(entry),
              [list, entry] {
                  return list() && list()->currentText().startsWith(entry)
                             ? QString()
                             : Text::tr("не выбрано: %1").arg(entry);
              },
              {}});
}

void addTyping(Tour& tour, const QString& title, const std::function<QWidget*()>& field,
               const QString& text)
{
    tour.add({Text::tr("перейти к полю: %1").arg(title),
              [field] { return field() ? QString() : Text::tr("нет поля"); },
              [field] {
                  field()->window()->activateWindow();
                  field()->clearFocus();
                  field()->setFocus(Qt::TabFocusReason);
              }});
    // Without the focus a dialog takes what is typed for something else.
    tour.add({Text::tr("ввести: %1").arg(title),
              [field] {
                  return field() && field()->hasFocus() ? QString() : Text::tr("поле не активно");
              },
              [field, text] {
                  const bool isEditOfParts = qobject_cast<QAbstractSpinBox*>(field());
                  typeText(field(), isEditOfParts ? digitsOf(text) : text);
              }});
    tour.add({Text::tr("введено: %1").arg(title),
              [field, text] {
                  const QString shown = field() ? field()->property("text").toString() : QString();
                  return shown == text ? QString() : Text::tr("введено «%1»").arg(shown);
              },
              {}});
}

void addSeriesChoice(Tour& tour, const std::function<QComboBox*(const char*)>& box,
                     const QString& picture)
{
    addChoice(
        tour, Text::tr("площадка"), [box] { return box("stock"); }, QStringLiteral("NORD"));
    addChoice(
        tour, Text::tr("режим торгов"), [box] { return box("board"); }, QStringLiteral("MAIN"));
    addChoice(
        tour, Text::tr("инструмент"), [box] { return box("security"); }, QStringLiteral("ALFA"),
        picture);
}

} // namespace vexdesk
