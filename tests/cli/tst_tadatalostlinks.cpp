// SPDX-License-Identifier: MIT
// Days and directories may be links, to a disk that is not there now: who reads the store says so,
// and who changes it changes nothing.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtTest/QTest>

#include <algorithm>

using namespace testsupport;

namespace {

constexpr char bar[] = "100000;1.50;1.70;1.40;1.60;10;15.50;3\n";
constexpr char series[] = "NORD/MAIN/ALFA";

QString lost(const QString& link)
{
    return QStringLiteral("Ссылка %1 никуда не ведёт: подключите диск, на который она указывает, "
                          "или удалите её")
        .arg(link);
}

} // namespace

class TadataLostLinksTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listNamesThem();
    void healthNamesThem();
    void exportNamesThem();
    void changesNothing_data();
    void changesNothing();
    void changesOtherDays();
    void importsNothing_data();
    void importsNothing();
    void undoMakesNoDirectoryBehindThem();
    void aLostSeriesIsNoEmptyOne_data();
    void aLostSeriesIsNoEmptyOne();

private:
    QString day(const char* name) const { return path("store/NORD/MAIN/ALFA/") + name; }
    QString link() const { return day("20240116_60.iss"); }
};

void TadataLostLinksTest::init()
{
    CommandTest::init();
    writeFile(day("20240115_60.iss"), bar);
    writeFile(day("20240117_60.iss"), bar);
    QVERIFY(QFile::link(path("gone/20240116_60.iss"), link()));
}

void TadataLostLinksTest::listNamesThem()
{
    QVERIFY(QFile::link(path("gone"), path("store/NORD/MAIN/BETA")));
    QVERIFY(QFile::link(path("store/SOUTH"), path("store/SOUTH")));
    const Outcome listed = runTadata({"list", "--store", path("store")});
    QCOMPARE(listed.exitCode, 1);
    QCOMPARE(listed.out, QByteArray("NORD/MAIN/ALFA\t60\t2\t2024-01-15\t2024-01-17\t76\n"));
    QByteArrayList told = listed.err.split('\n');
    std::sort(told.begin(), told.end());
    QCOMPARE(told,
             QByteArrayList({"", lost(link()).toUtf8(), lost(path("store/NORD/MAIN/BETA")).toUtf8(),
                             lost(path("store/SOUTH")).toUtf8()}));
}

void TadataLostLinksTest::healthNamesThem()
{
    QVERIFY(QFile::link(path("gone"), path("store/NORD/MAIN/BETA")));
    writeFile(path("store/NORD/MAIN/GAMMA/20240115_60.iss"), bar);
    const Outcome found = runTadata({"health", "--store", path("store")});
    QCOMPARE(found.exitCode, 1);
    QVERIFY(found.out.contains("GAMMA") && !found.out.contains("ALFA"));
    QCOMPARE(found.err, QStringLiteral("%1: серии нет в отчёте\n%2\n")
                            .arg(lost(link()), lost(path("store/NORD/MAIN/BETA")))
                            .toUtf8());
}

void TadataLostLinksTest::exportNamesThem()
{
    const Outcome exported =
        runTadata({"export", path("out.txt"), "--series", series, "--store", path("store"),
                   "--from", "2024-01-15", "--to", "2024-01-17", "--line-format", "<DATE>"});
    QCOMPARE(exported.exitCode, 1);
    QVERIFY2(exported.err.contains(link().toUtf8()), exported.err.constData());
}

void TadataLostLinksTest::changesNothing_data()
{
    QTest::addColumn<QString>("command");
    for (const char* command : {"delete NORD/MAIN/ALFA --all", "copy NORD/MAIN/ALFA NORD/MAIN/BETA",
                                "rename NORD/MAIN/ALFA NORD/MAIN/BETA"})
        QTest::newRow(command) << QString::fromLatin1(command);
}

void TadataLostLinksTest::changesNothing()
{
    QFETCH(const QString, command);
    const Tree before = stored();
    QStringList given = words(qPrintable(command));
    given += {"--store", path("store")};
    QCOMPARE(runTadata(given), failed(lost(link())));
    QCOMPARE(stored(), before);
    QVERIFY(QFileInfo(link()).isSymLink());
    QVERIFY(!QFileInfo::exists(path("gone")));
}

void TadataLostLinksTest::changesOtherDays()
{
    QCOMPARE(runTadata({"delete", series, "--to", "2024-01-15", "--store", path("store")}),
             succeeded("1\n"));
    QVERIFY(QFileInfo(link()).isSymLink());
}

void TadataLostLinksTest::importsNothing_data()
{
    QTest::addColumn<QString>("mode");
    for (const char* mode : {"replace", "merge", "fill"})
        QTest::newRow(mode) << QString::fromLatin1(mode);
}

void TadataLostLinksTest::importsNothing()
{
    QFETCH(const QString, mode);
    const Tree before = stored();
    writeFile(path("in.txt"), "20240116,100000,1,1,1,1,1\n");
    const auto run = [&](const char* command) {
        return runTadata({command, path("in.txt"), "--series", series, "--columns",
                          "date=0,time=1,open=2,high=3,low=4,close=5,volume=6", "--no-header",
                          "--decimals", "2", "--mode", mode, "--store", path("store")});
    };
    const Outcome foretold = run("check");
    QCOMPARE(foretold.exitCode, 1);
    QVERIFY2((foretold.out + foretold.err).contains(link().toUtf8()), foretold.out.constData());
    const Outcome imported = run("import");
    QCOMPARE(imported.exitCode, 1);
    QVERIFY2(imported.err.contains(link().toUtf8()), imported.err.constData());
    QCOMPARE(stored(), before);
    QVERIFY(QFileInfo(link()).isSymLink());
    QVERIFY(!QFileInfo::exists(path("gone")));
}

// The disk goes between a command and its undo.
void TadataLostLinksTest::undoMakesNoDirectoryBehindThem()
{
    writeFile(path("gone/20240116_60.iss"), bar);
    QCOMPARE(runTadata({"delete", series, "--all", "--store", path("store")}), succeeded("3\n"));
    QVERIFY(QFile::link(path("gone/20240116_60.iss"), link()));
    QVERIFY(QFile::rename(path("gone"), path("away")));
    const Outcome undone = runTadata({"undo", "--force", "--store", path("store")});
    QCOMPARE(undone.exitCode, 1);
    QVERIFY2(undone.err.contains(lost(link()).toUtf8()), undone.err.constData());
    QVERIFY(!QFileInfo::exists(path("gone")));
    QVERIFY(QFile::rename(path("away"), path("gone")));
    QCOMPARE(runTadata({"undo", "--force", "--store", path("store")}).exitCode, 0);
}

void TadataLostLinksTest::aLostSeriesIsNoEmptyOne_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("directory");
    for (const char* directory : {"store/NORD/MAIN/ALFA", "store/NORD/MAIN", "store/NORD"}) {
        for (const char* command :
             {"export out.txt --from 2024-01-15 --to 2024-01-17 --series NORD/MAIN/ALFA",
              "delete NORD/MAIN/ALFA --all", "copy NORD/MAIN/ALFA NORD/MAIN/BETA",
              "rename SOUTH/MAIN/GAMMA NORD/MAIN/ALFA", "health NORD/MAIN/ALFA",
              "import in.txt --series NORD/MAIN/ALFA --decimals 2 --no-header --columns "
              "date=0,time=1,open=2,high=3,low=4,close=5",
              "check in.txt --series NORD/MAIN/ALFA --decimals 2 --no-header --columns "
              "date=0,time=1,open=2,high=3,low=4,close=5"}) {
            QTest::addRow("%s: %s", directory, command)
                << QString::fromLatin1(command) << QString::fromLatin1(directory);
        }
    }
}

void TadataLostLinksTest::aLostSeriesIsNoEmptyOne()
{
    QFETCH(const QString, command);
    QFETCH(const QString, directory);
    writeFile(path("store/SOUTH/MAIN/GAMMA/20240115_60.iss"), bar);
    writeFile(path("in.txt"), "20240116,100000,1,1,1,1\n");
    writeFile(path("out.txt"), "of yesterday");
    QVERIFY(QDir().rename(path(directory), path("away")));
    QVERIFY(QFile::link(path("gone"), path(directory)));
    const Tree before = stored();
    const Outcome outcome =
        runTadata(words(qPrintable(command)) + QStringList{"--store", path("store")},
                  plainEnvironment(), m_dir->path());
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains(lost(path(directory)).toUtf8()), outcome.err.constData());
    QCOMPARE(stored(), before);
    QCOMPARE(readFile(path("out.txt")), QByteArray("of yesterday"));
    QVERIFY(!QFileInfo::exists(path("gone")));
}

QTEST_GUILESS_MAIN(TadataLostLinksTest)
#include "tst_tadatalostlinks.moc"
