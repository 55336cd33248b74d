// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QString>
#include <QtCore/QStringConverter>

namespace testsupport {

/// Whether the bytes, which are UTF-8 where no mark says otherwise, end before the last of a
/// character's. A text stream passes over the bytes of it.
inline bool endsInsideACharacter(QByteArrayView bytes)
{
    const auto encoding = QStringConverter::encodingForData(bytes);
    if (encoding.value_or(QStringConverter::Utf8) != QStringConverter::Utf8)
        return false;
    QStringDecoder decoder(QStringConverter::Utf8);
    const QString text = decoder(bytes);
    const QString next = decoder(QByteArrayView("x"));
    return next != u"x";
}

} // namespace testsupport
