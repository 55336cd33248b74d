// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "linebuffer.h"
#include "localdays.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include <functional>
#include <optional>
#include <utility>

struct ExportDetails;

namespace tadata {

/// Takes whole lines of the output, in UTF-8.
using LineSink = std::function<void(QByteArrayView lines)>;

/// What exportBar and writeBar do, for a long row of bars: the line format is taken apart once, the
/// text of a date is made once for all bars of the day, and the sink gets many lines at a time.
/// The settings must outlive it. One thread at a time.
class BarExporter final
{
public:
    BarExporter(const ExportDetails& details, LineSink sink);
    ~BarExporter() { finish(); }
    Q_DISABLE_COPY_MOVE(BarExporter)

    void exportBar(const BarDescription& source, BarDescription& target);
    /// With ExportDetails::finishedOnly the line waits for the next one, which may take its place.
    void writeBar(const BarDescription& bar);

    /// Gives the sink the lines that it has not got yet, but for one that waits.
    void flush();
    /// That one too: no other line comes behind it.
    void finish();

private:
    enum class Column { Ticker, Per, Date, Time, Open, High, Low, Close, Vol, Val, OpenInt };
    struct NamedColumn
    {
        const char* name;
        Column column;
    };
    static const NamedColumn namedColumns[];

    void appendLine(const BarDescription& bar);
    bool liesAfter(const BarDescription& source, const BarDescription& target);
    void appendColumns(qsizetype from, qsizetype to, const BarDescription& bar, LineBuffer& text);
    void append(Column column, const BarDescription& bar, LineBuffer& text);
    void appendDate(const QDate& date, LineBuffer& text);
    void appendTime(const QTime& time, LineBuffer& text) const;

    const ExportDetails& m_details;
    LineSink m_sink;
    QByteArray m_ticker;
    QByteArray m_separator;
    QList<Column> m_columns;     ///< those that are written, in their order
    qsizetype m_last = -1;       ///< the place in m_columns after which the line ends; -1 for none
    qsizetype m_firstNumber = 0; ///< the place of the first one after the time
    bool m_isPlainTime;          ///< the time's pattern has nothing in it but hh, mm, ss and signs
    LocalDays m_days;
    LineBuffer m_lines;                               ///< those that the sink has not got yet
    std::optional<std::pair<QDate, QTime>> m_stamped; ///< what m_stamp was made for
    LineBuffer m_stamp;                               ///< the columns up to the time
    QDate m_date; ///< the date that was written last, and its text
    QByteArray m_dateText;
    std::optional<BarDescription> m_waiting; ///< the bar of the line that waits
};

} // namespace tadata
