#include "store/dayfile.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/icore.h>

#include <QtTest/QTest>

class TestDayFile final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void namesDayFilesWithAnUnpaddedTimeframe();
    void namesMinuteFilesWithoutAnExtension();
    void readsOnlyNamesThatItMakes_data();
    void readsOnlyNamesThatItMakes();
    void makesTheRootBelowTheDataDirectory();
    void makesTheDirectoryOfASeries_data();
    void makesTheDirectoryOfASeries();
    void keepsPlaceholdersInCodes();
    void staysInTheStoreWhenADirectoryCannotBeMade();

private:
    QDir m_user;
};

void TestDayFile::init()
{
    testsupport::failOnStrayWarnings();
    m_user = QDir(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("user")));
    QVERIFY(!m_user.exists());
}

void TestDayFile::cleanup()
{
    QVERIFY(m_user.removeRecursively());
}

void TestDayFile::namesDayFilesWithAnUnpaddedTimeframe()
{
    const QDate day(2018, 12, 14);
    QCOMPARE(tadata::dayFileName(day, 60), QStringLiteral("20181214_60.iss"));
    QCOMPARE(tadata::dayFileName(day, 1), QStringLiteral("20181214_1.iss"));
    QCOMPARE(tadata::dayFileName(QDate(987, 6, 5), 1), QStringLiteral("09870605_1.iss"));
}

void TestDayFile::namesMinuteFilesWithoutAnExtension()
{
    QCOMPARE(tadata::minuteFileName(QDate(2018, 12, 14)), QStringLiteral("20181214_60"));
}

void TestDayFile::readsOnlyNamesThatItMakes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("timeframe"); // 0: no day file
    QTest::newRow("minute bars") << QStringLiteral("20181214_60.iss") << 60;
    QTest::newRow("second bars") << QStringLiteral("20181214_1.iss") << 1;
    QTest::newRow("derived minute bars") << QStringLiteral("20181214_60") << 0;
    QTest::newRow("padded timeframe") << QStringLiteral("20181214_060.iss") << 0;
    QTest::newRow("signed timeframe") << QStringLiteral("20181214_+60.iss") << 0;
    QTest::newRow("no timeframe") << QStringLiteral("20181214_.iss") << 0;
    QTest::newRow("timeframe 0") << QStringLiteral("20181214_0.iss") << 0;
    QTest::newRow("no such day") << QStringLiteral("20181314_60.iss") << 0;
    QTest::newRow("other extension") << QStringLiteral("20181214_60.txt") << 0;
    QTest::newRow("backup copy") << QStringLiteral("20181214_60.iss.bak") << 0;
    QTest::newRow("upper case") << QStringLiteral("20181214_60.ISS") << 0;
    QTest::newRow("prefix") << QStringLiteral("x20181214_60.iss") << 0;
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("dot") << QStringLiteral(".") << 0;
}

void TestDayFile::readsOnlyNamesThatItMakes()
{
    QFETCH(const QString, name);
    QFETCH(const int, timeframe);
    const auto key = tadata::parseDayFileName(name);
    QCOMPARE(key.has_value(), timeframe != 0);
    if (key) {
        QCOMPARE(key->day, QDate(2018, 12, 14));
        QCOMPARE(key->timeframe, timeframe);
    }
}

void TestDayFile::makesTheRootBelowTheDataDirectory()
{
    const QDir root = tadata::storeRoot();
    QCOMPARE(root.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata")));
    QVERIFY(root.exists());
}

void TestDayFile::makesTheDirectoryOfASeries_data()
{
    QTest::addColumn<QString>("security");
    QTest::newRow("plain") << QStringLiteral("ALFA");
    QTest::newRow("blanks") << QStringLiteral("a b  c");
    QTest::newRow("Cyrillic") << QStringLiteral("Сбытовая Ёлка");
    QTest::newRow("dots") << QStringLiteral("GOLD-12.26");
    QTest::newRow("leading dots") << QStringLiteral("...");
    QTest::newRow("both cases") << QStringLiteral("aLfA");
}

void TestDayFile::makesTheDirectoryOfASeries()
{
    QFETCH(const QString, security);
    const QDir dir = tadata::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), security);
    QVERIFY(dir.exists());
    QCOMPARE(dir.dirName(), security);
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/S/B/") + security));
    QCOMPARE(tadata::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), security), dir);
}

void TestDayFile::keepsPlaceholdersInCodes()
{
    const QDir dir =
        tadata::makeSeriesDir(QStringLiteral("%2"), QStringLiteral("%3"), QStringLiteral("%1"));
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/%2/%3/%1")));
    QVERIFY(dir.exists());
}

void TestDayFile::staysInTheStoreWhenADirectoryCannotBeMade()
{
    testsupport::writeFile(m_user.filePath(QStringLiteral("tadata/S")), "in the way");
    const QDir dir =
        tadata::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X"));
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/S/B/X")));
    QVERIFY(!dir.exists());
}

QTEST_GUILESS_MAIN(TestDayFile)
#include "tst_dayfile.moc"
