// SPDX-License-Identifier: MIT
#include "importwatch.h"

#include <QtCore/QElapsedTimer>

#include <algorithm>

namespace tadata {

namespace {

constexpr qint64 shortestPause = 500; // milliseconds
constexpr qint64 pausePerLook = 20;

bool hasChanged(const LaidOutFile& file)
{
    const LaidOutFile now{.path = file.path,
                          .state = vexdesk::fileState(file.path),
                          .mayBeRead = mayBeRead(file.path)};
    return !now.isUnchanged(file);
}

} // namespace

ImportWatch::ImportWatch(QObject* parent)
    : QObject(parent)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &ImportWatch::look);
}

ImportWatch::~ImportWatch() = default;

void ImportWatch::follow(const std::vector<LaidOutFile>& files, const DayStamps& series)
{
    m_looking.stop();
    m_seen = std::make_shared<const Seen>(Seen{files, series});
    m_next.start(shortestPause);
}

void ImportWatch::stop()
{
    m_next.stop();
    m_looking.stop();
}

void ImportWatch::look()
{
    m_looking.start(
        [seen = m_seen](const std::atomic<bool>& stop) {
            QElapsedTimer timer;
            timer.start();
            const Found found = compare(*seen, stop);
            return Look{found, timer.elapsed()};
        },
        [this](const Look& look) { take(look); });
}

ImportWatch::Found ImportWatch::compare(const Seen& seen, const std::atomic<bool>& stop)
{
    for (const LaidOutFile& file : seen.files) {
        if (stop)
            return Found::Nothing;
        if (hasChanged(file))
            return Found::Files;
    }
    for (auto series = seen.series.cbegin(); series != seen.series.cend(); ++series) {
        if (stop)
            return Found::Nothing;
        if (dayStamp(QDir(series.key())) != series.value())
            return Found::Store;
    }
    return Found::Nothing;
}

void ImportWatch::take(const Look& look)
{
    switch (look.found) {
    case Found::Nothing:
        m_next.start(static_cast<int>(std::max(shortestPause, look.milliseconds * pausePerLook)));
        break;
    case Found::Files:
        Q_EMIT filesChanged();
        break;
    case Found::Store:
        Q_EMIT storeChanged();
        break;
    }
}

} // namespace tadata
