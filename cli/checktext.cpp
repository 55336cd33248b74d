// SPDX-License-Identifier: MIT
#include "checkreport.h"
#include "output.h"

#include "problemtitles.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace tadata::cli {

namespace {

using Outcome = CheckedDay::Outcome;

// How many lines of a kind, and days, are named.
constexpr qsizetype fewest = 5;

QString oneLine(QString text)
{
    return escaped(text.replace(u'\n', u' '));
}

QString verdict(const ImportCheck& check)
{
    if (check.wouldImport)
        return Text::tr("Импорт пройдёт до конца.");
    if (!check.stop)
        return Text::tr("Импорт не возьмёт ни одной строки: все ошибочные.");
    const QString message = oneLine(check.stop->message);
    if (!check.stop->line)
        return Text::tr("Импорт не начнётся. %1").arg(message);
    return Text::tr("Импорт закончится на строке %1. %2")
        .arg(QString::number(*check.stop->line), message);
}

QString shown(const ImportCheck::Moment& moment)
{
    return moment.day.toString(Qt::ISODate) + u' ' +
           moment.time.toString(QStringLiteral("hh:mm:ss"));
}

QString fileLine(const ImportCheck& check)
{
    QString text = Text::tr("Баров: %1, строк: %2, ошибочных строк: %3")
                       .arg(QString::number(check.bars), QString::number(check.lines),
                            QString::number(check.badLines));
    if (check.first)
        text += Text::tr("; с %1 по %2").arg(shown(*check.first), shown(*check.last));
    if (check.spacing)
        text += Text::tr("; обычно через %1 с").arg(*check.spacing);
    return text;
}

QString daysLine(const ImportCheck& check)
{
    const auto count = [&check](Outcome outcome) {
        return QString::number(
            std::count_if(check.days.begin(), check.days.end(),
                          [outcome](const CheckedDay& day) { return day.outcome == outcome; }));
    };
    return Text::tr("Дней: %1; новых: %2, без изменений: %3, заменяемых: %4, дополняемых: %5")
        .arg(QString::number(check.days.size()), count(Outcome::New), count(Outcome::Same),
             count(Outcome::Replaced), count(Outcome::Merged));
}

// Of the days that lose most, the first ones.
QString lostLine(const ImportCheck& check)
{
    std::vector<CheckedDay> losing;
    qint64 lost = 0;
    for (const CheckedDay& day : check.days) {
        lost += day.lost;
        if (day.lost > 0)
            losing.push_back(day);
    }
    if (lost == 0)
        return QString();
    std::stable_sort(
        losing.begin(), losing.end(),
        [](const CheckedDay& left, const CheckedDay& right) { return left.lost > right.lost; });
    QStringList days;
    for (const CheckedDay& day : losing) {
        if (days.size() == fewest) {
            days.append(QStringLiteral("…"));
            break;
        }
        days.append(QStringLiteral("%1 (%2)").arg(day.day.toString(Qt::ISODate)).arg(day.lost));
    }
    return Text::tr("Пропадёт баров: %1. Больше всего: %2")
        .arg(QString::number(lost), days.join(QStringLiteral(", ")));
}

// A kind with the lines that are named of it: a bad line says what is wrong with it.
QStringList problemLines(const ImportCheck& check, ProblemKind kind)
{
    QStringList numbers;
    QStringList texts;
    for (const FileProblem& problem : check.problems) {
        if (problem.kind != kind || !problem.line || numbers.size() == fewest)
            continue;
        numbers.append(QString::number(*problem.line));
        if (!problem.text.isEmpty())
            texts.append(QStringLiteral("    %1: %2").arg(numbers.last(), oneLine(problem.text)));
    }
    if (check.count(kind) > numbers.size() && !numbers.isEmpty())
        numbers.append(QStringLiteral("…"));
    QString line = QStringLiteral("  ") + titleOf(kind);
    if (kind < ProblemKind::Spacing)
        line += QStringLiteral(": %1").arg(check.count(kind));
    if (!numbers.isEmpty())
        line += Text::tr(" (строки %1)").arg(numbers.join(QStringLiteral(", ")));
    return QStringList{line} + texts;
}

} // namespace

QString checkText(const CheckedImport& import, const ImportCheck& check)
{
    QStringList lines{QStringLiteral("%1 → %2 %3")
                          .arg(escaped(import.file), escaped(import.series))
                          .arg(import.timeframe),
                      verdict(check), fileLine(check), daysLine(check)};
    if (const QString lost = lostLine(check); !lost.isEmpty())
        lines.append(lost);
    QStringList problems;
    for (size_t kind = 0; kind < problemKinds; ++kind) {
        if (check.counts[kind] > 0)
            problems += problemLines(check, static_cast<ProblemKind>(kind));
    }
    if (!problems.isEmpty())
        lines.append(Text::tr("На что посмотреть:"));
    return (lines + problems).join(u'\n') + u'\n';
}

} // namespace tadata::cli
