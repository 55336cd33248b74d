// SPDX-License-Identifier: MIT
#include "filesample.h"

#include "charactersearch.h"
#include "importfailures.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/utf8.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringConverter>

#include <algorithm>
#include <optional>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImporterTAData)
};

constexpr int linesOfHalf = 1000;
constexpr qsizetype blockSize = 65536;
constexpr qsizetype longestText = 65536;

// Where line ends stand in a text.
std::vector<qsizetype> lineEndsIn(QByteArrayView text)
{
    std::vector<qsizetype> ends;
    for (qsizetype at = 0; (at = text.indexOf('\n', at)) >= 0; ++at)
        ends.push_back(at);
    return ends;
}

bool isUtf8(const SampledLine& line)
{
    // What was cut off may be a part of a character.
    return line.isCut || vexdesk::isAscii(line.text) ||
           vexdesk::textFromUtf8(line.text).toUtf8() == line.text;
}

// A file, from any place on in lines, and searched backwards for where lines begin.
class SampleReader final
{
public:
    explicit SampleReader(const QString& path)
        : m_file(path)
    {}

    bool open()
    {
        // To open a pipe is to wait for somebody who writes into it.
        return QFileInfo(m_file.fileName()).isFile() &&
               m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    qint64 size() const { return m_file.size(); }
    // Where the next line begins.
    qint64 position() const { return m_read - (m_block.size() - m_at); }
    const Outcome& outcome() const { return m_outcome; }

    Outcome skipMark();
    void goTo(qint64 position);
    bool nextLine(SampledLine* line);
    std::optional<qint64> beginOfLast(size_t count, qint64 from, qint64 end);

private:
    bool fill();
    bool readBetween(qint64 begin, qint64 end);
    void fail(const QString& reason) { m_outcome = cannotRead(m_file.fileName(), reason); }
    void failOfLength() { fail(Text::tr("строка длиннее 256 МБ")); }

    QFile m_file;
    QByteArray m_block;
    qsizetype m_at = 0; // in the block
    qint64 m_read = 0;  // of the file, up to the block's end
    Outcome m_outcome;
};

// Leaves what a mark says of the encoding; it is no part of the first line.
Outcome SampleReader::skipMark()
{
    fill();
    const auto encoding = QStringConverter::encodingForData(m_block);
    if (!encoding)
        return m_outcome;
    if (*encoding != QStringConverter::Utf8)
        return cannotRead(m_file.fileName(),
                          Text::tr("формат файлов в UTF-16 и UTF-32 не угадывается; сохраните файл "
                                   "в UTF-8 или задайте --columns"));
    constexpr qsizetype markSize = 3;
    m_at = markSize;
    return m_outcome;
}

void SampleReader::goTo(qint64 position)
{
    m_block.clear();
    m_at = 0;
    m_read = position;
    m_file.seek(position);
}

// Makes sure of something in the block; false at the end of the file, and where reading failed.
bool SampleReader::fill()
{
    if (m_at < m_block.size() || !m_outcome)
        return bool(m_outcome);
    m_block.resize(blockSize);
    const qint64 count = m_file.read(m_block.data(), blockSize);
    m_block.resize(std::max(qint64(0), count));
    m_at = 0;
    m_read += m_block.size();
    if (count < 0)
        fail(m_file.errorString());
    return count > 0;
}

bool SampleReader::nextLine(SampledLine* line)
{
    *line = {};
    qint64 length = 0;
    bool hasEnded = false;
    while (!hasEnded && fill()) {
        const QByteArrayView rest = QByteArrayView(m_block).sliced(m_at);
        const qsizetype end = rest.indexOf('\n');
        hasEnded = end >= 0;
        const QByteArrayView part = hasEnded ? rest.first(end) : rest;
        const auto kept = part.first(std::min(part.size(), longestText - line->text.size()));
        // Not by appending alone, which takes room for twice as much.
        line->text.reserve(line->text.size() + kept.size());
        line->text += kept;
        m_at += part.size() + (hasEnded ? 1 : 0);
        length += part.size();
        if (length > vexdesk::DayFileLines::maxLine)
            failOfLength();
    }
    line->isCut = length > line->text.size();
    if (!line->isCut && line->text.endsWith('\r'))
        line->text.chop(1);
    return m_outcome && (hasEnded || length > 0);
}

// Where the last lines of this interval begin, as many as are wanted; no value when there are
// fewer of them. A line begins where the interval does.
std::optional<qint64> SampleReader::beginOfLast(size_t count, qint64 from, qint64 end)
{
    size_t begun = 0;  // lines
    qint64 next = end; // where the line behind begins
    // The interval's last character ends its last line, or is a part of it.
    for (qint64 at = end - 1; at > from; at = std::max(from, at - blockSize)) {
        const qint64 begin = std::max(from, at - blockSize);
        if (!readBetween(begin, at))
            return std::nullopt;
        const std::vector<qsizetype> ends = lineEndsIn(m_block);
        if (begun + ends.size() >= count)
            return begin + ends[begun + ends.size() - count] + 1;
        begun += ends.size();
        if (!ends.empty())
            next = begin + ends.front() + 1;
        if (next - begin > vexdesk::DayFileLines::maxLine) {
            failOfLength();
            return std::nullopt;
        }
    }
    return begun == count - 1 && end > from ? std::optional(from) : std::nullopt;
}

bool SampleReader::readBetween(qint64 begin, qint64 end)
{
    goTo(begin);
    m_block.resize(end - begin);
    qint64 count = 0;
    while (count < m_block.size()) {
        const qint64 more = m_file.read(m_block.data() + count, m_block.size() - count);
        if (more <= 0) {
            fail(more < 0 ? m_file.errorString() : Text::tr("файл стал короче, пока его читали"));
            return false;
        }
        count += more;
    }
    return true;
}

void take(SampleReader& reader, int most, FileSample* sample)
{
    SampledLine line;
    for (int i = 0; i < most && reader.nextLine(&line); ++i) {
        if (!isBlank(line.text))
            sample->lines.push_back(line);
    }
}

} // namespace

Result<FileSample> sampleFile(const QString& path)
{
    SampleReader reader(path);
    if (!reader.open())
        return cannotOpen(path);
    if (const Outcome marked = reader.skipMark(); !marked)
        return marked.failure();

    FileSample sample;
    sample.lines.reserve(size_t(2) * linesOfHalf);
    take(reader, linesOfHalf, &sample);
    const qint64 rest = reader.position();
    const qint64 size = reader.size();
    const std::optional<qint64> last =
        reader.outcome() ? reader.beginOfLast(linesOfHalf, rest, size) : std::nullopt;
    const size_t firstHalf = sample.lines.size();
    reader.goTo(last.value_or(rest));
    take(reader, linesOfHalf, &sample);
    if (!reader.outcome())
        return reader.outcome().failure();
    sample.secondHalf = last ? firstHalf : sample.lines.size();
    sample.isUtf8 = std::all_of(sample.lines.begin(), sample.lines.end(), isUtf8);
    return sample;
}

} // namespace tadata
