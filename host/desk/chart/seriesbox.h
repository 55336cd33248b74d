// SPDX-License-Identifier: MIT
#pragma once

#include "desk/chart/seriesfeed.h"

#include <vexdesk/history/storecatalog.h>

#include <QtWidgets/QComboBox>

namespace vexdesk {

/// Lets the user choose one of the stored series: "VEGA — MAIN — NORD" with the security's title.
/// What is stored is given by the owner, who is asked for it when the list opens.
class SeriesBox final : public QComboBox
{
    Q_OBJECT

public:
    explicit SeriesBox(QWidget* parent = nullptr);

    /// Offers these series, sorted by their texts. The chosen one stays chosen when it is among
    /// them; nothing is signalled.
    void setStored(const QList<StoredSeries>& stored);

    /// The chosen series with the first of its timeframes; no value when there is none to choose.
    std::optional<SeriesKey> series() const;
    /// Chooses a series, whatever its timeframe; false when it is not offered. Nothing is
    /// signalled.
    bool setSeries(const SeriesKey& key);
    /// The timeframes in which a series is stored, the longest first.
    QList<int> timeframesOf(const SeriesKey& key) const;

    void showPopup() override;

Q_SIGNALS:
    void aboutToOpen();

private:
    QList<StoredSeries> m_stored;
};

} // namespace vexdesk
