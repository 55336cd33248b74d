// SPDX-License-Identifier: MIT
// The plug-in as the terminal meets it: loaded from its file into a real core.

#include "support/filetree.h"
#include "support/hands.h"
#include "support/loadedplugin.h"
#include "support/localzone.h"
#include "support/markingtranslator.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/appsettings.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/ioptionspage.h>
#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <sys/inotify.h>
#include <unistd.h>

#include <functional>
#include <memory>

using testsupport::LoadedPlugin;

namespace {

QString secondName(const QDate& day)
{
    return day.toString(QStringLiteral("yyyyMMdd")) + "_1";
}

QString oldSecondName()
{
    return secondName(QDate::currentDate().addDays(-30));
}

QImage picture(const QIcon& icon)
{
    return icon.pixmap(16).toImage();
}

QIcon commandIcon(const char* name)
{
    return QIcon(QStringLiteral(":qm/icons/%1.png").arg(QLatin1String(name)));
}

const CommandContainer* theMenu()
{
    const QList<CommandContainer::Entry> bar = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : bar) {
        if (entry.container && entry.container->id() == "TA")
            return entry.container;
    }
    return nullptr;
}

// A core that lets the test look around each time when the plug-in turns to it.
class WatchingCore final : public ICore
{
public:
    std::function<void()> whenPageIsAdded = [] {};
    std::function<void()> whenNotifierIsTaken = [] {};
    QList<IOptionsPage*> pages;
    vexdesk::Notifier theNotifier;

    void addOptionsPage(IOptionsPage* page) override
    {
        pages.append(page);
        whenPageIsAdded();
    }
    QObject* notifier() const override
    {
        whenNotifierIsTaken();
        return const_cast<vexdesk::Notifier*>(&theNotifier);
    }
    IDatabase* database() const override { return nullptr; }
    IRawQueue* rawQueue() const override { return nullptr; }
};

// Counts how often a directory is opened, which is how often somebody walks through it.
class Openings final
{
public:
    explicit Openings(const QString& directory)
        : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        // With the closings between them no two openings become one.
        QVERIFY(::inotify_add_watch(m_descriptor, QFile::encodeName(directory).constData(),
                                    IN_OPEN | IN_CLOSE_NOWRITE | IN_ONLYDIR) >= 0);
    }
    ~Openings() { ::close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(Openings)

    // Those since the last call.
    int take() const
    {
        int count = 0;
        alignas(inotify_event) char events[4096];
        for (ssize_t got = 0; (got = ::read(m_descriptor, events, sizeof events)) > 0;) {
            for (const char* at = events; at < events + got;) {
                const auto* const event = reinterpret_cast<const inotify_event*>(at);
                if (event->len == 0 && (event->mask & IN_OPEN))
                    ++count;
                at += sizeof(inotify_event) + event->len;
            }
        }
        return count;
    }

private:
    int m_descriptor;
};

} // namespace

class TestTADataManager final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void carriesMetadata();
    void isOneObject();
    void answersToItsInterfaces();
    void declaresItsSlotsInOrder();
    void introducesItself();
    void translatesItsTextsButNotItsVersion();
    void addsItsMenu();
    void addsItsCommands();
    void carriesItsIcons_data();
    void carriesItsIcons();
    void registersItsOptionsPage();
    void purgesAtStartAndOnEachNewDay();
    void purgesOnceEachTime();
    void startsStepByStep();
    void listensToTheNotifierOfItsCore();
    void reckonsDaysByTheLocalDate_data();
    void reckonsDaysByTheLocalDate();
    void purgesTheStoreAndNothingBesideIt();
    void leavesTheStoreAloneWhenThePurgeIsOff();
    void makesNoStoreWhenThePurgeIsOff();
    void answersEveryCommand_data();
    void answersEveryCommand();
    void destroysTheWindowOfACommand_data() { answersEveryCommand_data(); }
    void destroysTheWindowOfACommand();
    void doesNothingInStagesAndAtTheEnd();
    void takesItsMenuAlong();

private:
    IPlugin* plugin() const { return m_plugin->plugin(); }
    QString secondFile() const
    {
        return m_plugin->user().filePath(QStringLiteral("tadata/S/B/X/") + oldSecondName());
    }
    void writeSecondFile() const { testsupport::writeFile(secondFile(), "old"); }
    void purge() const
    {
        QVERIFY(QMetaObject::invokeMethod(m_plugin->object(), "removeOldSecondFiles"));
    }

    std::unique_ptr<LoadedPlugin> m_plugin;
};

void TestTADataManager::init()
{
    testsupport::failOnStrayWarnings();
    m_plugin = std::make_unique<LoadedPlugin>();
}

void TestTADataManager::cleanup()
{
    m_plugin.reset();
}

void TestTADataManager::carriesMetadata()
{
    const QJsonObject metaData = m_plugin->loader().metaData();
    QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
             QStringLiteral("qgui.plugin.tadatamanager"));
    QCOMPARE(metaData.value(QStringLiteral("className")).toString(),
             QStringLiteral("TADataManager"));
    QVERIFY(metaData.value(QStringLiteral("MetaData")).toObject().isEmpty());
    QVERIFY(metaData.value(QStringLiteral("version")).toInt() >= 0x060200);
}

void TestTADataManager::isOneObject()
{
    QPluginLoader second(testsupport::pluginFile());
    QCOMPARE(second.instance(), m_plugin->object());
    QVERIFY(!m_plugin->object()->parent());
}

void TestTADataManager::answersToItsInterfaces()
{
    QObject* const object = m_plugin->object();
    QCOMPARE(object->metaObject()->className(), "TADataManager");
    QCOMPARE(object->qt_metacast("TADataManager"), static_cast<void*>(object));
    QVERIFY(object->qt_metacast("IPlugin"));
    QCOMPARE(object->qt_metacast("com.oxa.vexdesk.Plugin.IPlugin/1.0"),
             object->qt_metacast("IPlugin"));
    QVERIFY(!object->qt_metacast("com.oxa.vexdesk.Plugin.IPlugin/2.0"));
}

void TestTADataManager::declaresItsSlotsInOrder()
{
    const QMetaObject* const meta = m_plugin->object()->metaObject();
    QByteArrayList methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        QCOMPARE(meta->method(i).methodType(), QMetaMethod::Slot);
        methods.append(meta->method(i).methodSignature());
    }
    QCOMPARE(methods, QByteArrayList({"importTAData()", "exportTAData()", "editTAData()",
                                      "removeOldSecondFiles()"}));
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void TestTADataManager::introducesItself()
{
    QCOMPARE(plugin()->code().toByteArray(), QByteArray("tadatamanager"));
    QCOMPARE(plugin()->code().size(), 13);
    QCOMPARE(plugin()->name(), QStringLiteral("Управление данными ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("Орвента"));
    QCOMPARE(plugin()->version(), QStringLiteral("7.06.1812"));
    QCOMPARE(plugin()->description(),
             QStringLiteral("Управление историческими данными для графиков"));
}

void TestTADataManager::translatesItsTextsButNotItsVersion()
{
    const testsupport::MarkingTranslator translator;
    QCOMPARE(plugin()->name(), QStringLiteral("TADataManager|Управление данными ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("TADataManager|Орвента"));
    QCOMPARE(plugin()->description(),
             QStringLiteral("TADataManager|Управление историческими данными для графиков"));
    QCOMPARE(plugin()->version(), QStringLiteral("7.06.1812"));
}

void TestTADataManager::addsItsMenu()
{
    m_plugin->start();

    const QList<CommandContainer::Entry> bar = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : bar) {
        if (entry.container && entry.container->id() == "TA") {
            QCOMPARE(entry.key, QByteArray("25"));
            QCOMPARE(entry.group, QByteArray());
        }
    }
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Тех. &анализ"));
    QCOMPARE(menu->entries().size(), 1);
    QCOMPARE(menu->entries().first().group, QByteArray("B"));
    QCOMPARE(menu->entries().first().key, QByteArray());
    const CommandContainer* const commands = menu->entries().first().container;
    QVERIFY(commands);
    QCOMPARE(commands->id(), QByteArray("100"));
    QCOMPARE(commands->title(), QStringLiteral("&Управление данными ТА"));
    QCOMPARE(commands->parent(), m_plugin->object());
}

void TestTADataManager::addsItsCommands()
{
    m_plugin->start();
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);

    struct Expected
    {
        const char* id;
        const char* text;
        const char* icon;
        QKeySequence shortcut;
    };
    const QList<Expected> expected{
        {"1_Import", "&Импортировать...", "import", QKeySequence(Qt::SHIFT | Qt::Key_I)},
        {"2_Export", "&Экспортировать...", "export", QKeySequence(Qt::SHIFT | Qt::Key_X)},
        {"3_Edit", "&Редактировать...", "edit", QKeySequence(Qt::SHIFT | Qt::Key_D)},
    };
    const QList<CommandContainer::Entry> entries = menu->entries().first().container->entries();
    QCOMPARE(entries.size(), expected.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const Command* const command = entries[i].command;
        QVERIFY(command);
        QCOMPARE(entries[i].group, QByteArray());
        QCOMPARE(entries[i].key, QByteArray());
        QCOMPARE(command->id(), QByteArray(expected[i].id));
        QCOMPARE(command->defaultText(), QString::fromUtf8(expected[i].text));
        QCOMPARE(command->defaultShortcut(), expected[i].shortcut);
        QCOMPARE(command->category(), QStringLiteral("Технический анализ"));
        QCOMPARE(command->context(), 3);
        QCOMPARE(picture(command->defaultIcon()), picture(commandIcon(expected[i].icon)));
        QCOMPARE(command->parent(), m_plugin->object());
        Action* const action = ActionManager::instance()->action(command->id());
        QVERIFY(action);
        QCOMPARE(action->parent(), m_plugin->object());
    }
}

void TestTADataManager::carriesItsIcons_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"import", "export", "edit"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestTADataManager::carriesItsIcons()
{
    QFETCH(const QString, name);
    const QImage normal(QStringLiteral(":qm/icons/%1.png").arg(name));
    const QImage large(QStringLiteral(":qm/icons/%1@2x.png").arg(name));
    QVERIFY(!normal.isNull());
    QVERIFY(normal.width() == 16 || normal.width() == 24);
    QCOMPARE(normal.height(), normal.width());
    QCOMPARE(large.size(), normal.size() * 2);
    QVERIFY(normal.hasAlphaChannel());
    // Each command has a picture of its own.
    for (const char* other : {"import", "export", "edit"})
        QCOMPARE(picture(commandIcon(other)) == picture(QIcon(QPixmap::fromImage(normal))),
                 name == QLatin1String(other));
}

void TestTADataManager::registersItsOptionsPage()
{
    m_plugin->start();
    QCOMPARE(m_plugin->core().optionsPages().size(), 1);
    IOptionsPage* const page = m_plugin->core().optionsPages().first();
    QCOMPARE(page->id(), QStringLiteral("TADataManager.General"));
    const auto* const object = dynamic_cast<QObject*>(page);
    QVERIFY(object);
    QCOMPARE(object->parent(), m_plugin->object());
}

void TestTADataManager::purgesAtStartAndOnEachNewDay()
{
    writeSecondFile();
    m_plugin->start();
    QVERIFY(!QFile::exists(secondFile()));

    for (int day = 0; day < 2; ++day) {
        writeSecondFile();
        Q_EMIT m_plugin->core().notifier()->aNewDay();
        QVERIFY(!QFile::exists(secondFile()));
    }
}

void TestTADataManager::purgesOnceEachTime()
{
    writeSecondFile();
    const Openings walks(QFileInfo(secondFile()).path());
    purge();
    const int once = walks.take();
    QVERIFY(once > 0);

    m_plugin->start();
    QCOMPARE(walks.take(), once);
    Q_EMIT m_plugin->core().notifier()->aNewDay();
    QCOMPARE(walks.take(), once);
}

// A terminal that shows its menu already has the plug-in's, and the connection comes last.
void TestTADataManager::startsStepByStep()
{
    writeSecondFile();
    QStringList steps;
    WatchingCore core;
    core.whenPageIsAdded = [this, &steps] {
        QVERIFY(ActionManager::instance()->action("3_Edit"));
        QCOMPARE(theMenu()->entries().size(), 1);
        QVERIFY(QFile::exists(secondFile()));
        steps.append(QStringLiteral("page"));
    };
    core.whenNotifierIsTaken = [this, &core, &steps] {
        QVERIFY(!QFile::exists(secondFile()));
        steps.append(QStringLiteral("notifier"));
        writeSecondFile();
        Q_EMIT core.theNotifier.aNewDay();
    };
    plugin()->init(&core);
    QCOMPARE(steps, QStringList({QStringLiteral("page"), QStringLiteral("notifier")}));
    QCOMPARE(core.pages.size(), 1);
    QVERIFY(QFile::exists(secondFile()));
    Q_EMIT core.theNotifier.aNewDay();
    QVERIFY(!QFile::exists(secondFile()));
}

void TestTADataManager::listensToTheNotifierOfItsCore()
{
    WatchingCore core;
    int asked = 0;
    core.whenNotifierIsTaken = [&asked] { ++asked; };
#ifdef QT_NO_DEBUG
    // The youngest is the one that instance() knows. With assertions there cannot be another.
    const vexdesk::Core another;
    QCOMPARE(ICore::instance(), static_cast<const ICore*>(&another));
#endif
    plugin()->init(&core);
    QCOMPARE(asked, 1);
    QCOMPARE(core.pages.size(), 1);
#ifdef QT_NO_DEBUG
    QVERIFY(another.optionsPages().isEmpty());
    writeSecondFile();
    Q_EMIT another.notifier()->aNewDay();
    QVERIFY(QFile::exists(secondFile()));
#endif
    writeSecondFile();
    Q_EMIT core.theNotifier.aNewDay();
    QVERIFY(!QFile::exists(secondFile()));
}

// At any time of the day it is another date than in Greenwich in one of these zones at least.
void TestTADataManager::reckonsDaysByTheLocalDate_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::newRow("fourteen hours ahead") << QByteArray("AHEAD-14");
    QTest::newRow("twelve hours behind") << QByteArray("BEHIND12");
    QTest::newRow("in Greenwich") << QByteArray("UTC0");
}

void TestTADataManager::reckonsDaysByTheLocalDate()
{
    QFETCH(const QByteArray, zone);
    const testsupport::LocalZone here(zone);
    const QDir series(m_plugin->user().filePath(QStringLiteral("tadata/S/B/X")));
    QDate today;
    QStringList left;
    do {
        today = QDate::currentDate();
        for (int age = 5; age <= 10; ++age)
            testsupport::writeFile(series.filePath(secondName(today.addDays(-age))), "x");
        purge();
        left = testsupport::readTree(series).keys();
    } while (today != QDate::currentDate());
    QCOMPARE(left, QStringList({secondName(today.addDays(-7)), secondName(today.addDays(-6)),
                                secondName(today.addDays(-5))}));
}

void TestTADataManager::purgesTheStoreAndNothingBesideIt()
{
    for (const char* path : {"", "other/", "tadata2/S/B/X/", "S/B/X/"})
        testsupport::writeFile(m_plugin->user().filePath(QLatin1String(path) + oldSecondName()),
                               "x");
    const auto before = testsupport::readTree(m_plugin->user());
    writeSecondFile();
    m_plugin->start();
    Q_EMIT m_plugin->core().notifier()->aNewDay();
    QCOMPARE(testsupport::readTree(m_plugin->user()), before);
}

void TestTADataManager::leavesTheStoreAloneWhenThePurgeIsOff()
{
    AppSettings(QStringLiteral("TADataManager")).setValue(QStringLiteral("deleteSeconds"), false);
    writeSecondFile();
    m_plugin->start();
    Q_EMIT m_plugin->core().notifier()->aNewDay();
    QVERIFY(QFile::exists(secondFile()));
}

void TestTADataManager::makesNoStoreWhenThePurgeIsOff()
{
    AppSettings(QStringLiteral("TADataManager")).setValue(QStringLiteral("deleteSeconds"), false);
    m_plugin->start();
    Q_EMIT m_plugin->core().notifier()->aNewDay();
    QVERIFY(!m_plugin->user().exists(QStringLiteral("tadata")));
}

void TestTADataManager::answersEveryCommand_data()
{
    QTest::addColumn<QByteArray>("id");
    for (const char* id : {"1_Import", "2_Export", "3_Edit"})
        QTest::newRow(id) << QByteArray(id);
}

void TestTADataManager::answersEveryCommand()
{
    QFETCH(const QByteArray, id);
    m_plugin->start();
    testsupport::ModalSteps steps;
    if (id == "1_Import") {
        steps.on<QFileDialog>([](QFileDialog* dialog) { hands::keyClick(dialog, Qt::Key_Escape); });
    } else {
        const QByteArray window = id == "3_Edit" ? "EditorTADataDialog" : "ExportTADataWizard";
        steps.on<QDialog>([window](QDialog* dialog) {
            QCOMPARE(QByteArray(dialog->metaObject()->className()), window);
            hands::keyClick(dialog, Qt::Key_Escape);
        });
    }
    LoadedPlugin::trigger(id);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestTADataManager::destroysTheWindowOfACommand()
{
    QFETCH(const QByteArray, id);
    m_plugin->start();
    QPointer<QDialog> window;
    testsupport::ModalSteps steps;
    steps.on<QDialog>([&window](QDialog* dialog) {
        window = dialog;
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    const QWidgetList before = QApplication::topLevelWidgets();
    LoadedPlugin::trigger(id);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QVERIFY(!window);
    QCOMPARE(QApplication::topLevelWidgets(), before);
}

void TestTADataManager::doesNothingInStagesAndAtTheEnd()
{
    m_plugin->start();
    writeSecondFile();
    plugin()->initStage(IPlugin::InitStage::PluginsReady);
    plugin()->initStage(IPlugin::InitStage::WindowShown);
    plugin()->tini();
    QVERIFY(QFile::exists(secondFile()));
    QVERIFY(ActionManager::instance()->action("1_Import"));
}

void TestTADataManager::takesItsMenuAlong()
{
    m_plugin->start();
    CommandContainer* const menu =
        ActionManager::instance()->container("TA", QString(), "MenuBar", QByteArray(), "25");
    QCOMPARE(menu->entries().size(), 1);
    delete m_plugin->object();
    QVERIFY(menu->entries().isEmpty());
    QVERIFY(!ActionManager::instance()->action("1_Import"));
    // The guarded pointer of the library notices: a new object is made.
    QVERIFY(m_plugin->object());
}

int main(int argc, char** argv)
{
    // The dialog that the toolkit draws is the one that a test can drive.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    TestTADataManager test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_tadatamanager.moc"
