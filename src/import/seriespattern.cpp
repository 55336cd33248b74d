// SPDX-License-Identifier: MIT
#include "seriespattern.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>

#include <QtCore/QFileInfo>

#include <algorithm>

namespace tadata {

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

QString SeriesCodes::name() const
{
    return QStringLiteral("%1/%2/%3").arg(stock, board, security);
}

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
    return text().contains(tickerPlace);
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

bool isKnown(const SeriesCodes& codes)
{
    return SecurityDirectory::i().idByCode(codes.stock, codes.board, codes.security) != 0;
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

} // namespace tadata
