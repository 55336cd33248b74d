// SPDX-License-Identifier: MIT
#include "help.h"

namespace tadata::cli {

namespace {

constexpr qsizetype width = 95;

// The parts in lines of limited width: the first goes on in the line that was begun, the others
// are indented.
QString inLines(const QStringList& parts, const QString& begun, qsizetype indent)
{
    QString text = begun;
    qsizetype column = begun.size();
    for (const QString& part : parts) {
        if (column > indent && column + 1 + part.size() > width) {
            text += u'\n' + QString(indent, u' ');
            column = indent;
        } else if (column > indent) {
            text += u' ';
            ++column;
        }
        text += part;
        column += part.size();
    }
    return text + u'\n';
}

QString paragraph(const QString& text, qsizetype indent = 0)
{
    return inLines(text.split(u' '), QString(indent, u' '), indent);
}

QString optionList(const QList<Option>& options)
{
    QString text;
    for (const Option& option : options)
        text +=
            QStringLiteral("  ") + optionUsage(option) + u'\n' + paragraph(optionText(option), 6);
    return text;
}

} // namespace

QString optionUsage(const Option& option)
{
    const QString name = QStringLiteral("--") + option.name;
    return option.isSwitch() ? name : name + u' ' + option.value;
}

QString rightValues(const Option& option)
{
    return option.choices.isEmpty() ? option.takes : option.choices.join(QStringLiteral(", "));
}

QString optionText(const Option& option)
{
    QStringList sentences{option.meaning};
    if (!option.isSwitch())
        sentences.append(Text::tr("Значение: %1.").arg(rightValues(option)));
    if (!option.fallback.isNull())
        sentences.append(Text::tr("По умолчанию %1.").arg(option.fallback));
    if (!option.partner.isEmpty() && !option.isRequired)
        sentences.append(Text::tr("Только вместе с --%1.").arg(option.partner));
    if (option.isRequired)
        sentences.append(Text::tr("Обязателен."));
    return sentences.join(u' ');
}

QStringList usageParts(const Command& command)
{
    QStringList parts;
    if (!command.words.isEmpty())
        parts.append(command.words);
    bool hasOthers = false;
    for (const Option& option : command.options) {
        if (option.isRequired)
            parts.append(optionUsage(option));
        else
            hasOthers = true;
    }
    if (hasOthers)
        parts.append(Text::tr("[параметры]"));
    return parts;
}

QString commandHelp(const Command& command)
{
    const QString begun =
        Text::tr("Использование:") + QStringLiteral(" tadata %1 ").arg(command.name);
    QString text = inLines(usageParts(command), begun, begun.size()) + u'\n' +
                   paragraph(command.description) + u'\n' + optionList(command.options);
    if (!command.example.isEmpty())
        text += u'\n' + Text::tr("Пример:") + QStringLiteral("\n  ") +
                QString(command.example).replace(u'\n', QStringLiteral("\n  ")) + u'\n';
    return text;
}

QString generalHelp(const QList<Command>& commands)
{
    QString text = Text::tr("tadata — бары для графиков терминала из командной строки") +
                   QStringLiteral("\n\n") + Text::tr("Использование:") + u'\n';
    for (const Command& command : commands)
        text += QStringLiteral("  tadata %1\n").arg(command.name) + paragraph(command.summary, 6);
    return text + optionList(programOptions()) + u'\n' +
           paragraph(Text::tr("Код завершения: 0 — сделано; 1 — не удалось, причина в стандартном "
                              "выводе ошибок; 2 — неверная командная строка.")) +
           u'\n' +
           paragraph(Text::tr("Сообщения — на языке пользователя или на том, который назван в "
                              "переменной окружения TADATA_LANGUAGE: ru или en."));
}

} // namespace tadata::cli
