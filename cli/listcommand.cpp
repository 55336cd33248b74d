#include "listcommand.h"

#include "store/dayfile.h"
#include "store/storecatalog.h"

#include <QtCore/QTextStream>

#include <cstdio>

namespace tadata::cli {

ExitCode runList(const QStringList& words)
{
    const CommandLine line(words, {{"store"}});
    if (!line.positional().isEmpty())
        throw UsageError{Text::tr("лишнее слово «%1»").arg(line.positional().first())};

    const std::optional<QString> store = line.value("store");
    const QDir root = store ? QDir(*store) : storeRoot();
    if (!root.exists()) {
        printError(Text::tr("Нет каталога %1").arg(root.path()));
        return Failure;
    }

    QTextStream out(stdout);
    const QList<StoredSeries> list = listStore(root);
    for (const StoredSeries& series : list) {
        out << series.stockCode << '/' << series.boardCode << '/' << series.securityName << '\t'
            << series.timeframe << '\t' << series.dayFiles << '\t'
            << series.firstDay.toString(Qt::ISODate) << '\t' << series.lastDay.toString(Qt::ISODate)
            << '\t' << series.bytes << '\n';
    }
    out.flush();
    if (out.status() != QTextStream::Ok) {
        printError(Text::tr("Невозможно записать в стандартный вывод"));
        return Failure;
    }
    return Success;
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
