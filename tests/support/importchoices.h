// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QComboBox;
class QWizard;

namespace testsupport {

/// What a user chooses in the import wizard, by the beginnings of the shown texts.
struct ImportChoices
{
    QString stock = QStringLiteral("NORD ");
    QString board = QStringLiteral("MAIN ");
    QString security = QStringLiteral("GRAN ");
    QString timeFrame = QStringLiteral("1 минута");
    bool header = false;
    QString separator = QStringLiteral("точка с запятой (;)");
    QString dateFormat = QStringLiteral("ггггммдд");
    QString timeFormat = QStringLiteral("ччммсс");
    /// Of the columns, from the first one.
    QStringList roles = dateTimeAndPrices();

    static QStringList dateTimeAndPrices();
    static QStringList allRoles();
};

/// Fills the page that the wizard shows.
void fillSeriesPage(QWizard* wizard, const ImportChoices& choices);
void fillFormatPage(QWizard* wizard, const ImportChoices& choices);
void fillColumnsPage(QWizard* wizard, const ImportChoices& choices);

/// Fills all three pages, from the first one, with a click on Next between them. Finish is left to
/// the caller.
void fillImportWizard(QWizard* wizard, const ImportChoices& choices);

/// The role boxes of the columns page, from the first column.
QList<QComboBox*> roleBoxes(QWizard* wizard);

} // namespace testsupport
