// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/language.h>

#include <QtCore/QStringList>

#include <memory>

namespace vexdesk {
class Core;
class MainWindow;
class PluginLoader;
} // namespace vexdesk

namespace testsupport {

/// Fails the test, with what the terminal says of it, for a library that was not loaded, and where
/// there was none.
void verifyLoaded(const vexdesk::PluginLoader& loader);

/// The terminal as its program makes it, with its window in front.
class Terminal final
{
public:
    explicit Terminal(vexdesk::Language language = vexdesk::Language::Russian,
                      const QStringList& pluginDirectories = {});
    ~Terminal();

    /// With the plug-in of this project; the test fails where it cannot be loaded.
    static std::unique_ptr<Terminal>
    withPlugin(vexdesk::Language language = vexdesk::Language::Russian);

    vexdesk::Core& core() const { return *m_core; }
    vexdesk::PluginLoader& loader() const { return *m_loader; }
    vexdesk::MainWindow* window() const { return m_window.get(); }

private:
    Q_DISABLE_COPY_MOVE(Terminal)

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<vexdesk::PluginLoader> m_loader;
    std::unique_ptr<vexdesk::MainWindow> m_window;
};

} // namespace testsupport
