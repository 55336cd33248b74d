// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWizardPage>

#include <memory>

struct ExportDetails;
namespace Ui {
class FormatExportPage;
}

/// The export wizard's second page: how the lines of the file are written. The wizard owns it.
class FormatExportPage final : public QWizardPage
{
    Q_OBJECT

public:
    explicit FormatExportPage(QWidget* parent = nullptr);
    ~FormatExportPage() override;

    void getExportDetails(ExportDetails& details) const;
    /// Fills the boxes of the form. The constructor does; a second call offers everything twice.
    void setupPage();

private:
    std::unique_ptr<Ui::FormatExportPage> m_ui;
};
