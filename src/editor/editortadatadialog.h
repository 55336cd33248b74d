#pragma once

#include <vexdesk/ivalidateform.h>

#include <QtWidgets/QDialog>

#include <memory>

class EditorTADataModel;
class Properties;
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

    /// Marks what is missing or wrong in red; true when nothing is.
    bool validate() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void validateForm();
    void on_findButton_clicked();
    void on_delButton_clicked();
    void on_loadDataButton_clicked();
    void onSelectionChanged();
    void delDataFromFiles();

private:
    void setupUI();
    void setupSelectors();
    void setupTable();
    void setupTimes();
    void connectForm();

    std::unique_ptr<Properties> m_properties;
    bool m_pendingDeletions = false;
    EditorTADataModel* m_model = nullptr;
    std::unique_ptr<Ui::EditorTADataDialog> m_ui;
};
