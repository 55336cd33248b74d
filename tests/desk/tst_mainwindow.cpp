// SPDX-License-Identifier: MIT
#include "desk/commandbutton.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/mainwindow.h"
#include "desk/pluginloader.h"
#include "desk/pluginsdialog.h"
#include "desk/problemsdialog.h"
#include "desk/statuslink.h"
#include "messageboxes.h"
#include "pluginfiles.h"
#include "plugins/callrecord.h"
#include "support/child.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QCloseEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolButton>

#include <functional>
#include <memory>
#include <thread>

using vexdesk::CommandButton;
using vexdesk::MainWindow;
using vexdesk::PluginLoader;
using vexdesk::PluginsDialog;
using vexdesk::ProblemsDialog;
using vexdesk::StatusLink;

namespace {

// A window that lets itself be closed only when it is told to.
class Stubborn final : public QWidget
{
    Q_OBJECT

public:
    bool mayClose = false;
    std::function<void(QWidget*)> onClose = [](QWidget*) {};

protected:
    void closeEvent(QCloseEvent* event) override
    {
        onClose(this);
        event->setAccepted(mayClose);
    }
};

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hasATitleAndASensibleSize();
    void hasItsOwnCommands();
    void exitClosesByMouse();
    void exitClosesByShortcut();
    void closingClosesOtherWindows();
    void aWindowThatRefusesKeepsItOpen();
    void aWindowThatClosesLaterIsWaitedFor();
    void aWindowThatTheUserKeepsIsNotWaitedFor();
    void aboutNamesVersions();
    void remembersItsGeometry();
    void withoutPluginsItSaysWhereTheyAreLookedFor();
    void showsThePluginsCommands();
    void thePluginsCommandsWork();
    void thePluginsCommandsGoWithIt();
    void anErrorInAPluginIsShownAndTheWindowGoesOn();
    void pluginsWindowOpensByMouse();
    void refusedPluginsAreHintedAt();
    void tabGoesThroughTheRowsToTheLinks();
    void aProblemShowsWhatHasHappened();
    void errorsOfLaterCallsAreShown();
    void demoDealsAreSwitchedInTheMenu();
    void problemsAreShownInTheStatusBar();
    void problemsOfBeforeTheWindowAreShown();
    void problemsOfOtherThreadsAreShown();
    void aLongProblemMakesTheWindowNoWider();
    void passingMessagesDoNotHideProblems();
    void theProblemsAreReadAndCopiedInTheirList();
    void theListOpensByKeyboard();
    void whatIsReportedWhileTheListIsOpenIsShownThere();
    void whatTheListHasNotShownStaysUnread();

private:
    void load(const QStringList& plugins);
    void show();
    QStringList menuTitles() const;
    QMenu* menu(const QString& title) const;
    // Opens the menus on the way by clicks and clicks the last item.
    void choose(const QStringList& path);
    // Runs `action` on the "Модули" window once it is open, and closes it by Escape.
    void whenPluginsDialogOpens(const std::function<void(PluginsDialog*)>& action);
    QList<CommandButton*> rows() const;
    StatusLink* problemLink() const
    {
        return testsupport::child<StatusLink>(m_window.get(), "problems");
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<PluginLoader> m_loader;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<QTimer> m_poll;
    bool m_dialogSeen = false;
};

void TestMainWindow::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    desktest::takeCalls();
    m_directory = std::make_unique<QTemporaryDir>();
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<PluginLoader>();
    m_window = std::make_unique<MainWindow>(*m_loader);
    m_dialogSeen = false;
}

void TestMainWindow::cleanup()
{
    m_poll.reset();
    m_window.reset();
    m_loader.reset();
    m_core.reset();
    qApp->setProperty("throwIn", QVariant());
}

void TestMainWindow::load(const QStringList& plugins)
{
    desktest::copyPlugins(plugins, QDir(m_directory->path()));
    m_loader->load({m_directory->path()}, m_core.get());
    QCoreApplication::processEvents();
}

void TestMainWindow::show()
{
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

QStringList TestMainWindow::menuTitles() const
{
    QStringList titles;
    for (const QAction* const item : m_window->menuBar()->actions())
        titles.append(item->text());
    return titles;
}

QMenu* TestMainWindow::menu(const QString& title) const
{
    for (const QAction* const item : m_window->menuBar()->actions()) {
        if (item->text() == title)
            return item->menu();
    }
    return nullptr;
}

void TestMainWindow::choose(const QStringList& path)
{
    QWidget* level = m_window->menuBar();
    for (const QString& text : path) {
        QAction* found = nullptr;
        for (QAction* const item : level->actions()) {
            if (item->text() == text)
                found = item;
        }
        QVERIFY2(found, qPrintable(text));
        auto* const bar = qobject_cast<QMenuBar*>(level);
        const QRect place =
            bar ? bar->actionGeometry(found) : qobject_cast<QMenu*>(level)->actionGeometry(found);
        hands::mouseMove(level, place.center());
        hands::mouseClick(level, Qt::LeftButton, {}, place.center());
        if (!found->menu())
            return;
        level = found->menu();
        QTRY_VERIFY(level->isVisible());
    }
}

void TestMainWindow::whenPluginsDialogOpens(const std::function<void(PluginsDialog*)>& action)
{
    m_poll = std::make_unique<QTimer>();
    connect(m_poll.get(), &QTimer::timeout, this, [this, action] {
        auto* const dialog = qobject_cast<PluginsDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        m_poll->stop();
        m_dialogSeen = true;
        action(dialog);
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    m_poll->start(1);
}

QList<CommandButton*> TestMainWindow::rows() const
{
    QList<CommandButton*> shown;
    for (CommandButton* const row : m_window->findChildren<CommandButton*>()) {
        if (row->isVisible())
            shown.append(row);
    }
    return shown;
}

void TestMainWindow::hasATitleAndASensibleSize()
{
    show();
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Vexdesk"));
    QCOMPARE(m_window->size(), QSize(960, 640));
    QVERIFY(!QApplication::windowIcon().isNull());
}

void TestMainWindow::hasItsOwnCommands()
{
    QCOMPARE(menuTitles(), QStringList({"&Файл", "&Вид", "&Сервис", "С&правка"}));
    const QAction* const exit = menu(QStringLiteral("&Файл"))->actions().constLast();
    QCOMPARE(exit->text(), QStringLiteral("&Выход"));
    QCOMPARE(exit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    QStringList service;
    for (const QAction* const item : menu(QStringLiteral("&Сервис"))->actions())
        service.append(item->text());
    QCOMPARE(service,
             QStringList({"&Настройки...", "&Модули...", "&Язык", "", "&Для разработчиков"}));
    QCOMPARE(menu(QStringLiteral("С&правка"))->actions().constLast()->text(),
             QStringLiteral("&О программе"));
    for (const QString& title : menuTitles()) {
        if (title == QStringLiteral("&Вид"))
            continue; // most of it is for a chart, and none is open
        for (const QAction* const item : menu(title)->actions())
            QVERIFY2(item->isEnabled(), qPrintable(item->text()));
    }
    show();
    QCOMPARE(rows().size(), 0);
}

void TestMainWindow::exitClosesByMouse()
{
    show();
    choose({QStringLiteral("&Файл"), QStringLiteral("&Выход")});
    QVERIFY(!m_window->isVisible());
}

void TestMainWindow::exitClosesByShortcut()
{
    show();
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!m_window->isVisible());
}

void TestMainWindow::closingClosesOtherWindows()
{
    QWidget other;
    other.show();
    show();
    QVERIFY(m_window->close());
    QVERIFY(!other.isVisible());
}

void TestMainWindow::aWindowThatRefusesKeepsItOpen()
{
    Stubborn other;
    other.show();
    show();
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(m_window->isVisible());
    QVERIFY(other.isVisible());
    other.mayClose = true;
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!m_window->isVisible());
    QVERIFY(!other.isVisible());
}

void TestMainWindow::aWindowThatClosesLaterIsWaitedFor()
{
    Stubborn first;
    Stubborn second;
    first.show();
    second.show();
    show();
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(m_window->isVisible());
    // Each has its work to end, and one is minimised meanwhile.
    for (Stubborn* const other : {&first, &second}) {
        other->showMinimized();
        other->mayClose = true;
        other->close();
    }
    EVENTUALLY(!m_window->isVisible());

    auto gone = std::make_unique<Stubborn>();
    gone->show();
    show();
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(m_window->isVisible());
    gone.reset();
    EVENTUALLY(!m_window->isVisible());
}

void TestMainWindow::aWindowThatTheUserKeepsIsNotWaitedFor()
{
    const QList<std::function<void(QWidget*)>> doings{
        [](QWidget* window) { hands::keyClick(window, Qt::Key_A); },
        [](QWidget* window) { hands::mouseClick(window, Qt::LeftButton); },
        [](QWidget* window) {
            const QPointF middle = window->rect().center();
            QWheelEvent turn(middle, window->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton,
                             Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(window, &turn);
        }};
    show();
    for (const auto& something : doings) {
        Stubborn other;
        other.show();
        hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(m_window->isVisible());
        something(&other);
        other.mayClose = true;
        QVERIFY(other.close());
        QCoreApplication::processEvents();
        QVERIFY(m_window->isVisible());
    }
    // Also what he does when the window asks him.
    Stubborn asking;
    asking.onClose = [](QWidget* window) { hands::keyClick(window, Qt::Key_Escape); };
    asking.show();
    hands::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    asking.mayClose = true;
    QVERIFY(asking.close());
    QCoreApplication::processEvents();
    QVERIFY(m_window->isVisible());
}

void TestMainWindow::aboutNamesVersions()
{
    show();
    const desktest::MessageBoxes boxes;
    choose({QStringLiteral("С&правка"), QStringLiteral("&О программе")});
    QTRY_COMPARE(boxes.titles(), QStringList{QStringLiteral("О программе")});
    const QString text = boxes.texts().constFirst();
    QVERIFY2(text.contains(QStringLiteral("Vexdesk ") + QCoreApplication::applicationVersion()),
             qPrintable(text));
    QVERIFY2(text.contains(QLatin1String(qVersion())), qPrintable(text));
}

void TestMainWindow::remembersItsGeometry()
{
    show();
    m_window->resize(811, 533);
    m_window->close();
    const MainWindow again(*m_loader);
    QCOMPARE(again.size(), QSize(811, 533));
}

void TestMainWindow::withoutPluginsItSaysWhereTheyAreLookedFor()
{
    load({});
    show();
    const auto* const hint = testsupport::child<QLabel>(m_window.get(), "pluginHint");
    QVERIFY(hint && hint->isVisible());
    QVERIFY2(hint->text().contains(QDir::toNativeSeparators(m_directory->path())),
             qPrintable(hint->text()));
    QCOMPARE(testsupport::child<QLabel>(m_window.get(), "loadedPlugins")->text(),
             QStringLiteral("Загружено модулей: 0"));
    QVERIFY(!testsupport::child<QToolButton>(m_window.get(), "refusedPlugins")->isVisible());
}

void TestMainWindow::showsThePluginsCommands()
{
    show();
    load({QStringLiteral("good")});
    QCOMPARE(menuTitles(), QStringList({"&Файл", "&Вид", "Тех. &анализ", "&Сервис", "С&правка"}));
    QStringList texts;
    for (const CommandButton* const row : rows()) {
        texts.append(row->text());
        QVERIFY(row->isEnabled());
    }
    QCOMPARE(texts, QStringList({"Импорт...", "Экспорт...", "Правка..."}));
    QVERIFY(!testsupport::child<QLabel>(m_window.get(), "pluginHint")->isVisible());
    QCOMPARE(testsupport::child<QLabel>(m_window.get(), "loadedPlugins")->text(),
             QStringLiteral("Загружено модулей: 1"));
}

void TestMainWindow::thePluginsCommandsWork()
{
    load({QStringLiteral("good")});
    show();
    desktest::takeCalls();
    choose(
        {QStringLiteral("Тех. &анализ"), QStringLiteral("&История"), QStringLiteral("&Правка...")});
    QTRY_COMPARE(desktest::calls(), QStringList{"GOOD.Edit"});
    desktest::takeCalls();
    rows().constFirst()->setFocus(); // the field for the search writes letters
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Import"});
    hands::mouseClick(rows().constLast(), Qt::LeftButton);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Edit"});
}

void TestMainWindow::thePluginsCommandsGoWithIt()
{
    load({QStringLiteral("good")});
    show();
    m_loader->unload();
    QCoreApplication::processEvents();
    QCOMPARE(menuTitles(), QStringList({"&Файл", "&Вид", "&Сервис", "С&правка"}));
    QCOMPARE(rows().size(), 0);
    desktest::takeCalls();
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList());
}

void TestMainWindow::anErrorInAPluginIsShownAndTheWindowGoesOn()
{
    load({QStringLiteral("good")});
    show();
    const desktest::MessageBoxes boxes;
    rows().constFirst()->setFocus(); // the field for the search writes letters
    hands::keyClick(m_window.get(), Qt::Key_X, Qt::ShiftModifier);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("Экспорт невозможен")});
    QTRY_VERIFY(!QApplication::activeModalWidget());
    desktest::takeCalls();
    show(); // without a window manager nobody activates the window behind the box
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Import"});
}

void TestMainWindow::pluginsWindowOpensByMouse()
{
    load({QStringLiteral("good")});
    show();
    int records = 0;
    whenPluginsDialogOpens([&records](const PluginsDialog* dialog) {
        records = testsupport::child<QAbstractItemView>(dialog, "table")->model()->rowCount();
    });
    choose({QStringLiteral("&Сервис"), QStringLiteral("&Модули...")});
    QTRY_VERIFY(m_dialogSeen);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(records, 1);
}

void TestMainWindow::refusedPluginsAreHintedAt()
{
    testsupport::writeFile(m_directory->filePath(QStringLiteral("broken.so")), "text");
    load({QStringLiteral("good"), QStringLiteral("foreign")});
    show();
    auto* const button = testsupport::child<QToolButton>(m_window.get(), "refusedPlugins");
    QVERIFY(button->isVisible());
    QCOMPARE(button->text(), QStringLiteral("Отклонено модулей: 2. Подробнее..."));
    whenPluginsDialogOpens([](const PluginsDialog*) {});
    hands::mouseClick(button, Qt::LeftButton);
    QTRY_VERIFY(m_dialogSeen);
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void TestMainWindow::tabGoesThroughTheRowsToTheLinks()
{
    load({QStringLiteral("good"), QStringLiteral("foreign")});
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    show();
    QTRY_VERIFY(testsupport::child<QLabel>(m_window.get(), "seriesMessage")->isVisible());
    QList<QWidget*> wanted{testsupport::child<QLineEdit>(m_window.get(), "seriesFilter")};
    for (CommandButton* const row : rows())
        wanted.append(row);
    QCOMPARE(wanted.size(), 4);
    QCOMPARE(QApplication::focusWidget(), wanted.constFirst());
    wanted.append(testsupport::child<StatusLink>(m_window.get(), "refusedPlugins"));
    wanted.append(problemLink());
    QCOMPARE(testsupport::tabOrder(m_window.get()), wanted);
}

void TestMainWindow::aProblemShowsWhatHasHappened()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл /a/long/way/20240115_60.iss не записан."));
    QCOMPARE(problemLink()->text(),
             QStringLiteral("Ошибки: 1. Файл …/20240115_60.iss не записан."));
}

void TestMainWindow::errorsOfLaterCallsAreShown()
{
    connect(m_loader.get(), &PluginLoader::callFailed, qApp, &vexdesk::reportError);
    load({QStringLiteral("good")});
    show();
    qApp->setProperty("throwIn", QStringLiteral("GOOD.initStage"));
    const desktest::MessageBoxes boxes;
    m_loader->initStage(IPlugin::InitStage::WindowShown);
    QCOMPARE(boxes.texts(), QStringList{QStringLiteral(
                                "Ошибка модуля GOOD при запуске терминала: ступень не пройдена")});
    QVERIFY(m_window->isVisible());
}

void TestMainWindow::demoDealsAreSwitchedInTheMenu()
{
    show();
    const Table* const deals = vexdesk::dealsTable(*m_core->database());
    const auto dealCount = [deals] {
        const std::lock_guard lock(*deals);
        return deals->masterIndex().size();
    };
    const auto* const label = testsupport::child<QLabel>(m_window.get(), "demoDeals");
    QVERIFY(!label->isVisible());
    QCOMPARE(dealCount(), 0);
    const QStringList command{QStringLiteral("&Сервис"), QStringLiteral("&Для разработчиков"),
                              QStringLiteral("&Придуманные сделки")};
    const QMenu* developer = nullptr;
    for (const QAction* const item : menu(command.at(0))->actions()) {
        if (item->text() == command.at(1))
            developer = item->menu();
    }
    QVERIFY(developer);
    const QAction* const item = developer->actions().constLast();
    QCOMPARE(item->text(), command.at(2));
    QVERIFY2(item->statusTip().contains(QStringLiteral("экспорт")), qPrintable(item->statusTip()));
    QVERIFY(item->isCheckable() && !item->isChecked());

    choose(command);
    QTRY_VERIFY(label->isVisible());
    QVERIFY(item->isChecked());
    QVERIFY(dealCount() > 0);
    m_window->statusBar()->showMessage(QStringLiteral("Мимоходом"));
    QVERIFY2(label->isVisible(), "it is there for as long as the deals are");

    choose(command);
    QTRY_VERIFY(!label->isVisible());
    QVERIFY(!item->isChecked());
    QCOMPARE(dealCount(), 0);
}

void TestMainWindow::problemsAreShownInTheStatusBar()
{
    show();
    QVERIFY(!problemLink()->isVisible());
    const desktest::MessageBoxes boxes;
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    QVERIFY(problemLink()->isVisible());
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 1. Файл А не записан."));
    m_core->reportProblem(QStringLiteral("Файл <b>&Б</b>\nне записан."));
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 2. Файл <b>&&Б</b> не записан."));
    // Nothing opens by itself.
    QCoreApplication::processEvents();
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(boxes.texts(), QStringList());
}

void TestMainWindow::problemsOfBeforeTheWindowAreShown()
{
    m_window.reset();
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    m_window = std::make_unique<MainWindow>(*m_loader);
    show();
    QVERIFY(problemLink()->isVisible());
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 1. Файл А не записан."));
}

void TestMainWindow::problemsOfOtherThreadsAreShown()
{
    show();
    std::thread([] {
        ICore::instance()->reportProblem(QStringLiteral("Файл А не записан."));
    }).join();
    QTRY_VERIFY(problemLink()->isVisible());
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 1. Файл А не записан."));
}

void TestMainWindow::aLongProblemMakesTheWindowNoWider()
{
    show();
    const int least = m_window->minimumSizeHint().width();
    m_core->reportProblem(QStringLiteral("Файл не записан: ") + QString(10000, u'x'));
    QCoreApplication::processEvents();
    QCOMPARE(m_window->width(), 960);
    QVERIFY2(m_window->minimumSizeHint().width() <= std::max(least, 400),
             qPrintable(QString::number(m_window->minimumSizeHint().width())));
    // The whole link stands within the window.
    const QRect link(problemLink()->mapTo(m_window.get(), QPoint()), problemLink()->size());
    QVERIFY(m_window->rect().contains(link));
    m_window->resize(420, 400);
    QTRY_COMPARE(m_window->width(), 420);
    QVERIFY(problemLink()->mapTo(m_window.get(), QPoint()).x() + problemLink()->width() <= 420);
}

void TestMainWindow::passingMessagesDoNotHideProblems()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    m_window->statusBar()->showMessage(QStringLiteral("Мимоходом"));
    QVERIFY(problemLink()->isVisible());
}

void TestMainWindow::theProblemsAreReadAndCopiedInTheirList()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл <b>А</b> не записан."));
    m_core->reportProblem(QStringLiteral("Файл Б не записан:\nнет места."));
    const QString all =
        QStringLiteral("Файл <b>А</b> не записан.\n\nФайл Б не записан:\nнет места.");
    testsupport::ModalSteps steps;
    steps.on<ProblemsDialog>([&all](ProblemsDialog* dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Ошибки"));
        auto* const texts = testsupport::child<QPlainTextEdit>(dialog, "texts");
        QCOMPARE(texts->toPlainText(), all);
        QVERIFY(texts->isReadOnly());
        hands::keyClick(texts, Qt::Key_A, Qt::ControlModifier);
        hands::keyClick(texts, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), all);
        QGuiApplication::clipboard()->clear();
        testsupport::click(testsupport::child<QPushButton>(dialog, "copyButton"));
        QCOMPARE(QGuiApplication::clipboard()->text(), all);
        testsupport::click(testsupport::child<QPushButton>(dialog, "closeButton"));
    });
    testsupport::click(problemLink());
    QCOMPARE(steps.complaint(), QString());
    QVERIFY(!problemLink()->isVisible());
    QCOMPARE(m_core->problems(), QStringList());
    // The next one is the first again.
    m_core->reportProblem(QStringLiteral("Файл В не записан."));
    QVERIFY(problemLink()->isVisible());
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 1. Файл В не записан."));
}

void TestMainWindow::theListOpensByKeyboard()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    // Without plug-ins and series it is what comes after the search for one.
    QTRY_VERIFY(testsupport::child<QLabel>(m_window.get(), "seriesMessage")->isVisible());
    hands::keyClick(m_window.get(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), problemLink());
    for (const int key : {Qt::Key_Return, Qt::Key_Space}) {
        m_core->reportProblem(QStringLiteral("Файл А не записан."));
        problemLink()->setFocus(Qt::TabFocusReason);
        testsupport::ModalSteps steps;
        steps.on<ProblemsDialog>(
            [](ProblemsDialog* dialog) { hands::keyClick(dialog, Qt::Key_Escape); });
        hands::keyClick(problemLink(), static_cast<Qt::Key>(key));
        QCOMPARE(steps.complaint(), QString());
        QCOMPARE(m_core->problems(), QStringList());
    }
}

void TestMainWindow::whatIsReportedWhileTheListIsOpenIsShownThere()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    testsupport::ModalSteps steps;
    steps.on<ProblemsDialog>([this](ProblemsDialog* dialog) {
        m_core->reportProblem(QStringLiteral("Файл Б не записан."));
        QCOMPARE(testsupport::child<QPlainTextEdit>(dialog, "texts")->toPlainText(),
                 QStringLiteral("Файл А не записан.\n\nФайл Б не записан."));
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    testsupport::click(problemLink());
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(m_core->problems(), QStringList());
}

void TestMainWindow::whatTheListHasNotShownStaysUnread()
{
    show();
    m_core->reportProblem(QStringLiteral("Файл А не записан."));
    testsupport::ModalSteps steps;
    steps.on<ProblemsDialog>([](ProblemsDialog* dialog) {
        // The window hears of it by an event, and closes before that comes.
        std::thread([] {
            ICore::instance()->reportProblem(QStringLiteral("Файл Б не записан."));
        }).join();
        // A key of the X server's would come after it.
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    testsupport::click(problemLink());
    QCOMPARE(steps.complaint(), QString());
    QCOMPARE(m_core->problems(), QStringList{QStringLiteral("Файл Б не записан.")});
    QVERIFY(problemLink()->isVisible());
    QCOMPARE(problemLink()->text(), QStringLiteral("Ошибки: 1. Файл Б не записан."));
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow.moc"
