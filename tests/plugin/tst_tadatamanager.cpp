// The plug-in as the terminal meets it: loaded from its file into a real core.

#include "support/filetree.h"
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

#include <QtCore/QJsonObject>
#include <QtCore/QMetaMethod>
#include <QtCore/QPluginLoader>
#include <QtCore/QTranslator>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <memory>

namespace {

// Turns every text into one that shows it was asked for.
class MarkingTranslator final : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QStringLiteral("%1|%2").arg(QLatin1String(context), QString::fromUtf8(source));
    }
    bool isEmpty() const override { return false; }
};

QString oldMinuteName()
{
    return QDate::currentDate().addDays(-30).toString(QStringLiteral("yyyyMMdd")) + "_1";
}

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
    void carriesItsIcons_data();
    void carriesItsIcons();
    void registersItsOptionsPage();
    void purgesOnceAtStartAndOnEachNewDay();
    void leavesTheStoreAloneWhenThePurgeIsOff();
    void answersEveryCommand_data();
    void answersEveryCommand();
    void doesNothingInStagesAndAtTheEnd();
    void takesItsMenuAlong();

private:
    IPlugin* plugin() const { return qobject_cast<IPlugin*>(m_loader->instance()); }
    QString secondFile() const
    {
        return m_user.filePath(QStringLiteral("tadata/S/B/X/") + oldMinuteName());
    }

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<QPluginLoader> m_loader;
    QDir m_user;
};

void TestTADataManager::init()
{
    testsupport::failOnStrayWarnings();
    m_user = QDir(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("user")));
    QVERIFY(!m_user.exists());
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<QPluginLoader>(QStringLiteral(TADATAMANAGER_FILE));
    QVERIFY2(m_loader->instance(), qPrintable(m_loader->errorString()));
}

void TestTADataManager::cleanup()
{
    delete m_loader->instance();
    QVERIFY(m_loader->unload());
    m_loader.reset();
    m_core.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestTADataManager::carriesMetadata()
{
    const QJsonObject metaData = m_loader->metaData();
    QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
             QStringLiteral("qgui.plugin.tadatamanager"));
    QCOMPARE(metaData.value(QStringLiteral("className")).toString(),
             QStringLiteral("TADataManager"));
    QVERIFY(metaData.value(QStringLiteral("MetaData")).toObject().isEmpty());
    QVERIFY(metaData.value(QStringLiteral("version")).toInt() >= 0x060200);
}

void TestTADataManager::isOneObject()
{
    QPluginLoader second(QStringLiteral(TADATAMANAGER_FILE));
    QCOMPARE(second.instance(), m_loader->instance());
    QVERIFY(!m_loader->instance()->parent());
}

void TestTADataManager::answersToItsInterfaces()
{
    QObject* const object = m_loader->instance();
    QCOMPARE(object->metaObject()->className(), "TADataManager");
    QCOMPARE(object->qt_metacast("TADataManager"), static_cast<void*>(object));
    QVERIFY(object->qt_metacast("IPlugin"));
    QCOMPARE(object->qt_metacast("com.oxa.vexdesk.Plugin.IPlugin/1.0"),
             object->qt_metacast("IPlugin"));
    QVERIFY(!object->qt_metacast("com.oxa.vexdesk.Plugin.IPlugin/2.0"));
}

void TestTADataManager::declaresItsSlotsInOrder()
{
    const QMetaObject* const meta = m_loader->instance()->metaObject();
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
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    QCOMPARE(plugin()->name(), QStringLiteral("TADataManager|Управление данными ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("TADataManager|Орвента"));
    QCOMPARE(plugin()->description(),
             QStringLiteral("TADataManager|Управление историческими данными для графиков"));
    QCOMPARE(plugin()->version(), QStringLiteral("7.06.1812"));
}

void TestTADataManager::addsItsMenu()
{
    plugin()->init(m_core.get());

    const CommandContainer* menu = nullptr;
    const QList<CommandContainer::Entry> bar = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : bar) {
        if (entry.container && entry.container->id() == "TA") {
            menu = entry.container;
            QCOMPARE(entry.key, QByteArray("25"));
            QCOMPARE(entry.group, QByteArray());
        }
    }
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Тех. &анализ"));
    QCOMPARE(menu->entries().size(), 1);
    QCOMPARE(menu->entries().first().group, QByteArray("B"));
    const CommandContainer* const commands = menu->entries().first().container;
    QVERIFY(commands);
    QCOMPARE(commands->id(), QByteArray("100"));
    QCOMPARE(commands->title(), QStringLiteral("&Управление данными ТА"));
    QCOMPARE(commands->parent(), m_loader->instance());

    struct Expected
    {
        const char* id;
        const char* text;
        QKeySequence shortcut;
    };
    const QList<Expected> expected{
        {"1_Import", "&Импортировать...", QKeySequence(Qt::SHIFT | Qt::Key_I)},
        {"2_Export", "&Экспортировать...", QKeySequence(Qt::SHIFT | Qt::Key_X)},
        {"3_Edit", "&Редактировать...", QKeySequence(Qt::SHIFT | Qt::Key_D)},
    };
    const QList<CommandContainer::Entry> entries = commands->entries();
    QCOMPARE(entries.size(), expected.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const Command* const command = entries[i].command;
        QVERIFY(command);
        QCOMPARE(command->id(), QByteArray(expected[i].id));
        QCOMPARE(command->defaultText(), QString::fromUtf8(expected[i].text));
        QCOMPARE(command->defaultShortcut(), expected[i].shortcut);
        QCOMPARE(command->category(), QStringLiteral("Технический анализ"));
        QCOMPARE(command->context(), 3);
        QVERIFY(!command->defaultIcon().isNull());
        QCOMPARE(command->parent(), m_loader->instance());
        Action* const action = ActionManager::instance()->action(command->id());
        QVERIFY(action);
        QCOMPARE(action->parent(), m_loader->instance());
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
}

void TestTADataManager::registersItsOptionsPage()
{
    plugin()->init(m_core.get());
    QCOMPARE(m_core->optionsPages().size(), 1);
    IOptionsPage* const page = m_core->optionsPages().first();
    QCOMPARE(page->id(), QStringLiteral("TADataManager.General"));
    const auto* const object = dynamic_cast<QObject*>(page);
    QVERIFY(object);
    QCOMPARE(object->parent(), m_loader->instance());
}

void TestTADataManager::purgesOnceAtStartAndOnEachNewDay()
{
    testsupport::writeFile(secondFile(), "old");
    plugin()->init(m_core.get());
    QVERIFY(!QFile::exists(secondFile()));

    for (int day = 0; day < 2; ++day) {
        testsupport::writeFile(secondFile(), "old");
        Q_EMIT m_core->notifier()->aNewDay();
        QVERIFY(!QFile::exists(secondFile()));
    }
}

void TestTADataManager::leavesTheStoreAloneWhenThePurgeIsOff()
{
    AppSettings(QStringLiteral("TADataManager")).setValue(QStringLiteral("deleteSeconds"), false);
    testsupport::writeFile(secondFile(), "old");
    plugin()->init(m_core.get());
    Q_EMIT m_core->notifier()->aNewDay();
    QVERIFY(QFile::exists(secondFile()));
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
    plugin()->init(m_core.get());
    testsupport::ModalSteps steps;
    if (id == "1_Import") {
        steps.on<QFileDialog>([](QFileDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    } else {
        const QByteArray window = id == "3_Edit" ? "EditorTADataDialog" : "ExportTADataWizard";
        steps.on<QDialog>([window](QDialog* dialog) {
            QCOMPARE(QByteArray(dialog->metaObject()->className()), window);
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
    }
    ActionManager::instance()->action(id)->trigger();
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestTADataManager::doesNothingInStagesAndAtTheEnd()
{
    plugin()->init(m_core.get());
    testsupport::writeFile(secondFile(), "old");
    plugin()->initStage(IPlugin::InitStage::PluginsReady);
    plugin()->initStage(IPlugin::InitStage::WindowShown);
    plugin()->tini();
    QVERIFY(QFile::exists(secondFile()));
    QVERIFY(ActionManager::instance()->action("1_Import"));
}

void TestTADataManager::takesItsMenuAlong()
{
    plugin()->init(m_core.get());
    CommandContainer* const menu =
        ActionManager::instance()->container("TA", QString(), "MenuBar", QByteArray(), "25");
    QCOMPARE(menu->entries().size(), 1);
    delete m_loader->instance();
    QVERIFY(menu->entries().isEmpty());
    QVERIFY(!ActionManager::instance()->action("1_Import"));
    // The guarded pointer of the library notices: a new object is made.
    QVERIFY(m_loader->instance());
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
