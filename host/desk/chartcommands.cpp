// SPDX-License-Identifier: MIT
#include "desk/chartcommands.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartpage.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/chartview.h"
#include "desk/chart/gotodialog.h"
#include "desk/chart/timeframecode.h"
#include "desk/chart/wallclock.h"
#include "desk/errorreport.h"
#include "desk/menubuilder.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/appsettings.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QStandardPaths>
#include <QtGui/QAction>
#include <QtWidgets/QFileDialog>

#include <algorithm>
#include <utility>

namespace vexdesk {

namespace {

const QString settingsGroup = QStringLiteral("Desk/Charts");
const QString picturesKey = QStringLiteral("pictures");

// The lines between them are in the order of their names; what plug-ins add stands above.
constexpr auto moveGroup = "Z1";
constexpr auto shapeGroup = "Z2";
constexpr auto zoomGroup = "Z3";
constexpr auto copyGroup = "Z4";
constexpr auto tabGroup = "Z5";
constexpr auto onlyGroup = "Z";

constexpr double zoomIn = 0.8;
constexpr double littleScroll = 0.1; // of what is shown
constexpr double pageScroll = 0.9;

CommandContainer& menuIn(const QByteArray& id, const QString& title, const QByteArray& group,
                         const QByteArray& key)
{
    return *ActionManager::instance()->container(id, title, "View", group, key);
}

// A menu shows what stands behind the tab where it shows shortcuts.
QString withKeys(const QString& text, const QKeySequence& keys)
{
    // As it stands on most keyboards, and in the guide.
    const QKeySequence shown = keys == Qt::Key_Return ? QKeySequence(Qt::Key_Enter) : keys;
    return text + u'\t' + shown.toString(QKeySequence::NativeText);
}

QKeySequence copyKeys()
{
    return Qt::CTRL | Qt::Key_C;
}

QString pictureName(const SeriesName& series)
{
    // Without points: behind one the dialog would take the rest for the suffix.
    return QStringLiteral("%1_%2_%3")
        .arg(series.stockCode, series.boardCode, series.securityName)
        .replace(u'.', u'_');
}

} // namespace

ChartCommands::ChartCommands(ChartTabs& tabs, CommandContainer& view, QWidget& window)
    : QObject(&window)
    , m_tabs(tabs)
    , m_window(window)
{
    addMoves(view);
    addScrolls();
    addCrosshair();
    addTimeframes();
    addStudies(view);
    addZooms(view);
    addCopies(view);
    addTabs(view);
    connect(&m_tabs, &ChartTabs::currentChartChanged, this, &ChartCommands::update);
    connect(&m_tabs, &ChartTabs::chartsChanged, this, &ChartCommands::update);
    connect(&m_tabs, &ChartTabs::told, this, [this] { m_isPlaceTold = false; });
    connect(&m_tabs, &ChartTabs::currentChanged, this, &ChartCommands::forgetPlace);
    update();
}

ChartCommands::~ChartCommands() = default;

QSet<QByteArray> ChartCommands::ids() const
{
    QSet<QByteArray> ids;
    for (const Entry& entry : m_entries)
        ids.insert(entry.id);
    return ids;
}

Command& ChartCommands::add(CommandContainer& menu, const char* group, KeyOwner owner, Entry entry)
{
    auto* const command = new Command(entry.id, this);
    command->setCategory(tr("График"));
    const bool isShown = owner == KeyOwner::Chart && !entry.shortcut.isEmpty();
    command->setDefaultText(isShown ? withKeys(entry.text, entry.shortcut) : entry.text);
    command->setDefaultShortcut(entry.shortcut);
    // Not in every window of the terminal: the guide goes back with the same keys.
    command->setContext(owner == KeyOwner::Item ? Command::WindowContext : Command::NoContext);
    menu.addCommand(command, group, QByteArray::number(10 + static_cast<int>(m_entries.size())));
    entry.action = new Action(entry.id, this);
    connect(entry.action, &Action::triggered, this, [this, run = entry.run] { this->run(run); });
    m_entries.push_back(std::move(entry));
    return *command;
}

void ChartCommands::run(const Run& run)
{
    if (ChartPage* const page = m_tabs.current())
        run(*page);
    update();
}

void ChartCommands::addMoves(CommandContainer& view)
{
    add(view, moveGroup, KeyOwner::Item,
        {"Desk.Chart.GoTo", tr("&Перейти к дате..."), QKeySequence(Qt::CTRL | Qt::Key_L),
         [this](ChartPage& page) { askForDay(page); }});
    add(view, moveGroup, KeyOwner::Item,
        {"Desk.Chart.Back", tr("&Назад"), QKeySequence(Qt::ALT | Qt::Key_Left),
         [](ChartPage& page) { page.view().goBack(); },
         [](ChartPage& page) { return page.view().canGoBack(); }});
    add(view, moveGroup, KeyOwner::Item,
        {"Desk.Chart.Forward", tr("&Вперёд"), QKeySequence(Qt::ALT | Qt::Key_Right),
         [](ChartPage& page) { page.view().goForward(); },
         [](ChartPage& page) { return page.view().canGoForward(); }});
}

void ChartCommands::addScrolls()
{
    CommandContainer& menu = menuIn("View.Scroll", tr("С&двинуть"), moveGroup, "80");
    const auto addScroll = [this, &menu](const char* id, const QString& text, QKeySequence keys,
                                         double share) {
        add(menu, onlyGroup, KeyOwner::Chart,
            {id, text, keys, [share](ChartPage& page) { page.view().scroll(share); }});
    };
    add(menu, onlyGroup, KeyOwner::Chart,
        {"Desk.Chart.First", tr("К &первому бару"), QKeySequence(Qt::Key_Home),
         [](ChartPage& page) { page.view().goToFirst(); }});
    add(menu, onlyGroup, KeyOwner::Chart,
        {"Desk.Chart.Last", tr("К п&оследнему бару"), QKeySequence(Qt::Key_End),
         [](ChartPage& page) { page.view().goToLast(); }});
    addScroll("Desk.Chart.PageBack", tr("На &экран назад"), QKeySequence(Qt::Key_PageUp),
              -pageScroll);
    addScroll("Desk.Chart.PageForward", tr("На экран &вперёд"), QKeySequence(Qt::Key_PageDown),
              pageScroll);
    addScroll("Desk.Chart.LittleBack", tr("Немного н&азад"), QKeySequence(Qt::CTRL | Qt::Key_Left),
              -littleScroll);
    addScroll("Desk.Chart.LittleForward", tr("Немно&го вперёд"),
              QKeySequence(Qt::CTRL | Qt::Key_Right), littleScroll);
}

void ChartCommands::addCrosshair()
{
    CommandContainer& menu =
        menuIn("View.Crosshair", tr("П&ерекрестие и отметка"), moveGroup, "90");
    const auto addMove = [this, &menu](const char* id, const QString& text, QKeySequence keys,
                                       int candles, void (ChartView::*move)(int)) {
        add(menu, onlyGroup, KeyOwner::Chart,
            {id, text, keys, [candles, move](ChartPage& page) { (page.view().*move)(candles); }});
    };
    addMove("Desk.Chart.CandleBack", tr("На свечу &назад"), QKeySequence(Qt::Key_Left), -1,
            &ChartView::moveCrosshair);
    addMove("Desk.Chart.CandleForward", tr("На свечу &вперёд"), QKeySequence(Qt::Key_Right), 1,
            &ChartView::moveCrosshair);
    addMove("Desk.Chart.MarkBack", tr("&Отметить назад"), QKeySequence(Qt::SHIFT | Qt::Key_Left),
            -1, &ChartView::markTo);
    addMove("Desk.Chart.MarkForward", tr("О&тметить вперёд"),
            QKeySequence(Qt::SHIFT | Qt::Key_Right), 1, &ChartView::markTo);
    add(menu, onlyGroup, KeyOwner::Chart,
        {"Desk.Chart.Drop", tr("&Убрать"), QKeySequence(Qt::Key_Escape),
         [](ChartPage& page) { page.view().dropCrosshair(); }});
}

void ChartCommands::addTimeframes()
{
    CommandContainer& menu = menuIn("View.Timeframe", tr("&Таймфрейм"), shapeGroup, "01");
    int digit = Qt::Key_1;
    for (const Timeframe timeframe : allTimeframes) {
        add(menu, onlyGroup, KeyOwner::Item,
            {"Desk.Chart.Timeframe." + timeframeCode(timeframe).toLatin1(),
             timeframeText(timeframe), QKeySequence(Qt::ALT | static_cast<Qt::Key>(digit++)),
             [timeframe](ChartPage& page) { page.chooseTimeframe(timeframe); },
             [timeframe](ChartPage& page) { return page.timeframes().contains(timeframe); },
             [timeframe](ChartPage& page) { return page.timeframe() == timeframe; }});
    }
}

void ChartCommands::addStudies(CommandContainer& view)
{
    CommandContainer& menu = menuIn("View.Studies", tr("&Индикаторы"), shapeGroup, "02");
    for (const Study study : allStudies) {
        add(menu, onlyGroup, KeyOwner::Item,
            {"Desk.Chart.Study." + QByteArray::number(static_cast<int>(study)),
             studyName(study),
             {},
             [study](ChartPage& page) { page.show(study, !page.isShown(study)); },
             {},
             [study](ChartPage& page) { return page.isShown(study); }});
    }
    add(view, shapeGroup, KeyOwner::Item,
        {"Desk.Chart.Nights",
         tr("Но&чи и выходные"),
         {},
         [](ChartPage& page) { page.showNights(!page.areNightsShown()); },
         {},
         [](ChartPage& page) { return page.areNightsShown(); }});
}

void ChartCommands::addZooms(CommandContainer& view)
{
    add(view, zoomGroup, KeyOwner::Chart,
        {"Desk.Chart.ZoomIn", tr("При&близить"), QKeySequence(Qt::Key_Plus),
         [](ChartPage& page) { page.view().zoom(zoomIn); }});
    add(view, zoomGroup, KeyOwner::Chart,
        {"Desk.Chart.ZoomOut", tr("&Отдалить"), QKeySequence(Qt::Key_Minus),
         [](ChartPage& page) { page.view().zoom(1 / zoomIn); }});
    add(view, zoomGroup, KeyOwner::Chart,
        {"Desk.Chart.ZoomToMark", tr("Приблизить от&меченное"), QKeySequence(Qt::Key_Return),
         [](ChartPage& page) { page.view().zoomToMark(); },
         [](ChartPage& page) { return page.view().hasMark(); }});
    add(view, zoomGroup, KeyOwner::Item,
        {"Desk.Chart.All", tr("Показать вс&ё"), QKeySequence(Qt::CTRL | Qt::Key_0),
         [](ChartPage& page) { page.view().showAll(); }});
}

void ChartCommands::addCopies(CommandContainer& view)
{
    // Everywhere else these keys copy what is chosen there.
    m_copyBars = &add(view, copyGroup, KeyOwner::Chart,
                      {"Desk.Chart.CopyBars", tr("&Копировать бары"), copyKeys(),
                       [](ChartPage& page) { page.copyBars(); }});
    add(view, copyGroup, KeyOwner::Item,
        {"Desk.Chart.CopyPicture", tr("Копировать картинк&у"),
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
         [](ChartPage& page) { page.copyPicture(); }});
    add(view, copyGroup, KeyOwner::Item,
        {"Desk.Chart.SavePicture", tr("Сохр&анить картинку..."),
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
         [this](ChartPage& page) { askForPicture(page); }});
}

void ChartCommands::addTabs(CommandContainer& view)
{
    const auto isOpen = [](ChartPage&) { return true; };
    const auto areSeveral = [this](ChartPage&) { return m_tabs.count() > 1; };
    add(view, tabGroup, KeyOwner::Item,
        {"Desk.Chart.Next", tr("С&ледующий график"), QKeySequence(Qt::CTRL | Qt::Key_Tab),
         [this](ChartPage&) { m_tabs.step(1); }, areSeveral});
    add(view, tabGroup, KeyOwner::Item,
        {"Desk.Chart.Previous", tr("Предыду&щий график"),
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), [this](ChartPage&) { m_tabs.step(-1); },
         areSeveral});
    add(view, tabGroup, KeyOwner::Item,
        {"Desk.Chart.Close", tr("&Закрыть график"), QKeySequence(Qt::CTRL | Qt::Key_W),
         [this](ChartPage&) { m_tabs.closeCurrent(); }, isOpen});
    add(view, tabGroup, KeyOwner::Item,
        {"Desk.Chart.CloseOthers",
         tr("Закр&ыть остальные графики"),
         {},
         [this](ChartPage&) { m_tabs.closeOthers(); },
         areSeveral});
}

void ChartCommands::checkItems(const MenuBuilder& builder)
{
    m_builder = &builder;
    for (const Entry& entry : m_entries) {
        QAction* const item = builder.item(entry.id);
        if (item && entry.isChecked)
            item->setCheckable(true);
    }
    update();
}

void ChartCommands::update()
{
    ChartPage* const page = m_tabs.current();
    nameCopiedBars();
    for (const Entry& entry : m_entries) {
        const bool hasBars = page && !page->isEmpty();
        entry.action->setEnabled(page && (entry.canRun ? entry.canRun(*page) : hasBars));
        QAction* const item = m_builder && entry.isChecked ? m_builder->item(entry.id) : nullptr;
        if (item)
            item->setChecked(page && entry.isChecked(*page));
    }
}

// Longer candles than the chosen ones may be shown, and those are copied.
void ChartCommands::nameCopiedBars()
{
    ChartPage* const page = m_tabs.current();
    const bool hasBars = page && !page->isEmpty();
    const QString text =
        hasBars ? tr("&Копировать бары (%1)").arg(timeframeText(page->view().shownTimeframe()))
                : tr("&Копировать бары");
    m_copyBars->setDefaultText(withKeys(text, copyKeys()));
}

void ChartCommands::askForDay(ChartPage& page)
{
    const QPointer<ChartPage> asked(&page);
    const QList<QDate> stored = page.storedDays();
    if (stored.isEmpty())
        return;
    const auto [from, to] = page.view().daysInView();
    GoToDialog dialog(stored, from.addDays(from.daysTo(to) / 2), &m_window);
    if (dialog.exec() != QDialog::Accepted || !asked)
        return;
    asked->goTo(dialog.day(), dialog.time());
    // Whoever types and presses Enter has not read what the dialog says of it.
    if (dialog.asked() == dialog.day())
        return;
    Q_EMIT m_tabs.told(
        tr("За %1 показать нечего: показан %2")
            .arg(dateText(wallTime(dialog.asked())), dateText(wallTime(dialog.day()))));
    m_isPlaceTold = true;
    connect(&asked->view(), &ChartView::moved, this, &ChartCommands::forgetPlace,
            Qt::UniqueConnection);
}

// It is no longer true of what is shown.
void ChartCommands::forgetPlace()
{
    if (std::exchange(m_isPlaceTold, false))
        Q_EMIT m_tabs.told(QString());
}

void ChartCommands::askForPicture(ChartPage& page)
{
    const QPointer<ChartPage> asked(&page);
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    AppSettings settings(settingsGroup);
    QFileDialog dialog(&m_window, tr("Сохранить картинку"),
                       settings.value(picturesKey, pictures).toString());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const QString svg = tr("Рисунок SVG (*.svg)");
    dialog.setNameFilters({tr("Картинка PNG (*.png)"), svg});
    dialog.setDefaultSuffix(QStringLiteral("png"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, svg](const QString& filter) {
        dialog.setDefaultSuffix(filter == svg ? QStringLiteral("svg") : QStringLiteral("png"));
    });
    dialog.selectFile(pictureName(page.series()));
    if (dialog.exec() != QDialog::Accepted || !asked)
        return;
    const QString path = dialog.selectedFiles().constFirst();
    if (const Outcome saved = asked->savePicture(path); !saved)
        reportError(saved.message());
    else
        settings.setValue(picturesKey, QFileInfo(path).path());
}

} // namespace vexdesk
