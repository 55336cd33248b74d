// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pluginrecord.h"

#include <vexdesk/iplugin.h>
#include <vexdesk/outcome.h>
#include <vexdesk/terminal/language.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

class IOptionsPage;
class QPluginLoader;

namespace vexdesk {

class Core;

/// Loads the terminal's plug-ins, drives them through their lives (see IPlugin) and lets them go.
///
/// A library that is no plug-in of the terminal is refused by its metadata, before any of its code
/// runs. So is whatever lies in a folder that everybody may write to, or that belongs neither to
/// root nor to the user: anybody could have put it there. Nothing that a plug-in does stops the
/// others: what is wrong with one is in its record or told by callFailed().
///
/// A plug-in that has gone leaves its code in memory until the process ends: texts and queued calls
/// of it may still be held somewhere.
///
/// User-interface thread only.
class PluginLoader final : public QObject
{
    Q_OBJECT

public:
    explicit PluginLoader(QObject* parent = nullptr);
    /// Unloads what is still loaded; the core must still live then.
    ~PluginLoader() override;

    /// Where plug-ins are looked for when the user names no place: "plugins" beside the program,
    /// then the directories in which an installed terminal has them. Absolute, without doubles;
    /// they need not exist.
    static QStringList standardDirectories();

    /// The language in which plug-ins that are loaded from here on show themselves; Russian unless
    /// it is set.
    void setLanguage(Language language) { m_language = language; }
    Language language() const { return m_language; }

    /// Loads and initialises every plug-in in the directories: these in the given order, the files
    /// of each in the order of their names. A file that is reached twice is taken once. `core`
    /// must live until unload().
    void load(const QStringList& directories, Core* core);

    /// Tells every loaded plug-in of the stage.
    void initStage(IPlugin::InitStage stage);

    /// Calls tini of every plug-in, the last loaded first; then drops the options pages that came
    /// since load() and destroys the plug-ins in the same order. The records are gone after it.
    void unload();

    /// Every library file that was found, in the order in which they were looked at.
    QList<PluginRecord> records() const { return m_records; }
    qsizetype loadedCount() const { return static_cast<qsizetype>(m_plugins.size()); }
    qsizetype refusedCount() const { return m_records.size() - loadedCount(); }
    /// The directories of the last load().
    QStringList directories() const { return m_directories; }

Q_SIGNALS:
    /// The records have changed.
    void changed();
    /// An exception left initStage or tini of a plug-in; the text names plug-in and error.
    void callFailed(const QString& text);
    /// The code of a plug-in is about to run for the first time.
    void starting();
    /// It goes again, for its start has failed: what it has left with the terminal since starting()
    /// must be forgotten at once.
    void startFailed();
    /// All plug-ins go: what they have left with the terminal must be forgotten at once.
    void ending();

private:
    struct Plugin
    {
        std::unique_ptr<QTranslator> translation; // null without a file for it
        std::unique_ptr<QPluginLoader> library;
        IPlugin* object = nullptr; // belongs to the library
        QString code;
    };

    void loadFile(const QString& path);
    Outcome start(QPluginLoader& library, PluginRecord& record, Plugin& plugin);
    bool isLoaded(const QString& code) const;
    void dropPagesExcept(const QList<IOptionsPage*>& kept);

    Language m_language = Language::Russian;
    Core* m_core = nullptr;
    QList<IOptionsPage*> m_pagesBefore;
    QStringList m_directories;
    QList<PluginRecord> m_records;
    std::vector<Plugin> m_plugins;
};

} // namespace vexdesk
