// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/icharts.h>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMetaType>

/// How the series of the store are called where the user sees them. Any thread.
namespace vexdesk {

/// "NORD/MAIN/VEGA", as it stands in settings. No code holds the stroke.
QString seriesCode(const SeriesName& series);
/// "VEGA — MAIN — NORD", with the security's title behind it where the reference data have one.
QString seriesText(const SeriesName& series);
/// seriesText and, on lines of their own, the names of board and venue.
QString seriesDescription(const SeriesName& series);
/// Whether the store has bars of the series: looks for a first file in one directory.
bool isStored(const QString& root, const SeriesName& series);
/// The timeframes, in seconds, of the files that it has for the day of a series that is stored.
QList<int> timeframesOfDay(const QString& root, const SeriesName& series, const QDate& day);

/// The titles of all securities of the reference data, to ask for many of them.
class SecurityTitles final
{
public:
    SecurityTitles();

    /// Empty for a security that the reference data do not know.
    QString titleOf(const SeriesName& series) const;

private:
    QHash<QString, QString> m_titles;
};

} // namespace vexdesk

Q_DECLARE_METATYPE(vexdesk::SeriesName)
