// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QComboBox;
class QWizard;

namespace testsupport {

/// What a user chooses in the wizards, by the beginnings of the shown texts. A null text or date
/// is left as the wizard offers it.
struct WizardChoices
{
    QString stock = QStringLiteral("NORD ");
    QString board = QStringLiteral("MAIN ");
    QString security = QStringLiteral("GRAN");
    QString timeFrame;
    QString separator;
    QString dateFormat;
    QString timeFormat;
};

struct ImportChoices : WizardChoices
{
    ImportChoices();

    bool header = false;
    /// Of the columns, from the first one.
    QStringList roles = dateTimeAndPrices();

    static QStringList dateTimeAndPrices();
    static QStringList allRoles();
};

struct ExportChoices : WizardChoices
{
    QDate dateFrom;
    QDate dateTo;
    QString outputFile;
    QString extension;
    QString outputDir;
    QString lineFormat;
    bool header = true;
};

/// Fills the page that the wizard shows.
void fillSeriesPage(QWizard* wizard, const ImportChoices& choices);
void fillSeriesPage(QWizard* wizard, const ExportChoices& choices);
void fillFormatPage(QWizard* wizard, const ImportChoices& choices);
void fillFormatPage(QWizard* wizard, const ExportChoices& choices);
void fillColumnsPage(QWizard* wizard, const ImportChoices& choices);

/// Fills all pages, from the first one, with a click on Next between them. Finish is left to the
/// caller.
void fillImportWizard(QWizard* wizard, const ImportChoices& choices);
void fillExportWizard(QWizard* wizard, const ExportChoices& choices);

/// The role boxes of the columns page, from the first column.
QList<QComboBox*> roleBoxes(QWizard* wizard);

} // namespace testsupport
