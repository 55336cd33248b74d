// SPDX-License-Identifier: MIT
#include "healthbook.h"

#include <algorithm>

namespace tadata {

namespace {

constexpr qint64 longestPause = qint64(10) * 60 * 1000;
constexpr std::chrono::milliseconds soon{300}; // a command changes many files

} // namespace

HealthBook::HealthBook(const QDir& root, QObject* parent)
    : QObject(parent)
    , m_root(root)
    , m_shortestPause(std::chrono::seconds(5))
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &HealthBook::look);
}

HealthBook::~HealthBook() = default;

void HealthBook::followAll(bool all)
{
    if (all == !m_wanted)
        return;
    if (all) {
        m_wantedAside = *m_wanted;
        m_wanted.reset();
        look();
        return;
    }
    m_wanted = m_wantedAside;
    if (m_wanted->isEmpty()) {
        m_looking.stop();
        m_next.stop();
    }
}

void HealthBook::followBoard(const QString& board)
{
    QSet<QString>& boards = m_wanted ? *m_wanted : m_wantedAside;
    if (boards.contains(board))
        return;
    boards.insert(board);
    if (m_wanted)
        look();
}

void HealthBook::setPauses(std::chrono::milliseconds shortest, int perLook)
{
    m_shortestPause = shortest;
    m_pausePerLook = perLook;
}

// A look that is at work may have passed by already what has changed.
void HealthBook::lookSoon()
{
    if (m_looking.isRunning())
        m_isStale = true;
    else if (!m_wanted || !m_wanted->isEmpty())
        m_next.start(soon);
}

void HealthBook::look()
{
    m_next.stop();
    m_isStale = false;
    HealthPassQuery query{m_root, m_wanted, {}};
    for (const BoardKnowledge& board : std::as_const(m_boards)) {
        // What could not be read may be readable by now, without another stamp.
        if (board.problems.isEmpty())
            query.known.insert(board.board, board.stamps);
    }
    m_looking.start(
        [this, query](const std::atomic<bool>& stop) {
            // Out of the other thread: what is told late comes to nothing with this object.
            const auto tell = [this, &stop](auto call) {
                if (!stop)
                    QMetaObject::invokeMethod(this, call, Qt::QueuedConnection);
            };
            return lookAtStore(
                query, stop,
                [this, &tell](const BoardKnowledge& board) {
                    tell([this, board] { take(board); });
                },
                [this, &tell](int percent) {
                    tell([this, percent] { Q_EMIT progressed(percent); });
                });
        },
        [this, isFirst = m_boards.isEmpty()](const HealthPass& pass) {
            // The whole store is not read again.
            endLook(pass, isFirst ? 0 : pass.milliseconds);
        });
}

void HealthBook::take(const BoardKnowledge& knowledge)
{
    const BoardKnowledge before = m_boards.value(knowledge.board);
    m_boards.insert(knowledge.board, knowledge);
    if (before.stamps != knowledge.stamps || before.problems != knowledge.problems)
        Q_EMIT changed({knowledge.board});
}

void HealthBook::endLook(const HealthPass& pass, qint64 usualLength)
{
    QStringList gone;
    for (const BoardKnowledge& board : std::as_const(m_boards)) {
        if (!pass.boards.contains(board.board))
            gone.append(board.board);
    }
    for (const QString& board : std::as_const(gone))
        m_boards.remove(board);
    m_problems = pass.problems;
    m_isKnown = !m_wanted;
    if (!gone.isEmpty())
        Q_EMIT changed(gone);
    if (!pass.place.isEmpty())
        m_watch.watch({pass.place});
    const qint64 pause = std::clamp(usualLength * m_pausePerLook,
                                    static_cast<qint64>(m_shortestPause.count()), longestPause);
    m_next.start(m_isStale ? soon : std::chrono::milliseconds(pause));
    Q_EMIT looked();
}

QList<SharedDigest> HealthBook::series() const
{
    QList<SharedDigest> all;
    for (const BoardKnowledge& board : m_boards)
        all += board.series;
    return all;
}

SharedDigest HealthBook::digest(const QString& series, int timeframe) const
{
    const auto board = m_boards.constFind(series.section(u'/', 0, 1));
    if (board == m_boards.cend())
        return nullptr;
    const auto found = std::find_if(board->series.begin(), board->series.end(),
                                    [&series, timeframe](const SharedDigest& one) {
                                        return one->timeframe == timeframe && one->series == series;
                                    });
    return found == board->series.end() ? nullptr : *found;
}

QList<UnreadDay> HealthBook::unreadDays(const QString& series) const
{
    QList<UnreadDay> days = m_boards.value(series.section(u'/', 0, 1)).unread;
    days.removeIf([&series](const UnreadDay& day) { return day.series != series; });
    return days;
}

QStringList HealthBook::problems() const
{
    QStringList all = m_problems;
    for (const BoardKnowledge& board : m_boards)
        all += board.problems;
    return all;
}

} // namespace tadata
