// SPDX-License-Identifier: MIT
#include "linequote.h"

#include "guesstext.h"
#include "output.h"

#include "columnroles.h"
#include "linefault.h"

#include <algorithm>

namespace tadata::cli {

namespace {

constexpr qsizetype indent = 2;

// Each character in one place of the screen.
QString shown(QString text)
{
    for (QChar& letter : text) {
        if (letter == u'\t')
            letter = u' ';
        else if (hasUnprintable(QString(letter)) && !letter.isSurrogate())
            letter = u'·';
    }
    return text;
}

// The part of the line that has room, with the field in it, and the marks below it.
QString markedLine(const QString& line, const LineFault& fault, int width)
{
    const qsizetype room = std::max<qsizetype>(width - indent, 20);
    qsizetype from = 0;
    if (line.size() > room)
        from = std::clamp<qsizetype>(fault.begin - room / 3, 0, line.size() - room);
    QString part = shown(line.mid(from, room));
    if (from > 0)
        part.front() = u'…';
    if (from + room < line.size())
        part.back() = u'…';
    const QString blanks(indent, u' ');
    if (fault.role == ColumnRole::None)
        return blanks + part;
    // An empty field has a place all the same.
    const qsizetype begin = fault.begin - from;
    const qsizetype length =
        std::clamp<qsizetype>(fault.length, 1, std::max<qsizetype>(room - begin, 1));
    return blanks + part + u'\n' + QString(indent + begin, u' ') + QString(length, u'^');
}

QString missingColumns(const LineFault& fault)
{
    const QString said = Text::tr("столбцов: %1, нужно: %2").arg(fault.columns).arg(fault.wanted);
    if (fault.fitting.isEmpty())
        return said;
    return said + Text::tr("; похоже на другой разделитель: --separator %1")
                      .arg(shellWord(separatorWord(fault.fitting.first())));
}

QString wrongForm(const LineFault& fault, const QString& form, const char* option)
{
    const QString said = Text::tr("%1: нужно %2").arg(roleWord(fault.role), form);
    if (fault.fitting.isEmpty())
        return said;
    return said + Text::tr("; похоже на %1: --%2 %3")
                      .arg(fault.fitting.join(Text::tr(" или ")), QLatin1String(option),
                           fault.fitting.first());
}

QString wrongNumber(const LineFault& fault, const QString& field)
{
    const bool isInteger =
        fault.role == ColumnRole::Volume || fault.role == ColumnRole::OpenInterest;
    const QString said = (isInteger ? Text::tr("%1: нужно целое число, например 1250")
                                    : Text::tr("%1: нужно число, например 1250.75"))
                             .arg(roleWord(fault.role));
    if (field.isEmpty())
        return said + Text::tr("; поле пустое");
    if (field != field.trimmed())
        return said + Text::tr("; вокруг него пробелы");
    if (field.contains(u'"') || field.contains(u'\''))
        return said + Text::tr("; оно в кавычках");
    if (field.contains(u','))
        return said + Text::tr("; вместо точки запятая");
    return said;
}

// No date that is wrong: without its line a bar would be lost.
bool isName(const QString& field)
{
    return std::any_of(field.cbegin(), field.cend(), [](QChar c) { return c.isLetter(); }) &&
           std::none_of(field.cbegin(), field.cend(), [](QChar c) { return c.isDigit(); });
}

QString advice(const LineFault& fault, const QString& field, qint64 number,
               const ImportDetails& details)
{
    switch (fault.role) {
    case ColumnRole::None:
        return fault.columns < fault.wanted ? missingColumns(fault) : QString();
    case ColumnRole::Date:
        if (number == 1 && isName(field))
            return Text::tr("date: нужно %1; похоже на заголовок: уберите --no-header")
                .arg(details.dateFormat);
        return wrongForm(fault, details.dateFormat, "date-format");
    case ColumnRole::Time:
        return wrongForm(fault, details.timeFormat, "time-format");
    case ColumnRole::Ticker:
        return Text::tr("ticker: нужно имя каталога");
    default:
        return wrongNumber(fault, field);
    }
}

} // namespace

QString quotedLine(const QString& line, qint64 number, const ImportDetails& details, int width)
{
    const LineFault fault = faultOf(line, details);
    const QString marked = markedLine(line, fault, width);
    const QString said = advice(fault, line.mid(fault.begin, fault.length), number, details);
    return said.isEmpty() ? marked : marked + u'\n' + QString(indent, u' ') + said;
}

} // namespace tadata::cli
