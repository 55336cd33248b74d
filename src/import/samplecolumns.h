// SPDX-License-Identifier: MIT
#pragma once

#include "filesample.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>

#include <algorithm>
#include <vector>

namespace tadata {

/// The fields of a line, views into it. The separator is not empty.
std::vector<QByteArrayView> fieldsOf(QByteArrayView line, QByteArrayView separator);

/// The fields of one column, one for each line: an empty one where the line has none. Views into
/// the sample.
using Column = std::vector<QByteArrayView>;

/// The lines of a sample that are not its header, as one separator divides them. Any thread.
class SampleBody final
{
public:
    /// The sample must outlive it. The separator is not empty.
    SampleBody(const FileSample& sample, const QByteArray& separator, bool hasHeader);

    size_t size() const { return m_sample.lines.size() - m_first; }
    const SampledLine& line(size_t index) const { return m_sample.lines[m_first + index]; }
    const QByteArray& separator() const { return m_separator; }

    /// Of how many lines something has to be true, so that it holds: 95 %, rounded up. Nothing
    /// holds where there is no line.
    size_t enough() const { return std::max<size_t>(1, (95 * size() + 99) / 100); }
    /// Whether this line and the one before stand in different places of the file.
    bool beginsHalf(size_t index) const { return m_first + index == m_sample.secondHalf; }

    /// The number of fields that holds; 0 where none does.
    qsizetype fieldCount() const;

    /// Whether enough fields of a column are what is asked for.
    template <typename IsSuch>
    bool holds(const Column& column, IsSuch isSuch) const
    {
        size_t misses = 0;
        for (const QByteArrayView field : column) {
            if (!isSuch(field) && ++misses + enough() > size())
                return false;
        }
        return size() >= enough();
    }

private:
    const FileSample& m_sample;
    QByteArray m_separator;
    size_t m_first; ///< in the sample
};

/// Gives the columns of a body from the left to the right. There is always a next one: beyond the
/// lines' ends its fields are empty.
class ColumnReader final
{
public:
    /// The body must outlive it.
    explicit ColumnReader(const SampleBody& body);

    Column next();

private:
    QByteArrayView nextField(size_t index);

    const SampleBody& m_body;
    std::vector<qsizetype> m_begins; ///< of each line's next field; -1 behind the last one
};

} // namespace tadata
