// SPDX-License-Identifier: MIT
// The export command from the menu to the written file: the plug-in is loaded from its file, and
// its windows are answered with mouse and keys.

#include "support/commandwindows.h"
#include "support/filetree.h"
#include "support/loadedplugin.h"
#include "support/markingtranslator.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"

#include <vexdesk/database/exception.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/deals.h>

#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QWizard>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <mutex>
#include <optional>

using testsupport::click;
using testsupport::LoadedPlugin;
using testsupport::ModalSteps;
using testsupport::readFile;
using testsupport::Shown;
using testsupport::writeFile;

namespace {

constexpr char command[] = "2_Export";
const QDate pastDay(2024, 1, 15);
const QByteArray mark = QByteArrayLiteral("\xef\xbb\xbf");

// An output that lets nobody write until the test reads from it.
class BlockedOutput final
{
public:
    explicit BlockedOutput(const QString& path)
        : m_path(QFile::encodeName(path))
    {
        QCOMPARE(::mkfifo(m_path.constData(), 0600), 0);
    }
    ~BlockedOutput()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(BlockedOutput)

    void release()
    {
        m_descriptor = ::open(m_path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        QVERIFY(m_descriptor >= 0);
    }

private:
    QByteArray m_path;
    int m_descriptor = -1;
};

Shown success()
{
    return testsupport::information(QStringLiteral("Успешное завершение экспорта"),
                                    QStringLiteral("Экспорт данных ТА успешно завершен"));
}

} // namespace

class TestExportCommand final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void exportsStoredDays();
    void exportsTodaysDealsBehindTheStoredDays();
    void leavesNoTraceWhenTheWizardIsCancelled();
    void asksBeforeAFileIsOverwritten();
    void namesAnOutputThatCannotBeOpened();
    void theProgressDialogCannotBeClosed();
    void dealsThatArriveMeanwhileComeAfterwards();
    void letsTheExceptionOfADealPass();
    void goesOnAfterManyShortJobs();
    void showsTheProgressOfALongInterval();
    void theQueueGoesOnBeforeTheUserIsTold();
    void itsTextsAreItsOwn();

private:
    void store(const QString& dayFile, const QByteArray& content) const
    {
        writeFile(m_plugin->store().filePath(QStringLiteral("NORD/MAIN/ALFA/") + dayFile), content);
    }
    void post(const vexdesk::Deal& deal) const;
    vexdesk::Deal dealOfToday(const QTime& time, const char* price) const;
    // The first page up to its button, which is left to the caller.
    void fillSeries(QWizard* wizard, const QDate& from, const QDate& to,
                    const QString& outputDir = QString()) const;
    void fillWizard(ModalSteps& steps, const QDate& from, const QDate& to) const;
    // The whole command: the box at its end.
    Shown exportBars(const QDate& from, const QDate& to) const;
    QString output() const { return m_output->filePath(QStringLiteral("out.txt")); }

    std::unique_ptr<LoadedPlugin> m_plugin;
    std::unique_ptr<QTemporaryDir> m_output;
};

void TestExportCommand::init()
{
    testsupport::failOnStrayWarnings();
    m_plugin = std::make_unique<LoadedPlugin>();
    m_plugin->start();
    m_output = std::make_unique<QTemporaryDir>();
    store(QStringLiteral("20240115_60.iss"), "100100;1.5;1.7;1.4;1.6;12;3.00;7\n"
                                             "100200;1.6;1.8;1.5;1.7;13;1.00;8\n");
}

void TestExportCommand::cleanup()
{
    m_output.reset();
    m_plugin.reset();
}

void TestExportCommand::post(const vexdesk::Deal& deal) const
{
    const vexdesk::DealWriter writer(vexdesk::dealsTable(*m_plugin->core().database()));
    m_plugin->core().rawQueue()->post(writer.table(), writer.row(deal));
}

vexdesk::Deal TestExportCommand::dealOfToday(const QTime& time, const char* price) const
{
    vexdesk::Deal deal;
    deal.stockId = 1;
    deal.boardId = 1;
    deal.securityId = 101;
    deal.moment = datetime(QDateTime(QDate::currentDate(), time, Qt::UTC).toMSecsSinceEpoch());
    deal.price = decimal(QString::fromLatin1(price));
    deal.quantity = 2;
    return deal;
}

void TestExportCommand::fillSeries(QWizard* wizard, const QDate& from, const QDate& to,
                                   const QString& outputDir) const
{
    QVERIFY(!wizard->parentWidget());
    testsupport::ExportChoices choices;
    choices.security = QStringLiteral("ALFA");
    choices.dateFrom = from;
    choices.dateTo = to;
    choices.outputFile = QStringLiteral("out");
    choices.outputDir = outputDir.isNull() ? m_output->path() : outputDir;
    testsupport::fillSeriesPage(wizard, choices);
}

void TestExportCommand::fillWizard(ModalSteps& steps, const QDate& from, const QDate& to) const
{
    steps.on<QWizard>([this, from, to](QWizard* wizard) {
        fillSeries(wizard, from, to);
        click(wizard->button(QWizard::NextButton));
        testsupport::ExportChoices choices;
        choices.lineFormat = QStringLiteral("DATE,TIME,CLOSE");
        choices.separator = QStringLiteral("точка с запятой (;)");
        choices.header = false;
        testsupport::fillFormatPage(wizard, choices);
        click(wizard->button(QWizard::FinishButton));
    });
}

Shown TestExportCommand::exportBars(const QDate& from, const QDate& to) const
{
    ModalSteps steps;
    fillWizard(steps, from, to);
    steps.letPass<QProgressDialog>();
    return testsupport::lastBox(steps, command);
}

void TestExportCommand::exportsStoredDays()
{
    store(QStringLiteral("20240117_60.iss"), "100100;5;5;5;5;1;1;1\n");
    store(QStringLiteral("20240118_60.iss"), "100100;6;6;6;6;1;1;1\n");
    QCOMPARE(exportBars(pastDay, QDate(2024, 1, 17)), success());
    QCOMPARE(readFile(output()), mark + "20240115;100100;1.6\n"
                                        "20240115;100100;1.6\n"
                                        "20240115;100200;1.7\n"
                                        "20240117;100100;5\n");
}

void TestExportCommand::exportsTodaysDealsBehindTheStoredDays()
{
    // Those of the day are the same on both sides of midnight: there are deals on either.
    const QDate today = QDate::currentDate();
    post(dealOfToday(QTime(10, 0, 1), "7.5"));
    post(dealOfToday(QTime(10, 0, 2), "7.7"));
    post(dealOfToday(QTime(10, 2, 0), "8.0"));
    store(today.addDays(-1).toString(QStringLiteral("yyyyMMdd")) + QStringLiteral("_60.iss"),
          "100100;5;5;5;5;1;1;1\n");
    const Shown shown = exportBars(today.addDays(-1), today);
    if (QDate::currentDate() != today)
        QSKIP("the day has changed meanwhile");
    QCOMPARE(shown, success());
    const QByteArray day = today.toString(QStringLiteral("yyyyMMdd")).toLatin1();
    const QByteArray yesterday = today.addDays(-1).toString(QStringLiteral("yyyyMMdd")).toLatin1();
    QCOMPARE(readFile(output()),
             mark + yesterday + ";100100;5\n" + day + ";100100;7.7\n" + day + ";100200;8.0\n");
}

void TestExportCommand::leavesNoTraceWhenTheWizardIsCancelled()
{
    const auto before = testsupport::readTree(m_plugin->store());
    ModalSteps steps;
    steps.on<QWizard>([this](QWizard* wizard) {
        fillSeries(wizard, pastDay, pastDay);
        click(wizard->button(QWizard::NextButton));
        click(wizard->button(QWizard::CancelButton));
    });
    testsupport::run(steps, command);
    QVERIFY(!QFile::exists(output()));
    QCOMPARE(testsupport::readTree(m_plugin->store()), before);
}

void TestExportCommand::asksBeforeAFileIsOverwritten()
{
    writeFile(output(), "precious");
    ModalSteps steps;
    steps.during<QWizard>([this](QWizard* wizard) {
        fillSeries(wizard, pastDay, pastDay);
        click(wizard->button(QWizard::NextButton));
        QCOMPARE(wizard->currentPage()->title(), QStringLiteral("Серия"));
        QCOMPARE(readFile(output()), QByteArray("precious"));
        click(wizard->button(QWizard::NextButton));
        QCOMPARE(wizard->currentPage()->title(), QStringLiteral("Формат"));
        click(wizard->button(QWizard::FinishButton));
    });
    for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
        steps.on<QMessageBox>([answer](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QStringLiteral("Файл существует"));
            click(box->button(answer));
        });
    }
    steps.letPass<QProgressDialog>();
    const Shown shown = testsupport::lastBox(steps, command);
    QCOMPARE(shown, success());
    QVERIFY(readFile(output()).startsWith(mark + "<TICKER>"));
}

void TestExportCommand::namesAnOutputThatCannotBeOpened()
{
    ModalSteps steps;
    steps.on<QWizard>([this](QWizard* wizard) {
        fillSeries(wizard, pastDay, pastDay, m_output->filePath(QStringLiteral("missing")));
        click(wizard->button(QWizard::NextButton));
        click(wizard->button(QWizard::FinishButton));
    });
    steps.letPass<QProgressDialog>();
    const Shown shown = testsupport::lastBox(steps, command);
    QCOMPARE(
        shown,
        testsupport::warning(
            QStringLiteral("Ошибка"),
            QStringLiteral("Невозможно открыть файл %1/missing/out.txt").arg(m_output->path())));
    QVERIFY(!QDir(m_output->filePath(QStringLiteral("missing"))).exists());
}

void TestExportCommand::theProgressDialogCannotBeClosed()
{
    BlockedOutput blocked(output());
    ModalSteps steps;
    steps.during<QWizard>([this](QWizard* wizard) {
        fillSeries(wizard, pastDay, pastDay);
        click(wizard->button(QWizard::NextButton));
        click(wizard->button(QWizard::FinishButton));
    });
    steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::Yes)); });
    steps.during<QProgressDialog>([this, &blocked](QProgressDialog* dialog) {
        const auto release = qScopeGuard([&blocked] { blocked.release(); });
        testsupport::checkThatItStays(dialog, QStringLiteral("Экспорт"),
                                      QStringLiteral("Экспортирую..."));
        QVERIFY(m_plugin->core().rawQueue()->isSuspended());
    });
    const Shown shown = testsupport::lastBox(steps, command);
    QCOMPARE(shown, success());
    QVERIFY(!m_plugin->core().rawQueue()->isSuspended());
}

void TestExportCommand::dealsThatArriveMeanwhileComeAfterwards()
{
    const QDate today = QDate::currentDate();
    post(dealOfToday(QTime(10, 0), "1"));
    const Table& deals = *vexdesk::dealsTable(*m_plugin->core().database());
    const auto count = [&deals] {
        const std::lock_guard lock(deals);
        return deals.masterIndex().count();
    };
    // Once the dialog of the job is there, the queue stands still.
    const testsupport::WhenShown arrival("QProgressDialog", [this, &count](QWidget*) {
        post(dealOfToday(QTime(10, 1), "2"));
        QCOMPARE(count(), 1);
    });
    QCOMPARE(exportBars(today, today), success());
    QCOMPARE(count(), 1 + arrival.times());
    if (QDate::currentDate() != today)
        QSKIP("the day has changed meanwhile");
    QVERIFY(readFile(output()).endsWith(";100000;1\n"));
}

void TestExportCommand::letsTheExceptionOfADealPass()
{
    QList<Table::Column> columns = vexdesk::dealsColumns();
    for (Table::Column& column : columns) {
        if (column.name == u"price")
            column.type = vexdesk::FieldType::Double;
    }
    m_plugin->core().database()->createTable(vexdesk::dealsTableName(), columns);
    const QDate today = QDate::currentDate();
    post(dealOfToday(QTime(10, 0), "1"));
    ModalSteps steps;
    fillWizard(steps, today, today);
    steps.letPass<QProgressDialog>();
    QString message;
    try {
        LoadedPlugin::trigger(command);
    } catch (const Exception& exception) {
        message = exception.message();
    }
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(message, QStringLiteral("Incorrect type conversion."));
    QVERIFY(!m_plugin->core().rawQueue()->isSuspended());
    QVERIFY(!QApplication::activeModalWidget());
}

void TestExportCommand::goesOnAfterManyShortJobs()
{
    for (int i = 0; i < 20; ++i) {
        QFile::remove(output());
        QCOMPARE(exportBars(pastDay, pastDay), success());
    }
}

// Tens of thousands of values, one for each day.
void TestExportCommand::showsTheProgressOfALongInterval()
{
    QCOMPARE(exportBars(QDate(1800, 1, 1), QDate(2024, 1, 17)), success());
    QVERIFY(readFile(output()).endsWith("20240115;100200;1.7\n"));
}

// A user who does not answer must not keep the deals waiting.
void TestExportCommand::theQueueGoesOnBeforeTheUserIsTold()
{
    bool told = false;
    ModalSteps steps;
    fillWizard(steps, pastDay, pastDay);
    steps.letPass<QProgressDialog>();
    steps.on<QMessageBox>([this, &told](QMessageBox* box) {
        QVERIFY(!m_plugin->core().rawQueue()->isSuspended());
        told = true;
        click(box->button(QMessageBox::Ok));
    });
    testsupport::run(steps, command);
    QVERIFY(told);
}

void TestExportCommand::itsTextsAreItsOwn()
{
    const QString missing = m_output->filePath(QStringLiteral("missing"));
    std::optional<testsupport::MarkingTranslator> translator;
    for (const bool fails : {false, true}) {
        QString title;
        const testsupport::WhenShown seen(
            "QProgressDialog", [&title](QWidget* dialog) { title = dialog->windowTitle(); });
        ModalSteps steps;
        steps.on<QWizard>([this, fails, &missing, &translator](QWizard* wizard) {
            fillSeries(wizard, pastDay, pastDay, fails ? missing : QString());
            click(wizard->button(QWizard::NextButton));
            translator.emplace();
            click(wizard->button(QWizard::FinishButton));
        });
        steps.letPass<QProgressDialog>();
        const Shown shown = testsupport::lastBox(steps, command);
        translator.reset();
        if (seen.times() > 0) // a short job may end before
            QCOMPARE(title, QStringLiteral("ExporterTAData|Экспорт"));
        QCOMPARE(shown.title, fails
                                  ? QStringLiteral("ExporterTAData|Ошибка")
                                  : QStringLiteral("ExporterTAData|Успешное завершение экспорта"));
        QVERIFY2(shown.text.startsWith(u"ExporterTAData|"), qPrintable(shown.text));
    }
}

QTEST_MAIN(TestExportCommand)
#include "tst_exportcommand.moc"
