// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/decimal.h>

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QTime>

class QTextStream;
struct ImportDetails;

/// One price bar. It is stamped with the date and time at which its interval ends.
/// A plain value; every field may be used from any thread that owns the object.
struct BarDescription
{
    bool valid = false; ///< whether the bar holds data
    QString error;      ///< why init() refused the line; in the user's language
    QDate date;
    QTime time;
    decimal open;
    decimal high;
    decimal low;
    decimal close;
    qint64 volume = 0; ///< in pieces (lots)
    decimal value;     ///< in money
    qint32 openInterest = 0;

    /// Reads one line of an external text file into this bar, which must be a fresh one. False
    /// when the line is wrong: `error` then says what is wrong with it, and fields that were read
    /// before keep what was read. Throws nothing; any thread. Defined with the import.
    bool init(const QString& line, const ImportDetails& details);
};

/// Writes one record line of a day file: time, open, high, low, close, volume, value and open
/// interest, separated by ";" and ended by "\n". The date is the file's and is not written.
QTextStream& operator<<(QTextStream& stream, const BarDescription& bar);
