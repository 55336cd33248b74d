// SPDX-License-Identifier: MIT
#include "lineplaces.h"

#include "importfailures.h"
#include "windows1251.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QFile>

#include <algorithm>
#include <utility>

namespace tadata {

using vexdesk::FileState;
using vexdesk::Outcome;
using vexdesk::Result;

namespace {

constexpr qsizetype blockSize = qsizetype(256) * 1024;
constexpr qsizetype longestShown = 4096;

bool isBigEndian(const std::optional<QStringConverter::Encoding>& encoding)
{
    return encoding &&
           (*encoding == QStringConverter::Utf16BE || *encoding == QStringConverter::Utf32BE);
}

qsizetype markSize(const std::optional<QStringConverter::Encoding>& encoding)
{
    if (!encoding)
        return 0;
    constexpr qsizetype utf8Mark = 3;
    if (*encoding == QStringConverter::Utf8)
        return utf8Mark;
    const bool isWide =
        *encoding == QStringConverter::Utf32LE || *encoding == QStringConverter::Utf32BE;
    return isWide ? 4 : 2;
}

// The place behind the next line feed, from this one on; -1 where there is none. A character of
// several bytes begins at a multiple of its size, in the file as in a block.
qsizetype nextLineIn(QByteArrayView block, qsizetype from, qsizetype unit, bool bigEndian)
{
    for (qsizetype at = from; (at = block.indexOf('\n', at)) >= 0; ++at) {
        const qsizetype begin = at - at % unit;
        const qsizetype wanted = bigEndian ? begin + unit - 1 : begin;
        if (begin + unit > block.size() || at != wanted)
            continue;
        const QByteArrayView character = block.sliced(begin, unit);
        if (std::count(character.begin(), character.end(), '\0') == unit - 1)
            return begin + unit;
    }
    return -1;
}

Result<QByteArray> blockOf(QFile& file)
{
    QByteArray block(blockSize, Qt::Uninitialized);
    qsizetype size = 0;
    while (size < blockSize) {
        const qint64 count = file.read(block.data() + size, blockSize - size);
        if (count < 0)
            return cannotRead(file.fileName(), file.errorString());
        if (count == 0)
            break;
        size += count;
    }
    block.truncate(size);
    return block;
}

bool openFile(QFile& file)
{
    // To open a pipe is to wait for somebody who writes into it.
    return vexdesk::fileState(file.fileName()) &&
           file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

// One search for the lines of a file.
class LineSearch final
{
public:
    explicit LineSearch(const std::function<void(const LinePlaces&)>& more)
        : m_more(more)
    {}

    Outcome run(QFile& file, const FileState& state, const std::atomic<bool>& stop)
    {
        m_found.state = state;
        for (;;) {
            if (stop.load(std::memory_order_relaxed))
                return interrupted();
            const Result<QByteArray> block = blockOf(file);
            if (!block)
                return block.failure();
            if (block->isEmpty())
                break;
            take(*block);
            tell();
        }
        finish();
        return {};
    }

private:
    void take(const QByteArray& block)
    {
        if (m_read == 0)
            begin(block);
        const qsizetype unit = m_found.unit();
        const bool bigEndian = isBigEndian(m_found.encoding);
        qsizetype at = m_read == 0 ? markSize(m_found.encoding) : 0;
        bool isFirst = true;
        while ((at = nextLineIn(block, at, unit, bigEndian)) >= 0) {
            ++m_ends;
            m_lastEnd = m_read + at;
            if (std::exchange(isFirst, false))
                m_found.places.push_back({m_ends, m_lastEnd});
        }
        m_read += block.size();
        // The line that has no end yet counts as one.
        m_found.lines = m_ends + (m_read > m_lastEnd ? 1 : 0);
    }

    void begin(const QByteArray& block)
    {
        m_found.encoding = QStringConverter::encodingForData(block);
        m_lastEnd = markSize(m_found.encoding);
        m_found.places.push_back({0, m_lastEnd});
    }

    void tell()
    {
        if (m_read < m_nextTelling)
            return;
        m_nextTelling = 2 * m_read;
        m_more(m_found);
    }

    void finish()
    {
        if (m_found.places.empty())
            m_found.places.push_back({});
        m_found.isWhole = true;
        m_more(m_found);
    }

    const std::function<void(const LinePlaces&)>& m_more;
    LinePlaces m_found;
    qint64 m_read = 0;
    qint64 m_ends = 0;    ///< of lines
    qint64 m_lastEnd = 0; ///< where the last line begins that may have no end
    qint64 m_nextTelling = 0;
};

// What is no UTF-8 is most likely of an old Russian program.
QString textOf(QByteArrayView line, const std::optional<QStringConverter::Encoding>& encoding,
               bool isCut)
{
    if (encoding && *encoding != QStringConverter::Utf8)
        return QStringDecoder(*encoding)(line);
    const QString text = vexdesk::textFromUtf8(line);
    return isCut || text.toUtf8() == line ? text : textFromWindows1251(line);
}

// Gives the lines of an open file from a place on.
class LineReader final
{
public:
    LineReader(QFile& file, const LinePlaces& places)
        : m_file(file)
        , m_places(places)
    {}

    Outcome skip(qint64 lines)
    {
        for (; lines > 0 && m_hasMore; --lines) {
            if (const auto line = next(); !line)
                return line.failure();
        }
        return {};
    }

    bool hasMore() const { return m_hasMore; }

    // One that is not there is empty, and then there are no more.
    Result<ShownLine> next()
    {
        QByteArray line;
        bool isCut = false;
        bool hasEnded = false;
        while (!hasEnded) {
            if (m_at >= m_block.size()) {
                Result<QByteArray> block = blockOf(m_file);
                if (!block)
                    return block.failure();
                m_block = *std::move(block);
                m_at = 0;
                if (m_block.isEmpty())
                    break;
            }
            const qsizetype end =
                nextLineIn(m_block, m_at, m_places.unit(), isBigEndian(m_places.encoding));
            hasEnded = end >= 0;
            const qsizetype size = (hasEnded ? end : m_block.size()) - m_at;
            const qsizetype room = std::min(size, longestShown - line.size());
            line += QByteArrayView(m_block).sliced(m_at, room);
            isCut = isCut || room < size;
            m_at += size;
        }
        m_hasMore = hasEnded || !line.isEmpty();
        ShownLine shown{textOf(line, m_places.encoding, isCut), isCut};
        for (const QChar end : {QChar(u'\n'), QChar(u'\r')}) {
            if (shown.text.endsWith(end))
                shown.text.chop(1);
        }
        return shown;
    }

private:
    QFile& m_file;
    const LinePlaces& m_places;
    QByteArray m_block;
    qsizetype m_at = 0;
    bool m_hasMore = true;
};

} // namespace

const LinePlaces::Place& LinePlaces::placeBefore(qint64 line) const
{
    const auto behind =
        std::upper_bound(places.begin(), places.end(), line,
                         [](qint64 number, const Place& place) { return number < place.line; });
    return *std::prev(behind);
}

qsizetype LinePlaces::unit() const
{
    const bool isNarrow = !encoding || *encoding == QStringConverter::Utf8;
    return isNarrow ? 1 : markSize(encoding);
}

Outcome findLines(const QString& path, const std::function<void(const LinePlaces&)>& more,
                  const std::atomic<bool>& stop)
{
    const std::optional<FileState> state = vexdesk::fileState(path);
    QFile file(path);
    if (!state || !openFile(file))
        return cannotOpen(path);
    return LineSearch(more).run(file, *state, stop);
}

Result<std::vector<ShownLine>> readLines(const QString& path, const LinePlaces& places,
                                         qint64 first, qint64 count)
{
    QFile file(path);
    if (!openFile(file))
        return cannotOpen(path);
    const std::optional<FileState> state = vexdesk::fileState(path);
    if (!state || !state->isUnchanged(places.state))
        return hasChanged(path);
    const LinePlaces::Place& place = places.placeBefore(first);
    file.seek(place.offset);
    LineReader reader(file, places);
    if (const Outcome skipped = reader.skip(first - place.line); !skipped)
        return skipped.failure();
    std::vector<ShownLine> lines;
    while (static_cast<qint64>(lines.size()) < count) {
        Result<ShownLine> line = reader.next();
        if (!line)
            return line.failure();
        if (!reader.hasMore())
            break;
        lines.push_back(*std::move(line));
    }
    return lines;
}

} // namespace tadata
