#include "series.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/dayfile.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <algorithm>

namespace tadata::cli {

using vexdesk::ReferenceData;

SeriesCodes parseSeries(const QString& text)
{
    const QStringList codes = text.split(u'/');
    const bool correct =
        codes.size() == 3 && std::none_of(codes.begin(), codes.end(), [](const QString& code) {
            return code.isEmpty() || code == u"." || code == u"..";
        });
    if (!correct)
        throw UsageError{Text::tr("--series: нужны три кода через «/», ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ, "
                                  "и ни один не может быть пустым, «.» или «..»: «%1»")
                             .arg(text)};
    return {codes[0], codes[1], codes[2]};
}

std::optional<QString> parseStore(const CommandLine& line)
{
    std::optional<QString> store = line.value("store");
    if (store && store->isEmpty())
        throw UsageError{Text::tr("--store: нужен каталог")};
    return store;
}

QDir makeSeriesDirIn(const std::optional<QString>& store, const SeriesCodes& codes)
{
    if (!store)
        return vexdesk::makeSeriesDir(codes.stock, codes.board, codes.security);
    const QDir dir(vexdesk::seriesPath(QDir(*store), codes.stock, codes.board, codes.security));
    QDir().mkpath(dir.path());
    return dir;
}

QString installReferenceData(const CommandLine& line)
{
    QString error;
    const std::optional<QString> file = line.value("reference");
    const auto data =
        file ? ReferenceData::fromFile(*file, &error) : ReferenceData::standard(&error);
    if (error.isNull())
        ReferenceData::install(data);
    return error;
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
