// SPDX-License-Identifier: MIT
#include <vexdesk/database/exception.h>

Exception::Exception(const QString& message)
    : m_message(message)
    , m_utf8(message.toUtf8())
{}

Exception::~Exception() = default;

const char* Exception::what() const noexcept
{
    return m_utf8.constData();
}

void Exception::raise() const
{
    throw *this;
}

Exception* Exception::clone() const
{
    return new Exception(*this);
}
