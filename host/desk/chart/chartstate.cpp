// SPDX-License-Identifier: MIT
#include "desk/chart/chartstate.h"

#include "desk/chart/timeframecode.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <cmath>

namespace vexdesk {

namespace {

const QString stockKey = QStringLiteral("stock");
const QString boardKey = QStringLiteral("board");
const QString securityKey = QStringLiteral("security");
const QString timeframeKey = QStringLiteral("timeframe");
const QString nightsKey = QStringLiteral("nights");
const QString studiesKey = QStringLiteral("studies");
const QString endKey = QStringLiteral("end");
const QString slotsKey = QStringLiteral("slots");
const QString allKey = QStringLiteral("all");

constexpr std::array studyCodes{"MovingAverage", "VolumeByPrice"};
static_assert(studyCodes.size() == allStudies.size());

QString codeOf(Study study)
{
    return QLatin1String(studyCodes[static_cast<size_t>(study)]);
}

QList<Study> studiesOf(const QJsonArray& codes)
{
    QList<Study> studies;
    std::copy_if(allStudies.begin(), allStudies.end(), std::back_inserter(studies),
                 [&codes](Study study) { return codes.contains(codeOf(study)); });
    return studies;
}

} // namespace

QString toText(const ChartState& state)
{
    QJsonArray studies;
    for (const Study study : state.studies)
        studies.append(codeOf(study));
    QJsonObject object{{stockKey, state.series.stockCode},
                       {boardKey, state.series.boardCode},
                       {securityKey, state.series.securityName},
                       {nightsKey, state.areNightsShown},
                       {studiesKey, studies},
                       {endKey, state.end},
                       {slotsKey, state.slotsInView},
                       {allKey, state.isAll}};
    if (state.timeframe)
        object.insert(timeframeKey, timeframeCode(*state.timeframe));
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<ChartState> chartStateOf(const QString& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    ChartState state;
    state.series = {object.value(stockKey).toString(), object.value(boardKey).toString(),
                    object.value(securityKey).toString()};
    const SeriesName& series = state.series;
    if (series.stockCode.isEmpty() || series.boardCode.isEmpty() || series.securityName.isEmpty())
        return std::nullopt;
    state.timeframe = timeframeOfCode(object.value(timeframeKey).toString());
    state.areNightsShown = object.value(nightsKey).toBool();
    state.studies = studiesOf(object.value(studiesKey).toArray());
    state.end = object.value(endKey).toInteger();
    const double slotsInView = object.value(slotsKey).toDouble();
    state.slotsInView = std::isfinite(slotsInView) ? std::max(0.0, slotsInView) : 0;
    state.isAll = object.value(allKey).toBool();
    return state;
}

} // namespace vexdesk
