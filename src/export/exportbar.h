// SPDX-License-Identifier: MIT
#pragma once

class QTextStream;
struct BarDescription;
struct ExportDetails;

/// The steps of an export from bars of the store, or deals, to lines of a text file. The caller
/// owns the open bar and the stream; nothing is kept between calls. Any thread; errors of the
/// stream are left to the caller, and the stream must have its default number format.
///
/// Columns are TICKER, PER, DATE, TIME, OPEN, HIGH, LOW, CLOSE, VOL, VAL and OPEN_INT. They are
/// always written in this order: the line format only selects them, and names as its last one the
/// column behind which the line ends. Kept: there are files, and programs that read them, with line
/// formats of any order. A name that is none of these, such as Q_TY, writes nothing; where it is
/// the last one, all bars are on one line.

/// Folds a bar into the open one. Where the source lies after its end, writes the open bar and
/// makes the source the first of a new one; so it does when the open bar is not valid, without
/// writing it. An open bar is stamped with the end of its interval, which is a part of the interval
/// and counted from midnight; a source without a time is at midnight.
///
/// Nothing is sorted: a source that is earlier than the open bar goes into it. The timeframe must
/// be positive. Throws a QString, as decimal does, when the sum of the money does not fit.
void exportBar(const BarDescription& source, BarDescription& target, const ExportDetails& details,
               QTextStream& out);

/// Writes the line of a bar.
void writeBar(const BarDescription& bar, QTextStream& out, const ExportDetails& details);

/// Writes the names of the columns as the line format has them, known or not, each between "<" and
/// ">".
void writeHeader(QTextStream& out, const ExportDetails& details);
