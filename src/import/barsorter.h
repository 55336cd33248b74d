// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QTemporaryFile>

#include <memory>
#include <optional>
#include <vector>

namespace tadata {

/// Sorts the bars of a file by their days, however many there are: what does not fit into a few
/// megabytes goes sorted into a temporary file, part by part, and the parts are merged as they are
/// read back. Bars of one day come in the order in which they were added. The directory of
/// temporary files needs the room of the bars as a day file has them. One thread at a time.
class BarSorter final
{
public:
    /// A bar's record line of an import, without its line end.
    struct Bar
    {
        qint64 day = 0; ///< what is sorted by
        int second = 0; ///< since midnight
        QByteArrayView line;
    };

    BarSorter();
    ~BarSorter();
    Q_DISABLE_COPY_MOVE(BarSorter)

    vexdesk::Outcome add(const Bar& bar);

    /// Begins to give the bars from the first one on; none can be added any more. May be called
    /// again.
    vexdesk::Outcome begin();
    /// The bar that is to be given; null when there is none. Valid until the next call.
    const Bar* current() const;
    /// Goes on to the next bar.
    vexdesk::Outcome advance();

private:
    class Part;
    struct Entry
    {
        qint64 day = 0;
        int second = 0;
        qsizetype begin = 0;
        qsizetype size = 0;
    };

    void sortEntries();
    vexdesk::Outcome spill();
    vexdesk::Outcome makeFile();
    vexdesk::Outcome beginParts();
    bool isLater(size_t left, size_t right) const;
    void showEntry();

    std::vector<Entry> m_entries; ///< in memory
    QByteArray m_text;
    size_t m_next = 0; ///< of the entries, where all of them are in memory
    Bar m_current;
    bool m_hasCurrent = false;

    std::unique_ptr<QTemporaryFile> m_file;
    std::vector<qint64> m_ends; ///< of the parts in the file
    std::vector<std::unique_ptr<Part>> m_parts;
    std::vector<size_t> m_heap; ///< parts that have a bar, the one with the earliest on top
};

} // namespace tadata
