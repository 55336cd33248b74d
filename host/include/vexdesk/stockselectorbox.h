// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectorbox.h>

class StockSelectorModel;

/// Lets the user choose a venue. Offers the reference data's until it is given another model.
class VEXDESK_GUI_EXPORT StockSelectorBox final : public SelectorBox
{
    Q_OBJECT

public:
    explicit StockSelectorBox(QWidget* parent = nullptr);
    ~StockSelectorBox() override;

    /// Shows another model, which is populated now. The box owns one that has no parent.
    void setSourceModel(StockSelectorModel* model);

    /// The chosen venue's id; 0 when nothing is chosen. Where its record has none, the id that
    /// StockDirectory knows for the code.
    int getStockId() const;
    /// Empty when nothing is chosen.
    QString getStockCode() const;

    /// Chooses the venue with this id, or nothing.
    void chooseStock(int stockId);

Q_SIGNALS:
    void stockCodeChanged(const QString& code);

protected:
    bool accepts(int row) const override;
    QString codeAt(int row) const override;
    void chosen() override;

private:
    int idAt(int row) const;

    struct Private;
    const std::unique_ptr<Private> m_d;
};
