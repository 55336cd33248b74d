// SPDX-License-Identifier: MIT
#include "purge.h"
#include "purgesettings.h"

#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/settingsfile.h"
#include "support/strictlog.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/icore.h>

#include <QtCore/QRandomGenerator>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

using tadata::oldSecondFiles;
using tadata::PurgeSettings;
using tadata::removeOldSecondFiles;
using testsupport::OtherUser;
using testsupport::Permissions;
using testsupport::readTree;
using testsupport::writeFile;

namespace {

const QDate today(2024, 1, 15);
constexpr int keptDays = 7;
const QString oldName = QStringLiteral("20230105_1");

/// Whether there is something of this name; a link that leads nowhere is something.
bool isThere(const QString& path)
{
    struct stat status
    {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

/// The date that a name begins with, read digit by digit. A year may have a minus.
std::optional<QDate> dateOf(const QString& name)
{
    const QString text = name.section(u'_', 0, 0);
    const bool beforeOurEra = text.startsWith(u'-');
    const QString digits = text.mid(beforeOurEra ? 1 : 0);
    if (digits.size() != 8)
        return std::nullopt;
    int number = 0;
    for (const QChar digit : digits) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        number = 10 * number + digit.unicode() - u'0';
    }
    const int year = number / 10000;
    const QDate date(beforeOurEra ? -year : year, number / 100 % 100, number % 100);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

bool shouldGo(const QString& relativePath, int days)
{
    const QStringList parts = relativePath.split(u'/');
    for (const QString& part : parts) {
        if (part.startsWith(u'.'))
            return false;
    }
    const std::optional<QDate> date = dateOf(parts.constLast());
    return parts.constLast().endsWith(QLatin1String("_1")) &&
           (date ? date->daysTo(today) : 0) > days;
}

template <typename Value>
const Value& oneOf(const QList<Value>& values, QRandomGenerator* random)
{
    return values.at(random->bounded(static_cast<int>(values.size())));
}

QString randomName(QRandomGenerator* random)
{
    static const QStringList beginnings{
        "20230105",  "20240107",  "20240108",  "20240115",  "20240116",  "20230229",
        "20240229",  "20231301",  "2023010",   "202301055", "",          ".20230105",
        "дата",      "00010101",  "99991231",  "2023 105",  "-2023105",  "-20230105",
        "-00010101", "-20231301", "20230105 ", "[0-9]",     "2023\n0105"};
    static const QStringList endings{"_1",  "_1",  "_1",   "_1",  "_1.iss", "_60", "_60_1",  "1",
                                     "_11", "__1", "_1_1", "_1 ", "_",      "",    "_x\n_1", "_1~"};
    return oneOf(beginnings, random) + oneOf(endings, random);
}

} // namespace

class TestPurge final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void cleanup();

    void removesWhatIsOlderThanTheDaysToKeep_data();
    void removesWhatIsOlderThanTheDaysToKeep();
    void keepsWhatIsAlmostADate_data();
    void keepsWhatIsAlmostADate();
    void cutsNamesAtTheFirstUnderscore_data();
    void cutsNamesAtTheFirstUnderscore();
    void looksAtEveryDepth();
    void keepsDirectories();
    void keepsWhatHasTheNameButIsNoFile();
    void keepsHiddenFilesAndWhatHiddenDirectoriesHold();
    void doesNotFollowLinksToDirectories();
    void removesALinkToAFileAndNotTheFile();
    void keepsALinkThatLeadsNowhere();
    void walksARootThatIsALink();
    void touchesNothingBesideTheRoot();
    void keepsANameThatIsNoText();
    void passesOverAStoreThatIsNotThere();
    void passesOverDirectoriesThatCannotBeRead();
    void passesOverFilesThatCannotBeRemoved();
    void findsBeforeItRemoves();
    void removesALinkWithWhatItLeadsTo();
    void aSecondRunFindsNothing();
    void agreesWithTheRuleOnRandomTrees();

    void withoutAStoreNothingIsRemoved_data();
    void withoutAStoreNothingIsRemoved();

    void settingsHaveDefaults();
    void settingsOfAnotherType_data();
    void settingsOfAnotherType();
};

void TestPurge::cleanup()
{
    QVERIFY(ICore::getDir(QString(), false).removeRecursively());
}

void TestPurge::removesWhatIsOlderThanTheDaysToKeep_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("days");
    QTest::addColumn<bool>("kept");
    const auto row = [](const char* title, const char* name, int days, bool kept) {
        QTest::newRow(title) << QString::fromLatin1(name) << days << kept;
    };
    row("as old as is kept", "20240108_1", 7, true);
    row("one day older", "20240107_1", 7, false);
    row("yesterday, nothing kept", "20240114_1", 0, false);
    row("today, nothing kept", "20240115_1", 0, true);
    row("tomorrow", "20240116_1", 0, true);
    row("far ahead", "99991231_1", 0, true);
    // To "yyyy" a year may have a minus: this one lies before our era.
    row("before our era", "-20230105_1", 7, false);
    row("before our era, no such day", "-20230230_1", 0, true);
    row("before our era, day file", "-20230105_1.iss", 0, true);
    row("long ago", "19000101_1", 0, false);
    row("long ago, most days kept", "19000101_1", 99, false);
    row("the oldest of most days", "20231008_1", 99, true);
    row("older than most days", "20231007_1", 99, false);
    row("over the leap day", "20230228_1", 321, true);
    row("day file of the store", "20230105_1.iss", 7, true);
    row("day file, nothing kept", "20230105_1.iss", 0, true);
    row("minute day file", "20230105_60.iss", 0, true);
    row("minute file", "20230105_60", 7, true);
    row("other number", "20230105_11", 7, true);
    row("other number that ends in one", "20230105_21", 7, true);
    row("other ending", "20230105_1~", 7, true);
    row("blank after the number", "20230105_1 ", 7, true);
    row("no underscore", "202301051", 7, true);
    // A number of days that only a hand can have written: what is of today is too old.
    row("today, less than nothing kept", "20240115_1", -1, false);
    row("tomorrow, less than nothing kept", "20240116_1", -1, true);
    row("no date, less than nothing kept", "notadate_1", -1, false);
}

void TestPurge::removesWhatIsOlderThanTheDaysToKeep()
{
    QFETCH(const QString, name);
    QFETCH(const int, days);
    const QTemporaryDir store;
    const QDir root(store.path());
    const QString path = root.filePath(QStringLiteral("S/B/X/") + name);
    writeFile(path, "x");
    removeOldSecondFiles(root, today, days);
    QTEST(QFile::exists(path), "kept");
    QVERIFY(root.exists(QStringLiteral("S/B/X")));
}

void TestPurge::keepsWhatIsAlmostADate_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"notadate_1",  "20230230_1",   "20230229_1",   "2023010_1",    "202301055_1",
          "20231301_1",  "20230100_1",   "20230132_1",   "20230105x_1",  "x20230105_1",
          "20230105 _1", " 20230105_1",  "2023-01-05_1", "2023.01.05_1", "05012023_1",
          "230105_1",    "+2023105_1",   "-2023105_1",   "+20230105_1",  "00000101_1",
          "_1",          "__1",          "_20230105_1",  "20230105.1_1", "²0230105_1",
          "٢٠٢٣٠١٠٥_1",  "--20230105_1", "−20230105_1"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestPurge::keepsWhatIsAlmostADate()
{
    QFETCH(const QString, name);
    const QTemporaryDir store;
    const QString path = store.filePath(name);
    writeFile(path, "x");
    removeOldSecondFiles(QDir(store.path()), today, 0);
    QVERIFY(QFile::exists(path));
}

void TestPurge::cutsNamesAtTheFirstUnderscore_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"20230105_1", "20230105_60_1", "20230105_x_1", "20230105__1",
                             "20230105_1_1", "20230105_20240115_1", "20230105_имя_1"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestPurge::cutsNamesAtTheFirstUnderscore()
{
    QFETCH(const QString, name);
    const QTemporaryDir store;
    const QString path = store.filePath(name);
    writeFile(path, "x");
    removeOldSecondFiles(QDir(store.path()), today, keptDays);
    QVERIFY(!QFile::exists(path));
}

void TestPurge::looksAtEveryDepth()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* directory : {"", "S/", "S/B/", "S/B/X/", "S/B/X/deeper/",
                                  "С/Р/Имя с пробелом/", "a/b/c/d/e/f/g/h/i/j/k/l/m/n/o/p/"})
        writeFile(root.filePath(QString::fromUtf8(directory) + oldName), "x");
    QCOMPARE(oldSecondFiles(root, today, keptDays).size(), 7);
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(readTree(root).isEmpty());
}

void TestPurge::keepsDirectories()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    // One of its own kind of name holds a file that goes.
    const QString directory = QStringLiteral("S/20230105_1");
    writeFile(root.filePath(directory + u'/' + oldName), "x");
    QVERIFY(root.mkpath(QStringLiteral("S/20230106_1")));
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(readTree(root).isEmpty());
    QVERIFY(root.exists(directory));
    QVERIFY(root.exists(QStringLiteral("S/20230106_1")));
}

void TestPurge::keepsWhatHasTheNameButIsNoFile()
{
    const QTemporaryDir store;
    const QString path = store.filePath(oldName);
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    removeOldSecondFiles(QDir(store.path()), today, keptDays);
    QVERIFY(isThere(path));
}

void TestPurge::keepsHiddenFilesAndWhatHiddenDirectoriesHold()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    writeFile(root.filePath(QStringLiteral(".20230105_1")), "x");
    writeFile(root.filePath(QStringLiteral("S/.20230105_1")), "x");
    writeFile(root.filePath(QStringLiteral(".hidden/20230105_1")), "x");
    writeFile(root.filePath(QStringLiteral("S/.hidden/B/20230105_1")), "x");
    const auto before = readTree(root);
    QCOMPARE(before.size(), 4);
    removeOldSecondFiles(root, today, keptDays);
    QCOMPARE(readTree(root), before);
}

void TestPurge::doesNotFollowLinksToDirectories()
{
    const QTemporaryDir store;
    const QTemporaryDir elsewhere;
    const QDir root(store.path());
    writeFile(elsewhere.filePath(oldName), "x");
    QVERIFY(QFile::link(elsewhere.path(), root.filePath(QStringLiteral("link"))));
    QVERIFY(QFile::link(elsewhere.path(), root.filePath(QStringLiteral("20230106_1"))));
    writeFile(root.filePath(QStringLiteral("S/20230105_1")), "x");
    // Round and round, were it followed.
    QVERIFY(QFile::link(root.path(), root.filePath(QStringLiteral("S/back"))));
    QCOMPARE(oldSecondFiles(root, today, keptDays),
             QStringList{root.filePath(QStringLiteral("S/20230105_1"))});
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(QFile::exists(elsewhere.filePath(oldName)));
    QVERIFY(isThere(root.filePath(QStringLiteral("20230106_1"))));
    QVERIFY(isThere(root.filePath(QStringLiteral("link"))));
}

void TestPurge::removesALinkToAFileAndNotTheFile()
{
    const QTemporaryDir store;
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("20230107_1"));
    writeFile(target, "x");
    const QString link = store.filePath(oldName);
    const QString otherLink = store.filePath(QStringLiteral("another name"));
    QVERIFY(QFile::link(target, link));
    QVERIFY(QFile::link(target, otherLink));
    removeOldSecondFiles(QDir(store.path()), today, keptDays);
    QVERIFY(!isThere(link));
    QVERIFY(isThere(otherLink)); // its own name counts
    QVERIFY(QFile::exists(target));
}

void TestPurge::keepsALinkThatLeadsNowhere()
{
    const QTemporaryDir store;
    const QString link = store.filePath(oldName);
    QVERIFY(QFile::link(store.filePath(QStringLiteral("nowhere")), link));
    removeOldSecondFiles(QDir(store.path()), today, keptDays);
    QVERIFY(isThere(link));
}

void TestPurge::walksARootThatIsALink()
{
    const QTemporaryDir store;
    const QTemporaryDir elsewhere;
    writeFile(elsewhere.filePath(QStringLiteral("S/20230105_1")), "x");
    const QString root = store.filePath(QStringLiteral("root"));
    QVERIFY(QFile::link(elsewhere.path(), root));
    removeOldSecondFiles(QDir(root), today, keptDays);
    QVERIFY(!QFile::exists(elsewhere.filePath(QStringLiteral("S/20230105_1"))));
}

void TestPurge::touchesNothingBesideTheRoot()
{
    const QTemporaryDir parent;
    const QDir around(parent.path());
    for (const char* name : {"20230105_1", "store2/20230105_1", "stor/20230105_1"})
        writeFile(around.filePath(QLatin1String(name)), "x");
    const auto before = readTree(around);
    writeFile(around.filePath(QStringLiteral("store/S/20230105_1")), "x");
    removeOldSecondFiles(QDir(around.filePath(QStringLiteral("store"))), today, keptDays);
    QCOMPARE(readTree(around), before);
}

void TestPurge::keepsANameThatIsNoText()
{
    const QTemporaryDir store;
    const QByteArray path = QFile::encodeName(store.path()) + "/20230105_\xff_1";
    const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    if (file < 0)
        QSKIP("This file system takes no such name.");
    ::close(file);
    removeOldSecondFiles(QDir(store.path()), today, keptDays);
    QCOMPARE(::unlink(path.constData()), 0);
}

void TestPurge::passesOverAStoreThatIsNotThere()
{
    const QTemporaryDir store;
    const QDir root(store.filePath(QStringLiteral("nowhere")));
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(!root.exists());
    writeFile(store.filePath(oldName), "x");
    removeOldSecondFiles(QDir(store.filePath(oldName)), today, keptDays); // a file, no directory
    QVERIFY(QFile::exists(store.filePath(oldName)));
}

void TestPurge::passesOverDirectoriesThatCannotBeRead()
{
    const OtherUser user;
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* name : {"A/20230105_1", "B/20230105_1", "C/20230105_1", "D/deep/20230105_1"})
        writeFile(root.filePath(QLatin1String(name)), "x");
    {
        const Permissions noEntry(root.filePath(QStringLiteral("B")), 0000);
        const Permissions noList(root.filePath(QStringLiteral("D")), 0300);
        removeOldSecondFiles(root, today, keptDays);
    }
    QCOMPARE(readTree(root).keys(), QStringList({"B/20230105_1", "D/deep/20230105_1"}));
}

void TestPurge::passesOverFilesThatCannotBeRemoved()
{
    const OtherUser user;
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* name : {"A/20230105_1", "B/20230105_1", "B/20230106_1", "C/20230105_1"})
        writeFile(root.filePath(QLatin1String(name)), "x");
    {
        const Permissions readOnly(root.filePath(QStringLiteral("B")), 0500);
        removeOldSecondFiles(root, today, keptDays);
    }
    QCOMPARE(readTree(root).keys(), QStringList({"B/20230105_1", "B/20230106_1"}));
    // Next time they can be.
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(readTree(root).isEmpty());
}

void TestPurge::findsBeforeItRemoves()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (int i = 0; i < 500; ++i)
        writeFile(root.filePath(QStringLiteral("S/%1_1").arg(20230101 + i % 28) + '_' +
                                QString::number(i) + "_1"),
                  "x");
    const QStringList found = oldSecondFiles(root, today, keptDays);
    QCOMPARE(found.size(), 500);
    QCOMPARE(readTree(root).size(), 500);
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(readTree(root).isEmpty());
}

// A link that leads nowhere is kept, but these lead to something as long as nothing is removed yet.
// Whichever way the directory lists them, some links come behind what they lead to.
void TestPurge::removesALinkWithWhatItLeadsTo()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (int i = 0; i < 40; ++i) {
        const QString file = root.filePath(QStringLiteral("20230105_%1_1").arg(i));
        const QString link = root.filePath(QStringLiteral("20230106_%1_1").arg(i));
        if (i % 2 == 0)
            QVERIFY(QFile::link(file, link));
        writeFile(file, "x");
        if (i % 2 != 0)
            QVERIFY(QFile::link(file, link));
    }
    removeOldSecondFiles(root, today, keptDays);
    const auto everything = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
    QCOMPARE(root.entryList(everything), QStringList());
}

void TestPurge::aSecondRunFindsNothing()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    writeFile(root.filePath(oldName), "x");
    writeFile(root.filePath(QStringLiteral("20240115_1")), "x");
    removeOldSecondFiles(root, today, keptDays);
    QVERIFY(oldSecondFiles(root, today, keptDays).isEmpty());
    // A day later the rule reads the clock anew.
    QCOMPARE(oldSecondFiles(root, today.addDays(keptDays + 1), keptDays),
             QStringList{root.filePath(QStringLiteral("20240115_1"))});
}

void TestPurge::agreesWithTheRuleOnRandomTrees()
{
    QRandomGenerator random(20240115);
    const QStringList directories{"",          "S/",          "S/B/", "S/B/X/", ".hid/",
                                  "S/.hid/B/", "20230105_1/", "S 2/", "Имя/",   "S/B/*/"};
    qsizetype removed = 0;
    for (int tree = 0; tree < 30; ++tree) {
        const QTemporaryDir store;
        const QDir root(store.path());
        QSet<QString> wanted;
        const int days = random.bounded(10) - 1;
        for (int i = 0; i < 60; ++i) {
            const QString name = randomName(&random);
            const QString path = oneOf(directories, &random) + name;
            // Not a file where another path needs a directory.
            if (name.isEmpty() || path == QLatin1String("20230105_1"))
                continue;
            writeFile(root.filePath(path), "x");
            if (shouldGo(path, days))
                wanted.insert(root.filePath(path));
        }
        const QStringList found = oldSecondFiles(root, today, days);
        QCOMPARE(QSet<QString>(found.cbegin(), found.cend()), wanted);
        QCOMPARE(found.size(), wanted.size());
        const auto before = readTree(root);
        removeOldSecondFiles(root, today, days);
        auto after = readTree(root);
        QCOMPARE(after.size(), before.size() - wanted.size());
        for (const QString& path : std::as_const(wanted))
            QVERIFY(!isThere(path));
        removed += wanted.size();
    }
    QVERIFY(removed > 100); // the trees do hold old files
}

void TestPurge::withoutAStoreNothingIsRemoved_data()
{
    QTest::addColumn<QString>("store");
    for (const char* store : {"a file", "a link to a file", "a link that leads nowhere"})
        QTest::newRow(store) << QString::fromLatin1(store);
}

// What has the store's name is no directory, and what lies beside it is somebody else's.
void TestPurge::withoutAStoreNothingIsRemoved()
{
    QFETCH(const QString, store);
    const QDir data = ICore::getDir(QString(), false);
    const QString name = data.filePath(QStringLiteral("tadata"));
    for (const char* other : {"20200101_1", "other/20200101_1", "other/S/B/X/20200101_1"})
        writeFile(data.filePath(QLatin1String(other)), "precious");
    if (store == u"a file")
        writeFile(name, "file");
    else if (store == u"a link to a file")
        QVERIFY(QFile::link(data.filePath(QStringLiteral("20200101_1")), name));
    else
        QVERIFY(QFile::link(data.filePath(QStringLiteral("nowhere")), name));
    const auto before = readTree(data);
    removeOldSecondFiles(vexdesk::storeRoot(), today, keptDays);
    QCOMPARE(readTree(data), before);
    QVERIFY(isThere(name));
    QVERIFY(!data.exists(QStringLiteral("nowhere")));
}

void TestPurge::settingsHaveDefaults()
{
    const auto values = PurgeSettings::from(AppSettings(QLatin1String(PurgeSettings::group)));
    QCOMPARE(QByteArray(PurgeSettings::group), QByteArray("TADataManager"));
    QVERIFY(values.deleteSeconds);
    QCOMPARE(values.storeForDays, 7);
}

void TestPurge::settingsOfAnotherType_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("deleteSeconds");
    QTest::addColumn<int>("storeForDays");
    const auto row = [](const char* title, const char* file, bool deleteSeconds, int storeForDays) {
        QTest::newRow(title) << QByteArray(file) << deleteSeconds << storeForDays;
    };
    row("as they are written", "deleteSeconds=false\nstoreForDays=30", false, 30);
    row("one of them", "storeForDays=0", true, 0);
    row("numbers for yes", "deleteSeconds=1", true, 7);
    row("numbers for no", "deleteSeconds=0", false, 7);
    row("text that is neither", "deleteSeconds=no", true, 7);
    row("nothing", "deleteSeconds=", false, 7);
    row("a list", "deleteSeconds=true, true", false, 7);
    row("text for a number", "storeForDays=week", true, 0);
    row("a fraction", "storeForDays=2.5", true, 0);
    row("below nothing", "storeForDays=-1", true, -1);
    row("more than can be chosen", "storeForDays=1000", true, 1000);
    row("a list for a number", "storeForDays=1, 2", true, 0);
    row("in quotation marks", "storeForDays=\"12\"", true, 12);
}

void TestPurge::settingsOfAnotherType()
{
    QFETCH(const QByteArray, file);
    testsupport::writeSettings(file);
    const auto values = PurgeSettings::from(AppSettings(QLatin1String(PurgeSettings::group)));
    QTEST(values.deleteSeconds, "deleteSeconds");
    QTEST(values.storeForDays, "storeForDays");
}

QTEST_GUILESS_MAIN(TestPurge)
#include "tst_purge.moc"
