// SPDX-License-Identifier: MIT
#include "samplecolumns.h"

namespace tadata {

namespace {

qsizetype separatorIn(QByteArrayView line, QByteArrayView separator, qsizetype from)
{
    return separator.size() == 1 ? line.indexOf(separator.front(), from)
                                 : line.indexOf(separator, from);
}

qsizetype countFields(QByteArrayView line, QByteArrayView separator)
{
    if (separator.size() == 1)
        return 1 + std::count(line.begin(), line.end(), separator.front());
    qsizetype count = 1;
    for (qsizetype at = 0; (at = separatorIn(line, separator, at)) >= 0; at += separator.size())
        ++count;
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

qsizetype SampleBody::fieldCount() const
{
    if (size() == 0)
        return 0;
    std::vector<qsizetype> counts;
    counts.reserve(size());
    for (size_t i = 0; i < size(); ++i)
        counts.push_back(line(i).isCut ? 0 : countFields(line(i).text, m_separator));
    // What nearly all of them are is also the one in the middle.
    const auto middle = counts.begin() + qsizetype(size() / 2);
    std::nth_element(counts.begin(), middle, counts.end());
    const qsizetype count = *middle;
    const auto lines = static_cast<size_t>(std::count(counts.begin(), counts.end(), count));
    return lines >= enough() ? count : 0;
}

ColumnReader::ColumnReader(const SampleBody& body)
    : m_body(body)
    , m_begins(body.size(), 0)
{
    for (size_t i = 0; i < body.size(); ++i) {
        if (body.line(i).isCut)
            m_begins[i] = -1;
    }
}

Column ColumnReader::next()
{
    Column column;
    column.reserve(m_begins.size());
    for (size_t i = 0; i < m_begins.size(); ++i)
        column.push_back(nextField(i));
    return column;
}

QByteArrayView ColumnReader::nextField(size_t index)
{
    qsizetype& begin = m_begins[index];
    if (begin < 0)
        return {};
    const QByteArrayView line = m_body.line(index).text;
    const qsizetype from = begin;
    const qsizetype end = separatorIn(line, m_body.separator(), from);
    begin = end < 0 ? -1 : end + m_body.separator().size();
    return end < 0 ? line.sliced(from) : line.sliced(from, end - from);
}

} // namespace tadata
