// SPDX-License-Identifier: MIT
#include "support/wizardchoices.h"

#include "support/child.h"
#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWizard>

#include <algorithm>

namespace testsupport {

namespace {

void chooseOn(const QWidget* page, const char* name, const QString& beginning)
{
    if (!beginning.isNull())
        choose(child<QComboBox>(page, name), beginning);
}

void typeOn(const QWidget* page, const char* name, const QString& text)
{
    if (!text.isNull())
        type(child<QLineEdit>(page, name), text);
}

void typeDateOn(const QWidget* page, const char* name, const QDate& date)
{
    if (!date.isNull())
        typeDate(child<QDateEdit>(page, name), date);
}

void check(const QWidget* page, const char* name, bool on)
{
    auto* const box = child<QCheckBox>(page, name);
    if (box->isChecked() != on)
        click(box);
    QCOMPARE(box->isChecked(), on);
}

void chooseSeries(const QWidget* page, const WizardChoices& choices)
{
    chooseOn(page, "stock", choices.stock);
    chooseOn(page, "board", choices.board);
    chooseOn(page, "security", choices.security);
    chooseOn(page, "timeFrame", choices.timeFrame);
}

void chooseFormats(const QWidget* page, const WizardChoices& choices)
{
    chooseOn(page, "separator", choices.separator);
    chooseOn(page, "dateFormat", choices.dateFormat);
    chooseOn(page, "timeFormat", choices.timeFormat);
}

} // namespace

ImportChoices::ImportChoices()
    : WizardChoices{.timeFrame = QStringLiteral("1 минута"),
                    .separator = QStringLiteral("точка с запятой (;)"),
                    .dateFormat = QStringLiteral("ггггммдд"),
                    .timeFormat = QStringLiteral("ччммсс")}
{}

QStringList ImportChoices::dateTimeAndPrices()
{
    return {QStringLiteral("Дата окон-я"), QStringLiteral("Вр. окон-я"),
            QStringLiteral("Цена откр."),  QStringLiteral("Цена макс."),
            QStringLiteral("Цена мин."),   QStringLiteral("Цена закр.")};
}

QStringList ImportChoices::allRoles()
{
    return dateTimeAndPrices() + QStringList{QStringLiteral("Объем в шт."),
                                             QStringLiteral("Объем в ден."),
                                             QStringLiteral("Откр. инт.")};
}

void fillSeriesPage(QWizard* wizard, const ImportChoices& choices)
{
    chooseSeries(wizard->currentPage(), choices);
}

void fillSeriesPage(QWizard* wizard, const ExportChoices& choices)
{
    const QWidget* const page = wizard->currentPage();
    chooseSeries(page, choices);
    typeDateOn(page, "dateFrom", choices.dateFrom);
    typeDateOn(page, "dateTo", choices.dateTo);
    typeOn(page, "outputFile", choices.outputFile);
    chooseOn(page, "extensionComboBox", choices.extension);
    typeOn(page, "outputDir", choices.outputDir);
}

void fillFormatPage(QWizard* wizard, const ImportChoices& choices)
{
    check(wizard->currentPage(), "firstStringIsHead", choices.header);
    chooseFormats(wizard->currentPage(), choices);
}

void fillFormatPage(QWizard* wizard, const ExportChoices& choices)
{
    chooseOn(wizard->currentPage(), "lineFormat", choices.lineFormat);
    chooseFormats(wizard->currentPage(), choices);
    check(wizard->currentPage(), "writeHead", choices.header);
}

void fillColumnsPage(QWizard* wizard, const ImportChoices& choices)
{
    const QList<QComboBox*> boxes = roleBoxes(wizard);
    QVERIFY2(boxes.size() >= choices.roles.size(), qPrintable(QString::number(boxes.size())));
    for (qsizetype column = 0; column < choices.roles.size(); ++column)
        choose(boxes.at(column), choices.roles.at(column));
}

void fillImportWizard(QWizard* wizard, const ImportChoices& choices)
{
    fillSeriesPage(wizard, choices);
    click(wizard->button(QWizard::NextButton));
    fillFormatPage(wizard, choices);
    click(wizard->button(QWizard::NextButton));
    fillColumnsPage(wizard, choices);
}

void fillExportWizard(QWizard* wizard, const ExportChoices& choices)
{
    fillSeriesPage(wizard, choices);
    click(wizard->button(QWizard::NextButton));
    fillFormatPage(wizard, choices);
}

QList<QComboBox*> roleBoxes(QWizard* wizard)
{
    const auto* const table = wizard->currentPage()->findChild<QTableWidget*>();
    QList<QComboBox*> boxes =
        table ? table->horizontalHeader()->findChildren<QComboBox*>() : QList<QComboBox*>();
    std::sort(boxes.begin(), boxes.end(),
              [](const QWidget* left, const QWidget* right) { return left->x() < right->x(); });
    return boxes;
}

} // namespace testsupport
