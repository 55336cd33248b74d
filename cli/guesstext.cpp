// SPDX-License-Identifier: MIT
#include "guesstext.h"

#include "output.h"

#include "columnroles.h"

#include <algorithm>

namespace tadata::cli {

namespace {

QString columnsWord(const QMap<qint32, qint32>& columns)
{
    QStringList parts;
    for (auto column = columns.begin(); column != columns.end(); ++column)
        parts.append(QStringLiteral("%1=%2").arg(roleWord(ColumnRole(column.key()))).arg(*column));
    return parts.join(u',');
}

bool isPlainInShell(QChar character)
{
    return character.isLetterOrNumber() || QStringLiteral("_-./,=:+@%").contains(character);
}

} // namespace

QString separatorWord(const QString& separator)
{
    if (separator == u",")
        return QStringLiteral("comma");
    if (separator == u";")
        return QStringLiteral("semicolon");
    // A tab that is copied from a terminal comes back as blanks.
    if (separator == u"\t")
        return QStringLiteral("tab");
    return separator == u" " ? QStringLiteral("space") : separator;
}

QString shellWord(const QString& word)
{
    if (!word.isEmpty() && std::all_of(word.begin(), word.end(), isPlainInShell))
        return word;
    QString quoted = word;
    quoted.replace(u'\'', QStringLiteral("'\\''"));
    return u'\'' + quoted + u'\'';
}

QString guessedOptions(const FormatGuess& guess)
{
    QStringList words{QStringLiteral("--timeframe %1").arg(guess.timeframe)};
    const auto add = [&words](const char* option, const std::optional<QString>& value) {
        if (value)
            words.append(QLatin1String(option) + u' ' + shellWord(*value));
    };
    if (guess.separator)
        add("--separator", separatorWord(*guess.separator));
    if (!guess.hasHeader)
        words.append(QStringLiteral("--no-header"));
    add("--date-format", guess.dateFormat);
    add("--time-format", guess.timeFormat);
    if (!guess.columns.isEmpty())
        add("--columns", columnsWord(guess.columns));
    return words.join(u' ');
}

QStringList guessedAlternatives(const FormatGuess& guess)
{
    if (guess.ambiguous.isEmpty())
        return {guessedOptions(guess)};
    QStringList alternatives;
    for (const QString& form : guess.ambiguous) {
        FormatGuess alternative = guess;
        alternative.dateFormat = form;
        alternatives.append(guessedOptions(alternative));
    }
    return alternatives;
}

QStringList guessTroubles(const FormatGuess& guess)
{
    const auto misses = [&guess](const char* what) {
        return guess.missing.contains(QLatin1String(what));
    };
    if (misses("separator"))
        return {Text::tr("Не найден разделитель: ни один не делит строки на одинаковое число "
                         "полей, не меньше шести.")};
    QStringList troubles;
    if (misses("date"))
        troubles.append(Text::tr("Не найден столбец даты."));
    if (misses("time"))
        troubles.append(Text::tr("Не найден столбец времени."));
    if (misses("prices"))
        troubles.append(Text::tr("Не найдены столбцы цен: open, high, low и close."));
    if (!guess.ambiguous.isEmpty())
        troubles.append(Text::tr("Вид даты неоднозначен, подходят: %1.")
                            .arg(guess.ambiguous.join(QStringLiteral(", "))));
    if (misses("volume"))
        troubles.append(Text::tr("Столбец объёма не будет импортирован: в нём не целые числа."));
    if (misses("oi"))
        troubles.append(
            Text::tr("Столбец открытого интереса не будет импортирован: в нём не целые числа."));
    return troubles;
}

} // namespace tadata::cli
