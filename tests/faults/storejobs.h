// SPDX-License-Identifier: MIT
#pragma once

#include "cli/tadatarunner.h"

#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <array>
#include <atomic>
#include <ctime>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>

/// Jobs on a small store, and what may happen to them at each call of the system.
namespace testsupport {

/// Content and permissions of each file below a directory, by its relative path.
using Files = QMap<QString, std::pair<QByteArray, int>>;

Files filesBelow(const QString& root);
/// What a program that was killed may leave is not a part of the store.
Files withoutTemporary(Files files);

/// What happens at one call of a job, see countedcalls.cpp.
struct CallOrder
{
    int at = 0; ///< from 1
    QByteArray deed;
    int number = 0; ///< of the error or the signal
};

QByteArray toText(const CallOrder& order);

/// A call that a job has made on its files.
struct MadeCall
{
    QByteArray name;
    QByteArray path;
    QByteArray from;    ///< of a rename or a link
    bool isMet = false; ///< something happened at it
};

QByteArray toText(const MadeCall& call);

/// Which calls are counted.
enum class Counted { All, Changing };

/// A directory tree that can be put back as it was, with times and permissions.
class KeptTree final
{
public:
    void take(const QString& root);
    void putBack() const;

private:
    struct File
    {
        QByteArray content;
        mode_t mode;
        timespec modified;
    };
    std::string m_root;
    std::map<std::string, File> m_files;
    std::map<std::string, mode_t> m_directories;
    std::map<std::string, std::string> m_links;
};

/// A store with both timeframes of two days, the last of them changed by another import, and files
/// to import into it; of the job "import new", only the files. Where a job is "linked", the store,
/// its series and a day of it are symbolic links. Each is on its own: several may be worked with in
/// several threads.
class StoreJobs final
{
public:
    /// The names of the jobs that change the store, and of those that only read it.
    static QStringList changing();
    static QStringList reading();
    /// Whether it makes most of its calls as another job does.
    static bool isVariant(const QString& job);
    /// Whether it takes back by itself what it has done, where it fails.
    static bool putsBack(const QString& job);

    explicit StoreJobs(const QString& job);
    ~StoreJobs();
    Q_DISABLE_COPY_MOVE(StoreJobs)

    /// Why there is no such store; empty where there is one.
    QByteArray problem() const { return m_problem; }
    QString path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }
    QString store() const { return path("store"); }
    /// The place of its restore points: beside it, or where they go if that cannot be made.
    QString place() const;
    const Files& before() const { return m_before; }

    /// The store as it was at first.
    void refresh();
    QStringList commandLine(const QString& job) const;
    Outcome run(const QString& job, Counted counted = Counted::All, const CallOrder& order = {},
                const QStringList& options = {}) const;
    /// The calls of the last run that ended by itself.
    QList<MadeCall> calls() const;

    /// The files that it has written beside the store.
    Files outputs() const;

    /// The ids of the restore points, the newest first.
    QStringList points() const;
    /// Of these, the ones that were made since the store was as at first.
    QStringList newPoints() const;
    /// The last run's doing is taken back, and the store compared with what it was. What is wrong.
    QByteArray takeBack() const;
    /// The whole content of the directory, without what differs between two runs of one job.
    QByteArray state() const;
    /// A text without the name of the directory, points by their order alone.
    QByteArray plain(QByteArray text) const;

private:
    struct Import;
    static const std::array<Import, 13> imports;

    QStringList importLine(const Import& import) const;
    void writeInputs() const;
    void makeStore();
    void moveBehindLinks();

    QString placeInUserFolder() const;

    QTemporaryDir m_dir;
    QString m_firstPoint;
    KeptTree m_kept;
    Files m_before;
    QStringList m_pointsBefore;
    QByteArray m_problem;
};

/// States that were met before.
class SeenStates final
{
public:
    /// Whether it is a new one.
    bool add(const QByteArray& state);

private:
    std::mutex m_mutex;
    std::set<QByteArray> m_states;
};

/// Does something for each number below a count, in a thread more than the machine has processors,
/// each with a store of its own. The texts that come of it are the result, a line each; twenty are
/// enough.
QByteArray forEach(const QString& job, int count,
                   const std::function<QByteArray(StoreJobs& jobs, int number)>& act);

} // namespace testsupport
