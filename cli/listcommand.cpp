// SPDX-License-Identifier: MIT
#include "commands.h"
#include "series.h"

#include <vexdesk/history/links.h>
#include <vexdesk/history/storecatalog.h>
#include <vexdesk/history/storepaths.h>

#include <QtCore/QTextStream>

namespace tadata::cli {

namespace {

ExitCode runList(const CommandLine& line)
{
    const std::optional<QString> store = parseStore(line);
    const QDir root = store ? QDir(*store) : vexdesk::storeRoot();
    if (!root.exists())
        return fail(Text::tr("Нет каталога %1").arg(root.path()));

    QString text;
    QTextStream out(&text);
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    for (const vexdesk::StoredSeries& series : catalog.series) {
        // Of which some days were read, and others were not.
        const QString directory =
            vexdesk::seriesPath(root, series.stockCode, series.boardCode, series.securityName);
        if (catalog.unreadable.contains(directory))
            continue;
        out << escaped(series.stockCode) << '/' << escaped(series.boardCode) << '/'
            << escaped(series.securityName) << '\t' << series.timeframe << '\t' << series.dayFiles
            << '\t' << series.firstDay.toString(Qt::ISODate) << '\t'
            << series.lastDay.toString(Qt::ISODate) << '\t' << series.bytes << '\n';
    }
    const ExitCode printed = printOutput(text);
    for (const QString& directory : catalog.unreadable)
        printError(Text::tr("Невозможно прочитать каталог %1: того, что в нём, в списке нет")
                       .arg(escaped(directory)));
    for (const QString& path : catalog.lostLinks)
        printError(vexdesk::lostLink(escaped(path)).message);
    return catalog.unreadable.isEmpty() && catalog.lostLinks.isEmpty() ? printed
                                                                       : ExitCode::Failure;
}

} // namespace

Command listCommand()
{
    return {.name = QStringLiteral("list"),
            .summary = Text::tr("Показать, что хранится."),
            .description = Text::tr(
                "Печатает по строке на каждую серию и таймфрейм, через табуляцию: серия, "
                "таймфрейм в секундах, число файлов дней, первый и последний день, байты. "
                "Управляющие символы в кодах печатаются в виде \\x0a и \\u2028. Каталог, который "
                "нельзя прочитать, и ссылка, которая никуда не ведёт, названы в стандартном "
                "выводе ошибок; код завершения тогда 1, остальное напечатано."),
            .options = {storeOption()},
            .run = runList};
}

} // namespace tadata::cli
