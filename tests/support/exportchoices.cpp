// SPDX-License-Identifier: MIT
#include "support/exportchoices.h"

#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QWizard>

namespace testsupport {

namespace {

void chooseOn(QWidget* page, const char* name, const QString& beginning)
{
    if (!beginning.isNull())
        choose(page->findChild<QComboBox*>(QLatin1String(name)), beginning);
}

void typeOn(QWidget* page, const char* name, const QString& text)
{
    if (text.isNull())
        return;
    auto* const edit = page->findChild<QLineEdit*>(QLatin1String(name));
    QVERIFY(edit);
    edit->setFocus();
    edit->selectAll();
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    QCOMPARE(edit->text(), text);
}

void typeDateOn(QWidget* page, const char* name, const QDate& date)
{
    if (!date.isNull())
        typeDate(page->findChild<QDateEdit*>(QLatin1String(name)), date);
}

} // namespace

void typeDate(QDateEdit* edit, const QDate& date)
{
    QVERIFY(edit);
    QVERIFY(edit->isVisible() && edit->isEnabled());
    edit->setFocus();
    // In whatever order they are shown: a day fits into its month when it comes last.
    const auto type = [edit, &date](QDateTimeEdit::Section section, const char* format) {
        edit->setSelectedSection(section);
        QTest::keyClicks(edit, date.toString(QLatin1String(format)));
    };
    type(QDateTimeEdit::YearSection, "yyyy");
    type(QDateTimeEdit::MonthSection, "MM");
    type(QDateTimeEdit::DaySection, "dd");
    QCOMPARE(edit->date(), date);
}

void fillSeriesPage(QWizard* wizard, const ExportChoices& choices)
{
    QWidget* const page = wizard->currentPage();
    chooseOn(page, "stock", choices.stock);
    chooseOn(page, "board", choices.board);
    chooseOn(page, "security", choices.security);
    typeDateOn(page, "dateFrom", choices.dateFrom);
    typeDateOn(page, "dateTo", choices.dateTo);
    chooseOn(page, "timeFrame", choices.timeFrame);
    typeOn(page, "outputFile", choices.outputFile);
    chooseOn(page, "extensionComboBox", choices.extension);
    typeOn(page, "outputDir", choices.outputDir);
}

void fillFormatPage(QWizard* wizard, const ExportChoices& choices)
{
    QWidget* const page = wizard->currentPage();
    chooseOn(page, "lineFormat", choices.lineFormat);
    chooseOn(page, "separator", choices.separator);
    chooseOn(page, "dateFormat", choices.dateFormat);
    chooseOn(page, "timeFormat", choices.timeFormat);
    auto* const header = page->findChild<QCheckBox*>(QStringLiteral("writeHead"));
    QVERIFY(header);
    if (header->isChecked() != choices.header)
        click(header);
    QCOMPARE(header->isChecked(), choices.header);
}

void fillExportWizard(QWizard* wizard, const ExportChoices& choices)
{
    fillSeriesPage(wizard, choices);
    click(wizard->button(QWizard::NextButton));
    fillFormatPage(wizard, choices);
}

} // namespace testsupport
