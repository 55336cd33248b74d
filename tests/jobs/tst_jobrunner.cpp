// SPDX-License-Identifier: MIT
#include "jobrunner.h"

#include "support/eventually.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QScopeGuard>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtGui/QCloseEvent>
#include <QtTest/QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include <atomic>
#include <functional>
#include <stdexcept>

using testsupport::ModalSteps;

class TestJobRunner final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void showsHowFarTheJobIs();
    void theUserDoesNotEndIt();
    void leavesThreadsForOthers();
    void tellsWhatCameOfIt();
    void handsOnWhatAJobThrows();
};

namespace {

const QString title = QStringLiteral("Импорт");
const QString text = QStringLiteral("Импорт из файла...");

// A job that ends when the step is over in which its dialog is looked at.
class JobUnderLook final
{
public:
    explicit JobUnderLook(const std::function<void(QProgressDialog*)>& look)
    {
        m_steps.during<QProgressDialog>([this, look](QProgressDialog* dialog) {
            const auto letGo = qScopeGuard([this] { m_goesOn = true; });
            look(dialog);
        });
    }

    vexdesk::Outcome run(const QList<int>& percents = {})
    {
        return tadata::runJob(title, text, [&](QProgressDialog* dialog) {
            for (const int percent : percents)
                tadata::shownOn(dialog)(percent);
            while (!m_goesOn)
                QThread::yieldCurrentThread();
            return vexdesk::Outcome();
        });
    }

    QString complaint() const { return m_steps.complaint(); }

private:
    ModalSteps m_steps;
    std::atomic<bool> m_goesOn = false;
};

} // namespace

void TestJobRunner::showsHowFarTheJobIs()
{
    JobUnderLook job([](QProgressDialog* dialog) {
        QVERIFY(dialog->isModal());
        QCOMPARE(dialog->windowTitle(), title);
        QCOMPARE(dialog->labelText(), text);
        QCOMPARE(dialog->minimum(), 0);
        QCOMPARE(dialog->maximum(), 100);
        // At its last value it waits for the end of the job.
        EVENTUALLY_EQUAL(dialog->value(), 100);
        QVERIFY(dialog->isVisible());
    });
    QVERIFY(job.run({10, 100}));
    QCOMPARE(job.complaint(), QString());
}

void TestJobRunner::theUserDoesNotEndIt()
{
    JobUnderLook job([](QProgressDialog* dialog) {
        QVERIFY(dialog->findChildren<QPushButton*>().isEmpty());
        QVERIFY(!dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        hands::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->wasCanceled());
        // As a window manager closes it.
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        QCoreApplication::instance()->notify(dialog, &close);
        QVERIFY(!close.isAccepted());
    });
    QVERIFY(job.run());
    QCOMPARE(job.complaint(), QString());
}

void TestJobRunner::tellsWhatCameOfIt()
{
    const tadata::OutcomeTexts texts{.errorTitle = QStringLiteral("Ошибка"),
                                     .successTitle = QStringLiteral("Готово"),
                                     .success = QStringLiteral("Всё записано")};
    const auto shows = [&texts](const vexdesk::Outcome& outcome, QMessageBox::Icon icon,
                                const QString& windowTitle, const QString& said) {
        ModalSteps steps;
        steps.on<QMessageBox>([&](QMessageBox* box) {
            QCOMPARE(box->icon(), icon);
            QCOMPARE(box->windowTitle(), windowTitle);
            QCOMPARE(box->text(), said);
            box->close();
        });
        tadata::reportOutcome(outcome, texts);
        QCOMPARE(steps.complaint(), QString());
    };
    shows(vexdesk::Outcome(), QMessageBox::Information, texts.successTitle, texts.success);
    shows(vexdesk::Failure{QStringLiteral("Диск полон")}, QMessageBox::Warning, texts.errorTitle,
          QStringLiteral("Диск полон"));
}

// Qt's painting, for one, on a computer with a single core.
void TestJobRunner::leavesThreadsForOthers()
{
    QThreadPool* const pool = QThreadPool::globalInstance();
    const int before = pool->maxThreadCount();
    const auto restore = qScopeGuard([pool, before] { pool->setMaxThreadCount(before); });
    pool->setMaxThreadCount(1);
    std::atomic<bool> goesOn = false;
    ModalSteps steps;
    bool hasPainted = false;
    steps.during<QProgressDialog>([&](QProgressDialog*) {
        const auto letGo = qScopeGuard([&goesOn] { goesOn = true; });
        const QFuture<void> painting = QtConcurrent::run(pool, [] {});
        EVENTUALLY(painting.isFinished());
        hasPainted = true;
    });
    const vexdesk::Outcome outcome =
        tadata::runJob(QStringLiteral("title"), QStringLiteral("text"), [&](QProgressDialog*) {
            while (!goesOn)
                QThread::yieldCurrentThread();
            return vexdesk::Outcome();
        });
    QCOMPARE(steps.complaint(), QString());
    QVERIFY(outcome);
    QVERIFY(hasPainted);
    QCOMPARE(pool->maxThreadCount(), 1);
}

void TestJobRunner::handsOnWhatAJobThrows()
{
    const int before = QThreadPool::globalInstance()->maxThreadCount();
    bool isCaught = false;
    try {
        (void)tadata::runJob(QStringLiteral("title"), QStringLiteral("text"),
                             [](QProgressDialog*) -> vexdesk::Outcome {
                                 throw std::runtime_error("a job that throws");
                             });
    } catch (const std::exception&) { // Qt hands it on inside one of its own
        isCaught = true;
    }
    QVERIFY(isCaught);
    QCOMPARE(QThreadPool::globalInstance()->maxThreadCount(), before);
}

QTEST_MAIN(TestJobRunner)
#include "tst_jobrunner.moc"
