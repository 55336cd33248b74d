// SPDX-License-Identifier: MIT
#include "support/importchoices.h"

#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWizard>

#include <algorithm>

namespace testsupport {

namespace {

void chooseOn(QWidget* page, const char* name, const QString& beginning)
{
    choose(page->findChild<QComboBox*>(QLatin1String(name)), beginning);
}

} // namespace

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
    QWidget* const page = wizard->currentPage();
    chooseOn(page, "stock", choices.stock);
    chooseOn(page, "board", choices.board);
    chooseOn(page, "security", choices.security);
    chooseOn(page, "timeFrame", choices.timeFrame);
}

void fillFormatPage(QWizard* wizard, const ImportChoices& choices)
{
    QWidget* const page = wizard->currentPage();
    auto* const header = page->findChild<QCheckBox*>(QStringLiteral("firstStringIsHead"));
    QVERIFY(header);
    if (header->isChecked() != choices.header)
        click(header);
    QCOMPARE(header->isChecked(), choices.header);
    chooseOn(page, "separator", choices.separator);
    chooseOn(page, "dateFormat", choices.dateFormat);
    chooseOn(page, "timeFormat", choices.timeFormat);
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
