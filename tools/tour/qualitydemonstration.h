// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

/// The bars that the tour of the data's quality works on: half a year of two series of the
/// demonstration, of which one lacks days and hours. They are made up and the same on every run.
/// Any thread.
namespace vexdesk {

/// Of the series NORD/MAIN/<code>.
QStringList qualityCodes();

/// A text file of bars with a column of tickers; one line of it is no bar.
QByteArray qualityInput();

} // namespace vexdesk
