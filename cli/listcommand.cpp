// SPDX-License-Identifier: MIT
#include "listcommand.h"

#include "series.h"

#include <vexdesk/history/storecatalog.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QTextStream>

namespace tadata::cli {

ExitCode runList(const QStringList& words)
{
    const CommandLine line(words, {{"store"}});
    if (!line.positional().isEmpty())
        throw UsageError{Text::tr("лишнее слово «%1»").arg(line.positional().first())};

    const std::optional<QString> store = parseStore(line);
    const QDir root = store ? QDir(*store) : vexdesk::storeRoot();
    if (!root.exists()) {
        printError(Text::tr("Нет каталога %1").arg(root.path()));
        return Failure;
    }

    QString text;
    QTextStream out(&text);
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    for (const vexdesk::StoredSeries& series : catalog.series) {
        out << escaped(series.stockCode) << '/' << escaped(series.boardCode) << '/'
            << escaped(series.securityName) << '\t' << series.timeframe << '\t' << series.dayFiles
            << '\t' << series.firstDay.toString(Qt::ISODate) << '\t'
            << series.lastDay.toString(Qt::ISODate) << '\t' << series.bytes << '\n';
    }
    const ExitCode printed = printOutput(text);
    for (const QString& directory : catalog.unreadable)
        printError(Text::tr("Невозможно прочитать каталог %1: того, что в нём, в списке нет")
                       .arg(escaped(directory)));
    return catalog.unreadable.isEmpty() ? printed : Failure;
}

QString listHelp()
{
    return Text::tr(
        "Использование: tadata list [--store КАТАЛОГ]\n"
        "\n"
        "Печатает по строке на каждую серию и таймфрейм, через табуляцию: серия, таймфрейм в\n"
        "секундах, число файлов дней, первый и последний день, байты. Управляющие символы в кодах\n"
        "печатаются в виде \\x0a и \\u2028. Каталог, который нельзя прочитать, назван в "
        "стандартном\n"
        "выводе ошибок; код завершения тогда 1, остальное напечатано.\n"
        "\n"
        "  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала\n");
}

} // namespace tadata::cli
