// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilewriter.h>

#include <vexdesk/history/recordline.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <array>

namespace vexdesk {

class DayFileWriter::Private final
{
public:
    void passOn()
    {
        isWhole = isWhole && file.write(lines.data(), size) == size;
        size = 0;
    }

    static constexpr qsizetype enough = 16384;

    QFile file;
    std::array<char, enough + maxRecordLine> lines; // that the file has not got yet
    qsizetype size = 0;                             // of these
    bool isWhole = true; // whether the file has taken all that it was given
};

DayFileWriter::DayFileWriter()
    : m_d(std::make_unique<Private>())
{}

DayFileWriter::~DayFileWriter()
{
    static_cast<void>(close());
}

QString DayFileWriter::path() const
{
    return m_d->file.fileName();
}

bool DayFileWriter::open(const QString& path)
{
    m_d->file.setFileName(path);
    m_d->isWhole = true;
    // To open a pipe is to wait for somebody who reads it.
    const QFileInfo there(path);
    const bool isFile = there.isFile() || !there.exists();
    const auto mode = QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered;
    return isFile && m_d->file.open(mode);
}

void DayFileWriter::write(const StoredBar& bar)
{
    char* const begin = m_d->lines.data();
    m_d->size = writeRecordLine(begin + m_d->size, bar) - begin;
    if (m_d->size >= Private::enough)
        m_d->passOn();
}

bool DayFileWriter::close()
{
    if (!m_d->file.isOpen()) {
        m_d->size = 0;
        return true;
    }
    m_d->passOn();
    m_d->file.close();
    return m_d->isWhole && m_d->file.error() == QFileDevice::NoError;
}

} // namespace vexdesk
