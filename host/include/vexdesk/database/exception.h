// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QException>
#include <QtCore/QString>

/// What the in-memory database throws. A future carries it whole from a pool thread to the one
/// that takes the result.
class VEXDESK_CORE_EXPORT Exception final : public QException
{
public:
    explicit Exception(const QString& message);
    ~Exception() override;

    QString message() const { return m_message; }
    /// The message in UTF-8; lives as long as the object.
    const char* what() const noexcept override;

    void raise() const override;
    Exception* clone() const override;

private:
    QString m_message;
    QByteArray m_utf8;
};
