// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QString>
#include <QtCore/QTranslator>

namespace testsupport {

/// While it lives, every text that is asked for shows in which context: "context|text".
class MarkingTranslator final : public QTranslator
{
public:
    MarkingTranslator() { QCoreApplication::installTranslator(this); }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return QStringLiteral("%1|%2").arg(QLatin1String(context), QString::fromUtf8(source));
    }
    bool isEmpty() const override { return false; }
};

} // namespace testsupport
