// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>

/// Made-up bars of a series for the measurements of the chart.
struct ChartStore
{
    int days = 250; ///< Mondays to Fridays
    int barsPerDay = 520;
    int timeframe = 60;    ///< in seconds; the first bar ends so long after ten o'clock
    bool hasMoney = false; ///< money and open interest, too
};

/// Writes the day files; false where one cannot be written. The same bytes everywhere.
bool makeChartStore(const QString& directory, const ChartStore& store);

QDate firstChartDay();
