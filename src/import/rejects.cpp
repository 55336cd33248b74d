// SPDX-License-Identifier: MIT
#include "rejects.h"

#include "filebars.h"
#include "importfailures.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/links.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringConverter>

#include <unistd.h>

#include <algorithm>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::Result;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BadLines)
};

struct Encoding
{
    qsizetype markSize = 0;
    qsizetype unit = 1;
    bool isBigEndian = false;
};

Encoding encodingOf(const QByteArray& begin)
{
    const auto encoding = QStringConverter::encodingForData(begin);
    if (!encoding)
        return {};
    switch (*encoding) {
    case QStringConverter::Utf8:
        return {3, 1, false};
    case QStringConverter::Utf16LE:
        return {2, 2, false};
    case QStringConverter::Utf16BE:
        return {2, 2, true};
    case QStringConverter::Utf32LE:
        return {4, 4, false};
    case QStringConverter::Utf32BE:
        return {4, 4, true};
    default:
        return {};
    }
}

bool areZero(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; });
}

// What the system does not tell of a directory that is there may be so.
bool maybeSamePlace(const QString& directory, const QDir& other)
{
    const auto place = vexdesk::withoutLinks(directory);
    const auto otherPlace = vexdesk::withoutLinks(other.path());
    const bool isKnown = place && (otherPlace || vexdesk::isMissing(other.path()));
    return !isKnown || place == otherPlace ||
           QDir::cleanPath(directory) == QDir::cleanPath(other.absolutePath());
}

} // namespace

RawLines::RawLines(const QString& path)
    : m_file(path)
{}

bool RawLines::open()
{
    if (!m_file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 longestMark = 4;
    const Encoding encoding = encodingOf(m_file.peek(longestMark));
    m_mark = m_file.read(encoding.markSize);
    m_unit = encoding.unit;
    m_isBigEndian = encoding.isBigEndian;
    return true;
}

Result<QByteArray> RawLines::line(qint64 number)
{
    QByteArray line;
    for (; m_number < number; ++m_number) {
        line = nextLine();
        if (line.isEmpty())
            return m_file.error() == QFileDevice::NoError
                       ? hasChanged(path())
                       : cannotRead(path(), m_file.errorString());
    }
    return line;
}

// Empty where there is none.
QByteArray RawLines::nextLine()
{
    QByteArray line;
    for (;;) {
        const QByteArray piece = m_file.readLine();
        line += piece;
        if (piece.isEmpty() || (piece.endsWith('\n') && endsLine(&line)))
            return line;
    }
}

// Whether the byte of a line feed at the end is the character. Takes the rest of that.
bool RawLines::endsLine(QByteArray* line)
{
    const qsizetype zeros = m_unit - 1;
    const qsizetype place = (line->size() - 1) % m_unit;
    if (m_isBigEndian)
        return place == zeros && areZero(QByteArrayView(*line).chopped(1).last(zeros));
    if (place != 0)
        return false;
    const QByteArray rest = m_file.read(zeros);
    *line += rest;
    return rest.size() == zeros && areZero(rest);
}

BadLines::BadLines(const QString& input, const ImportWays& ways, bool hasHeader)
    : m_passesOver(ways.passesOverBad())
    , m_hasHeader(hasHeader)
    , m_lines(input)
    , m_rejects(ways.rejects)
{}

// Of an import that has failed, too.
BadLines::~BadLines()
{
    static_cast<void>(writeOut());
}

Outcome BadLines::take(const FileLine& line)
{
    if (!m_passesOver)
        return wrongLine(line.number, line.error());
    if (line.isBlank)
        return {};
    ++m_count;
    return m_rejects.fileName().isEmpty() ? Outcome() : reject(line.number);
}

Outcome BadLines::reject(qint64 number)
{
    if (!m_rejects.isOpen()) {
        if (Outcome begun = begin(); !begun)
            return begun;
    }
    return copyLine(number);
}

Outcome BadLines::begin()
{
    if (!m_lines.open())
        return cannotOpen(m_lines.path());
    // Without a buffer of Qt's, which does not know why a part was not written.
    if (!m_rejects.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return cannotOpen(m_rejects.fileName(), m_rejects.errorString());
    if (Outcome written = write(m_lines.mark()); !written)
        return written;
    return m_hasHeader ? copyLine(1) : Outcome();
}

Outcome BadLines::copyLine(qint64 number)
{
    const Result<QByteArray> line = m_lines.line(number);
    return line ? write(*line) : line.failure();
}

Outcome BadLines::write(const QByteArray& bytes)
{
    constexpr qsizetype enough = qsizetype(64) * 1024;
    m_unwritten += bytes;
    return m_unwritten.size() < enough ? Outcome() : writeOut();
}

Outcome BadLines::writeOut()
{
    QByteArrayView bytes = m_unwritten;
    while (!bytes.isEmpty()) {
        const qint64 taken = m_rejects.write(bytes.data(), bytes.size());
        if (taken <= 0) {
            m_unwritten.clear();
            return notWritten();
        }
        bytes = bytes.sliced(taken);
    }
    m_unwritten.clear();
    return {};
}

Failure BadLines::notWritten() const
{
    return cannotWrite(m_rejects.fileName(), m_rejects.errorString());
}

Outcome BadLines::finish()
{
    if (Outcome written = writeOut(); !written)
        return written;
    m_rejects.close();
    return m_rejects.error() == QFileDevice::NoError ? Outcome() : notWritten();
}

Outcome checkRejectsPlace(const QString& rejects, const QList<QDir>& directories)
{
    const QFileInfo file(rejects);
    if (rejects.isEmpty())
        return {};
    // Not only when the first bad line has come, and days have been replaced.
    const QByteArray place = QFile::encodeName(file.absolutePath()) + "/.";
    if (::access(place.constData(), W_OK) != 0)
        return cannotOpen(rejects, qt_error_string());
    if (!vexdesk::isBarFileName(file.fileName()))
        return {};
    const auto isThere = [&file](const QDir& dir) {
        return maybeSamePlace(file.absolutePath(), dir);
    };
    return std::none_of(directories.begin(), directories.end(), isThere)
               ? Outcome()
               : Failure{Text::tr("Файл %1 для ошибочных строк стал бы файлом дня этой же серии. "
                                  "Выберите другое место")
                             .arg(rejects)};
}

} // namespace tadata
