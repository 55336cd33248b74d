// SPDX-License-Identifier: MIT
#include "healthtext.h"

#include "healthreport.h"
#include "healthsums.h"
#include "output.h"

#include <vexdesk/history/dayfilenames.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace tadata::cli {

namespace {

const QString& listSeparator()
{
    static const QString separator = QStringLiteral(", ");
    return separator;
}

QString nameOf(const SeriesHealth& health)
{
    return QStringLiteral("%1 %2").arg(escaped(health.series)).arg(health.timeframe);
}

QString shortTime(int second)
{
    return timeOfSecond(second).toString(QStringLiteral("hh:mm:ss"));
}

// The first few of a list, which may have any length.
template <typename Values, typename ToText>
QString firstOf(const Values& values, ToText toText)
{
    constexpr size_t shown = 5;
    QStringList texts;
    for (size_t i = 0; i < std::min(shown, values.size()); ++i)
        texts.append(toText(values[i]));
    if (values.size() > shown)
        texts.append(QStringLiteral("…"));
    return texts.join(listSeparator());
}

QStringList remarksOn(const SeriesHealth& health)
{
    const HealthSums sums = sumsOf(health);
    QStringList remarks;
    const auto add = [&remarks](const QString& text, qint64 count) {
        if (count > 0)
            remarks.append(text.arg(count));
    };
    if (sums.gaps > 0)
        remarks.append(Text::tr("разрывов: %1 (баров: %2)").arg(sums.gaps).arg(sums.gapBars));
    add(Text::tr("пропущенных дней: %1"), health.missingDays.size());
    add(Text::tr("ошибочных строк: %1"), sums.badLines);
    add(Text::tr("повторов времени: %1"), sums.duplicates);
    add(Text::tr("невозможных цен: %1"), sums.prices);
    add(Text::tr("скачков: %1"), sums.jumps);
    add(Text::tr("строк не по порядку: %1"), sums.outOfOrder);
    add(Text::tr("слишком больших объёмов: %1"), sums.volume);
    add(Text::tr("правленых строк: %1"), sums.edited);
    add(Text::tr("тихих разрывов: %1"), sums.quiet);
    add(Text::tr("закрытых дней: %1"), health.closed.size());
    add(Text::tr("дней под вопросом: %1"), health.unproven.size());
    return remarks;
}

qint64 daysWithoutUsualTimes(const SeriesHealth& health)
{
    return std::count_if(health.days.begin(), health.days.end(),
                         [](const DayHealth& day) { return day.expected == 0; });
}

// Where nothing is expected, a full coverage says nothing.
bool hasNoUsualTimes(const SeriesHealth& health)
{
    return daysWithoutUsualTimes(health) == static_cast<qint64>(health.days.size());
}

QString limitsOf(const SeriesHealth& health)
{
    if (health.timeframe != vexdesk::minuteTimeframe)
        return Text::tr("разрывы ищутся только в минутных барах");
    if (hasNoUsualTimes(health))
        return Text::tr("обычных времён нет: разрывов не найти");
    const qint64 unusual = daysWithoutUsualTimes(health);
    return unusual > 0 ? Text::tr("дней без обычных времён: %1").arg(unusual) : QString();
}

QString gapText(const Gap& gap)
{
    return Text::tr("с %1 по %2 (баров: %3)")
        .arg(shortTime(gap.from), shortTime(gap.to))
        .arg(gap.bars);
}

// What is wrong on a day, and where.
QStringList faultsOf(const DayHealth& day)
{
    QStringList faults;
    std::vector<Gap> gaps = day.gaps;
    std::erase_if(gaps, [](const Gap& gap) { return gap.isQuiet; });
    if (!gaps.empty())
        faults.append(Text::tr("нет баров %1").arg(firstOf(gaps, gapText)));
    if (!day.badLines.empty())
        faults.append(
            Text::tr("не записи баров — строки %1").arg(firstOf(day.badLines, [](int line) {
                return QString::number(line);
            })));
    if (day.duplicates > 0)
        faults.append(Text::tr("повторов времени: %1").arg(day.duplicates));
    if (day.prices > 0)
        faults.append(Text::tr("невозможных цен: %1").arg(day.prices));
    if (!day.jumps.empty())
        faults.append(Text::tr("скачки в %1").arg(firstOf(day.jumps, shortTime)));
    return faults;
}

qint64 weightOf(const DayHealth& day)
{
    qint64 weight =
        static_cast<qint64>(day.badLines.size() + day.jumps.size()) + day.duplicates + day.prices;
    for (const Gap& gap : day.gaps)
        weight += gap.isQuiet ? 0 : gap.bars;
    return weight;
}

// From the least to the most; the last one is for a day that lacks nothing.
QString stepsOf(bool inAscii)
{
    return inAscii ? QStringLiteral(".:-=+*#@") : QStringLiteral("▁▂▃▄▅▆▇█");
}

QChar markOf(const SeriesHealth& health, const QDate& date, bool inAscii)
{
    const auto day = std::find_if(health.days.begin(), health.days.end(),
                                  [&date](const DayHealth& one) { return one.day == date; });
    if (day != health.days.end()) {
        const QString steps = stepsOf(inAscii);
        return day->expected == 0
                   ? QChar(u'~')
                   : steps[(day->expected - day->lacking()) * (steps.size() - 1) / day->expected];
    }
    if (health.missingDays.contains(date))
        return u'!';
    if (health.closed.contains(date))
        return u'x';
    return health.unproven.contains(date) ? u'?' : u' ';
}

QString knownCoverageOf(const SeriesHealth& health)
{
    const bool isKnown = !hasNoUsualTimes(health) || !health.missingDays.empty();
    return isKnown ? coverageOf(health) : Text::tr("неизвестно");
}

} // namespace

QString seriesLine(const SeriesHealth& health)
{
    if (!health.first.isValid())
        return Text::tr("%1: ничего не хранится").arg(nameOf(health));
    QStringList remarks = remarksOn(health);
    if (remarks.isEmpty())
        remarks.append(Text::tr("замечаний нет"));
    if (const QString limits = limitsOf(health); !limits.isEmpty())
        remarks.append(limits);
    return Text::tr("%1: покрытие %2, с %3 по %4, баров: %5; %6")
        .arg(nameOf(health), knownCoverageOf(health), health.first.toString(Qt::ISODate),
             health.last.toString(Qt::ISODate), QString::number(health.bars()),
             remarks.join(listSeparator()));
}

void WorstDays::add(const SeriesHealth& health)
{
    const auto line = [&health](const QDate& day, const QString& fault) {
        return QStringLiteral("%1 %2: %3").arg(nameOf(health), day.toString(Qt::ISODate), fault);
    };
    for (const QDate& day : health.missingDays)
        add({std::numeric_limits<qint64>::max(), line(day, Text::tr("нет файла дня"))});
    for (const DayHealth& day : health.days) {
        if (day.isWrong())
            add({weightOf(day), line(day.day, faultsOf(day).join(QStringLiteral("; ")))});
    }
}

void WorstDays::add(Day day)
{
    constexpr size_t shown = 20;
    ++m_count;
    // Equal ones stay in the order in which they came.
    const auto place =
        std::upper_bound(m_days.begin(), m_days.end(), day, [](const Day& left, const Day& right) {
            return left.weight > right.weight;
        });
    m_days.insert(place, std::move(day));
    if (m_days.size() > shown)
        m_days.pop_back();
}

QStringList WorstDays::lines() const
{
    QStringList lines;
    for (const Day& day : m_days)
        lines.append(day.text);
    const qint64 more = m_count - static_cast<qint64>(m_days.size());
    if (more > 0)
        lines.append(Text::tr("И ещё дней: %1; все — с --json").arg(more));
    return lines;
}

QString monthCalendar(const SeriesHealth& health, const QDate& month, bool inAscii)
{
    constexpr int daysOfWeek = 7;
    constexpr qsizetype cell = 4;
    QString text = QStringLiteral("%1, %2\n%3\n")
                       .arg(nameOf(health), month.toString(QStringLiteral("yyyy-MM")),
                            Text::tr(" Пн  Вт  Ср  Чт  Пт  Сб  Вс"));
    QString week(cell * (month.dayOfWeek() - 1), u' ');
    for (QDate date = month; date.month() == month.month(); date = date.addDays(1)) {
        week += QStringLiteral("%1%2 ").arg(date.day(), 2).arg(markOf(health, date, inAscii));
        if (date.dayOfWeek() == daysOfWeek || date.day() == month.daysInMonth()) {
            while (week.endsWith(u' '))
                week.chop(1);
            text += std::exchange(week, {}) + u'\n';
        }
    }
    return text;
}

QString calendarLegend(bool inAscii)
{
    return Text::tr("%1 — покрытие дня от меньшего к полному; ~ — бары есть, обычных времён нет; "
                    "! — пропущенный день, x — закрытый, ? — под вопросом")
        .arg(stepsOf(inAscii));
}

} // namespace tadata::cli
