// SPDX-License-Identifier: MIT
#include "previewlines.h"

#include "bardescription.h"
#include "linefault.h"
#include "lineparser.h"

#include <QtCore/QDate>
#include <QtCore/QTime>

namespace tadata {

namespace {

// Fields beyond the last column stay together in it.
QStringList fieldsOf(const ShownLine& line, const QString& separator)
{
    QStringList fields;
    if (separator.isEmpty()) {
        fields.append(line.text);
    } else {
        qsizetype begin = 0;
        for (qsizetype end = 0; fields.size() < mostPreviewColumns - 1 &&
                                (end = line.text.indexOf(separator, begin)) >= 0;
             begin = end + separator.size())
            fields.append(line.text.mid(begin, end - begin));
        fields.append(line.text.mid(begin));
    }
    if (line.isCut)
        fields.last() += u'…';
    return fields;
}

// One import would say the same of a line.
class LineJudge final
{
public:
    explicit LineJudge(const PreviewLayout& layout)
        : m_layout(layout)
        , m_details(layout.details)
        , m_clock(layout.clock, layout.details.timeframe)
    {}

    void judge(const QString& text, PreviewLine* line)
    {
        BarDescription bar;
        if (!bar.init(text, m_details)) {
            line->fault = bar.error;
            line->faultColumn = columnOf(faultOf(text, m_details).role);
        } else if (const auto changed = m_clock.change(&bar.date, &bar.time); !changed) {
            line->fault = changed.message();
            line->faultColumn = columnOf(ColumnRole::Time);
        } else {
            judgeTicker(text, line);
        }
    }

private:
    void judgeTicker(const QString& text, PreviewLine* line) const
    {
        const int column = columnOf(ColumnRole::Ticker);
        if (column < 0 || !m_layout.faultOfTicker)
            return;
        const auto ticker = fieldOfLine(text, m_details, ColumnRole::Ticker);
        line->fault = m_layout.faultOfTicker(ticker.value_or(QString()));
        line->faultColumn = line->fault.isNull() ? -1 : column;
    }

    int columnOf(ColumnRole role) const
    {
        return m_details.columns.value(static_cast<qint32>(role), -1);
    }

    const PreviewLayout& m_layout;
    const ImportDetails& m_details;
    ClockChange m_clock;
};

} // namespace

std::vector<PreviewLine> previewLines(const std::vector<ShownLine>& lines, qint64 first,
                                      const PreviewLayout& layout)
{
    std::vector<PreviewLine> shown;
    LineJudge judge(layout);
    qint64 number = first;
    for (const ShownLine& line : lines) {
        PreviewLine preview{.fields = fieldsOf(line, layout.details.separator)};
        preview.isHeader = number++ == 0 && layout.details.firstLineIsHeader;
        // The end of a long line is not here.
        if (layout.isComplete && !preview.isHeader && !line.isCut)
            judge.judge(line.text, &preview);
        shown.push_back(std::move(preview));
    }
    return shown;
}

} // namespace tadata
