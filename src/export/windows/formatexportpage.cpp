// SPDX-License-Identifier: MIT
#include "formatexportpage.h"

#include "exportdetails.h"
#include "formatboxes.h"
#include "ui_formatexportpage.h"

#include <QtWidgets/QLayout>

namespace {

// Names of columns and not words: they are in the files as they are.
QStringList lineFormats()
{
    return {QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,VAL,OPEN_INT"),
            QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,OPEN_INT"),
            QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VAL,OPEN_INT"),
            QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL"),
            QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE,Q_TY"),
            QStringLiteral("TICKER,PER,DATE,TIME,OPEN,HIGH,LOW,CLOSE"),
            QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VOL,OPEN_INT"),
            QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VAL,OPEN_INT"),
            QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VOL"),
            QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VAL"),
            QStringLiteral("TICKER,PER,DATE,TIME,CLOSE"),
            QStringLiteral("DATE,TIME,OPEN,HIGH,LOW,CLOSE,VOL,OPEN_INT"),
            QStringLiteral("DATE,TIME,OPEN,HIGH,LOW,CLOSE,VAL,OPEN_INT"),
            QStringLiteral("DATE,TIME,OPEN,HIGH,LOW,CLOSE"),
            QStringLiteral("DATE,TIME,CLOSE")};
}

} // namespace

FormatExportPage::FormatExportPage(QWidget* parent)
    : QWizardPage(parent)
    , m_ui(std::make_unique<Ui::FormatExportPage>())
{
    m_ui->setupUi(this);
    // A check box that is wider than its text cannot be clicked beside it.
    layout()->setAlignment(m_ui->writeHead, Qt::AlignLeft);
    setTitle(tr("Формат"));
    setupPage();
}

FormatExportPage::~FormatExportPage() = default;

void FormatExportPage::setupPage()
{
    m_ui->lineFormat->addItems(lineFormats());
    tadata::FormatBoxes{*m_ui->separator, *m_ui->dateFormat, *m_ui->timeFormat}.fill(
        tadata::FormatPage::Export);
}

void FormatExportPage::getExportDetails(ExportDetails& details) const
{
    details.separator = m_ui->separator->currentData().toString();
    details.dateFormat = m_ui->dateFormat->currentData().toString();
    details.timeFormat = m_ui->timeFormat->currentData().toString();
    details.addHeader = m_ui->writeHead->isChecked();
    details.lineFormat = m_ui->lineFormat->currentText();
}
