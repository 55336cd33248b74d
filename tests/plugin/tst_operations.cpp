// SPDX-License-Identifier: MIT
// A program that is compiled against the plug-in's headers: what it can make without a parent, and
// which operations it can call by itself.

#include "columnsheader.h"
#include "columnsimportpage.h"
#include "columnstablewidget.h"
#include "exporttadatawizard.h"
#include "formatexportpage.h"
#include "formatimportpage.h"
#include "importtadatawizard.h"
#include "seriesexportpage.h"
#include "seriesimportpage.h"
#include "seriesselectormodels.h"
#include "support/child.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "tadatamanager.h"
#include "tadatamanagerpropertiesform.h"
#include "tadatamanagerpropertiespage.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/terminal/core.h>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTableWidget>

#include <type_traits>

using testsupport::child;

using Lines = QList<QString>;

static_assert(std::is_default_constructible_v<TADataManagerPropertiesForm>);
static_assert(std::is_default_constructible_v<TADataManagerPropertiesPage>);
static_assert(std::is_constructible_v<StockWithStoredSelectorModel, bool>);
static_assert(std::is_constructible_v<BoardWithStoredSelectorModel, bool>);
static_assert(std::is_constructible_v<SecurityWithStoredSelectorModel, bool>);
static_assert(std::is_constructible_v<ImportTADataWizard, const Lines&>);
static_assert(std::is_default_constructible_v<SeriesImportPage>);
static_assert(std::is_constructible_v<FormatImportPage, const Lines&>);
static_assert(std::is_constructible_v<ColumnsImportPage, const Lines&>);
static_assert(std::is_constructible_v<ColumnsHeader, QWizardPage*>);
static_assert(std::is_default_constructible_v<ColumnsTableWidget>);
static_assert(std::is_default_constructible_v<ExportTADataWizard>);
static_assert(std::is_default_constructible_v<SeriesExportPage>);
static_assert(std::is_default_constructible_v<FormatExportPage>);

class TestOperations final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void makesTheMenu();
    void makesACommand();
    void setsTheDaysOfTheForm();
    void fillsEveryPage();
    void showsThePreviewOfASeparator();
    void makesARoleBox();
    void namesTheOutputFile();
    void asksForADirectory();
    void validatesThePages();

private:
    const Lines m_lines{QStringLiteral("a,b,c"), QStringLiteral("1,2,3")};
};

void TestOperations::init()
{
    testsupport::failOnStrayWarnings();
}

void TestOperations::cleanup()
{
    QVERIFY(ICore::getDir(QString(), false).removeRecursively());
}

void TestOperations::makesTheMenu()
{
    TADataManager manager;
    manager.createMenu();
    QVERIFY(ActionManager::instance()->action("1_Import"));
    QVERIFY(ActionManager::instance()->action("3_Edit"));
}

void TestOperations::makesACommand()
{
    TADataManager manager;
    CommandContainer container("container");
    manager.createMenuCommand(&container, "id", QIcon(), QStringLiteral("text"),
                              SLOT(removeOldSecondFiles()), QKeySequence(Qt::Key_F12));
    QCOMPARE(container.entries().size(), 1);
    const Command* const command = container.entries().constFirst().command;
    QVERIFY(command);
    QCOMPARE(command->id(), QByteArray("id"));
    QCOMPARE(command->defaultText(), QStringLiteral("text"));
    QCOMPARE(command->defaultShortcut(), QKeySequence(Qt::Key_F12));
    QCOMPARE(command->parent(), &manager);
    QVERIFY(ActionManager::instance()->action("id"));
}

void TestOperations::setsTheDaysOfTheForm()
{
    TADataManagerPropertiesForm form;
    const auto* const days = child<QSpinBox>(&form, "storeForDays");
    form.on_deleteSeconds_stateChanged(Qt::Unchecked);
    QVERIFY(!days->isEnabled());
    form.on_deleteSeconds_stateChanged(Qt::Checked);
    QVERIFY(days->isEnabled());
}

void TestOperations::fillsEveryPage()
{
    const auto fillsAgain = [](auto& page, const char* box) {
        const int before = child<QComboBox>(&page, box)->count();
        page.setupPage();
        return before > 0 && child<QComboBox>(&page, box)->count() == 2 * before;
    };
    SeriesImportPage importSeries;
    QVERIFY(fillsAgain(importSeries, "timeFrame"));
    FormatImportPage importFormat(m_lines);
    QVERIFY(fillsAgain(importFormat, "dateFormat"));
    SeriesExportPage exportSeries;
    QVERIFY(fillsAgain(exportSeries, "timeFrame"));
    FormatExportPage exportFormat;
    QVERIFY(fillsAgain(exportFormat, "lineFormat"));
}

void TestOperations::showsThePreviewOfASeparator()
{
    FormatImportPage page(m_lines);
    const auto* const table = child<QTableWidget>(&page, "fileData");
    page.separatorChanged(1); // the comma
    QCOMPARE(table->columnCount(), 3);
    page.separatorChanged(2); // the semicolon
    QCOMPARE(table->columnCount(), 1);
}

void TestOperations::makesARoleBox()
{
    ColumnsImportPage page(m_lines);
    ColumnsHeader header(&page);
    const QComboBox* const box = header.newHeaderBox();
    QCOMPARE(box->parent(), &header);
    QCOMPARE(box->count(), 10);
    QVERIFY(header.boxes().isEmpty());
}

void TestOperations::namesTheOutputFile()
{
    SeriesExportPage page;
    auto* const file = child<QLineEdit>(&page, "outputFile");
    file->setText(QStringLiteral("mine"));
    page.updateOutputFileName();
    QCOMPARE(file->text(), QString()); // no security is chosen
    file->setText(QStringLiteral("mine"));
    page.outputFileEdited();
    page.updateOutputFileName();
    QCOMPARE(file->text(), QStringLiteral("mine"));
}

void TestOperations::asksForADirectory()
{
    SeriesExportPage page;
    testsupport::ModalSteps steps;
    steps.on<QFileDialog>([](QFileDialog* dialog) { hands::keyClick(dialog, Qt::Key_Escape); });
    page.on_chooseDir_clicked();
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestOperations::validatesThePages()
{
    QVERIFY(!SeriesImportPage().validate());
    QVERIFY(!SeriesExportPage().validate());
}

int main(int argc, char** argv)
{
    // The dialog that Qt draws is the one that a test can drive.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    const vexdesk::Core core;
    TestOperations test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_operations.moc"
