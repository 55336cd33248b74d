// SPDX-License-Identifier: MIT
#include "filewarnings.h"

#include "filebars.h"
#include "lineparser.h"

#include <vexdesk/history/utf8.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QSet>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SafeImport)
};

// Counts the bars whose ticker is none of the series' own security.
class ForeignTickers final
{
public:
    explicit ForeignTickers(const QString& security)
        : m_security(security)
    {}

    void add(const QString& ticker)
    {
        // A ticker's lines mostly stand together.
        if (m_last.isNull() || ticker != m_last) {
            m_last = ticker;
            m_isForeign = isForeign(ticker.trimmed());
            if (m_isForeign)
                m_tickers.insert(ticker.trimmed());
        }
        m_lines += m_isForeign ? 1 : 0;
    }

    qint64 lines() const { return m_lines; }

    QString names() const
    {
        constexpr qsizetype shown = 3;
        QStringList names(m_tickers.cbegin(), m_tickers.cend());
        names.sort();
        const qsizetype more = names.size() - shown;
        const QString text = names.mid(0, shown).join(QStringLiteral(", "));
        return more > 0 ? text + u' ' + Text::tr("и ещё %1").arg(QLocale().toString(more)) : text;
    }

private:
    // Files write codes in any case; a bar that names nobody is of the one that was chosen.
    bool isForeign(const QString& ticker) const
    {
        return !ticker.isEmpty() && ticker.compare(m_security, Qt::CaseInsensitive) != 0;
    }

    QString m_security;
    QSet<QString> m_tickers;
    QString m_last;
    bool m_isForeign = false;
    qint64 m_lines = 0;
};

// What an import without the column would take of a line that is bad with it.
void addWithoutColumn(const FileLine& line, const ImportDetails& taken,
                      const ImportDetails& withTickers, ForeignTickers& found)
{
    const QString text = vexdesk::textFromUtf8(line.text);
    BarDescription bar;
    const auto ticker = fieldOfLine(text, withTickers, ColumnRole::Ticker);
    if (ticker && bar.init(text, taken))
        found.add(*ticker);
}

} // namespace

QString warningOfHeader(const LaidOutFile& file, const ImportChoices& choices)
{
    ImportDetails details = detailsFor(file, choices);
    if (!details.firstLineIsHeader)
        return {};
    details.firstLineIsHeader = false;
    FileBars bars(file.path, details, choices.ways.clock,
                  [&](const QString& ticker, TADataDescription* description) {
                      if (const auto codes = seriesOf(choices, file.path, ticker))
                          setSeries(*description, *codes);
                  });
    FileLine line;
    if (!bars.open() || !bars.next(&line) || line.isBad())
        return {};
    return Text::tr("Первая строка файла — бар, и как заголовок она будет пропущена. Если это не "
                    "названия столбцов, снимите флажок «Заголовок».");
}

bool leavesTickers(const LaidOutFile& file, const ImportChoices& choices)
{
    return file.layout.hasTicker() && !SeriesPattern(choices.series).hasTicker();
}

QString warningOfTickers(const LaidOutFile& file, const ImportChoices& choices,
                         const ProgressSink& progress, const std::atomic<bool>& stop)
{
    const auto codes = seriesOf(choices, file.path, QString());
    if (!leavesTickers(file, choices) || !codes)
        return {};
    const ImportDetails taken = detailsFor(file, choices);
    ImportDetails withTickers = taken;
    constexpr auto ticker = static_cast<qint32>(ColumnRole::Ticker);
    withTickers.columns.insert(ticker, file.layout.details.columns.value(ticker));
    FileBars bars(file.path, withTickers, choices.ways.clock);
    // A file that cannot be read is told by the check.
    if (!bars.open())
        return {};
    bars.leaveNumbers();
    ForeignTickers found(codes->security);
    FileLine line;
    while (!stop.load(std::memory_order_relaxed) && bars.next(&line)) {
        if (line.isBad())
            addWithoutColumn(line, taken, withTickers, found);
        else
            found.add(line.ticker);
        progress(bars.percentDone());
    }
    if (found.lines() == 0)
        return {};
    return Text::tr("Строк с тикером другого инструмента: %1 (%2). Все они попадут в серию %3. "
                    "Чтобы у каждого тикера была своя серия, выберите инструмент «из столбца».")
        .arg(QLocale().toString(found.lines()), found.names(), codes->name());
}

} // namespace tadata
