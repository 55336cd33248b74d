// SPDX-License-Identifier: MIT
#include "desk/chart/seriesname.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QStringList>

#include <algorithm>

namespace vexdesk {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(vexdesk::SeriesName)
};

// Of one directory of the store, and not a way out of it.
bool isName(const QString& code)
{
    return !code.isEmpty() && code != QLatin1String(".") && code != QLatin1String("..") &&
           !code.contains(u'/');
}

} // namespace

SecurityTitles::SecurityTitles()
{
    const QList<Security> securities = ReferenceData::installed().securities;
    for (const Security& security : securities)
        m_titles.insert(seriesCode({security.stockCode, security.boardCode, security.code}),
                        security.title);
}

QString SecurityTitles::titleOf(const SeriesName& series) const
{
    return m_titles.value(seriesCode(series));
}

QString seriesCode(const SeriesName& series)
{
    return series.stockCode + u'/' + series.boardCode + u'/' + series.securityName;
}

QString seriesText(const SeriesName& series)
{
    const QString text =
        Text::tr("%1 — %2 — %3").arg(series.securityName, series.boardCode, series.stockCode);
    const QString title = SecurityTitles().titleOf(series);
    return title.isEmpty() ? text : Text::tr("%1 (%2)").arg(text, title);
}

QString seriesDescription(const SeriesName& series)
{
    QStringList lines{seriesText(series)};
    for (const QString& name : {BoardDirectory::i().nameByCode(series.stockCode, series.boardCode),
                                StockDirectory::i().nameByCode(series.stockCode)}) {
        if (!name.isEmpty())
            lines.append(name);
    }
    return lines.join(u'\n');
}

bool isStored(const QString& root, const SeriesName& series)
{
    const QStringList codes{series.stockCode, series.boardCode, series.securityName};
    if (!std::all_of(codes.begin(), codes.end(), isName))
        return false;
    QDirIterator files(seriesPath(QDir(root), codes.at(0), codes.at(1), codes.at(2)), QDir::Files);
    while (files.hasNext()) {
        files.next();
        if (parseDayFileName(files.fileName()))
            return true;
    }
    return false;
}

QList<int> timeframesOfDay(const QString& root, const SeriesName& series, const QDate& day)
{
    const QDir files(
        seriesPath(QDir(root), series.stockCode, series.boardCode, series.securityName));
    QList<int> timeframes;
    for (const int timeframe : {minuteTimeframe, secondTimeframe}) {
        if (files.exists(dayFileName(day, timeframe)))
            timeframes.append(timeframe);
    }
    return timeframes;
}

} // namespace vexdesk
