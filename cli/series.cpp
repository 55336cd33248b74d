// SPDX-License-Identifier: MIT
#include "series.h"

#include "suggestion.h"

#include <vexdesk/history/links.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QRegularExpression>

namespace tadata::cli {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::ReferenceData;

namespace {

// The place that something between braces was probably to be; empty where nothing is.
QString mistypedPlace(const QString& series)
{
    static const QRegularExpression place(QStringLiteral("\\{([^{}]*)\\}"));
    auto places = place.globalMatch(series);
    while (places.hasNext()) {
        const QRegularExpressionMatch match = places.next();
        const QString meant =
            u'{' +
            nearestWord(match.captured(1), {QStringLiteral("name"), QStringLiteral("ticker")}) +
            u'}';
        if (meant != u"{}" && meant != match.captured())
            return meant;
    }
    return {};
}

} // namespace

SeriesPattern parseSeriesPattern(const CommandLine& line)
{
    SeriesPattern pattern(line.text("series"));
    // A mistyped place would be taken for the name of a series.
    if (const QString meant = mistypedPlace(pattern.text()); !meant.isEmpty())
        line.refuse("series", Text::tr("такого места нет; похоже на %1").arg(meant));
    const QString anything = QStringLiteral("x");
    if (!pattern.codesOf(anything, anything))
        line.refuse("series");
    return pattern;
}

SeriesCodes parseSeries(const CommandLine& line)
{
    const QString series = line.text("series");
    // It would name a directory that is not there, and that the export would make.
    if (series.contains(QChar::ReplacementCharacter))
        line.refuse("series", Text::tr("в кодах не может быть того, что не UTF-8"));
    const std::optional<SeriesCodes> codes = seriesFrom(series);
    if (!codes)
        line.refuse("series");
    return *codes;
}

std::optional<QString> parseStore(const CommandLine& line)
{
    return line.path("store");
}

Outcome checkReached(const QDir& root, const SeriesCodes& codes)
{
    QString path = root.path();
    for (const QString& name : {codes.stock, codes.board, codes.security}) {
        path += u'/' + name;
        if (vexdesk::isLostLink(path))
            return vexdesk::lostLink(path);
    }
    return {};
}

QDir makeSeriesDirIn(const std::optional<QString>& store, const SeriesCodes& codes)
{
    if (!store)
        return vexdesk::makeSeriesDir(codes.stock, codes.board, codes.security);
    const QDir dir(vexdesk::seriesPath(QDir(*store), codes.stock, codes.board, codes.security));
    QDir().mkpath(dir.path());
    return dir;
}

Outcome installReferenceData(const CommandLine& line)
{
    const std::optional<QString> file = line.path("reference");
    const auto data = file ? ReferenceData::fromFile(*file) : ReferenceData::standard();
    if (!data)
        return data.failure();
    ReferenceData::install(*data);
    return {};
}

void makeKnown(const SeriesCodes& codes, int decimals)
{
    ReferenceData data = ReferenceData::installed();
    data.setSeries(codes.stock, codes.board, codes.security, decimals);
    ReferenceData::install(data);
}

Outcome makeKnown(const SeriesCodes& codes, std::optional<int> given, std::optional<int> guessed)
{
    const bool needsGuess = !given && !isKnown(codes);
    if (needsGuess && !guessed)
        return Failure{
            Text::tr("инструмента %1/%2/%3 нет в справочнике: задайте --decimals, число "
                     "знаков после точки в ценах")
                .arg(escaped(codes.stock), escaped(codes.board), escaped(codes.security))};
    if (given)
        makeKnown(codes, *given);
    else if (needsGuess)
        makeKnown(codes, *guessed);
    return {};
}

} // namespace tadata::cli
