// SPDX-License-Identifier: MIT
#include "commandline.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QTextStream>

#include <algorithm>
#include <cstdio>

namespace tadata::cli {

namespace {

QString parseFailure(const QCommandLineParser& parser, const QStringList& words,
                     std::initializer_list<CommandLine::Option> options)
{
    if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty())
        return Text::tr("неизвестный параметр «%1»").arg(unknown.first());
    for (const CommandLine::Option& option : options) {
        const QString name = QStringLiteral("--") + QLatin1String(option.name);
        const auto givesValue = [&name](const QString& word) {
            return word.startsWith(name + u'=');
        };
        if (!option.takesValue && std::any_of(words.begin(), words.end(), givesValue))
            return Text::tr("параметр %1 не принимает значения").arg(name);
    }
    if (!words.isEmpty() && words.last().startsWith(u'-') && !words.last().contains(u'='))
        return Text::tr("нет значения после «%1»").arg(words.last());
    return parser.errorText();
}

} // namespace

void printError(const QString& text)
{
    QTextStream(stderr) << text << '\n';
}

ExitCode printOutput(const QString& text)
{
    QTextStream out(stdout);
    out << text;
    out.flush();
    if (out.status() == QTextStream::Ok)
        return Success;
    printError(Text::tr("Невозможно записать в стандартный вывод"));
    return Failure;
}

CommandLine::CommandLine(const QStringList& words, std::initializer_list<Option> options)
{
    QCommandLineParser parser;
    for (const Option& option : options) {
        const QString name = QLatin1String(option.name);
        parser.addOption(QCommandLineOption(
            name, QString(), option.takesValue ? QStringLiteral("value") : QString()));
    }
    // The parser skips the first word, which is a program's name.
    if (!parser.parse(QStringList(QString()) + words))
        throw UsageError{parseFailure(parser, words, options)};

    const QStringList names = parser.optionNames();
    for (const QString& name : names) {
        if (m_values.contains(name))
            throw UsageError{Text::tr("параметр --%1 задан дважды").arg(name)};
        m_values.insert(name, parser.value(name));
    }
    m_positional = parser.positionalArguments();
}

bool CommandLine::isSet(const char* option) const
{
    return m_values.contains(QLatin1String(option));
}

std::optional<QString> CommandLine::value(const char* option) const
{
    const auto found = m_values.constFind(QLatin1String(option));
    return found == m_values.cend() ? std::nullopt : std::optional(*found);
}

QString CommandLine::required(const char* option) const
{
    const std::optional<QString> found = value(option);
    if (!found)
        throw UsageError{Text::tr("не задан параметр --%1").arg(QLatin1String(option))};
    return *found;
}

QString parseSeparator(const QString& text)
{
    if (text == u"comma")
        return QStringLiteral(",");
    if (text == u"semicolon")
        return QStringLiteral(";");
    if (text == u"space")
        return QStringLiteral(" ");
    if (text.isEmpty() || text.contains(u'\n') || text.contains(u'\r'))
        throw UsageError{Text::tr("--separator: нужен непустой текст без перевода строки")};
    return text;
}

int parseDecimals(const QString& text)
{
    bool isNumber = false;
    const int decimals = text.toInt(&isNumber);
    if (!isNumber || decimals < 0 || decimals > vexdesk::ReferenceData::maxDecimals)
        throw UsageError{Text::tr("--decimals: нужно число от 0 до %1: «%2»")
                             .arg(QString::number(vexdesk::ReferenceData::maxDecimals), text)};
    return decimals;
}

} // namespace tadata::cli
