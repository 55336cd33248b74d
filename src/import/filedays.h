// SPDX-License-Identifier: MIT
#pragma once

#include "barsorter.h"
#include "dayofbars.h"
#include "filebars.h"

#include <vexdesk/outcome.h>

#include <QtCore/QDate>
#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <atomic>
#include <vector>

namespace tadata {

/// The days that a file has bars of, one after the other, whatever the order of its lines: series
/// by series in the order in which they come in the file, of each ascending. The file is read
/// twice. Its first reading puts aside, sorted, what comes after a bar of a later day; the second
/// takes the others as they stand. One day is in memory at a time. One thread at a time.
class FileDays final
{
public:
    /// A day of a series, as a number that orders them.
    using Key = qint64;

    explicit FileDays(const QStringList& tickers);

    /// A bar of the first reading, line after line; its numbers may have been left.
    vexdesk::Outcome add(FileBars& file, FileLine* line);
    /// When all are added: all days, ascending.
    std::vector<Key> keys() const;
    /// The number of the first line of a day.
    qint64 firstLine(Key key) const { return m_firstLines.value(key); }
    static int seriesOf(Key key);
    static QDate dayOf(Key key);

    /// Begins to give the days, from a file that is open and is read for this; what is in it
    /// already has been added. May be called again.
    vexdesk::Outcome begin(FileBars* file, const std::atomic<bool>* stop);
    /// Takes the next day; false at the end, and where reading failed.
    bool next();
    Key key() const { return m_key; }
    const FileDay& day() const { return m_day; }
    const vexdesk::Outcome& outcome() const { return m_outcome; }

private:
    Key keyOf(const FileLine& line);
    void readAhead();
    void takeInOrder();
    void takeSorted();

    QHash<QString, int> m_series; ///< by ticker
    bool m_hasMany;
    QString m_ticker; ///< of many, the one that came last, and its series
    int m_tickerSeries = 0;
    QHash<Key, qint64> m_firstLines;
    BarSorter m_sorter;
    FileDay m_line; ///< for a bar that is put aside

    FileBars* m_file = nullptr;
    const std::atomic<bool>* m_stop = nullptr;
    FileLine m_ahead; ///< the next line that stands in order
    bool m_hasAhead = false;
    Key m_aheadKey = -1; ///< the largest that was read
    Key m_key = -1;
    FileDay m_day;
    vexdesk::Outcome m_outcome;
};

} // namespace tadata
