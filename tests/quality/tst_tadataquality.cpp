// SPDX-License-Identifier: MIT
// The second plug-in as the terminal meets it: loaded from its file into a real core.

#include "support/loadedplugin.h"
#include "support/markingtranslator.h"
#include "support/strictlog.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QJsonObject>
#include <QtGui/QIcon>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <memory>

using testsupport::LoadedPlugin;

namespace {

const CommandContainer* theMenu()
{
    const QList<CommandContainer::Entry> bar = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : bar) {
        if (entry.container && entry.container->id() == "TA")
            return entry.container;
    }
    return nullptr;
}

// The windows that the user sees, by their classes.
QList<QWidget*> visibleWindows(const char* className)
{
    QList<QWidget*> found;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && window->inherits(className))
            found.append(window);
    }
    return found;
}

} // namespace

class TestTADataQuality final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void carriesMetadata();
    void introducesItself();
    void translatesItsTextsButNotItsVersion();
    void addsItsMenu();
    void addsItsCommands();
    void sharesTheMenuWithTheFirstPlugin_data();
    void sharesTheMenuWithTheFirstPlugin();
    void showsEachWindowOnce_data();
    void showsEachWindowOnce();

private:
    IPlugin* plugin() const { return m_plugin->plugin(); }

    std::unique_ptr<LoadedPlugin> m_plugin;
};

void TestTADataQuality::init()
{
    testsupport::failOnStrayWarnings();
    m_plugin = std::make_unique<LoadedPlugin>(testsupport::qualityPluginFile());
}

void TestTADataQuality::cleanup()
{
    m_plugin.reset();
}

void TestTADataQuality::carriesMetadata()
{
    const QJsonObject metaData = m_plugin->loader().metaData();
    QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
             QStringLiteral("qgui.plugin.tadataquality"));
    QCOMPARE(metaData.value(QStringLiteral("className")).toString(),
             QStringLiteral("TADataQuality"));
}

void TestTADataQuality::introducesItself()
{
    QCOMPARE(plugin()->code().toByteArray(), QByteArray("tadataquality"));
    QCOMPARE(plugin()->name(), QStringLiteral("Качество данных ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("Орвента"));
    QCOMPARE(plugin()->version(), QStringLiteral("1.0.0"));
    QVERIFY(!plugin()->description().isEmpty());
}

void TestTADataQuality::translatesItsTextsButNotItsVersion()
{
    const testsupport::MarkingTranslator translator;
    QCOMPARE(plugin()->name(), QStringLiteral("TADataQuality|Качество данных ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("TADataQuality|Орвента"));
    QCOMPARE(plugin()->version(), QStringLiteral("1.0.0"));
}

void TestTADataQuality::addsItsMenu()
{
    m_plugin->start();
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Тех. &анализ"));
    QCOMPARE(menu->entries().size(), 1);
    const CommandContainer* const commands = menu->entries().first().container;
    QVERIFY(commands);
    QCOMPARE(commands->title(), QStringLiteral("&Качество данных ТА"));
}

void TestTADataQuality::addsItsCommands()
{
    m_plugin->start();
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu && menu->entries().size() == 1);
    struct Expected
    {
        const char* text;
        Qt::Key key;
    };
    const QList<Expected> expected{{"&Безопасный импорт...", Qt::Key_I},
                                   {"&Здоровье данных...", Qt::Key_H},
                                   {"&Точки восстановления...", Qt::Key_Z}};
    const QList<CommandContainer::Entry> entries = menu->entries().first().container->entries();
    QCOMPARE(entries.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const Command* const command = entries.at(i).command;
        QVERIFY(command);
        QCOMPARE(command->defaultText(), QString::fromUtf8(expected.at(i).text));
        QCOMPARE(command->defaultShortcut(),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | expected.at(i).key));
        QCOMPARE(command->context(), int(Command::GlobalContext));
        QVERIFY(!command->defaultIcon().pixmap(24).isNull());
        QVERIFY(ActionManager::instance()->action(command->id()));
    }
}

void TestTADataQuality::sharesTheMenuWithTheFirstPlugin_data()
{
    QTest::addColumn<bool>("comesFirst");
    QTest::newRow("before the first plug-in") << true;
    QTest::newRow("after the first plug-in") << false;
}

void TestTADataQuality::sharesTheMenuWithTheFirstPlugin()
{
    QFETCH(bool, comesFirst);
    QPluginLoader loader;
    const vexdesk::Result<IPlugin*> first =
        testsupport::loadPlugin(loader, testsupport::pluginFile());
    QVERIFY2(first, qPrintable(first.message()));
    if (comesFirst) {
        m_plugin->start();
        (*first)->init(&m_plugin->core());
    } else {
        vexdesk::Core core;
        (*first)->init(&core);
        plugin()->init(&core);
    }
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);
    QStringList titles;
    const QList<CommandContainer::Entry> entries = menu->entries();
    for (const CommandContainer::Entry& entry : entries)
        titles.append(entry.container->title());
    QCOMPARE(titles, QStringList({QStringLiteral("&Управление данными ТА"),
                                  QStringLiteral("&Качество данных ТА")}));
    (*first)->tini();
    delete loader.instance();
    loader.unload();
}

void TestTADataQuality::showsEachWindowOnce_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("window");
    QTest::newRow("safe import") << QByteArray("TADataQuality.SafeImport")
                                 << QByteArray("SafeImportWindow");
    QTest::newRow("health") << QByteArray("TADataQuality.Health") << QByteArray("HealthWindow");
    QTest::newRow("points") << QByteArray("TADataQuality.Points") << QByteArray("PointsWindow");
}

void TestTADataQuality::showsEachWindowOnce()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, window);
    m_plugin->start();
    LoadedPlugin::trigger(command);
    LoadedPlugin::trigger(command);
    const QList<QWidget*> shown = visibleWindows(window.constData());
    QCOMPARE(shown.size(), 1);
    QVERIFY(!shown.first()->isModal());
    QVERIFY(!shown.first()->testAttribute(Qt::WA_QuitOnClose));
    QTest::keyClick(shown.first(), Qt::Key_Escape);
    QTRY_VERIFY(visibleWindows(window.constData()).isEmpty());
    LoadedPlugin::trigger(command);
    QCOMPARE(visibleWindows(window.constData()).size(), 1);
    plugin()->tini();
    QVERIFY(visibleWindows(window.constData()).isEmpty());
}

QTEST_MAIN(TestTADataQuality)
#include "tst_tadataquality.moc"
