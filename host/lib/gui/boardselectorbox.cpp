// SPDX-License-Identifier: MIT
#include <vexdesk/boardselectorbox.h>

#include <vexdesk/boarddirectory.h>
#include <vexdesk/boardselectormodel.h>

struct BoardSelectorBox::Private
{
    BoardSelectorModel* model = nullptr;
    QString stockFilter;
    int flagsOn = 0;
    int flagsOff = 0;
    QString stockCode;
    QString boardCode;
};

BoardSelectorBox::BoardSelectorBox(QWidget* parent)
    : SelectorBox(parent)
    , m_d(new Private)
{
    setSourceModel(new BoardSelectorModel(nullptr));
}

BoardSelectorBox::~BoardSelectorBox() = default;

void BoardSelectorBox::setSourceModel(BoardSelectorModel* model)
{
    m_d->model = model;
    showModel(model);
}

int BoardSelectorBox::getBoardId() const
{
    if (sourceRow() < 0)
        return 0;
    const int id = m_d->model->at(sourceRow()).boardId;
    return id != 0 ? id : BoardDirectory::i().idByCode(m_d->stockCode, m_d->boardCode);
}

QString BoardSelectorBox::getBoardCode() const
{
    return m_d->boardCode;
}

QString BoardSelectorBox::getStockCode() const
{
    return m_d->stockCode;
}

void BoardSelectorBox::setBoardFlagsOnFilter(int flags)
{
    m_d->flagsOn = flags;
    rebuild();
}

void BoardSelectorBox::setBoardFlagsOffFilter(int flags)
{
    m_d->flagsOff = flags;
    rebuild();
}

void BoardSelectorBox::setStockCode(const QString& stockCode)
{
    m_d->stockFilter = stockCode;
    rebuild();
}

bool BoardSelectorBox::accepts(int row) const
{
    const BoardSelectorModel::Data& entry = m_d->model->at(row);
    return entry.enabled && entry.stockCode == m_d->stockFilter &&
           (entry.flags & m_d->flagsOn) == m_d->flagsOn && (entry.flags & m_d->flagsOff) == 0;
}

QString BoardSelectorBox::codeAt(int row) const
{
    return m_d->model->at(row).boardCode;
}

void BoardSelectorBox::chosen()
{
    const int row = sourceRow();
    const QString stockCode = row < 0 ? QString() : m_d->model->at(row).stockCode;
    const QString boardCode = row < 0 ? QString() : m_d->model->at(row).boardCode;
    if (stockCode == m_d->stockCode && boardCode == m_d->boardCode)
        return;
    m_d->stockCode = stockCode;
    m_d->boardCode = boardCode;
    Q_EMIT boardCodeChanged(boardCode);
}
