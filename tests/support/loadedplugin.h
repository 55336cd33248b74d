// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QDir>
#include <QtCore/QPluginLoader>
#include <QtCore/QString>

#include <memory>

class IPlugin;
namespace vexdesk {
class Core;
}

namespace testsupport {

/// The library of the plug-in, as it was built.
QString pluginFile();
/// That of the second one, which looks after the quality of the data.
QString qualityPluginFile();

/// Loads a library; the plug-in is the loader's. The failure names the file and what the loader
/// says, or that the object in it was no plug-in of the terminal; nothing is loaded then.
vexdesk::Result<IPlugin*> loadPlugin(QPluginLoader& loader, const QString& file);

/// The plug-in in a terminal of its own, whose data are the folder "user" beside the test's
/// program. Each test makes one and ends it; what the terminal stored goes with it.
class LoadedPlugin final
{
public:
    /// Loads the plug-in, no more. Where that cannot be done the test has failed; made in init(),
    /// no test function runs then.
    explicit LoadedPlugin(const QString& file = pluginFile());
    /// Unloads the plug-in and removes the folder; fails the test when a window is left.
    ~LoadedPlugin();

    /// Makes the core and lets the plug-in begin with it.
    void start();
    /// Only after start().
    vexdesk::Core& core() const { return *m_core; }

    /// Null where the load has failed.
    IPlugin* plugin() const;
    /// The plug-in's object; a new one where it was destroyed.
    QObject* object() const { return m_loader->instance(); }
    const QPluginLoader& loader() const { return *m_loader; }

    /// The terminal's data directory; the plug-in may not have made it yet.
    QDir user() const { return m_user; }
    QDir store() const { return QDir(m_user.filePath(QStringLiteral("tadata"))); }

    /// Triggers the command as the menu does and returns when it is over.
    static void trigger(const QByteArray& command);

private:
    Q_DISABLE_COPY_MOVE(LoadedPlugin)

    QDir m_user;
    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<QPluginLoader> m_loader;
};

} // namespace testsupport
