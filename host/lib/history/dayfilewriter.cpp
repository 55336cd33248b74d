// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilewriter.h>

#include "systemfile.h"

#include <vexdesk/history/recordline.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <optional>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::DayFileWriter)
};

Outcome outcomeOf(const Step& step)
{
    return step.isDone() ? Outcome() : Failure{step.reason()};
}

} // namespace

class DayFileWriter::Private final
{
public:
    void passOn()
    {
        if (step.isDone()) {
            step = writeAll(file->get(), {lines.data(), size});
            if (!step.isDone())
                cutLine();
            written += size;
        }
        size = 0;
    }

    // A full disk may have taken a part of a line, which would pass for a bar of other prices.
    void cutLine() const
    {
        const qint64 taken = ::lseek(file->get(), 0, SEEK_CUR) - written;
        if (taken <= 0)
            return;
        const qsizetype end = QByteArrayView(lines.data(), taken).lastIndexOf('\n') + 1;
        // Where even that fails, the import has said that the file is not what it should be.
        static_cast<void>(::ftruncate(file->get(), written + end));
    }

    static constexpr qsizetype enough = 16384;

    QString path;
    std::optional<Descriptor> file;                 // that is open
    std::array<char, enough + maxRecordLine> lines; // that the file has not got yet
    qsizetype size = 0;                             // of these
    qint64 written = 0;                             // bytes that the file has got
    Step step = Step::done(); // whether the file has taken all that it was given
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
    return m_d->path;
}

Outcome DayFileWriter::open(const QString& path)
{
    m_d->path = path;
    m_d->step = Step::done();
    m_d->written = 0;
    // To open a pipe is to wait for somebody who reads it.
    const QFileInfo there(path);
    if (!there.isFile() && there.exists())
        return Failure{Text::tr("это не обычный файл")};
    m_d->file.emplace(::open(QFile::encodeName(path).constData(),
                             O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (m_d->file->isOpen())
        return {};
    const Step opened = Step::failed();
    m_d->file.reset();
    return outcomeOf(opened);
}

void DayFileWriter::write(const StoredBar& bar)
{
    char* const begin = m_d->lines.data();
    m_d->size = writeRecordLine(begin + m_d->size, bar) - begin;
    if (m_d->size >= Private::enough)
        m_d->passOn();
}

Outcome DayFileWriter::close()
{
    if (!m_d->file) {
        m_d->size = 0;
        return {};
    }
    m_d->passOn();
    const Step closed = m_d->file->close();
    m_d->file.reset();
    return outcomeOf(m_d->step.isDone() ? closed : m_d->step);
}

} // namespace vexdesk
