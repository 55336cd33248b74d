// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundtask.h"
#include "directorywatch.h"
#include "healthpass.h"

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QTimer>

namespace tadata {

/// What is known of the health of a store, and follows its changes: it looks at the files of the
/// store again and again, seldom where that takes long, and at once when a command has made a
/// restore point. A board is read anew when a file of it has changed. User-interface thread; all
/// reading is done in another.
class HealthBook final : public QObject
{
    Q_OBJECT

public:
    explicit HealthBook(const QDir& root, QObject* parent = nullptr);
    ~HealthBook() override;

    /// Follows all boards from now on, or only those that were asked for by followBoard().
    void followAll(bool all);
    void followBoard(const QString& board);
    /// The pause between two looks, however quick they are, and how many times as long as the look
    /// before it lasts.
    void setPauses(std::chrono::milliseconds shortest, int perLook);
    /// Looks now.
    void look();

    /// In the order of code points, minutes before seconds.
    QList<SharedDigest> series() const;
    /// Null where nothing is known, or not yet.
    SharedDigest digest(const QString& series, int timeframe) const;
    /// The days for whose sake nothing is known of the series.
    QList<UnreadDay> unreadDays(const QString& series) const;
    /// What could not be read; whole sentences.
    QStringList problems() const;
    /// Whether the store was looked at from end to end.
    bool isKnown() const { return m_isKnown; }

Q_SIGNALS:
    /// Something is known of these boards that was not, or what was known is no longer so.
    void changed(const QStringList& boards);
    /// While boards are read: 0 to 100.
    void progressed(int percent);
    /// A look has come to its end.
    void looked();

private:
    void take(const BoardKnowledge& knowledge);
    void endLook(const HealthPass& pass, qint64 usualLength);
    void lookSoon();

    const QDir m_root;
    QMap<QString, BoardKnowledge> m_boards;
    std::optional<QSet<QString>> m_wanted = QSet<QString>();
    QSet<QString> m_wantedAside; ///< while all are followed
    QStringList m_problems;
    bool m_isKnown = false;
    bool m_isStale = false; ///< the look at work does not see what has changed meanwhile
    std::chrono::milliseconds m_shortestPause;
    int m_pausePerLook = 20;
    QTimer m_next;
    DirectoryWatch m_watch{this, [this] { lookSoon(); }};
    BackgroundTask<HealthPass> m_looking; // last: it ends before the rest goes
};

} // namespace tadata
