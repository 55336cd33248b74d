// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>

#include <QtCore/QStringView>
#include <QtCore/QVarLengthArray>

#include <algorithm>

namespace tadata {

/// Lines of a text file while they are put together: they go to the stream as one text. Numbers are
/// written as a text stream writes them by default. One thread at a time.
class TextLines final
{
public:
    void clear() { m_size = 0; }

    void append(QChar character)
    {
        *room(1) = character.unicode();
        ++m_size;
    }

    void append(QStringView text)
    {
        char16_t* to = room(text.size());
        // Separators, dates and tickers are too short for a call.
        constexpr qsizetype longText = 16;
        if (text.size() > longText)
            std::copy_n(text.utf16(), text.size(), to);
        else
            for (const char16_t* from = text.utf16(); from != text.utf16() + text.size(); ++from)
                *to++ = *from;
        m_size += text.size();
    }

    void append(const decimal& number) { m_size += number.toText(room(decimal::maxTextSize)); }

    void append(qint64 number)
    {
        constexpr int maxSize = 20;
        char16_t* const end = room(maxSize) + maxSize;
        char16_t* at = end;
        quint64 rest = number < 0 ? 0 - static_cast<quint64>(number) : static_cast<quint64>(number);
        do {
            *--at = static_cast<char16_t>(u'0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        if (number < 0)
            *--at = u'-';
        // To where the text begins; most numbers have one digit.
        for (char16_t* to = end - maxSize; at != end; ++to, ++at, ++m_size)
            *to = *at;
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
