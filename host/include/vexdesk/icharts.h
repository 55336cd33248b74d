// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QTime>

#include <functional>

/// The terminal's charts as a plug-in sees them: ICore::charts() has them. User-interface thread
/// only, both the calls and the answers.
namespace vexdesk {

/// A series of the store, by the codes of which its directories are named.
struct SeriesName
{
    QString stockCode;
    QString boardCode;
    QString securityName;

    bool operator==(const SeriesName&) const = default;
};

/// What a plug-in has to say of a day of a series, or of a stretch of it.
struct ChartMark
{
    enum class Kind {
        Note,    ///< something to know
        Warning, ///< something is missing or strange
        Fault,   ///< something is wrong
    };

    Kind kind = Kind::Note;
    QDate day;
    QTime from;   ///< not valid: all of the day; else the stretch (from, to] of its wall clock
    QTime to;     ///< as bars are stamped: midnight is the one that ends the day
    QString text; ///< a short sentence, which is read out with the bar

    bool operator==(const ChartMark&) const = default;
};

/// Whoever knows something of stored bars that a chart should show beside them.
class IChartMarks
{
public:
    virtual ~IChartMarks() = default;

    /// The marks of the days from `first` to `last`, both included, that are known now, in any
    /// order. The chart asks while it is drawn and keeps the answer until marksChanged(): answer
    /// from memory at once, find out what is not known yet elsewhere, and say then that the marks
    /// have changed. What is thrown counts as no marks.
    virtual QList<ChartMark> marks(const SeriesName& series, const QDate& first,
                                   const QDate& last) = 0;
};

/// What came of showing a moment of a series.
enum class ChartShown {
    Moment,   ///< it is under the crosshair
    NoDay,    ///< nothing is stored of the day: the chart stands where it would be
    NoSeries, ///< nothing is stored of the series: no chart is shown
};

/// All charts of the terminal.
class ICharts
{
public:
    virtual ~ICharts() = default;

    /// Opens a chart of the series or brings the one that there is to the front, and the terminal's
    /// window with it, with this moment of the wall clock in its middle and under its crosshair;
    /// without a valid time the day, without a valid day the chart as it stands. The chart keeps
    /// its timeframe, unless the day is stored for others only. Where something is not stored the
    /// terminal says so.
    /// The store is looked at in another thread, so that nobody waits for a disk: what came of it
    /// is told, if `told` is not empty, in a later turn of the event loop. It is not told where
    /// something else is to be shown meanwhile, nor to a plug-in whose tini() has begun.
    virtual void show(const SeriesName& series, const QDate& day, const QTime& time,
                      const std::function<void(ChartShown)>& told) = 0;

    /// Asks for marks from now on. The object stays its maker's, who takes it out before it goes:
    /// in tini() at the latest. A second time is passed over, as is one that is not there.
    virtual void addMarks(IChartMarks* marks) = 0;
    virtual void removeMarks(IChartMarks* marks) = 0;
    /// Asks anew for what is in view of the series.
    virtual void marksChanged(const SeriesName& series) = 0;
};

} // namespace vexdesk
