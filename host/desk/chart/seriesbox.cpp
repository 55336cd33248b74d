// SPDX-License-Identifier: MIT
#include "desk/chart/seriesbox.h"

#include <vexdesk/boarddirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QSignalBlocker>

#include <algorithm>

namespace vexdesk {

namespace {

SeriesKey keyOf(const StoredSeries& stored)
{
    return {stored.stockCode, stored.boardCode, stored.securityName, stored.timeframe};
}

QString titleOf(const SeriesKey& key, const QList<Security>& securities)
{
    const auto found =
        std::find_if(securities.begin(), securities.end(), [&key](const Security& security) {
            return security.stockCode == key.stockCode && security.boardCode == key.boardCode &&
                   security.code == key.securityName;
        });
    return found == securities.end() ? QString() : found->title;
}

// The text too: a narrow box shows its begin.
QString toolTipOf(const QString& text, const SeriesKey& key)
{
    QStringList lines{text};
    for (const QString& name : {BoardDirectory::i().nameByCode(key.stockCode, key.boardCode),
                                StockDirectory::i().nameByCode(key.stockCode)}) {
        if (!name.isEmpty())
            lines.append(name);
    }
    return lines.join(u'\n');
}

} // namespace

SeriesBox::SeriesBox(QWidget* parent)
    : QComboBox(parent)
{
    constexpr int letters = 18; // that are seen however narrow the window
    setPlaceholderText(tr("нет сохранённых серий"));
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(letters);
    setIconSize(QSize(0, 0));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SeriesBox::setStored(const QList<StoredSeries>& stored)
{
    struct Item
    {
        QString text;
        SeriesKey key;
    };
    m_stored = stored;
    QList<Item> items;
    const QList<Security> securities = ReferenceData::installed().securities;
    for (const StoredSeries& one : stored) {
        const SeriesKey key = keyOf(one);
        // The timeframes of a series stand one after the other.
        if (!items.isEmpty() && items.constLast().key.isSameSeriesAs(key))
            continue;
        QString text = tr("%1 — %2 — %3").arg(key.securityName, key.boardCode, key.stockCode);
        const QString title = titleOf(key, securities);
        if (!title.isEmpty())
            text = tr("%1 (%2)").arg(text, title);
        items.append({text, key});
    }
    std::stable_sort(items.begin(), items.end(), [](const Item& left, const Item& right) {
        return left.text.localeAwareCompare(right.text) < 0;
    });

    // An open list is not made anew for nothing.
    bool isSame = count() == items.size();
    for (int i = 0; isSame && i < count(); ++i)
        isSame = itemData(i).value<SeriesKey>() == items.at(i).key;
    if (isSame)
        return;
    const std::optional<SeriesKey> chosen = series();
    const QSignalBlocker quiet(this);
    clear();
    for (const Item& item : std::as_const(items)) {
        addItem(item.text, QVariant::fromValue(item.key));
        setItemData(count() - 1, toolTipOf(item.text, item.key), Qt::ToolTipRole);
    }
    setCurrentIndex(-1);
    if (chosen)
        setSeries(*chosen);
}

std::optional<SeriesKey> SeriesBox::series() const
{
    if (currentIndex() < 0)
        return std::nullopt;
    return currentData().value<SeriesKey>();
}

bool SeriesBox::setSeries(const SeriesKey& key)
{
    for (int i = 0; i < count(); ++i) {
        if (!itemData(i).value<SeriesKey>().isSameSeriesAs(key))
            continue;
        const QSignalBlocker quiet(this);
        setCurrentIndex(i);
        setToolTip(itemData(i, Qt::ToolTipRole).toString());
        return true;
    }
    return false;
}

QList<int> SeriesBox::timeframesOf(const SeriesKey& key) const
{
    QList<int> timeframes;
    for (const StoredSeries& one : m_stored) {
        if (keyOf(one).isSameSeriesAs(key))
            timeframes.prepend(one.timeframe);
    }
    return timeframes;
}

void SeriesBox::showPopup()
{
    Q_EMIT aboutToOpen();
    QComboBox::showPopup();
}

} // namespace vexdesk
