// SPDX-License-Identifier: MIT
#include "healthpass.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/links.h>
#include <vexdesk/history/restoreplace.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(HealthPass)
};

using Board = std::vector<SeriesStamp>;

// With what the system says against it now, if it does.
QString withReason(const QString& text, const QString& path, int mode)
{
    if (::access(QFile::encodeName(path).constData(), mode) != 0)
        return text + QStringLiteral(": ") + qt_error_string(errno);
    return text;
}

QString notListed(const QString& path)
{
    return withReason(Text::tr("Невозможно прочитать каталог %1").arg(path), path, R_OK | X_OK);
}

QString notOpened(const QString& path)
{
    const QFileInfo info(path);
    const QString text = Text::tr("Невозможно открыть файл %1").arg(path);
    if (info.exists() && !info.isFile())
        return text + QStringLiteral(": ") + Text::tr("это не обычный файл");
    return withReason(text, path, R_OK);
}

QString textOf(const UnreadFile& file)
{
    switch (file.reason) {
    case UnreadFile::Reason::NotListed:
        return notListed(file.path);
    case UnreadFile::Reason::NotOpened:
        return vexdesk::isLostLink(file.path) ? vexdesk::lostLink(file.path).message
                                              : notOpened(file.path);
    case UnreadFile::Reason::Changing:
        return Text::tr("Файл %1 изменился, пока его читали").arg(file.path);
    case UnreadFile::Reason::Broken:
        break;
    }
    return Text::tr("Невозможно прочитать файл %1: %2").arg(file.path, file.message);
}

std::vector<Board> boardsOf(std::vector<SeriesStamp> series)
{
    std::vector<Board> boards;
    for (SeriesStamp& one : series) {
        if (boards.empty() || boards.back().front().board != one.board)
            boards.emplace_back();
        boards.back().push_back(std::move(one));
    }
    return boards;
}

QHash<QString, size_t> stampsOf(const Board& board)
{
    QHash<QString, size_t> stamps;
    for (const SeriesStamp& series : board)
        stamps.insert(series.series, series.stamp);
    return stamps;
}

qint64 daysOf(const Board& board)
{
    qint64 days = 0;
    for (const SeriesStamp& series : board)
        days += static_cast<qint64>(series.minuteDays.size() + series.secondDays.size());
    return days;
}

// One after the other, and how much of all of them is done.
class BoardsReader final
{
public:
    BoardsReader(const std::atomic<bool>& stop, const std::function<void(int)>& progress,
                 qint64 days)
        : m_stop(stop)
        , m_progress(progress)
        , m_days(std::max(days, qint64(1)))
    {}

    BoardKnowledge read(const Board& board)
    {
        BoardKnowledge knowledge;
        knowledge.board = board.front().board;
        knowledge.stamps = stampsOf(board);
        for (const int timeframe : {vexdesk::minuteTimeframe, vexdesk::secondTimeframe})
            readTimeframe(board, timeframe, knowledge);
        std::stable_sort(knowledge.series.begin(), knowledge.series.end(),
                         [](const SharedDigest& left, const SharedDigest& right) {
                             return left->series.toUcs4() < right->series.toUcs4();
                         });
        return knowledge;
    }

private:
    void readTimeframe(const Board& board, int timeframe, BoardKnowledge& knowledge)
    {
        std::vector<BoardSeries> stored;
        for (const SeriesStamp& series : board) {
            const auto& days =
                timeframe == vexdesk::minuteTimeframe ? series.minuteDays : series.secondDays;
            if (!days.empty())
                stored.push_back({series.series, QDir(series.path), days, true});
        }
        const BoardHealth health = boardHealth(
            stored, timeframe, {}, [this] { showDay(); }, &m_stop);
        for (const SeriesHealth& series : health.series)
            knowledge.series.append(std::make_shared<const SeriesDigest>(digestOf(series)));
        for (const UnreadFile& file : health.unread) {
            knowledge.problems.append(textOf(file));
            const QFileInfo info(file.path);
            const auto key = vexdesk::parseDayFileName(info.fileName());
            const auto series =
                std::find_if(stored.begin(), stored.end(), [&info](const BoardSeries& one) {
                    return one.dir.path() == info.path();
                });
            if (key && series != stored.end())
                knowledge.unread.append({series->name, key->day, textOf(file)});
        }
    }

    void showDay()
    {
        constexpr qint64 whole = 100;
        const int percent = static_cast<int>(std::min(whole, ++m_daysRead * whole / m_days));
        if (percent != m_percent)
            m_progress(percent);
        m_percent = percent;
    }

    const std::atomic<bool>& m_stop;
    const std::function<void(int)>& m_progress;
    qint64 m_days;
    qint64 m_daysRead = 0;
    int m_percent = -1;
};

} // namespace

HealthPass lookAtStore(const HealthPassQuery& query, const std::atomic<bool>& stop,
                       const std::function<void(const BoardKnowledge&)>& sink,
                       const std::function<void(int percent)>& progress)
{
    QElapsedTimer time;
    time.start();
    HealthPass pass;
    if (const auto place = vexdesk::restorePlace(query.root); place)
        pass.place = place->path;
    else
        pass.problems.append(place.message());
    StoreStamps stamps = storeStamps(query.root, stop);
    for (const QString& path : std::as_const(stamps.unreadable))
        pass.problems.append(notListed(path));
    for (const QString& link : std::as_const(stamps.lostLinks))
        pass.problems.append(vexdesk::lostLink(link).message);
    std::vector<Board> changed;
    qint64 days = 0;
    for (Board& board : boardsOf(std::move(stamps.series))) {
        const QString name = board.front().board;
        pass.boards.insert(name);
        if ((query.boards && !query.boards->contains(name)) ||
            query.known.value(name) == stampsOf(board))
            continue;
        days += daysOf(board);
        changed.push_back(std::move(board));
    }
    BoardsReader reader(stop, progress, days);
    for (const Board& board : changed) {
        const BoardKnowledge knowledge = reader.read(board);
        if (stop)
            break;
        sink(knowledge);
    }
    pass.milliseconds = time.elapsed();
    return pass;
}

} // namespace tadata
