// SPDX-License-Identifier: MIT
#include <vexdesk/history/utf8.h>

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
    // All of it, so that compilers take many characters at a time.
    uchar bits = 0;
    for (const char byte : bytes)
        bits |= static_cast<uchar>(byte);
    return bits < 0x80;
}

} // namespace vexdesk
