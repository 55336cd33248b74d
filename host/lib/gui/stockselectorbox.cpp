// SPDX-License-Identifier: MIT
#include <vexdesk/stockselectorbox.h>

#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectormodel.h>

struct StockSelectorBox::Private
{
    StockSelectorModel* model = nullptr;
    QString code;
};

StockSelectorBox::StockSelectorBox(QWidget* parent)
    : SelectorBox(parent)
    , m_d(new Private)
{
    setSourceModel(new StockSelectorModel(nullptr));
}

StockSelectorBox::~StockSelectorBox() = default;

void StockSelectorBox::setSourceModel(StockSelectorModel* model)
{
    m_d->model = model;
    showModel(model);
}

int StockSelectorBox::getStockId() const
{
    return sourceRow() < 0 ? 0 : idAt(sourceRow());
}

QString StockSelectorBox::getStockCode() const
{
    return m_d->code;
}

void StockSelectorBox::chooseStock(int stockId)
{
    int choice = -1;
    for (int i = 0; stockId != 0 && i < count(); ++i) {
        if (idAt(itemData(i).toInt()) == stockId)
            choice = i;
    }
    setCurrentIndex(choice);
}

int StockSelectorBox::idAt(int row) const
{
    const StockSelectorModel::Data& entry = m_d->model->at(row);
    return entry.stockId != 0 ? entry.stockId : StockDirectory::i().idByCode(entry.code);
}

bool StockSelectorBox::accepts(int row) const
{
    return m_d->model->at(row).enabled;
}

QString StockSelectorBox::codeAt(int row) const
{
    return m_d->model->at(row).code;
}

void StockSelectorBox::chosen()
{
    const QString code = sourceRow() < 0 ? QString() : codeAt(sourceRow());
    if (code == m_d->code)
        return;
    m_d->code = code;
    Q_EMIT stockCodeChanged(code);
}
