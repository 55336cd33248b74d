// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QTime>

#include <optional>

/// Reads the fields of imported lines: what Qt's own functions read, and to the same
/// values. A field of exactly the form that its pattern describes, as all of a correct file are, is
/// read digit by digit; every other one goes to Qt. Any thread; locale plays no part.
namespace tadata {

/// As QDate::fromString reads it, except that a year of two digits is one of this century.
/// An invalid date for a text that is none.
QDate readDate(QStringView text, const QString& pattern);

/// As QTime::fromString reads it.
QTime readTime(QStringView text, const QString& pattern);

/// As QStringView::toLongLong and toInt read them; no value for what they refuse.
std::optional<qint64> readInteger(QStringView text);
std::optional<qint32> readSmallInteger(QStringView text);

} // namespace tadata
