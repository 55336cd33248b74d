// SPDX-License-Identifier: MIT
// A plug-in that cannot be loaded fails the tests that need it, with the reason, and ends none.

#include "support/filetree.h"
#include "support/loadedplugin.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using testsupport::LoadedPlugin;

class TestLoadedPlugin final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void saysWhyAFileIsNoPlugin_data();
    void saysWhyAFileIsNoPlugin();
    void aFailedLoadFailsTheTestAndEndsNothing();
    void isLoaded();
};

void TestLoadedPlugin::saysWhyAFileIsNoPlugin_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << QStringLiteral("/missing/plugin.so") << QStringLiteral("not found");
    QTest::newRow("without metadata")
        << QStringLiteral(DESK_PLUGIN_PLAIN) << QStringLiteral("not a Qt plugin");
    QTest::newRow("of another interface")
        << QStringLiteral(DESK_PLUGIN_HOLLOW) << QStringLiteral("Hollow is no IPlugin");
}

void TestLoadedPlugin::saysWhyAFileIsNoPlugin()
{
    QFETCH(const QString, file);
    QFETCH(const QString, reason);
    QPluginLoader loader;
    const vexdesk::Result<IPlugin*> loaded = testsupport::loadPlugin(loader, file);
    QVERIFY(!loaded);
    QVERIFY2(loaded.message().startsWith(file), qPrintable(loaded.message()));
    QVERIFY2(loaded.message().contains(reason), qPrintable(loaded.message()));
    QVERIFY(!loader.isLoaded());
}

void TestLoadedPlugin::aFailedLoadFailsTheTestAndEndsNothing()
{
    for (const char* file : {"/missing/plugin.so", DESK_PLUGIN_PLAIN, DESK_PLUGIN_HOLLOW}) {
        QEXPECT_FAIL("", file, Continue);
        LoadedPlugin broken(QString::fromLatin1(file));
        QVERIFY(!broken.plugin());
        broken.start();
        QEXPECT_FAIL("", "there is no such command", Continue);
        LoadedPlugin::trigger("1_Import");
    }
}

void TestLoadedPlugin::isLoaded()
{
    LoadedPlugin loaded;
    QVERIFY(loaded.plugin());
    loaded.start();
    QVERIFY(loaded.store().exists());
}

QTEST_MAIN(TestLoadedPlugin)
#include "tst_loadedplugin.moc"
