// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/iplugin.h>

#include <QtCore/QObject>

class CommandContainer;
class QIcon;
class QKeySequence;

/// The object that the terminal gets from the library: it introduces the plug-in and adds its menu,
/// its options page and the purge of old second files. Lives as long as the library is loaded.
/// User-interface thread only.
class TADataManager final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.tadatamanager")
    Q_INTERFACES(IPlugin)

public:
    TADataManager();
    ~TADataManager() override;

    QByteArrayView code() const override;
    QString name() const override;
    QString author() const override;
    QString version() const override;
    QString description() const override;
    void init(ICore* core) override;
    void tini() override;
    void initStage(IPlugin::InitStage stage) override;

    /// Adds the plug-in's menu to the terminal's. init() does; once is enough.
    void createMenu();
    /// Adds a command to the container, and the action that answers it by calling a slot of this
    /// object: `member` is its text as SLOT() makes it.
    void createMenuCommand(CommandContainer* container, const QByteArray& id, const QIcon& icon,
                           const QString& text, const char* member, const QKeySequence& shortcut);

public Q_SLOTS:
    void importTAData();
    void exportTAData();
    void editTAData();
    /// Removes second files by the rule of the options page.
    void removeOldSecondFiles() const;
};
