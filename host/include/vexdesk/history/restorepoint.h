// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/restoreplace.h>

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QMap>

#include <memory>
#include <optional>

/// What a job changed in a store can be taken back: before it touches a file, a restore point keeps
/// what the file holds. Each point is a directory of the place beside the store
/// (<vexdesk/history/restoreplace.h>), named "yyyyMMdd-hhmmss-<n>", with "point.json", the kept
/// files and, until the job has ended, "journal". After a process was killed at any moment its
/// point can be put back all the same.
///
/// Files of the store are named by their paths below its root, "STOCK/BOARD/SECURITY/NAME". The
/// messages of failures are for the user and name the file. Any thread; whoever touches a series
/// holds its lock (<vexdesk/history/serieslock.h>).
namespace vexdesk {

/// How many points stay.
struct RestoreLimits
{
    int keep = 20; ///< 0: none are made
    qint64 bytes = qint64(1024) * 1024 * 1024;
};

/// What a job left of a file.
struct LeftFile
{
    qint64 size = 0;
    qint64 modified = 0; ///< nanoseconds since the epoch
    QString sha256;      ///< null where it was not taken
};

/// A restore point as its directory tells it.
struct RestorePointRecord
{
    QString id;
    QDateTime when; ///< UTC
    QString by;     ///< the job: "import", "undo" and so on
    QStringList series;
    QStringList source; ///< of an import its inputs, of an undo the point that it put back
    QStringList kept;
    QStringList created; ///< what did not exist
    QMap<QString, LeftFile> left;
    bool isComplete = false; ///< whether the job ended by itself; otherwise `left` is empty
    qint64 bytes = 0;        ///< of the kept copies

    /// Both, in the order of code points.
    VEXDESK_HISTORY_EXPORT QStringList paths() const;
};

/// The points of a store.
struct RestorePoints
{
    QList<RestorePointRecord> points; ///< the newest first
    QStringList problems;             ///< why a point is not among them; one sentence each
    QString newest;                   ///< its id, also of one that is not among them; or null
};

/// A place that is missing has none. A failure where it cannot be read.
VEXDESK_HISTORY_EXPORT Result<RestorePoints> restorePoints(const RestorePlace& place);
/// One of them. A failure for what is no point's id, and for a point that is broken.
VEXDESK_HISTORY_EXPORT Result<RestorePointRecord> restorePoint(const RestorePlace& place,
                                                               const QString& id);

/// Whether the job that made a point still runs. Where the file system knows no locks none is seen
/// to.
VEXDESK_HISTORY_EXPORT bool isJobRunning(const RestorePlace& place, const QString& id);

/// Keeps files for one job. The point is made with the first of them: a job that touches nothing
/// leaves none. One that was neither finished nor taken back stays as that of a killed process.
/// The place must be there.
class VEXDESK_HISTORY_EXPORT RestorePoint final : public FileKeeper
{
public:
    RestorePoint(const RestorePlace& place, const QString& by, const QStringList& series,
                 const QStringList& source);
    ~RestorePoint() override;

    /// Keeps all of them before it returns. The paths end in "STOCK/BOARD/SECURITY/NAME". What is
    /// there and is no ordinary file is passed over: no job opens it. After a failure no further
    /// file can be kept.
    Outcome keep(const QStringList& paths) override;

    /// The job has ended: what it did not touch after all is forgotten, and the point is complete.
    Outcome finish();
    /// The same in place of finish() for a job that is to have done nothing: puts everything back,
    /// and the point goes. Where that fails the point is finished and stays.
    Outcome takeBack();
    /// Forgets the point of a job that has ended.
    void remove();

    /// Null until something was kept.
    QString id() const;

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

/// Why a point cannot be put back without force: the files of which a newer point holds something,
/// and those that are no longer what the job left. Points that are put back do not count, nor do
/// the undo points that did it.
VEXDESK_HISTORY_EXPORT Result<QStringList> whatForbidsPuttingBack(const RestorePlace& place,
                                                                  const RestorePointRecord& point);

/// Puts one point back.
class VEXDESK_HISTORY_EXPORT PuttingBack final
{
public:
    PuttingBack(const RestorePlace& place, const RestorePointRecord& point);
    ~PuttingBack();
    Q_DISABLE_COPY_MOVE(PuttingBack)

    /// Sees to it that the point does not go meanwhile, and that all its kept files are there and
    /// are what they were. Nothing is touched.
    Outcome begin();
    /// Tells the keeper of all files; then the kept ones return, each whole or not at all, and the
    /// created ones go. Directories stay.
    Outcome run(FileKeeper* keeper);

private:
    class Private;
    const std::unique_ptr<Private> m_d;
};

/// Removes the oldest points beyond the limits: never the newest, nor one whose job runs or that is
/// being put back.
VEXDESK_HISTORY_EXPORT Outcome pruneRestorePoints(const RestorePlace& place,
                                                  const RestoreLimits& limits);

} // namespace vexdesk
