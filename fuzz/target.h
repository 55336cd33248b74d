// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryFile>

#include <cstddef>
#include <cstdint>

/// What a fuzz target is, for the fuzzer's main() and for the replay's: one call for one input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Ends the process, with the property's name on standard error, when a property does not hold.
void require(bool holds, const char* property);

/// Half a character, which a file in UTF-16 may have, becomes a replacement character, as it does
/// where such a file is read: QString's own function makes it a question mark.
QByteArray inUtf8(const QString& text);

/// A file of an input's bytes, for as long as it lives.
class InputFile final
{
public:
    InputFile(const std::uint8_t* data, std::size_t size);
    QString path() const { return m_file.fileName(); }

private:
    QTemporaryFile m_file;
};

} // namespace fuzz
