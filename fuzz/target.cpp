// SPDX-License-Identifier: MIT
#include "target.h"

#include <QtCore/QStringEncoder>

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "Property violated: %s\n", property);
    std::abort();
}

QByteArray inUtf8(const QString& text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    return encoder(text);
}

InputFile::InputFile(const std::uint8_t* data, std::size_t size)
{
    const bool isWritten =
        m_file.open() &&
        m_file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) >= 0 &&
        m_file.flush();
    require(isWritten, "the input can be written");
}

} // namespace fuzz
