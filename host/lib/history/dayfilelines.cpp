#include <vexdesk/history/dayfilelines.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstring>

namespace vexdesk {

namespace {

bool areAscii(const char* begin, const char* end)
{
    constexpr quint64 highBits = 0x8080808080808080U;
    for (; end - begin >= qsizetype(sizeof(quint64)); begin += sizeof(quint64)) {
        quint64 word = 0;
        std::memcpy(&word, begin, sizeof word);
        if (word & highBits)
            return false;
    }
    return std::all_of(begin, end, [](char c) { return static_cast<signed char>(c) >= 0; });
}

// To open a pipe is to wait for somebody who writes into it.
bool openForReading(QFile& file, QIODevice::OpenMode mode)
{
    return QFileInfo(file.fileName()).isFile() && file.open(QIODevice::ReadOnly | mode);
}

} // namespace

std::optional<QByteArray> plainDayFile(const QString& path)
{
    QFile file(path);
    if (!openForReading(file, QIODevice::Unbuffered))
        return std::nullopt;
    QByteArray text(file.size(), Qt::Uninitialized);
    if (text.isEmpty() || file.read(text.data(), text.size()) != text.size() ||
        text.contains('\r') || !areAscii(text.constBegin(), text.constEnd()))
        return std::nullopt;
    return text;
}

DayFileLines::DayFileLines(const QString& path, qsizetype blockSize)
    : m_file(path)
    , m_blockSize(blockSize)
{}

bool DayFileLines::open()
{
    return openForReading(m_file, QIODevice::NotOpen);
}

bool DayFileLines::next(QByteArrayView* line)
{
    QString text;
    if (!next(line, &text))
        return false;
    if (m_usesStream) {
        m_line = text.toUtf8();
        *line = m_line;
    }
    return true;
}

bool DayFileLines::next(QByteArrayView* ascii, QString* text)
{
    if (!m_usesStream) {
        const bool found = nextOfBlocks(ascii);
        ++m_given;
        if (!m_usesStream)
            return found;
    }
    if (m_stream.atEnd())
        return false;
    // A mark alone is a line too, an empty one.
    if (!m_stream.readLineInto(text))
        text->clear();
    return true;
}

bool DayFileLines::nextOfBlocks(QByteArrayView* line)
{
    const void* lineEnd = nullptr;
    while (!(lineEnd = std::memchr(m_buffer.constData() + m_searched, '\n',
                                   static_cast<size_t>(m_buffer.size() - m_searched)))) {
        m_searched = m_buffer.size();
        if (!readBlock())
            break;
        if (!areAscii(m_buffer.constData() + m_searched, m_buffer.constData() + m_buffer.size())) {
            switchToStream();
            return false;
        }
    }

    const char* const begin = m_buffer.constData() + m_begin;
    const char* const end =
        lineEnd ? static_cast<const char*>(lineEnd) : m_buffer.constData() + m_buffer.size();
    if (!lineEnd && begin == end)
        return false;
    *line = QByteArrayView(begin, end);
    // A carriage return before the line end, or before the end of the file, is a part of it.
    if (line->endsWith('\r'))
        line->chop(1);
    m_begin = end - m_buffer.constData() + (lineEnd ? 1 : 0);
    m_searched = m_begin;
    return true;
}

// False when there is no more to read.
bool DayFileLines::readBlock()
{
    m_buffer.remove(0, m_begin);
    m_searched -= m_begin;
    m_begin = 0;
    const qsizetype kept = m_buffer.size();
    // Grows by more than that where a line is longer than a block: it is not copied for every
    // block.
    m_buffer.resize(kept + m_blockSize);
    const qint64 count = m_file.read(m_buffer.data() + kept, m_buffer.size() - kept);
    m_buffer.resize(kept + std::max(qint64(0), count));
    return count > 0;
}

void DayFileLines::switchToStream()
{
    m_usesStream = true;
    m_buffer.clear();
    // From the start, since what the first bytes are decides how the others are read.
    m_file.seek(0);
    m_stream.setDevice(&m_file);
    for (qint64 i = 0; i < m_given; ++i)
        m_stream.readLine();
}

} // namespace vexdesk
