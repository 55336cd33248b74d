// SPDX-License-Identifier: MIT
// The program that shows the terminal at work, with the plug-ins beside it.

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <memory>

namespace {

constexpr int optionsPictureCount = 3;
constexpr int chartPictureCount = 7;
constexpr int qualityPictureCount = 8;
constexpr int pictureCount = 21 + chartPictureCount + optionsPictureCount + qualityPictureCount;

// What the day files hold after the import and what the editor did: of the first two days, which it
// showed, the lines have money before volume, and of the first day the bars 10:20 to 10:29 are
// gone.
QMap<QString, QByteArray> wantedDayFiles(const QByteArray& input)
{
    QMap<QString, QByteArray> files;
    QByteArrayList lines = input.split('\n');
    lines.removeFirst();
    lines.removeLast();
    for (const QByteArray& line : qAsConst(lines)) {
        const QByteArrayList fields = line.split(';');
        const QByteArray day = "202401" + fields.at(0).left(2);
        const QByteArray time = QByteArray(fields.at(1)).remove(2, 1) + "00";
        if (day == "20240115" && time >= "102000" && time < "103000")
            continue;
        const QByteArray& volume = fields.at(6);
        files[QString::fromLatin1(day) + QStringLiteral("_60.iss")] +=
            time + ';' + fields.mid(2, 4).join(';') +
            (day == "20240117" ? ';' + volume + ";0.00" : ";0.00;" + volume) + ";0\n";
    }
    return files;
}

} // namespace

class TestTour final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void worksAndLeavesAPictureOfEveryStep_data();
    void worksAndLeavesAPictureOfEveryStep();
    void leavesSettingsAndSecondFilesToTheUser_data();
    void leavesSettingsAndSecondFilesToTheUser();
    void wantsOneDirectory_data();
    void wantsOneDirectory();
    void failsWithoutThePlugin();
    void doesWithoutTheSecondPlugin();
    void failsWhereNoPictureCanBeWritten();

private:
    /// With the program's exit code.
    int run(const QStringList& arguments);
    int runTour(const QString& pictures, const QString& language = QStringLiteral("ru"))
    {
        return run({QStringLiteral("--language"), language, pictures});
    }
    QString path(const char* name) const { return m_dir->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QByteArray m_errors;
};

void TestTour::init()
{
    testsupport::failOnStrayWarnings();
    // A copy: the terminal keeps its data beside the program.
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("bin/plugins")));
    QVERIFY(QFile::copy(QStringLiteral(TOUR_PROGRAM), path("bin/vexdesk-tour")));
    QVERIFY(QFile::copy(QStringLiteral(TADATAMANAGER_FILE), path("bin/plugins/tadatamanager.so")));
    QVERIFY(QFile::copy(QStringLiteral(TADATAQUALITY_FILE), path("bin/plugins/tadataquality.so")));
    for (const char* folder : {"translations", "plugins/translations"}) {
        const QDir texts(QStringLiteral(TOUR_FOLDER "/") + QLatin1String(folder));
        QVERIFY(QDir().mkpath(path("bin/") + QLatin1String(folder)));
        const QStringList files = texts.entryList({QStringLiteral("*_en.qm")});
        QVERIFY(!files.isEmpty());
        for (const QString& file : files)
            QVERIFY(QFile::copy(texts.filePath(file),
                                path("bin/") + QLatin1String(folder) + u'/' + file));
    }
}

void TestTour::cleanup()
{
    m_dir.reset();
}

int TestTour::run(const QStringList& arguments)
{
    QProcess program;
    program.start(path("bin/vexdesk-tour"), arguments);
    constexpr int patience = 200000;
    if (!program.waitForFinished(patience) || program.exitStatus() != QProcess::NormalExit)
        return -1;
    // The offscreen platform complains about what it is not.
    m_errors.clear();
    const QByteArrayList lines = program.readAllStandardError().split('\n');
    for (const QByteArray& line : lines) {
        if (!line.startsWith("This plugin does not support"))
            m_errors += line + '\n';
    }
    return program.exitCode();
}

void TestTour::worksAndLeavesAPictureOfEveryStep_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::addColumn<QString>("language");
    QTest::newRow("96 dpi") << QByteArray("1") << QStringLiteral("ru");
    QTest::newRow("192 dpi") << QByteArray("2") << QStringLiteral("ru");
    QTest::newRow("in English") << QByteArray("1") << QStringLiteral("en");
}

void TestTour::worksAndLeavesAPictureOfEveryStep()
{
    QFETCH(const QByteArray, scale);
    QFETCH(const QString, language);
    qputenv("QT_SCALE_FACTOR", scale);
    const int exitCode = runTour(path("pictures"), language);
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY2(exitCode == 0, m_errors.constData());

    const QDir pictures(path("pictures"));
    const QStringList names = pictures.entryList({QStringLiteral("*.png")});
    QCOMPARE(names.size(), pictureCount);
    for (const QString& name : names)
        QVERIFY2(QImage(pictures.filePath(name)).width() >= 760 * scale.toInt(), qPrintable(name));

    // What the safe import has added is put back.
    QMap<QString, QByteArray> wanted;
    const auto days = wantedDayFiles(testsupport::readFile(path("pictures/demo.csv")));
    for (auto day = days.begin(); day != days.end(); ++day)
        wanted.insert(QStringLiteral("NORD/MAIN/ALFA/") + day.key(), day.value());
    QCOMPARE(testsupport::readTree(QDir(path("bin/user/tadata"))), wanted);
}

void TestTour::leavesSettingsAndSecondFilesToTheUser_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<int>("pictures");
    QTest::addColumn<bool>("isOldOneKept");
    QTest::newRow("none chosen") << QByteArray() << pictureCount << false;
    QTest::newRow("many days") << QByteArray("storeForDays=40\n") << pictureCount << false;
    // Nothing is shown that would remove what the user wants to keep.
    QTest::newRow("for good") << QByteArray("deleteSeconds=false\nstoreForDays=5\n")
                              << pictureCount - optionsPictureCount << true;
}

void TestTour::leavesSettingsAndSecondFilesToTheUser()
{
    QFETCH(const QByteArray, settings);
    testsupport::writeFile(path("bin/user/vexdesk.ini"), "[TADataManager]\n" + settings);
    const auto secondFile = [this](int age) {
        const QString day = QDate::currentDate().addDays(-age).toString(QStringLiteral("yyyyMMdd"));
        return m_dir->filePath(QStringLiteral("bin/user/tadata/NORD/MAIN/ALFA/%1_1").arg(day));
    };
    const QString young = secondFile(3);
    const QString old = secondFile(150);
    testsupport::writeFile(young, "the user's");
    testsupport::writeFile(old, "the user's");

    QVERIFY2(runTour(path("pictures")) == 0, m_errors.constData());
    QTEST(static_cast<int>(QDir(path("pictures")).entryList({QStringLiteral("*.png")}).size()),
          "pictures");
    QVERIFY(QFile::exists(young));
    QTEST(QFile::exists(old), "isOldOneKept");
    QSettings after(path("bin/user/vexdesk.ini"), QSettings::IniFormat);
    QVERIFY(!after.childGroups().isEmpty());
    QByteArray left;
    for (const char* key : {"deleteSeconds", "storeForDays"}) {
        const QString name = QStringLiteral("TADataManager/") + QLatin1String(key);
        if (after.contains(name))
            left += QByteArray(key) + '=' + after.value(name).toByteArray() + '\n';
    }
    QCOMPARE(left, settings);
    for (const char* group : {"Desk/OptionsDialog", "Desk/Charts", "TADataQuality/SafeImport",
                              "TADataQuality/Health", "TADataQuality/Points"}) {
        after.beginGroup(QLatin1String(group));
        QVERIFY2(after.allKeys().isEmpty(), group);
        after.endGroup();
    }
}

void TestTour::wantsOneDirectory_data()
{
    QTest::addColumn<QStringList>("directories");
    QTest::newRow("none") << QStringList();
    QTest::newRow("two") << QStringList{QStringLiteral("pictures"), QStringLiteral("others")};
}

void TestTour::wantsOneDirectory()
{
    QFETCH(QStringList, directories);
    for (QString& directory : directories)
        directory = m_dir->filePath(directory);
    directories.prepend(QStringLiteral("--language=ru"));
    QCOMPARE(run(directories), 1);
    QVERIFY2(m_errors.contains("Укажите один каталог"), m_errors.constData());
    QVERIFY(!QFile::exists(path("pictures")));
    QVERIFY(!QFile::exists(path("bin/user/tadata")));
}

void TestTour::failsWithoutThePlugin()
{
    QVERIFY(QFile::remove(path("bin/plugins/tadatamanager.so")));
    QCOMPARE(runTour(path("pictures")), 1);
    QVERIFY2(m_errors.contains("меню не открыто"), m_errors.constData());
    QVERIFY(QFile::exists(path("pictures/failed.png")));
}

void TestTour::doesWithoutTheSecondPlugin()
{
    QVERIFY(QFile::remove(path("bin/plugins/tadataquality.so")));
    QVERIFY2(runTour(path("pictures")) == 0, m_errors.constData());
    QCOMPARE(QDir(path("pictures")).entryList({QStringLiteral("*.png")}).size(),
             pictureCount - qualityPictureCount);
}

void TestTour::failsWhereNoPictureCanBeWritten()
{
    testsupport::writeFile(path("pictures"), "in the way");
    QCOMPARE(runTour(path("pictures")), 1);
    QVERIFY2(m_errors.contains("Невозможно записать"), m_errors.constData());
}

QTEST_MAIN(TestTour)
#include "tst_tour.moc"
