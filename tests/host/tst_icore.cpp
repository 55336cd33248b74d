// SPDX-License-Identifier: MIT
#include <vexdesk/ioptionspage.h>
#include <vexdesk/terminal/core.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <optional>
#include <thread>
#include <vector>

namespace {

class Page final : public IOptionsPage
{
public:
    QString id() const override { return QStringLiteral("Test.Page"); }
    QString displayName() const override { return QStringLiteral("Page"); }
    QString category() const override { return QStringLiteral("Test"); }
    QString displayCategory() const override { return QStringLiteral("Tests"); }
    QIcon categoryIcon() const override { return QIcon(); }
    bool matches(const QString& searchText) const override { return searchText.isEmpty(); }
    QWidget* createPage(QWidget* /*parent*/) override { return nullptr; }
    void apply() override {}
    void finish() override {}
};

// Receives by a connection that names the signal, as plug-ins make it.
class DayCounter final : public QObject
{
    Q_OBJECT

public:
    int days = 0;

public Q_SLOTS:
    void onNewDay() { ++days; }
};

// A program that embeds the libraries and shows no problem to anybody.
class QuietCore final : public ICore
{
public:
    void addOptionsPage(IOptionsPage* /*page*/) override {}
    QObject* notifier() const override { return nullptr; }
    IDatabase* database() const override { return nullptr; }
    IRawQueue* rawQueue() const override { return nullptr; }
};

} // namespace

class ICoreTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void portableDataLieInUser();
    void portableUserIsKeptWhenItExists();
    void portableUserThatCannotBeMade();
    void programDirectory();
    void programDirectoryOfAnInstalledProgram();
    void installedDataLieInTheUsersOwnDirectory();
    void missingPathIsMade();
    void missingPathIsNotMadeInTheProgramDirectory();
    void existingPathIsEntered();
    void pathThatCannotBeMade();
    void pathThatCanBeMadeInPart();
    void installedPath();

    void identity();
    void instanceLivesAsLongAsTheCore();
    void optionsPages();
    void newDay();
    void databaseAndQueueAreTheCores();
    void problemsAreKeptUntilTheyWereRead();
    void problemsComeFromAnyThread();
    void aCoreWithNobodyToTellPassesOverProblems();

private:
    void markAsInstalled() const { testsupport::writeFile(m_program + "/.installed", ""); }
    void removeTraces() const;

    QString m_program;                        // the directory of this program
    QMap<QString, QByteArray> m_programFiles; // what lies in it without the tests' doing
    std::optional<QTemporaryDir> m_home;
};

void ICoreTest::initTestCase()
{
    vexdesk::setApplicationIdentity();
    m_program = QCoreApplication::applicationDirPath();
    removeTraces();
    m_programFiles = testsupport::readTree(QDir(m_program));
}

void ICoreTest::init()
{
    testsupport::failOnStrayWarnings();
    m_home.emplace();
    QVERIFY(m_home->isValid());
    // Keeps the user's own data directory out of the test.
    qputenv("XDG_DATA_HOME", m_home->path().toLocal8Bit());
}

void ICoreTest::cleanup()
{
    removeTraces();
    m_home.reset();
}

void ICoreTest::cleanupTestCase()
{
    QCOMPARE(testsupport::readTree(QDir(m_program)), m_programFiles);
}

void ICoreTest::removeTraces() const
{
    QFile::remove(m_program + "/.installed");
    QFile::remove(m_program + "/user");
    for (const char* made : {"user", "there", "missing"})
        QDir(m_program + u'/' + QLatin1String(made)).removeRecursively();
}

void ICoreTest::portableDataLieInUser()
{
    QVERIFY(!QFileInfo::exists(m_program + "/user"));
    const QDir dir = ICore::getDir(QString(), false);
    QCOMPARE(dir.absolutePath(), m_program + "/user");
    QVERIFY(dir.exists());
    QVERIFY(QFileInfo(m_program + "/user").isDir());
    QVERIFY2(QDir(m_home->path()).isEmpty(), "a portable program leaves the home alone");
}

void ICoreTest::portableUserIsKeptWhenItExists()
{
    testsupport::writeFile(m_program + "/user/notes.txt", "kept");
    QCOMPARE(ICore::getDir(QString(), false).absolutePath(), m_program + "/user");
    QCOMPARE(ICore::getDir(QStringLiteral(""), false).absolutePath(), m_program + "/user");
    QCOMPARE(testsupport::readFile(m_program + "/user/notes.txt"), QByteArray("kept"));
}

void ICoreTest::portableUserThatCannotBeMade()
{
    testsupport::writeFile(m_program + "/user", "a file in the way");
    QCOMPARE(ICore::getDir(QString(), false).absolutePath(), m_program);
    QCOMPARE(testsupport::readFile(m_program + "/user"), QByteArray("a file in the way"));
}

void ICoreTest::programDirectory()
{
    QCOMPARE(ICore::getDir(QString(), true).absolutePath(), m_program);
    QVERIFY(!QFileInfo::exists(m_program + "/user"));
    QVERIFY(QDir(m_home->path()).isEmpty());
}

void ICoreTest::programDirectoryOfAnInstalledProgram()
{
    markAsInstalled();
    QCOMPARE(ICore::getDir(QString(), true).absolutePath(), m_program);
    QCOMPARE(ICore::getDir(QStringLiteral("missing"), true).absolutePath(), m_program);
    QVERIFY(!QFileInfo::exists(m_program + "/user"));
    QVERIFY(!QFileInfo::exists(m_program + "/missing"));
    QVERIFY(QDir(m_home->path()).isEmpty());
}

void ICoreTest::installedDataLieInTheUsersOwnDirectory()
{
    markAsInstalled();
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    QCOMPARE(own, m_home->path() + "/Vexdesk/Vexdesk");
    QCOMPARE(ICore::getDir(QString(), false).absolutePath(), own);
    QVERIFY2(!QFileInfo::exists(m_program + "/user"), "an installed program leaves its own alone");
}

void ICoreTest::missingPathIsMade()
{
    const QDir dir = ICore::getDir(QStringLiteral("archive/NORD/MAIN"), false);
    QCOMPARE(dir.absolutePath(), m_program + "/user/archive/NORD/MAIN");
    QVERIFY(QFileInfo(m_program + "/user/archive/NORD/MAIN").isDir());
}

void ICoreTest::missingPathIsNotMadeInTheProgramDirectory()
{
    QCOMPARE(ICore::getDir(QStringLiteral("missing/below"), true).absolutePath(), m_program);
    QVERIFY(!QFileInfo::exists(m_program + "/missing"));

    // What exists above the missing directory is not entered either.
    QVERIFY(QDir().mkpath(m_program + "/there"));
    QCOMPARE(ICore::getDir(QStringLiteral("there/missing"), true).absolutePath(), m_program);
    QVERIFY(!QFileInfo::exists(m_program + "/there/missing"));
}

void ICoreTest::existingPathIsEntered()
{
    QVERIFY(QDir().mkpath(m_program + "/there/below"));
    QCOMPARE(ICore::getDir(QStringLiteral("there/below"), true).absolutePath(),
             m_program + "/there/below");

    testsupport::writeFile(m_program + "/user/archive/NORD/day", "kept");
    QCOMPARE(ICore::getDir(QStringLiteral("archive/NORD"), false).absolutePath(),
             m_program + "/user/archive/NORD");
    QCOMPARE(testsupport::readFile(m_program + "/user/archive/NORD/day"), QByteArray("kept"));
}

void ICoreTest::pathThatCannotBeMade()
{
    testsupport::writeFile(m_program + "/user/archive", "a file in the way");
    for (const char* path : {"archive", "archive/NORD", "archive/NORD/MAIN"})
        QCOMPARE(ICore::getDir(QLatin1String(path), false).absolutePath(), m_program + "/user");
    QCOMPARE(testsupport::readFile(m_program + "/user/archive"), QByteArray("a file in the way"));

    testsupport::writeFile(m_program + "/there/file", "a file in the way");
    QCOMPARE(ICore::getDir(QStringLiteral("there/file"), true).absolutePath(), m_program);
}

void ICoreTest::pathThatCanBeMadeInPart()
{
    testsupport::writeFile(m_program + "/user/archive/NORD", "a file in the way");
    QCOMPARE(ICore::getDir(QStringLiteral("archive/NORD/MAIN"), false).absolutePath(),
             m_program + "/user");
}

void ICoreTest::installedPath()
{
    markAsInstalled();
    const QString own = m_home->path() + "/Vexdesk/Vexdesk";
    QCOMPARE(ICore::getDir(QStringLiteral("archive/NORD"), false).absolutePath(),
             own + "/archive/NORD");
    QVERIFY(QFileInfo(own + "/archive/NORD").isDir());
    QVERIFY(!QFileInfo::exists(m_program + "/user"));
    // Entered the second time.
    QCOMPARE(ICore::getDir(QStringLiteral("archive/NORD"), false).absolutePath(),
             own + "/archive/NORD");

    testsupport::writeFile(own + "/blocked", "a file in the way");
    QCOMPARE(ICore::getDir(QStringLiteral("blocked/below"), false).absolutePath(), own);
}

void ICoreTest::identity()
{
    QCoreApplication::setOrganizationName(QString());
    QCoreApplication::setApplicationName(QString());
    vexdesk::setApplicationIdentity();
    QCOMPARE(QCoreApplication::organizationName(), QStringLiteral("Vexdesk"));
    QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Vexdesk"));
}

void ICoreTest::instanceLivesAsLongAsTheCore()
{
    QCOMPARE(ICore::instance(), nullptr);
    for (int i = 0; i < 2; ++i) {
        {
            vexdesk::Core core;
            QCOMPARE(ICore::instance(), static_cast<ICore*>(&core));
        }
        QCOMPARE(ICore::instance(), nullptr);
    }
}

void ICoreTest::optionsPages()
{
    vexdesk::Core core;
    Page first;
    Page second;
    QVERIFY(core.optionsPages().isEmpty());
    ICore::instance()->addOptionsPage(&second);
    ICore::instance()->addOptionsPage(&first);
    QCOMPARE(core.optionsPages(), (QList<IOptionsPage*>{&second, &first}));

    core.addOptionsPage(&second);
    core.addOptionsPage(nullptr);
    QCOMPARE(core.optionsPages(), (QList<IOptionsPage*>{&second, &first}));

    core.removeOptionsPage(&second);
    QCOMPARE(core.optionsPages(), (QList<IOptionsPage*>{&first}));
    core.removeOptionsPage(&second);
    QCOMPARE(core.optionsPages(), (QList<IOptionsPage*>{&first}));
    core.addOptionsPage(&second);
    QCOMPARE(core.optionsPages(), (QList<IOptionsPage*>{&first, &second}));
}

void ICoreTest::newDay()
{
    vexdesk::Core core;
    QObject* const notifier = ICore::instance()->notifier();
    QVERIFY(notifier);
    QCOMPARE(notifier, core.notifier());

    DayCounter counter;
    QVERIFY(connect(notifier, SIGNAL(aNewDay()), &counter, SLOT(onNewDay())));
    Q_EMIT core.notifier()->aNewDay();
    QCOMPARE(counter.days, 1);
    Q_EMIT core.notifier()->aNewDay();
    QCOMPARE(counter.days, 2);
}

void ICoreTest::databaseAndQueueAreTheCores()
{
    const vexdesk::Core core;
    const ICore* const seen = ICore::instance();
    QVERIFY(seen->database());
    QVERIFY(seen->rawQueue());
    QCOMPARE(seen->database(), static_cast<IDatabase*>(core.database()));
    QCOMPARE(seen->rawQueue(), static_cast<IRawQueue*>(core.rawQueue()));
    QVERIFY(!seen->database()->table("all_deals"));
}

void ICoreTest::problemsAreKeptUntilTheyWereRead()
{
    vexdesk::Core core;
    QCOMPARE(core.problems(), QStringList());
    QStringList keptWhenTold;
    connect(core.notifier(), &vexdesk::Notifier::problemReported, this,
            [&] { keptWhenTold = core.problems(); });
    const QSignalSpy told(core.notifier(), &vexdesk::Notifier::problemReported);
    for (const char* text : {"one", "two", "one", "three"})
        ICore::instance()->reportProblem(QLatin1String(text));
    QCOMPARE(core.problems(), QStringList({"one", "two", "one", "three"}));
    QCOMPARE(keptWhenTold, core.problems());
    QCOMPARE(told.count(), 4);
    QCOMPARE(told.at(1).at(0).toString(), QStringLiteral("two"));

    core.forgetProblems(2);
    QCOMPARE(core.problems(), QStringList({"one", "three"}));
    core.forgetProblems(0);
    QCOMPARE(core.problems(), QStringList({"one", "three"}));
    core.forgetProblems(3);
    QCOMPARE(core.problems(), QStringList());
    core.reportProblem(QStringLiteral("four"));
    core.forgetProblems();
    QCOMPARE(core.problems(), QStringList());
}

void ICoreTest::problemsComeFromAnyThread()
{
    vexdesk::Core core;
    constexpr int threadCount = 4;
    constexpr int each = 250;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < each; ++i)
                ICore::instance()->reportProblem(QStringLiteral("%1 %2").arg(thread).arg(i));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const QStringList problems = core.problems();
    QCOMPARE(problems.size(), threadCount * each);
    // Those of one thread stand in their order.
    for (int thread = 0; thread < threadCount; ++thread) {
        const QString beginning = QString::number(thread) + u' ';
        int next = 0;
        for (const QString& problem : problems) {
            if (problem.startsWith(beginning))
                QCOMPARE(problem, beginning + QString::number(next++));
        }
        QCOMPARE(next, each);
    }
}

void ICoreTest::aCoreWithNobodyToTellPassesOverProblems()
{
    QuietCore core;
    ICore::instance()->reportProblem(QStringLiteral("nobody hears it"));
    QVERIFY(!ICore::instance()->notifier());
}

QTEST_GUILESS_MAIN(ICoreTest)
#include "tst_icore.moc"
