// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilenames.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/storepaths.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <vexdesk/icore.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace {

QString dayName(const char* day, int timeframe = vexdesk::minuteTimeframe)
{
    return QStringLiteral("%1_%2.iss").arg(QLatin1String(day)).arg(timeframe);
}

// Longer than the name of any file: what it leads to cannot be looked at.
QString tooLong()
{
    return QString(300, u'x');
}

QStringList sorted(QStringList names)
{
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

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
    void tellsTheNamesOfBarFiles_data();
    void tellsTheNamesOfBarFiles();
    void readsTheDayThatANameBeginsWith();
    void makesTheRootBelowTheDataDirectory();
    void takesNothingElseForTheRoot_data();
    void takesNothingElseForTheRoot();
    void findsABarFileByWhateverName();
    void doesNotGuessWhichBarFileItIs();
    void findsABarFileAmongThoseThatCannotBeLookedAt();
    void whatIsNoFileIsNoBarFile();
    void tellsWhetherAFileMayBeInADirectory_data();
    void tellsWhetherAFileMayBeInADirectory();
    void makesTheDirectoryOfASeries_data();
    void makesTheDirectoryOfASeries();
    void keepsPlaceholdersInCodes();
    void staysInTheStoreWhenADirectoryCannotBeMade();
    void namesThePathOfASeries_data();
    void namesThePathOfASeries();
    void listsTheStoredDaysInOrder();
    void listsTheDaysOfAnInterval_data();
    void listsTheDaysOfAnInterval();
    void listsOnlyDayFiles();
    void listsTheDaysOfADirectory_data();
    void listsTheDaysOfADirectory();
    void listsADayBehindALink();
    void listsNoDaysOfWhatCannotBeRead();
    void listsSubdirectories();
    void listsTheDirectoriesOfAStore();
    void takesLinksForWhatTheyLeadTo();
    void saysWhichDirectoriesCannotBeRead();
    void listsNoSubdirectoriesOfWhatIsNoDirectory();

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
    QCOMPARE(vexdesk::dayFileName(day, 60), QStringLiteral("20181214_60.iss"));
    QCOMPARE(vexdesk::dayFileName(day, 1), QStringLiteral("20181214_1.iss"));
    QCOMPARE(vexdesk::dayFileName(QDate(987, 6, 5), 1), QStringLiteral("09870605_1.iss"));
    QCOMPARE(vexdesk::dayFileName(QDate(1, 2, 3), 1), QStringLiteral("00010203_1.iss"));
    QCOMPARE(vexdesk::parseDayFileName(QStringLiteral("19990909_1.iss"))->day, QDate(1999, 9, 9));
}

void TestDayFile::namesMinuteFilesWithoutAnExtension()
{
    QCOMPARE(vexdesk::minuteFileName(QDate(2018, 12, 14)), QStringLiteral("20181214_60"));
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
    QTest::newRow("no mark of the timeframe") << QStringLiteral("20181214.iss") << 0;
    QTest::newRow("no digit, below") << QStringLiteral("2018121/_60.iss") << 0;
    QTest::newRow("no digit, above") << QStringLiteral("2018121:_60.iss") << 0;
    QTest::newRow("seven digits") << QStringLiteral("2018121") << 0;
    QTest::newRow("eight digits") << QStringLiteral("20181214") << 0;
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
    const auto key = vexdesk::parseDayFileName(name);
    QCOMPARE(key.has_value(), timeframe != 0);
    if (key) {
        QCOMPARE(key->day, QDate(2018, 12, 14));
        QCOMPARE(key->timeframe, timeframe);
    }
}

void TestDayFile::tellsTheNamesOfBarFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOne");
    const auto row = [](const char* name, bool isOne) {
        QTest::newRow(name) << QString::fromLatin1(name) << isOne;
    };
    row("20181214_60.iss", true);
    row("20181214_1.iss", true);
    row("20181214_60", true);
    row("20181214_1", false);
    row("20181214_60.txt", false);
    row("20181214_060", false);
    row("20181314_60", false);
    row("20181214", false);
    row("_60", false); // with no day at all
    row("", false);
}

void TestDayFile::tellsTheNamesOfBarFiles()
{
    QFETCH(const QString, name);
    QTEST(vexdesk::isBarFileName(name), "isOne");
}

void TestDayFile::readsTheDayThatANameBeginsWith()
{
    const QDate day(2024, 1, 15);
    for (const char* name : {"20240115_1", "20240115_tour_1", "20240115", "20240115_60.iss"})
        QCOMPARE(vexdesk::dayInName(QLatin1String(name)), day);
    for (const char* name : {"", "_1", "20240115.iss", "20240230_1", "tour_1", "020240115_1"})
        QVERIFY2(!vexdesk::dayInName(QLatin1String(name)).isValid(), name);
}

void TestDayFile::makesTheRootBelowTheDataDirectory()
{
    const QDir root = vexdesk::storeRoot();
    QCOMPARE(root.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata")));
    QVERIFY(root.exists());
}

void TestDayFile::takesNothingElseForTheRoot_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("link to nothing") << true;
    QTest::newRow("file") << false;
}

// Not the data directory, whose other folders are not the store's.
void TestDayFile::takesNothingElseForTheRoot()
{
    QFETCH(const bool, isLink);
    const QString name = m_user.filePath(QStringLiteral("tadata"));
    QVERIFY(m_user.mkpath(QStringLiteral(".")));
    if (isLink)
        QVERIFY(QFile::link(m_user.filePath(QStringLiteral("nothing")), name));
    else
        testsupport::writeFile(name, "");
    const QDir root = vexdesk::storeRoot();
    QCOMPARE(root.absolutePath(), name);
    QVERIFY(!root.exists());
    QVERIFY(vexdesk::subdirectories(root.path()).isEmpty());
    QCOMPARE(vexdesk::storePlace().absolutePath(), name);
}

void TestDayFile::findsABarFileByWhateverName()
{
    const QTemporaryDir dir;
    const QDir series(dir.filePath(QStringLiteral("series")));
    const QString other = dir.filePath(QStringLiteral("other.txt"));
    testsupport::writeFile(other, "1");
    testsupport::writeFile(series.filePath(dayName("20240115")), "2");
    testsupport::writeFile(series.filePath(QStringLiteral("notes.txt")), "3");
    const auto found = [&](const QString& path) { return *vexdesk::barFileThatIs(path, series); };
    QCOMPARE(found(series.filePath(dayName("20240115"))), dayName("20240115"));
    QCOMPARE(found(series.filePath(QStringLiteral("notes.txt"))), QString());
    QCOMPARE(found(other), QString());
    QVERIFY(QFile::link(other, series.filePath(QStringLiteral("20240116_60"))));
    QCOMPARE(found(other), QStringLiteral("20240116_60"));
    QVERIFY(!vexdesk::fileState(dir.path()));
    QVERIFY(!vexdesk::fileState(dir.filePath(QStringLiteral("missing"))));
}

void TestDayFile::doesNotGuessWhichBarFileItIs()
{
    const QTemporaryDir dir;
    const QDir series(dir.filePath(QStringLiteral("series")));
    const QString file = dir.filePath(QStringLiteral("bars.txt"));
    testsupport::writeFile(file, "1");
    testsupport::writeFile(series.filePath(QStringLiteral("notes")), "2");
    QVERIFY(QFile::link(tooLong(), series.filePath(QStringLiteral("note"))));
    QCOMPARE(*vexdesk::barFileThatIs(file, series), QString());

    const QString stored = series.filePath(dayName("20240115"));
    QVERIFY(QFile::link(tooLong(), stored));
    const QString text = QStringLiteral("Невозможно узнать, что за файл %1: ");
    const QString byStored = vexdesk::barFileThatIs(file, series).message();
    QVERIFY2(byStored.startsWith(text.arg(stored)), qPrintable(byStored));

    const QString unknown = dir.filePath(tooLong());
    const QString byPath = vexdesk::barFileThatIs(unknown, series).message();
    QVERIFY2(byPath.startsWith(text.arg(unknown)), qPrintable(byPath));

    const QString byDirectory = vexdesk::barFileThatIs(file, QDir(unknown)).message();
    QVERIFY2(byDirectory.contains(QStringLiteral("каталог ") + unknown), qPrintable(byDirectory));
}

// Whichever of them the directory has first.
void TestDayFile::findsABarFileAmongThoseThatCannotBeLookedAt()
{
    const QTemporaryDir dir;
    const QDir series(dir.path());
    for (int day = 10; day < 30; ++day) {
        const QByteArray date = "202401" + QByteArray::number(day);
        const QString name = series.filePath(dayName(date.constData()));
        if (day == 20)
            testsupport::writeFile(name, "1");
        else
            QVERIFY(QFile::link(tooLong(), name));
    }
    const QString file = dayName("20240120");
    const auto found = vexdesk::barFileThatIs(series.filePath(file), series);
    QVERIFY2(found, qPrintable(found.message()));
    QCOMPARE(*found, file);
}

// Nothing is said about the series then: it is not asked.
void TestDayFile::whatIsNoFileIsNoBarFile()
{
    const QTemporaryDir dir;
    const QDir series(dir.filePath(tooLong()));
    QCOMPARE(*vexdesk::barFileThatIs(dir.filePath(QStringLiteral("missing")), series), QString());
    QCOMPARE(*vexdesk::barFileThatIs(dir.path(), series), QString());
}

void TestDayFile::tellsWhetherAFileMayBeInADirectory_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("mayBe");
    const auto row = [](const char* directory, const char* file, bool mayBe) {
        QTest::addRow("%s, %s", directory, file)
            << QString::fromLatin1(directory) << QString::fromLatin1(file) << mayBe;
    };
    row("store", "store/S/bars", true);
    row("store/S", "store/S/bars", true);
    row("store", "elsewhere/bars", false);
    row("store", "store-2/bars", false);
    row("elsewhere", "store/S/bars", false);
    row("store", "linkToBars", true);
    row("linkToStore", "store/S/bars", true);
    row("store", "elsewhere/second", true); // which is the name of another one, too
    row("store", "missing", true);
    row("missing", "elsewhere/bars", true);
    row("store", "elsewhere", true); // no file
}

void TestDayFile::tellsWhetherAFileMayBeInADirectory()
{
    QFETCH(const QString, directory);
    QFETCH(const QString, file);
    QFETCH(const bool, mayBe);
    const QTemporaryDir dir;
    for (const char* name : {"store/S/bars", "elsewhere/bars", "store-2/bars", "elsewhere/first"})
        testsupport::writeFile(dir.filePath(QLatin1String(name)), "x");
    const auto encoded = [&dir](const char* name) {
        return QFile::encodeName(dir.filePath(QLatin1String(name)));
    };
    QCOMPARE(
        ::link(encoded("elsewhere/first").constData(), encoded("elsewhere/second").constData()), 0);
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("store/S/bars")),
                        dir.filePath(QStringLiteral("linkToBars"))));
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("store")),
                        dir.filePath(QStringLiteral("linkToStore"))));
    QCOMPARE(vexdesk::mayBeIn(QDir(dir.filePath(directory)), dir.filePath(file)), mayBe);
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
    const QDir dir = vexdesk::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), security);
    QVERIFY(dir.exists());
    QCOMPARE(dir.dirName(), security);
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/S/B/") + security));
    QCOMPARE(vexdesk::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), security), dir);
}

void TestDayFile::keepsPlaceholdersInCodes()
{
    const QDir dir =
        vexdesk::makeSeriesDir(QStringLiteral("%2"), QStringLiteral("%3"), QStringLiteral("%1"));
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/%2/%3/%1")));
    QVERIFY(dir.exists());
}

void TestDayFile::staysInTheStoreWhenADirectoryCannotBeMade()
{
    testsupport::writeFile(m_user.filePath(QStringLiteral("tadata/S")), "in the way");
    const QDir dir =
        vexdesk::makeSeriesDir(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X"));
    QCOMPARE(dir.absolutePath(), m_user.absoluteFilePath(QStringLiteral("tadata/S/B/X")));
    QVERIFY(!dir.exists());
}

void TestDayFile::namesThePathOfASeries_data()
{
    QTest::addColumn<QString>("security");
    QTest::newRow("plain") << QStringLiteral("ALFA");
    QTest::newRow("placeholder") << QStringLiteral("%1");
    QTest::newRow("colon") << QStringLiteral(":ALFA");
    QTest::newRow("Cyrillic") << QStringLiteral("Ёлка");
}

void TestDayFile::namesThePathOfASeries()
{
    QFETCH(const QString, security);
    const QTemporaryDir store;
    const QDir root(store.path());
    const QString path =
        vexdesk::seriesPath(root, QStringLiteral("S%3"), QStringLiteral("B"), security);
    QCOMPARE(path, store.path() + QStringLiteral("/S%3/B/") + security);
    QVERIFY(root.isEmpty());
}

void TestDayFile::listsTheStoredDaysInOrder()
{
    const QTemporaryDir series;
    const QDir dir(series.path());
    for (const char* day : {"20181214", "20171231", "20180101", "20181213", "20190102"})
        testsupport::writeFile(dir.filePath(dayName(day)), "");
    QCOMPARE(*vexdesk::storedDays(dir, 60, QDate(2018, 1, 1), QDate(2018, 12, 31)),
             QList<QDate>({QDate(2018, 1, 1), QDate(2018, 12, 13), QDate(2018, 12, 14)}));
}

void TestDayFile::listsTheDaysOfAnInterval_data()
{
    QTest::addColumn<QDate>("from");
    QTest::addColumn<QDate>("to");
    QTest::addColumn<qsizetype>("count");
    const QDate first(2018, 12, 13);
    const QDate last(2018, 12, 15);
    const auto row = [](const char* name, const QDate& from, const QDate& to, qsizetype count) {
        QTest::newRow(name) << from << to << count;
    };
    row("both ends", first, last, 3);
    row("one day", first, first, 1);
    row("before", first.addDays(-9), first.addDays(-1), 0);
    row("after", last.addDays(1), last.addDays(9), 0);
    row("reversed", last, first, 0);
    row("all time", QDate(1, 1, 1), QDate(9999, 12, 31), 3);
    row("no begin", QDate(), last, 0);
    row("no end", first, QDate(), 0);
    row("neither", QDate(), QDate(), 0);
}

void TestDayFile::listsTheDaysOfAnInterval()
{
    QFETCH(const QDate, from);
    QFETCH(const QDate, to);
    const QTemporaryDir series;
    const QDir dir(series.path());
    for (const char* day : {"20181213", "20181214", "20181215"})
        testsupport::writeFile(dir.filePath(dayName(day)), "");
    QTEST(vexdesk::storedDays(dir, 60, from, to)->size(), "count");
}

void TestDayFile::listsOnlyDayFiles()
{
    const QTemporaryDir series;
    const QDir dir(series.path());
    for (const char* name :
         {"20181210_60.iss", "20181211_1.iss", "20181212_60", "20181213_060.iss",
          "20181213_60.iss.bak", "20181213_60.ISS", "20181332_60.iss", ".20181213_60.iss"})
        testsupport::writeFile(dir.filePath(QLatin1String(name)), "");
    QVERIFY(dir.mkdir(dayName("20181214")));
    QCOMPARE(::mkfifo(QFile::encodeName(dir.filePath(dayName("20181215"))).constData(), 0600), 0);
    const QDate from(2018, 1, 1);
    const QDate to(2018, 12, 31);
    QCOMPARE(*vexdesk::storedDays(dir, 60, from, to), QList<QDate>{QDate(2018, 12, 10)});
    QCOMPARE(*vexdesk::storedDays(dir, 1, from, to), QList<QDate>{QDate(2018, 12, 11)});
    QVERIFY(vexdesk::storedDays(dir, 0, from, to)->isEmpty());
    QVERIFY(vexdesk::storedDays(dir, 6, from, to)->isEmpty());
}

void TestDayFile::listsTheDaysOfADirectory_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("series");
    QTest::newRow("Cyrillic and blanks") << QStringLiteral("Сбытовая Ёлка");
    QTest::newRow("wildcards") << QStringLiteral("[*?]");
    QTest::newRow("placeholder") << QStringLiteral("%1");
}

void TestDayFile::listsTheDaysOfADirectory()
{
    QFETCH(const QString, name);
    const QTemporaryDir parent;
    const QDir dir(parent.filePath(name));
    const QDate day(2018, 12, 14);
    QVERIFY(vexdesk::storedDays(dir, 60, day, day)->isEmpty());
    testsupport::writeFile(dir.filePath(dayName("20181214")), "");
    testsupport::writeFile(dir.filePath(QStringLiteral("below/") + dayName("20181214")), "");
    QCOMPARE(*vexdesk::storedDays(dir, 60, day, day), QList<QDate>{day});
}

// Whether the link leads anywhere shows when the day is opened.
void TestDayFile::listsADayBehindALink()
{
    const QTemporaryDir series;
    const QDir dir(series.path());
    testsupport::writeFile(dir.filePath(QStringLiteral("target")), "");
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("target")), dir.filePath(dayName("20181214"))));
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("gone")), dir.filePath(dayName("20181215"))));
    QCOMPARE(*vexdesk::storedDays(dir, 60, QDate(2018, 12, 1), QDate(2018, 12, 31)),
             QList<QDate>({QDate(2018, 12, 14), QDate(2018, 12, 15)}));
}

void TestDayFile::listsNoDaysOfWhatCannotBeRead()
{
    const QTemporaryDir parent;
    const QString path = parent.filePath(tooLong());
    const QDate day(2018, 12, 14);
    const auto days = vexdesk::storedDays(QDir(path), 60, day, day);
    QVERIFY(!days);
    QVERIFY2(days.message().contains(path), qPrintable(days.message()));
    // An interval without an end has no days, whatever there is.
    QVERIFY(vexdesk::storedDays(QDir(path), 60, QDate(), day)->isEmpty());
    QVERIFY(vexdesk::storedDays(QDir(path), 60, day, QDate())->isEmpty());
}

void TestDayFile::listsSubdirectories()
{
    const QTemporaryDir parent;
    const QDir dir(parent.path());
    for (const char* name : {"b", "a", "Ёлка", ".hidden", "a b"})
        QVERIFY(dir.mkdir(QString::fromUtf8(name)));
    QVERIFY(dir.mkpath(QStringLiteral("a/below")));
    testsupport::writeFile(dir.filePath(QStringLiteral("file")), "");
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("a")), dir.filePath(QStringLiteral("link"))));
    const QStringList shown{"a", "a b", "b", "link", "Ёлка"};
    QCOMPARE(sorted(vexdesk::subdirectories(dir.path())), shown);
}

void TestDayFile::listsTheDirectoriesOfAStore()
{
    const QTemporaryDir parent;
    const QDir dir(parent.path());
    for (const char* path : {"N/MAIN/A", "N/MAIN/.B", "N/.REPO/A", ".M/MAIN/A/below", "Z"})
        QVERIFY(dir.mkpath(QString::fromUtf8(path)));
    testsupport::writeFile(dir.filePath(QStringLiteral("file")), "");
    testsupport::writeFile(dir.filePath(QStringLiteral("N/MAIN/file")), "");
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("N")), dir.filePath(QStringLiteral("link"))));
    const auto paths = [&dir](QStringList below) {
        for (QString& path : below)
            path = dir.filePath(path);
        return sorted(below);
    };
    const vexdesk::StoreDirectories found = vexdesk::storeDirectories(dir);
    QCOMPARE(sorted(found.stocks), paths({"N", ".M", "Z", "link"}));
    QCOMPARE(sorted(found.boards),
             paths({"N/MAIN", "N/.REPO", ".M/MAIN", "link/MAIN", "link/.REPO"}));
    QCOMPARE(sorted(found.series), paths({"N/MAIN/A", "N/MAIN/.B", "N/.REPO/A", ".M/MAIN/A",
                                          "link/MAIN/A", "link/MAIN/.B", "link/.REPO/A"}));
    QVERIFY(vexdesk::storeDirectories(QDir(dir.filePath("missing"))).series.isEmpty());
}

// And those that lead nowhere for files: who opens them says so.
void TestDayFile::takesLinksForWhatTheyLeadTo()
{
    const QTemporaryDir parent;
    const QDir dir(parent.path());
    QVERIFY(dir.mkdir(QStringLiteral("directory")));
    testsupport::writeFile(dir.filePath(QStringLiteral("file")), "");
    const auto link = [&dir](const QString& target, const QString& name) {
        QVERIFY(QFile::link(target, dir.filePath(name)));
    };
    link(QStringLiteral("directory"), dayName("20181210"));
    link(QStringLiteral("file"), dayName("20181211"));
    link(QStringLiteral("nothing"), dayName("20181212"));
    link(QStringLiteral("file/below"), dayName("20181213"));
    link(dayName("20181214"), dayName("20181214"));
    link(tooLong(), dayName("20181215"));
    QCOMPARE(sorted(vexdesk::subdirectories(dir.path())),
             QStringList({dayName("20181210"), dayName("20181215"), QStringLiteral("directory")}));
    QList<QDate> days;
    for (int day = 11; day <= 15; ++day)
        days.append(QDate(2018, 12, day));
    QCOMPARE(*vexdesk::storedDays(dir, 60, QDate(2018, 12, 1), QDate(2018, 12, 31)), days);
}

void TestDayFile::saysWhichDirectoriesCannotBeRead()
{
    const QTemporaryDir parent;
    const QDir dir(parent.path());
    QVERIFY(dir.mkpath(QStringLiteral("N/MAIN/A")));
    QVERIFY(vexdesk::storeDirectories(dir).unreadable.isEmpty());
    QStringList unreadable;
    for (const char* link : {"M", "N/B"}) {
        unreadable.append(dir.filePath(QLatin1String(link)));
        QVERIFY(QFile::link(tooLong(), unreadable.last()));
    }
    const vexdesk::StoreDirectories found = vexdesk::storeDirectories(dir);
    QCOMPARE(found.unreadable, unreadable);
    QCOMPARE(sorted(found.stocks), QStringList({unreadable[0], dir.filePath(QStringLiteral("N"))}));
    QCOMPARE(found.series, QStringList(dir.filePath(QStringLiteral("N/MAIN/A"))));
    const QString none = dir.filePath(tooLong());
    QCOMPARE(vexdesk::storeDirectories(QDir(none)).unreadable, QStringList(none));
}

void TestDayFile::listsNoSubdirectoriesOfWhatIsNoDirectory()
{
    const QTemporaryDir parent;
    QVERIFY(vexdesk::subdirectories(parent.path()).isEmpty());
    QVERIFY(vexdesk::subdirectories(parent.filePath(QStringLiteral("missing"))).isEmpty());
    testsupport::writeFile(parent.filePath(QStringLiteral("file")), "");
    QVERIFY(vexdesk::subdirectories(parent.filePath(QStringLiteral("file"))).isEmpty());
}

QTEST_GUILESS_MAIN(TestDayFile)
#include "tst_dayfilenames.moc"
