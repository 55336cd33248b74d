// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QTranslator>

namespace testsupport {

/// Turns every text into one that shows in which context it was asked for: "context|text".
class MarkingTranslator final : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QStringLiteral("%1|%2").arg(QLatin1String(context), QString::fromUtf8(source));
    }
    bool isEmpty() const override { return false; }
};

} // namespace testsupport
