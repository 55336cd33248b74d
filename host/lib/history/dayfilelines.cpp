// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilelines.h>

#include "systemfile.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringConverter>
#include <QtCore/QThread>

#include <algorithm>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DayFileLines)
};

bool wasJustWritten(const QFile& file)
{
    constexpr qint64 longAgo = qint64(1000) * 1000 * 1000; // ns
    const std::optional<FileState> state = fileState(file);
    const qint64 now = QDateTime::currentMSecsSinceEpoch() * 1000 * 1000;
    return state && now - state->modified < longAgo;
}

// How many bytes a character has that begins with this one; 0 for one that begins none.
int lengthOfCharacter(uchar first)
{
    if (first < 0xc2 || first > 0xf4)
        return 0;
    return first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

// The bytes of a character that the end of the text has cut off.
qsizetype sizeOfCutCharacter(QByteArrayView text)
{
    const qsizetype most = std::min<qsizetype>(3, text.size());
    for (qsizetype size = 1; size <= most; ++size) {
        const auto byte = static_cast<uchar>(text[text.size() - size]);
        if (byte >= 0xc0)
            return size < lengthOfCharacter(byte) ? size : 0;
        if (byte < 0x80)
            break;
    }
    return 0;
}

} // namespace

class DayFileLines::Private final
{
public:
    Private(const QString& path, qint64 maxSize, qsizetype blockSize)
        : m_file(path)
        , m_maxSize(maxSize)
        , m_blockSize(blockSize)
        , m_encoder(QStringEncoder::Utf8)
    {}

    bool open();
    QString path() const { return m_file.fileName(); }
    const FileState& state() const { return m_state; }
    bool isChanged() const;
    bool isMixed() const { return m_reads > 1 && isChanged(); }
    qint64 position() const { return m_position; }
    std::optional<QByteArray> plainText();
    void beStrict() { m_isStrict = true; }
    bool next(QByteArrayView* line);
    bool nextBytes(QByteArrayView* line);
    const Outcome& outcome() const { return m_outcome; }

private:
    bool findLineEnd(const char** end);
    bool readBlock();
    qint64 readBytes(char* to, qint64 count);
    qint64 readWhatIsComing(char* to, qint64 count);
    void append(qsizetype kept);
    void beginText();
    QByteArray inUtf8(QByteArrayView bytes);
    QByteArray restOfUtf8();
    QByteArrayView withoutErrors(QByteArrayView line);

    QFile m_file;
    qint64 m_maxSize;
    qsizetype m_blockSize;
    FileState m_state;
    qint64 m_position = 0;
    qint64 m_reads = 0; // that gave something
    Outcome m_outcome;
    bool m_isAtEnd = false; // of the file
    bool m_isStrict = false;

    QByteArray m_buffer; // what was read and not yet given, and before it what was given
    qsizetype m_begin = 0;
    qsizetype m_searched = 0; // up to here there is no line end after m_begin
    bool m_isAscii = true;    // the buffer
    bool m_hasBegun = false;  // whether the first bytes, which may be a mark, were looked at
    bool m_hasGiven = false;  // a line
    std::optional<QStringDecoder> m_decoder; // of a file that is not UTF-8
    QStringEncoder m_encoder;
    QByteArray m_line; // the one that was given last, where it is no part of the buffer
};

bool DayFileLines::Private::open()
{
    // To open a pipe is to wait for somebody who writes into it.
    if (!QFileInfo(m_file.fileName()).isFile() ||
        !m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    const std::optional<FileState> state = fileState(m_file);
    if (!state)
        return false;
    m_state = *state;
    return true;
}

bool DayFileLines::Private::isChanged() const
{
    const std::optional<FileState> state = fileState(m_file);
    return !state || !state->isUnchanged(m_state);
}

std::optional<QByteArray> DayFileLines::Private::plainText()
{
    if (m_state.size == 0 || m_state.size > m_maxSize)
        return std::nullopt;
    m_buffer = QByteArray(m_state.size, Qt::Uninitialized); // no larger: it may be kept
    append(0);
    const bool isPlain = m_outcome && m_isAscii && !m_buffer.isEmpty() &&
                         !m_buffer.contains('\r') && m_position == m_state.size;
    return isPlain ? std::optional(m_buffer) : std::nullopt;
}

bool DayFileLines::Private::next(QByteArrayView* line)
{
    if (!nextBytes(line))
        return false;
    if (!m_isAscii && !isAscii(*line))
        *line = withoutErrors(*line);
    return true;
}

bool DayFileLines::Private::nextBytes(QByteArrayView* line)
{
    const char* end = nullptr;
    const bool hasEnd = findLineEnd(&end);
    const char* const begin = m_buffer.constData() + m_begin;
    // What has bytes, but none of text, has one line nevertheless: a mark alone is an empty one.
    const bool isMarkAlone = !m_hasGiven && m_position > 0;
    if (!m_outcome || (!hasEnd && begin == end && !isMarkAlone))
        return false;
    m_hasGiven = true;
    *line = QByteArrayView(begin, end);
    // A carriage return before the line end, or before the end of the file, is a part of it.
    if (line->endsWith('\r'))
        line->chop(1);
    m_begin = end - m_buffer.constData() + (hasEnd ? 1 : 0);
    m_searched = m_begin;
    return true;
}

// Where the line ends that begins at m_begin; false when that is the end of the file, or nowhere.
bool DayFileLines::Private::findLineEnd(const char** end)
{
    const void* found = nullptr;
    while (!(found = std::memchr(m_buffer.constData() + m_searched, '\n',
                                 static_cast<size_t>(m_buffer.size() - m_searched)))) {
        m_searched = m_buffer.size();
        if (m_searched - m_begin > maxLine) {
            m_outcome = Failure{Text::tr("строка длиннее 256 МБ")};
            break;
        }
        if (!readBlock())
            break;
    }
    *end = found ? static_cast<const char*>(found) : m_buffer.constData() + m_buffer.size();
    return found != nullptr;
}

// False when there is no more to read.
bool DayFileLines::Private::readBlock()
{
    if (m_isAtEnd || !m_outcome)
        return false;
    m_buffer.remove(0, m_begin);
    m_searched -= m_begin;
    m_begin = 0;
    m_isAscii = m_isAscii || isAscii(m_buffer);
    const qsizetype kept = m_buffer.size();
    // Grows by more than that where a line is longer than a block: it is not copied for every
    // block.
    m_buffer.resize(kept + m_blockSize);
    append(kept);
    return m_outcome && !m_isAtEnd;
}

// Fills the buffer behind what is kept, as far as the file goes.
void DayFileLines::Private::append(qsizetype kept)
{
    const qint64 count = readBytes(m_buffer.data() + kept, m_buffer.size() - kept);
    m_buffer.resize(kept + std::max(qint64(0), count));
    if (!m_hasBegun)
        beginText();
    else if (m_decoder)
        m_buffer = m_buffer.first(kept) + inUtf8(QByteArrayView(m_buffer).sliced(kept));
    m_isAscii = m_isAscii && isAscii(QByteArrayView(m_buffer).sliced(kept));
    // What the end of the file has cut in two is no character.
    if (m_isAtEnd && m_decoder)
        m_buffer += restOfUtf8();
    else if (m_isAtEnd && !m_isStrict)
        m_buffer.chop(sizeOfCutCharacter(m_buffer));
    m_searched = std::min(m_searched, m_buffer.size());
}

// As many as there are; fewer at the end of the file, and where an error is.
qint64 DayFileLines::Private::readBytes(char* to, qint64 count)
{
    qint64 read = m_position > m_maxSize ? 0 : m_file.read(to, count);
    if (read == 0 && count < m_buffer.size() && wasJustWritten(m_file))
        read = readWhatIsComing(to, count);
    m_position += std::max(qint64(0), read);
    m_reads += read > 0 ? 1 : 0;
    if (std::max(m_position, m_state.size) > m_maxSize)
        m_outcome = Failure{Text::tr("файл больше 1 ГБ")};
    else if (read < 0)
        m_outcome = Failure{m_file.errorString()};
    else if (read == 0 && count > 0 && m_position < m_state.size)
        m_outcome = Failure{Text::tr("файл стал короче, пока его читали")};
    m_isAtEnd = read == 0 && count > 0;
    return read;
}

// A writer beside hands over whole lines, but a file system may show the pages of what it is just
// taking in one after the other: the rest of a line that is cut there comes at once.
qint64 DayFileLines::Private::readWhatIsComing(char* to, qint64 count)
{
    constexpr int most = 5;
    constexpr unsigned long pause = 100; // microseconds
    qint64 read = 0;
    for (int i = 0; read == 0 && i < most; ++i) {
        QThread::usleep(pause);
        read = m_file.read(to, count);
    }
    return read;
}

// The first bytes say how the others are to be read.
void DayFileLines::Private::beginText()
{
    m_hasBegun = true;
    const auto encoding = QStringConverter::encodingForData(m_buffer);
    if (!encoding)
        return;
    if (*encoding == QStringConverter::Utf8) {
        constexpr qsizetype markSize = 3;
        m_buffer.remove(0, markSize);
    } else if (!m_isStrict) {
        m_decoder.emplace(*encoding);
        m_buffer = inUtf8(m_buffer);
    }
}

QByteArray DayFileLines::Private::inUtf8(QByteArrayView bytes)
{
    const QString text = (*m_decoder)(bytes);
    return m_encoder(text);
}

// The encoder holds back half a character until it has seen the next one.
QByteArray DayFileLines::Private::restOfUtf8()
{
    const QByteArray rest = m_encoder(QStringLiteral("\n"));
    return rest.chopped(1);
}

QByteArrayView DayFileLines::Private::withoutErrors(QByteArrayView line)
{
    m_line = textFromUtf8(line).toUtf8();
    return m_line;
}

DayFileLines::DayFileLines(const QString& path, qint64 maxSize, qsizetype blockSize)
    : m_d(std::make_unique<Private>(path, maxSize, blockSize))
{}

DayFileLines::~DayFileLines() = default;

bool DayFileLines::open()
{
    return m_d->open();
}

QString DayFileLines::path() const
{
    return m_d->path();
}

const FileState& DayFileLines::state() const
{
    return m_d->state();
}

bool DayFileLines::isChanged() const
{
    return m_d->isChanged();
}

bool DayFileLines::isMixed() const
{
    return m_d->isMixed();
}

qint64 DayFileLines::position() const
{
    return m_d->position();
}

std::optional<QByteArray> DayFileLines::plainText()
{
    return m_d->plainText();
}

void DayFileLines::beStrict()
{
    m_d->beStrict();
}

bool DayFileLines::next(QByteArrayView* line)
{
    return m_d->next(line);
}

bool DayFileLines::nextBytes(QByteArrayView* line)
{
    return m_d->nextBytes(line);
}

const Outcome& DayFileLines::outcome() const
{
    return m_d->outcome();
}

} // namespace vexdesk
