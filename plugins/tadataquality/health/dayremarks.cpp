// SPDX-License-Identifier: MIT
#include "dayremarks.h"

#include "healthreport.h"

#include <vexdesk/dateformat.h>
#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <algorithm>

namespace tadata {

using vexdesk::ChartMark;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DayRemarks)
};

QString shortTime(int second)
{
    const QTime time = timeOfSecond(second);
    return time.toString(time.second() == 0 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss"));
}

// What lacks something is not whole, however little it is.
QString percent(double share)
{
    constexpr double whole = 100;
    constexpr double rounded = 99.95;
    if (share < 1 && share * whole >= rounded)
        return Text::tr("менее 100 %");
    return Text::tr("%1 %").arg(QLocale().toString(share * whole, 'f', 1));
}

// The numbers of lines, as long as they can be read.
QString linesText(const std::vector<int>& lines)
{
    constexpr size_t shown = 5;
    QStringList numbers;
    for (size_t i = 0; i < std::min(shown, lines.size()); ++i)
        numbers.append(QString::number(lines[i]));
    if (lines.size() > shown)
        numbers.append(QStringLiteral("…"));
    return numbers.join(QStringLiteral(", "));
}

class Remarks final
{
public:
    explicit Remarks(const QDate& day)
        : m_day(day)
    {}

    void add(ChartMark::Kind kind, const QString& text, const QTime& from = {},
             const QTime& to = {})
    {
        m_marks.push_back({kind, m_day, from, to, text});
    }
    void addCount(ChartMark::Kind kind, const QString& text, qint64 count)
    {
        if (count > 0)
            add(kind, text.arg(count));
    }
    void addGaps(const DayHealth& day, int timeframe, bool areQuiet)
    {
        for (const Gap& gap : day.gaps) {
            if (gap.isQuiet != areQuiet)
                continue;
            const QString text = areQuiet ? Text::tr("Нет баров с %1 по %2 (%3), как и у соседей")
                                          : Text::tr("Нет баров с %1 по %2 (%3)");
            // A bar is stamped with the end of its interval.
            add(areQuiet ? ChartMark::Kind::Note : ChartMark::Kind::Warning,
                text.arg(shortTime(gap.from), shortTime(gap.to)).arg(gap.bars),
                timeOfSecond(std::max(0, gap.from - timeframe)), timeOfSecond(gap.to));
        }
    }
    void addJumps(const DayHealth& day, int timeframe)
    {
        for (const int second : day.jumps)
            add(ChartMark::Kind::Warning, Text::tr("Скачок цены в %1").arg(shortTime(second)),
                timeOfSecond(std::max(0, second - timeframe)), timeOfSecond(second));
    }
    std::vector<ChartMark> take() { return std::move(m_marks); }

private:
    QDate m_day;
    std::vector<ChartMark> m_marks;
};

void addStored(Remarks& remarks, const DayHealth& day, int timeframe)
{
    using Kind = ChartMark::Kind;
    if (!day.badLines.empty())
        remarks.add(Kind::Fault,
                    Text::tr("Не записи баров: строки %1").arg(linesText(day.badLines)));
    remarks.addCount(Kind::Fault, Text::tr("Невозможных цен: %1"), day.prices);
    remarks.addCount(Kind::Fault, Text::tr("Повторов времени: %1"), day.duplicates);
    remarks.addGaps(day, timeframe, false);
    remarks.addJumps(day, timeframe);
    remarks.addCount(Kind::Note, Text::tr("Строк не по порядку: %1"), day.outOfOrder);
    remarks.addCount(Kind::Note, Text::tr("Слишком больших объёмов: %1"), day.volume);
    remarks.addCount(Kind::Note, Text::tr("Правленых строк: %1"), day.edited);
    remarks.addGaps(day, timeframe, true);
}

bool isIn(const QList<QDate>& days, const QDate& day)
{
    return std::binary_search(days.begin(), days.end(), day);
}

} // namespace

std::vector<ChartMark> remarksOn(const SeriesDigest& digest, const QDate& day)
{
    Remarks remarks(day);
    if (isIn(digest.missingDays, day))
        remarks.add(ChartMark::Kind::Warning, Text::tr("Нет файла дня, а у соседей он есть"));
    else if (isIn(digest.unproven, day))
        remarks.add(ChartMark::Kind::Note, Text::tr("Нет файла дня, сравнить не с чем"));
    else if (isIn(digest.closed, day))
        remarks.add(ChartMark::Kind::Note, Text::tr("Нет файла дня ни у одной серии: закрыто"));
    if (const DayHealth* const stored = digest.remarks(day))
        addStored(remarks, *stored, digest.timeframe);
    return remarks.take();
}

QString coverageText(const SeriesDigest& digest)
{
    if (!digest.coverage.isEmpty())
        return percent(digest.share);
    return digest.timeframe == vexdesk::minuteTimeframe ? Text::tr("мало данных")
                                                        : Text::tr("не оценивается");
}

QString storedInWords(const DayMark& mark, int timeframe)
{
    if (mark.expected > 0)
        return Text::tr("баров: %L1, обычно %L2, покрытие %3")
            .arg(mark.bars)
            .arg(mark.expected)
            .arg(percent(mark.share()));
    const QString text = timeframe == vexdesk::minuteTimeframe
                             ? Text::tr("баров: %L1, для оценки покрытия мало данных")
                             : Text::tr("баров: %L1");
    return text.arg(mark.bars);
}

QString timeframeText(int timeframe)
{
    return timeframe == vexdesk::minuteTimeframe ? Text::tr("минуты") : Text::tr("секунды");
}

QString dayInWords(const SeriesDigest& digest, const QDate& day)
{
    QStringList words{vexdesk::shownDate(day)};
    if (const DayMark* const mark = digest.mark(day))
        words.append(storedInWords(*mark, digest.timeframe));
    const std::vector<ChartMark> remarks = remarksOn(digest, day);
    for (const ChartMark& remark : remarks)
        words.append(remark.text);
    if (words.size() == 1)
        words.append(Text::tr("ничего не хранится"));
    return words.join(QStringLiteral("; "));
}

} // namespace tadata
