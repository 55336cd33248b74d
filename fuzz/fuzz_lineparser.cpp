// SPDX-License-Identifier: MIT
// BarDescription::init: whatever a line of a text file holds, it becomes a whole bar or a message;
// and what the parser of almost all lines takes, it takes for the same bar.
//
// The first five bytes of an input choose the settings, counted from the digit "0" so that an input
// can be read and written by hand: separator, date format, time format, decimals (0 to 9, then ":"
// to "?"), and columns. The rest is the line, in UTF-8.

#include "target.h"

#include "bardescription.h"
#include "importdetails.h"
#include "plainlineparser.h"
#include "textformats.h"

#include <vexdesk/history/recordline.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QTextStream>

#include <array>
#include <limits>

namespace {

using fuzz::require;

using Columns = QMap<qint32, qint32>;

// Every number of decimals has a security, whose id is that number and one more: ids are positive.
constexpr int stockId = 1;
constexpr int boardId = 1;

void installSecurities()
{
    const QString code = QStringLiteral("X");
    vexdesk::ReferenceData data;
    data.stocks.append({stockId, code, QString()});
    data.boards.append({code, boardId, code, QString(), 0});
    for (int decimals = 0; decimals <= vexdesk::ReferenceData::maxDecimals; ++decimals) {
        data.securities.append(
            {code, code, decimals + 1, QString::number(decimals), QString(), decimals});
    }
    vexdesk::ReferenceData::install(data);
}

qsizetype choice(std::uint8_t byte, qsizetype count)
{
    return static_cast<std::uint8_t>(byte - '0') % count;
}

QList<Columns> columnChoices()
{
    const Columns prices{{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}};
    Columns volume = prices;
    volume.insert(7, 6);
    Columns everything = volume;
    everything.insert(8, 7);
    everything.insert(9, 8);
    const Columns backwards{{1, 8}, {2, 7}, {3, 6}, {4, 5}, {5, 4}, {6, 3}, {7, 2}, {8, 1}, {9, 0}};
    const Columns withGaps{{1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}, {6, 7}, {9, 12}};
    return {prices, volume, everything, backwards, withGaps, Columns()};
}

// Users may write patterns of their own.
QList<tadata::TextFormat> withOthers(QList<tadata::TextFormat> formats, const QStringList& patterns)
{
    for (const QString& pattern : patterns)
        formats.append({pattern, pattern});
    return formats;
}

ImportDetails detailsOf(const std::uint8_t* header)
{
    static const QStringList separators{
        QStringLiteral(","),  QStringLiteral(";"),  QStringLiteral(" "), QStringLiteral("\t"),
        QStringLiteral("::"), QStringLiteral(",,"), QStringLiteral("ж"), QString()};
    static const QList<tadata::TextFormat> dates = withOthers(
        tadata::dateFormats(), {QStringLiteral("d.M.yyyy"), QStringLiteral("yy-M-d"),
                                QStringLiteral("MMddyy"), QStringLiteral("yyyyMMddyyyy")});
    static const QList<tadata::TextFormat> times =
        withOthers(tadata::timeFormats(),
                   {QStringLiteral("h:m"), QStringLiteral("hmm"), QStringLiteral("hh:mm ap")});
    static const QList<Columns> columns = columnChoices();

    ImportDetails details;
    details.stockId = stockId;
    details.boardId = boardId;
    details.separator = separators.at(choice(header[0], separators.size()));
    const tadata::TextFormat& date = dates.at(choice(header[1], dates.size()));
    details.dateFormat = date.pattern;
    details.dateFormatTitle = date.title;
    const tadata::TextFormat& time = times.at(choice(header[2], times.size()));
    details.timeFormat = time.pattern;
    details.timeFormatTitle = time.title;
    details.securityId = 1 + choice(header[3], vexdesk::ReferenceData::maxDecimals + 1);
    details.columns = columns.at(choice(header[4], columns.size()));
    return details;
}

bool sameValues(const BarDescription& left, const BarDescription& right)
{
    const auto same = [](const decimal& one, const decimal& other) {
        return one == other && one.scale() == other.scale();
    };
    return left.date == right.date && left.time == right.time && same(left.open, right.open) &&
           same(left.high, right.high) && same(left.low, right.low) &&
           same(left.close, right.close) && left.volume == right.volume &&
           same(left.value, right.value) && left.openInterest == right.openInterest;
}

// The line read once more in the plainest way. False when any of it is wrong.
bool readPlainly(const QString& line, const ImportDetails& details, BarDescription& bar)
{
    const QStringList fields = line.split(details.separator);
    for (const qint32 column : details.columns) {
        if (column >= fields.size())
            return false;
    }
    const auto text = [&](ColumnRole role) {
        return fields.at(details.columns.value(static_cast<qint32>(role), 0));
    };
    const auto has = [&](ColumnRole role) {
        return details.columns.contains(static_cast<qint32>(role));
    };

    bar.date = QDate::fromString(text(ColumnRole::Date), details.dateFormat);
    bar.time = QTime::fromString(text(ColumnRole::Time), details.timeFormat);
    if (!bar.date.isValid() || !bar.time.isValid())
        return false;
    if (!details.dateFormat.contains(QStringLiteral("yyyy")) && bar.date.year() < 2000)
        bar.date = bar.date.addYears(100);

    const auto decimals = static_cast<short>(details.securityId - 1);
    const auto number = [decimals](const QString& from) {
        decimal result(from);
        result.setScale(decimals);
        return result;
    };
    bool volumeIsNumber = true;
    bool interestIsNumber = true;
    try {
        bar.open = number(text(ColumnRole::Open));
        bar.high = number(text(ColumnRole::High));
        bar.low = number(text(ColumnRole::Low));
        bar.close = number(text(ColumnRole::Close));
        bar.value = number(has(ColumnRole::Value) ? text(ColumnRole::Value) : QStringLiteral("0"));
    } catch (const QString&) {
        return false;
    }
    if (has(ColumnRole::Volume))
        bar.volume = text(ColumnRole::Volume).toLongLong(&volumeIsNumber);
    if (has(ColumnRole::OpenInterest))
        bar.openInterest = text(ColumnRole::OpenInterest).toInt(&interestIsNumber);
    return volumeIsNumber && interestIsNumber;
}

// The second time it knows the date of the line before.
void checkQuickParser(QByteArrayView line, const ImportDetails& details,
                      const BarDescription* plain)
{
    tadata::PlainLineParser parser(details);
    for (int time = 0; time < 2; ++time) {
        BarDescription quick;
        if (!parser.parse(line, &quick))
            return;
        require(plain, "the quick parser takes no line that is refused");
        require(quick.valid, "a bar of the quick parser is valid");
        require(sameValues(quick, *plain), "the quick parser reads a line as it reads plainly");
    }
}

void checkAccepted(const BarDescription& bar, const ImportDetails& details)
{
    require(bar.valid, "an accepted bar is valid");
    require(bar.error.isEmpty(), "an accepted bar has no error");
    require(bar.date.isValid(), "an accepted bar has a date");
    require(bar.time.isValid(), "an accepted bar has a time");
    require(details.dateFormat.contains(QStringLiteral("yyyy")) ||
                (bar.date.year() >= 2000 && bar.date.year() <= 2099),
            "two digits of a year are of this century");
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close, bar.value}) {
        require(number.scale() == details.securityId - 1,
                "prices and money have the security's decimals");
    }
}

// The parser of plain lines takes some of those that init() takes, to the same bars, whether it
// reads their numbers at once or later.
void checkPlainParser(const QByteArray& line, const ImportDetails& details,
                      const BarDescription& bar)
{
    tadata::PlainLineParser parser(details);
    BarDescription fast;
    const bool isPlain = parser.parse(line, &fast);
    require(!isPlain || (bar.valid && sameValues(fast, bar)), "a plain line is the same bar");
    BarDescription checked;
    require(parser.check(line, &checked) == isPlain, "a line is checked when it can be read");
    require(!isPlain || (parser.readNumbers(&checked) && sameValues(checked, bar)),
            "numbers that are read later are the same");
}

void checkRecordLine(const BarDescription& bar)
{
    QString record;
    QTextStream stream(&record);
    stream << bar;
    stream.flush();
    require(record.count(u'\n') == 1 && record.endsWith(u'\n'), "a bar is written as one line");
    record.chop(1);
    require(vexdesk::splitRecordLine(record.toUtf8()).has_value(),
            "a record line has eight fields");

    const BarDescription read = tadata::barFromRecordLine(record.toUtf8(), bar.date);
    BarDescription expected = bar;
    // Readers take the volume as a 32-bit number.
    if (bar.volume < std::numeric_limits<qint32>::min() ||
        bar.volume > std::numeric_limits<qint32>::max())
        expected.volume = 0;
    require(sameValues(read, expected), "a record line reads back as it was written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool installed = (installSecurities(), true);
    Q_UNUSED(installed)

    constexpr std::size_t headerSize = 5;
    if (size < headerSize)
        return 0;
    const ImportDetails details = detailsOf(data);
    const QByteArrayView bytes(data + headerSize, static_cast<qsizetype>(size - headerSize));
    const QString line = QString::fromUtf8(bytes);

    BarDescription bar;
    bool accepted = false;
    try {
        accepted = bar.init(line, details);
    } catch (...) {
        require(false, "init throws nothing");
    }

    checkPlainParser(line.toUtf8(), details, bar);
    BarDescription plain;
    require(accepted == readPlainly(line, details, plain),
            "a line is accepted when all of it reads plainly");
    checkQuickParser(bytes, details, accepted ? &plain : nullptr);
    if (!accepted) {
        require(!bar.valid, "a refused bar is not valid");
        require(!bar.error.isEmpty(), "a refused bar says why");
        return 0;
    }
    checkAccepted(bar, details);
    require(sameValues(bar, plain), "a line reads as it reads plainly");
    checkRecordLine(bar);
    return 0;
}
