// SPDX-License-Identifier: MIT
#include "healthmarks.h"

#include "dayremarks.h"
#include "seriesday.h"

#include <vexdesk/history/dayfilenames.h>

using tadata::SeriesDigest;
using tadata::SharedDigest;
using vexdesk::ChartMark;

namespace {

// What is only to be known is for the window of the health.
void addRemarks(const SeriesDigest& digest, const QDate& day, QList<ChartMark>& marks)
{
    const std::vector<ChartMark> remarks = tadata::remarksOn(digest, day);
    for (const ChartMark& remark : remarks) {
        if (remark.kind != ChartMark::Kind::Note)
            marks.append(remark);
    }
}

} // namespace

HealthMarks::HealthMarks(tadata::HealthBook* book, vexdesk::ICharts* charts)
    : m_book(book)
    , m_charts(charts)
{
    connect(book, &tadata::HealthBook::changed, this, &HealthMarks::tell);
    charts->addMarks(this);
}

HealthMarks::~HealthMarks()
{
    m_charts->removeMarks(this);
}

QList<ChartMark> HealthMarks::marks(const vexdesk::SeriesName& series, const QDate& first,
                                    const QDate& last)
{
    const QString path = tadata::pathOf(series);
    m_asked.insert(path);
    m_book->followBoard(series.stockCode + u'/' + series.boardCode);
    SharedDigest digest = m_book->digest(path, vexdesk::minuteTimeframe);
    if (!digest)
        digest = m_book->digest(path, vexdesk::secondTimeframe);
    if (!digest)
        return {};
    QList<ChartMark> marks;
    for (const QDate& day : digest->missingDays) {
        if (day >= first && day <= last)
            addRemarks(*digest, day, marks);
    }
    for (const tadata::DayHealth& day : digest->remarkable) {
        if (day.day >= first && day.day <= last)
            addRemarks(*digest, day.day, marks);
    }
    return marks;
}

void HealthMarks::tell(const QStringList& boards)
{
    for (const QString& path : std::as_const(m_asked)) {
        if (boards.contains(path.section(u'/', 0, 1)))
            m_charts->marksChanged(tadata::seriesNamed(path));
    }
}
