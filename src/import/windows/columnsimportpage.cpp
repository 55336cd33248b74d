// SPDX-License-Identifier: MIT
#include "columnsimportpage.h"

#include "columnsheader.h"
#include "importdetails.h"
#include "importtadatawizard.h"
#include "previewtable.h"
#include "ui_columnsimportpage.h"

#include <QtCore/QTimer>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLayout>
#include <QtWidgets/QStyle>

ColumnsImportPage::ColumnsImportPage(const QList<QString>& lines, QWidget* parent)
    : QWizardPage(parent)
    , m_lines(lines)
    , m_ui(std::make_unique<Ui::ColumnsImportPage>())
{
    m_ui->setupUi(this);
    setTitle(tr("Столбцы"));
    m_ui->warningLabel->setStyleSheet(QStringLiteral("QLabel {color: red;}"));
}

ColumnsImportPage::~ColumnsImportPage() = default;

void ColumnsImportPage::initializePage()
{
    const QString separator = columnSeparator();
    tadata::setPreviewSize(*m_ui->fileData, m_lines, separator);
    m_header = new ColumnsHeader(this, m_ui->fileData);
    m_ui->fileData->setColumnsHeader(m_header);
    m_header->fill();
    tadata::fillPreview(*m_ui->fileData, m_lines, separator);
    m_ui->fileData->resizeRowsToContents();
    // Once more when the table has its final geometry.
    QTimer::singleShot(0, m_header, &ColumnsHeader::fixComboPositions);
}

QString ColumnsImportPage::columnSeparator() const
{
    const auto* const importWizard = qobject_cast<const ImportTADataWizard*>(wizard());
    return importWizard ? importWizard->columnSeparator() : QStringLiteral("\n");
}

int ColumnsImportPage::widthForColumns(int columns)
{
    ColumnsHeader header(this);
    const QComboBox* const box = header.newHeaderBox();
    box->ensurePolished();
    // As the table of the page will be: with a number beside each row.
    const QTableWidget rows(static_cast<int>(m_lines.size()), 1);
    const QStyle* const tableStyle = m_ui->fileData->style();
    const QMargins margins = layout()->contentsMargins();
    return columns * ColumnsHeader::sectionWidth(*box) + rows.verticalHeader()->sizeHint().width() +
           2 * m_ui->fileData->frameWidth() +
           tableStyle->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_ui->fileData) +
           margins.left() + margins.right();
}

void ColumnsImportPage::cleanupPage()
{
    // The next entry begins afresh by itself.
}

QString ColumnsImportPage::warning() const
{
    const QStringList titles = ColumnsHeader::roleTitles();
    QList<int> columns(titles.size(), 0);
    const QList<QComboBox*> boxes = m_header ? m_header->boxes() : QList<QComboBox*>();
    for (const QComboBox* box : boxes)
        ++columns[box->currentIndex()];

    QString text;
    for (auto role = int(ColumnRole::Date); role <= int(ColumnRole::Close); ++role) {
        if (columns.at(role) != 1)
            text += tr("Выберите единственный столбец '%1'; ").arg(titles.at(role));
    }
    for (auto role = int(ColumnRole::Volume); role <= int(ColumnRole::OpenInterest); ++role) {
        if (columns.at(role) >= 2)
            text += tr("Выберите не более одного столбца '%1'; ").arg(titles.at(role));
    }
    return text;
}

bool ColumnsImportPage::isComplete() const
{
    const QString text = warning();
    if (!text.isEmpty())
        m_ui->warningLabel->setText(text);
    m_ui->warningLabel->setVisible(!text.isEmpty());
    return text.isEmpty();
}

void ColumnsImportPage::getImportDetails(ImportDetails& details) const
{
    const QList<QComboBox*> boxes = m_header ? m_header->boxes() : QList<QComboBox*>();
    for (int column = 0; column < boxes.size(); ++column) {
        const int role = boxes.at(column)->currentIndex();
        if (role != int(ColumnRole::None))
            details.columns.insert(role, column);
    }
}
