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

    /// Of how many lines something may be untrue that holds: at least 95 %, rounded up, are left.
    size_t allowedMisses() const { return size() - (95 * size() + 99) / 100; }
    /// So many lines from the first on tell soon of most columns that something does not hold.
    size_t probeSize() const { return std::min(size(), 2 * allowedMisses() + 2); }
    /// Whether this line and the one before stand in different places of the file.
    bool beginsHalf(size_t index) const { return m_first + index == m_sample.secondHalf; }

    /// The number of fields that holds; 0 where none does, or fewer than are asked for.
    qsizetype fieldCount(qsizetype fewest) const;

    /// Whether enough fields of a column are what is asked for; of a column that begins one,
    /// whether they still may be.
    template <typename IsSuch>
    bool holds(const Column& column, IsSuch isSuch) const
    {
        size_t misses = 0;
        return std::all_of(column.begin(), column.end(), [&](QByteArrayView field) {
            return isSuch(field) || ++misses <= allowedMisses();
        });
    }

private:
    const FileSample& m_sample;
    QByteArray m_separator;
    size_t m_first; ///< in the sample
};

/// Gives the columns of a body from the left to the right. Beyond the lines' ends the fields are
/// empty.
class ColumnReader final
{
public:
    /// The body must outlive it. Reads only so many lines from the first on.
    ColumnReader(const SampleBody& body, size_t lines);
    explicit ColumnReader(const SampleBody& body)
        : ColumnReader(body, body.size())
    {}

    /// The first column that was neither read nor passed over.
    int next() const { return m_next; }
    /// The column of this index, from next() on.
    Column column(int index);

private:
    QByteArrayView nextField(size_t index);

    const SampleBody* m_body;
    int m_next = 0;                  ///< column
    std::vector<qsizetype> m_begins; ///< of each line's next field; -1 behind the last one
};

} // namespace tadata
