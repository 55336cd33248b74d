// SPDX-License-Identifier: MIT
#include "seriesexportpage.h"

#include "dateeditors.h"
#include "exportdetails.h"
#include "labelmark.h"
#include "ui_seriesexportpage.h"

#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/properties.h>

#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>

using tadata::markLabel;

SeriesExportPage::SeriesExportPage(QWidget* parent)
    : QWizardPage(parent)
    , m_properties(std::make_unique<Properties>())
    , m_ui(std::make_unique<Ui::SeriesExportPage>())
{
    m_ui->setupUi(this);
    setTitle(tr("Серия"));
    m_properties->connectAll(this);
    m_properties->setValue(QStringLiteral("StockId"), QStringLiteral("0"));
    setupPage();
}

SeriesExportPage::~SeriesExportPage() = default;

void SeriesExportPage::setupPage()
{
    setupDates();
    setupTimeFrames();
    series().offerStored();
    connectForm();
    // The only series of a store is chosen by now.
    updateOutputFileName();
}

void SeriesExportPage::setupDates()
{
    const QDate today = QDate::currentDate();
    for (QDateEdit* const edit : {m_ui->dateFrom, m_ui->dateTo}) {
        tadata::setUpDateEditor(*edit);
        edit->setDate(today);
    }
}

void SeriesExportPage::setupTimeFrames()
{
    m_ui->timeFrame->addItem(tr("1 секунда"), vexdesk::secondTimeframe);
    m_ui->timeFrame->addItem(tr("1 минута"), vexdesk::minuteTimeframe);
    m_ui->timeFrame->addItem(tr("5 минут"), 300);
    m_ui->timeFrame->addItem(tr("10 минут"), 600);
    m_ui->timeFrame->addItem(tr("30 минут"), 1800);
    m_ui->timeFrame->addItem(tr("1 час"), 3600);
    m_ui->timeFrame->addItem(tr("1 день"), 86400);
    m_ui->timeFrame->setCurrentIndex(1);
}

tadata::SeriesBoxes SeriesExportPage::series() const
{
    return {*m_ui->stock, *m_ui->board, *m_ui->security};
}

void SeriesExportPage::connectForm()
{
    // The name comes first, since the page is not complete without one. A security that is chosen
    // because its board has no other is told by securityChanged alone.
    connect(m_ui->security, &SecuritySelectorBox::securityChanged, this,
            &SeriesExportPage::updateOutputFileName);
    connect(m_ui->security, &QComboBox::currentIndexChanged, this,
            &SeriesExportPage::updateOutputFileName);
    connect(m_ui->outputFile, &QLineEdit::textEdited, this, &SeriesExportPage::outputFileEdited);
    for (const QDateEdit* const edit : {m_ui->dateFrom, m_ui->dateTo}) {
        connect(edit, &QDateEdit::dateChanged, this, &SeriesExportPage::updateOutputFileName);
        connect(edit, &QDateEdit::dateChanged, this, &QWizardPage::completeChanged);
    }

    series().onChange(this, &QWizardPage::completeChanged);
    connect(m_ui->outputFile, &QLineEdit::textEdited, this, &QWizardPage::completeChanged);
}

void SeriesExportPage::updateOutputFileName()
{
    if (m_outputFileEdited)
        return;
    QString name = m_ui->security->getSecurityName();
    if (!name.isEmpty()) {
        const QString format = QStringLiteral("yyMMdd");
        name += QStringLiteral("_%1_%2").arg(m_ui->dateFrom->date().toString(format),
                                             m_ui->dateTo->date().toString(format));
    }
    m_ui->outputFile->setText(name);
}

void SeriesExportPage::outputFileEdited()
{
    m_outputFileEdited = true;
}

void SeriesExportPage::on_chooseDir_clicked()
{
    const QString directory =
        QFileDialog::getExistingDirectory(nullptr, tr("Выбор директории для экспорта"),
                                          m_ui->outputDir->text(), QFileDialog::ShowDirsOnly);
    if (!directory.isEmpty())
        m_ui->outputDir->setText(directory);
}

bool SeriesExportPage::isComplete() const
{
    return markWrong();
}

bool SeriesExportPage::validate()
{
    return markWrong();
}

bool SeriesExportPage::markWrong() const
{
    const QDate from = m_ui->dateFrom->date();
    const QDate to = m_ui->dateTo->date();
    const bool chosen = series().markMissing(m_ui->stockLabel, m_ui->boardLabel, m_ui->secLabel);
    const bool interval = markLabel(m_ui->fromLabel, to >= from);
    const bool past = markLabel(m_ui->toLabel, to <= QDate::currentDate());
    const bool file = markLabel(m_ui->outputLabel, !m_ui->outputFile->text().isEmpty());
    return chosen && interval && past && file;
}

QString SeriesExportPage::fileName() const
{
    return QDir(m_ui->outputDir->text())
        .filePath(m_ui->outputFile->text() + m_ui->extensionComboBox->currentText());
}

void SeriesExportPage::getExportDetails(ExportDetails& details) const
{
    series().describe(details);
    details.timeframe = m_ui->timeFrame->currentData().toInt();
    details.dateFrom = m_ui->dateFrom->date();
    details.dateTo = m_ui->dateTo->date();
    details.outputPath = fileName();
}
