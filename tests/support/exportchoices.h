// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>

class QDateEdit;
class QWizard;

namespace testsupport {

/// What a user chooses in the export wizard, by the beginnings of the shown texts. A null text or
/// date is left as the wizard offers it.
struct ExportChoices
{
    QString stock = QStringLiteral("NORD ");
    QString board = QStringLiteral("MAIN ");
    QString security = QStringLiteral("GRAN");
    QDate dateFrom;
    QDate dateTo;
    QString timeFrame;
    QString outputFile;
    QString extension;
    QString outputDir;

    QString lineFormat;
    QString separator;
    QString dateFormat;
    QString timeFormat;
    bool header = true;
};

/// Types a date over the one that is shown, in whatever order the editor shows it.
void typeDate(QDateEdit* edit, const QDate& date);

/// Fills the page that the wizard shows.
void fillSeriesPage(QWizard* wizard, const ExportChoices& choices);
void fillFormatPage(QWizard* wizard, const ExportChoices& choices);

/// Fills both pages, from the first one, with a click on Next between them. Finish is left to the
/// caller.
void fillExportWizard(QWizard* wizard, const ExportChoices& choices);

} // namespace testsupport
