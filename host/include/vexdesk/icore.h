// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

class IDatabase;
class IOptionsPage;
class IRawQueue;
class QObject;

namespace vexdesk {
class ICharts;
}

/// The terminal as a plug-in sees it. The terminal creates the one object before it loads the
/// first plug-in and destroys it after the last one was unloaded; a plug-in gets it in
/// IPlugin::init and may also ask for it with instance().
///
/// User-interface thread only, except instance(), getDir(), database(), rawQueue() and
/// reportProblem().
class VEXDESK_CORE_EXPORT ICore
{
public:
    /// The terminal's core, null before it exists and after it is gone.
    static ICore* instance();

    /// The directory in which files of the terminal and its plug-ins live, or one below it.
    ///
    /// A terminal that is installed for all users (the file ".installed" lies beside the program)
    /// keeps them in the user's own application-data directory; a portable one in the
    /// sub-directory "user" beside the program. With `flag` set it is the program's own directory
    /// instead, and nothing is created.
    /// A relative `path` is entered, and made first when it is missing and `flag` is not set.
    /// What cannot be made leaves the result at the last directory that was reached.
    static QDir getDir(const QString& path, bool flag);

    /// Adds a page to the options dialog. The page stays its maker's and must live as long as the
    /// plug-in is loaded.
    virtual void addOptionsPage(IOptionsPage* page) = 0;

    /// The object that emits "aNewDay()" once at each change of the trading day, on the
    /// user-interface thread. Owned by the core.
    virtual QObject* notifier() const = 0;

    /// The in-memory database; null where the terminal has none. Owned by the core. Any thread.
    virtual IDatabase* database() const = 0;

    /// The queue through which incoming data reaches the tables of the database; null where the
    /// terminal has none. Owned by the core. Any thread.
    virtual IRawQueue* rawQueue() const = 0;

    /// Tells the user of something that went wrong and that no window is there to say: a file that
    /// could not be written when its window was closed, for example. A full sentence that names
    /// what and where. The terminal shows it without interrupting anybody and keeps it until it
    /// was read. Any thread. A core that has nobody to tell, which is the default, passes over it.
    virtual void reportProblem(const QString& text);

    /// The terminal's charts, null where it has none, which is the default. They are there from
    /// init() to tini(). Owned by the terminal.
    virtual vexdesk::ICharts* charts() const;

protected:
    ICore();
    virtual ~ICore();

private:
    Q_DISABLE_COPY_MOVE(ICore)
};

inline QDir ICore::getDir(const QString& path, bool flag)
{
    QDir dir;
    const QString applicationDir = QCoreApplication::applicationDirPath();
    const bool installed =
        QFile::exists(QDir(applicationDir).filePath(QStringLiteral(".installed")));
    if (installed && !flag) {
        dir.setPath(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    } else {
        dir.setPath(applicationDir);
        const QString user = QStringLiteral("user");
        if (!flag && !dir.cd(user) && dir.mkpath(user))
            dir.cd(user);
    }
    if (!path.isEmpty() && !dir.cd(path) && !flag && dir.mkpath(path))
        dir.cd(path);
    return dir;
}
