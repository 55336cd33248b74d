// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QWizardPage>

#include <memory>

class ColumnsHeader;
struct ImportDetails;
namespace Ui {
class ColumnsImportPage;
}

/// The import wizard's third page: which column carries what. Every entry begins afresh, since the
/// separator may have changed. The wizard owns it; the lines must outlive it. In a wizard that
/// knows no separator each line is one column.
class ColumnsImportPage final : public QWizardPage
{
    Q_OBJECT

public:
    explicit ColumnsImportPage(const QList<QString>& lines, QWidget* parent = nullptr);
    ~ColumnsImportPage() override;

    void initializePage() override;
    void cleanupPage() override;
    bool isComplete() const override;
    void getImportDetails(ImportDetails& details) const;

    /// How wide the page must be so that the boxes of so many columns are seen side by side.
    int widthForColumns(int columns);

private:
    /// What the import wizard says. In any other wizard, and in none, lines are not split.
    QString columnSeparator() const;
    /// What is wrong with the choices, empty when nothing is.
    QString warning() const;

    const QList<QString>& m_lines;
    QPointer<ColumnsHeader> m_header;
    std::unique_ptr<Ui::ColumnsImportPage> m_ui;
};
