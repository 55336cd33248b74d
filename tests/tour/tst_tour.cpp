// The terminal showing itself at work, as its option "--tour" does it, with the plug-in beside it.

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <memory>

class TestTour final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void importsAndLeavesAPictureOfEveryStep_data();
    void importsAndLeavesAPictureOfEveryStep();
    void failsWithoutThePlugin();
    void failsWhereNoPictureCanBeWritten();

private:
    int runTour(const QString& pictures);
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
    QVERIFY(QFile::copy(QStringLiteral(DESK_PROGRAM), path("bin/vexdesk-desk")));
    QVERIFY(QFile::copy(QStringLiteral(TADATAMANAGER_FILE), path("bin/plugins/tadatamanager.so")));
}

void TestTour::cleanup()
{
    m_dir.reset();
}

int TestTour::runTour(const QString& pictures)
{
    QProcess program;
    program.start(path("bin/vexdesk-desk"), {QStringLiteral("--tour"), pictures});
    constexpr int patience = 200000;
    if (!program.waitForFinished(patience) || program.exitStatus() != QProcess::NormalExit)
        return -1;
    m_errors = program.readAllStandardError();
    return program.exitCode();
}

void TestTour::importsAndLeavesAPictureOfEveryStep_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::newRow("96 dpi") << QByteArray("1");
    QTest::newRow("192 dpi") << QByteArray("2");
}

void TestTour::importsAndLeavesAPictureOfEveryStep()
{
    QFETCH(const QByteArray, scale);
    qputenv("QT_SCALE_FACTOR", scale);
    const int exitCode = runTour(path("pictures"));
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY2(exitCode == 0, m_errors.constData());

    const QDir pictures(path("pictures"));
    const QStringList names = pictures.entryList({QStringLiteral("*.png")});
    QCOMPARE(names.size(), 13);
    for (const QString& name : names)
        QVERIFY2(QImage(pictures.filePath(name)).width() >= 900 * scale.toInt(), qPrintable(name));

    const auto stored = testsupport::readTree(QDir(path("bin/user/tadata/NORD/MAIN/ALFA")));
    QCOMPARE(stored.keys(),
             QStringList({QStringLiteral("20240115_60.iss"), QStringLiteral("20240116_60.iss"),
                          QStringLiteral("20240117_60.iss")}));
    for (const QByteArray& dayFile : stored) {
        QCOMPARE(dayFile.count('\n'), 60);
        QVERIFY(dayFile.startsWith("100100;"));
    }
    // What was imported, line by line.
    const QByteArrayList input = testsupport::readFile(path("pictures/demo.csv")).split('\n');
    const QByteArrayList lines =
        (stored.first() + stored.value(QStringLiteral("20240116_60.iss")) + stored.last())
            .split('\n');
    QCOMPARE(input.size(), lines.size() + 1);
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        const QByteArrayList from = input.at(i + 1).split(';');
        QByteArrayList wanted = from.mid(2);
        wanted.prepend(QByteArray(from.at(1)).remove(2, 1) + "00");
        wanted << "0.00"
               << "0";
        QCOMPARE(lines.at(i), wanted.join(';'));
    }
}

void TestTour::failsWithoutThePlugin()
{
    QVERIFY(QFile::remove(path("bin/plugins/tadatamanager.so")));
    QCOMPARE(runTour(path("pictures")), 1);
    QVERIFY2(m_errors.contains("меню не открыто"), m_errors.constData());
    QVERIFY(QFile::exists(path("pictures/failed.png")));
}

void TestTour::failsWhereNoPictureCanBeWritten()
{
    testsupport::writeFile(path("pictures"), "in the way");
    QCOMPARE(runTour(path("pictures")), 1);
    QVERIFY2(m_errors.contains("Невозможно записать"), m_errors.constData());
}

QTEST_MAIN(TestTour)
#include "tst_tour.moc"
