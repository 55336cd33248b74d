// SPDX-License-Identifier: MIT
#include "dayofbars.h"

#include "importfailures.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/links.h>
#include <vexdesk/history/recordline.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tadata {

using vexdesk::Outcome;

namespace {

using Lines = std::vector<DayLine>;

bool isEarlier(const DayLine& left, const DayLine& right)
{
    return left.second < right.second;
}

// By time, those of one time in the order in which they came.
Lines sorted(Lines lines)
{
    if (!std::is_sorted(lines.begin(), lines.end(), isEarlier))
        std::stable_sort(lines.begin(), lines.end(), isEarlier);
    return lines;
}

// The last of each time.
Lines lastOfEach(const FileDay& file)
{
    if (file.isAscending())
        return file.lines();
    const Lines lines = sorted(file.lines());
    Lines last;
    for (const DayLine& line : lines) {
        if (!last.empty() && last.back().second == line.second)
            last.pop_back();
        last.push_back(line);
    }
    return last;
}

// One merging of one day.
class Merge final
{
public:
    Merge(const StoredDay& stored, const FileDay& file, ImportMode mode)
        : m_stored(stored)
        , m_file(file)
        , m_mode(mode)
        , m_storedLines(sorted(stored.lines()))
        , m_fileLines(lastOfEach(file))
    {}

    MergedDay run()
    {
        reserve();
        auto stored = m_storedLines.cbegin();
        auto file = m_fileLines.cbegin();
        while (stored != m_storedLines.cend() || file != m_fileLines.cend()) {
            const bool hasStored = stored != m_storedLines.cend() &&
                                   (file == m_fileLines.cend() || stored->second <= file->second);
            const bool hasFile =
                file != m_fileLines.cend() && (!hasStored || file->second == stored->second);
            const bool takesFile = hasFile && (!hasStored || m_mode == ImportMode::Merge);
            if (takesFile)
                appendFile(*file);
            if (hasStored)
                stored = pass(stored, !takesFile);
            file += hasFile ? 1 : 0;
            ++m_day.keyCount;
        }
        return std::move(m_day);
    }

private:
    void reserve()
    {
        qsizetype size = m_file.text().size();
        for (const DayLine& line : m_storedLines)
            size += line.size + 1;
        m_day.content.reserve(size);
    }

    void appendFile(const DayLine& line)
    {
        m_day.content.append(m_file.text().constData() + line.begin, line.size + 1);
    }

    // All stored lines of a time.
    Lines::const_iterator pass(Lines::const_iterator line, bool areKept)
    {
        const int second = line->second;
        for (; line != m_storedLines.cend() && line->second == second; ++line) {
            if (areKept)
                appendStored(*line);
        }
        return line;
    }

    void appendStored(const DayLine& line)
    {
        const QByteArrayView text = m_stored.textOf(line);
        if (line.isEdited)
            // Which exchanges what the editor has exchanged.
            vexdesk::appendRewritten(m_day.content, vexdesk::firstRecordFields(text));
        else
            m_day.content.append(text).append('\n');
    }

    const StoredDay& m_stored;
    const FileDay& m_file;
    ImportMode m_mode;
    Lines m_storedLines;
    Lines m_fileLines;
    MergedDay m_day;
};

} // namespace

Outcome StoredDay::read(const QString& path, const QDate& day,
                        const std::optional<vexdesk::FileState>& faultless)
{
    *this = StoredDay();
    m_path = path;
    vexdesk::DayFileLines lines(path);
    lines.beStrict();
    if (!lines.open())
        return vexdesk::isMissing(path) ? vexdesk::mayBeMade(path) : cannotOpen(path);
    m_state = lines.state();
    m_isFaultless = faultless && m_state->isUnchanged(*faultless);
    if (std::optional<QByteArray> text = lines.plainText()) {
        m_text = std::move(*text);
        // The mark at the beginning of a file is not in the text.
        m_isAsRead = m_text.size() == m_state->size;
        readPlain(day);
        return {};
    }
    QByteArrayView line;
    while (lines.next(&line)) {
        const qsizetype begin = m_text.size();
        m_text.append(line).append('\n');
        add(line, begin, day);
    }
    // A byte order mark alone, which is read as an empty line.
    constexpr qint64 markSize = 3;
    if (m_state->size == markSize && m_text == "\n")
        m_firstBadLine = 0;
    return lines.outcome() ? Outcome() : cannotRead(path, lines.outcome().message());
}

void StoredDay::readPlain(const QDate& day)
{
    const QByteArrayView text(m_text);
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype found = text.indexOf('\n', begin);
        const qsizetype end = found < 0 ? text.size() : found;
        add(text.sliced(begin, end - begin), begin, day);
        begin = end + 1;
    }
}

void StoredDay::add(QByteArrayView line, qsizetype begin, const QDate& day)
{
    ++m_lineCount;
    if (m_isFaultless)
        return addFaultless(line, begin);
    const auto checked = vexdesk::checkedBar(line, day);
    if (!checked) {
        m_firstBadLine = m_firstBadLine == 0 ? m_lineCount : m_firstBadLine;
        return;
    }
    const int second = checked->bar.time.msecsSinceStartOfDay() / 1000;
    m_lines.push_back({second, begin, line.size(), checked->isEdited});
}

void StoredDay::addFaultless(QByteArrayView line, qsizetype begin)
{
    if (line.isEmpty()) // of a byte order mark alone
        return;
    const bool isEdited = vexdesk::firstRecordFields(line)[vexdesk::VolumeField].contains('.');
    m_lines.push_back({vexdesk::secondOfRecordLine(line), begin, line.size(), isEdited});
}

QByteArrayView StoredDay::textOf(const DayLine& line) const
{
    return QByteArrayView(m_text).sliced(line.begin, line.size);
}

qint64 StoredDay::keyCount() const
{
    const Lines lines = sorted(m_lines);
    qint64 count = 0;
    for (auto line = lines.begin(); line != lines.end(); ++line)
        count += line == lines.begin() || std::prev(line)->second != line->second ? 1 : 0;
    return count;
}

double StoredDay::largestValue() const
{
    double largest = 0;
    for (const DayLine& line : m_lines) {
        const vexdesk::RecordFields fields = vexdesk::firstRecordFields(textOf(line));
        const QByteArrayView text =
            fields[line.isEdited ? vexdesk::VolumeField : vexdesk::ValueField];
        const auto value = decimal::fromText(QLatin1String(text.data(), text.size()));
        largest = std::max(largest, sizeOfValue(value.value_or(decimal::zero)));
    }
    return largest;
}

void FileDay::clear()
{
    m_size = 0;
    m_lines.clear();
    m_isAscending = true;
}

void FileDay::add(const vexdesk::StoredBar& bar)
{
    char* const to = makeRoom(vexdesk::maxRecordLine);
    addLine(bar.time.msecsSinceStartOfDay() / 1000, vexdesk::writeRecordLine(to, bar));
}

void FileDay::add(int second, QByteArrayView line)
{
    char* const end = std::copy(line.begin(), line.end(), makeRoom(line.size() + 1));
    *end = '\n';
    addLine(second, end + 1);
}

// Behind the lines, which may move.
char* FileDay::makeRoom(qsizetype size)
{
    if (m_room.size() - m_size < size)
        m_room.resize(2 * m_size + size);
    return m_room.data() + m_size;
}

void FileDay::addLine(int second, const char* end)
{
    const qsizetype begin = m_size;
    m_size = end - m_room.constData();
    m_isAscending = m_isAscending && (m_lines.empty() || m_lines.back().second < second);
    m_lines.push_back({second, begin, m_size - 1 - begin, false});
}

MergedDay mergedDay(const StoredDay& stored, const FileDay& file, ImportMode mode)
{
    MergedDay day;
    if (stored.lines().empty() && file.isAscending())
        day = {QByteArray::fromRawData(file.text().data(), file.text().size()),
               static_cast<qint64>(file.lines().size()), false};
    else
        day = Merge(stored, file, mode).run();
    day.isSame = stored.holds(day.content);
    return day;
}

double sizeOfValue(const decimal& value)
{
    return std::abs(static_cast<double>(value.mantissa())) / std::pow(10.0, value.scale());
}

} // namespace tadata
