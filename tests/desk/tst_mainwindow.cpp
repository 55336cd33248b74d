#include "desk/commandbutton.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/mainwindow.h"
#include "desk/pluginloader.h"
#include "desk/pluginsdialog.h"
#include "messageboxes.h"
#include "pluginfiles.h"
#include "plugins/callrecord.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/terminal/core.h>

#include <QtCore/QTemporaryDir>
#include <QtGui/QCloseEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QToolButton>

using vexdesk::CommandButton;
using vexdesk::MainWindow;
using vexdesk::PluginLoader;
using vexdesk::PluginsDialog;

namespace {

/// A window that lets itself be closed only when it is told to.
class Stubborn final : public QWidget
{
    Q_OBJECT

public:
    bool mayClose = false;

protected:
    void closeEvent(QCloseEvent* event) override { event->setAccepted(mayClose); }
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
    void aboutNamesVersions();
    void remembersItsGeometry();
    void withoutPluginsItSaysWhereTheyAreLookedFor();
    void showsThePluginsCommands();
    void thePluginsCommandsWork();
    void thePluginsCommandsGoWithIt();
    void anErrorInAPluginIsShownAndTheWindowGoesOn();
    void pluginsWindowOpensByMouse();
    void refusedPluginsAreHintedAt();
    void errorsOfLaterCallsAreShown();

private:
    void load(const QStringList& plugins);
    void show();
    QStringList menuTitles() const;
    QMenu* menu(const QString& title) const;
    /// Opens the menus on the way by clicks and clicks the last item.
    void choose(const QStringList& path);
    /// Runs `action` on the "Модули" window once it is open, and closes it by Escape.
    void whenPluginsDialogOpens(const std::function<void(PluginsDialog*)>& action);
    QList<CommandButton*> rows() const;

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
        QTest::mouseMove(level, place.center());
        QTest::mouseClick(level, Qt::LeftButton, {}, place.center());
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
        QTest::keyClick(dialog, Qt::Key_Escape);
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
    QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
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
    QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(m_window->isVisible());
    QVERIFY(other.isVisible());
    other.mayClose = true;
    QTest::keyClick(m_window.get(), Qt::Key_Q, Qt::ControlModifier);
    QVERIFY(!m_window->isVisible());
    QVERIFY(!other.isVisible());
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
    const auto* const hint = m_window->findChild<QLabel*>(QStringLiteral("pluginHint"));
    QVERIFY(hint && hint->isVisible());
    QVERIFY2(hint->text().contains(QDir::toNativeSeparators(m_directory->path())),
             qPrintable(hint->text()));
    QCOMPARE(m_window->findChild<QLabel*>(QStringLiteral("loadedPlugins"))->text(),
             QStringLiteral("Загружено модулей: 0"));
    QVERIFY(!m_window->findChild<QToolButton*>(QStringLiteral("refusedPlugins"))->isVisible());
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
    QVERIFY(!m_window->findChild<QLabel*>(QStringLiteral("pluginHint"))->isVisible());
    QCOMPARE(m_window->findChild<QLabel*>(QStringLiteral("loadedPlugins"))->text(),
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
    QTest::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Import"});
    QTest::mouseClick(rows().constLast(), Qt::LeftButton);
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
    QTest::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList());
}

void TestMainWindow::anErrorInAPluginIsShownAndTheWindowGoesOn()
{
    load({QStringLiteral("good")});
    show();
    const desktest::MessageBoxes boxes;
    QTest::keyClick(m_window.get(), Qt::Key_X, Qt::ShiftModifier);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("Экспорт невозможен")});
    QTRY_VERIFY(!QApplication::activeModalWidget());
    desktest::takeCalls();
    show(); // without a window manager nobody activates the window behind the box
    QTest::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.Import"});
}

void TestMainWindow::pluginsWindowOpensByMouse()
{
    load({QStringLiteral("good")});
    show();
    int records = 0;
    whenPluginsDialogOpens([&records](const PluginsDialog* dialog) {
        records =
            dialog->findChild<QAbstractItemView*>(QStringLiteral("table"))->model()->rowCount();
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
    auto* const button = m_window->findChild<QToolButton*>(QStringLiteral("refusedPlugins"));
    QVERIFY(button->isVisible());
    QCOMPARE(button->text(), QStringLiteral("Отклонено модулей: 2. Подробнее..."));
    whenPluginsDialogOpens([](const PluginsDialog*) {});
    QTest::mouseClick(button, Qt::LeftButton);
    QTRY_VERIFY(m_dialogSeen);
    QTRY_VERIFY(!QApplication::activeModalWidget());
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

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestMainWindow test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainwindow.moc"
