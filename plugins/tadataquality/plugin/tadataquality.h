// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"

#include <vexdesk/iplugin.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <memory>

class CommandContainer;
class HealthMarks;
class FileDrop;
class HealthWindow;
class PointsWindow;
class QKeySequence;
class SafeImportWindow;
namespace tadata {
class HealthBook;
}

/// The object that the terminal gets from the library: it introduces the plug-in and adds its menu,
/// its options page and, where the terminal has charts, what they are to mark.
/// Each of its windows is there once at most, beside the terminal's and not in front of it: the
/// chart can be used meanwhile. They delete themselves when they are closed, and go with tini() at
/// the latest. Lives as long as the library is loaded. User-interface thread only.
class TADataQuality final : public QObject, public IPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.tadataquality" FILE "tadataquality.json")
    Q_INTERFACES(IPlugin)

public:
    TADataQuality();
    ~TADataQuality() override;

    QByteArrayView code() const override;
    QString name() const override;
    QString author() const override;
    QString version() const override;
    QString description() const override;
    void init(ICore* core) override;
    void tini() override;
    void initStage(IPlugin::InitStage stage) override;

public Q_SLOTS:
    void showSafeImport();
    void showHealth();
    void showPoints();

private:
    void createMenu();
    void createMenuCommand(CommandContainer* container, const QByteArray& id, const QString& icon,
                           const QString& text, void (TADataQuality::*member)(),
                           const QKeySequence& shortcut);
    HealthWindow* makeHealthWindow();
    PointsWindow* makePointsWindow();
    void fill(const QString& series, int timeframe);
    /// Tells of commands that were interrupted, a killed import for one.
    void tellInterruptions();
    void closeAll();

    ICore* m_core = nullptr;
    std::unique_ptr<tadata::HealthBook> m_book;
    std::unique_ptr<HealthMarks> m_marks; // looks into the book
    std::unique_ptr<FileDrop> m_drop;     // on the terminal's window

    QPointer<SafeImportWindow> m_safeImport;
    QPointer<HealthWindow> m_health;
    QPointer<PointsWindow> m_points;
    tadata::BackgroundTask<QStringList> m_interruptions; // last: it ends before the rest goes
};
