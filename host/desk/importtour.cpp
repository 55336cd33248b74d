#include "desk/importtour.h"

#include "desk/commands.h"
#include "desk/mainwindow.h"
#include "desk/tour.h"
#include "desk/userinput.h"

#include <vexdesk/icore.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWizard>

#include <algorithm>

namespace vexdesk {

namespace {

constexpr int fileColumns = 7;

struct Demonstration
{
    QByteArray input;                   ///< the text file
    QMap<QString, QByteArray> dayFiles; ///< what the store must hold then
};

// A trading hour on each of three days.
Demonstration makeDemonstration()
{
    constexpr int days = 3;
    constexpr int barsPerDay = 60;
    Demonstration result;
    result.input = "<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>;<VOL>\n";
    const auto price = [](int hundredths) {
        return QByteArray::number(hundredths / 100) + '.' +
               QByteArray::number(hundredths % 100).rightJustified(2, '0');
    };
    int open = 12000;
    for (int d = 0; d < days; ++d) {
        const QDate day = QDate(2024, 1, 15).addDays(d);
        QByteArray& stored =
            result.dayFiles[day.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral("_60.iss")];
        for (int bar = 1; bar <= barsPerDay; ++bar) {
            const QTime time = QTime(10, 0).addSecs(60 * bar);
            const int close = open + bar * 7 % 11 - 5;
            const QByteArray prices = price(open) + ';' + price(qMax(open, close) + bar % 4) + ';' +
                                      price(qMin(open, close) - bar % 3) + ';' + price(close) +
                                      ';' + QByteArray::number(100 + bar * 13 % 90);
            result.input += day.toString(QStringLiteral("dd.MM.yy")).toLatin1() + ';' +
                            time.toString(QStringLiteral("hh:mm")).toLatin1() + ';' + prices + '\n';
            stored +=
                time.toString(QStringLiteral("hhmmss")).toLatin1() + ';' + prices + ";0.00;0\n";
            open = close;
        }
    }
    return result;
}

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::ImportTour)
};

template <typename Widget>
Widget* activeDialog()
{
    return qobject_cast<Widget*>(QApplication::activeModalWidget());
}

QWizard* wizard()
{
    return activeDialog<QWizard>();
}

// A widget of the wizard's current page.
template <typename Widget>
Widget* onPage(const QString& name)
{
    return wizard() && wizard()->currentPage() ? wizard()->currentPage()->findChild<Widget*>(name)
                                               : nullptr;
}

QComboBox* box(const char* name)
{
    return onPage<QComboBox>(QLatin1String(name));
}

// The boxes in the header of the columns page, from left to right.
QList<QComboBox*> columnBoxes()
{
    const auto* const table = onPage<QTableWidget>(QStringLiteral("fileData"));
    return table ? table->horizontalHeader()->findChildren<QComboBox*>() : QList<QComboBox*>();
}

QString pageMissing(const QString& title)
{
    if (!wizard())
        return Text::tr("мастер импорта не открыт");
    const QWizardPage* const page = wizard()->currentPage();
    return page && page->title() == title ? QString() : Text::tr("нет страницы «%1»").arg(title);
}

QString buttonMissing(QWizard::WizardButton button)
{
    if (!wizard())
        return Text::tr("мастер импорта не открыт");
    return wizard()->button(button)->isEnabled() ? QString()
                                                 : Text::tr("кнопка продолжения недоступна");
}

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

// The entry with this text, or the first one that begins with it.
int entryOf(const QComboBox& list, const QString& text)
{
    const int exact = list.findText(text, Qt::MatchExactly);
    return exact >= 0 ? exact : list.findText(text, Qt::MatchStartsWith | Qt::MatchCaseSensitive);
}

// The list is opened with the mouse, then an entry is chosen with the keyboard.
void addChoice(Tour& tour, const QString& title, const std::function<QComboBox*()>& list,
               const QString& entry, const QString& picture = QString())
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

QString dayFilePath(const QString& name)
{
    return ICore::getDir(QStringLiteral("tadata"), false)
        .filePath(QStringLiteral("NORD/MAIN/ALFA/") + name);
}

QString storedMissing(const Demonstration& demonstration)
{
    const QDir store = ICore::getDir(QStringLiteral("tadata"), false);
    for (auto day = demonstration.dayFiles.begin(); day != demonstration.dayFiles.end(); ++day) {
        QFile file(dayFilePath(day.key()));
        if (!file.open(QIODevice::ReadOnly))
            return Text::tr("нет файла %1").arg(file.fileName());
        if (file.readAll() != day.value())
            return Text::tr("в файле %1 не то, что импортировано").arg(file.fileName());
    }
    return QString();
}

void addMenuSteps(Tour& tour, MainWindow& window)
{
    tour.add({Text::tr("окно терминала"),
              [&window] { return window.isVisible() ? QString() : Text::tr("окна нет"); },
              [&window] { clickMenu(window.menuBar(), Text::tr("Тех. анализ")); },
              QStringLiteral("window")});
    tour.add({Text::tr("меню"), [] { return entryMissing(Text::tr("Управление данными ТА")); },
              [] { clickMenu(openMenu(), Text::tr("Управление данными ТА")); }});
    tour.add({Text::tr("команды модуля"), [] { return entryMissing(Text::tr("Импортировать...")); },
              [] { clickMenu(openMenu(), Text::tr("Импортировать...")); }, QStringLiteral("menu")});
}

void addFileSteps(Tour& tour, const QString& file)
{
    const auto nameEdit = [] {
        auto* const dialog = activeDialog<QFileDialog>();
        return dialog ? dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")) : nullptr;
    };
    tour.add({Text::tr("окно выбора файла"),
              [nameEdit] { return nameEdit() ? QString() : Text::tr("нет окна выбора файла"); },
              [nameEdit] {
                  nameEdit()->window()->activateWindow();
                  click(nameEdit());
              }});
    // Without the focus the dialog takes what is typed for a choice in its list.
    tour.add({Text::tr("ввести имя файла"),
              [nameEdit] {
                  return nameEdit() && nameEdit()->hasFocus() ? QString()
                                                              : Text::tr("имя файла нельзя ввести");
              },
              [nameEdit, file] { typeText(nameEdit(), file); }});
    tour.add({Text::tr("выбор файла"),
              [nameEdit, file] {
                  return nameEdit() && nameEdit()->text() == file
                             ? QString()
                             : Text::tr("имя файла не введено");
              },
              [] {
                  auto* const buttons = activeDialog<QFileDialog>()->findChild<QDialogButtonBox*>();
                  click(buttons->button(QDialogButtonBox::Open));
              },
              QStringLiteral("file")});
}

void addSeriesSteps(Tour& tour)
{
    const auto page = Text::tr("Серия");
    tour.add({Text::tr("страница серии"),
              [page] { return pageMissing(page); },
              {},
              QStringLiteral("series")});
    addChoice(
        tour, Text::tr("площадка"), [] { return box("stock"); }, QStringLiteral("NORD —"));
    addChoice(
        tour, Text::tr("режим торгов"), [] { return box("board"); }, QStringLiteral("MAIN —"));
    addChoice(
        tour, Text::tr("инструмент"), [] { return box("security"); }, QStringLiteral("ALFA —"),
        QStringLiteral("security"));
    tour.add({Text::tr("серия выбрана"), [] { return buttonMissing(QWizard::NextButton); },
              [] { click(wizard()->button(QWizard::NextButton)); },
              QStringLiteral("series-chosen")});
}

void addFormatSteps(Tour& tour)
{
    const auto page = Text::tr("Формат");
    tour.add({Text::tr("страница формата"),
              [page] {
                  if (const QString missing = pageMissing(page); !missing.isNull())
                      return missing;
                  return wizard()->button(QWizard::NextButton)->isEnabled()
                             ? Text::tr("можно продолжать без разделителя")
                             : QString();
              },
              {},
              QStringLiteral("format")});
    addChoice(
        tour, Text::tr("разделитель"), [] { return box("separator"); },
        Text::tr("точка с запятой (;)"), QStringLiteral("separator"));
    addChoice(
        tour, Text::tr("формат даты"), [] { return box("dateFormat"); }, Text::tr("дд.мм.гг"));
    addChoice(
        tour, Text::tr("формат времени"), [] { return box("timeFormat"); }, Text::tr("чч:мм"));
    tour.add({Text::tr("формат выбран"),
              [] {
                  const auto* const table = onPage<QTableWidget>(QStringLiteral("fileData"));
                  if (!table || table->columnCount() != fileColumns || table->rowCount() != 10)
                      return Text::tr("файл не показан");
                  return buttonMissing(QWizard::NextButton);
              },
              [] { click(wizard()->button(QWizard::NextButton)); },
              QStringLiteral("format-chosen")});
}

void addColumnSteps(Tour& tour)
{
    const auto page = Text::tr("Столбцы");
    tour.add({Text::tr("страница столбцов"),
              [page] {
                  if (const QString missing = pageMissing(page); !missing.isNull())
                      return missing;
                  return columnBoxes().size() == fileColumns ? QString() : Text::tr("нет списков");
              },
              {},
              QStringLiteral("columns")});
    const QStringList roles{Text::tr("Дата окон-я"), Text::tr("Вр. окон-я"), Text::tr("Цена откр."),
                            Text::tr("Цена макс."),  Text::tr("Цена мин."),  Text::tr("Цена закр."),
                            Text::tr("Объем в шт.")};
    for (int column = 0; column < fileColumns; ++column) {
        addChoice(
            tour, Text::tr("роль столбца"), [column] { return columnBoxes().value(column); },
            roles.at(column), column == 0 ? QStringLiteral("role") : QString());
    }
    tour.add({Text::tr("столбцы выбраны"), [] { return buttonMissing(QWizard::FinishButton); },
              [] { click(wizard()->button(QWizard::FinishButton)); },
              QStringLiteral("columns-chosen")});
}

void addEndSteps(Tour& tour, const Demonstration& demonstration)
{
    tour.add({Text::tr("итог"),
              [] {
                  const auto* const message = activeDialog<QMessageBox>();
                  if (!message)
                      return Text::tr("нет сообщения об итоге");
                  return message->text() == Text::tr("Импорт данных ТА успешно завершен")
                             ? QString()
                             : message->text();
              },
              [] { click(activeDialog<QMessageBox>()->button(QMessageBox::Ok)); },
              QStringLiteral("result")});
    tour.add({Text::tr("бары сохранены"),
              [demonstration] {
                  return QApplication::activeModalWidget() ? Text::tr("окно не закрыто")
                                                           : storedMissing(demonstration);
              },
              {}});
}

} // namespace

bool addImportTour(Tour& tour, MainWindow& window, const QDir& directory)
{
    const Demonstration demonstration = makeDemonstration();
    QFile file(directory.absoluteFilePath(QStringLiteral("demo.csv")));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(demonstration.input) != demonstration.input.size() || !file.flush())
        return false;
    // What an earlier tour left must not pass for the work of this one.
    for (auto day = demonstration.dayFiles.begin(); day != demonstration.dayFiles.end(); ++day)
        QFile::remove(dayFilePath(day.key()));

    addMenuSteps(tour, window);
    addFileSteps(tour, file.fileName());
    addSeriesSteps(tour);
    addFormatSteps(tour);
    addColumnSteps(tour);
    addEndSteps(tour, demonstration);
    return true;
}

} // namespace vexdesk
