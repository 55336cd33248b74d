// SPDX-License-Identifier: MIT
#include "desk/commands.h"
#include "desk/deskapplication.h"
#include "desk/menubuilder.h"
#include "messageboxes.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtGui/QAction>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <stdexcept>

namespace {

// The texts of a menu from top to bottom, "-" for a line.
QStringList textsOf(const QWidget* menu)
{
    QStringList texts;
    for (const QAction* const item : menu->actions())
        texts.append(item->isSeparator() ? QStringLiteral("-") : item->text());
    return texts;
}

QAction* find(const QWidget* menu, const QString& text)
{
    for (QAction* const item : menu->actions()) {
        if (item->text() == text)
            return item;
    }
    return nullptr;
}

std::unique_ptr<Command> makeCommand(const QByteArray& id, const QString& text)
{
    auto command = std::make_unique<Command>(id);
    command->setDefaultText(text);
    return command;
}

} // namespace

class TestMenuBuilder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void ordersMenusByKey();
    void ordersItemsAndSeparatesGroups();
    void showsNoLineForAGroupThatIsNotShown();
    void nestsMenus();
    void hidesMenusWithoutCommands();
    void showsTextIconAndShortcut();
    void mapsShortcutContexts_data();
    void mapsShortcutContexts();
    void followsChangesWithTheNextTurn();
    void coalescesChanges();
    void keepsItemsThatStay();
    void isEnabledByItsAction();
    void theYoungestActionAnswers();
    void whatDiesVanishes();
    void aClickTriggers();
    void aShortcutTriggers();
    void aGlobalShortcutWorksInAnotherWindow();
    void aDisabledCommandDoesNotTrigger();
    void aThrowingSlotIsReportedAfterAClick();
    void aThrowingSlotIsReportedAfterAShortcut();
    void aCommandMayDestroyItselfWhileItRuns();
    void aCommandMayCloseTheWindow();
    void survivesTheMenuBar();
    void removesMnemonics_data();
    void removesMnemonics();

private:
    QMenuBar* bar() const { return m_window->menuBar(); }
    // A menu that is made for this test function and holds nothing else.
    CommandContainer* newMenu(const QString& title, const QByteArray& key = "50");
    QMenu* shownMenu(const QString& title) const;
    void show();
    void choose(QMenu* menu, const QString& text);

    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<vexdesk::MenuBuilder> m_builder;
    // Menus are the manager's for ever: every function gets menus with ids of their own.
    int m_menuCount = 0;
};

void TestMenuBuilder::init()
{
    testsupport::failOnStrayWarnings();
    m_window = std::make_unique<QMainWindow>();
    m_builder = std::make_unique<vexdesk::MenuBuilder>(bar());
    QCOMPARE(bar()->actions().size(), 0);
}

void TestMenuBuilder::cleanup()
{
    m_builder.reset();
    m_window.reset();
}

CommandContainer* TestMenuBuilder::newMenu(const QString& title, const QByteArray& key)
{
    return ActionManager::instance()->container("menu" + QByteArray::number(++m_menuCount), title,
                                                "MenuBar", "", key);
}

QMenu* TestMenuBuilder::shownMenu(const QString& title) const
{
    const QAction* const item = find(bar(), title);
    return item ? item->menu() : nullptr;
}

void TestMenuBuilder::show()
{
    m_builder->rebuild();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestMenuBuilder::choose(QMenu* menu, const QString& text)
{
    QVERIFY(menu);
    QAction* const item = find(menu, text);
    QVERIFY(item);
    hands::mouseClick(bar(), Qt::LeftButton, {},
                      bar()->actionGeometry(menu->menuAction()).center());
    QTRY_VERIFY(menu->isVisible());
    hands::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
}

void TestMenuBuilder::ordersMenusByKey()
{
    const auto command = makeCommand("c", QStringLiteral("Команда"));
    newMenu(QStringLiteral("Справка"), "90")->addCommand(command.get(), "", "");
    newMenu(QStringLiteral("Анализ"), "25")->addCommand(command.get(), "", "");
    newMenu(QStringLiteral("Файл"), "10")->addCommand(command.get(), "", "");
    newMenu(QStringLiteral("Правка"), "3")->addCommand(command.get(), "", "");
    m_builder->rebuild();
    QCOMPARE(textsOf(bar()), QStringList({"Файл", "Анализ", "Правка", "Справка"}));
}

void TestMenuBuilder::ordersItemsAndSeparatesGroups()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    const auto last = makeCommand("last", QStringLiteral("последняя"));
    const auto second = makeCommand("second", QStringLiteral("вторая"));
    const auto third = makeCommand("third", QStringLiteral("третья"));
    const auto first = makeCommand("first", QStringLiteral("первая"));
    menu->addCommand(last.get(), "C", "1");
    menu->addCommand(second.get(), "A", "2");
    menu->addCommand(third.get(), "B", "1");
    menu->addCommand(first.get(), "A", "1");
    m_builder->rebuild();
    QCOMPARE(textsOf(shownMenu(QStringLiteral("Меню"))),
             QStringList({"первая", "вторая", "-", "третья", "-", "последняя"}));
    // Two groups become one when the one between them goes.
    const auto fourth = makeCommand("fourth", QStringLiteral("четвёртая"));
    menu->addCommand(fourth.get(), "C", "0");
    m_builder->rebuild();
    QCOMPARE(textsOf(shownMenu(QStringLiteral("Меню"))),
             QStringList({"первая", "вторая", "-", "третья", "-", "четвёртая", "последняя"}));
}

void TestMenuBuilder::showsNoLineForAGroupThatIsNotShown()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    CommandContainer empty("empty");
    const auto command = makeCommand("c", QStringLiteral("команда"));
    menu->addContainer(&empty, "A", "1");
    menu->addCommand(command.get(), "B", "1");
    CommandContainer alsoEmpty("alsoEmpty");
    menu->addContainer(&alsoEmpty, "C", "1");
    m_builder->rebuild();
    QCOMPARE(textsOf(shownMenu(QStringLiteral("Меню"))), QStringList{"команда"});
}

void TestMenuBuilder::nestsMenus()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Тех. &анализ"), "25");
    CommandContainer sub("sub");
    sub.setTitle(QStringLiteral("История"));
    const auto import = makeCommand("import", QStringLiteral("Импорт"));
    const auto other = makeCommand("other", QStringLiteral("Другое"));
    sub.addCommand(import.get(), "", "");
    menu->addContainer(&sub, "B", "1");
    menu->addCommand(other.get(), "A", "1");
    m_builder->rebuild();
    const QMenu* const top = shownMenu(QStringLiteral("Тех. &анализ"));
    QVERIFY(top);
    QCOMPARE(textsOf(top), QStringList({"Другое", "-", "История"}));
    QCOMPARE(textsOf(top->actions().constLast()->menu()), QStringList{"Импорт"});
}

void TestMenuBuilder::hidesMenusWithoutCommands()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    CommandContainer sub("sub");
    CommandContainer subSub("subSub");
    sub.addContainer(&subSub, "", "");
    menu->addContainer(&sub, "", "");
    m_builder->rebuild();
    QCOMPARE(textsOf(bar()), QStringList());
    auto command = makeCommand("c", QStringLiteral("команда"));
    subSub.addCommand(command.get(), "", "");
    m_builder->rebuild();
    QCOMPARE(textsOf(bar()), QStringList{"Меню"});
    command.reset();
    m_builder->rebuild();
    QCOMPARE(textsOf(bar()), QStringList());
}

void TestMenuBuilder::showsTextIconAndShortcut()
{
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    const auto command = makeCommand("c", QStringLiteral("&Импорт..."));
    command->setDefaultIcon(QIcon(picture));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::GlobalContext);
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    m_builder->rebuild();
    const QAction* const item = shownMenu(QStringLiteral("Меню"))->actions().constFirst();
    QCOMPARE(item->text(), QStringLiteral("&Импорт..."));
    QCOMPARE(item->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_I));
    QCOMPARE(item->icon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

void TestMenuBuilder::mapsShortcutContexts_data()
{
    QTest::addColumn<int>("context");
    QTest::addColumn<bool>("hasShortcut");
    QTest::addColumn<Qt::ShortcutContext>("mapped");
    QTest::newRow("none") << int(Command::NoContext) << false << Qt::WindowShortcut;
    QTest::newRow("widget") << int(Command::WidgetContext) << true << Qt::WindowShortcut;
    QTest::newRow("window") << int(Command::WindowContext) << true << Qt::WindowShortcut;
    QTest::newRow("global") << int(Command::GlobalContext) << true << Qt::ApplicationShortcut;
}

void TestMenuBuilder::mapsShortcutContexts()
{
    QFETCH(int, context);
    QFETCH(bool, hasShortcut);
    QFETCH(Qt::ShortcutContext, mapped);
    const auto command = makeCommand("c", QStringLiteral("команда"));
    command->setContext(context);
    command->setDefaultShortcut(QKeySequence(Qt::CTRL | Qt::Key_K));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    m_builder->rebuild();
    const QAction* const item = shownMenu(QStringLiteral("Меню"))->actions().constFirst();
    QCOMPARE(item->shortcut().isEmpty(), !hasShortcut);
    QCOMPARE(item->shortcutContext(), mapped);
}

void TestMenuBuilder::followsChangesWithTheNextTurn()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    const auto command = makeCommand("c", QStringLiteral("раньше"));
    menu->addCommand(command.get(), "", "");
    QCOMPARE(textsOf(bar()), QStringList());
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(bar()), QStringList{"Меню"});
    command->setDefaultText(QStringLiteral("теперь"));
    menu->setTitle(QStringLiteral("Новое меню"));
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(bar()), QStringList{"Новое меню"});
    QCOMPARE(textsOf(shownMenu(QStringLiteral("Новое меню"))), QStringList{"теперь"});
}

void TestMenuBuilder::coalescesChanges()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    const auto command = makeCommand("c", QStringLiteral("0"));
    menu->addCommand(command.get(), "", "");
    m_builder->rebuild();
    const QAction* const item = shownMenu(QStringLiteral("Меню"))->actions().constFirst();
    const QSignalSpy changes(item, &QAction::changed);
    for (int i = 1; i <= 50; ++i)
        command->setDefaultText(QString::number(i));
    QCOMPARE(changes.count(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(item->text(), QStringLiteral("50"));
}

void TestMenuBuilder::keepsItemsThatStay()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    const auto stays = makeCommand("stays", QStringLiteral("остаётся"));
    auto goes = makeCommand("goes", QStringLiteral("уходит"));
    menu->addCommand(stays.get(), "A", "");
    menu->addCommand(goes.get(), "B", "");
    m_builder->rebuild();
    QMenu* const shown = shownMenu(QStringLiteral("Меню"));
    const QAction* const item = shown->actions().constFirst();
    goes.reset();
    m_builder->rebuild();
    QCOMPARE(shownMenu(QStringLiteral("Меню")), shown);
    QCOMPARE(shown->actions(), QList<QAction*>{const_cast<QAction*>(item)});
}

void TestMenuBuilder::isEnabledByItsAction()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    m_builder->rebuild();
    const QAction* const item = shownMenu(QStringLiteral("Меню"))->actions().constFirst();
    QVERIFY(!item->isEnabled());
    // At once, without a turn of the event loop.
    auto action = std::make_unique<Action>("c");
    QVERIFY(item->isEnabled());
    action->setEnabled(false);
    QVERIFY(!item->isEnabled());
    action->setEnabled(true);
    QVERIFY(item->isEnabled());
    action.reset();
    QVERIFY(!item->isEnabled());
    const Action other("other");
    QVERIFY(!item->isEnabled());
}

void TestMenuBuilder::theYoungestActionAnswers()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    m_builder->rebuild();
    QAction* const item = shownMenu(QStringLiteral("Меню"))->actions().constFirst();
    const Action older("c");
    const QSignalSpy olderSpy(&older, &Action::triggered);
    {
        Action younger("c");
        const QSignalSpy youngerSpy(&younger, &Action::triggered);
        item->trigger();
        QCOMPARE(youngerSpy.count(), 1);
        QCOMPARE(olderSpy.count(), 0);
        younger.setEnabled(false);
        QVERIFY(!item->isEnabled());
    }
    QVERIFY(item->isEnabled());
    item->trigger();
    QCOMPARE(olderSpy.count(), 1);
}

void TestMenuBuilder::whatDiesVanishes()
{
    auto menu = std::make_unique<CommandContainer>("mortal");
    menu->setTitle(QStringLiteral("Смертное"));
    ActionManager::instance()->menuBar()->addContainer(menu.get(), "", "5");
    auto command = makeCommand("c", QStringLiteral("команда"));
    const auto other = makeCommand("d", QStringLiteral("другая"));
    auto action = std::make_unique<Action>("c");
    menu->addCommand(command.get(), "", "");
    menu->addCommand(other.get(), "", "");
    show();
    const QPointer<QAction> item = shownMenu(QStringLiteral("Смертное"))->actions().constFirst();
    action.reset();
    command.reset();
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(shownMenu(QStringLiteral("Смертное"))), QStringList{"другая"});
    QTRY_VERIFY(item.isNull());
    const QPointer<QMenu> shown = shownMenu(QStringLiteral("Смертное"));
    menu.reset();
    QCoreApplication::processEvents();
    QCOMPARE(textsOf(bar()), QStringList());
    QTRY_VERIFY(shown.isNull());
}

void TestMenuBuilder::aClickTriggers()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    const Action action("c");
    const QSignalSpy spy(&action, &Action::triggered);
    show();
    choose(shownMenu(QStringLiteral("Меню")), QStringLiteral("команда"));
    QCOMPARE(spy.count(), 1);
}

void TestMenuBuilder::aShortcutTriggers()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::WindowContext);
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    const Action action("c");
    const QSignalSpy spy(&action, &Action::triggered);
    show();
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 1);
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_J));
    m_builder->rebuild();
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 1);
    hands::keyClick(m_window.get(), Qt::Key_J, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 2);
    command->setContext(Command::NoContext);
    m_builder->rebuild();
    hands::keyClick(m_window.get(), Qt::Key_J, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 2);
}

void TestMenuBuilder::aGlobalShortcutWorksInAnotherWindow()
{
    CommandContainer* const menu = newMenu(QStringLiteral("Меню"));
    const auto global = makeCommand("global", QStringLiteral("везде"));
    global->setDefaultShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
    global->setContext(Command::GlobalContext);
    const auto local = makeCommand("local", QStringLiteral("в окне"));
    local->setDefaultShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    local->setContext(Command::WindowContext);
    menu->addCommand(global.get(), "", "");
    menu->addCommand(local.get(), "", "");
    const Action globalAction("global");
    const Action localAction("local");
    const QSignalSpy globalSpy(&globalAction, &Action::triggered);
    const QSignalSpy localSpy(&localAction, &Action::triggered);
    show();
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    hands::keyClick(&other, Qt::Key_G, Qt::ControlModifier);
    hands::keyClick(&other, Qt::Key_L, Qt::ControlModifier);
    QCOMPARE(globalSpy.count(), 1);
    QCOMPARE(localSpy.count(), 0);
}

void TestMenuBuilder::aDisabledCommandDoesNotTrigger()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::GlobalContext);
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    Action action("c");
    action.setEnabled(false);
    const QSignalSpy spy(&action, &Action::triggered);
    show();
    QMenu* const menu = shownMenu(QStringLiteral("Меню"));
    choose(menu, QStringLiteral("команда"));
    hands::keyClick(menu, Qt::Key_Escape);
    QVERIFY(!menu->isVisible());
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(spy.count(), 0);
}

void TestMenuBuilder::aThrowingSlotIsReportedAfterAClick()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    const Action action("c");
    connect(&action, &Action::triggered, this, [] { throw std::runtime_error("не вышло"); });
    show();
    const desktest::MessageBoxes boxes;
    choose(shownMenu(QStringLiteral("Меню")), QStringLiteral("команда"));
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("не вышло")});
    QCOMPARE(boxes.titles(), QStringList{QStringLiteral("Ошибка")});
    choose(shownMenu(QStringLiteral("Меню")), QStringLiteral("команда"));
    QTRY_COMPARE(boxes.texts().size(), 2);
}

void TestMenuBuilder::aThrowingSlotIsReportedAfterAShortcut()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::GlobalContext);
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    const Action action("c");
    connect(&action, &Action::triggered, this, [] { throw QStringLiteral("файл занят"); });
    show();
    desktest::MessageBoxes boxes;
    // The open box shields the window: the shortcut does not start the command a second time.
    boxes.whileOpen([this](const QMessageBox*) {
        hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    });
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("файл занят")});
    QCOMPARE(boxes.titles(), QStringList{QStringLiteral("Ошибка")});
    QVERIFY(!QApplication::activeModalWidget());
}

void TestMenuBuilder::aCommandMayDestroyItselfWhileItRuns()
{
    // The command runs an event loop and ends the life of its own objects in it.
    auto menu = std::make_unique<CommandContainer>("mortal");
    menu->setTitle(QStringLiteral("Смертное"));
    ActionManager::instance()->menuBar()->addContainer(menu.get(), "", "5");
    auto command = makeCommand("c", QStringLiteral("команда"));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::GlobalContext);
    menu->addCommand(command.get(), "", "");
    const Action action("c");
    bool ran = false;
    QPointer<QAction> item;
    bool outlived = false;
    connect(&action, &Action::triggered, this, [&] {
        ran = true;
        command.reset();
        menu.reset();
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&loop] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
        loop.exec();
        outlived = !item.isNull();
    });
    show();
    item = shownMenu(QStringLiteral("Смертное"))->actions().constFirst();
    choose(shownMenu(QStringLiteral("Смертное")), QStringLiteral("команда"));
    QVERIFY(ran);
    QVERIFY(outlived);
    QCOMPARE(textsOf(bar()), QStringList());
    QTRY_VERIFY(item.isNull());
}

void TestMenuBuilder::aCommandMayCloseTheWindow()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    command->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    command->setContext(Command::GlobalContext);
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    const Action action("c");
    connect(&action, &Action::triggered, this, [this] { m_builder.reset(); });
    show();
    hands::keyClick(m_window.get(), Qt::Key_I, Qt::ShiftModifier);
    QVERIFY(!m_builder);
    QCOMPARE(textsOf(bar()), QStringList());
}

void TestMenuBuilder::survivesTheMenuBar()
{
    const auto command = makeCommand("c", QStringLiteral("команда"));
    newMenu(QStringLiteral("Меню"))->addCommand(command.get(), "", "");
    m_builder->rebuild();
    m_window.reset();
    command->setDefaultText(QStringLiteral("другая"));
    QCoreApplication::processEvents();
    m_builder->rebuild();
    m_builder.reset();
    QVERIFY(!m_builder);
}

void TestMenuBuilder::removesMnemonics_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("none") << "Файл"
                          << "Файл";
    QTest::newRow("first") << "&Файл"
                           << "Файл";
    QTest::newRow("inside") << "Тех. &анализ"
                            << "Тех. анализ";
    QTest::newRow("real ampersand") << "A && B"
                                    << "A & B";
    QTest::newRow("both") << "&&&A"
                          << "&A";
    QTest::newRow("at the end") << "A&"
                                << "A";
    QTest::newRow("alone") << "&"
                           << "";
    QTest::newRow("empty") << ""
                           << "";
}

void TestMenuBuilder::removesMnemonics()
{
    QFETCH(QString, text);
    QFETCH(QString, plain);
    QCOMPARE(vexdesk::withoutMnemonic(text), plain);
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestMenuBuilder test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_menubuilder.moc"
