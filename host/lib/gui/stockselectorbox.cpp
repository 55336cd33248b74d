#include <vexdesk/stockselectorbox.h>

#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectormodel.h>

StockSelectorBox::StockSelectorBox(QWidget* parent)
    : SelectorBox(parent)
{
    setSourceModel(new StockSelectorModel(nullptr));
}

void StockSelectorBox::setSourceModel(StockSelectorModel* model)
{
    m_model = model;
    showModel(model);
}

int StockSelectorBox::getStockId() const
{
    if (sourceRow() < 0)
        return 0;
    const int id = m_model->at(sourceRow()).stockId;
    return id != 0 ? id : StockDirectory::i().idByCode(m_code);
}

QString StockSelectorBox::getStockCode() const
{
    return m_code;
}

void StockSelectorBox::chooseStock(int stockId)
{
    int choice = -1;
    for (int i = 0; stockId != 0 && i < count(); ++i) {
        if (m_model->at(itemData(i).toInt()).stockId == stockId)
            choice = i;
    }
    setCurrentIndex(choice);
}

bool StockSelectorBox::accepts(int) const
{
    return true;
}

QString StockSelectorBox::codeAt(int row) const
{
    return m_model->at(row).code;
}

void StockSelectorBox::chosen()
{
    const QString code = sourceRow() < 0 ? QString() : codeAt(sourceRow());
    if (code == m_code)
        return;
    m_code = code;
    Q_EMIT stockCodeChanged(code);
}
