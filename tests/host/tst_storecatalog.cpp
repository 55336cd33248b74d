// SPDX-License-Identifier: MIT
#include <vexdesk/history/storecatalog.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <filesystem>

class TestStoreCatalog final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void anEmptyStoreHoldsNothing();
    void countsDayFilesBySeriesAndTimeframe();
    void passesOverWhatIsNoDayFile();
    void listsInTheOrderOfCodes();
    void namesLinksThatLeadNowhere();
    void saysWhatIsNotListedWhole_data();
    void saysWhatIsNotListedWhole();
    void codesDifferWhereBytesDo();
};

using vexdesk::StoredSeries;

void TestStoreCatalog::anEmptyStoreHoldsNothing()
{
    const QTemporaryDir store;
    QVERIFY(vexdesk::listStore(QDir(store.path())).isEmpty());
    QVERIFY(vexdesk::listStore(QDir(store.filePath(QStringLiteral("missing")))).isEmpty());
}

void TestStoreCatalog::countsDayFilesBySeriesAndTimeframe()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    testsupport::writeFile(root.filePath(QStringLiteral("S/B/X/20240116_60.iss")), "12345");
    testsupport::writeFile(root.filePath(QStringLiteral("S/B/X/20240115_60.iss")), "123");
    testsupport::writeFile(root.filePath(QStringLiteral("S/B/X/20240120_1.iss")), "1");

    const QList<StoredSeries> list = vexdesk::listStore(root);
    QCOMPARE(list.size(), 2);
    QCOMPARE(list[0].timeframe, 1);
    QCOMPARE(list[0].dayFiles, 1);
    QCOMPARE(list[1].timeframe, 60);
    QCOMPARE(list[1].dayFiles, 2);
    QCOMPARE(list[1].firstDay, QDate(2024, 1, 15));
    QCOMPARE(list[1].lastDay, QDate(2024, 1, 16));
    QCOMPARE(list[1].bytes, 8);
    QCOMPARE(list[1].stockCode, QStringLiteral("S"));
    QCOMPARE(list[1].boardCode, QStringLiteral("B"));
    QCOMPARE(list[1].securityName, QStringLiteral("X"));
}

void TestStoreCatalog::passesOverWhatIsNoDayFile()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* path : {"S/B/X/20240115_60", "S/B/X/readme.txt", "S/B/20240115_60.iss",
                             "S/20240115_60.iss", "20240115_60.iss", "S/B/X/Y/20240115_60.iss"})
        testsupport::writeFile(root.filePath(QLatin1String(path)), "x");
    QVERIFY(root.mkpath(QStringLiteral("S/B/X/20240116_60.iss")));
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    QVERIFY(catalog.series.isEmpty());
    QCOMPARE(catalog.unreadable, QStringList());
    QCOMPARE(catalog.lostLinks, QStringList());
}

void TestStoreCatalog::listsInTheOrderOfCodes()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* series : {"b/B/X", "B/b/X", "B/B/x", "B/B/X", "B/B/Я"})
        testsupport::writeFile(root.filePath(QString::fromUtf8(series) + "/20240115_60.iss"), "x");
    QStringList codes;
    const QList<StoredSeries> list = vexdesk::listStore(root);
    for (const StoredSeries& series : list)
        codes.append(series.stockCode + u'/' + series.boardCode + u'/' + series.securityName);
    QCOMPARE(codes,
             QStringList({QStringLiteral("B/B/X"), QStringLiteral("B/B/x"), QStringLiteral("B/B/Я"),
                          QStringLiteral("B/b/X"), QStringLiteral("b/B/X")}));
}

// All the rest is listed, whatever stands beside it.
void TestStoreCatalog::namesLinksThatLeadNowhere()
{
    const QTemporaryDir store;
    const QDir root(store.path());
    for (const char* stock : {"A", "M", "Z"})
        testsupport::writeFile(root.filePath(QLatin1String(stock) + "/B/C/20240115_60.iss"), "x");
    QStringList lost;
    for (int link = 0; link < 8; ++link) {
        const QString number = QString::number(link);
        QVERIFY(QFile::link(QStringLiteral("/nonexistent"), root.filePath("x" + number)));
        QVERIFY(QFile::link(root.filePath("loop" + number), root.filePath("loop" + number)));
        QVERIFY(QFile::link(QStringLiteral("/nonexistent"),
                            root.filePath("A/B/C/2024012" + number + "_60.iss")));
        QVERIFY(QFile::link(QStringLiteral("/nonexistent"), root.filePath("M/B/C/note" + number)));
        lost << root.filePath("x" + number) << root.filePath("loop" + number)
             << root.filePath("A/B/C/2024012" + number + "_60.iss");
    }
    vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(root);
    catalog.lostLinks.sort();
    lost.sort();
    QCOMPARE(catalog.lostLinks, lost);
    QCOMPARE(catalog.series.size(), 3);
    QCOMPARE(catalog.series.first().dayFiles, 1);
    QVERIFY(catalog.unreadable.isEmpty());
}

void TestStoreCatalog::saysWhatIsNotListedWhole_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("name");
    const QString stranger = QStringLiteral("20240114_60.iss");
    QTest::newRow("stocks") << QString() << stranger;
    QTest::newRow("boards") << QStringLiteral("/M") << stranger;
    QTest::newRow("securities") << QStringLiteral("/M/B") << stranger;
    QTest::newRow("day files") << QStringLiteral("/M/B/C") << stranger;
    QTest::newRow("day files, at the end") << QStringLiteral("/M/B/C") << "20240130_60.iss";
}

// All that can be looked at is listed, whatever stands beside it.
void TestStoreCatalog::saysWhatIsNotListedWhole()
{
    QFETCH(const QString, directory);
    QFETCH(const QString, name);
    const QTemporaryDir store;
    const QString path = store.path() + directory;
    for (const char* file : {"A/B/C", "M/A/C", "M/B/B", "M/B/C", "M/B/D", "M/C/C", "Z/B/C"}) {
        for (const char* day : {"/20240115_60.iss", "/20240125_60.iss"})
            testsupport::writeFile(store.filePath(QLatin1String(file) + day), "x");
    }
    // Longer than the name of any file: what it leads to cannot be looked at.
    QVERIFY(QFile::link(QString(300, u'x'), path + u'/' + name));
    QVERIFY(QFile::link(QString(300, u'x'), store.filePath(QStringLiteral("M/B/D/notes"))));
    const vexdesk::StoreCatalog catalog = vexdesk::storeCatalog(QDir(store.path()));
    QCOMPARE(catalog.unreadable, QStringList(path));
    QCOMPARE(catalog.lostLinks, QStringList());
    QCOMPARE(catalog.series.size(), 7);
    for (const StoredSeries& series : catalog.series)
        QCOMPARE(series.dayFiles, 2);

    const QString none = store.filePath(QString(300, u'x'));
    QCOMPARE(vexdesk::storeCatalog(QDir(none)).unreadable, QStringList(none));
}

// What is no text has a character of its own for each byte that is not ASCII.
void TestStoreCatalog::codesDifferWhereBytesDo()
{
    const QTemporaryDir store;
    const std::filesystem::path root(QFile::encodeName(store.path()).toStdString());
    // What QTemporaryDir could not do.
    const auto clean = qScopeGuard([&root] {
        for (const auto& entry : std::filesystem::directory_iterator(root))
            std::filesystem::remove_all(entry.path());
    });
    testsupport::writeFile(store.filePath(QStringLiteral("day")), "x");
    const QByteArrayList names{"a", "a\x7f\x80", "a\x7f\xc0", "a\x7f\xff", "\xd0\x81"};
    for (const QByteArray& name : names) {
        const std::filesystem::path path = root / name.toStdString() / "B" / "C";
        QVERIFY(std::filesystem::create_directories(path));
        QVERIFY(std::filesystem::copy_file(root / "day", path / "20240115_60.iss"));
    }
    QStringList codes;
    for (const StoredSeries& series : vexdesk::listStore(QDir(store.path())))
        codes.append(series.stockCode);
    const QString begin = QStringLiteral("a\x7f");
    QCOMPARE(codes, QStringList({QStringLiteral("a"), begin + QChar(0xdc80), begin + QChar(0xdcc0),
                                 begin + QChar(0xdcff), QStringLiteral("Ё")}));
}

QTEST_GUILESS_MAIN(TestStoreCatalog)
#include "tst_storecatalog.moc"
