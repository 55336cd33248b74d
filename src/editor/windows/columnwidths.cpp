// SPDX-License-Identifier: MIT
#include "columnwidths.h"

#include "editortadatamodel.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QStringListModel>
#include <QtGui/QFontMetricsF>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyleOptionViewItem>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <array>
#include <cmath>

namespace tadata {

namespace {

constexpr int asciiCount = 128;

// How wide texts are in a font.
class TextWidths final
{
public:
    explicit TextWidths(const QFont& font)
        : m_metrics(font)
    {
        for (int code = 0; code < asciiCount; ++code)
            m_ascii[code] = m_metrics.horizontalAdvance(QChar(code));
    }

    qreal of(const QString& text) const
    {
        qreal width = 0;
        for (const QChar character : text) {
            if (character.unicode() >= asciiCount)
                return m_metrics.horizontalAdvance(text);
            width += m_ascii[character.unicode()];
        }
        return width;
    }
    qreal ofWidest(QStringView characters) const
    {
        qreal width = 0;
        for (const QChar character : characters)
            width = std::max(width, m_metrics.horizontalAdvance(character));
        return width;
    }

private:
    QFontMetricsF m_metrics;
    std::array<qreal, asciiCount> m_ascii{};
};

// Of a date and time in the short notation, with the widest digit in the place of each. Months may
// have names, and the halves of the day too.
qreal widestTime(const TextWidths& widths)
{
    constexpr int months = 12;
    qreal widest = 0;
    for (int month = 1; month <= months; ++month) {
        for (const int hour : {10, 22}) {
            const QDateTime time(QDate(2028, month, 28), QTime(hour, 58), Qt::UTC);
            const QString text = QLocale().toString(time, QLocale::ShortFormat);
            qreal width = 0;
            QString rest;
            for (const QChar character : text) {
                if (!character.isDigit()) {
                    rest.append(character);
                    continue;
                }
                const auto zero =
                    static_cast<char16_t>(character.unicode() - character.digitValue());
                QString digits;
                for (char16_t digit = zero; digit < zero + 10; ++digit)
                    digits.append(QChar(digit));
                width += widths.ofWidest(digits);
            }
            widest = std::max(widest, width + widths.of(rest));
        }
    }
    return widest;
}

// What the table's delegate puts around a text.
qreal margins(const QTreeView& table, const TextWidths& widths)
{
    const QString text = QStringLiteral("0");
    const QStringListModel sample({text});
    QStyleOptionViewItem option;
    option.initFrom(&table);
    option.widget = &table;
    option.font = table.font();
    return table.itemDelegate()->sizeHint(option, sample.index(0)).width() -
           std::floor(widths.of(text));
}

qreal widestField(const EditorTADataModel& model, vexdesk::RecordField field,
                  const TextWidths& widths)
{
    qreal widest = static_cast<qreal>(model.fieldLengths().longest(field)) *
                   widths.ofWidest(u"-./0123456789:");
    for (const int row : model.rowsOfText())
        widest = std::max(widest, widths.of(model.index(row, field).data().toString()));
    return widest;
}

} // namespace

void fitColumns(QTreeView& table, const EditorTADataModel& model)
{
    const TextWidths widths(table.font());
    const qreal around = margins(table, widths);
    QHeaderView& header = *table.header();
    for (int column = 0; column < model.columnCount(); ++column) {
        const auto field = static_cast<vexdesk::RecordField>(column);
        const qreal text =
            field == vexdesk::TimeField ? widestTime(widths) : widestField(model, field, widths);
        const qreal most = header.maximumSectionSize();
        const int width = static_cast<int>(std::min(most, std::ceil(text + around)));
        header.resizeSection(column, std::max(width, header.sectionSizeHint(column)));
    }
}

} // namespace tadata
