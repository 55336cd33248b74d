// SPDX-License-Identifier: MIT
#include "series.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <algorithm>

namespace tadata::cli {

using vexdesk::ReferenceData;

namespace {

// Characters that end a line, move the cursor or turn the direction of the text, and halves of
// characters.
bool isUnprintable(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

// Halves of characters that have lost the other one are characters of their own.
QList<char32_t> charactersOf(const QString& text)
{
    QList<char32_t> characters;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        characters.append(isPair ? QChar::surrogateToUcs4(text[i], text[i + 1])
                                 : char32_t(text[i].unicode()));
        i += isPair ? 1 : 0;
    }
    return characters;
}

QString escapedCharacter(char32_t character)
{
    // A byte of a name that is no UTF-8.
    const bool isByte = character >= 0xdc80 && character <= 0xdcff;
    const auto number = static_cast<uint>(isByte ? character & 0xff : character);
    return number < 0x100 && (isByte || number < 0x80)
               ? QStringLiteral("\\x%1").arg(number, 2, 16, QLatin1Char('0'))
               : QStringLiteral("\\u%1").arg(number, 4, 16, QLatin1Char('0'));
}

} // namespace

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

void refuseUnprintable(const SeriesCodes& codes)
{
    for (const QString& code : {codes.stock, codes.board, codes.security}) {
        const QList<char32_t> characters = charactersOf(code);
        if (code.contains(QChar(QChar::ReplacementCharacter)) ||
            std::any_of(characters.begin(), characters.end(), isUnprintable))
            throw UsageError{
                Text::tr("--series: в кодах не может быть управляющих символов и того, что не "
                         "UTF-8: «%1»")
                    .arg(escaped(code))};
    }
}

QString escaped(const QString& code)
{
    const QList<char32_t> characters = charactersOf(code);
    QString text;
    for (qsizetype i = 0; i < characters.size(); ++i) {
        const char32_t character = characters[i];
        if (isUnprintable(character)) {
            text += escapedCharacter(character);
            continue;
        }
        // One that would pass for the beginning of an escape.
        const char32_t next = characters.value(i + 1);
        if (character == U'\\' && (next == U'x' || next == U'u'))
            text += u'\\';
        text += QString::fromUcs4(&character, 1);
    }
    return text;
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
