// SPDX-License-Identifier: MIT
#include <vexdesk/history/utf8.h>

#include <algorithm>
#include <cstring>

namespace vexdesk {

QString textFromUtf8(QByteArrayView bytes)
{
    constexpr QByteArrayView mark("\xef\xbb\xbf");
    qsizetype marks = 0;
    for (; bytes.startsWith(mark); bytes = bytes.sliced(mark.size()))
        ++marks;
    // The first of them would be dropped.
    return marks == 0 ? QString::fromUtf8(bytes)
                      : QString(marks, QChar(QChar::ByteOrderMark)) + QString::fromUtf8(bytes);
}

bool isAscii(QByteArrayView bytes)
{
    constexpr quint64 highBits = 0x8080808080808080U;
    const char* begin = bytes.begin();
    for (; bytes.end() - begin >= qsizetype(sizeof(quint64)); begin += sizeof(quint64)) {
        quint64 word = 0;
        std::memcpy(&word, begin, sizeof word);
        if (word & highBits)
            return false;
    }
    return std::all_of(begin, bytes.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

} // namespace vexdesk
