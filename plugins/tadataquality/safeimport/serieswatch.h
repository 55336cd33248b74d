// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

namespace tadata {

/// Tells when somebody else has changed stored series, soon after the last of several changes.
/// User-interface thread.
class SeriesWatch final : public QObject
{
    Q_OBJECT

public:
    explicit SeriesWatch(QObject* parent = nullptr);
    ~SeriesWatch() override;

    /// Follows these series ("VENUE/BOARD/SECURITY") of the store with this root, the first of them
    /// where they are many; of one that is not there yet, the directory in which it would be made.
    void follow(const QDir& root, const QStringList& series);
    /// Follows none until resume().
    void pause();
    /// Follows the same ones again; what happened meanwhile is not told.
    void resume();

    /// Each costs a handle of the system.
    static constexpr qsizetype mostSeries = 100;

Q_SIGNALS:
    void changed();

private:
    QFileSystemWatcher m_watcher;
    QTimer m_calm;
    QStringList m_directories;
};

} // namespace tadata
