// SPDX-License-Identifier: MIT
#include "series.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <algorithm>

namespace tadata::cli {

using vexdesk::Outcome;
using vexdesk::ReferenceData;

std::optional<SeriesCodes> seriesFrom(const QString& name)
{
    const QStringList codes = name.split(u'/');
    const bool isCorrect =
        codes.size() == 3 && std::none_of(codes.begin(), codes.end(), [](const QString& code) {
            return code.isEmpty() || code == u"." || code == u"..";
        });
    return isCorrect ? std::optional(SeriesCodes{codes[0], codes[1], codes[2]}) : std::nullopt;
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
