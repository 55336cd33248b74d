// SPDX-License-Identifier: MIT
#include "dayfaults.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/recordline.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace tadata {

using vexdesk::CheckedBar;
using vexdesk::DayFileLines;
using vexdesk::StoredBar;

namespace {

// Whole numbers that a price of 56 bits cannot come near are all the same: no share of one and no
// other price makes up for the difference.
Wide scaledUp(qint64 mantissa, int digits)
{
    constexpr Wide enough = Wide(1) << 90;
    Wide scaled = mantissa;
    for (; digits > 0 && scaled != 0 && scaled < enough && scaled > -enough; --digits)
        scaled *= 10;
    return scaled;
}

bool isJump(const decimal& open, const decimal& close, int percent)
{
    constexpr int whole = 100;
    const int digits = std::max(open.scale(), close.scale());
    const Wide from = scaledUp(close.mantissa(), digits - close.scale());
    const Wide to = scaledUp(open.mantissa(), digits - open.scale());
    const auto size = [](Wide number) { return number < 0 ? -number : number; };
    return from != 0 && size(to - from) * whole > percent * size(from);
}

bool arePricesWrong(const StoredBar& bar)
{
    return bar.high < bar.open || bar.high < bar.low || bar.high < bar.close ||
           bar.low > bar.open || bar.low > bar.close;
}

// Takes the lines of a file one after the other.
class DayReader final
{
public:
    DayReader(const QDate& day, int jumpPercent)
        : m_jumpPercent(jumpPercent)
    {
        m_file.health.day = day;
    }

    void takeLine(QByteArrayView line)
    {
        ++m_lines;
        if (const auto checked = vexdesk::checkedBar(line, m_file.health.day))
            takeBar(*checked);
        else
            m_file.health.badLines.push_back(m_lines);
    }

    DayFile takeFile() { return std::move(m_file); }

private:
    void takeBar(const CheckedBar& checked)
    {
        constexpr int perSecond = 1000;
        const StoredBar& bar = checked.bar;
        const int second = bar.time.msecsSinceStartOfDay() / perSecond;
        DayHealth& health = m_file.health;
        ++health.bars;
        health.edited += checked.isEdited ? 1 : 0;
        health.duplicates += m_file.times.insert(second) ? 0 : 1;
        health.outOfOrder += second < m_second ? 1 : 0;
        health.prices += arePricesWrong(bar) ? 1 : 0;
        health.volume += bar.volume > std::numeric_limits<qint32>::max() ? 1 : 0;
        if (isJump(bar.open, m_close, m_jumpPercent))
            health.jumps.push_back(second);
        m_second = second;
        m_close = bar.close;
    }

    int m_jumpPercent;
    int m_lines = 0;
    int m_second = 0; // of the bar before
    decimal m_close;  // of the bar before; zero where there is none, or none to compare with
    DayFile m_file;
};

void takeText(QByteArrayView text, DayReader& reader)
{
    for (const char* at = text.begin(); at != text.end();) {
        const void* const found = std::memchr(at, '\n', static_cast<size_t>(text.end() - at));
        const char* const end = found ? static_cast<const char*>(found) : text.end();
        reader.takeLine(QByteArrayView(at, end));
        at = found ? end + 1 : end;
    }
}

// Files that were not written by an import: with carriage returns, a mark, or other characters.
void takeLines(DayFileLines& lines, DayReader& reader)
{
    constexpr qint64 markSize = 3;
    QByteArrayView line;
    if (!lines.next(&line))
        return;
    const QByteArray first = line.toByteArray();
    const bool hasMore = lines.next(&line);
    // What the library gives for a mark with nothing behind it is no line of bars.
    if (hasMore || !first.isEmpty() || lines.size() != markSize)
        reader.takeLine(first);
    for (bool isLine = hasMore; isLine; isLine = lines.next(&line))
        reader.takeLine(line);
}

} // namespace

DayFile readDayFile(const QString& path, const QDate& day, int jumpPercent)
{
    DayReader reader(day, jumpPercent);
    DayFileLines lines(path);
    lines.beStrict();
    std::optional<UnreadFile> failure;
    if (!lines.open()) {
        failure = UnreadFile{path, UnreadFile::Reason::NotOpened, {}};
    } else {
        if (const std::optional<QByteArray> text = lines.plainText())
            takeText(*text, reader);
        else
            takeLines(lines, reader);
        if (!lines.outcome())
            failure = UnreadFile{path, UnreadFile::Reason::Broken, lines.outcome().message()};
        else if (lines.isMixed())
            failure = UnreadFile{path, UnreadFile::Reason::Changing, {}};
    }
    DayFile file = reader.takeFile();
    file.failure = failure;
    return file;
}

} // namespace tadata
