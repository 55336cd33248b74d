// SPDX-License-Identifier: MIT
// The import command from the menu to the store: the plug-in is loaded from its file, and its
// windows are answered with mouse and keys.

#include "support/child.h"
#include "support/commandwindows.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/loadedplugin.h"
#include "support/markingtranslator.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"

#include <vexdesk/history/restorepoint.h>

#include <QtCore/QDirIterator>
#include <QtCore/QScopeGuard>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QWizard>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <optional>

using testsupport::click;
using testsupport::closeFromOutside;
using testsupport::ImportChoices;
using testsupport::LoadedPlugin;
using testsupport::ModalSteps;
using testsupport::readTree;
using testsupport::Shown;
using testsupport::warning;
using testsupport::WhenShown;
using testsupport::writeFile;

using Tree = QMap<QString, QByteArray>;

namespace {

// A day file that nobody can open until the test allows it.
class BlockedFile final
{
public:
    explicit BlockedFile(const QString& path)
        : m_path(path)
        , m_opening(testsupport::SystemCall::Open, path, [this] { m_permit.acquire(); })
    {}
    // Whoever waits is not left behind.
    ~BlockedFile() { release(); }
    Q_DISABLE_COPY_MOVE(BlockedFile)

    void release() { m_permit.release(); }
    QByteArray content() const { return testsupport::readFile(m_path); }

private:
    QString m_path;
    QSemaphore m_permit;
    testsupport::Meanwhile m_opening;
};

Shown success()
{
    return testsupport::information(QStringLiteral("Успешное завершение импорта"),
                                    QStringLiteral("Импорт данных ТА успешно завершен"));
}

// What the dialog shows as the job goes along, told by someone who reads the file in the same way:
// at the first line of each day how far the reader has come, and 100 at the end.
QList<int> expectedProgress(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QTextStream stream(&file);
    QList<int> values;
    QString day;
    const auto append = [&values](int value) {
        if (values.isEmpty() || values.last() != value)
            values.append(value);
    };
    while (!stream.atEnd()) {
        const QString lineDay = stream.readLine().section(QLatin1Char(';'), 0, 0);
        if (lineDay != day)
            append(static_cast<int>(double(file.pos()) / double(file.size()) * 100.0));
        day = lineDay;
    }
    append(100);
    return values;
}

// Every file and directory below a directory.
QStringList everything(const QDir& root)
{
    QStringList entries;
    QDirIterator walk(root.path(),
                      QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        entries.append(root.relativeFilePath(walk.next()));
    entries.sort();
    return entries;
}

constexpr char command[] = "1_Import";
constexpr char minuteInput[] = "20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n";

} // namespace

class TestImportCommand final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void asksForATextFile();
    void importsMinuteBars();
    void importsSecondBars();
    void importsAFileWithAHeader();
    void importsAgainOverTheSameDays();
    void anImportCanBePutBack();
    void leavesNoTraceWhenNoFileIsChosen();
    void leavesNoTraceWhenTheWizardIsCancelled_data();
    void leavesNoTraceWhenTheWizardIsCancelled();
    void staysInTheFileDialogForADirectory();
    void staysInTheFileDialogForAMissingFile();
    void warnsOfAFileThatHasGone();
    void warnsOfAPipe();
    void warnsOfAnEmptyFile();
    void showsTenLinesAtMost_data();
    void showsTenLinesAtMost();
    void keepsTheBarsBeforeAWrongLine();
    void showsANameAsItIs();
    void tellsTheBeginningOfAHugeField();
    void itsTextsAreItsOwn_data();
    void itsTextsAreItsOwn();
    void tellsOfADayFileThatCannotBeWritten();
    void goesOnWhenTheJobEndsBeforeItsDialogIsShown();
    void goesOnAfterEachOfManyShortJobs();
    void theProgressDialogCannotBeClosed();
    void showsTheProgressInOrder();

private:
    void typeFileName(QFileDialog* dialog, const QString& name);
    void chooseFile(ModalSteps& steps, const QString& path);
    void fillWizard(ModalSteps& steps, const ImportChoices& choices);
    // The command with a file that it can show, and with one that it cannot: the box at its end.
    Shown importFile(const QString& path, const ImportChoices& choices = ImportChoices());
    Shown refusalOf(const QString& path);

    QString input(const QByteArray& content) const;
    QString seriesPath(const QString& name) const
    {
        return m_plugin->store().absoluteFilePath(QStringLiteral("NORD/MAIN/GRAN/") + name);
    }
    Tree stored() const { return readTree(QDir(seriesPath(QString()))); }

    std::unique_ptr<LoadedPlugin> m_plugin;
    std::unique_ptr<QTemporaryDir> m_input;
};

void TestImportCommand::init()
{
    testsupport::failOnStrayWarnings();
    m_plugin = std::make_unique<LoadedPlugin>();
    m_plugin->start();
    m_input = std::make_unique<QTemporaryDir>();
}

void TestImportCommand::cleanup()
{
    m_input.reset();
    m_plugin.reset();
}

void TestImportCommand::typeFileName(QFileDialog* dialog, const QString& name)
{
    auto* const edit = testsupport::child<QLineEdit>(dialog, "fileNameEdit");
    QVERIFY(edit);
    edit->clear();
    hands::keyClicks(edit, name);
    hands::keyClick(edit, Qt::Key_Return);
}

void TestImportCommand::chooseFile(ModalSteps& steps, const QString& path)
{
    steps.on<QFileDialog>([this, path](QFileDialog* dialog) { typeFileName(dialog, path); });
}

void TestImportCommand::fillWizard(ModalSteps& steps, const ImportChoices& choices)
{
    steps.on<QWizard>([choices](QWizard* wizard) {
        fillImportWizard(wizard, choices);
        click(wizard->button(QWizard::FinishButton));
    });
}

Shown TestImportCommand::importFile(const QString& path, const ImportChoices& choices)
{
    ModalSteps steps;
    chooseFile(steps, path);
    fillWizard(steps, choices);
    steps.letPass<QProgressDialog>();
    return testsupport::lastBox(steps, command);
}

Shown TestImportCommand::refusalOf(const QString& path)
{
    ModalSteps steps;
    chooseFile(steps, path);
    return testsupport::lastBox(steps, command);
}

QString TestImportCommand::input(const QByteArray& content) const
{
    const QString path = m_input->filePath(QStringLiteral("bars.txt"));
    writeFile(path, content);
    return path;
}

void TestImportCommand::asksForATextFile()
{
    ModalSteps steps;
    steps.on<QFileDialog>([](QFileDialog* dialog) {
        QVERIFY(!dialog->parentWidget());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Выбор файла для импорта"));
        QCOMPARE(dialog->nameFilters(),
                 QStringList{QStringLiteral("Текстовые файлы (*.txt *.csv)")});
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    testsupport::run(steps, command);
}

void TestImportCommand::importsMinuteBars()
{
    ImportChoices choices;
    choices.roles = ImportChoices::allRoles();
    const Shown shown = importFile(input("20240115;100000;1.5;1.7;1.4;1.6;12;345.6;7\n"
                                         "20240115;100100;1.6;1.8;1.5;1.7;13;346.785;8\n"
                                         "20240116;235900;2;2;2;2;0;0;-1\n"),
                                   choices);
    QCOMPARE(shown, success());
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1.50;1.70;1.40;1.60;12;345.60;7\n"
                                                 "100100;1.60;1.80;1.50;1.70;13;346.79;8\n"},
                             {"20240116_60.iss", "235900;2.00;2.00;2.00;2.00;0;0.00;-1\n"}}));
}

void TestImportCommand::importsSecondBars()
{
    ImportChoices choices;
    choices.timeFrame = QStringLiteral("1 секунда");
    QByteArray content;
    QByteArray seconds;
    for (int second = 1; second <= 61; ++second) {
        const QByteArray time =
            QTime(10, 0).addSecs(second).toString(QStringLiteral("hhmmss")).toLatin1();
        const QByteArray price = QByteArray::number(100 + second);
        content +=
            "20240115;" + time + ";" + price + ";" + price + ";" + price + ";" + price + "\n";
        seconds += time + ";" + price + ".00;" + price + ".00;" + price + ".00;" + price +
                   ".00;0;0.00;0\n";
    }
    content += "20240116;100001;5;6;4;5.5\n";

    const Shown shown = importFile(input(content), choices);
    QCOMPARE(shown, success());
    QCOMPARE(stored(), Tree({{"20240115_1.iss", seconds},
                             {"20240115_60", "100100;101.00;160.00;101.00;160.00;0;0.00;0\n"
                                             "100200;161.00;161.00;161.00;161.00;0;0.00;0\n"},
                             {"20240116_1.iss", "100001;5.00;6.00;4.00;5.50;0;0.00;0\n"},
                             {"20240116_60", ""}}));
}

void TestImportCommand::importsAFileWithAHeader()
{
    ImportChoices choices;
    choices.header = true;
    const Shown shown = importFile(input("<DATE>;<TIME>;<OPEN>;<HIGH>;<LOW>;<CLOSE>\n"
                                         "20240115;100000;1.5;1.7;1.4;1.6\n"),
                                   choices);
    QCOMPARE(shown, success());
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1.50;1.70;1.40;1.60;0;0.00;0\n"}}));
}

void TestImportCommand::importsAgainOverTheSameDays()
{
    const QString path = input("20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n");
    const Tree expected{{"20240115_60.iss", "100000;1.00;1.00;1.00;1.00;0;0.00;0\n"},
                        {"20240116_60.iss", "100000;2.00;2.00;2.00;2.00;0;0.00;0\n"}};
    writeFile(seriesPath("20240115_60.iss"), "what was there before\n");
    for (int time = 0; time < 2; ++time) {
        QCOMPARE(importFile(path), success());
        QCOMPARE(stored(), expected);
    }
}

void TestImportCommand::anImportCanBePutBack()
{
    const QString path = input(minuteInput);
    writeFile(seriesPath("20240115_60.iss"), "what was there before\n");
    const Tree before = stored();
    QCOMPARE(importFile(path), success());
    QCOMPARE(stored().size(), 2);
    const auto place = *vexdesk::restorePlace(m_plugin->store());
    const auto points = vexdesk::restorePoints(place);
    QVERIFY2(points, qPrintable(points.message()));
    QCOMPARE(points->points.size(), 1);
    const vexdesk::RestorePointRecord& point = points->points.first();
    QCOMPARE(point.by, QStringLiteral("import"));
    QVERIFY(point.isComplete);
    QCOMPARE(point.series, QStringList{"NORD/MAIN/GRAN"});
    QCOMPARE(point.source, QStringList{path});
    QCOMPARE(point.kept, QStringList{"NORD/MAIN/GRAN/20240115_60.iss"});
    QCOMPARE(point.created, QStringList{"NORD/MAIN/GRAN/20240116_60.iss"});
    vexdesk::PuttingBack puttingBack(place, point);
    QVERIFY(puttingBack.begin());
    QVERIFY(puttingBack.run(nullptr));
    QCOMPARE(stored(), before);
}

void TestImportCommand::leavesNoTraceWhenNoFileIsChosen()
{
    ModalSteps steps;
    steps.on<QFileDialog>([](QFileDialog* dialog) {
        click(testsupport::child<QDialogButtonBox>(dialog)->button(QDialogButtonBox::Cancel));
    });
    testsupport::run(steps, command);
    QCOMPARE(everything(m_plugin->user()), QStringList{QStringLiteral("tadata")});
}

void TestImportCommand::leavesNoTraceWhenTheWizardIsCancelled_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<QString>("how");
    for (const char* how : {"button", "escape", "window"}) {
        for (int pages = 0; pages < 3; ++pages) {
            QTest::addRow("%s on page %d", how, pages + 1) << pages << QString::fromLatin1(how);
        }
    }
}

void TestImportCommand::leavesNoTraceWhenTheWizardIsCancelled()
{
    QFETCH(const int, pages);
    QFETCH(const QString, how);
    ModalSteps steps;
    chooseFile(steps, input(minuteInput));
    steps.on<QWizard>([pages, how](QWizard* wizard) {
        const ImportChoices choices;
        fillSeriesPage(wizard, choices);
        if (pages > 0) {
            click(wizard->button(QWizard::NextButton));
            fillFormatPage(wizard, choices);
        }
        if (pages > 1) {
            click(wizard->button(QWizard::NextButton));
            fillColumnsPage(wizard, choices);
        }
        if (how == u"button")
            click(wizard->button(QWizard::CancelButton));
        else if (how == u"escape")
            hands::keyClick(wizard, Qt::Key_Escape);
        else
            QVERIFY(closeFromOutside(wizard));
    });
    testsupport::run(steps, command);
    // The wizard's size is kept all the same.
    QCOMPARE(everything(m_plugin->user()),
             QStringList({QStringLiteral("tadata"), QStringLiteral("vexdesk.ini")}));
}

void TestImportCommand::staysInTheFileDialogForADirectory()
{
    const QString directory = m_input->filePath(QStringLiteral("directory"));
    QVERIFY(QDir().mkpath(directory));
    ModalSteps steps;
    steps.on<QFileDialog>([this, directory](QFileDialog* dialog) {
        typeFileName(dialog, directory);
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->directory(), QDir(directory));
        // Not to the list of names below the field, which may open at any moment and would take it.
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    testsupport::run(steps, command);
    QCOMPARE(everything(m_plugin->user()), QStringList{QStringLiteral("tadata")});
}

void TestImportCommand::staysInTheFileDialogForAMissingFile()
{
    const QString path = m_input->filePath(QStringLiteral("missing.txt"));
    QPointer<QFileDialog> asking;
    ModalSteps steps;
    steps.during<QFileDialog>([this, path, &asking](QFileDialog* dialog) {
        asking = dialog;
        typeFileName(dialog, path);
    });
    steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::Ok)); });
    steps.on<QFileDialog>([&asking](QFileDialog* dialog) {
        QCOMPARE(dialog, asking.data());
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    testsupport::run(steps, command);
    QCOMPARE(everything(m_plugin->user()), QStringList{QStringLiteral("tadata")});
}

// Between the choice and the opening, somebody takes the file away.
void TestImportCommand::warnsOfAFileThatHasGone()
{
    const QString path = input(minuteInput);
    ModalSteps steps;
    steps.on<QFileDialog>([this, path](QFileDialog* dialog) {
        connect(dialog, &QFileDialog::fileSelected, dialog,
                [](const QString& file) { QVERIFY(QFile::remove(file)); });
        typeFileName(dialog, path);
    });
    const Shown shown = testsupport::lastBox(steps, command);
    QCOMPARE(shown, warning(QStringLiteral("Ошибка открытия файла"),
                            QStringLiteral("Невозможно открыть файл ") + path));
    QCOMPARE(everything(m_plugin->user()), QStringList{QStringLiteral("tadata")});
}

// Nobody writes into it: to open it would be to wait for ever.
void TestImportCommand::warnsOfAPipe()
{
    const QString path = m_input->filePath(QStringLiteral("pipe.txt"));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QCOMPARE(refusalOf(path), warning(QStringLiteral("Ошибка открытия файла"),
                                      QStringLiteral("Невозможно открыть файл ") + path));
}

void TestImportCommand::warnsOfAnEmptyFile()
{
    const QString path = input("");
    QCOMPARE(refusalOf(path),
             warning(QStringLiteral("Пустой файл"), QStringLiteral("Файл %1 пуст").arg(path)));
    QCOMPARE(everything(m_plugin->user()), QStringList{QStringLiteral("tadata")});
}

void TestImportCommand::showsTenLinesAtMost_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("lines");
    const auto numbered = [](int count) {
        QStringList lines;
        for (int i = 1; i <= count; ++i)
            lines.append(QStringLiteral("line %1").arg(i));
        return lines;
    };
    const auto row = [&](const char* name, int count, const QString& end, const QString& lastEnd) {
        QTest::newRow(name) << (numbered(count).join(end) + lastEnd).toUtf8()
                            << numbered(qMin(count, 10));
    };
    row("one", 1, "\n", "\n");
    row("one without an end", 1, "\n", "");
    row("nine", 9, "\n", "\n");
    row("ten", 10, "\n", "\n");
    row("ten without an end", 10, "\n", "");
    row("eleven", 11, "\n", "\n");
    row("thousand", 1000, "\n", "\n");
    row("with carriage returns", 12, "\r\n", "\r\n");
    QTest::newRow("blank line") << QByteArray("\n") << QStringList{QString()};
    QTest::newRow("byte-order mark and Cyrillic letters") << QByteArray("\xef\xbb\xbf"
                                                                        "строка\n")
                                                          << QStringList{QStringLiteral("строка")};
}

void TestImportCommand::showsTenLinesAtMost()
{
    QFETCH(const QByteArray, content);
    QStringList seen;
    ModalSteps steps;
    chooseFile(steps, input(content));
    steps.on<QWizard>([&seen](QWizard* wizard) {
        ImportChoices choices;
        fillSeriesPage(wizard, choices);
        click(wizard->button(QWizard::NextButton));
        fillFormatPage(wizard, choices);
        const auto* const table = testsupport::child<QTableWidget>(wizard->currentPage());
        for (int row = 0; row < table->rowCount(); ++row)
            seen.append(table->item(row, 0)->text());
        click(wizard->button(QWizard::CancelButton));
    });
    testsupport::run(steps, command);
    QTEST(seen, "lines");
}

void TestImportCommand::keepsTheBarsBeforeAWrongLine()
{
    const Shown shown = importFile(input("20240115;100000;1;1;1;1\n"
                                         "20240115;100100;2;2;2;2\n"
                                         "20240116;100000;3;3;3;3\n"
                                         "20240116;100100;4;4;4;4\n"
                                         "20240116;100200;<b>;5;5;5\n"
                                         "20240116;100300;6;6;6;6\n"));
    QCOMPARE(shown,
             warning(QStringLiteral("Ошибка"), QStringLiteral("Ошибка при импорте 5-й строки:\n"
                                                              "Некорректное число '<b>'.")));
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1.00;1.00;1.00;1.00;0;0.00;0\n"
                                                 "100100;2.00;2.00;2.00;2.00;0;0.00;0\n"},
                             {"20240116_60.iss", "100000;3.00;3.00;3.00;3.00;0;0.00;0\n"
                                                 "100100;4.00;4.00;4.00;4.00;0;0.00;0\n"}}));
}

void TestImportCommand::showsANameAsItIs()
{
    const QString path = m_input->filePath(QStringLiteral("<b>bars</b>&amp;.txt"));
    writeFile(path, "");
    QCOMPARE(refusalOf(path),
             warning(QStringLiteral("Пустой файл"), QStringLiteral("Файл %1 пуст").arg(path)));
}

// The whole of the job's message would keep a window busy for minutes.
void TestImportCommand::tellsTheBeginningOfAHugeField()
{
    constexpr qsizetype length = 10'000'000;
    constexpr qsizetype shownLength = qsizetype(32) * 1024;
    const QByteArray bars = QByteArray("20240115;100000;1;1;1;1\n").repeated(11);
    const QString beginning = QStringLiteral("Ошибка при импорте 12-й строки:\n"
                                             "Некорректное число '");
    const qsizetype whole = beginning.size() + length + 2; // with "'." behind the field
    const Shown shown =
        importFile(input(bars + "20240115;100100;" + QByteArray(length, 'x') + ";1;1;1\n"));
    QVERIFY(shown.text.startsWith(beginning + QStringLiteral("xxxxxxxxxx")));
    QVERIFY(shown.text.endsWith(u"xxxxxxxxxx'."));
    QVERIFY(shown.text.size() < 1000);
    QCOMPARE(shown.buttons, QMessageBox::Ok);
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QVERIFY(shown.details.startsWith(beginning));
    QVERIFY(shown.details.size() < shownLength + 100);
    // The field in which they stand shows every blank as a plain one.
    const QString leftOut =
        QLocale().toString(whole - shownLength).replace(QChar(QChar::Nbsp), u' ');
    QVERIFY(shown.details.contains(leftOut));
}

void TestImportCommand::tellsOfADayFileThatCannotBeWritten()
{
    const QString blocked = seriesPath(QStringLiteral("20240116_60.iss"));
    QVERIFY(QDir().mkpath(blocked));
    const Shown shown = importFile(input("20240115;100000;1;1;1;1\n20240116;100000;2;2;2;2\n"));
    QCOMPARE(shown, warning(QStringLiteral("Ошибка"),
                            QStringLiteral("Невозможно открыть файл ") + blocked));
    QCOMPARE(stored(), Tree({{"20240115_60.iss", "100000;1.00;1.00;1.00;1.00;0;0.00;0\n"}}));
}

void TestImportCommand::goesOnWhenTheJobEndsBeforeItsDialogIsShown()
{
    BlockedFile day(seriesPath(QStringLiteral("20240115_60.iss")));
    // The event loop of the dialog has not begun: it must notice what is over already.
    const WhenShown release("QProgressDialog", [&day](QWidget*) {
        day.release();
        QVERIFY(QThreadPool::globalInstance()->waitForDone());
    });
    const Shown shown = importFile(input("20240115;100000;1;1;1;1\n"));
    QCOMPARE(release.times(), 1);
    QCOMPARE(shown, success());
    QCOMPARE(day.content(), QByteArray("100000;1.00;1.00;1.00;1.00;0;0.00;0\n"));
}

// Some of them end before the command asks whether they have, some after.
void TestImportCommand::goesOnAfterEachOfManyShortJobs()
{
    const QString path = input("20240115;100000;1;1;1;1\n");
    for (int time = 0; time < 10; ++time) {
        QCOMPARE(importFile(path), success());
    }
}

void TestImportCommand::theProgressDialogCannotBeClosed()
{
    BlockedFile day(seriesPath(QStringLiteral("20240116_60.iss")));
    ModalSteps steps;
    chooseFile(steps, input("20240115;100000;1;1;1;1\n"
                            "20240116;100000;2;2;2;2\n"
                            "20240117;100000;3;3;3;3\n"));
    fillWizard(steps, ImportChoices());
    steps.during<QProgressDialog>([&day](QProgressDialog* dialog) {
        const auto release = qScopeGuard([&day] { day.release(); });
        // The reader has come to the end of so small a file, but the job has not: that is no
        // reason to close.
        QTRY_COMPARE(dialog->value(), 100);
        testsupport::checkThatItStays(dialog, QStringLiteral("Импорт"),
                                      QStringLiteral("Импортирую..."));
    });
    const Shown shown = testsupport::lastBox(steps, command);
    QCOMPARE(shown, success());
    QCOMPARE(day.content(), QByteArray("100000;2.00;2.00;2.00;2.00;0;0.00;0\n"));
    QCOMPARE(testsupport::readFile(seriesPath(QStringLiteral("20240115_60.iss"))),
             QByteArray("100000;1.00;1.00;1.00;1.00;0;0.00;0\n"));
    QCOMPARE(testsupport::readFile(seriesPath(QStringLiteral("20240117_60.iss"))),
             QByteArray("100000;3.00;3.00;3.00;3.00;0;0.00;0\n"));
}

void TestImportCommand::showsTheProgressInOrder()
{
    QByteArray content;
    for (int day = 11; day <= 16; ++day) {
        for (int second = 0; second < 2000; ++second) {
            content += "202401" + QByteArray::number(day) + ";" +
                       QTime(10, 0).addSecs(second).toString(QStringLiteral("hhmmss")).toLatin1() +
                       ";1;1;1;1\n";
        }
    }
    const QString path = input(content);

    // The job waits at its first day until somebody looks at the dialog.
    BlockedFile firstDay(seriesPath(QStringLiteral("20240111_60.iss")));
    QList<int> values;
    QList<QThread*> threads;
    const WhenShown watch("QProgressDialog", [&](QWidget* dialog) {
        const auto* const bar = testsupport::child<QProgressBar>(dialog);
        const auto note = [&values, &threads](int value) {
            values.append(value);
            threads.append(QThread::currentThread());
        };
        connect(bar, &QProgressBar::valueChanged, dialog, note, Qt::DirectConnection);
        firstDay.release();
    });
    QCOMPARE(importFile(path), success());
    QCOMPARE(values, expectedProgress(path));
    QCOMPARE(values.size(), 7);
    QCOMPARE(threads, QList<QThread*>(values.size(), QThread::currentThread()));
}

void TestImportCommand::itsTextsAreItsOwn_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("title");
    QTest::newRow("success") << QByteArray(minuteInput)
                             << QStringLiteral("ImporterTAData|Успешное завершение импорта");
    QTest::newRow("failure") << QByteArray("20240115;100000;1;1;1;x\n")
                             << QStringLiteral("ImporterTAData|Ошибка");
}

void TestImportCommand::itsTextsAreItsOwn()
{
    QFETCH(const QByteArray, content);
    std::optional<testsupport::MarkingTranslator> translator;
    ModalSteps steps;
    chooseFile(steps, input(content));
    steps.on<QWizard>([&translator](QWizard* wizard) {
        fillImportWizard(wizard, ImportChoices());
        translator.emplace();
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
    const Shown shown = testsupport::lastBox(steps, command);
    QTEST(shown.title, "title");
    QVERIFY2(shown.text.startsWith(u"ImporterTAData|"), qPrintable(shown.text));
}

int main(int argc, char** argv)
{
    // The dialog that the toolkit draws is the one that a test can drive.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    TestImportCommand test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_importcommand.moc"
