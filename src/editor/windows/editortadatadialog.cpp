// SPDX-License-Identifier: MIT
#include "editortadatadialog.h"

#include "columnwidths.h"
#include "dateeditors.h"
#include "editortadatamodel.h"
#include "labelmark.h"
#include "restoresettings.h"
#include "ui_editortadatadialog.h"
#include "windowsize.h"

#include <vexdesk/headerproxystyle.h>
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/storejob.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/icore.h>
#include <vexdesk/itemdelegate.h>
#include <vexdesk/properties.h>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>

#include <algorithm>

namespace {

constexpr QLatin1String settingsGroup("TADataManager/Editor");

// The row that takes the place of the selected ones: the next one below the last of them that
// stays or, at the end of the table, the one above the first.
QModelIndex survivor(const QItemSelectionModel& selection, int firstRow, int lastRow)
{
    const QAbstractItemModel& model = *selection.model();
    const int row = lastRow + 1 < model.rowCount() ? lastRow + 1 : firstRow - 1;
    return row < 0 ? QModelIndex() : model.index(row, 0);
}

} // namespace

EditorTADataDialog::EditorTADataDialog(QWidget* parent)
    : QDialog(parent)
    , m_properties(std::make_unique<Properties>())
    , m_ui(std::make_unique<Ui::EditorTADataDialog>())
{
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    m_ui->setupUi(this);
    m_properties->connectAll(this);
    m_properties->setValue(QStringLiteral("StockId"), QStringLiteral("B"));
    setupUI();

    tadata::restoreSize(*this, settingsGroup);
}

EditorTADataDialog::~EditorTADataDialog()
{
    tadata::saveSize(*this, settingsGroup);
}

void EditorTADataDialog::setupUI()
{
    setupSelectors();
    setupTable();
    setupTimes();
    m_ui->delButton->setEnabled(false);
    connectForm();
    validateForm();
}

void EditorTADataDialog::setupSelectors()
{
    series().offerStored();
    m_ui->timeFrame->addItem(tr("1 минута"), vexdesk::minuteTimeframe);
    m_ui->timeFrame->addItem(tr("1 секунда"), vexdesk::secondTimeframe);
}

void EditorTADataDialog::setupTable()
{
    m_model = new EditorTADataModel(this);
    m_ui->dataTable->setModel(m_model);
    m_ui->dataTable->setItemDelegate(new ItemDelegate(m_ui->dataTable));
    QHeaderView* const header = m_ui->dataTable->header();
    header->setStyle(HeaderProxyStyle::instance());
    // As long as there are no bars, too, the titles are to be read in full.
    for (int column = 0; column < m_model->columnCount(); ++column)
        header->resizeSection(
            column, std::max(header->sectionSize(column), header->sectionSizeHint(column)));
}

void EditorTADataDialog::setupTimes()
{
    m_ui->fromDateTime->setDateTime(QDate::currentDate().addDays(-1).startOfDay());
    m_ui->toDateTime->setDateTime(m_ui->fromDateTime->dateTime().addDays(1));
    m_ui->findDateTime->setDateTime(m_ui->fromDateTime->dateTime());
    for (QDateTimeEdit* const edit : {m_ui->fromDateTime, m_ui->toDateTime, m_ui->findDateTime})
        tadata::setUpDateEditor(*edit);
}

tadata::SeriesBoxes EditorTADataDialog::series() const
{
    return {*m_ui->stock, *m_ui->board, *m_ui->security};
}

void EditorTADataDialog::connectForm()
{
    connect(m_ui->dataTable->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &EditorTADataDialog::onSelectionChanged);
    // With the rows the selection goes too, and does not say so.
    connect(m_model, &QAbstractItemModel::modelReset, this,
            &EditorTADataDialog::onSelectionChanged);
    connect(this, &QDialog::rejected, this, &EditorTADataDialog::delDataFromFiles);

    series().onChange(this, &EditorTADataDialog::validateForm);
    for (const QDateTimeEdit* const edit : {m_ui->fromDateTime, m_ui->toDateTime}) {
        connect(edit, &QDateTimeEdit::dateTimeChanged, this, &EditorTADataDialog::validateForm);
    }
}

bool EditorTADataDialog::validate()
{
    const bool chosen = series().markMissing(m_ui->stockLabel, m_ui->boardLabel, m_ui->secLabel);
    const bool range = tadata::markLabel(m_ui->fromLabel, m_ui->toDateTime->dateTime() >=
                                                              m_ui->fromDateTime->dateTime());
    return chosen && range;
}

void EditorTADataDialog::validateForm()
{
    m_ui->loadDataButton->setEnabled(validate());
}

void EditorTADataDialog::onSelectionChanged()
{
    m_ui->delButton->setEnabled(m_ui->dataTable->selectionModel()->hasSelection());
}

void EditorTADataDialog::on_loadDataButton_clicked()
{
    delDataFromFiles();
    const QDir dir(vexdesk::seriesPath(vexdesk::storeRoot(), m_ui->stock->getStockCode(),
                                       m_ui->board->getBoardCode(),
                                       m_ui->security->getSecurityCode()));
    if (!dir.exists())
        return;
    m_series = dir.path().section(u'/', -3);
    m_model->load(dir, m_ui->fromDateTime->dateTime(), m_ui->toDateTime->dateTime(),
                  m_ui->timeFrame->currentData().toInt());
    reportProblems();
    tadata::fitColumns(*m_ui->dataTable, *m_model);
}

void EditorTADataDialog::on_findButton_clicked()
{
    // Not the date-time as one: there is no text of a time that the local clock skips.
    const QString key = m_ui->findDateTime->date().toString(QStringLiteral("yyyyMMdd ")) +
                        m_ui->findDateTime->time().toString(QStringLiteral("hhmmss"));
    const QModelIndex found = m_model->index(m_model->find(key), 0);
    if (found.isValid())
        goTo(found);
    m_ui->dataTable->setFocus(Qt::OtherFocusReason);
}

// The keyboard goes on from there, and what was selected stays so: only the view's own function
// moves the place from which Shift extends, but it selects that row alone.
void EditorTADataDialog::goTo(const QModelIndex& row)
{
    QItemSelectionModel& selection = *m_ui->dataTable->selectionModel();
    const QItemSelection before = selection.selection();
    m_ui->dataTable->setCurrentIndex(row);
    selection.select(before, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection.select(row, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_ui->dataTable->scrollTo(row, QAbstractItemView::EnsureVisible);
}

void EditorTADataDialog::on_delButton_clicked()
{
    m_pendingDeletions = true;
    QItemSelectionModel& selection = *m_ui->dataTable->selectionModel();
    QList<int> rows;
    const QModelIndexList selected = selection.selectedRows(0);
    rows.reserve(selected.size());
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    if (!rows.isEmpty()) {
        // Before the rows go one by one: a current row among them would drag the view along, which
        // lays out the whole table anew for each.
        const auto [first, last] = std::minmax_element(rows.begin(), rows.end());
        selection.clearSelection();
        selection.setCurrentIndex(survivor(selection, *first, *last),
                                  QItemSelectionModel::NoUpdate);
    }
    m_model->delRows(rows);
    m_ui->dataTable->setFocus(Qt::OtherFocusReason);
}

void EditorTADataDialog::delDataFromFiles()
{
    if (!m_pendingDeletions || m_series.isEmpty())
        return;
    m_pendingDeletions = false;
    vexdesk::StoreJob job({.by = QStringLiteral("edit"), .limits = tadata::restoreLimits()});
    if (const auto begun = job.begin(vexdesk::storePlace(), {m_series}); !begun) {
        reportProblems({tr("Удалённые бары остались в файлах. %1").arg(begun.message())});
        return;
    }
    m_model->delRowsFromFiles(job.keeper());
    const auto ended = job.end();
    reportProblems(ended ? QStringList() : QStringList(ended.message()));
}

// The terminal keeps them until they were read: this window may be about to go.
void EditorTADataDialog::reportProblems(const QStringList& more)
{
    const QStringList problems = m_model->takeProblems() + more;
    ICore* const core = ICore::instance();
    if (!core)
        return;
    for (const QString& problem : problems)
        core->reportProblem(problem);
}

void EditorTADataDialog::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Delete && m_ui->delButton->isEnabled()) {
        on_delButton_clicked();
        event->accept();
    } else if (isReturn && m_ui->findDateTime->hasFocus()) {
        on_findButton_clicked();
        event->accept();
    } else {
        QDialog::keyPressEvent(event);
    }
}
