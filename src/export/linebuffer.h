// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>
#include <vexdesk/history/digits.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <charconv>

namespace tadata {

/// Lines of a text file, in UTF-8, while they are put together. One thread at a time.
class LineBuffer final
{
public:
    void clear() { m_size = 0; }

    void append(char character)
    {
        *room(1) = character;
        ++m_size;
    }

    void append(QByteArrayView text)
    {
        if (text.size() == 1)
            return append(text.front());
        std::copy(text.begin(), text.end(), room(text.size()));
        m_size += text.size();
    }

    void append(const decimal& number) { m_size += number.toText(room(decimal::maxTextSize)); }

    void append(qint64 number)
    {
        constexpr qsizetype maxSize = 20;
        char* const begin = room(maxSize);
        m_size += std::to_chars(begin, begin + maxSize, number).ptr - begin;
    }

    /// Two digits, the first of which may be 0; for numbers from 0 to 99.
    void appendTwoDigits(int number)
    {
        vexdesk::writeTwoDigits(room(2), number);
        m_size += 2;
    }

    QByteArrayView bytes() const { return QByteArrayView(m_buffer.data(), m_size); }

private:
    char* room(qsizetype size)
    {
        if (m_buffer.size() - m_size < size)
            m_buffer.resize(2 * (m_size + size));
        return m_buffer.data() + m_size;
    }

    static constexpr qsizetype usualSize = 1024;

    QVarLengthArray<char, usualSize> m_buffer = QVarLengthArray<char, usualSize>(usualSize);
    qsizetype m_size = 0;
};

} // namespace tadata
