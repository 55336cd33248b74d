// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QPointer>
#include <QtCore/QString>

class Table;

/// The securities that are traded on the boards. Safe to call from any thread.
class VEXDESK_CORE_EXPORT SecurityDirectory
{
public:
    static const SecurityDirectory& i();

    /// Digits after the point of the security's prices, 0 for an unknown security. Cheap enough to
    /// be asked once for every line of a file: one look-up in a hash table, no lock.
    int decimalsById(int stockId, int boardId, long long securityId) const;

    /// The security's id, unique within its board; 0 for an unknown security.
    long long idByCode(const QString& stockCode, const QString& boardCode,
                       const QString& securityCode) const;

    /// The register of securities as a table, with the columns "stock_id" and "board_id" (int32),
    /// "sec_id" (int64), "code" and "title" (text) and "decimals" (int32), in the order of the
    /// first three: a MasterIndex_Struct<int, int, long long>. Include <vexdesk/database/table.h>.
    ///
    /// The sections of one exchange share one register: the securities of the venue with the id 5
    /// are registered under the venue id 1, while deals carry the id of the section in which they
    /// were made. An id may so stand twice.
    ///
    /// Empty while the reference data hold no security. The table is never changed, so that it may
    /// be read on any thread without its lock; new reference data come as a new table, and the one
    /// in use stays valid until the process ends.
    QPointer<Table> table() const;

private:
    SecurityDirectory() = default;
};
