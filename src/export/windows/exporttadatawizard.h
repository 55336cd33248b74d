// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWizard>

struct ExportDetails;
class FormatExportPage;
class SeriesExportPage;

/// Asks the user what is to be exported and how: the series and its days, the file, and the format
/// of its lines. Its size is kept in the settings, and nothing else is.
///
/// Whichever way the user leaves the first page forward, he is asked first about a file that would
/// be overwritten. Calls of next() ask nobody.
class ExportTADataWizard final : public QWizard
{
    Q_OBJECT

public:
    explicit ExportTADataWizard(QWidget* parent = nullptr);
    ~ExportTADataWizard() override;

    /// What the pages say; complete once the wizard was accepted.
    ExportDetails exportDetails() const;

    /// Whether the file may be written: asks the user when there is one of that name.
    bool checkFileName();

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// Opens wide enough for the longest line format, unless a size was stored.
    void showEvent(QShowEvent* event) override;

private:
    void goToFormat();
    bool showsSeriesPage() const;
    SeriesExportPage* seriesPage() const;
    FormatExportPage* formatPage() const;

    int m_seriesPageId = -1;
    int m_formatPageId = -1;
};
