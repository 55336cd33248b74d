// SPDX-License-Identifier: MIT
#include "filecomparison.h"

#include "importfailures.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstring>
#include <utility>

namespace tadata {

using vexdesk::Outcome;
using vexdesk::Result;

Outcome FileComparison::open(const QString& path)
{
    m_file.close();
    m_file.setFileName(path);
    m_outcome = Outcome();
    m_begin = m_end = 0;
    // To open a pipe is to wait for somebody who writes into it.
    m_isSame = QFileInfo(path).isFile() && m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    return m_isSame ? Outcome() : cannotOpen(path);
}

void FileComparison::compare(const vexdesk::StoredBar& bar)
{
    const qsizetype size = vexdesk::writeRecordLine(m_line.data(), bar) - m_line.data();
    if (m_end - m_begin < size)
        read();
    m_isSame = m_end - m_begin >= size && std::memcmp(m_line.data(), m_stored.data() + m_begin,
                                                      static_cast<size_t>(size)) == 0;
    m_begin += size;
}

// Fills the block; it has fewer bytes only at the end.
void FileComparison::read()
{
    std::copy(m_stored.data() + m_begin, m_stored.data() + m_end, m_stored.data());
    m_end -= std::exchange(m_begin, 0);
    while (m_end < blockSize) {
        const qint64 more = m_file.read(m_stored.data() + m_end, blockSize - m_end);
        if (more < 0)
            m_outcome = cannotRead(m_file.fileName(), m_file.errorString());
        if (more <= 0)
            break;
        m_end += more;
    }
}

Result<bool> FileComparison::close()
{
    if (m_isSame && m_begin == m_end)
        read();
    const bool isSame = m_isSame && m_begin == m_end;
    m_file.close();
    m_isSame = false;
    if (!m_outcome)
        return m_outcome.failure();
    return isSame;
}

} // namespace tadata
