// SPDX-License-Identifier: MIT
#include "importchoices.h"

#include "optionwords.h"
#include "patterns.h"
#include "seriespattern.h"

#include <vexdesk/history/dayfilenames.h>

#include <QtCore/QTimeZone>

#include <functional>

namespace tadata {

namespace {

// Puts the value of an option into the choices; false for one that is wrong.
using TakeOption = std::function<bool(const QString& value, ImportChoices& choices)>;

bool takeColumns(const QString& value, ImportChoices& choices)
{
    const auto columns = columnsOfWord(value);
    if (columns)
        choices.given.columns = *columns;
    return bool(columns);
}

bool takeSeparator(const QString& value, ImportChoices& choices)
{
    const std::optional<QString> separator = separatorOfWord(value);
    if (separator)
        choices.given.separator = separator;
    return separator.has_value();
}

bool takeTimeframe(const QString& value, ImportChoices& choices)
{
    const int timeframe = value.toInt();
    const bool isStored =
        timeframe == vexdesk::minuteTimeframe || timeframe == vexdesk::secondTimeframe;
    if (isStored)
        choices.given.timeframe = timeframe;
    return isStored;
}

bool takeMode(const QString& value, ImportChoices& choices)
{
    static const QMap<QString, ImportMode> modes{{QStringLiteral("replace"), ImportMode::Replace},
                                                 {QStringLiteral("merge"), ImportMode::Merge},
                                                 {QStringLiteral("fill"), ImportMode::Fill}};
    if (modes.contains(value))
        choices.ways.mode = modes.value(value);
    return modes.contains(value);
}

bool takeZone(const QString& value, QTimeZone& zone)
{
    const QByteArray id = value.toUtf8();
    zone = QTimeZone(id);
    return QTimeZone::isTimeZoneIdAvailable(id) && zone.isValid();
}

bool takeShift(const QString& value, ImportChoices& choices)
{
    constexpr int minutesOfDay = 24 * 60;
    bool isNumber = false;
    const int minutes = value.toInt(&isNumber);
    if (!isNumber || qAbs(minutes) > minutesOfDay)
        return false;
    choices.ways.clock.shiftMinutes = minutes;
    return true;
}

bool takeSeries(const QString& value, ImportChoices& choices)
{
    const QString any = QStringLiteral("x");
    if (!SeriesPattern(value).codesOf(any, any))
        return false;
    choices.series = value;
    return true;
}

template <typename Pattern>
TakeOption takePattern(bool (*isPattern)(const QString&), Pattern pattern)
{
    return [isPattern, pattern](const QString& value, ImportChoices& choices) {
        if (!isPattern(value))
            return false;
        choices.given.*pattern = value;
        return true;
    };
}

QMap<QString, TakeOption> takenOptions()
{
    return {{QStringLiteral("columns"), takeColumns},
            {QStringLiteral("separator"), takeSeparator},
            {QStringLiteral("timeframe"), takeTimeframe},
            {QStringLiteral("mode"), takeMode},
            {QStringLiteral("shift"), takeShift},
            {QStringLiteral("series"), takeSeries},
            {QStringLiteral("date-format"), takePattern(namesADay, &GivenLayout::dateFormat)},
            {QStringLiteral("time-format"), takePattern(hasHours, &GivenLayout::timeFormat)},
            {QStringLiteral("no-header"),
             [](const QString&, ImportChoices& choices) {
                 choices.given.hasHeader = false;
                 return true;
             }},
            {QStringLiteral("stamp"),
             [](const QString& value, ImportChoices& choices) {
                 choices.ways.clock.stampsBegin = value == u"begin";
                 return value == u"begin" || value == u"end";
             }},
            {QStringLiteral("from-zone"),
             [](const QString& value, ImportChoices& choices) {
                 return takeZone(value, choices.ways.clock.from);
             }},
            {QStringLiteral("to-zone"),
             [](const QString& value, ImportChoices& choices) {
                 return takeZone(value, choices.ways.clock.to);
             }},
            {QStringLiteral("skip-bad"), [](const QString&, ImportChoices& choices) {
                 choices.ways.skipsBad = true;
                 return true;
             }}};
}

// With --columns a command line guesses nothing: these are what it has then.
void completeLayout(GivenLayout& given)
{
    if (!given.columns)
        return;
    given.separator = given.separator.value_or(QStringLiteral(","));
    given.dateFormat = given.dateFormat.value_or(QStringLiteral("yyyyMMdd"));
    given.timeFormat = given.timeFormat.value_or(QStringLiteral("hhmmss"));
    given.hasHeader = given.hasHeader.value_or(true);
    given.timeframe = given.timeframe.value_or(vexdesk::minuteTimeframe);
}

} // namespace

ChoicesOfProfile withProfile(ImportChoices choices, const ProfileOptions& profile)
{
    const QMap<QString, TakeOption> known = takenOptions();
    choices.given = {};
    choices.ways.clock = {};
    QStringList passedOver;
    for (auto option = profile.begin(); option != profile.end(); ++option) {
        const TakeOption take = known.value(option.key());
        if (!take || !take(option.value(), choices))
            passedOver.append(option.key());
    }
    FileClock& clock = choices.ways.clock;
    if (clock.from.isValid() != clock.to.isValid()) {
        // One zone alone says nothing.
        passedOver.append(clock.from.isValid() ? QStringLiteral("from-zone")
                                               : QStringLiteral("to-zone"));
        clock.from = clock.to = QTimeZone();
    }
    completeLayout(choices.given);
    return {choices, passedOver};
}

} // namespace tadata
