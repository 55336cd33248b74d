#include "plugin/purge.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

class TestPurge final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void removesWhatIsOlderThanTheDaysToKeep_data();
    void removesWhatIsOlderThanTheDaysToKeep();
    void doesNotFollowLinksNorEnterHiddenDirectories();
};

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
    row("no date", "notadate_1", 0, true);
    row("almost a date", "20240230_1", 0, true);
    row("day file of the store", "20230105_1.iss", 7, true);
    row("minute file", "20230105_60", 7, true);
    row("cut at the first underscore", "20230105_x_1", 7, false);
    row("nothing before the underscore", "_1", 0, true);
    row("other number", "20230105_11", 7, true);
}

void TestPurge::removesWhatIsOlderThanTheDaysToKeep()
{
    QFETCH(const QString, name);
    QFETCH(const int, days);
    const QTemporaryDir store;
    const QDir root(store.path());
    const QString path = root.filePath(QStringLiteral("S/B/X/") + name);
    testsupport::writeFile(path, "x");
    tadata::removeOldSecondFiles(root, QDate(2024, 1, 15), days);
    QTEST(QFile::exists(path), "kept");
    QVERIFY(root.exists(QStringLiteral("S/B/X")));
}

void TestPurge::doesNotFollowLinksNorEnterHiddenDirectories()
{
    const QTemporaryDir store;
    const QTemporaryDir elsewhere;
    const QDir root(store.path());
    const QStringList kept{elsewhere.filePath(QStringLiteral("20230105_1")),
                           root.filePath(QStringLiteral(".hidden/20230105_1")),
                           root.filePath(QStringLiteral("S/.20230105_1"))};
    for (const QString& path : kept)
        testsupport::writeFile(path, "x");
    QVERIFY(QFile::link(elsewhere.path(), root.filePath(QStringLiteral("link"))));
    tadata::removeOldSecondFiles(root, QDate(2024, 1, 15), 7);
    for (const QString& path : kept)
        QVERIFY2(QFile::exists(path), qPrintable(path));
}

QTEST_GUILESS_MAIN(TestPurge)
#include "tst_purge.moc"
