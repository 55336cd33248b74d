#include "listcommand.h"

#include "series.h"

#include <vexdesk/history/dayfile.h>
#include <vexdesk/history/storecatalog.h>

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
    const QList<vexdesk::StoredSeries> list = vexdesk::listStore(root);
    for (const vexdesk::StoredSeries& series : list) {
        out << series.stockCode << '/' << series.boardCode << '/' << series.securityName << '\t'
            << series.timeframe << '\t' << series.dayFiles << '\t'
            << series.firstDay.toString(Qt::ISODate) << '\t' << series.lastDay.toString(Qt::ISODate)
            << '\t' << series.bytes << '\n';
    }
    return printOutput(text);
}

QString listHelp()
{
    return Text::tr(
        "Использование: tadata list [--store КАТАЛОГ]\n"
        "\n"
        "Печатает по строке на каждую серию и таймфрейм, через табуляцию: серия, таймфрейм в\n"
        "секундах, число файлов дней, первый и последний день, байты.\n"
        "\n"
        "  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала\n");
}

} // namespace tadata::cli
