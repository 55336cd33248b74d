// SPDX-License-Identifier: MIT
#include "importoutlook.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>

#include <algorithm>
#include <map>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

using Outcome = CheckedDay::Outcome;

// How much there is to think about.
int weightOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Same:
        return 0;
    case Outcome::New:
        return 1;
    case Outcome::Merged:
        return 2;
    case Outcome::Replaced:
        break;
    }
    return 3;
}

Outcome worse(Outcome left, Outcome right)
{
    return weightOf(left) < weightOf(right) ? right : left;
}

using Days = std::map<QDate, OutlookDay>;

void addDay(const CheckedDay& checked, Days& days)
{
    const auto [place, isNew] = days.try_emplace(checked.day);
    OutlookDay& day = place->second;
    day.day = checked.day;
    day.outcome = isNew ? checked.outcome : worse(day.outcome, checked.outcome);
    day.bars += checked.bars;
    day.stored += checked.stored;
    day.result += checked.result;
    day.lost += checked.lost;
}

void addCheck(const SeriesOutlook& series, ImportOutlook& outlook, Days& days)
{
    const ImportCheck& check = series.check;
    outlook.bars += check.bars;
    outlook.badLines += check.badLines;
    outlook.wouldImport = outlook.wouldImport && check.wouldImport;
    if (check.stop && !outlook.stops.contains(check.stop->message))
        outlook.stops.append(check.stop->message);
    for (size_t kind = 0; kind < problemKinds; ++kind)
        outlook.problems[kind] += check.counts[kind];
    for (const CheckedDay& day : check.days) {
        ++outlook.dayCounts[static_cast<size_t>(day.outcome)];
        outlook.lost += day.lost;
        addDay(day, days);
    }
}

QString number(qint64 value)
{
    return QLocale().toString(value);
}

} // namespace

ImportOutlook outlookOf(const std::vector<FileOutlook>& files)
{
    ImportOutlook outlook;
    outlook.wouldImport = !files.empty();
    Days days;
    for (const FileOutlook& file : files) {
        if (!file.refusal.isNull()) {
            outlook.wouldImport = false;
            outlook.stops.append(file.refusal);
        }
        for (const SeriesOutlook& series : file.series)
            addCheck(series, outlook, days);
        outlook.series += static_cast<qint64>(file.series.size());
    }
    if (!outlook.wouldImport && outlook.stops.isEmpty() && !files.empty())
        outlook.stops.append(Text::tr("Ни одной строки взять нельзя: все ошибочные."));
    for (const auto& [date, day] : days)
        outlook.days.push_back(day);
    return outlook;
}

std::vector<OutlookCell> cellsOf(const std::vector<OutlookDay>& days, size_t mostCells)
{
    std::vector<OutlookCell> cells;
    const size_t count = std::min(days.size(), mostCells);
    for (size_t cell = 0; cell < count; ++cell) {
        const size_t first = cell * days.size() / count;
        const size_t last = (cell + 1) * days.size() / count - 1;
        OutlookCell one{first, last, days[first].outcome, false};
        for (size_t day = first; day <= last; ++day) {
            one.outcome = worse(one.outcome, days[day].outcome);
            one.loses = one.loses || days[day].lost > 0;
        }
        cells.push_back(one);
    }
    return cells;
}

QString titleOf(ProblemKind kind)
{
    switch (kind) {
    case ProblemKind::BadLine:
        return Text::tr("Ошибочные строки");
    case ProblemKind::DayAgain:
        return Text::tr("Файл возвращается к дню: прежние бары дня пропадут");
    case ProblemKind::OutOfOrder:
        return Text::tr("Время раньше, чем у предыдущего бара");
    case ProblemKind::Duplicate:
        return Text::tr("Бар с таким временем уже был");
    case ProblemKind::Prices:
        return Text::tr("Невозможные цены");
    case ProblemKind::Rounded:
        return Text::tr("Лишние знаки после точки будут округлены");
    case ProblemKind::Volume:
        return Text::tr("Объём больше 2147483647: графики и экспорт прочтут 0");
    case ProblemKind::Midnight:
        return Text::tr("Время 00:00:00 закрывает предыдущий день");
    case ProblemKind::Spacing:
        return Text::tr("Бары файла, похоже, другой длины");
    case ProblemKind::DateOrder:
        break;
    }
    return Text::tr("В датах, похоже, переставлены день и месяц или день и год");
}

QString titleOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::New:
        return Text::tr("новый");
    case Outcome::Same:
        return Text::tr("без изменений");
    case Outcome::Replaced:
        return Text::tr("заменяется");
    case Outcome::Merged:
        break;
    }
    return Text::tr("дополняется");
}

QStringList sentencesOf(const ImportOutlook& outlook)
{
    QStringList sentences{
        Text::tr("Дней новых: %1, без изменений: %2, заменяемых: %3, "
                 "дополняемых: %4")
            .arg(number(outlook.count(Outcome::New)), number(outlook.count(Outcome::Same)),
                 number(outlook.count(Outcome::Replaced)), number(outlook.count(Outcome::Merged)))};
    sentences.append(outlook.lost == 0 ? Text::tr("Ни один бар не пропадёт")
                                       : Text::tr("Пропадёт баров: %1").arg(number(outlook.lost)));
    sentences.append(Text::tr("Баров в файле: %1, ошибочных строк: %2")
                         .arg(number(outlook.bars), number(outlook.badLines)));
    if (outlook.series > 1)
        sentences.append(Text::tr("Серий: %1").arg(number(outlook.series)));
    return sentences;
}

QString sentenceOf(const OutlookDay& day)
{
    QString text = Text::tr("%1: %2; баров в файле: %3, хранится: %4, станет: %5")
                       .arg(QLocale().toString(day.day, QLocale::ShortFormat), titleOf(day.outcome),
                            number(day.bars), number(day.stored), number(day.result));
    if (day.lost > 0)
        text += Text::tr(", пропадёт: %1").arg(number(day.lost));
    return text;
}

} // namespace tadata
