// SPDX-License-Identifier: MIT
#pragma once

#include "healthdigest.h"

#include <vexdesk/icharts.h>

#include <vector>

/// What there is to tell of a day of a series, in words. Any thread.
namespace tadata {

/// The remarks on a day, what is wrong first, each as a chart shows it.
std::vector<vexdesk::ChartMark> remarksOn(const SeriesDigest& digest, const QDate& day);

/// One sentence of a day: its date, what is stored of it, and its remarks.
QString dayInWords(const SeriesDigest& digest, const QDate& day);

/// "98,3 %", or that too little is stored to say, or that the coverage of such bars is not judged.
QString coverageText(const SeriesDigest& digest);
/// How many bars a stored day has, how many are usual and what they cover, or that too little is
/// stored to say.
QString storedInWords(const DayMark& mark, int timeframe);

/// "минуты" or "секунды".
QString timeframeText(int timeframe);

} // namespace tadata
