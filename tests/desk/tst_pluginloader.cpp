// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "desk/pluginlist.h"
#include "desk/pluginloader.h"
#include "pluginfiles.h"
#include "plugins/callrecord.h"
#include "plugins/emptypage.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/ioptionspage.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QLibrary>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

using vexdesk::PluginLoader;
using vexdesk::PluginRecord;

namespace {

// Puts another minor version of Qt into a library's metadata. They stand in a note or section of
// their own: a marker of 12 bytes, then one byte each for the format and Qt's two versions.
QByteArray withQtVersion(QByteArray library, char major, char minor)
{
    qsizetype marker = library.indexOf(QByteArray("qt-project!\0", 12));
    if (marker < 0)
        marker = library.indexOf("QTMETADATA !");
    if (marker < 0 || library.at(marker + 13) != QT_VERSION_MAJOR ||
        library.at(marker + 14) != QT_VERSION_MINOR)
        return QByteArray();
    library[marker + 13] = major;
    library[marker + 14] = minor;
    return library;
}

QStringList fileNames(const QList<PluginRecord>& records)
{
    QStringList names;
    for (const PluginRecord& record : records)
        names.append(QFileInfo(record.path).fileName());
    return names;
}

} // namespace

class TestPluginLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void drivesAPluginThroughItsLife();
    void loadsInTheOrderOfNamesAndLeavesInReverse();
    void takesDirectoriesInTheirOrder();
    void leavesOtherFilesAlone();
    void takesALinkedFileOnce();
    void refusesAForeignPluginWithoutRunningIt();
    void refusesAnotherQtWithoutRunningIt_data();
    void refusesAnotherQtWithoutRunningIt();
    void refusesABrokenFile_data();
    void refusesABrokenFile();
    void refusesALibraryThatCannotBeLoaded();
    void refusesAnObjectThatIsNoPlugin();
    void refusesACodeThatIsTaken();
    void refusesAPluginWhoseInitThrows_data();
    void refusesAPluginWhoseInitThrows();
    void refusesAFolderThatEverybodyMayWriteTo_data();
    void refusesAFolderThatEverybodyMayWriteTo();
    void refusesALinkIntoSuchAFolder();
    void takesAFolderThatTheGroupMayWriteTo();
    void refusesAFolderOfSomebodyElse();
    void anotherUserTakesHisOwnFolderAndThatOfRoot();
    void goesOnAfterEveryKindOfFault();
    void reportsALaterExceptionAndGoesOn();
    void dropsOptionsPages();
    void unloadsWhenDestroyed();
    void canLoadAgain();
    void listsPluginsForScripts();
    void namesStandardDirectories();

private:
    QString path(const QString& name) const { return m_directory->filePath(name); }
    void load(const QStringList& plugins);
    void load() { m_loader->load({m_directory->path()}, m_core.get()); }
    // Of the only file: that it was refused, without a line of its code, and why.
    QString refusal() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<PluginLoader> m_loader;
};

void TestPluginLoader::init()
{
    testsupport::failOnStrayWarnings();
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<PluginLoader>();
    qunsetenv("DESK_TEST_GOOD_RAN");
    qunsetenv("DESK_TEST_FOREIGN_RAN");
    desktest::takeCalls();
}

void TestPluginLoader::cleanup()
{
    qApp->setProperty("throwIn", QVariant());
    qApp->setProperty("throwType", QVariant());
    m_loader.reset();
    m_core.reset();
}

void TestPluginLoader::load(const QStringList& plugins)
{
    desktest::copyPlugins(plugins, QDir(m_directory->path()));
    m_loader->load({m_directory->path()}, m_core.get());
}

void TestPluginLoader::drivesAPluginThroughItsLife()
{
    const QSignalSpy changed(m_loader.get(), &PluginLoader::changed);
    load({QStringLiteral("good")});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.reason, QString());
    QCOMPARE(record.state, PluginRecord::State::Loaded);
    QCOMPARE(record.path, path(QFileInfo(desktest::pluginFile("good")).fileName()));
    QCOMPARE(record.code, QStringLiteral("GOOD"));
    QCOMPARE(record.name, QStringLiteral("История котировок"));
    QCOMPARE(record.author, QStringLiteral("Мастерская"));
    QCOMPARE(record.version, QStringLiteral("7.6"));
    QCOMPARE(record.description, QStringLiteral("Импорт, экспорт и правка истории"));
    QCOMPARE(m_loader->loadedCount(), 1);
    QCOMPARE(m_loader->refusedCount(), 0);
    QCOMPARE(m_loader->directories(), QStringList{m_directory->path()});

    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.init"});
    m_loader->initStage(IPlugin::InitStage::PluginsReady);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.PluginsReady"});
    m_loader->initStage(IPlugin::InitStage::WindowShown);
    QCOMPARE(desktest::takeCalls(), QStringList{"GOOD.WindowShown"});
    m_loader->unload();
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.tini", "GOOD.destroyed"}));
    QCOMPARE(m_loader->records().size(), 0);
    QCOMPARE(m_loader->loadedCount(), 0);
    QCOMPARE(changed.count(), 2);
}

void TestPluginLoader::loadsInTheOrderOfNamesAndLeavesInReverse()
{
    load({QStringLiteral("second"), QStringLiteral("good")});
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.init", "SECOND.init"}));
    m_loader->initStage(IPlugin::InitStage::PluginsReady);
    m_loader->initStage(IPlugin::InitStage::WindowShown);
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.PluginsReady", "SECOND.PluginsReady",
                                                 "GOOD.WindowShown", "SECOND.WindowShown"}));
    m_loader->unload();
    QCOMPARE(desktest::takeCalls(),
             QStringList({"SECOND.tini", "GOOD.tini", "SECOND.destroyed", "GOOD.destroyed"}));
}

void TestPluginLoader::takesDirectoriesInTheirOrder()
{
    const QTemporaryDir other;
    desktest::copyPlugins({QStringLiteral("second")}, QDir(other.path()));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(m_directory->path()));
    m_loader->load({path("missing"), other.path(), m_directory->path()}, m_core.get());
    QCOMPARE(desktest::takeCalls(), QStringList({"SECOND.init", "GOOD.init"}));
    QCOMPARE(m_loader->records().size(), 2);
}

void TestPluginLoader::leavesOtherFilesAlone()
{
    testsupport::writeFile(path("README.txt"), "not a library");
    testsupport::writeFile(path("good.so.bak"), "not a library either");
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("folder.so")));
    load({QStringLiteral("good")});
    QCOMPARE(m_loader->records().size(), 1);
    QCOMPARE(m_loader->loadedCount(), 1);
}

void TestPluginLoader::takesALinkedFileOnce()
{
    desktest::copyPlugins({QStringLiteral("good")}, QDir(m_directory->path()));
    const QString file = QFileInfo(desktest::pluginFile("good")).fileName();
    if (!QFile::link(path(file), path("z" + file)))
        QSKIP("no links in this file system");
    m_loader->load({m_directory->path(), m_directory->path()}, m_core.get());
    QCOMPARE(fileNames(m_loader->records()), QStringList{file});
    QCOMPARE(m_loader->loadedCount(), 1);
}

void TestPluginLoader::refusesAForeignPluginWithoutRunningIt()
{
    load({QStringLiteral("foreign")});
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.state, PluginRecord::State::Refused);
    QCOMPARE(record.reason,
             QStringLiteral("Это модуль другой программы: его интерфейс "
                            "\"org.example.editor.Foreign\", а нужен \"qgui.plugin.*\"."));
    QVERIFY(!qEnvironmentVariableIsSet("DESK_TEST_FOREIGN_RAN"));
    // Its code would have been noticed.
    QLibrary library(record.path);
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    QVERIFY(qEnvironmentVariableIsSet("DESK_TEST_FOREIGN_RAN"));
}

void TestPluginLoader::refusesAnotherQtWithoutRunningIt_data()
{
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::newRow("newer minor version") << 6 << 99;
    QTest::newRow("older major version") << 5 << 15;
    QTest::newRow("newer major version") << 7 << 0;
}

void TestPluginLoader::refusesAnotherQtWithoutRunningIt()
{
    QFETCH(int, major);
    QFETCH(int, minor);
    const QByteArray library = withQtVersion(testsupport::readFile(desktest::pluginFile("good")),
                                             static_cast<char>(major), static_cast<char>(minor));
    QVERIFY(!library.isEmpty());
    testsupport::writeFile(path("other.so"), library);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                           "other\\.so:\n +Plugin uses incompatible")));
    m_loader->load({m_directory->path()}, m_core.get());
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.state, PluginRecord::State::Refused);
    QCOMPARE(record.reason,
             QStringLiteral("Модуль собран для Qt %1.%2, а терминал работает с Qt %3.")
                 .arg(QString::number(major), QString::number(minor), QLatin1String(qVersion())));
    QCOMPARE(record.code, QString());
    QVERIFY(!qEnvironmentVariableIsSet("DESK_TEST_GOOD_RAN"));
    QCOMPARE(desktest::takeCalls(), QStringList());
}

void TestPluginLoader::refusesABrokenFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QByteArray good = testsupport::readFile(desktest::pluginFile("good"));
    QVERIFY(good.size() > 8192);
    const QString broken = QStringLiteral("Файл повреждён или не является модулем Qt.");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("Файл пуст.");
    QTest::newRow("text") << QByteArray("Just a text.\n") << broken;
    QTest::newRow("long text") << QByteArray("Just a text.\n").repeated(5000) << broken;
    QTest::newRow("only the header") << good.left(64) << broken;
    QTest::newRow("first page") << good.left(4096) << broken;
    QTest::newRow("two pages") << good.left(8192) << broken;
    QTest::newRow("plain library")
        << testsupport::readFile(desktest::pluginFile("plain")) << broken;
}

void TestPluginLoader::refusesABrokenFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    testsupport::writeFile(path("broken.so"), content);
    m_loader->load({m_directory->path()}, m_core.get());
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.state, PluginRecord::State::Refused);
    QCOMPARE(record.reason, reason);
    // What Qt says stands apart: it may be in another language.
    QCOMPARE(record.details.isEmpty(), content.isEmpty());
    QVERIFY(!qEnvironmentVariableIsSet("DESK_TEST_GOOD_RAN"));
    QCOMPARE(desktest::takeCalls(), QStringList());
}

void TestPluginLoader::refusesALibraryThatCannotBeLoaded()
{
    load({QStringLiteral("unresolved")});
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.state, PluginRecord::State::Refused);
    QCOMPARE(record.reason, QStringLiteral("Код модуля не загружается."));
    QVERIFY2(record.details.contains(QStringLiteral("deskTestFunctionOfNoLibrary")),
             qPrintable(record.details));
}

void TestPluginLoader::refusesAnObjectThatIsNoPlugin()
{
    load({QStringLiteral("hollow")});
    QCOMPARE(m_loader->records().size(), 1);
    QCOMPARE(m_loader->records().constFirst().reason,
             QStringLiteral("Объект модуля не поддерживает интерфейс терминала "
                            "(com.oxa.vexdesk.Plugin.IPlugin/1.0)."));
    QCOMPARE(desktest::takeCalls(), QStringList{"HOLLOW.destroyed"});
}

void TestPluginLoader::refusesACodeThatIsTaken()
{
    load({QStringLiteral("good"), QStringLiteral("twin")});
    QCOMPARE(m_loader->records().size(), 2);
    QCOMPARE(m_loader->records().at(0).state, PluginRecord::State::Loaded);
    const PluginRecord twin = m_loader->records().at(1);
    QCOMPARE(twin.state, PluginRecord::State::Refused);
    QCOMPARE(twin.reason, QStringLiteral("Модуль с кодом \"GOOD\" уже загружен."));
    QCOMPARE(twin.name, QStringLiteral("Двойник"));
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.init", "TWIN.destroyed"}));
}

void TestPluginLoader::refusesAPluginWhoseInitThrows_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("exception of its own") << "exception"
                                          << "собственная ошибка";
    QTest::newRow("QString") << "text"
                             << "нет лицензии";
    QTest::newRow("number") << "number"
                            << "Произошла неизвестная ошибка.";
}

void TestPluginLoader::refusesAPluginWhoseInitThrows()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    qApp->setProperty("throwType", type);
    const qsizetype entries = ActionManager::instance()->menuBar()->entries().size();
    const QSignalSpy failed(m_loader.get(), &PluginLoader::callFailed);
    load({QStringLiteral("throwing")});
    QCOMPARE(m_loader->records().size(), 1);
    const PluginRecord record = m_loader->records().constFirst();
    QCOMPARE(record.state, PluginRecord::State::Refused);
    QCOMPARE(record.reason, QStringLiteral("Ошибка при запуске модуля: %1").arg(text));
    QCOMPARE(record.code, QStringLiteral("THROWING"));
    QCOMPARE(record.version, QStringLiteral("0.1"));
    // What it had registered is gone with it, and it is called no more.
    QCOMPARE(m_core->optionsPages(), QList<IOptionsPage*>());
    QCOMPARE(ActionManager::instance()->menuBar()->entries().size(), entries);
    m_loader->initStage(IPlugin::InitStage::PluginsReady);
    m_loader->unload();
    QCOMPARE(desktest::takeCalls(), QStringList({"THROWING.init", "THROWING.destroyed"}));
    QCOMPARE(failed.count(), 0);
}

QString TestPluginLoader::refusal() const
{
    const QList<PluginRecord> records = m_loader->records();
    if (records.size() != 1 || records.constFirst().state != PluginRecord::State::Refused)
        return QStringLiteral("not refused");
    if (qEnvironmentVariableIsSet("DESK_TEST_GOOD_RAN") || !desktest::calls().isEmpty())
        return QStringLiteral("its code ran");
    return records.constFirst().reason;
}

void TestPluginLoader::refusesAFolderThatEverybodyMayWriteTo_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("everybody") << 0777;
    QTest::newRow("others alone") << 0702;
    QTest::newRow("as a folder of temporary files") << 01777;
}

void TestPluginLoader::refusesAFolderThatEverybodyMayWriteTo()
{
    QFETCH(const int, mode);
    desktest::copyPlugins({QStringLiteral("good")}, QDir(m_directory->path()));
    QCOMPARE(::chmod(qPrintable(m_directory->path()), mode), 0);
    load();
    QCOMPARE(refusal(), QStringLiteral("В каталог %1 может писать кто угодно. Запретите это, "
                                       "например командой chmod o-w, и запустите терминал снова.")
                            .arg(m_directory->path()));
}

void TestPluginLoader::refusesALinkIntoSuchAFolder()
{
    const QTemporaryDir open;
    desktest::copyPlugins({QStringLiteral("good")}, QDir(open.path()));
    const QString file = QFileInfo(desktest::pluginFile("good")).fileName();
    QVERIFY(QFile::link(open.filePath(file), path(file)));
    QCOMPARE(::chmod(qPrintable(open.path()), 0777), 0);
    load();
    QVERIFY2(refusal().startsWith(QStringLiteral("В каталог %1 может писать кто угодно.")
                                      .arg(QFileInfo(open.path()).canonicalFilePath())),
             qPrintable(refusal()));
}

void TestPluginLoader::takesAFolderThatTheGroupMayWriteTo()
{
    QCOMPARE(::chmod(qPrintable(m_directory->path()), 0775), 0);
    load({QStringLiteral("good")});
    QCOMPARE(m_loader->loadedCount(), 1);
}

void TestPluginLoader::refusesAFolderOfSomebodyElse()
{
    if (geteuid() != 0)
        QSKIP("only root can give a folder away");
    desktest::copyPlugins({QStringLiteral("good")}, QDir(m_directory->path()));
    QCOMPARE(::chown(qPrintable(m_directory->path()), testsupport::nobody, gid_t(-1)), 0);
    load();
    const QString wanted =
        QStringLiteral("Каталог %1 принадлежит другому пользователю. Загружаются модули из "
                       "каталогов администратора и своих: перенесите модуль в такой каталог.")
            .arg(m_directory->path());
    QCOMPARE(refusal(), wanted);
    QCOMPARE(::chown(qPrintable(m_directory->path()), 0, gid_t(-1)), 0);
}

void TestPluginLoader::anotherUserTakesHisOwnFolderAndThatOfRoot()
{
    if (geteuid() != 0)
        QSKIP("only root can become another user");
    desktest::copyPlugins({QStringLiteral("good")}, QDir(m_directory->path()));
    const QByteArray folder = m_directory->path().toLocal8Bit();
    QCOMPARE(::chmod(folder.constData(), 0755), 0);
    const auto loadAsNobody = [&](uid_t owner) {
        QCOMPARE(::chown(folder.constData(), owner, gid_t(-1)), 0);
        const testsupport::OtherUser user;
        load();
    };
    loadAsNobody(1);
    QVERIFY2(refusal().contains(QStringLiteral("принадлежит другому пользователю")),
             qPrintable(refusal()));
    loadAsNobody(testsupport::nobody);
    QCOMPARE(m_loader->loadedCount(), 1);
    loadAsNobody(0);
    QCOMPARE(m_loader->loadedCount(), 1);
}

void TestPluginLoader::goesOnAfterEveryKindOfFault()
{
    testsupport::writeFile(path("a_text.so"), "text");
    testsupport::writeFile(path("b_empty.so"), "");
    load({QStringLiteral("foreign"), QStringLiteral("good"), QStringLiteral("hollow"),
          QStringLiteral("second"), QStringLiteral("throwing"), QStringLiteral("twin"),
          QStringLiteral("unresolved")});
    QCOMPARE(m_loader->records().size(), 9);
    QCOMPARE(m_loader->loadedCount(), 2);
    QCOMPARE(m_loader->refusedCount(), 7);
    QStringList loaded;
    for (const PluginRecord& record : m_loader->records()) {
        QCOMPARE(record.reason.isEmpty(), record.state == PluginRecord::State::Loaded);
        if (record.state == PluginRecord::State::Loaded)
            loaded.append(record.code);
    }
    QCOMPARE(loaded, QStringList({"GOOD", "SECOND"}));
    QStringList names = fileNames(m_loader->records());
    QCOMPARE(names.mid(0, 3), QStringList({"a_text.so", "b_empty.so",
                                           QFileInfo(desktest::pluginFile("foreign")).fileName()}));
}

void TestPluginLoader::reportsALaterExceptionAndGoesOn()
{
    load({QStringLiteral("good"), QStringLiteral("second")});
    const QSignalSpy failed(m_loader.get(), &PluginLoader::callFailed);
    desktest::takeCalls();
    qApp->setProperty("throwIn", QStringLiteral("GOOD.initStage"));
    m_loader->initStage(IPlugin::InitStage::PluginsReady);
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed.at(0).at(0).toString(),
             QStringLiteral("Ошибка модуля GOOD при запуске терминала: ступень не пройдена"));
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.PluginsReady", "SECOND.PluginsReady"}));
    QCOMPARE(m_loader->loadedCount(), 2);

    qApp->setProperty("throwIn", QStringLiteral("GOOD.tini"));
    m_loader->unload();
    QCOMPARE(failed.count(), 2);
    QCOMPARE(failed.at(1).at(0).toString(),
             QStringLiteral("Ошибка модуля GOOD при завершении работы: не закрывается"));
    QCOMPARE(desktest::takeCalls(),
             QStringList({"SECOND.tini", "GOOD.tini", "SECOND.destroyed", "GOOD.destroyed"}));
}

void TestPluginLoader::dropsOptionsPages()
{
    // A page that is not a plug-in's stays.
    desktest::EmptyPage own{{.id = QStringLiteral("Desk.Own")}};
    m_core->addOptionsPage(&own);
    load({QStringLiteral("good"), QStringLiteral("throwing")});
    QCOMPARE(m_core->optionsPages().size(), 2);
    m_loader->initStage(IPlugin::InitStage::PluginsReady);
    QCOMPARE(m_core->optionsPages().size(), 3);
    m_loader->unload();
    QCOMPARE(m_core->optionsPages(), QList<IOptionsPage*>{&own});
}

void TestPluginLoader::unloadsWhenDestroyed()
{
    load({QStringLiteral("good")});
    desktest::takeCalls();
    m_loader.reset();
    QCOMPARE(desktest::takeCalls(), QStringList({"GOOD.tini", "GOOD.destroyed"}));
    QCOMPARE(m_core->optionsPages(), QList<IOptionsPage*>());
}

void TestPluginLoader::canLoadAgain()
{
    load({QStringLiteral("good")});
    m_loader->load({m_directory->path()}, m_core.get());
    QCOMPARE(desktest::takeCalls(),
             QStringList({"GOOD.init", "GOOD.tini", "GOOD.destroyed", "GOOD.init"}));
    QCOMPARE(m_loader->records().size(), 1);
    QCOMPARE(m_loader->loadedCount(), 1);
}

void TestPluginLoader::listsPluginsForScripts()
{
    PluginRecord loaded;
    loaded.path = QStringLiteral("/plugins/a b.so");
    loaded.state = PluginRecord::State::Loaded;
    loaded.code = QStringLiteral("one");
    loaded.version = QStringLiteral("1.0");
    PluginRecord refused;
    refused.path = QStringLiteral("/plugins/two.so");
    refused.reason = QStringLiteral("Не\tмодуль:\nдругая программа.");
    refused.details = QStringLiteral("not a\nplug-in");
    QCOMPARE(vexdesk::pluginList({loaded, refused}),
             QStringLiteral(
                 "loaded\tone\t1.0\t/plugins/a b.so\t\n"
                 "refused\t\t\t/plugins/two.so\tНе модуль: другая программа. not a plug-in\n"));
    QCOMPARE(vexdesk::pluginList({}), QString());
}

void TestPluginLoader::namesStandardDirectories()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QStringList directories = PluginLoader::standardDirectories();
    QVERIFY(directories.size() >= 2);
    QCOMPARE(directories.at(0), program.filePath(QStringLiteral("plugins")));
    QCOMPARE(directories.at(1),
             QDir::cleanPath(program.filePath(QStringLiteral("../lib/vexdesk/plugins"))));
    for (const QString& directory : directories) {
        QVERIFY2(QDir::isAbsolutePath(directory), qPrintable(directory));
        QVERIFY2(directory.endsWith(QLatin1String("plugins")), qPrintable(directory));
        QCOMPARE(directories.count(directory), 1);
    }
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestPluginLoader test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pluginloader.moc"
