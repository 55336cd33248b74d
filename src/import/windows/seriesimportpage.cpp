// SPDX-License-Identifier: MIT
#include "seriesimportpage.h"

#include "importdetails.h"
#include "labelmark.h"
#include "ui_seriesimportpage.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/properties.h>

using tadata::markLabel;

namespace {

// Boards of the trading kind, and those that are only technical.
constexpr int tradingBoard = 4;
constexpr int technicalBoard = 64;

} // namespace

SeriesImportPage::SeriesImportPage(QWidget* parent)
    : QWizardPage(parent)
    , m_properties(std::make_unique<Properties>())
    , m_ui(std::make_unique<Ui::SeriesImportPage>())
{
    m_ui->setupUi(this);
    m_ui->board->setBoardFlagsOnFilter(tradingBoard);
    m_ui->board->setBoardFlagsOffFilter(technicalBoard);
    setTitle(tr("Серия"));
    m_properties->connectAll(this);
    m_properties->setValue(QStringLiteral("StockId"), QStringLiteral("0"));
    setupPage();
}

SeriesImportPage::~SeriesImportPage() = default;

void SeriesImportPage::setupPage()
{
    m_ui->timeFrame->addItem(tr("1 минута"), vexdesk::minuteTimeframe);
    m_ui->timeFrame->addItem(tr("1 секунда"), vexdesk::secondTimeframe);
    series().onChange(this, &QWizardPage::completeChanged);
}

tadata::SeriesBoxes SeriesImportPage::series() const
{
    return {*m_ui->stock, *m_ui->board, *m_ui->security};
}

void SeriesImportPage::cleanupPage()
{
    // Going back keeps every choice.
}

bool SeriesImportPage::isComplete() const
{
    return markMissing();
}

bool SeriesImportPage::validate()
{
    return markMissing();
}

bool SeriesImportPage::markMissing() const
{
    const bool stock = markLabel(m_ui->stockLabel, m_ui->stock->getStockId() != 0);
    const bool board = markLabel(m_ui->boardLabel, m_ui->board->getBoardId() != 0);
    const bool security = markLabel(m_ui->secLabel, m_ui->security->getSecurityId() != 0);
    return stock && board && security;
}

void SeriesImportPage::getImportDetails(ImportDetails& details) const
{
    series().describe(details);
    details.timeframe = m_ui->timeFrame->currentData().toInt();
}
