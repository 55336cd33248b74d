// SPDX-License-Identifier: MIT
#include "filecomparison.h"

#include "importfailures.h"

#include <QtCore/QFileInfo>

#include <cstring>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

Outcome FileComparison::open(const QString& path)
{
    m_file.close();
    m_file.setFileName(path);
    m_outcome = Outcome();
    m_size = 0;
    // To open a pipe is to wait for somebody who writes into it.
    m_isSame = QFileInfo(path).isFile() && m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return m_isSame ? Outcome() : cannotOpen(path);
}

void FileComparison::append(const vexdesk::StoredBar& bar)
{
    char* const begin = m_lines.data();
    m_size = vexdesk::writeRecordLine(begin + m_size, bar) - begin;
    if (m_size >= enough)
        compare();
}

void FileComparison::compare()
{
    const qint64 count = read(m_size);
    m_isSame = count == m_size &&
               std::memcmp(m_lines.data(), m_stored.data(), static_cast<size_t>(m_size)) == 0;
    m_size = 0;
}

// As many bytes as there are; fewer only at the end.
qint64 FileComparison::read(qint64 count)
{
    qint64 have = 0;
    while (have < count) {
        const qint64 more = m_file.read(m_stored.data() + have, count - have);
        if (more < 0)
            m_outcome = cannotRead(m_file.fileName(), m_file.errorString());
        if (more <= 0)
            break;
        have += more;
    }
    return have;
}

Result<bool> FileComparison::close()
{
    if (m_isSame && m_size > 0)
        compare();
    const bool isSame = m_isSame && read(1) == 0;
    m_file.close();
    m_isSame = false;
    if (!m_outcome)
        return m_outcome.failure();
    return isSame;
}

} // namespace tadata
