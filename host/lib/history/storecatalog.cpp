#include <vexdesk/history/storecatalog.h>

#include <vexdesk/history/dayfile.h>

#include <QtCore/QDirIterator>
#include <QtCore/QMap>

#include <algorithm>

namespace vexdesk {

namespace {

QStringList codes(const QString& path)
{
    QStringList names = subdirectories(path, QDir::Hidden);
    // Not the order of the locale: the list is for programs too.
    std::sort(names.begin(), names.end());
    return names;
}

void countDayFile(StoredSeries& series, const QDate& day, qint64 bytes)
{
    ++series.dayFiles;
    series.bytes += bytes;
    if (!series.firstDay.isValid() || day < series.firstDay)
        series.firstDay = day;
    if (!series.lastDay.isValid() || day > series.lastDay)
        series.lastDay = day;
}

QList<StoredSeries> listSeries(const QString& path, const StoredSeries& codes)
{
    QMap<int, StoredSeries> byTimeframe;
    QDirIterator walk(path, QDir::Files);
    while (walk.hasNext()) {
        walk.next();
        if (const auto key = parseDayFileName(walk.fileName())) {
            auto series = byTimeframe.find(key->timeframe);
            if (series == byTimeframe.end()) {
                series = byTimeframe.insert(key->timeframe, codes);
                series->timeframe = key->timeframe;
            }
            countDayFile(*series, key->day, walk.fileInfo().size());
        }
    }
    return byTimeframe.values();
}

} // namespace

QList<StoredSeries> listStore(const QDir& root)
{
    QList<StoredSeries> list;
    StoredSeries series;
    for (const QString& stock : codes(root.path())) {
        series.stockCode = stock;
        // Not QDir::filePath: a code that begins with ":" would be a path of its own to it.
        const QString stockPath = root.path() + u'/' + stock;
        for (const QString& board : codes(stockPath)) {
            series.boardCode = board;
            const QString boardPath = stockPath + u'/' + board;
            for (const QString& security : codes(boardPath)) {
                series.securityName = security;
                list += listSeries(boardPath + u'/' + security, series);
            }
        }
    }
    return list;
}

} // namespace vexdesk
