// SPDX-License-Identifier: MIT
// Every window of the terminal and of the plug-in in one language: nothing is left in the other
// one, and nothing is cut. The language is in the environment variable DIALOG_LANGUAGE, "ru" or
// "en"; without it, Russian. The plug-in is loaded from its file as the terminal does it.

#include "desk/commands.h"
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "desk/languagechoice.h"
#include "desk/mainwindow.h"
#include "desk/optionsdialog.h"
#include "desk/pluginloader.h"
#include "support/child.h"
#include "support/commandwindows.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/terminal.h"
#include "support/textcheck.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"

#include <vexdesk/icharts.h>
#include <vexdesk/icore.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFileIconProvider>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QWizard>

#include <algorithm>
#include <memory>

using testsupport::child;
using testsupport::click;
using testsupport::ModalSteps;
using testsupport::WhenShown;

namespace {

// A separator of the wizards by its number: comma, semicolon or, at the import, "not set" first.
constexpr int importComma = 1;

constexpr char bars[] = "20240115,100000,1.10,1.40,1.00,1.20,5,6.00,7\n"
                        "20240115,100100,1.20,1.30,1.10,1.20,5,6.00,7\n";
constexpr int barColumns = 9;

QWidget* chooseByIndex(QWidget* page, const char* name, int index)
{
    auto* const box = child<QComboBox>(page, name);
    testsupport::choose(box, index);
    return box;
}

// The series NORD/MAIN/ALFA: the first entry of a box is "not selected".
void chooseSeries(QWidget* page)
{
    for (const auto& [name, code] :
         {std::pair("stock", "NORD"), std::pair("board", "MAIN"), std::pair("security", "ALFA")}) {
        testsupport::choose(child<QComboBox>(page, name), QLatin1String(code));
    }
}

} // namespace

class TestDialogTexts final : public QObject
{
    Q_OBJECT

public:
    explicit TestDialogTexts(vexdesk::Language language)
        : m_language(language)
    {}

private Q_SLOTS:
    void init();
    void cleanup();

    void mainWindowWithEveryMenu();
    void mainWindowWithoutPlugins();
    void chart();
    void pluginsDialog();
    void pluginsDialogWithRefusedFiles();
    void optionsDialogWithThePluginsPages();
    void optionsDialogWithoutPages();
    void about();
    void errorReport();
    void kindsOfFiles();
    void languageBox();
    void importWizard();
    void importMessages_data();
    void importMessages();
    void exportWizard();
    void exportQuestion();
    void editor();
    void progressDialogs();
    void windowsOfTheDataQuality_data();
    void windowsOfTheDataQuality();

private:
    void makeTerminal(const QStringList& pluginDirectories);
    /// Notes what is wrong with the texts of the window.
    void look(const QWidget* window);
    void lookAndClose(ModalSteps& steps);
    /// The file dialog of the import.
    void chooseFile(ModalSteps& steps, const QString& path);
    void fillImport(QWizard* wizard, bool looks);
    void fillExport(QWizard* wizard, bool looks);
    /// The wizard up to the end, and the progress behind it.
    void finishImport(ModalSteps& steps);
    void runImport();
    void run(ModalSteps& steps, const char* command);
    QString input(const QByteArray& content);

    vexdesk::Language m_language;
    QStringList m_faults;
    std::unique_ptr<QTemporaryDir> m_files;
    std::unique_ptr<testsupport::Terminal> m_terminal;
};

void TestDialogTexts::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::userFolder().removeRecursively();
    m_faults.clear();
    m_files = std::make_unique<QTemporaryDir>();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_terminal = testsupport::Terminal::withPlugin(m_language);
}

void TestDialogTexts::cleanup()
{
    m_terminal.reset();
    m_files.reset();
}

void TestDialogTexts::makeTerminal(const QStringList& pluginDirectories)
{
    m_terminal.reset();
    m_terminal = std::make_unique<testsupport::Terminal>(m_language, pluginDirectories);
}

void TestDialogTexts::look(const QWidget* window)
{
    QCoreApplication::sendPostedEvents(); // layouts
    m_faults += testsupport::foreignTexts(window, m_language == vexdesk::Language::English
                                                      ? testsupport::Speech::English
                                                      : testsupport::Speech::Russian);
    m_faults += testsupport::cutTexts(window);
}

void TestDialogTexts::lookAndClose(ModalSteps& steps)
{
    steps.on<QDialog>([this](QDialog* dialog) {
        look(dialog);
        hands::keyClick(dialog, Qt::Key_Escape);
    });
}

void TestDialogTexts::run(ModalSteps& steps, const char* command)
{
    vexdesk::triggerCommand(command);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
}

QString TestDialogTexts::input(const QByteArray& content)
{
    const QString path = m_files->filePath(QStringLiteral("bars.csv"));
    testsupport::writeFile(path, content);
    return path;
}

void TestDialogTexts::chooseFile(ModalSteps& steps, const QString& path)
{
    steps.on<QFileDialog>([path](QFileDialog* dialog) {
        auto* const edit = child<QLineEdit>(dialog, "fileNameEdit");
        edit->setText(path);
        hands::keyClick(edit, Qt::Key_Return);
    });
}

void TestDialogTexts::fillImport(QWizard* wizard, bool looks)
{
    const auto note = [&] {
        if (looks)
            look(wizard);
    };
    note();
    chooseSeries(wizard->currentPage());
    note();
    click(wizard->button(QWizard::NextButton));
    note();
    chooseByIndex(wizard->currentPage(), "separator", importComma);
    note();
    click(wizard->button(QWizard::NextButton));
    note(); // with what is missing
    const QList<QComboBox*> boxes = testsupport::roleBoxes(wizard);
    QCOMPARE(boxes.size(), barColumns);
    for (int column = 0; column < barColumns; ++column)
        testsupport::choose(boxes.at(column), column + 1);
    note();
}

void TestDialogTexts::finishImport(ModalSteps& steps)
{
    steps.on<QWizard>([this](QWizard* wizard) {
        fillImport(wizard, false);
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
}

void TestDialogTexts::runImport()
{
    ModalSteps steps;
    chooseFile(steps, input(bars));
    finishImport(steps);
    steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::Ok)); });
    run(steps, "1_Import");
}

void TestDialogTexts::fillExport(QWizard* wizard, bool looks)
{
    if (looks)
        look(wizard);
    QWidget* const page = wizard->currentPage();
    chooseSeries(page);
    child<QLineEdit>(page, "outputFile")->setText(QStringLiteral("out"));
    child<QLineEdit>(page, "outputDir")->setText(m_files->path());
    if (looks)
        look(wizard);
    click(wizard->button(QWizard::NextButton));
}

void TestDialogTexts::mainWindowWithEveryMenu()
{
    look(m_terminal->window());
    const QList<QMenu*> menus = m_terminal->window()->menuBar()->findChildren<QMenu*>();
    QVERIFY(menus.size() >= 6);
    for (QMenu* const menu : menus) {
        menu->popup(m_terminal->window()->mapToGlobal(QPoint(0, 0)));
        look(menu);
        menu->close();
    }
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
    const QStringList shared = testsupport::sharedAccessKeys(m_terminal->window());
    QVERIFY2(shared.isEmpty(), qPrintable(shared.join(u'\n')));
}

void TestDialogTexts::mainWindowWithoutPlugins()
{
    makeTerminal({m_files->path(), m_files->filePath(QStringLiteral("missing"))});
    look(m_terminal->window());
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
}

void TestDialogTexts::chart()
{
    const QWidget* const window = m_terminal->window();
    // The list of the store comes from a thread.
    QTRY_VERIFY(child<QLabel>(window, "seriesMessage")->isVisible());
    look(window);
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
    runImport();
    ICore::instance()->charts()->show(
        {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")},
        QDate(2024, 1, 15), QTime(), {});
    QTRY_VERIFY(window->findChild<QPushButton*>(QStringLiteral("chartShowAll")));
    QTRY_VERIFY(child<QPushButton>(window, "chartShowAll")->isEnabled());
    QTRY_VERIFY(!child<QLabel>(window, "chartReadout")->text().isEmpty());
    look(window);
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
    ModalSteps steps;
    lookAndClose(steps);
    run(steps, "Desk.Chart.GoTo");
    vexdesk::triggerCommand("Desk.Chart.Close");
    look(window);
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
}

void TestDialogTexts::pluginsDialog()
{
    ModalSteps steps;
    lookAndClose(steps);
    run(steps, "Desk.Plugins");
}

void TestDialogTexts::pluginsDialogWithRefusedFiles()
{
    const QString file = m_files->filePath(QStringLiteral("empty.so"));
    testsupport::writeFile(file, QByteArray());
    makeTerminal({m_files->path()});
    QCOMPARE(m_terminal->loader().refusedCount(), 1);
    look(m_terminal->window());
    ModalSteps steps;
    lookAndClose(steps);
    run(steps, "Desk.Plugins");
}

void TestDialogTexts::optionsDialogWithThePluginsPages()
{
    ModalSteps steps;
    steps.on<vexdesk::OptionsDialog>([this](vexdesk::OptionsDialog* dialog) {
        QVERIFY(child<QCheckBox>(dialog, "deleteSeconds"));
        auto* const categories = child<QListWidget>(dialog, "categories");
        QCOMPARE(categories->count(), 2);
        for (int row = 0; row < categories->count(); ++row) {
            categories->setCurrentRow(row);
            look(dialog);
        }
        auto* const search = child<QLineEdit>(dialog, "search");
        search->setText(QStringLiteral("***"));
        look(dialog);
        dialog->reject();
    });
    run(steps, "Desk.Options");
}

void TestDialogTexts::optionsDialogWithoutPages()
{
    makeTerminal({m_files->path()});
    ModalSteps steps;
    lookAndClose(steps);
    run(steps, "Desk.Options");
}

void TestDialogTexts::about()
{
    ModalSteps steps;
    lookAndClose(steps);
    run(steps, "Desk.About");
}

void TestDialogTexts::errorReport()
{
    ModalSteps steps;
    lookAndClose(steps);
    vexdesk::reportException(nullptr);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
}

// The file dialog names them in its table.
void TestDialogTexts::kindsOfFiles()
{
    QCOMPARE(QFileIconProvider().type(QFileInfo(m_files->path())),
             m_language == vexdesk::Language::English ? QStringLiteral("Folder")
                                                      : QStringLiteral("Папка"));
}

// In the language that the user has chosen, which is not the one of the terminal.
void TestDialogTexts::languageBox()
{
    const bool toRussian = m_language == vexdesk::Language::English;
    ModalSteps steps;
    steps.on<QMessageBox>([&](QMessageBox* box) {
        m_faults += testsupport::foreignTexts(box, toRussian ? testsupport::Speech::Russian
                                                             : testsupport::Speech::English);
        m_faults += testsupport::cutTexts(box);
        hands::keyClick(box, Qt::Key_Escape);
    });
    run(steps, toRussian ? "Desk.Language.ru" : "Desk.Language.en");
    QVERIFY(m_terminal->window()->isVisible());
}

void TestDialogTexts::importWizard()
{
    ModalSteps steps;
    steps.on<QFileDialog>([this](QFileDialog* dialog) {
        m_faults += testsupport::foreignTexts(dialog, m_language == vexdesk::Language::English
                                                          ? testsupport::Speech::English
                                                          : testsupport::Speech::Russian);
        auto* const edit = child<QLineEdit>(dialog, "fileNameEdit");
        edit->setText(input(bars));
        hands::keyClick(edit, Qt::Key_Return);
    });
    steps.on<QWizard>([this](QWizard* wizard) {
        fillImport(wizard, true);
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
    lookAndClose(steps);
    run(steps, "1_Import");
}

void TestDialogTexts::importMessages_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isPreviewed");
    QTest::newRow("empty file") << QByteArray() << false;
    QTest::newRow("too few columns") << QByteArray(bars) + "20240116,100000\n" << true;
    QTest::newRow("another date") << QByteArray(bars) + "2024-01-15,100000,1,1,1,1,5,6.00,7\n"
                                  << true;
    QTest::newRow("another time") << QByteArray(bars) + "20240115,1000,1,1,1,1,5,6.00,7\n" << true;
    QTest::newRow("no price") << QByteArray(bars) + "20240115,100200,x,1,1,1,5,6.00,7\n" << true;
    QTest::newRow("no volume") << QByteArray(bars) + "20240115,100200,1,1,1,1,x,6.00,7\n" << true;
    QTest::newRow("no open interest") << QByteArray(bars) + "20240115,100200,1,1,1,1,5,6.00,x\n"
                                      << true;
}

void TestDialogTexts::importMessages()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, isPreviewed);
    ModalSteps steps;
    chooseFile(steps, input(content));
    if (isPreviewed)
        finishImport(steps);
    lookAndClose(steps);
    run(steps, "1_Import");
}

void TestDialogTexts::exportWizard()
{
    runImport();
    ModalSteps steps;
    steps.on<QWizard>([this](QWizard* wizard) {
        fillExport(wizard, true);
        look(wizard);
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
    lookAndClose(steps);
    run(steps, "2_Export");
}

void TestDialogTexts::exportQuestion()
{
    runImport();
    testsupport::writeFile(m_files->filePath(QStringLiteral("out.txt")), "in the way");
    ModalSteps steps;
    steps.during<QWizard>([this](QWizard* wizard) {
        fillExport(wizard, false);
        hands::keyClick(wizard, Qt::Key_Escape);
    });
    lookAndClose(steps);
    run(steps, "2_Export");
}

void TestDialogTexts::editor()
{
    runImport();
    ModalSteps steps;
    steps.on<QDialog>([this](QDialog* dialog) {
        look(dialog);
        chooseSeries(dialog);
        for (const auto& [name, day] : {std::pair("fromDateTime", QDate(2024, 1, 15)),
                                        std::pair("toDateTime", QDate(2024, 1, 16))}) {
            testsupport::child<QDateTimeEdit>(dialog, name)->setDateTime(day.startOfDay());
        }
        click(child<QPushButton>(dialog, "loadDataButton"));
        look(dialog);
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    run(steps, "3_Edit");
}

void TestDialogTexts::progressDialogs()
{
    const WhenShown shown("QProgressDialog", [this](QWidget* dialog) { look(dialog); });
    // Enough days that the job does not end before its dialog is shown.
    QByteArray content;
    for (int day = 0; day < 2000; ++day)
        content += QDate(2010, 1, 1).addDays(day).toString(QStringLiteral("yyyyMMdd")).toLatin1() +
                   ",100000,1,1,1,1,5,6.00,7\n";
    const QString file = input(content);
    {
        ModalSteps steps;
        chooseFile(steps, file);
        steps.on<QWizard>([this](QWizard* wizard) {
            fillImport(wizard, false);
            click(wizard->button(QWizard::FinishButton));
        });
        steps.letPass<QProgressDialog>();
        steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::Ok)); });
        run(steps, "1_Import");
        QCOMPARE(shown.times(), 1);
    }
    ModalSteps steps;
    steps.on<QWizard>([this](QWizard* wizard) {
        testsupport::child<QDateEdit>(wizard->currentPage(), "dateFrom")
            ->setDate(QDate(2010, 1, 1));
        fillExport(wizard, false);
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
    steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::Ok)); });
    run(steps, "2_Export");
    QCOMPARE(shown.times(), 2);
}

void TestDialogTexts::windowsOfTheDataQuality_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("window");
    QTest::addColumn<QByteArray>("told"); // a label: when it has a text, there is all to look at
    QTest::newRow("safe import") << QByteArray("TADataQuality.SafeImport")
                                 << QByteArray("SafeImportWindow") << QByteArray("verdict");
    QTest::newRow("health") << QByteArray("TADataQuality.Health") << QByteArray("HealthWindow")
                            << QByteArray("day");
    QTest::newRow("points") << QByteArray("TADataQuality.Points") << QByteArray("PointsWindow")
                            << QByteArray("effect");
}

void TestDialogTexts::windowsOfTheDataQuality()
{
    QFETCH(const QByteArray, command);
    QFETCH(const QByteArray, window);
    QFETCH(const QByteArray, told);
    runImport();
    vexdesk::triggerCommand(command);
    if (command == "TADataQuality.SafeImport") {
        // Its name is shown as well.
        const bool isEnglish = m_language == vexdesk::Language::English;
        const QString file =
            m_files->filePath(isEnglish ? QStringLiteral("more.csv") : QStringLiteral("ещё.csv"));
        testsupport::writeFile(file, bars);
        QVERIFY(testsupport::dropFiles(m_terminal->window(), {file}));
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [&window](QWidget* one) {
        return one->isVisible() && one->inherits(window.constData());
    });
    QVERIFY(shown != windows.end());
    look(*shown);
    EVENTUALLY(!child<QLabel>(*shown, told.constData())->text().isEmpty());
    look(*shown);
    m_faults += testsupport::sharedAccessKeys(*shown);
    QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
    hands::keyClick(*shown, Qt::Key_Escape);
}

int main(int argc, char** argv)
{
    vexdesk::DeskApplication application(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const auto language =
        vexdesk::chooseLanguage({qEnvironmentVariable("DIALOG_LANGUAGE")}, QStringList());
    application.setLanguage(language);
    TestDialogTexts test(language);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_dialogtexts.moc"
