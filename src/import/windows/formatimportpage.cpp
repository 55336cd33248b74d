// SPDX-License-Identifier: MIT
#include "formatimportpage.h"

#include "formatboxes.h"
#include "importdetails.h"
#include "previewtable.h"
#include "ui_formatimportpage.h"

#include <QtWidgets/QLayout>

FormatImportPage::FormatImportPage(const QList<QString>& lines, QWidget* parent)
    : QWizardPage(parent)
    , m_lines(lines)
    , m_ui(std::make_unique<Ui::FormatImportPage>())
{
    m_ui->setupUi(this);
    // A check box that is wider than its text cannot be clicked beside it.
    layout()->setAlignment(m_ui->firstStringIsHead, Qt::AlignLeft);
    setTitle(tr("Формат"));
    setupPage();
}

FormatImportPage::~FormatImportPage() = default;

void FormatImportPage::setupPage()
{
    // The item that stands for no choice splits nothing: no line of the preview holds a line feed.
    m_ui->separator->addItem(tr("не задан"), QStringLiteral("\n"));
    tadata::FormatBoxes{*m_ui->separator, *m_ui->dateFormat, *m_ui->timeFormat}.fill(
        tadata::FormatPage::Import);
    m_ui->separator->setCurrentIndex(0);
    connect(m_ui->separator, &QComboBox::currentIndexChanged, this, &QWizardPage::completeChanged);
    connect(m_ui->separator, &QComboBox::currentIndexChanged, this,
            &FormatImportPage::separatorChanged);
}

QString FormatImportPage::separator() const
{
    return m_ui->separator->currentData().toString();
}

QString FormatImportPage::dateFormat() const
{
    return m_ui->dateFormat->currentData().toString();
}

QString FormatImportPage::timeFormat() const
{
    return m_ui->timeFormat->currentData().toString();
}

void FormatImportPage::separatorChanged(int index)
{
    const QString separator = m_ui->separator->itemData(index).toString();
    tadata::setPreviewSize(*m_ui->fileData, m_lines, separator);
    tadata::fillPreview(*m_ui->fileData, m_lines, separator);
    m_ui->fileData->resizeRowsToContents();
    m_ui->fileData->resizeColumnsToContents();
}

bool FormatImportPage::isComplete() const
{
    const auto fieldCount = [this](qsizetype line) {
        return m_lines.size() >= 2 ? m_lines.at(line).split(separator()).size() : 0;
    };
    const bool complete = m_ui->separator->currentIndex() >= 1 && fieldCount(0) == fieldCount(1);
    m_ui->sepLabel->setStyleSheet(
        QStringLiteral("QLabel {color: %1;}").arg(complete ? "black" : "red"));
    return complete;
}

void FormatImportPage::cleanupPage()
{
    // Going back keeps every choice.
}

void FormatImportPage::getImportDetails(ImportDetails& details) const
{
    details.separator = separator();
    details.dateFormat = dateFormat();
    details.timeFormat = timeFormat();
    details.firstLineIsHeader = m_ui->firstStringIsHead->isChecked();
    details.dateFormatTitle = m_ui->dateFormat->currentText();
    details.timeFormatTitle = m_ui->timeFormat->currentText();
}
