// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pluginloader.h"

#include <vexdesk/terminal/core.h>

#include <memory>

namespace vexdesk {

class DataDirectory;
class DeskApplication;
class MainWindow;
struct CommandLine;

/// The terminal as the programs have it that show it: reference data, core, plug-ins and window.
/// One in a process. User-interface thread only.
class Terminal final
{
public:
    /// Loads the plug-ins; the window is there but not shown. What goes wrong with the reference
    /// data or in a plug-in is told in a box, what cannot be kept in `directory` by the core.
    Terminal(const DeskApplication& application, const DataDirectory& directory,
             const CommandLine& commandLine);
    ~Terminal();

    const PluginLoader& plugins() const { return m_loader; }
    MainWindow& window() { return *m_window; }

    /// Shows the window and returns the process's exit code when the user has left and the terminal
    /// has ended.
    int run();
    /// Unloads the plug-ins, and prints to the standard error output what was reported and nobody
    /// has read.
    void end();

private:
    Core m_core;
    PluginLoader m_loader;
    std::unique_ptr<MainWindow> m_window;
};

/// The language that the command line, the user's choice or the system asks for. To be set before
/// the rest of the command line is read: what is wrong with it is said in that language.
Language spokenLanguage();

} // namespace vexdesk
