// SPDX-License-Identifier: MIT
#include "barsorter.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

#include <algorithm>
#include <cstring>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Outcome;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BarSorter)
};

// Of the lines in memory, and of what is read ahead of all parts together.
constexpr qsizetype enough = qsizetype(4) * 1024 * 1024;

// What stands before a line in the file.
struct Head
{
    qint64 day = 0;
    qint32 second = 0;
    qint32 size = 0;
};

Failure failed(const QTemporaryFile& file)
{
    return {Text::tr("Временный файл для сортировки в %1: %2")
                .arg(QDir::tempPath(), file.errorString())};
}

// Qt knows no directory where the one that was asked for is not there.
Failure noDirectory()
{
    return {Text::tr("Временный файл для сортировки в %1: нет такого каталога")
                .arg(qEnvironmentVariable("TMPDIR"))};
}

} // namespace

// One sorted part of the file, as it is read.
class BarSorter::Part final
{
public:
    Part(QTemporaryFile& file, qint64 begin, qint64 end, qsizetype blockSize)
        : m_file(file)
        , m_position(begin)
        , m_end(end)
        , m_blockSize(blockSize)
    {}

    const Bar& bar() const { return m_bar; }
    bool isAtEnd() const { return m_isAtEnd; }

    Outcome advance()
    {
        Head head;
        m_isAtEnd = m_position == m_end && m_begin == m_buffer.size();
        if (m_isAtEnd)
            return {};
        if (Outcome there = require(sizeof head); !there)
            return there;
        std::memcpy(&head, m_buffer.constData() + m_begin, sizeof head);
        m_begin += sizeof head;
        if (Outcome there = require(head.size); !there)
            return there;
        m_bar = {head.day, head.second, QByteArrayView(m_buffer).sliced(m_begin, head.size)};
        m_begin += head.size;
        return {};
    }

private:
    // So many bytes in the buffer.
    Outcome require(qsizetype size)
    {
        if (m_buffer.size() - m_begin >= size)
            return {};
        m_buffer.remove(0, m_begin);
        m_begin = 0;
        const qsizetype kept = m_buffer.size();
        const qint64 wanted = std::min<qint64>(std::max(size, m_blockSize), m_end - m_position);
        m_buffer.resize(kept + wanted);
        if (!m_file.seek(m_position) || m_file.read(m_buffer.data() + kept, wanted) != wanted)
            return failed(m_file);
        m_position += wanted;
        return {};
    }

    QTemporaryFile& m_file;
    qint64 m_position; ///< in the file, behind the buffer
    qint64 m_end;
    qsizetype m_blockSize;
    QByteArray m_buffer;
    qsizetype m_begin = 0; ///< of what was not given yet
    Bar m_bar;
    bool m_isAtEnd = false;
};

BarSorter::BarSorter() = default;
BarSorter::~BarSorter() = default;

Outcome BarSorter::add(const Bar& bar)
{
    m_entries.push_back({bar.day, bar.second, m_text.size(), bar.line.size()});
    m_text += bar.line;
    return m_text.size() < enough ? Outcome() : spill();
}

void BarSorter::sortEntries()
{
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry& left, const Entry& right) { return left.day < right.day; });
}

Outcome BarSorter::spill()
{
    sortEntries();
    QByteArray part;
    part.reserve(m_text.size() +
                 static_cast<qsizetype>(m_entries.size()) * qsizetype(sizeof(Head)));
    for (const Entry& entry : m_entries) {
        const Head head{entry.day, entry.second, static_cast<qint32>(entry.size)};
        part.append(reinterpret_cast<const char*>(&head), sizeof head);
        part.append(m_text.constData() + entry.begin, entry.size);
    }
    m_entries.clear();
    m_text.resize(0);
    if (Outcome made = makeFile(); !made)
        return made;
    const qint64 begin = m_ends.empty() ? 0 : m_ends.back();
    if (m_file->write(part) != part.size() || !m_file->flush())
        return failed(*m_file);
    m_ends.push_back(begin + part.size());
    return {};
}

Outcome BarSorter::makeFile()
{
    if (m_file)
        return {};
    const QString directory = QDir::tempPath();
    if (directory.isEmpty())
        return noDirectory();
    m_file = std::make_unique<QTemporaryFile>(directory + QStringLiteral("/tadata-sort-XXXXXX"));
    return m_file->open() ? Outcome() : failed(*m_file);
}

Outcome BarSorter::begin()
{
    if (m_file)
        return beginParts();
    sortEntries();
    m_next = 0;
    showEntry();
    return {};
}

Outcome BarSorter::beginParts()
{
    if (!m_entries.empty()) {
        if (Outcome spilled = spill(); !spilled)
            return spilled;
    }
    constexpr qsizetype least = 4096;
    const qsizetype blockSize = std::max(least, enough / static_cast<qsizetype>(m_ends.size()));
    m_parts.clear();
    m_heap.clear();
    qint64 begin = 0;
    for (const qint64 end : m_ends) {
        m_parts.push_back(std::make_unique<Part>(*m_file, begin, end, blockSize));
        if (Outcome first = m_parts.back()->advance(); !first)
            return first;
        m_heap.push_back(m_parts.size() - 1);
        begin = end;
    }
    const auto order = [this](size_t left, size_t right) { return isLater(left, right); };
    std::make_heap(m_heap.begin(), m_heap.end(), order);
    return {};
}

// Parts are numbered in the order in which their bars were added.
bool BarSorter::isLater(size_t left, size_t right) const
{
    const qint64 leftDay = m_parts[left]->bar().day;
    const qint64 rightDay = m_parts[right]->bar().day;
    return leftDay != rightDay ? leftDay > rightDay : left > right;
}

void BarSorter::showEntry()
{
    m_hasCurrent = m_next < m_entries.size();
    if (!m_hasCurrent)
        return;
    const Entry& entry = m_entries[m_next];
    m_current = {entry.day, entry.second, QByteArrayView(m_text).sliced(entry.begin, entry.size)};
}

const BarSorter::Bar* BarSorter::current() const
{
    if (m_file)
        return m_heap.empty() ? nullptr : &m_parts[m_heap.front()]->bar();
    return m_hasCurrent ? &m_current : nullptr;
}

Outcome BarSorter::advance()
{
    if (!m_file) {
        ++m_next;
        showEntry();
        return {};
    }
    const auto order = [this](size_t left, size_t right) { return isLater(left, right); };
    std::pop_heap(m_heap.begin(), m_heap.end(), order);
    Part& part = *m_parts[m_heap.back()];
    if (Outcome advanced = part.advance(); !advanced)
        return advanced;
    if (part.isAtEnd())
        m_heap.pop_back();
    else
        std::push_heap(m_heap.begin(), m_heap.end(), order);
    return {};
}

} // namespace tadata
