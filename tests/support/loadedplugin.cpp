// SPDX-License-Identifier: MIT
#include "support/loadedplugin.h"

#include "support/filetree.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>

namespace testsupport {

QString pluginFile()
{
    return QStringLiteral(TADATAMANAGER_FILE);
}

QString qualityPluginFile()
{
    return QStringLiteral(TADATAQUALITY_FILE);
}

vexdesk::Result<IPlugin*> loadPlugin(QPluginLoader& loader, const QString& file)
{
    loader.setFileName(file);
    QObject* const object = loader.instance();
    if (!object)
        return vexdesk::Failure{QStringLiteral("%1: %2").arg(file, loader.errorString())};
    if (auto* const plugin = qobject_cast<IPlugin*>(object))
        return plugin;
    const QString name = QLatin1String(object->metaObject()->className());
    delete object;
    loader.unload();
    return vexdesk::Failure{QStringLiteral("%1: %2 is no IPlugin").arg(file, name)};
}

LoadedPlugin::LoadedPlugin(const QString& file)
    : m_user(userFolder())
    , m_loader(std::make_unique<QPluginLoader>())
{
    const vexdesk::Result<IPlugin*> loaded = loadPlugin(*m_loader, file);
    QVERIFY2(loaded, qPrintable(loaded.message()));
    // A run that was ended from outside leaves its folder, which is no part of this test.
    QVERIFY(m_user.removeRecursively());
}

LoadedPlugin::~LoadedPlugin()
{
    const QWidgetList left = QApplication::topLevelWidgets();
    for (const QWidget* const widget : left) {
        if (widget->isVisible())
            QTest::qFail(widget->metaObject()->className(), __FILE__, __LINE__);
    }
    if (m_loader->isLoaded()) {
        delete m_loader->instance();
        m_loader->unload();
    }
    m_core.reset();
    m_user.removeRecursively();
}

IPlugin* LoadedPlugin::plugin() const
{
    return qobject_cast<IPlugin*>(object());
}

void LoadedPlugin::start()
{
    m_core = std::make_unique<vexdesk::Core>();
    if (IPlugin* const loaded = plugin())
        loaded->init(m_core.get());
}

void LoadedPlugin::trigger(const QByteArray& command)
{
    Action* const action = ActionManager::instance()->action(command);
    QVERIFY2(action, command.constData());
    if (action) // where the failure is expected, the check goes on
        action->trigger();
}

} // namespace testsupport
