// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/selectorbox.h>

class BoardSelectorModel;

/// Lets the user choose a board of one venue. Offers the reference data's until it is given
/// another model.
class VEXDESK_GUI_EXPORT BoardSelectorBox final : public SelectorBox
{
    Q_OBJECT

public:
    explicit BoardSelectorBox(QWidget* parent = nullptr);
    ~BoardSelectorBox() override;

    /// Shows another model, which is populated now. The box owns one that has no parent.
    void setSourceModel(BoardSelectorModel* model);

    /// The chosen board's id; 0 when nothing is chosen. Where its record has none, the id that
    /// BoardDirectory knows for the codes.
    int getBoardId() const;
    /// Empty when nothing is chosen.
    QString getBoardCode() const;
    /// The venue of the chosen board, empty when nothing is chosen.
    QString getStockCode() const;

    /// Only boards that have every one of these flags are offered. 0: any board.
    void setBoardFlagsOnFilter(int flags);
    /// Only boards that have none of these flags are offered. 0: any board.
    void setBoardFlagsOffFilter(int flags);

public Q_SLOTS:
    /// Offers the boards of this venue; none for an empty code.
    void setStockCode(const QString& stockCode);

Q_SIGNALS:
    void boardCodeChanged(const QString& code);

protected:
    bool accepts(int row) const override;
    QString codeAt(int row) const override;
    void chosen() override;

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
