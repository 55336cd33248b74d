// SPDX-License-Identifier: MIT
#include <vexdesk/securityselectorbox.h>

#include <vexdesk/securitydirectory.h>
#include <vexdesk/securityselectormodel.h>

struct SecuritySelectorBox::Private
{
    SecuritySelectorModel* model = nullptr;
    QString stockFilter;
    QString boardFilter;
    QString stockCode;
    QString boardCode;
    QString securityCode;
};

SecuritySelectorBox::SecuritySelectorBox(QWidget* parent)
    : SelectorBox(parent)
    , m_d(new Private)
{
    setSourceModel(new SecuritySelectorModel(nullptr, true));
}

SecuritySelectorBox::~SecuritySelectorBox() = default;

void SecuritySelectorBox::setSourceModel(SecuritySelectorModel* model)
{
    m_d->model = model;
    showModel(model);
}

long long SecuritySelectorBox::getSecurityId() const
{
    if (sourceRow() < 0)
        return 0;
    const qint64 id = m_d->model->at(sourceRow()).securityId;
    return id != 0
               ? id
               : SecurityDirectory::i().idByCode(m_d->stockCode, m_d->boardCode, m_d->securityCode);
}

QString SecuritySelectorBox::getSecurityCode() const
{
    return m_d->securityCode;
}

QString SecuritySelectorBox::getSecurityName() const
{
    return sourceRow() < 0 ? QString() : m_d->model->at(sourceRow()).securityName;
}

void SecuritySelectorBox::setBoard(const QString& stockCode, const QString& boardCode)
{
    m_d->stockFilter = stockCode;
    m_d->boardFilter = boardCode;
    rebuild();
}

bool SecuritySelectorBox::accepts(int row) const
{
    const SecuritySelectorModel::Data& entry = m_d->model->at(row);
    return entry.stockCode == m_d->stockFilter && entry.boardCode == m_d->boardFilter;
}

QString SecuritySelectorBox::codeAt(int row) const
{
    return m_d->model->at(row).securityCode;
}

void SecuritySelectorBox::chosen()
{
    const int row = sourceRow();
    const QString stockCode = row < 0 ? QString() : m_d->model->at(row).stockCode;
    const QString boardCode = row < 0 ? QString() : m_d->model->at(row).boardCode;
    const QString securityCode = row < 0 ? QString() : m_d->model->at(row).securityCode;
    if (stockCode == m_d->stockCode && boardCode == m_d->boardCode &&
        securityCode == m_d->securityCode)
        return;
    m_d->stockCode = stockCode;
    m_d->boardCode = boardCode;
    m_d->securityCode = securityCode;
    Q_EMIT securityChanged(securityCode);
}
