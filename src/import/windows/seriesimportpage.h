// SPDX-License-Identifier: MIT
#pragma once

#include "seriesboxes.h"

#include <vexdesk/ivalidateform.h>

#include <QtWidgets/QWizardPage>

#include <memory>

class Properties;
struct ImportDetails;
namespace Ui {
class SeriesImportPage;
}

/// The import wizard's first page: which series the file belongs to. The wizard owns it.
class SeriesImportPage final : public QWizardPage, public IValidateForm
{
    Q_OBJECT
    Q_INTERFACES(IValidateForm)

public:
    explicit SeriesImportPage(QWidget* parent = nullptr);
    ~SeriesImportPage() override;

    bool isComplete() const override;
    void cleanupPage() override;
    bool validate() override;
    void getImportDetails(ImportDetails& details) const;
    /// Fills the boxes of the form. The constructor does; a second call offers everything twice.
    void setupPage();

private:
    tadata::SeriesBoxes series() const;
    /// Colours the labels of what is missing; true when nothing is.
    bool markMissing() const;

    std::unique_ptr<Properties> m_properties;
    std::unique_ptr<Ui::SeriesImportPage> m_ui;
};
