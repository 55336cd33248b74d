// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

/// Which part of the slots of a time axis the chart shows. Any thread.
namespace vexdesk {

/// Positions on a time axis, counted in slots: one slot holds one candle, the first is from 0 to 1.
struct SlotRange
{
    double begin = 0;
    double end = 0;

    double length() const { return end - begin; }
    double middle() const { return (begin + end) / 2; }
    bool operator==(const SlotRange&) const = default;
};

/// How far the view can be moved and zoomed over the slots that there are.
class SlotLimits final
{
public:
    SlotLimits() = default;
    /// For so many slots, of which the shortest view shows so many. Everything is so many at least.
    explicit SlotLimits(qint64 slotCount, double fewest = usualFewest, double fewestOfAll = 0);

    static constexpr double usualFewest = 10;

    /// Everything, with a margin on both sides.
    const SlotRange& all() const { return m_all; }
    /// Between which positions a view of this length can be moved: the slots with a margin that is
    /// a share of the view.
    SlotRange reach(double length) const;

    /// The nearest range that may be shown: neither shorter than the shortest nor longer than
    /// everything, and within it.
    SlotRange fitted(const SlotRange& range) const;
    SlotRange moved(const SlotRange& range, double distance) const;

private:
    double m_slots = 0;
    double m_fewest = usualFewest;
    SlotRange m_all;
};

} // namespace vexdesk
