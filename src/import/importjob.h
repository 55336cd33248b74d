#pragma once

#include "import/importdetails.h"

#include <QtCore/QDir>

#include <functional>

class QFile;
class QTextStream;

namespace tadata {

/// Called with the percentage of the work that is done, from the thread that runs the job.
using ProgressSink = std::function<void(int percent)>;

/// Gives the directory of the series. Asked once, after the input has been opened, so that nothing
/// is made for a file that is not there.
using SeriesDir = std::function<QDir()>;

/// Imports a text file into the day files of one series.
///
/// A day file is replaced each time the input comes to its day, never appended to or merged: it
/// holds the bars of the input's last run of lines of that day, in the order of the input. An
/// import of second bars (timeframe 1) also derives minute bars into a file of their own beside
/// each day file. The first wrong line ends the import; the bars before it stay stored.
///
/// Null text on success, otherwise the message for the user. Any thread; one line is in memory at a
/// time.
QString importBars(const QString& fileName, const ImportDetails& details,
                   const SeriesDir& seriesDir, const ProgressSink& progress);

} // namespace tadata

/// Switches an output to another file: flushes the stream, closes the file and opens it under the
/// new name, with nothing left of what it held. False when it cannot be opened; the stream then
/// keeps its old device, which is closed.
bool changeOutput(QFile& file, QTextStream& stream, QString fileName);
