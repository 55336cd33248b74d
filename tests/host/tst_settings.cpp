// SPDX-License-Identifier: MIT
#include <vexdesk/appsettings.h>
#include <vexdesk/terminal/core.h>

#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <unistd.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

class SettingsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void lieInTheDataDirectory();
    void missingValuesAreTheDefault();
    void storedValuesWinOverTheDefault();
    void laterValuesReplaceEarlierOnes();
    void groupsAreApart();
    void pathNamesAGroupInAGroup();
    void namesAndForgetsWhatIsInAGroup();
    void keyWithAPath();
    void otherObjectsSeeItAtOnce();
    void isOnDiskWhenTheObjectIsGone_data();
    void isOnDiskWhenTheObjectIsGone();
    void everyKindOfKeyIsOnDisk_data();
    void everyKindOfKeyIsOnDisk();
    void fileFromElsewhereIsRead();
    void valuesOfTheWrongType();
    void fileThatCannotBeWritten();
    void syncTellsWhatIsNotOnDisk();
    void aReadOnlyDirectoryIsTold();
    void directoryThatCannotBeMade();
    void canBeMoved();
    void objectsInSeveralThreads();

private:
    // The file read by a reader that shares nothing with the library under test.
    QVariant onDisk(const QString& key) const;

    QString m_dataDir;
    QString m_file;
    QString m_installed;
};

void SettingsTest::initTestCase()
{
    vexdesk::setApplicationIdentity();
    m_dataDir = QCoreApplication::applicationDirPath() + "/user";
    m_file = m_dataDir + "/vexdesk.ini";
    m_installed = QCoreApplication::applicationDirPath() + "/.installed";
    cleanup();
}

void SettingsTest::init()
{
    testsupport::failOnStrayWarnings();
}

void SettingsTest::cleanup()
{
    QFile::remove(m_installed);
    QDir(m_dataDir).removeRecursively();
}

QVariant SettingsTest::onDisk(const QString& key) const
{
    // A copy under a new name: what QSettings holds in memory goes by the name.
    const QTemporaryDir dir;
    const QString copy = dir.filePath("copy.ini");
    if (!QFile::copy(m_file, copy))
        return QVariant();
    return QSettings(copy, QSettings::IniFormat).value(key);
}

void SettingsTest::lieInTheDataDirectory()
{
    {
        AppSettings settings("Group");
        settings.setValue("key", 5);
    }
    QVERIFY(QFileInfo(m_file).isFile());
    QCOMPARE(onDisk("Group/key").toInt(), 5);
}

void SettingsTest::missingValuesAreTheDefault()
{
    const AppSettings settings("Group");
    QVERIFY(!settings.contains("key"));
    QVERIFY(!settings.value("key").isValid());
    QCOMPARE(settings.value("key", 7), QVariant(7));
    QCOMPARE(settings.value("key", "text"), QVariant("text"));
    QVERIFY2(!settings.contains("key"), "asking stores nothing");
}

void SettingsTest::storedValuesWinOverTheDefault()
{
    AppSettings settings("Group");
    settings.setValue("zero", 0);
    settings.setValue("false", false);
    settings.setValue("empty", QString(""));
    QVERIFY(settings.contains("zero"));
    QVERIFY(settings.contains("false"));
    QVERIFY(settings.contains("empty"));
    QCOMPARE(settings.value("zero", 7).toInt(), 0);
    QCOMPARE(settings.value("false", true).toBool(), false);
    QCOMPARE(settings.value("empty", "default").toString(), QString(""));
}

void SettingsTest::laterValuesReplaceEarlierOnes()
{
    {
        AppSettings settings("Group");
        settings.setValue("key", "one");
        settings.setValue("key", "two");
        QCOMPARE(settings.value("key").toString(), QStringLiteral("two"));
    }
    {
        AppSettings settings("Group");
        settings.setValue("key", 3);
    }
    QCOMPARE(AppSettings("Group").value("key").toInt(), 3);
    QCOMPARE(onDisk("Group/key").toInt(), 3);
}

void SettingsTest::groupsAreApart()
{
    AppSettings one("One");
    AppSettings two("Two");
    one.setValue("key", 1);
    QVERIFY(!two.contains("key"));
    two.setValue("key", 2);
    QCOMPARE(one.value("key").toInt(), 1);
    QCOMPARE(two.value("key").toInt(), 2);
    // A name that begins like the other is another group.
    QVERIFY(!AppSettings("On").contains("key"));
    QVERIFY(!AppSettings("OneMore").contains("key"));
}

void SettingsTest::pathNamesAGroupInAGroup()
{
    {
        AppSettings outer("Manager");
        AppSettings inner("Manager/Wizard");
        outer.setValue("width", 1);
        inner.setValue("width", 2);
        AppSettings innermost("Manager/Wizard/Columns");
        innermost.setValue("width", 3);
        QCOMPARE(outer.value("width").toInt(), 1);
        QCOMPARE(inner.value("width").toInt(), 2);
        QCOMPARE(innermost.value("width").toInt(), 3);
        QVERIFY2(!outer.contains("Wizard"), "a group is no value");
        QVERIFY(!AppSettings("Wizard").contains("width"));
    }
    QCOMPARE(onDisk("Manager/width").toInt(), 1);
    QCOMPARE(onDisk("Manager/Wizard/width").toInt(), 2);
    QCOMPARE(onDisk("Manager/Wizard/Columns/width").toInt(), 3);
}

void SettingsTest::namesAndForgetsWhatIsInAGroup()
{
    const QString odd = QStringLiteral("Мой %1 = [x]");
    {
        AppSettings group("Manager");
        QCOMPARE(group.keys(), QStringList());
        QCOMPARE(group.groups(), QStringList());
        group.setValue("width", 1);
        group.setValue("height", 2);
        AppSettings("Manager/Wizard").setValue("width", 3);
        AppSettings("Manager/Wizard/Columns").setValue("width", 4);
        AppSettings("Manager/" + odd).setValue("width", 5);
        QStringList groups = group.groups();
        groups.sort();
        QCOMPARE(group.keys(), QStringList({"height", "width"}));
        QCOMPARE(groups, QStringList({"Wizard", odd}));

        group.remove("Wizard");
        group.remove("height");
        group.remove("nothing");
        QCOMPARE(group.keys(), QStringList{"width"});
        QCOMPARE(group.groups(), QStringList{odd});
        QVERIFY(AppSettings("Manager/Wizard/Columns").keys().isEmpty());
    }
    QCOMPARE(onDisk("Manager/width").toInt(), 1);
    QVERIFY(!onDisk("Manager/height").isValid());
    QVERIFY(!onDisk("Manager/Wizard/width").isValid());
    QCOMPARE(onDisk("Manager/" + odd + "/width").toInt(), 5);
}

void SettingsTest::keyWithAPath()
{
    AppSettings outer("Manager");
    outer.setValue("Wizard/width", 5);
    QCOMPARE(AppSettings("Manager/Wizard").value("width").toInt(), 5);
    QVERIFY(outer.contains("Wizard/width"));
}

void SettingsTest::otherObjectsSeeItAtOnce()
{
    const AppSettings before("Group");
    AppSettings writer("Group");
    writer.setValue("key", 5);
    QCOMPARE(before.value("key").toInt(), 5);
    QCOMPARE(AppSettings("Group").value("key").toInt(), 5);
    writer.setValue("key", 6);
    QCOMPARE(before.value("key").toInt(), 6);
}

void SettingsTest::isOnDiskWhenTheObjectIsGone_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("whole number") << QVariant(-42);
    QTest::newRow("large number") << QVariant(qlonglong(9007199254740993));
    QTest::newRow("fraction") << QVariant(0.1);
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("text") << QVariant("text");
    QTest::newRow("empty text") << QVariant("");
    QTest::newRow("Cyrillic text") << QVariant("Импорт котировок");
    QTest::newRow("blanks at the ends") << QVariant("  two blanks  ");
    QTest::newRow("comma") << QVariant("a,b");
    QTest::newRow("semicolon and equals sign") << QVariant("a;b=c");
    QTest::newRow("quotation marks") << QVariant("\"a\" \\b");
    QTest::newRow("line end and tab") << QVariant("a\nb\tc");
    QTest::newRow("at sign") << QVariant("@a");
    QTest::newRow("at sign and bracket") << QVariant("@Invalid()");
    QTest::newRow("percent signs") << QVariant("%1 100% %20");
    QTest::newRow("list") << QVariant(QStringList{"a", "b,c", ""});
    QTest::newRow("list of one") << QVariant(QStringList{"a"});
    QTest::newRow("bytes") << QVariant(QByteArray("\0\x01\xff\n", 4));
    QTest::newRow("date") << QVariant(QDate(2024, 2, 29));
}

void SettingsTest::isOnDiskWhenTheObjectIsGone()
{
    QFETCH(const QVariant, value);
    {
        AppSettings settings("Group");
        settings.setValue("key", value);
    }
    // The file keeps most values as text.
    QVariant stored = onDisk("Group/key");
    QVERIFY(stored.isValid());
    QVERIFY2(stored.convert(value.metaType()), value.typeName());
    QCOMPARE(stored, value);

    QVariant again = AppSettings("Group").value("key");
    QVERIFY(again.convert(value.metaType()));
    QCOMPARE(again, value);
}

void SettingsTest::everyKindOfKeyIsOnDisk_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("Cyrillic") << "Ширина";
    QTest::newRow("blank") << "two words";
    QTest::newRow("percent sign") << "100%";
    QTest::newRow("point") << "a.b";
    QTest::newRow("equals sign") << "a=b";
    QTest::newRow("brackets") << "[a]";
    QTest::newRow("upper and lower case") << "KeyKEYkey";
}

void SettingsTest::everyKindOfKeyIsOnDisk()
{
    QFETCH(const QString, key);
    {
        AppSettings settings("Группа");
        settings.setValue(key, 5);
        QVERIFY(settings.contains(key));
    }
    QCOMPARE(onDisk("Группа/" + key).toInt(), 5);
    QCOMPARE(AppSettings("Группа").value(key).toInt(), 5);
}

void SettingsTest::fileFromElsewhereIsRead()
{
    testsupport::writeFile(m_file, "[Manager]\nWizard\\width=12\n\n[Other]\nname=Вася\n");
    QCOMPARE(AppSettings("Manager/Wizard").value("width").toInt(), 12);
    {
        AppSettings other("Other");
        QCOMPARE(other.value("name").toString(), QStringLiteral("Вася"));
        other.setValue("name", "Петя");
    }
    // What was not touched stays.
    QCOMPARE(onDisk("Manager/Wizard/width").toInt(), 12);
    QCOMPARE(onDisk("Other/name").toString(), QStringLiteral("Петя"));
}

void SettingsTest::valuesOfTheWrongType()
{
    testsupport::writeFile(m_file, "[Group]\nwidth=wide\nflag=perhaps\nlist=a, b\nempty=\n"
                                   "bytes=@ByteArray(abc)\nunknown=@Variant(\\0\\0)\n");
    const AppSettings settings("Group");
    bool ok = true;
    QCOMPARE(settings.value("width", 7).toInt(&ok), 0);
    QVERIFY(!ok);
    QCOMPARE(settings.value("width", 7).toString(), QStringLiteral("wide"));
    QCOMPARE(settings.value("empty", 7).toInt(&ok), 0);
    QVERIFY(!ok);
    QCOMPARE(settings.value("list").toInt(&ok), 0);
    QVERIFY(!ok);
    QCOMPARE(settings.value("list").toStringList(), (QStringList{"a", "b"}));
    QCOMPARE(settings.value("bytes").toInt(&ok), 0);
    QVERIFY(!ok);
    QCOMPARE(settings.value("unknown", 7).toInt(&ok), 0);
    QVERIFY(!ok);
    // A text that is neither "false" nor "0" nor empty counts as true: callers that care compare.
    QCOMPARE(settings.value("flag").toBool(), true);
}

void SettingsTest::fileThatCannotBeWritten()
{
    // A directory in the file's place holds for every user.
    QVERIFY(QDir().mkpath(m_file + "/in the way"));
    {
        AppSettings settings("Unwritable");
        settings.setValue("key", 5);
        QCOMPARE(settings.value("key").toInt(), 5);
        QCOMPARE(AppSettings("Unwritable").value("key").toInt(), 5);
    }
    QCOMPARE(AppSettings("Unwritable").value("key").toInt(), 5);
    QVERIFY(QFileInfo(m_file).isDir());
}

void SettingsTest::syncTellsWhatIsNotOnDisk()
{
    AppSettings settings("Sync");
    QVERIFY(settings.sync());
    settings.setValue("key", 1);
    QVERIFY(settings.sync());
    QCOMPARE(onDisk("Sync/key").toInt(), 1);

    QVERIFY(QFile::remove(m_file));
    QVERIFY(QDir().mkpath(m_file + "/in the way"));
    settings.setValue("key", 2);
    QVERIFY(!settings.sync());
    QVERIFY(!settings.sync());
    QVERIFY2(!AppSettings("Other").sync(),
             "what another object could not store is not kept either");
    QCOMPARE(settings.value("key").toInt(), 2);

    // Nothing is lost that could be written after all.
    QVERIFY(QDir(m_file).removeRecursively());
    QVERIFY(settings.sync());
    QCOMPARE(onDisk("Sync/key").toInt(), 2);
}

void SettingsTest::aReadOnlyDirectoryIsTold()
{
    AppSettings("ReadOnly").setValue("key", 1);
    const auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_dataDir, readable));
    bool isStored = true;
    {
        // For root it would be writable.
        const testsupport::OtherUser user;
        AppSettings settings("ReadOnly");
        settings.setValue("key", 2);
        isStored = settings.sync();
    }
    QVERIFY(QFile::setPermissions(m_dataDir, readable | QFile::WriteOwner));
    QVERIFY(!isStored);
}

void SettingsTest::directoryThatCannotBeMade()
{
    const QTemporaryDir home;
    testsupport::writeFile(home.filePath("file"), "a file in the way");
    qputenv("XDG_DATA_HOME", home.filePath("file/below").toLocal8Bit());
    testsupport::writeFile(m_installed, "");
    {
        AppSettings settings("Homeless");
        settings.setValue("key", 5);
        QCOMPARE(AppSettings("Homeless").value("key").toInt(), 5);
    }
    QCOMPARE(AppSettings("Homeless").value("key").toInt(), 5);
    QVERIFY(!QFileInfo::exists(m_file));
}

void SettingsTest::canBeMoved()
{
    AppSettings first("One");
    first.setValue("key", 1);
    AppSettings moved(std::move(first));
    QCOMPARE(moved.value("key").toInt(), 1);

    AppSettings other("Two");
    other.setValue("key", 2);
    moved = std::move(other);
    QCOMPARE(moved.value("key").toInt(), 2);
    moved.setValue("key", 3);
    QCOMPARE(AppSettings("Two").value("key").toInt(), 3);
    QCOMPARE(AppSettings("One").value("key").toInt(), 1);
}

void SettingsTest::objectsInSeveralThreads()
{
    constexpr int threads = 6;
    constexpr int rounds = 10;
    constexpr int keys = 20;
    QVERIFY2(!QFileInfo::exists(m_dataDir), "the first objects are to race for the directory");

    std::atomic<int> wrong = 0;
    std::vector<std::thread> workers;
    workers.reserve(threads);
    for (int thread = 0; thread < threads; ++thread) {
        workers.emplace_back([&wrong, thread] {
            const QString own = QStringLiteral("Own%1").arg(thread);
            for (int round = 0; round < rounds; ++round) {
                AppSettings mine("Threads/" + own);
                AppSettings shared("Shared");
                for (int key = 0; key < keys; ++key) {
                    mine.setValue(QString::number(key), round);
                    shared.setValue(own + u'/' + QString::number(key), round);
                    wrong += mine.value(QString::number(key)).toInt() != round;
                }
                const AppSettings reader("Shared");
                wrong += reader.value(own + "/0").toInt() != round;
            }
        });
    }
    for (std::thread& worker : workers)
        worker.join();

    QCOMPARE(wrong.load(), 0);
    const QTemporaryDir dir;
    const QString copy = dir.filePath("copy.ini");
    QVERIFY(QFile::copy(m_file, copy));
    const QSettings file(copy, QSettings::IniFormat);
    for (int thread = 0; thread < threads; ++thread) {
        for (int key = 0; key < keys; ++key) {
            const QString path = QStringLiteral("Own%1/%2").arg(thread).arg(key);
            QCOMPARE(file.value("Threads/" + path, -1).toInt(), rounds - 1);
            QCOMPARE(file.value("Shared/" + path, -1).toInt(), rounds - 1);
        }
    }
    QCOMPARE(file.allKeys().size(), 2 * threads * keys);
}

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
