#include "import/importdetails.h"
#include "store/bardescription.h"

#include <vexdesk/securitydirectory.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <algorithm>
#include <optional>

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BarDescription)
};

int highestColumn(const QMap<qint32, qint32>& columns)
{
    qint32 highest = 0;
    for (const qint32 column : columns)
        highest = std::max(highest, column);
    return highest;
}

// As many of a line's fields as are wanted, in the manner of QString::split. The rest is left
// alone: a damaged file's line may hold a hundred million separators, and each field is a string.
QStringList firstFields(const QString& line, const QString& separator, qsizetype wanted)
{
    if (separator.isEmpty())
        return line.split(separator);
    QStringList fields;
    qsizetype start = 0;
    while (fields.size() < wanted) {
        const qsizetype end = line.indexOf(separator, start);
        if (end < 0) {
            fields.append(line.mid(start));
            break;
        }
        fields.append(line.mid(start, end - start));
        start = end + separator.size();
    }
    return fields;
}

// A two-digit year is read into 1900 to 1999; files of such a format are younger than that.
QDate inThisCentury(const QDate& date, const QString& format)
{
    const bool fourDigits = format.contains(QStringLiteral("yyyy"));
    return date.year() <= 1999 && !fourDigits ? date.addYears(100) : date;
}

// The texts of one line by what they carry.
class LineFields final
{
public:
    LineFields(const QString& line, const ImportDetails& details)
        : m_columns(details.columns)
        , m_wanted(highestColumn(m_columns) + qsizetype(1))
        , m_fields(firstFields(line, details.separator, m_wanted))
    {}

    // Whether the line has all the columns that carry something.
    bool complete() const { return m_fields.size() >= m_wanted; }

    // A mandatory role without a column reads the first one.
    const QString& text(ColumnRole role) const { return m_fields.at(column(role).value_or(0)); }

    // Null when no column carries the role.
    const QString* optionalText(ColumnRole role) const
    {
        const std::optional<qint32> index = column(role);
        return index ? &m_fields.at(*index) : nullptr;
    }

private:
    std::optional<qint32> column(ColumnRole role) const
    {
        const auto found = m_columns.constFind(static_cast<qint32>(role));
        return found == m_columns.cend() ? std::nullopt : std::optional(*found);
    }

    const QMap<qint32, qint32>& m_columns;
    qsizetype m_wanted; // fields, counted from the line's start
    QStringList m_fields;
};

// Everything that is a number. Throws the message of the first text that is none.
void readNumbers(BarDescription& bar, const LineFields& fields, short decimals)
{
    bar.open = decimal(fields.text(ColumnRole::Open));
    bar.high = decimal(fields.text(ColumnRole::High));
    bar.low = decimal(fields.text(ColumnRole::Low));
    bar.close = decimal(fields.text(ColumnRole::Close));
    bar.open.setScale(decimals);
    bar.high.setScale(decimals);
    bar.low.setScale(decimals);
    bar.close.setScale(decimals);

    bool ok = true;
    if (const QString* text = fields.optionalText(ColumnRole::Volume)) {
        bar.volume = text->toLongLong(&ok);
        if (!ok)
            throw Text::tr("Некорректное значение поля 'Объём в шт.' (%1)").arg(*text);
    }

    // Money is kept with as many decimals as prices: that is how stored files have it.
    const QString* value = fields.optionalText(ColumnRole::Value);
    bar.value = value ? decimal(*value) : decimal(0, 2);
    bar.value.setScale(decimals);

    if (const QString* text = fields.optionalText(ColumnRole::OpenInterest)) {
        bar.openInterest = text->toInt(&ok);
        if (!ok)
            throw Text::tr("Некорректное значение поля 'Открытый интерес' (%1)").arg(*text);
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

    const QString& dateText = fields.text(ColumnRole::Date);
    date = QDate::fromString(dateText, details.dateFormat);
    if (!date.isValid()) {
        error = Text::tr("Дата '%1' не соответствует заявленному формату '%2'")
                    .arg(dateText, details.dateFormatTitle);
        return false;
    }
    date = inThisCentury(date, details.dateFormat);

    const QString& timeText = fields.text(ColumnRole::Time);
    time = QTime::fromString(timeText, details.timeFormat);
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
