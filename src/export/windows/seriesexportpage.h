// SPDX-License-Identifier: MIT
#pragma once

#include "seriesboxes.h"

#include <vexdesk/ivalidateform.h>

#include <QtWidgets/QWizardPage>

#include <memory>

class Properties;
struct ExportDetails;
namespace Ui {
class SeriesExportPage;
}

/// The export wizard's first page: which series, which days, and the file that they go to. The
/// wizard owns it.
class SeriesExportPage final : public QWizardPage, public IValidateForm
{
    Q_OBJECT
    Q_INTERFACES(IValidateForm)

public:
    explicit SeriesExportPage(QWidget* parent = nullptr);
    ~SeriesExportPage() override;

    bool isComplete() const override;
    bool validate() override;
    void getExportDetails(ExportDetails& details) const;
    /// The path of the file. Relative to the working directory when no directory is given.
    QString fileName() const;
    /// Fills the boxes of the form. The constructor does; a second call offers everything twice.
    void setupPage();

public Q_SLOTS:
    /// Names the file after the series and the days, until the user has given it another name.
    void updateOutputFileName();
    /// The file's name is the user's from now on.
    void outputFileEdited();
    /// Asks for the directory of the file. Nothing changes when the user cancels.
    void on_chooseDir_clicked();

private:
    void setupDates();
    void setupTimeFrames();
    void connectForm();
    tadata::SeriesBoxes series() const;
    /// Colours the labels of what is missing or wrong; true when nothing is.
    bool markWrong() const;

    std::unique_ptr<Properties> m_properties;
    std::unique_ptr<Ui::SeriesExportPage> m_ui;
    bool m_outputFileEdited = false;
};
