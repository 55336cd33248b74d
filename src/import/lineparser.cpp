// SPDX-License-Identifier: MIT
#include "lineparser.h"

#include "bardescription.h"
#include "rounding.h"

#include <vexdesk/securitydirectory.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BarDescription)
};

// Where the roles stand in a line.
struct RoleColumns
{
    static constexpr size_t roles = static_cast<size_t>(ColumnRole::Ticker) + 1;

    explicit RoleColumns(const QMap<qint32, qint32>& columns)
    {
        byRole.fill(-1);
        for (auto column = columns.begin(); column != columns.end(); ++column) {
            highest = std::max(highest, *column);
            const auto role = static_cast<size_t>(column.key());
            if (role < roles)
                byRole[role] = *column;
        }
    }

    qint32 of(ColumnRole role) const { return byRole[static_cast<size_t>(role)]; }

    std::array<qint32, roles> byRole;
    qint32 highest = 0;
};

// The texts of one line by what they carry. Views into the line and the separator's split of it.
class LineFields final
{
public:
    LineFields(const QString& line, const ImportDetails& details)
        : m_columns(details.columns)
    {
        const qsizetype wanted = m_columns.highest + qsizetype(1);
        if (details.separator.isEmpty())
            splitIntoCharacters(line, details.separator);
        else
            takeFirst(line, details.separator, wanted);
        m_complete = m_fields.size() >= wanted;
    }

    // Whether the line has all the columns that carry something.
    bool complete() const { return m_complete; }

    // A mandatory role without a column reads the first one.
    QStringView text(ColumnRole role) const { return m_fields[std::max(m_columns.of(role), 0)]; }

    // Whether a column carries the role.
    bool has(ColumnRole role) const { return m_columns.of(role) >= 0; }

private:
    // As many of a line's fields as are wanted, in the manner of QString::split. The rest is left
    // alone: a damaged file's line may hold a hundred million separators.
    void takeFirst(QStringView line, const QString& separator, qsizetype wanted)
    {
        qsizetype start = 0;
        while (m_fields.size() < wanted) {
            const qsizetype end = separator.size() == 1 ? line.indexOf(separator.front(), start)
                                                        : line.indexOf(separator, start);
            if (end < 0) {
                m_fields.append(line.mid(start));
                break;
            }
            m_fields.append(line.mid(start, end - start));
            start = end + separator.size();
        }
    }

    void splitIntoCharacters(const QString& line, const QString& noSeparator)
    {
        m_characters = line.split(noSeparator);
        for (const QString& character : std::as_const(m_characters))
            m_fields.append(character);
    }

    RoleColumns m_columns;
    QStringList m_characters; // what the views refer to where there is no separator
    QVarLengthArray<QStringView, 16> m_fields;
    bool m_complete = false;
};

decimal numberOf(QStringView text)
{
    const std::optional<decimal> number = decimal::fromText(text);
    // Which throws what is wrong with it.
    return number ? *number : decimal(text.toString());
}

// Everything that is a number. Throws the message of the first text that is none.
void readNumbers(BarDescription& bar, const LineFields& fields, short decimals)
{
    bar.open = numberOf(fields.text(ColumnRole::Open));
    bar.high = numberOf(fields.text(ColumnRole::High));
    bar.low = numberOf(fields.text(ColumnRole::Low));
    bar.close = numberOf(fields.text(ColumnRole::Close));
    bar.isRounded = false;
    const auto round = [&bar, decimals](decimal& number) {
        bar.isRounded = tadata::roundTo(number, decimals) || bar.isRounded;
    };
    round(bar.open);
    round(bar.high);
    round(bar.low);
    round(bar.close);

    bool isNumber = true;
    bar.volume = 0;
    if (fields.has(ColumnRole::Volume)) {
        const QStringView text = fields.text(ColumnRole::Volume);
        bar.volume = text.toLongLong(&isNumber);
        if (!isNumber)
            throw Text::tr("Некорректное значение поля 'Объём в шт.' (%1)").arg(text);
    }

    // Money is kept with as many decimals as prices: that is how stored files have it.
    bar.value =
        fields.has(ColumnRole::Value) ? numberOf(fields.text(ColumnRole::Value)) : decimal(0, 2);
    round(bar.value);

    bar.openInterest = 0;
    if (fields.has(ColumnRole::OpenInterest)) {
        const QStringView text = fields.text(ColumnRole::OpenInterest);
        bar.openInterest = text.toInt(&isNumber);
        if (!isNumber)
            throw Text::tr("Некорректное значение поля 'Открытый интерес' (%1)").arg(text);
    }
}

} // namespace

bool BarDescription::init(const QString& line, const ImportDetails& details)
{
    valid = false;

    const LineFields fields(line, details);
    if (!fields.complete()) {
        error = Text::tr("Недостаточное количество столбцов");
        return false;
    }

    const QStringView dateText = fields.text(ColumnRole::Date);
    date = tadata::dateOfField(dateText, details.dateFormat);
    if (!date.isValid()) {
        error = Text::tr("Дата '%1' не соответствует заявленному формату '%2'")
                    .arg(dateText, details.dateFormatTitle);
        return false;
    }

    const QStringView timeText = fields.text(ColumnRole::Time);
    time = QTime::fromString(timeText.toString(), details.timeFormat);
    if (!time.isValid()) {
        error = Text::tr("Время '%1' не соответствует заявленному формату '%2'")
                    .arg(timeText, details.timeFormatTitle);
        return false;
    }

    const auto decimals = static_cast<short>(
        SecurityDirectory::i().decimalsById(details.stockId, details.boardId, details.securityId));
    try {
        readNumbers(*this, fields, decimals);
    } catch (const QString& message) {
        error = message;
        return false;
    }
    valid = true;
    return true;
}

// A year of two digits is read into 1900 to 1999; files of such a pattern are younger than that.
QDate tadata::dateOfField(QStringView text, const QString& pattern)
{
    const QDate date = QDate::fromString(text.toString(), pattern);
    const bool hasCentury = pattern.contains(QStringLiteral("yyyy"));
    return date.year() <= 1999 && !hasCentury ? date.addYears(100) : date;
}

std::optional<QString> tadata::fieldOfLine(const QString& line, const ImportDetails& details,
                                           ColumnRole role)
{
    const LineFields fields(line, details);
    return fields.complete() ? std::optional(fields.text(role).toString()) : std::nullopt;
}
