// SPDX-License-Identifier: MIT
#include <vexdesk/history/utf8.h>

#include <algorithm>

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
    // Stretch by stretch, each to its end so that compilers take many bytes at a time.
    constexpr qsizetype stretch = 1024;
    while (!bytes.isEmpty()) {
        const qsizetype length = std::min(stretch, bytes.size());
        uchar bits = 0;
        for (const char byte : bytes.first(length))
            bits |= static_cast<uchar>(byte);
        if (bits >= 0x80)
            return false;
        bytes = bytes.sliced(length);
    }
    return true;
}

} // namespace vexdesk
