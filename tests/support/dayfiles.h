// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QTime>

/// Contents for day files. No two of their bars are alike as long as their numbers are not.
namespace testsupport {

/// The record line of a bar, with its line end, as an import writes it.
QByteArray barLine(const QTime& time, int number);

/// The same bar as the editor writes it: the value before the volume.
QByteArray editedBarLine(const QTime& time, int number);

/// Bars one minute after the other, numbered from `number`.
QByteArray barLines(const QTime& first, int count, int number = 1);
QByteArray editedBarLines(const QTime& first, int count, int number = 1);

/// "20181214_60.iss"
QString dayFile(const QDate& day, int timeframe = 60);

} // namespace testsupport
