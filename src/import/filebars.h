// SPDX-License-Identifier: MIT
#pragma once

#include "bardescription.h"
#include "fileclock.h"
#include "importdetails.h"
#include "importseries.h"
#include "plainlineparser.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/outcome.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <optional>

namespace tadata {

/// A line of a file that is imported. Reused from line to line: a fresh one is only the first.
struct FileLine
{
    qint64 number = 0;        ///< from 1, the header included
    QByteArrayView text = {}; ///< in UTF-8, without its line end; valid until the next line
    bool isBlank = false;     ///< a bad line of nothing but space, tab, VT, FF and CR
    BarDescription bar = {};  ///< what it says, after the clock; not valid for a bad line
    QDate writtenDate = {};   ///< of the bar as the file has it, before the clock
    QString ticker = {};      ///< of a bar where the details have a column for it
    bool hasNumbers = true;   ///< of a bar; see FileBars::leaveNumbers()

    bool isBad() const { return !bar.valid; }
    /// What is wrong with a bad line.
    const QString& error() const { return bar.error; }
};

/// Whether a ticker can name the directory of a series. Any thread.
bool isDirectoryName(const QString& code);

/// The bars of a file that is imported, line after line, as every way of importing and what says
/// beforehand how that will go see them. A line is bad where the parser refuses it, where its
/// ticker cannot name a directory, and where its time is one that the file's clock skips.
///
/// Whoever has come to the end asks outcome(): what could not be read to its end was not read. One
/// thread at a time; one line is in memory at a time.
class FileBars final
{
public:
    /// Without `describe` all tickers have the decimals of the details' series.
    FileBars(const QString& path, const ImportDetails& details, const FileClock& clock = {},
             SeriesOfTicker describe = {});
    Q_DISABLE_COPY_MOVE(FileBars)

    /// False for a file that is missing or cannot be opened, and for pipes and devices.
    [[nodiscard]] bool open() { return m_lines.open(); }
    QString path() const { return m_lines.path(); }
    /// What the file was when it was opened.
    const vexdesk::FileState& state() const { return m_lines.state(); }
    /// Whether the file is no longer what it was then.
    bool isChanged() const { return m_lines.isChanged(); }
    /// Whether it has changed between two of the reads.
    bool isMixed() const { return m_lines.isMixed(); }

    /// From now on the prices and amounts of a bar are left where it is plain that there are some.
    void leaveNumbers() { m_leavesNumbers = true; }
    /// Reads those of the bar that came last.
    void readNumbers(FileLine* line);

    /// Takes the next line after the header; false at the end, and where reading failed.
    bool next(FileLine* line);

    /// How many lines were taken, the header included: at the end, all that the file has.
    qint64 lineCount() const { return m_number; }
    /// How much of the file has been read, as progress shows it.
    int percentDone() const;
    /// Whether nothing has failed so far. The message is a whole one, with the file's name.
    vexdesk::Outcome outcome() const;

private:
    void skipHeader();
    void parse(FileLine* line);
    bool parsePlainly(FileLine* line);
    void parseSlowly(FileLine* line);
    void parseOfTicker(FileLine* line);
    bool takeTicker(QByteArrayView code);
    void changeClock(FileLine* line);

    vexdesk::DayFileLines m_lines;
    ImportDetails m_details; ///< of the ticker that came last, where there are some
    SeriesOfTicker m_describe;
    PlainLineParser m_parser;
    std::optional<ClockChange> m_clock; ///< where it changes anything
    bool m_hasTicker;
    bool m_leavesNumbers = false;
    qint64 m_number = 0;
    QByteArray m_tickerCode; ///< the ticker that came last, and what it was found to be
    QString m_ticker;
    bool m_isTickerName = false;
};

} // namespace tadata
