// SPDX-License-Identifier: MIT
#include "seriespicker.h"

#include "compactbox.h"
#include "labelmark.h"
#include "seriespattern.h"
#include "typedcode.h"

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/properties.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectorbox.h>

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>

namespace {

// Boards of the trading kind, and those that are only technical, as in every import.
constexpr int tradingBoard = 4;
constexpr int technicalBoard = 64;

const QString tickerPlace = QStringLiteral("{ticker}");
const QString namePlace = QStringLiteral("{name}");

QLabel* labelFor(QWidget* box, const QString& text)
{
    auto* const label = new QLabel(text);
    label->setBuddy(box);
    return label;
}

} // namespace

SeriesPicker::SeriesPicker(QWidget* parent)
    : QWidget(parent)
    , m_properties(std::make_unique<Properties>())
    , m_stock(new StockSelectorBox(this))
    , m_board(new BoardSelectorBox(this))
    , m_source(new QComboBox(this))
    , m_security(new SecuritySelectorBox(this))
{
    m_stockLabel = labelFor(m_stock, tr("Пло&щадка:"));
    m_boardLabel = labelFor(m_board, tr("Режим &торгов:"));
    m_securityLabel = labelFor(m_source, tr("Инстр&умент:"));
    m_stock->setObjectName(QStringLiteral("stock"));
    m_board->setObjectName(QStringLiteral("board"));
    m_source->setObjectName(QStringLiteral("source"));
    m_security->setObjectName(QStringLiteral("security"));
    m_security->setAccessibleName(tr("Инструмент"));
    m_board->setBoardFlagsOnFilter(tradingBoard);
    m_board->setBoardFlagsOffFilter(technicalBoard);
    m_source->addItem(tr("выбранный"));
    m_source->setToolTip(
        tr("Откуда берётся код инструмента: выбран здесь, из столбца «Тикер» каждого "
           "файла или из его имени"));
    m_source->addItem(tr("из столбца"));
    m_source->addItem(tr("из имени файла"));
    // The window is to fit a small screen.
    constexpr int fewest = 8;
    for (QComboBox* const box : std::initializer_list<QComboBox*>{m_stock, m_board, m_security}) {
        tadata::makeCompact(box, fewest);
        tadata::preferTypedCode(box);
    }

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_stockLabel);
    layout->addWidget(m_stock, 2);
    layout->addWidget(m_boardLabel);
    layout->addWidget(m_board, 2);
    layout->addWidget(m_securityLabel);
    layout->addWidget(m_source);
    layout->addWidget(m_security, 2);

    m_properties->connectAll(this);
    m_properties->setValue(QStringLiteral("StockId"), QStringLiteral("0"));
    connect(m_stock, &StockSelectorBox::stockCodeChanged, this, &SeriesPicker::follow);
    connect(m_board, &BoardSelectorBox::boardCodeChanged, this, &SeriesPicker::follow);
    connect(m_security, &SecuritySelectorBox::securityChanged, this, &SeriesPicker::follow);
    connect(m_source, &QComboBox::currentIndexChanged, this, &SeriesPicker::follow);
    follow();
}

SeriesPicker::~SeriesPicker() = default;

SeriesPicker::Source SeriesPicker::source() const
{
    return static_cast<Source>(m_source->currentIndex());
}

QString SeriesPicker::series() const
{
    QString security = m_security->getSecurityName();
    if (source() != Source::Chosen)
        security = source() == Source::Ticker ? tickerPlace : namePlace;
    const QStringList codes{m_stock->getStockCode(), m_board->getBoardCode(), security};
    return codes.contains(QString()) ? QString() : codes.join(u'/');
}

QString SeriesPicker::board() const
{
    return m_stock->getStockCode() + u'/' + m_board->getBoardCode();
}

bool SeriesPicker::forgetSecurity()
{
    const bool wasChosen = source() != Source::Chosen || !m_security->getSecurityName().isEmpty();
    {
        const QScopedValueRollback quiet(m_isChoosing, true);
        m_source->setCurrentIndex(static_cast<int>(Source::Chosen));
        m_security->setCurrentIndex(-1);
    }
    follow();
    return wasChosen;
}

void SeriesPicker::chooseTickers()
{
    m_source->setCurrentIndex(static_cast<int>(Source::Ticker));
}

void SeriesPicker::follow()
{
    if (m_isChoosing)
        return;
    m_security->setVisible(source() == Source::Chosen);
    tadata::markLabel(m_stockLabel, !m_stock->getStockCode().isEmpty());
    tadata::markLabel(m_boardLabel, !m_board->getBoardCode().isEmpty());
    tadata::markLabel(m_securityLabel,
                      source() != Source::Chosen || !m_security->getSecurityName().isEmpty());
    Q_EMIT seriesChanged();
}

void SeriesPicker::choose(const QString& series)
{
    const auto codes = tadata::seriesFrom(series);
    if (!codes)
        return;
    {
        const QScopedValueRollback quiet(m_isChoosing, true);
        m_stock->chooseStock(StockDirectory::i().idByCode(codes->stock));
        chooseBoard(codes->board);
        const bool isPlace = codes->security == tickerPlace || codes->security == namePlace;
        const Source other = codes->security == tickerPlace ? Source::Ticker : Source::FileName;
        m_source->setCurrentIndex(static_cast<int>(isPlace ? other : Source::Chosen));
        if (!isPlace)
            chooseSecurity(codes->security);
    }
    follow();
}

void SeriesPicker::chooseVenue(const QString& board)
{
    const QString stock = board.section(u'/', 0, 0);
    // To ask for the id of a word that is no venue would give it one.
    if (StockDirectory::i().nameByCode(stock).isEmpty())
        return;
    {
        const QScopedValueRollback quiet(m_isChoosing, true);
        m_stock->chooseStock(StockDirectory::i().idByCode(stock));
        chooseBoard(board.section(u'/', 1, 1));
    }
    follow();
}

void SeriesPicker::chooseBoard(const QString& code)
{
    for (int at = 0; at < m_board->count() && m_board->getBoardCode() != code; ++at)
        m_board->setCurrentIndex(at);
    if (m_board->getBoardCode() != code)
        m_board->setCurrentIndex(-1);
}

// Of the many that there may be only one is told of.
void SeriesPicker::chooseSecurity(const QString& code)
{
    int found = -1;
    {
        const QSignalBlocker quiet(m_security);
        for (int at = 0; at < m_security->count() && found < 0; ++at) {
            m_security->setCurrentIndex(at);
            if (m_security->getSecurityName() == code)
                found = at;
        }
        m_security->setCurrentIndex(-1);
    }
    m_security->setCurrentIndex(found);
}
