// SPDX-License-Identifier: MIT
#include <vexdesk/history/fieldlengths.h>

#include <QtCore/QtEndian>

#include <algorithm>
#include <bit>

#ifdef __SSE2__
#    include <emmintrin.h>
#endif

namespace vexdesk {

namespace {

constexpr qsizetype wordSize = sizeof(quint64);
constexpr int bitsOfMark = 64;

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
constexpr char lastOfNumbers = ';'; // which is the separator

// Not 0 in the highest bit of a byte, for at least one byte, when a character is none of those from
// '-' to ';', which are the digits, their point and sign, and the separator.
quint64 othersIn(quint64 word)
{
    constexpr quint64 highBits = inEachByte(0x80);
    const quint64 above = word + inEachByte(0x7f - lastOfNumbers);
    const quint64 notBelow = (word | highBits) - inEachByte(firstOfNumbers);
    return (word | above | ~notBelow) & highBits;
}

// Looks at the characters of a line eight at a time.
class Eight final
{
public:
    static constexpr qsizetype size = wordSize;

    quint64 separators(const char* at)
    {
        const quint64 word = wordAt(at);
        m_others |= othersIn(word);
        return separatorsIn(word);
    }
    bool hasOthers() const { return m_others != 0; }

private:
    quint64 m_others = 0;
};

#ifdef __SSE2__
// The same, sixteen at a time.
class Sixteen final
{
public:
    static constexpr qsizetype size = sizeof(__m128i);

    quint64 separators(const char* at)
    {
        const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        m_highest = _mm_max_epu8(m_highest, _mm_sub_epi8(text, _mm_set1_epi8(firstOfNumbers)));
        return static_cast<quint64>(
            _mm_movemask_epi8(_mm_cmpeq_epi8(text, _mm_set1_epi8(lastOfNumbers))));
    }
    bool hasOthers() const
    {
        const __m128i most = _mm_set1_epi8(lastOfNumbers - firstOfNumbers);
        constexpr int all = 0xffff;
        return _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(m_highest, most), most)) != all;
    }

private:
    __m128i m_highest = _mm_setzero_si128(); ///< counted from the first that is of numbers
};
#else
using Sixteen = Eight;
#endif

bool isOfNumbers(char character)
{
    return character >= firstOfNumbers && character <= lastOfNumbers;
}

} // namespace

FieldLengths::Line FieldLengths::add(QByteArrayView line)
{
    constexpr qsizetype most = std::tuple_size_v<Marks> * bitsOfMark;
    if (line.size() < Eight::size || line.size() >= most)
        return addByFields(line);
    return line.size() < Sixteen::size ? addByMarks<Eight>(line) : addByMarks<Sixteen>(line);
}

template <typename Characters>
FieldLengths::Line FieldLengths::addByMarks(QByteArrayView line)
{
    const char* const end = line.end();
    const char* at = line.begin();
    Characters characters;
    Marks marks{};
    for (quint64& mark : marks) {
        // Not into the array each time: that would wait for the time before.
        quint64 gathered = 0;
        for (int bit = 0; bit < bitsOfMark && end - at >= Characters::size;
             at += Characters::size, bit += Characters::size)
            gathered |= characters.separators(at) << bit;
        mark = gathered;
    }
    // The last ones overlap those before.
    if (const qsizetype rest = end - at; rest > 0) {
        const qsizetype bit = at - line.begin();
        marks[bit / bitsOfMark] |= characters.separators(end - Characters::size) >>
                                   (Characters::size - rest) << bit % bitsOfMark;
    }
    marks[line.size() / bitsOfMark] |= quint64(1) << line.size() % bitsOfMark;

    constexpr quint64 spread = 0x9e3779b97f4a7c15U;
    Marks& known = m_known[((marks[0] ^ std::rotl(marks[1], 32)) * spread) >> 56];
    if (known != marks) {
        if (!addUnknown(line, marks))
            return Line::NoRecord;
        known = marks;
    }
    return characters.hasOthers() ? Line::Text : Line::Numbers;
}

// False when it is no record line.
bool FieldLengths::addUnknown(QByteArrayView line, const Marks& marks)
{
    // The separators between the fields, and the end.
    return std::popcount(marks[0]) + std::popcount(marks[1]) == RecordFieldCount &&
           addByFields(line) != Line::NoRecord;
}

FieldLengths::Line FieldLengths::addByFields(QByteArrayView line)
{
    const auto fields = splitRecordLine(line);
    if (!fields)
        return Line::NoRecord;
    for (int field = 0; field < RecordFieldCount; ++field)
        m_longest[field] = std::max(m_longest[field], (*fields)[field].size());
    return std::all_of(line.begin(), line.end(), isOfNumbers) ? Line::Numbers : Line::Text;
}

} // namespace vexdesk
