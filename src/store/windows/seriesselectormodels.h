// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/boardselectormodel.h>
#include <vexdesk/securityselectormodel.h>
#include <vexdesk/stockselectormodel.h>

/// What the selector boxes offer where stored bars are chosen: the series that have a directory in
/// the store, known to the terminal or not, whether or not a day file lies in it. A box owns its
/// model. User-interface thread only.
///
/// Each list is ordered by its key and holds a key once. It is filled by populate(). With
/// `storedOnly` entries are only ever added to it: one whose directory has vanished since stays.
/// Without, the terminal's own entries come first, and a stored one that is among them is theirs.

/// The venues, ordered by code.
class StockWithStoredSelectorModel final : public StockSelectorModel
{
    Q_OBJECT

public:
    explicit StockWithStoredSelectorModel(bool storedOnly, QObject* parent = nullptr);

    void populate() override;

private:
    const bool m_storedOnly;
};

/// The boards, ordered by the venue's id and then by code.
class BoardWithStoredSelectorModel final : public BoardSelectorModel
{
    Q_OBJECT

public:
    explicit BoardWithStoredSelectorModel(bool storedOnly, QObject* parent = nullptr);

    void populate() override;

private:
    const bool m_storedOnly;
};

/// The securities, ordered by the codes of venue, board and security. A stored one has its
/// directory's name as code and as name, and the id 0.
class SecurityWithStoredSelectorModel final : public SecuritySelectorModel
{
    Q_OBJECT

public:
    explicit SecurityWithStoredSelectorModel(bool storedOnly, QObject* parent = nullptr);

    void populate() override;

private:
    const bool m_storedOnly;
};
