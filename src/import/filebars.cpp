// SPDX-License-Identifier: MIT
#include "filebars.h"

#include "charactersearch.h"
#include "importfailures.h"
#include "lineparser.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>

#include <utility>

namespace tadata {

using vexdesk::Outcome;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(FileBars)
};

// As the text streams of Qt read, so that the progress comes at the same moments.
constexpr qsizetype blockSize = 16384;

void refuse(FileLine* line, const QString& why)
{
    line->bar.valid = false;
    line->bar.error = why;
}

} // namespace

// A text that is no UTF-8 has replacement characters, and so might stand for several codes. The
// series' lock has the name and five characters more, which is what file systems take.
bool isDirectoryName(const QString& code)
{
    constexpr qsizetype longestName = 250;
    return code.toUtf8().size() <= longestName && !code.isEmpty() && code != QLatin1String(".") &&
           code != QLatin1String("..") && !code.contains(u'/') && !code.contains(QChar::Null) &&
           !code.contains(QChar::ReplacementCharacter);
}

FileBars::FileBars(const QString& path, const ImportDetails& details, const FileClock& clock,
                   SeriesOfTicker describe)
    : m_lines(path, vexdesk::DayFileLines::unlimited, blockSize)
    , m_details(details)
    , m_describe(std::move(describe))
    , m_parser(m_details)
    , m_hasTicker(details.columns.contains(static_cast<qint32>(ColumnRole::Ticker)))
{
    if (!clock.changesNothing())
        m_clock.emplace(clock, details.timeframe);
}

bool FileBars::next(FileLine* line)
{
    if (m_number == 0)
        skipHeader();
    if (!m_lines.nextBytes(&line->text))
        return false;
    line->number = ++m_number;
    line->isBlank = false;
    if (!line->bar.error.isNull())
        line->bar.error = QString();
    if (m_hasTicker)
        parseOfTicker(line);
    else
        parse(line);
    line->writtenDate = line->bar.date;
    if (m_clock && line->bar.valid)
        changeClock(line);
    return true;
}

void FileBars::skipHeader()
{
    QByteArrayView header;
    if (m_details.firstLineIsHeader && m_lines.nextBytes(&header))
        ++m_number;
}

void FileBars::parse(FileLine* line)
{
    if (!parsePlainly(line))
        parseSlowly(line);
}

bool FileBars::parsePlainly(FileLine* line)
{
    line->hasNumbers = !m_leavesNumbers;
    return m_leavesNumbers ? m_parser.check(line->text, &line->bar)
                           : m_parser.parse(line->text, &line->bar);
}

void FileBars::readNumbers(FileLine* line)
{
    if (!line->hasNumbers)
        line->hasNumbers = m_parser.readNumbers(&line->bar);
}

void FileBars::parseSlowly(FileLine* line)
{
    line->hasNumbers = true;
    line->bar = BarDescription();
    if (!line->bar.init(vexdesk::textFromUtf8(line->text), m_details))
        line->isBlank = isBlank(line->text);
}

// The ticker says with how many decimals the line is read.
void FileBars::parseOfTicker(FileLine* line)
{
    if (!parsePlainly(line)) {
        const QString text = vexdesk::textFromUtf8(line->text);
        if (const auto code = fieldOfLine(text, m_details, ColumnRole::Ticker))
            takeTicker(code->toUtf8());
        parseSlowly(line);
    } else if (takeTicker(m_parser.field(ColumnRole::Ticker))) {
        parse(line);
    }
    line->ticker = m_ticker;
    if (line->bar.valid && !m_isTickerName)
        refuse(line, Text::tr("Код '%1' не может быть именем каталога").arg(m_ticker));
}

// Whether it is another one than that of the line before.
bool FileBars::takeTicker(QByteArrayView code)
{
    if (code == m_tickerCode && !m_tickerCode.isNull())
        return false;
    m_tickerCode = code.toByteArray();
    m_ticker = vexdesk::textFromUtf8(code);
    m_isTickerName = isDirectoryName(m_ticker);
    if (m_isTickerName && m_describe)
        m_describe(m_ticker, &m_details);
    return true;
}

void FileBars::changeClock(FileLine* line)
{
    if (const Outcome changed = m_clock->change(&line->bar.date, &line->bar.time); !changed)
        refuse(line, changed.message());
}

// The position runs ahead of the line, since the file is read in blocks; and a file may have grown
// or have no size of its own.
int FileBars::percentDone() const
{
    const qint64 position = m_lines.position();
    const qint64 size = m_lines.size();
    return position < size ? static_cast<int>(double(position) / double(size) * 100.0) : 100;
}

Outcome FileBars::outcome() const
{
    const Outcome& read = m_lines.outcome();
    return read ? Outcome() : cannotRead(path(), read.message());
}

} // namespace tadata
