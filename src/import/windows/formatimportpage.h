// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtWidgets/QWizardPage>

#include <memory>

struct ImportDetails;
namespace Ui {
class FormatImportPage;
}

/// The import wizard's second page: how the lines of the file are written, with a preview.
/// The wizard owns it; the lines must outlive it.
class FormatImportPage final : public QWizardPage
{
    Q_OBJECT

public:
    explicit FormatImportPage(const QList<QString>& lines, QWidget* parent = nullptr);
    ~FormatImportPage() override;

    QString separator() const;
    QString dateFormat() const;
    QString timeFormat() const;
    bool isComplete() const override;
    void cleanupPage() override;
    void getImportDetails(ImportDetails& details) const;
    /// Fills the boxes of the form. The constructor does; a second call offers everything twice.
    void setupPage();

public Q_SLOTS:
    /// Builds the preview with the separator of this item.
    void separatorChanged(int index);

private:
    const QList<QString>& m_lines;
    std::unique_ptr<Ui::FormatImportPage> m_ui;
};
