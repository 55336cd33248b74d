// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QHash>

#include <memory>
#include <mutex>
#include <tuple>

class Table;

namespace vexdesk {

/// The reference data with the indexes that the directories need. Never changed once it is
/// published, so that readers on any thread need no lock.
class ReferenceTable final
{
public:
    explicit ReferenceTable(ReferenceData data);
    ~ReferenceTable();

    static const ReferenceTable& current();
    static void publish(ReferenceData data);

    const ReferenceData& data() const { return m_data; }
    const Stock* stock(const QString& code) const;
    const Board* board(const QString& stockCode, const QString& boardCode) const;
    const Security* security(const QString& stockCode, const QString& boardCode,
                             const QString& securityCode) const;
    int decimals(int stockId, int boardId, qint64 securityId) const;
    /// The register of securities, see SecurityDirectory::table(); null when there is none. Made
    /// when it is first asked for: few programs read it.
    Table* securities() const;

private:
    struct SeriesId
    {
        int stockId = 0;
        int boardId = 0;
        qint64 securityId = 0;
        friend bool operator==(const SeriesId&, const SeriesId&) = default;
        friend size_t qHash(const SeriesId& id, size_t seed = 0)
        {
            return qHashMulti(seed, id.stockId, id.boardId, id.securityId);
        }
    };

    ReferenceData m_data;
    QHash<QString, qsizetype> m_stocks;
    QHash<std::pair<QString, QString>, qsizetype> m_boards;
    QHash<std::pair<QString, std::pair<QString, QString>>, qsizetype> m_securities;
    QHash<SeriesId, int> m_decimals;
    mutable std::once_flag m_registerMade;
    mutable std::unique_ptr<Table> m_register;
};

} // namespace vexdesk
