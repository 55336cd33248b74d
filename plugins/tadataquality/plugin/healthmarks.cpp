// SPDX-License-Identifier: MIT
#include "healthmarks.h"

#include "dayremarks.h"
#include "seriesday.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QCoreApplication>

using tadata::SeriesDigest;
using tadata::SharedDigest;
using vexdesk::ChartMark;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(HealthMarks)
};

// What is only to be known is for the window of the health.
void addRemarks(const SeriesDigest& digest, const QDate& day, QList<ChartMark>& marks)
{
    const std::vector<ChartMark> remarks = tadata::remarksOn(digest, day);
    for (const ChartMark& remark : remarks) {
        if (remark.kind != ChartMark::Kind::Note)
            marks.append(remark);
    }
}

void addDays(const SeriesDigest& digest, const QDate& first, const QDate& last,
             QList<ChartMark>& marks)
{
    for (const QDate& day : digest.missingDays) {
        if (day >= first && day <= last)
            addRemarks(digest, day, marks);
    }
    for (const tadata::DayHealth& day : digest.remarkable) {
        if (day.day >= first && day.day <= last)
            addRemarks(digest, day.day, marks);
    }
}

QString whyNothingIsKnown(const tadata::UnreadDay& day)
{
    return Text::tr("%1. Пока этот день не прочитан, другие дни серии не проверены")
        .arg(day.problem);
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
    QList<ChartMark> marks;
    const QList<tadata::UnreadDay> unread = m_book->unreadDays(path);
    for (const tadata::UnreadDay& day : unread) {
        if (day.day >= first && day.day <= last)
            marks.append({ChartMark::Kind::Fault, day.day, {}, {}, whyNothingIsKnown(day)});
    }
    const SharedDigest minutes = m_book->digest(path, vexdesk::minuteTimeframe);
    const SharedDigest seconds = m_book->digest(path, vexdesk::secondTimeframe);
    if (minutes)
        addDays(*minutes, first, last, marks);
    if (seconds && !minutes) {
        addDays(*seconds, first, last, marks);
    } else if (seconds) {
        // Seconds are kept for some days, and minutes may begin before them: nothing lacks there.
        QList<ChartMark> ofSeconds;
        addDays(*seconds, first, last, ofSeconds);
        for (ChartMark& mark : ofSeconds) {
            mark.text = Text::tr("Секунды: %1").arg(mark.text);
            if (mark.kind == ChartMark::Kind::Fault)
                marks.append(mark);
        }
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
