// SPDX-License-Identifier: MIT
#include "commands.h"

namespace tadata::cli {

QList<Command> commands()
{
    return {guessCommand(),  checkCommand(),  importCommand(), exportCommand(), listCommand(),
            healthCommand(), deleteCommand(), copyCommand(),   renameCommand(), pointsCommand(),
            undoCommand(),   unlockCommand(), profileCommand()};
}

QList<Option> programOptions()
{
    return {{.name = QStringLiteral("help"),
             .meaning = Text::tr("Эта подсказка; после команды — всё о команде. То же, что -h.")},
            {.name = QStringLiteral("version"), .meaning = Text::tr("Версия.")}};
}

Option seriesOption()
{
    return {.name = QStringLiteral("series"),
            .value = Text::tr("ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ"),
            .meaning = Text::tr("Серия: коды площадки, режима торгов и инструмента."),
            .takes = Text::tr("три кода через «/», ни один из них не пустой, не «.» и не «..»"),
            .isRequired = true};
}

Option separatorOption()
{
    return {.name = QStringLiteral("separator"),
            .value = Text::tr("ТЕКСТ"),
            .meaning = Text::tr("Что стоит между столбцами."),
            .takes = Text::tr("непустой текст без перевода строки или слово comma, semicolon, "
                              "space, tab"),
            .fallback = QStringLiteral("comma")};
}

Option storeOption()
{
    return {.name = QStringLiteral("store"),
            .value = Text::tr("КАТАЛОГ"),
            .meaning = Text::tr("Каталог с папками площадок. Без него — хранилище терминала."),
            .takes = Text::tr("имя каталога")};
}

Option referenceOption()
{
    return {.name = QStringLiteral("reference"),
            .value = Text::tr("ФАЙЛ"),
            .meaning = Text::tr("Справочник площадок, режимов и инструментов. Без него — "
                                "справочник терминала."),
            .takes = Text::tr("имя файла")};
}

Option dayOption(const char* name, const QString& meaning)
{
    return {.name = QLatin1String(name),
            .value = Text::tr("ДЕНЬ"),
            .meaning = meaning,
            .takes = Text::tr("дата вида 2024-01-31")};
}

} // namespace tadata::cli
