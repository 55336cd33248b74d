// SPDX-License-Identifier: MIT
#include "dealsfile.h"

#include "commandline.h"

#include <vexdesk/history/dayfilelines.h>
#include <vexdesk/history/utf8.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QList>

#include <mutex>
#include <optional>

namespace tadata::cli {

namespace {

using vexdesk::Deal;
using vexdesk::Failure;
using vexdesk::Outcome;

enum Column { Moment, Price, Quantity, OpenInterest, Value, ColumnCount };
constexpr int mandatoryColumns = OpenInterest;

// Thrown for a line that is no deal.
struct LineError
{
    QString what;
};

using Fields = QList<QStringView>;

std::optional<qint64> integerAt(const Fields& fields, Column column)
{
    const QStringView text = fields.value(column);
    if (text.isEmpty())
        return std::nullopt;
    const std::optional<qint64> number = integerFrom(text);
    if (!number)
        throw LineError{Text::tr("«%1» — не целое число").arg(text)};
    return number;
}

std::optional<decimal> decimalAt(const Fields& fields, Column column)
{
    const QStringView text = fields.value(column);
    if (text.isEmpty())
        return std::nullopt;
    const std::optional<decimal> number = decimal::fromText(text);
    if (!number)
        throw LineError{Text::tr("«%1» — не число").arg(text)};
    return number;
}

Deal parseDeal(const QString& line, const SeriesIds& series)
{
    const Fields fields = QStringView(line).split(u',');
    if (fields.size() < mandatoryColumns || fields.size() > ColumnCount)
        throw LineError{Text::tr("полей %1, а нужно от %2 до %3")
                            .arg(QString::number(fields.size()), QString::number(mandatoryColumns),
                                 QString::number(int(ColumnCount)))};
    Deal deal;
    deal.stockId = series.stock;
    deal.boardId = series.board;
    deal.securityId = series.security;
    if (const auto moment = integerAt(fields, Moment))
        deal.moment = datetime(*moment);
    deal.price = decimalAt(fields, Price);
    deal.quantity = integerAt(fields, Quantity);
    deal.openInterest = integerAt(fields, OpenInterest);
    deal.value = decimalAt(fields, Value);
    return deal;
}

// A file that begins with a deal would lose it without a word.
bool isHeading(const QString& line)
{
    return !integerFrom(QStringView(line).split(u',').first());
}

} // namespace

Outcome loadDeals(const QString& path, const SeriesIds& series, vexdesk::Database& database)
{
    vexdesk::DayFileLines lines(path, vexdesk::DayFileLines::unlimited);
    if (!lines.open())
        return Failure{Text::tr("Невозможно открыть файл %1").arg(path)};
    QByteArrayView line;
    const bool hasLine = lines.nextBytes(&line);
    if (hasLine && !isHeading(vexdesk::textFromUtf8(line)))
        return Failure{Text::tr("%1: первая строка — сделка, а должна быть заголовком").arg(path)};

    const vexdesk::DealWriter writer(vexdesk::dealsTable(database));
    const std::lock_guard lock(*writer.table());
    qint64 number = 1;
    try {
        while (lines.nextBytes(&line)) {
            ++number;
            if (!line.empty())
                writer.table()->insert(writer.row(parseDeal(vexdesk::textFromUtf8(line), series)));
        }
    } catch (const LineError& error) {
        return Failure{
            Text::tr("%1, строка %2: %3").arg(path, QString::number(number), error.what)};
    }
    if (!lines.outcome())
        return Failure{
            Text::tr("Невозможно прочитать файл %1: %2").arg(path, lines.outcome().message())};
    return {};
}

} // namespace tadata::cli
