// SPDX-License-Identifier: MIT
#include "storework.h"

#include "restoresettings.h"

#include <vexdesk/history/storepaths.h>

#include <limits>

namespace tadata::cli {

namespace {

constexpr int anyNumber = std::numeric_limits<int>::max();
constexpr int longestWait = 1'000'000;

} // namespace

QList<Option> storeJobOptions()
{
    return {
        {.name = QStringLiteral("wait"),
         .value = Text::tr("СЕКУНДЫ"),
         .meaning = Text::tr("Сколько ждать, пока серию меняет другая программа."),
         .takes = Text::tr("число от 0 до %1").arg(longestWait),
         .fallback = QString::number(vexdesk::usualWait.count())},
        {.name = QStringLiteral("keep"),
         .value = Text::tr("ЧИСЛО"),
         .meaning = Text::tr("Сколько точек возврата остаётся; 0 — не делать их. Без него — как "
                             "в настройках терминала, обычно 20."),
         .takes = Text::tr("целое число, не меньше 0")},
        {.name = QStringLiteral("keep-megabytes"),
         .value = Text::tr("ЧИСЛО"),
         .meaning = Text::tr("Сколько мегабайт точек возврата остаётся. Без него — как в "
                             "настройках терминала, обычно 1024."),
         .takes = Text::tr("целое число, не меньше 0")}};
}

vexdesk::StoreJobSettings storeJobSettings(const CommandLine& line, const QString& by,
                                           const QStringList& source)
{
    vexdesk::StoreJobSettings settings{.by = by, .source = source};
    const auto wait = line.number("wait", 0, longestWait);
    const auto keep = line.number("keep", 0, anyNumber);
    const auto megabytes = line.number("keep-megabytes", 0, anyNumber);
    settings.limits = restoreLimits();
    settings.wait = std::chrono::seconds(*wait);
    settings.limits.keep = keep.value_or(settings.limits.keep);
    if (megabytes)
        settings.limits.bytes = fromMegabytes(*megabytes);
    return settings;
}

QDir storeRootOf(const CommandLine& line)
{
    const std::optional<QString> store = parseStore(line);
    return store ? QDir(*store) : vexdesk::storePlace();
}

SeriesCodes seriesWord(const CommandLine& line, qsizetype index)
{
    const QString word = line.positional().at(index);
    const std::optional<SeriesCodes> codes = seriesFrom(word);
    if (!codes || hasUnprintable(word))
        throw UsageError{
            Text::tr("неверная серия «%1»; нужно: %2").arg(escaped(word), seriesOption().takes)};
    return *codes;
}

QDir seriesDirIn(const QDir& root, const SeriesCodes& codes)
{
    return QDir(vexdesk::seriesPath(root, codes.stock, codes.board, codes.security));
}

ExitCode tellOutcomes(const vexdesk::Outcome& work, const vexdesk::Outcome& end)
{
    for (const vexdesk::Outcome& outcome : {work, end}) {
        if (!outcome)
            printError(outcome.message());
    }
    return work && end ? ExitCode::Success : ExitCode::Failure;
}

} // namespace tadata::cli
