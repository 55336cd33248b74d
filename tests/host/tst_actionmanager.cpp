// SPDX-License-Identifier: MIT
#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include "support/strictlog.h"

#include <QtGui/QPixmap>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

namespace {

ActionManager* manager()
{
    return ActionManager::instance();
}

// The ids of what a container holds, in order, containers in brackets.
QByteArrayList content(const CommandContainer* container)
{
    QByteArrayList ids;
    const QList<CommandContainer::Entry> entries = container->entries();
    for (const CommandContainer::Entry& entry : entries) {
        if (entry.command && !entry.container)
            ids.append(entry.command->id());
        else if (entry.container && !entry.command)
            ids.append('[' + entry.container->id() + ']');
        else
            ids.append("neither a command nor a container");
    }
    return ids;
}

qsizetype timesHeld(const CommandContainer* container, const QByteArray& id)
{
    return content(container).count('[' + id + ']');
}

// The commands that actionChanged() named since the last call.
QByteArrayList taken(QSignalSpy& spy)
{
    QByteArrayList ids;
    for (const QList<QVariant>& arguments : std::as_const(spy))
        ids.append(arguments.at(0).toByteArray());
    spy.clear();
    return ids;
}

} // namespace

class ActionManagerTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void oneManager();
    void menuBarAlwaysExists();
    void containerIsMadeOnce();
    void unknownParentIsTheMenuBar();
    void ownParentIsTheMenuBar();
    void containersNest();
    void containersAreMadeWhileOneIsMade();

    void orderOfGroupsAndKeys();
    void tiesKeepTheOrderOfAdding();
    void commandsAndContainersStandTogether();
    void entriesKnowTheirGroupAndKey();
    void destroyedCommandLeaves();
    void destroyedContainerLeaves();
    void commandInSeveralContainers();
    void nullAndSelfAreNotAdded();
    void circlesAreNotAdded();
    void changesTravelUpwards();
    void changesOfAnEntryComeOnce();

    void commandProperties();
    void commandContexts_data();
    void commandContexts();

    void actionAnswersItsCommand();
    void youngestActionAnswers();
    void olderActionGoesUnnoticed();
    void enabledAndDisabled();
    void onlyTheAnsweringActionCounts();
    void disabledActionDoesNotTrigger();
    void exceptionLeavesTrigger();
};

void ActionManagerTest::oneManager()
{
    QVERIFY(manager());
    QCOMPARE(ActionManager::instance(), manager());
}

void ActionManagerTest::menuBarAlwaysExists()
{
    CommandContainer* const menuBar = manager()->menuBar();
    QVERIFY(menuBar);
    QCOMPARE(menuBar->id(), QByteArray("MenuBar"));
    const QByteArrayList before = content(menuBar);
    QCOMPARE(manager()->container("MenuBar", "&Title", "", "", ""), menuBar);
    QCOMPARE(content(menuBar), before);
}

void ActionManagerTest::containerIsMadeOnce()
{
    QSignalSpy changed(manager()->menuBar(), &CommandContainer::changed);
    CommandContainer* const tools =
        manager()->container("Once.Tools", "&Tools", "MenuBar", "50", "10");
    QVERIFY(tools);
    QVERIFY(!changed.isEmpty());
    QCOMPARE(tools->id(), QByteArray("Once.Tools"));
    QCOMPARE(tools->title(), QStringLiteral("&Tools"));
    QVERIFY(tools->entries().isEmpty());
    QCOMPARE(timesHeld(manager()->menuBar(), "Once.Tools"), 1);

    // The second time, nothing but the id plays a part.
    CommandContainer* const other =
        manager()->container("Once.Other", "&Other", "MenuBar", "50", "20");
    changed.clear();
    QCOMPARE(manager()->container("Once.Tools", "Another title", "Once.Other", "1", "1"), tools);
    QCOMPARE(tools->title(), QStringLiteral("&Tools"));
    QVERIFY(other->entries().isEmpty());
    QCOMPARE(timesHeld(manager()->menuBar(), "Once.Tools"), 1);
    QCOMPARE(changed.size(), 0);
}

void ActionManagerTest::unknownParentIsTheMenuBar()
{
    manager()->container("Lost", "Lost", "NoSuchMenu", "60", "10");
    QCOMPARE(timesHeld(manager()->menuBar(), "Lost"), 1);
    // Asking for a parent does not make it.
    CommandContainer* const late = manager()->container("NoSuchMenu", "Late", "Lost", "1", "1");
    QCOMPARE(late->title(), QStringLiteral("Late"));
    QVERIFY(late->entries().isEmpty());
}

void ActionManagerTest::ownParentIsTheMenuBar()
{
    manager()->container("Narcissus", "Narcissus", "Narcissus", "60", "10");
    QCOMPARE(timesHeld(manager()->menuBar(), "Narcissus"), 1);
}

void ActionManagerTest::containersNest()
{
    CommandContainer* const outer = manager()->container("Nest.Outer", "Outer", "MenuBar", "1", "");
    CommandContainer* const inner =
        manager()->container("Nest.Inner", "Inner", "Nest.Outer", "1", "");
    manager()->container("Nest.Innermost", "Innermost", "Nest.Inner", "1", "");
    QCOMPARE(content(outer), (QByteArrayList{"[Nest.Inner]"}));
    QCOMPARE(content(inner), (QByteArrayList{"[Nest.Innermost]"}));
    QCOMPARE(timesHeld(manager()->menuBar(), "Nest.Inner"), 0);
}

void ActionManagerTest::containersAreMadeWhileOneIsMade()
{
    // Whoever hears of a new menu may make more of them.
    int made = 0;
    QObject context;
    connect(manager()->menuBar(), &CommandContainer::changed, &context, [&made] {
        if (made < 200) {
            const QByteArray id = "Reentrant." + QByteArray::number(++made);
            manager()->container(id, "Reentrant", "MenuBar", "70", id);
        }
    });
    CommandContainer* const first =
        manager()->container("Reentrant.First", "First", "MenuBar", "70", "");
    QCOMPARE(made, 200);
    QCOMPARE(first->id(), QByteArray("Reentrant.First"));
    QCOMPARE(manager()->container("Reentrant.First", "", "", "", ""), first);
}

void ActionManagerTest::orderOfGroupsAndKeys()
{
    CommandContainer menu("Order");
    Command a("2/10");
    Command b("2/5");
    Command c("10/9");
    Command d("2/");
    Command e("/9");
    Command f("2/25");
    Command g("2/3");
    Command h("B/1");
    Command i("a/1");
    for (Command* command : {&a, &b, &c, &d, &e, &f, &g, &h, &i}) {
        const QByteArrayList parts = command->id().split('/');
        menu.addCommand(command, parts.at(0), parts.at(1));
    }
    QCOMPARE(content(&menu),
             (QByteArrayList{"/9", "10/9", "2/", "2/10", "2/25", "2/3", "2/5", "B/1", "a/1"}));
}

void ActionManagerTest::tiesKeepTheOrderOfAdding()
{
    CommandContainer menu("Ties");
    Command first("z");
    Command second("m");
    Command third("a");
    Command before("before");
    Command after("after");
    menu.addCommand(&after, "1", "6");
    menu.addCommand(&first, "1", "5");
    menu.addCommand(&second, "1", "5");
    menu.addCommand(&before, "1", "4");
    menu.addCommand(&third, "1", "5");
    QCOMPARE(content(&menu), (QByteArrayList{"before", "z", "m", "a", "after"}));
}

void ActionManagerTest::commandsAndContainersStandTogether()
{
    CommandContainer menu("Mixed");
    CommandContainer sub("sub");
    Command one("one");
    Command two("two");
    menu.addCommand(&two, "1", "3");
    menu.addContainer(&sub, "1", "2");
    menu.addCommand(&one, "1", "1");
    QCOMPARE(content(&menu), (QByteArrayList{"one", "[sub]", "two"}));
}

void ActionManagerTest::entriesKnowTheirGroupAndKey()
{
    CommandContainer menu("Entries");
    CommandContainer sub("sub");
    Command command("command");
    menu.addCommand(&command, "group", "key");
    menu.addContainer(&sub, "other", "yek");
    const QList<CommandContainer::Entry> entries = menu.entries();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries.at(0).command, &command);
    QCOMPARE(entries.at(0).group, QByteArray("group"));
    QCOMPARE(entries.at(0).key, QByteArray("key"));
    QCOMPARE(entries.at(1).container, &sub);
    QCOMPARE(entries.at(1).group, QByteArray("other"));
    QCOMPARE(entries.at(1).key, QByteArray("yek"));
}

void ActionManagerTest::destroyedCommandLeaves()
{
    CommandContainer menu("Leave");
    Command stays("stays");
    auto goes = std::make_unique<Command>("goes");
    menu.addCommand(goes.get(), "1", "1");
    menu.addCommand(&stays, "1", "2");
    QSignalSpy changed(&menu, &CommandContainer::changed);
    goes.reset();
    QCOMPARE(content(&menu), (QByteArrayList{"stays"}));
    QCOMPARE(changed.size(), 1);
}

void ActionManagerTest::destroyedContainerLeaves()
{
    CommandContainer menu("LeaveSub");
    Command command("command");
    auto sub = std::make_unique<CommandContainer>("sub");
    sub->addCommand(&command, "1", "1");
    menu.addContainer(sub.get(), "1", "1");
    QSignalSpy changed(&menu, &CommandContainer::changed);
    sub.reset();
    QVERIFY(menu.entries().isEmpty());
    QCOMPARE(changed.size(), 1);

    // Of a menu that is gone, the command knows nothing any more.
    changed.clear();
    command.setDefaultText("text");
    QCOMPARE(changed.size(), 0);
}

void ActionManagerTest::commandInSeveralContainers()
{
    CommandContainer one("SeveralOne");
    CommandContainer two("SeveralTwo");
    auto command = std::make_unique<Command>("command");
    one.addCommand(command.get(), "1", "1");
    two.addCommand(command.get(), "1", "1");
    QCOMPARE(content(&one), (QByteArrayList{"command"}));
    QCOMPARE(content(&two), (QByteArrayList{"command"}));
    command.reset();
    QVERIFY(one.entries().isEmpty());
    QVERIFY(two.entries().isEmpty());
}

void ActionManagerTest::nullAndSelfAreNotAdded()
{
    CommandContainer menu("Refuses");
    QSignalSpy changed(&menu, &CommandContainer::changed);
    menu.addCommand(nullptr, "1", "1");
    menu.addContainer(nullptr, "1", "1");
    menu.addContainer(&menu, "1", "1");
    QVERIFY(menu.entries().isEmpty());
    QCOMPARE(changed.size(), 0);
}

void ActionManagerTest::circlesAreNotAdded()
{
    CommandContainer outer("CircleOuter");
    CommandContainer middle("CircleMiddle");
    CommandContainer inner("CircleInner");
    outer.addContainer(&middle, "1", "1");
    middle.addContainer(&inner, "1", "1");
    QSignalSpy changed(&inner, &CommandContainer::changed);
    inner.addContainer(&outer, "1", "1");
    inner.addContainer(&middle, "1", "1");
    QVERIFY(inner.entries().isEmpty());
    QCOMPARE(changed.size(), 0);
    // Two ways to the same menu are no circle.
    outer.addContainer(&inner, "1", "2");
    QCOMPARE(content(&outer), (QByteArrayList{"[CircleMiddle]", "[CircleInner]"}));
}

void ActionManagerTest::changesTravelUpwards()
{
    CommandContainer top("Top");
    CommandContainer middle("Middle");
    CommandContainer bottom("Bottom");
    top.addContainer(&middle, "1", "1");
    middle.addContainer(&bottom, "1", "1");
    QSignalSpy topChanged(&top, &CommandContainer::changed);
    QSignalSpy bottomChanged(&bottom, &CommandContainer::changed);

    auto command = std::make_unique<Command>("command");
    bottom.addCommand(command.get(), "1", "1");
    QCOMPARE(topChanged.size(), 1);
    command->setDefaultText("text");
    QCOMPARE(topChanged.size(), 2);
    bottom.setTitle("title");
    QCOMPARE(bottom.title(), QStringLiteral("title"));
    QCOMPARE(topChanged.size(), 3);
    CommandContainer sub("sub");
    bottom.addContainer(&sub, "2", "1");
    QCOMPARE(topChanged.size(), 4);
    command.reset();
    QCOMPARE(topChanged.size(), 5);
    QCOMPARE(bottomChanged.size(), 5);

    // Never downwards.
    top.setTitle("title");
    QCOMPARE(topChanged.size(), 6);
    QCOMPARE(bottomChanged.size(), 5);
}

void ActionManagerTest::changesOfAnEntryComeOnce()
{
    CommandContainer menu("Twice");
    auto command = std::make_unique<Command>("command");
    menu.addCommand(command.get(), "1", "1");
    menu.addCommand(command.get(), "2", "1");
    QCOMPARE(content(&menu), (QByteArrayList{"command", "command"}));
    QSignalSpy changed(&menu, &CommandContainer::changed);
    command->setDefaultText("text");
    QCOMPARE(changed.size(), 1);
    command.reset();
    QVERIFY(menu.entries().isEmpty());
    QCOMPARE(changed.size(), 2);
}

void ActionManagerTest::commandProperties()
{
    Command command("Id");
    QCOMPARE(command.id(), QByteArray("Id"));
    QVERIFY(command.category().isEmpty());
    QVERIFY(command.defaultText().isEmpty());
    QVERIFY(command.defaultIcon().isNull());
    QVERIFY(command.defaultShortcut().isEmpty());
    QCOMPARE(command.context(), int(Command::NoContext));

    QSignalSpy changed(&command, &Command::changed);
    command.setCategory("Category");
    QCOMPARE(command.category(), QStringLiteral("Category"));
    QCOMPARE(changed.size(), 1);
    command.setDefaultText("&Text");
    QCOMPARE(command.defaultText(), QStringLiteral("&Text"));
    QCOMPARE(changed.size(), 2);
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    command.setDefaultIcon(QIcon(pixmap));
    QCOMPARE(command.defaultIcon().availableSizes(), QList<QSize>{QSize(8, 8)});
    QCOMPARE(changed.size(), 3);
    command.setDefaultShortcut(QKeySequence("Ctrl+Shift+I"));
    QCOMPARE(command.defaultShortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    QCOMPARE(changed.size(), 4);
    command.setContext(Command::WindowContext);
    QCOMPARE(command.context(), int(Command::WindowContext));
    QCOMPARE(changed.size(), 5);
    // None of them touched another.
    QCOMPARE(command.category(), QStringLiteral("Category"));
    QCOMPARE(command.defaultText(), QStringLiteral("&Text"));
}

void ActionManagerTest::commandContexts_data()
{
    QTest::addColumn<int>("context");
    QTest::addColumn<int>("expected");
    QTest::newRow("none") << 0 << int(Command::NoContext);
    QTest::newRow("widget") << 1 << int(Command::WidgetContext);
    QTest::newRow("window") << 2 << int(Command::WindowContext);
    QTest::newRow("global") << 3 << int(Command::GlobalContext);
    QTest::newRow("above") << 4 << int(Command::NoContext);
    QTest::newRow("below") << -1 << int(Command::NoContext);
    QTest::newRow("far above") << 2147483647 << int(Command::NoContext);
}

void ActionManagerTest::commandContexts()
{
    QFETCH(const int, context);
    QFETCH(const int, expected);
    Command command("Context");
    command.setContext(Command::GlobalContext);
    command.setContext(context);
    QCOMPARE(command.context(), expected);
}

void ActionManagerTest::actionAnswersItsCommand()
{
    QSignalSpy changed(manager(), &ActionManager::actionChanged);
    QCOMPARE(manager()->action("Answer"), nullptr);
    {
        Action action("Answer");
        QCOMPARE(action.id(), QByteArray("Answer"));
        QVERIFY(action.isEnabled());
        QCOMPARE(manager()->action("Answer"), &action);
        QCOMPARE(manager()->action("Answe"), nullptr);
        QCOMPARE(manager()->action("answer"), nullptr);
        QCOMPARE(taken(changed), (QByteArrayList{"Answer"}));

        QSignalSpy triggered(&action, &Action::triggered);
        manager()->action("Answer")->trigger();
        QCOMPARE(triggered.size(), 1);
        QCOMPARE(changed.size(), 0);
    }
    QCOMPARE(manager()->action("Answer"), nullptr);
    QCOMPARE(taken(changed), (QByteArrayList{"Answer"}));
}

void ActionManagerTest::youngestActionAnswers()
{
    Action oldest("Youngest");
    QSignalSpy changed(manager(), &ActionManager::actionChanged);
    auto middle = std::make_unique<Action>("Youngest");
    auto youngest = std::make_unique<Action>("Youngest");
    QCOMPARE(taken(changed), (QByteArrayList{"Youngest", "Youngest"}));
    QCOMPARE(manager()->action("Youngest"), youngest.get());

    // Whoever is told already finds the answer that holds from now on.
    Action* told = nullptr;
    QObject context;
    connect(manager(), &ActionManager::actionChanged, &context,
            [&told](const QByteArray& id) { told = manager()->action(id); });
    youngest.reset();
    QCOMPARE(told, middle.get());
    QCOMPARE(manager()->action("Youngest"), middle.get());
    middle.reset();
    QCOMPARE(told, &oldest);
    QCOMPARE(taken(changed), (QByteArrayList{"Youngest", "Youngest"}));
}

void ActionManagerTest::olderActionGoesUnnoticed()
{
    auto older = std::make_unique<Action>("Older");
    const Action younger("Older");
    QSignalSpy changed(manager(), &ActionManager::actionChanged);
    older.reset();
    QCOMPARE(manager()->action("Older"), &younger);
    QCOMPARE(taken(changed), QByteArrayList());
}

void ActionManagerTest::enabledAndDisabled()
{
    Action action("Enabled");
    QSignalSpy enabled(&action, &Action::enabledChanged);
    QSignalSpy changed(manager(), &ActionManager::actionChanged);
    action.setEnabled(true);
    QCOMPARE(enabled.size(), 0);
    QCOMPARE(changed.size(), 0);
    action.setEnabled(false);
    QVERIFY(!action.isEnabled());
    QCOMPARE(enabled.size(), 1);
    QCOMPARE(enabled.takeFirst().at(0).toBool(), false);
    QCOMPARE(taken(changed), (QByteArrayList{"Enabled"}));
    action.setEnabled(false);
    QCOMPARE(enabled.size(), 0);
    action.setEnabled(true);
    QVERIFY(action.isEnabled());
    QCOMPARE(enabled.takeFirst().at(0).toBool(), true);
    QCOMPARE(taken(changed), (QByteArrayList{"Enabled"}));
    // Disabled, it still answers: the command is shown disabled.
    action.setEnabled(false);
    QCOMPARE(manager()->action("Enabled"), &action);
}

void ActionManagerTest::onlyTheAnsweringActionCounts()
{
    Action older("Counts");
    Action younger("Counts");
    QSignalSpy changed(manager(), &ActionManager::actionChanged);
    older.setEnabled(false);
    QCOMPARE(taken(changed), QByteArrayList());
    younger.setEnabled(false);
    QCOMPARE(taken(changed), (QByteArrayList{"Counts"}));
}

void ActionManagerTest::disabledActionDoesNotTrigger()
{
    Action action("Trigger");
    QSignalSpy triggered(&action, &Action::triggered);
    action.setEnabled(false);
    action.trigger();
    QCOMPARE(triggered.size(), 0);
    action.setEnabled(true);
    action.trigger();
    QCOMPARE(triggered.size(), 1);
}

void ActionManagerTest::exceptionLeavesTrigger()
{
    Action action("Throws");
    connect(&action, &Action::triggered, &action, [] { throw QStringLiteral("message"); });
    QString caught;
    try {
        action.trigger();
    } catch (const QString& message) {
        caught = message;
    }
    QCOMPARE(caught, QStringLiteral("message"));
}

QTEST_MAIN(ActionManagerTest)
#include "tst_actionmanager.moc"
