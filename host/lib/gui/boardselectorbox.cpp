// SPDX-License-Identifier: MIT
#include <vexdesk/boardselectorbox.h>

#include <vexdesk/boarddirectory.h>
#include <vexdesk/boardselectormodel.h>

BoardSelectorBox::BoardSelectorBox(QWidget* parent)
    : SelectorBox(parent)
{
    setSourceModel(new BoardSelectorModel(nullptr));
}

void BoardSelectorBox::setSourceModel(BoardSelectorModel* model)
{
    m_model = model;
    showModel(model);
}

int BoardSelectorBox::getBoardId() const
{
    if (sourceRow() < 0)
        return 0;
    const int id = m_model->at(sourceRow()).boardId;
    return id != 0 ? id : BoardDirectory::i().idByCode(m_stockCode, m_boardCode);
}

QString BoardSelectorBox::getBoardCode() const
{
    return m_boardCode;
}

QString BoardSelectorBox::getStockCode() const
{
    return m_stockCode;
}

void BoardSelectorBox::setBoardFlagsOnFilter(int flags)
{
    m_flagsOn = flags;
    rebuild();
}

void BoardSelectorBox::setBoardFlagsOffFilter(int flags)
{
    m_flagsOff = flags;
    rebuild();
}

void BoardSelectorBox::setStockCode(const QString& stockCode)
{
    m_stockFilter = stockCode;
    rebuild();
}

bool BoardSelectorBox::accepts(int row) const
{
    const BoardSelectorModel::Data& entry = m_model->at(row);
    return entry.enabled && entry.stockCode == m_stockFilter &&
           (entry.flags & m_flagsOn) == m_flagsOn && (entry.flags & m_flagsOff) == 0;
}

QString BoardSelectorBox::codeAt(int row) const
{
    return m_model->at(row).boardCode;
}

void BoardSelectorBox::chosen()
{
    const int row = sourceRow();
    const QString stockCode = row < 0 ? QString() : m_model->at(row).stockCode;
    const QString boardCode = row < 0 ? QString() : m_model->at(row).boardCode;
    if (stockCode == m_stockCode && boardCode == m_boardCode)
        return;
    m_stockCode = stockCode;
    m_boardCode = boardCode;
    Q_EMIT boardCodeChanged(boardCode);
}
