// SPDX-License-Identifier: MIT
#include "checkreport.h"

#include "optionwords.h"

namespace tadata::cli {

namespace {

QString nameOf(ProblemKind kind)
{
    static const std::array<QString, problemKinds> names{
        QStringLiteral("bad-line"),  QStringLiteral("day-again"), QStringLiteral("out-of-order"),
        QStringLiteral("duplicate"), QStringLiteral("prices"),    QStringLiteral("rounded"),
        QStringLiteral("volume"),    QStringLiteral("midnight"),  QStringLiteral("spacing"),
        QStringLiteral("date-order")};
    return names[static_cast<size_t>(kind)];
}

QString nameOf(CheckedDay::Outcome outcome)
{
    switch (outcome) {
    case CheckedDay::Outcome::Same:
        return QStringLiteral("same");
    case CheckedDay::Outcome::Replaced:
        return QStringLiteral("replaced");
    case CheckedDay::Outcome::Merged:
        return QStringLiteral("merged");
    case CheckedDay::Outcome::New:
        break;
    }
    return QStringLiteral("new");
}

Json momentReport(const std::optional<ImportCheck::Moment>& moment)
{
    return moment ? Json::moment(moment->day, moment->time) : Json();
}

Json dayReport(const CheckedDay& day)
{
    return Json::object({{QStringLiteral("bars"), day.bars},
                         {QStringLiteral("day"), day.day},
                         {QStringLiteral("lost"), day.lost},
                         {QStringLiteral("outcome"), nameOf(day.outcome)},
                         {QStringLiteral("result"), day.result},
                         {QStringLiteral("stored"), day.stored}});
}

Json problemReport(const FileProblem& problem)
{
    return Json::object({{QStringLiteral("day"), problem.day},
                         {QStringLiteral("kind"), nameOf(problem.kind)},
                         {QStringLiteral("line"), problem.line},
                         {QStringLiteral("text"), problem.text}});
}

Json countsReport(const ImportCheck& check)
{
    std::vector<Json::Member> counts;
    for (size_t kind = 0; kind < problemKinds; ++kind) {
        if (check.counts[kind] > 0)
            counts.emplace_back(nameOf(static_cast<ProblemKind>(kind)), check.counts[kind]);
    }
    return Json::object(counts);
}

} // namespace

Json checkReport(const CheckedImport& import, const ImportCheck& check)
{
    const ImportStop stop = check.stop.value_or(ImportStop());
    return Json::object({{QStringLiteral("badLines"), check.badLines},
                         {QStringLiteral("bars"), check.bars},
                         {QStringLiteral("counts"), countsReport(check)},
                         {QStringLiteral("days"), Json::list(check.days, dayReport)},
                         {QStringLiteral("error"), stop.message},
                         {QStringLiteral("file"), import.file},
                         {QStringLiteral("first"), momentReport(check.first)},
                         {QStringLiteral("last"), momentReport(check.last)},
                         {QStringLiteral("lines"), check.lines},
                         {QStringLiteral("mode"), modeWord(import.mode)},
                         {QStringLiteral("problems"), Json::list(check.problems, problemReport)},
                         {QStringLiteral("series"), import.series},
                         {QStringLiteral("spacing"), check.spacing},
                         {QStringLiteral("stopsAtLine"), stop.line},
                         {QStringLiteral("timeframe"), import.timeframe},
                         {QStringLiteral("wouldImport"), check.wouldImport}});
}

} // namespace tadata::cli
