// SPDX-License-Identifier: MIT
#pragma once

#include "seriesboxes.h"

#include <vexdesk/ivalidateform.h>

#include <QtWidgets/QDialog>

#include <memory>

class EditorTADataModel;
class Properties;
class QModelIndex;
namespace Ui {
class EditorTADataDialog;
}

/// The history editor: shows the stored bars of a series in a range of time, finds one by its time
/// and deletes those that are selected. Deleted rows leave the table at once; the day files are
/// written when the dialog is closed, in whatever way, and before another range is shown.
class EditorTADataDialog final : public QDialog, public IValidateForm
{
    Q_OBJECT
    Q_INTERFACES(IValidateForm)

public:
    explicit EditorTADataDialog(QWidget* parent = nullptr);
    ~EditorTADataDialog() override;

    /// Fills the form and connects it; the constructor has called it.
    void setupUI();

    /// Marks what is missing or wrong in red; true when nothing is.
    bool validate() override;

public Q_SLOTS:
    /// "Показать" is enabled while the form is valid.
    void validateForm();
    /// Adds the last bar at or before the chosen time to the selection and goes there.
    void on_findButton_clicked();
    /// Takes the selected rows from the table.
    void on_delButton_clicked();
    /// Writes what is pending and shows the chosen range.
    void on_loadDataButton_clicked();
    /// "Удалить" is enabled while something is selected.
    void onSelectionChanged();
    /// Writes the day files if rows were deleted. What goes wrong is told by the terminal.
    void delDataFromFiles();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void setupSelectors();
    void setupTable();
    void setupTimes();
    void connectForm();
    tadata::SeriesBoxes series() const;
    void goTo(const QModelIndex& row);
    void reportProblems(const QStringList& more = {});

    std::unique_ptr<Properties> m_properties;
    QString m_series; ///< that is shown: "STOCK/BOARD/SECURITY"
    bool m_pendingDeletions = false;
    EditorTADataModel* m_model = nullptr;
    std::unique_ptr<Ui::EditorTADataDialog> m_ui;
};
