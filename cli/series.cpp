// SPDX-License-Identifier: MIT
#include "series.h"

#include "suggestion.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace tadata::cli {

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::ReferenceData;

namespace {

constexpr QLatin1String namePlace("{name}");
constexpr QLatin1String tickerPlace("{ticker}");

// Up to the last dot; without one the whole name.
QString nameOfFile(const QString& file)
{
    const QString name = QFileInfo(file).fileName();
    return name.left(name.lastIndexOf(u'.'));
}

// What comes into a place is not looked at for places.
QString filled(const QString& code, const QString& name, const QString& ticker)
{
    QString text;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QStringView rest = QStringView(code).mid(i);
        if (rest.startsWith(namePlace)) {
            text += name;
            i += namePlace.size() - 1;
        } else if (rest.startsWith(tickerPlace)) {
            text += ticker;
            i += tickerPlace.size() - 1;
        } else {
            text += code[i];
        }
    }
    return text;
}

} // namespace

std::optional<SeriesCodes> seriesFrom(const QString& name)
{
    const QStringList codes = name.split(u'/');
    const bool isCorrect =
        codes.size() == 3 && std::none_of(codes.begin(), codes.end(), [](const QString& code) {
            return code.isEmpty() || code == u"." || code == u"..";
        });
    return isCorrect ? std::optional(SeriesCodes{codes[0], codes[1], codes[2]}) : std::nullopt;
}

SeriesPattern::SeriesPattern(const QString& text)
    : m_codes(text.split(u'/'))
{}

bool SeriesPattern::hasTicker() const
{
    return m_codes.join(u'/').contains(tickerPlace);
}

QString SeriesPattern::mistypedPlace() const
{
    static const QRegularExpression place(QStringLiteral("\\{([^{}]*)\\}"));
    auto places = place.globalMatch(m_codes.join(u'/'));
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

std::optional<SeriesCodes> SeriesPattern::codesOf(const QString& file, const QString& ticker) const
{
    QStringList codes;
    for (const QString& code : m_codes)
        codes.append(filled(code, nameOfFile(file), ticker));
    // A code with a slash would be two.
    const auto series = seriesFrom(codes.join(u'/'));
    return m_codes.size() == 3 ? series : std::nullopt;
}

SeriesPattern parseSeriesPattern(const CommandLine& line)
{
    SeriesPattern pattern(line.text("series"));
    // A mistyped place would be taken for the name of a series.
    if (const QString meant = pattern.mistypedPlace(); !meant.isEmpty())
        line.refuse("series", Text::tr("такого места нет; похоже на %1").arg(meant));
    const QString anything = QStringLiteral("x");
    if (!pattern.codesOf(anything, anything))
        line.refuse("series");
    return pattern;
}

SeriesCodes parseSeries(const CommandLine& line)
{
    const std::optional<SeriesCodes> codes = seriesFrom(line.text("series"));
    if (!codes)
        line.refuse("series");
    return *codes;
}

std::optional<QString> parseStore(const CommandLine& line)
{
    return line.path("store");
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

bool isKnown(const SeriesCodes& codes)
{
    return SecurityDirectory::i().idByCode(codes.stock, codes.board, codes.security) != 0;
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

void setSeries(TADataDescription& description, const SeriesCodes& codes)
{
    description.stockCode = codes.stock;
    description.boardCode = codes.board;
    description.securityName = codes.security;
    description.stockId = StockDirectory::i().idByCode(codes.stock);
    description.boardId = BoardDirectory::i().idByCode(codes.stock, codes.board);
    description.securityId =
        SecurityDirectory::i().idByCode(codes.stock, codes.board, codes.security);
}

} // namespace tadata::cli
