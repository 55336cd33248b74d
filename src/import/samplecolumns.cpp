// SPDX-License-Identifier: MIT
#include "samplecolumns.h"

#include "charactersearch.h"

#include <cstring>

namespace tadata {

namespace {

// Nearly all of the time of a guess would go to Qt's ways of finding one character.
qsizetype separatorIn(QByteArrayView line, QByteArrayView separator, qsizetype from)
{
    if (separator.size() != 1)
        return line.indexOf(separator, from);
    const void* found =
        std::memchr(line.data() + from, separator.front(), static_cast<size_t>(line.size() - from));
    return found ? static_cast<const char*>(found) - line.data() : -1;
}

// Where the separator is rare, to look for it is much faster than to look at every character; in a
// line of many columns it is the other way round.
qsizetype countFields(QByteArrayView line, QByteArrayView separator)
{
    constexpr qsizetype few = 6;
    qsizetype count = 1;
    for (qsizetype at = 0; (at = separatorIn(line, separator, at)) >= 0; at += separator.size()) {
        if (count >= few && separator.size() == 1)
            return count + countOf(separator.front(), line.sliced(at));
        ++count;
    }
    return count;
}

} // namespace

std::vector<QByteArrayView> fieldsOf(QByteArrayView line, QByteArrayView separator)
{
    std::vector<QByteArrayView> fields;
    qsizetype begin = 0;
    for (qsizetype end = 0; (end = separatorIn(line, separator, begin)) >= 0;
         begin = end + separator.size())
        fields.push_back(line.sliced(begin, end - begin));
    fields.push_back(line.sliced(begin));
    return fields;
}

SampleBody::SampleBody(const FileSample& sample, const QByteArray& separator, bool hasHeader)
    : m_sample(sample)
    , m_separator(separator)
    , m_first(hasHeader && !sample.lines.empty() ? 1 : 0)
{}

qsizetype SampleBody::fieldCount(qsizetype fewest) const
{
    if (size() == 0)
        return 0;
    std::vector<qsizetype> counts;
    counts.reserve(size());
    const size_t mostMisses = allowedMisses();
    size_t misses = 0;
    for (size_t i = 0; i < size(); ++i) {
        counts.push_back(line(i).isCut ? 0 : countFields(line(i).text, m_separator));
        misses += counts.back() < fewest ? 1 : 0;
        if (misses > mostMisses)
            return 0;
    }
    // What nearly all of them are is also the one in the middle.
    const auto middle = counts.begin() + qsizetype(size() / 2);
    std::nth_element(counts.begin(), middle, counts.end());
    const qsizetype count = *middle;
    const auto lines = static_cast<size_t>(std::count(counts.begin(), counts.end(), count));
    return size() - lines <= mostMisses ? count : 0;
}

ColumnReader::ColumnReader(const SampleBody& body, size_t lines)
    : m_body(&body)
    , m_begins(lines, 0)
{
    for (size_t line = 0; line < lines; ++line) {
        if (body.line(line).isCut)
            m_begins[line] = -1;
    }
}

Column ColumnReader::column(int index)
{
    Column column;
    column.reserve(m_begins.size());
    for (size_t line = 0; line < m_begins.size(); ++line) {
        for (int passed = m_next; passed < index && m_begins[line] >= 0; ++passed)
            nextField(line);
        column.push_back(nextField(line));
    }
    m_next = index + 1;
    return column;
}

QByteArrayView ColumnReader::nextField(size_t index)
{
    qsizetype& begin = m_begins[index];
    if (begin < 0)
        return {};
    const QByteArrayView line = m_body->line(index).text;
    const qsizetype from = begin;
    const qsizetype end = separatorIn(line, m_body->separator(), from);
    begin = end < 0 ? -1 : end + m_body->separator().size();
    return end < 0 ? line.sliced(from) : line.sliced(from, end - from);
}

} // namespace tadata
