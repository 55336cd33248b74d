// SPDX-License-Identifier: MIT
#include "windows1251.h"

namespace tadata {

namespace {

constexpr uchar firstOther = 0x80;   // below are the characters of ASCII
constexpr uchar firstRussian = 0xc0; // from here on the Russian alphabet but for one letter

constexpr char16_t others[firstRussian - firstOther + 1] =
    u"\u0402\u0403\u201a\u0453\u201e\u2026\u2020\u2021\u20ac\u2030\u0409\u2039\u040a\u040c\u040b"
    u"\u040f\u0452\u2018\u2019\u201c\u201d\u2022\u2013\u2014\ufffd\u2122\u0459\u203a\u045a\u045c"
    u"\u045b\u045f\u00a0\u040e\u045e\u0408\u00a4\u0490\u00a6\u00a7\u0401\u00a9\u0404\u00ab\u00ac"
    u"\u00ad\u00ae\u0407\u00b0\u00b1\u0406\u0456\u0491\u00b5\u00b6\u00b7\u0451\u2116\u0454\u00bb"
    u"\u0458\u0405\u0455\u0457";

char16_t characterOf(uchar byte)
{
    if (byte < firstOther)
        return byte;
    return byte < firstRussian ? others[byte - firstOther]
                               : static_cast<char16_t>(u'\u0410' + (byte - firstRussian));
}

} // namespace

QString textFromWindows1251(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += QChar(characterOf(static_cast<uchar>(byte)));
    return text;
}

} // namespace tadata
