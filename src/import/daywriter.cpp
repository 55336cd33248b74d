// SPDX-License-Identifier: MIT
#include "daywriter.h"

#include "bardescription.h"
#include "importseries.h"
#include "minutebuilder.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/dayfilerewrite.h>
#include <vexdesk/history/filekeeper.h>
#include <vexdesk/history/recordline.h>

#include <array>
#include <utility>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;

namespace {

void append(QByteArray& content, const std::optional<BarDescription>& bar)
{
    if (!bar)
        return;
    std::array<char, vexdesk::maxRecordLine> line;
    const char* const end = vexdesk::writeRecordLine(line.data(), *bar);
    content.append(line.data(), end - line.data());
}

} // namespace

DerivedMinutes derivedMinutes(const QByteArray& content)
{
    DerivedMinutes minutes;
    MinuteBuilder builder;
    BarDescription bar;
    for (qsizetype begin = 0; begin < content.size();) {
        const qsizetype end = content.indexOf('\n', begin);
        const auto checked =
            vexdesk::checkedBar(QByteArrayView(content).sliced(begin, end - begin), QDate());
        begin = end + 1;
        if (!checked)
            continue;
        static_cast<vexdesk::StoredBar&>(bar) = checked->bar;
        append(minutes.whole, builder.add(bar));
    }
    append(minutes.open, builder.take());
    return minutes;
}

DayWriter::DayWriter(const QDir& directory, int timeframe, vexdesk::FileKeeper* keeper)
    : m_directory(directory)
    , m_timeframe(timeframe)
    , m_keeper(keeper)
{}

Outcome DayWriter::write(const QDate& day, const QByteArray& content,
                         const std::optional<vexdesk::FileState>& asRead)
{
    const bool derives = m_timeframe == vexdesk::secondTimeframe;
    const QString path = m_directory.filePath(vexdesk::dayFileName(day, m_timeframe));
    QStringList paths{path};
    Waiting minutes;
    if (derives) {
        const QString minutePath = m_directory.filePath(vexdesk::minuteFileName(day));
        paths.append(minutePath);
        try {
            minutes = {minutePath, vexdesk::fileState(minutePath), derivedMinutes(content)};
        } catch (const QString& message) {
            return Failure{message};
        }
    }
    if (Outcome kept = m_keeper ? m_keeper->keep(paths) : Outcome(); !kept)
        return kept;
    if (Outcome made = m_hasDirectory ? Outcome() : makeDirectory(m_directory); !made)
        return made;
    m_hasDirectory = true;
    if (Outcome written = vexdesk::writeDayFile(path, content, asRead); !written)
        return written;
    Outcome before = writeWaiting(false);
    if (derives)
        m_waiting = std::move(minutes);
    return before;
}

Outcome DayWriter::finish()
{
    return writeWaiting(true);
}

Outcome DayWriter::writeWaiting(bool isLast)
{
    if (!m_waiting)
        return {};
    const Waiting waiting = *std::exchange(m_waiting, std::nullopt);
    const DerivedMinutes& minutes = waiting.minutes;
    return vexdesk::writeDayFile(
        waiting.path, isLast ? minutes.whole : minutes.whole + minutes.open, waiting.asRead);
}

} // namespace tadata
