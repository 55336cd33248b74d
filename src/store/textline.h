#pragma once

#include <vexdesk/decimal.h>

#include <QtCore/QStringView>
#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <charconv>

namespace tadata {

/// One line of a text file while it is put together: all of it goes to the stream at once. Numbers
/// are written as a text stream writes them by default. One thread at a time.
class TextLine final
{
public:
    void append(QChar character)
    {
        *room(1) = character.unicode();
        ++m_size;
    }

    void append(QStringView text)
    {
        std::copy_n(text.utf16(), text.size(), room(text.size()));
        m_size += text.size();
    }

    void append(const decimal& number) { m_size += number.toText(room(decimal::maxTextSize)); }

    void append(qint64 number)
    {
        constexpr int maxSize = 20;
        char digits[maxSize];
        const char* const end = std::to_chars(digits, digits + maxSize, number).ptr;
        std::copy(static_cast<const char*>(digits), end, room(maxSize));
        m_size += end - digits;
    }

    /// Two digits, the first of which may be 0; for numbers from 0 to 99.
    void appendTwoDigits(int number)
    {
        char16_t* const digits = room(2);
        digits[0] = static_cast<char16_t>(u'0' + number / 10);
        digits[1] = static_cast<char16_t>(u'0' + number % 10);
        m_size += 2;
    }

    QStringView text() const { return QStringView(m_buffer.data(), m_size); }

private:
    char16_t* room(qsizetype size)
    {
        if (m_buffer.size() - m_size < size)
            m_buffer.resize(2 * (m_size + size));
        return m_buffer.data() + m_size;
    }

    static constexpr qsizetype usualSize = 1024;

    QVarLengthArray<char16_t, usualSize> m_buffer = QVarLengthArray<char16_t, usualSize>(usualSize);
    qsizetype m_size = 0;
};

} // namespace tadata
