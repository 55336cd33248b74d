// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtWidgets/QWizard>

struct ImportDetails;
class ColumnsImportPage;
class FormatImportPage;
class SeriesImportPage;

/// Asks the user how a text file is to be imported: the series, the format of its lines, and what
/// each column carries. The lines must outlive the wizard. Its size is kept in the settings.
class ImportTADataWizard final : public QWizard
{
    Q_OBJECT

public:
    /// `lines` are the first lines of the file, at least one.
    explicit ImportTADataWizard(const QList<QString>& lines, QWidget* parent = nullptr);
    ~ImportTADataWizard() override;

    /// What the pages say; complete once the wizard was accepted.
    ImportDetails importDetails() const;

    QString columnSeparator() const;
    QString dateFormat() const;
    QString timeFormat() const;

protected:
    /// Opens wide enough for the columns of a common file, unless a size was stored.
    void showEvent(QShowEvent* event) override;

private:
    SeriesImportPage* seriesPage() const;
    FormatImportPage* formatPage() const;
    ColumnsImportPage* columnsPage() const;

    int m_seriesPageId = -1;
    int m_formatPageId = -1;
    int m_columnsPageId = -1;
};
