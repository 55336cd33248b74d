// SPDX-License-Identifier: MIT
// The executable itself, started as a user starts it.
#include "desk/deskapplication.h"
#include "pluginfiles.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QLockFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <unistd.h>

#include <cstdlib>

namespace {

struct Outcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

} // namespace

class TestProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void helpNamesTheOptions();
    void speaksTheLanguageOfOptionSettingOrUser_data();
    void speaksTheLanguageOfOptionSettingOrUser();
    void anUnknownLanguageIsRefused();
    void startsAgainInTheChosenLanguage();
    void versionIsTheTerminals();
    void describesItselfWithoutAScreen_data();
    void describesItselfWithoutAScreen();
    void anUnknownOptionIsRefused();
    void runsAPluginFromStartToEnd();
    void findsPluginsBesideItself();
    void theOptionReplacesTheStandardDirectories();
    void aDataDirectoryThatCannotBeWrittenIsTold();
    void aListOfPluginsAsksNothing();
    void theSecondTerminalAsks_data();
    void theSecondTerminalAsks();
    void dealsAreMadeUpOnlyWhenAskedFor_data();
    void dealsAreMadeUpOnlyWhenAskedFor();

private:
    // In Russian, unless the arguments or the environment say otherwise.
    Outcome run(const QStringList& arguments, bool quits);
    void start(QProcess& process, const QStringList& arguments, bool quits) const;
    void copyTranslation();
    QStringList recordedCalls() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_program;
    QProcessEnvironment m_environment;
    bool m_asNobody = false;
    QProcess::ProcessChannelMode m_channels = QProcess::SeparateChannels;
};

void TestProgram::init()
{
    testsupport::failOnStrayWarnings();
    // A copy: the terminal keeps its data beside the program.
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("bin")));
    m_program = m_directory->filePath(QStringLiteral("bin/vexdesk-desk"));
    m_channels = QProcess::SeparateChannels;
    m_asNobody = false;
    m_environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LANG", "LC_MESSAGES", "LANGUAGE"})
        m_environment.remove(QLatin1String(name));
    m_environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    QVERIFY(QFile::copy(QStringLiteral(DESK_PROGRAM), m_program));
}

void TestProgram::cleanup()
{
    m_directory.reset();
}

void TestProgram::start(QProcess& process, const QStringList& arguments, bool quits) const
{
    process.setProcessChannelMode(m_channels);
    if (m_asNobody && geteuid() == 0)
        process.setChildProcessModifier([] {
            if (setgid(testsupport::nobody) != 0 || setuid(testsupport::nobody) != 0)
                _exit(EXIT_FAILURE);
        });
    QProcessEnvironment environment = m_environment;
    environment.insert(QStringLiteral("DESK_TEST_RECORD"),
                       m_directory->filePath(QStringLiteral("calls")));
    if (quits)
        environment.insert(QStringLiteral("DESK_TEST_QUIT"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_directory->path());
    process.start(m_program, arguments);
}

Outcome TestProgram::run(const QStringList& arguments, bool quits)
{
    QProcess process;
    start(process, arguments, quits);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return Outcome();
    }
    Outcome outcome;
    outcome.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    outcome.output = QString::fromUtf8(process.readAllStandardOutput());
    outcome.errors = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

QStringList TestProgram::recordedCalls() const
{
    const QByteArray calls = testsupport::readFile(m_directory->filePath(QStringLiteral("calls")));
    return QString::fromUtf8(calls).split(u'\n', Qt::SkipEmptyParts);
}

void TestProgram::helpNamesTheOptions()
{
    const Outcome outcome = run({QStringLiteral("--help")}, false);
    QCOMPARE(outcome.exitCode, 0);
    for (const auto* const text : {"--plugins", "--reference", "--demo-deals", "--help",
                                   "--version", "Показать эту справку и выйти."})
        QVERIFY2(outcome.output.contains(QString::fromUtf8(text)), qPrintable(outcome.output));
}

void TestProgram::copyTranslation()
{
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("bin/translations")));
    QVERIFY(QFile::copy(QStringLiteral(DESK_TRANSLATIONS "/vexdesk_en.qm"),
                        m_directory->filePath(QStringLiteral("bin/translations/vexdesk_en.qm"))));
}

void TestProgram::speaksTheLanguageOfOptionSettingOrUser_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("isEnglish");
    const QString none;
    const QString ru = QStringLiteral("ru");
    const QString en = QStringLiteral("en");
    const QString russian = QStringLiteral("ru_RU.UTF-8");
    const QString english = QStringLiteral("en_US.UTF-8");
    QTest::newRow("no choice") << none << none << QStringLiteral("C.UTF-8") << false;
    QTest::newRow("Russian user") << none << none << russian << false;
    QTest::newRow("English user") << none << none << english << true;
    QTest::newRow("Russian chosen") << none << ru << english << false;
    QTest::newRow("English chosen") << none << en << russian << true;
    QTest::newRow("Russian for once") << ru << en << english << false;
    QTest::newRow("English for once") << en << ru << russian << true;
}

void TestProgram::speaksTheLanguageOfOptionSettingOrUser()
{
    QFETCH(const QString, option);
    QFETCH(const QString, setting);
    QFETCH(const QString, locale);
    QFETCH(const bool, isEnglish);
    copyTranslation();
    const QString settings = m_directory->filePath(QStringLiteral("bin/user/vexdesk.ini"));
    QByteArray stored;
    if (!setting.isNull())
        stored = "[Desk]\nlanguage=" + setting.toLatin1() + '\n';
    testsupport::writeFile(settings, stored);
    m_environment.insert(QStringLiteral("LC_ALL"), locale);

    QStringList arguments{QStringLiteral("--help")};
    if (!option.isNull())
        arguments += {QStringLiteral("--language"), option};
    const Outcome outcome = run(arguments, false);
    QCOMPARE(outcome.exitCode, 0);
    const bool english = outcome.output.contains(QStringLiteral("Show this help and exit."));
    const bool russian = outcome.output.contains(QStringLiteral("Показать эту справку и выйти."));
    QVERIFY2(english == isEnglish && russian != isEnglish, qPrintable(outcome.output));
    // The option is not remembered.
    QCOMPARE(testsupport::readFile(settings), stored);
}

void TestProgram::anUnknownLanguageIsRefused()
{
    const Outcome outcome = run({QStringLiteral("--language=de")}, false);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("Неизвестный язык «de»")),
             qPrintable(outcome.errors));
}

void TestProgram::startsAgainInTheChosenLanguage()
{
    copyTranslation();
    const QString plugins = m_directory->filePath(QStringLiteral("modules"));
    QVERIFY(QDir().mkpath(plugins));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(plugins));
    m_environment.insert(QStringLiteral("DESK_TEST_CHOOSE"), QStringLiteral("Desk.Language.en"));
    // The second terminal goes on writing there when the first one has gone.
    m_channels = QProcess::ForwardedChannels;
    const Outcome outcome = run({QStringLiteral("--language"), QStringLiteral("ru"),
                                 QStringLiteral("--plugins"), QStringLiteral("modules")},
                                false);
    QCOMPARE(outcome.exitCode, 0);
    // The second terminal is nobody's child. It speaks English, so that its choice opens no box.
    QTRY_COMPARE_WITH_TIMEOUT(recordedCalls().count(QStringLiteral("GOOD.destroyed")), 2, 60000);
    const QStringList calls = recordedCalls();
    QCOMPARE(calls.filter(QStringLiteral("GOOD.arguments")),
             QStringList({"GOOD.arguments --language ru --plugins modules",
                          "GOOD.arguments --plugins modules"}));
    QCOMPARE(calls.filter(QStringLiteral("GOOD.answers")), QStringList{"GOOD.answers Restart"});
}

void TestProgram::versionIsTheTerminals()
{
    const Outcome outcome = run({QStringLiteral("--version")}, false);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output.trimmed(),
             QStringLiteral("Vexdesk %1").arg(QCoreApplication::applicationVersion()));
}

void TestProgram::describesItselfWithoutAScreen_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("text");
    const QString version = QStringLiteral("Vexdesk ") + QCoreApplication::applicationVersion();
    QTest::newRow("help") << QStringList{QStringLiteral("--help")} << QStringLiteral("--reference");
    QTest::newRow("help among others")
        << QStringList{QStringLiteral("--plugins"), QStringLiteral("."), QStringLiteral("-h")}
        << QStringLiteral("Показать эту справку и выйти.");
    QTest::newRow("help in English")
        << QStringList{QStringLiteral("--language=en"), QStringLiteral("--help")}
        << QStringLiteral("Show this help and exit.");
    QTest::newRow("version") << QStringList{QStringLiteral("--version")} << version;
}

void TestProgram::describesItselfWithoutAScreen()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, text);
    copyTranslation();
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const char* const screen : {"DISPLAY", "WAYLAND_DISPLAY"})
        m_environment.remove(QLatin1String(screen));
    const Outcome outcome = run(arguments, false);
    QCOMPARE(outcome.exitCode, 0);
    QVERIFY2(outcome.output.contains(text), qPrintable(outcome.output));
    QVERIFY2(outcome.errors.isEmpty(), qPrintable(outcome.errors));
}

void TestProgram::anUnknownOptionIsRefused()
{
    const Outcome outcome = run({QStringLiteral("--colour")}, false);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.contains(QStringLiteral("colour")), qPrintable(outcome.errors));
}

void TestProgram::runsAPluginFromStartToEnd()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("elsewhere")));
    desktest::copyPlugins({QStringLiteral("good"), QStringLiteral("second")},
                          QDir(m_directory->filePath(QStringLiteral("elsewhere"))));
    // A relative path counts from the working directory.
    const Outcome outcome = run({QStringLiteral("--plugins"), QStringLiteral("elsewhere")}, true);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(recordedCalls(),
             QStringList({"GOOD.init", "SECOND.init", "GOOD.PluginsReady", "SECOND.PluginsReady",
                          "GOOD.WindowShown", "SECOND.WindowShown", "SECOND.tini", "GOOD.tini",
                          "SECOND.destroyed", "GOOD.destroyed"}));
}

void TestProgram::findsPluginsBesideItself()
{
    const QString plugins = m_directory->filePath(QStringLiteral("bin/plugins"));
    const QString installed = m_directory->filePath(QStringLiteral("lib/vexdesk/plugins"));
    QVERIFY(QDir().mkpath(plugins));
    QVERIFY(QDir().mkpath(installed));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(plugins));
    desktest::copyPlugins({QStringLiteral("second")}, QDir(installed));
    const Outcome outcome = run({}, true);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(recordedCalls().mid(0, 2), QStringList({"GOOD.init", "SECOND.init"}));
}

void TestProgram::theOptionReplacesTheStandardDirectories()
{
    const QString plugins = m_directory->filePath(QStringLiteral("bin/plugins"));
    const QString elsewhere = m_directory->filePath(QStringLiteral("elsewhere"));
    QVERIFY(QDir().mkpath(plugins));
    QVERIFY(QDir().mkpath(elsewhere));
    desktest::copyPlugins({QStringLiteral("second")}, QDir(plugins));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(elsewhere));
    const Outcome outcome = run({QStringLiteral("--plugins=") + elsewhere}, true);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QVERIFY(!recordedCalls().contains(QStringLiteral("SECOND.init")));
    QCOMPARE(recordedCalls().value(0), QStringLiteral("GOOD.init"));
}

void TestProgram::aDataDirectoryThatCannotBeWrittenIsTold()
{
    const QString plugins = m_directory->filePath(QStringLiteral("bin/plugins"));
    const QString data = m_directory->filePath(QStringLiteral("bin/user"));
    QVERIFY(QDir().mkpath(plugins));
    QVERIFY(QDir().mkpath(data));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(plugins));
    // Root could write all the same.
    const auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    for (const QString& path : {m_directory->path(), data})
        QVERIFY(QFile::setPermissions(path, readable));
    m_asNobody = true;
    const Outcome outcome = run({}, true);
    for (const QString& path : {m_directory->path(), data})
        QVERIFY(QFile::setPermissions(path, readable | QFile::WriteOwner));
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    // Nobody has read it.
    QVERIFY2(outcome.errors.contains(QStringLiteral("В каталог данных %1 нельзя писать").arg(data)),
             qPrintable(outcome.errors));
}

void TestProgram::aListOfPluginsAsksNothing()
{
    QVERIFY(QDir().mkpath(m_directory->filePath(QStringLiteral("bin/user"))));
    QLockFile other(m_directory->filePath(QStringLiteral("bin/user/vexdesk.lock")));
    QVERIFY(other.tryLock(0));
    const Outcome outcome = run({QStringLiteral("--list-plugins")}, false);
    QCOMPARE(outcome.exitCode, 0);
}

void TestProgram::theSecondTerminalAsks_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("end") << QStringLiteral("&Завершить") << false;
    QTest::newRow("go on") << QStringLiteral("&Продолжить") << true;
}

void TestProgram::theSecondTerminalAsks()
{
    QFETCH(const QString, answer);
    QFETCH(const bool, goesOn);
    const QString plugins = m_directory->filePath(QStringLiteral("bin/plugins"));
    QVERIFY(QDir().mkpath(plugins));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(plugins));
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(DESK_QT_PLUGINS));
    m_environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("answers"));
    m_environment.insert(QStringLiteral("DESK_TEST_ANSWER"), answer);
    const QStringList started{"GOOD.init", "GOOD.PluginsReady", "GOOD.WindowShown"};

    QProcess first;
    start(first, {}, false);
    QTRY_COMPARE_WITH_TIMEOUT(recordedCalls(), started, 60000); // the first one is not asked
    const Outcome second = run({}, true);
    first.kill();
    QVERIFY(first.waitForFinished());

    QCOMPARE(second.exitCode, 0);
    const QStringList calls = recordedCalls().mid(started.size());
    QCOMPARE(calls.value(0), QStringLiteral("ANSWERS.Терминал уже запущен"));
    QCOMPARE(calls.count(QStringLiteral("GOOD.WindowShown")), goesOn ? 1 : 0);
    QCOMPARE(calls.size() > 1, goesOn);
}

void TestProgram::dealsAreMadeUpOnlyWhenAskedFor_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("deals");
    QTest::newRow("not asked for") << QStringList() << QStringLiteral("GOOD.deals 0");
    QTest::newRow("asked for") << QStringList(QStringLiteral("--demo-deals"))
                               << QStringLiteral("GOOD.deals some");
}

void TestProgram::dealsAreMadeUpOnlyWhenAskedFor()
{
    QFETCH(const QStringList, options);
    QFETCH(const QString, deals);
    const QString plugins = m_directory->filePath(QStringLiteral("bin/plugins"));
    QVERIFY(QDir().mkpath(plugins));
    desktest::copyPlugins({QStringLiteral("good")}, QDir(plugins));
    m_environment.insert(QStringLiteral("DESK_TEST_DEALS"), QStringLiteral("1"));
    const Outcome outcome = run(options, true);
    QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
    QCOMPARE(recordedCalls().filter(QStringLiteral("GOOD.deals")), QStringList{deals});
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestProgram test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program.moc"
