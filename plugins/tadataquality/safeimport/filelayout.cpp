// SPDX-License-Identifier: MIT
#include "filelayout.h"

#include "textformats.h"

#include <vexdesk/history/filestate.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringConverter>

#include <algorithm>

namespace tadata {

using vexdesk::Result;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

constexpr auto ticker = static_cast<qint32>(ColumnRole::Ticker);

QString titleOf(const QString& pattern, const QList<TextFormat>& formats)
{
    const auto format =
        std::find_if(formats.begin(), formats.end(),
                     [&pattern](const TextFormat& one) { return one.pattern == pattern; });
    return format == formats.end() ? pattern : format->title;
}

GuessHints hintsOf(const GivenLayout& given)
{
    return {given.separator, given.dateFormat, given.timeFormat, given.hasHeader, given.timeframe};
}

// Nothing is left to be guessed.
bool isWhole(const GivenLayout& given)
{
    return given.separator && given.dateFormat && given.timeFormat && given.hasHeader &&
           given.timeframe && given.columns;
}

// Bars of the file would have none, and so would those that they replace.
QStringList warningsOf(const FormatGuess& guess)
{
    QStringList warnings;
    if (guess.missing.contains(QLatin1String("volume")))
        warnings.append(Text::tr("Столбец объёма не взят, в нём не целые числа: у баров из файла "
                                 "объёма не будет."));
    if (guess.missing.contains(QLatin1String("oi")))
        warnings.append(Text::tr("Столбец открытого интереса не взят, в нём не целые числа: у "
                                 "баров из файла его не будет."));
    return warnings;
}

FileLayout layoutOf(const FormatGuess& guess, const GivenLayout& given)
{
    FileLayout layout{.details = {}, .ambiguous = guess.ambiguous};
    ImportDetails& details = layout.details;
    details.separator = given.separator.value_or(guess.separator.value_or(QString()));
    details.dateFormat = given.dateFormat.value_or(guess.dateFormat.value_or(QString()));
    details.timeFormat = given.timeFormat.value_or(guess.timeFormat.value_or(QString()));
    details.dateFormatTitle = titleOfDateFormat(details.dateFormat);
    details.timeFormatTitle = titleOfTimeFormat(details.timeFormat);
    details.firstLineIsHeader = given.hasHeader.value_or(guess.hasHeader);
    details.timeframe = given.timeframe.value_or(guess.timeframe);
    details.columns = given.columns.value_or(guess.columns);
    if (!given.columns) {
        layout.unused = guess.unused;
        layout.warnings = warningsOf(guess);
    }
    return layout;
}

QString nameOf(ColumnRole role)
{
    switch (role) {
    case ColumnRole::Date:
        return Text::tr("дата");
    case ColumnRole::Time:
        return Text::tr("время");
    case ColumnRole::Open:
        return Text::tr("цена открытия");
    case ColumnRole::High:
        return Text::tr("максимальная цена");
    case ColumnRole::Low:
        return Text::tr("минимальная цена");
    default:
        return Text::tr("цена закрытия");
    }
}

QStringList missingColumns(const ImportDetails& details)
{
    QStringList names;
    for (auto role = qint32(ColumnRole::Date); role <= qint32(ColumnRole::Close); ++role) {
        if (!details.columns.contains(role))
            names.append(nameOf(ColumnRole(role)));
    }
    return names;
}

// By the mark at its start, as an import knows it; null for what a guess can read.
QString wideEncodingOf(const QString& path)
{
    constexpr qint64 longestMark = 4;
    QFile file(path);
    // To open a pipe is to wait for somebody who writes into it.
    if (!vexdesk::fileState(path) || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    switch (QStringConverter::encodingForData(file.read(longestMark))
                .value_or(QStringConverter::Utf8)) {
    case QStringConverter::Utf16LE:
    case QStringConverter::Utf16BE:
        return QStringLiteral("UTF-16");
    case QStringConverter::Utf32LE:
    case QStringConverter::Utf32BE:
        return QStringLiteral("UTF-32");
    default:
        return {};
    }
}

} // namespace

bool FileLayout::hasTicker() const
{
    return details.columns.contains(ticker);
}

QStringList FileLayout::lacks() const
{
    QStringList lacks = unchosen();
    if (!lacks.isEmpty() && !notGuessed.isNull())
        lacks.prepend(notGuessed);
    return lacks;
}

QStringList FileLayout::unchosen() const
{
    if (details.separator.isEmpty())
        return {Text::tr("Выберите разделитель столбцов: угадать его не удалось.")};
    QStringList lacks;
    if (const QStringList names = missingColumns(details); !names.isEmpty())
        lacks.append(
            Text::tr("Назовите над таблицей столбцы: %1.").arg(names.join(QStringLiteral(", "))));
    QStringList titles;
    for (const QString& pattern : ambiguous)
        titles.append(titleOfDateFormat(pattern));
    if (details.dateFormat.isEmpty())
        lacks.append(titles.isEmpty() ? Text::tr("Выберите вид даты.")
                                      : Text::tr("Выберите вид даты, подходят: %1.")
                                            .arg(titles.join(QStringLiteral(", "))));
    if (details.timeFormat.isEmpty())
        lacks.append(Text::tr("Выберите вид времени."));
    return lacks;
}

Result<FileLayout> layoutOf(const QString& file, const GivenLayout& given)
{
    const Result<FormatGuess> guess = guessFormat(file, hintsOf(given));
    if (guess)
        return layoutOf(*guess, given);
    const QString encoding = wideEncodingOf(file);
    if (encoding.isNull() && !isWhole(given))
        return guess.failure();
    FileLayout layout = layoutOf(FormatGuess(), given);
    if (!encoding.isNull())
        layout.notGuessed = Text::tr("Файл %1 сохранён в кодировке %2, и угадать его устройство "
                                     "нельзя. Сохраните его в UTF-8 или windows-1251 и откройте "
                                     "снова, или выберите всё сами.")
                                .arg(QDir::toNativeSeparators(file), encoding);
    return layout;
}

QString titleOfDateFormat(const QString& pattern)
{
    return titleOf(pattern, dateFormats());
}

QString titleOfTimeFormat(const QString& pattern)
{
    return titleOf(pattern, timeFormats());
}

} // namespace tadata
