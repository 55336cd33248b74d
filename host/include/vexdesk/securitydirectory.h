#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

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

private:
    SecurityDirectory() = default;
};
