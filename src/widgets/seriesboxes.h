// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockselectorbox.h>

class QLabel;
struct TADataDescription;

namespace tadata {

/// The three boxes in which the user of a window chooses a series. They are the window's.
/// User-interface thread.
struct SeriesBoxes
{
    StockSelectorBox& stock;
    BoardSelectorBox& board;
    SecuritySelectorBox& security;

    /// Fills them with what has a directory in the store.
    void offerStored() const;

    /// Shows the label of each box in red in which no code is chosen; true when there is none.
    bool markMissing(QLabel* stockLabel, QLabel* boardLabel, QLabel* securityLabel) const;

    /// Enters the chosen series.
    void describe(TADataDescription& series) const;

    /// Calls the slot, or the signal, of the receiver whenever another series is chosen.
    template <typename Receiver, typename Slot>
    void onChange(Receiver* receiver, Slot slot) const
    {
        QObject::connect(&stock, &StockSelectorBox::stockCodeChanged, receiver, slot);
        QObject::connect(&board, &BoardSelectorBox::boardCodeChanged, receiver, slot);
        QObject::connect(&security, &SecuritySelectorBox::securityChanged, receiver, slot);
    }
};

} // namespace tadata
