// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/barseries.h"
#include "desk/chart/candles.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <map>
#include <memory>
#include <vector>

/// The bars of a stretch of a chart for other programs, also of the days that the chart has not in
/// memory. One thread at a time, any.
namespace vexdesk {

/// What is to be copied.
struct BarsStretch
{
    std::shared_ptr<const BarSeries> series; ///< as far as it is known; never null
    QString directory;                       ///< of its day files
    Timeframe timeframe = Timeframe::Minute; ///< of the candles
    double from = 0;                         ///< wall times: each candle that has a part between
    double to = 0;                           ///< them
};

/// What has become of it.
struct CopiedBars
{
    QString text;           ///< as candlesAsText() writes it
    qsizetype count = 0;    ///< of candles
    QList<QDate> missing;   ///< the days with a file whose bars could not be had
    QString firstMissing;   ///< the file of the first of them, and why it has none
    bool isTooMuch = false; ///< there are more candles than may be: nothing is written
};

/// As many lines as a spreadsheet takes.
constexpr qsizetype mostCopied = 1'000'000;

/// Goes through the days of a stretch one by one, and keeps no more of them than it must.
class BarsCopy final
{
public:
    explicit BarsCopy(BarsStretch stretch, qsizetype most = mostCopied);

    /// Whether a file has to be read, which may take long.
    bool needsFiles() const;
    int dayCount() const { return static_cast<int>(m_last - m_first); }
    /// Takes the next day; false when there is none any more.
    bool takeDay();
    /// When all days were taken.
    CopiedBars finish();

private:
    const std::vector<SeriesDay>& listed() const { return m_stretch.series->days(); }
    bool isInMemory(const SeriesDay& day) const;
    qsizetype windowBegin(qsizetype day) const;
    qsizetype windowEnd(qsizetype day) const;
    const SeriesDay& loaded(qsizetype day);
    SeriesDay read(const SeriesDay& day) const;
    void noteMissing(const SeriesDay& day);
    QString pathOf(const SeriesDay& day) const;

    BarsStretch m_stretch;
    qsizetype m_most;
    qsizetype m_first = 0; // days with which its candles may begin; the end is not included
    qsizetype m_last = 0;
    qsizetype m_next = 0;
    std::map<qsizetype, SeriesDay> m_loaded; // around the next one
    std::vector<Candle> m_candles;
    int m_decimals = 0;
    CopiedBars m_copied;
};

} // namespace vexdesk
