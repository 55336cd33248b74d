// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/history/recordline.h>

#include <QtCore/QByteArrayView>

#include <array>

namespace vexdesk {

/// Looks at lines of day files while they are loaded: tells which are record lines, and keeps how
/// long each field is at most. It costs hardly more than to count the separators. A plain value;
/// one thread at a time.
class VEXDESK_HISTORY_EXPORT FieldLengths final
{
public:
    enum class Line {
        NoRecord, ///< not what splitRecordLine() takes
        Numbers,  ///< of the characters "-./0123456789:" alone, none of them wider than a digit
        Text      ///< of other characters too
    };

    Line add(QByteArrayView line);

    /// Of all record lines so far, in bytes.
    qsizetype longest(RecordField field) const { return m_longest[field]; }

private:
    // A bit for each separator of a line and for its end: lines that are alike in this have fields
    // of the same lengths.
    using Marks = std::array<quint64, 2>;

    template <typename Characters>
    Line addByMarks(QByteArrayView line);
    Line addByFields(QByteArrayView line);
    bool addUnknown(QByteArrayView line, const Marks& marks);

    std::array<Marks, 256> m_known{}; ///< of record lines, by a hash
    std::array<qsizetype, RecordFieldCount> m_longest{};
};

} // namespace vexdesk
