#include "editor/fieldlengths.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <bit>

namespace tadata {

namespace {

constexpr qsizetype wordSize = sizeof(quint64);
constexpr int bitsOfByte = 8;

constexpr quint64 inEachByte(quint64 byte)
{
    return byte * 0x0101010101010101U;
}

// The first of the characters is the lowest byte.
quint64 wordAt(const char* at)
{
    return qFromLittleEndian<quint64>(at);
}

// A bit for each of the eight characters that is a separator, that of the first one lowest. The
// highest bits of the bytes are gathered by a product: none of its terms meet.
quint64 separatorsIn(quint64 word)
{
    constexpr quint64 lowBits = inEachByte(0x7f);
    constexpr quint64 gather = 0x0102040810204080U;
    const quint64 rest = word ^ inEachByte(';');
    const quint64 found = ~(((rest & lowBits) + lowBits) | rest | lowBits);
    return (found >> 7) * gather >> 56;
}

constexpr char firstOfNumbers = '-';
constexpr char lastOfNumbers = ';';

// Not 0 in the highest bit of a byte, for at least one byte, when a character is none of those from
// '-' to ';', which are the digits, their point and sign, and the separator.
quint64 othersIn(quint64 word)
{
    constexpr quint64 highBits = inEachByte(0x80);
    const quint64 above = word + inEachByte(0x7f - lastOfNumbers);
    const quint64 notBelow = (word | highBits) - inEachByte(firstOfNumbers);
    return (word | above | ~notBelow) & highBits;
}

bool isOfNumbers(char character)
{
    return character >= firstOfNumbers && character <= lastOfNumbers;
}

} // namespace

FieldLengths::Line FieldLengths::add(QByteArrayView line)
{
    constexpr qsizetype bits = std::tuple_size_v<Marks> * wordSize * bitsOfByte;
    return line.size() >= wordSize && line.size() < bits ? addByMarks(line) : addByFields(line);
}

FieldLengths::Line FieldLengths::addByMarks(QByteArrayView line)
{
    constexpr qsizetype half = wordSize * bitsOfByte;
    Marks marks{};
    quint64 others = 0;
    qsizetype at = 0;
    for (; line.size() - at >= wordSize; at += wordSize) {
        const quint64 word = wordAt(line.data() + at);
        marks[at / half] |= separatorsIn(word) << at % half;
        others |= othersIn(word);
    }
    // The last word overlaps the one before.
    if (const qsizetype rest = line.size() - at; rest > 0) {
        const quint64 word = wordAt(line.end() - wordSize);
        marks[at / half] |= separatorsIn(word) >> (wordSize - rest) << at % half;
        others |= othersIn(word);
    }
    marks[line.size() / half] |= quint64(1) << line.size() % half;

    constexpr quint64 spread = 0x9e3779b97f4a7c15U;
    Marks& known = m_known[((marks[0] ^ std::rotl(marks[1], 32)) * spread) >> 56];
    if (known != marks) {
        if (!addUnknown(line, marks))
            return Line::NoRecord;
        known = marks;
    }
    return others == 0 ? Line::Numbers : Line::Text;
}

// False when it is no record line.
bool FieldLengths::addUnknown(QByteArrayView line, const Marks& marks)
{
    // The separators between the fields, and the end.
    return std::popcount(marks[0]) + std::popcount(marks[1]) == vexdesk::RecordFieldCount &&
           addByFields(line) != Line::NoRecord;
}

FieldLengths::Line FieldLengths::addByFields(QByteArrayView line)
{
    const auto fields = vexdesk::splitRecordLine(line);
    if (!fields)
        return Line::NoRecord;
    for (int field = 0; field < vexdesk::RecordFieldCount; ++field)
        m_longest[field] = std::max(m_longest[field], (*fields)[field].size());
    return std::all_of(line.begin(), line.end(), isOfNumbers) ? Line::Numbers : Line::Text;
}

} // namespace tadata
