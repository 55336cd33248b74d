// SPDX-License-Identifier: MIT
#include <vexdesk/securityselectorbox.h>

#include <vexdesk/securitydirectory.h>
#include <vexdesk/securityselectormodel.h>

SecuritySelectorBox::SecuritySelectorBox(QWidget* parent)
    : SelectorBox(parent)
{
    setSourceModel(new SecuritySelectorModel(nullptr, true));
}

void SecuritySelectorBox::setSourceModel(SecuritySelectorModel* model)
{
    m_model = model;
    showModel(model);
}

long long SecuritySelectorBox::getSecurityId() const
{
    if (sourceRow() < 0)
        return 0;
    const qint64 id = m_model->at(sourceRow()).securityId;
    return id != 0 ? id : SecurityDirectory::i().idByCode(m_stockCode, m_boardCode, m_securityCode);
}

QString SecuritySelectorBox::getSecurityCode() const
{
    return m_securityCode;
}

QString SecuritySelectorBox::getSecurityName() const
{
    return sourceRow() < 0 ? QString() : m_model->at(sourceRow()).securityName;
}

void SecuritySelectorBox::setBoard(const QString& stockCode, const QString& boardCode)
{
    m_stockFilter = stockCode;
    m_boardFilter = boardCode;
    rebuild();
}

bool SecuritySelectorBox::accepts(int row) const
{
    const SecuritySelectorModel::Data& entry = m_model->at(row);
    return entry.stockCode == m_stockFilter && entry.boardCode == m_boardFilter;
}

QString SecuritySelectorBox::codeAt(int row) const
{
    return m_model->at(row).securityCode;
}

void SecuritySelectorBox::chosen()
{
    const int row = sourceRow();
    const QString stockCode = row < 0 ? QString() : m_model->at(row).stockCode;
    const QString boardCode = row < 0 ? QString() : m_model->at(row).boardCode;
    const QString securityCode = row < 0 ? QString() : m_model->at(row).securityCode;
    if (stockCode == m_stockCode && boardCode == m_boardCode && securityCode == m_securityCode)
        return;
    m_stockCode = stockCode;
    m_boardCode = boardCode;
    m_securityCode = securityCode;
    Q_EMIT securityChanged(securityCode);
}
