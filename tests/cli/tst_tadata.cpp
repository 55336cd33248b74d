// SPDX-License-Identifier: MIT
// The program around its commands: the list of the store, and what the program needs of its
// surroundings.

#include "commandtest.h"

#include "support/filetree.h"
#include "support/otheruser.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QTest>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace testsupport;

namespace {

constexpr char oneBar[] = "20240115,100000,1.5,1.7,1.4,1.6\n";
constexpr char oneRecord[] = "100000;1.50;1.70;1.40;1.60;0;0.00;0\n";

// A program of its own copy, so that its default store is nobody else's.
QString copyProgram(const QDir& dir)
{
    const QString program = dir.filePath(QStringLiteral("tadata"));
    return QFile::copy(tadataProgram(), program) ? program : QString();
}

} // namespace

class TadataTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void versionIsPrinted();
    void outputThatCannotBeWrittenIsAFailure_data();
    void outputThatCannotBeWrittenIsAFailure();

    void listShowsEverySeriesAndTimeframe();
    void listPassesOverForeignFiles();
    void listOfAnEmptyStoreIsEmpty();
    void listOfAMissingStoreFails();
    void listNamesWhatItCannotRead();
    void listShowsEveryNameOnItsOwnLine();
    void listTakesTheCurrentDirectoryAsBase();
    void listTakesNothingElseForTheStore_data();
    void listTakesNothingElseForTheStore();

    void defaultStoreIsBesideAPortableProgram();
    void defaultStoreOfAnInstalledProgramIsTheUsers();
    void referenceDataBesideTheProgramAreUsed();

    void everyLocaleGivesTheSameOutput_data();
    void everyLocaleGivesTheSameOutput();
    void progressIsDrawnOnATerminal();
    void noWindowLibraryIsLoaded();

private:
    // An import into the program's own store.
    QStringList importIntoOwnStore() const;
    Outcome list() const { return runTadata(words("list --store") << path("store")); }
};

void TadataTest::init()
{
    CommandTest::init();
    writeFile(path("bars.csv"), oneBar);
}

QStringList TadataTest::importIntoOwnStore() const
{
    QStringList line = importLine(path("bars.csv"));
    const qsizetype store = line.indexOf(QStringLiteral("--store"));
    return line.mid(0, store) + line.mid(store + 2);
}

void TadataTest::versionIsPrinted()
{
    QCOMPARE(runTadata(words("--version")), succeeded("tadata 7.06.1812\n"));
}

void TadataTest::outputThatCannotBeWrittenIsAFailure_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::newRow("list") << words("list --store {store}");
    QTest::newRow("--version") << words("--version");
    QTest::newRow("--help") << words("--help");
    QTest::newRow("import --help") << words("import --help");
}

void TadataTest::outputThatCannotBeWrittenIsAFailure()
{
    QFETCH(QStringList, line);
    line.replaceInStrings(QStringLiteral("{store}"), path("store"));
    const QString full = QStringLiteral("/dev/full");
    if (!QFileInfo::exists(full))
        QSKIP("There is no /dev/full here");
    writeFile(path("store/A/B/C/20240115_60.iss"), oneRecord);

    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setStandardOutputFile(full);
    process.start(tadataProgram(), line, QIODevice::ReadOnly);

    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
             QStringLiteral("Невозможно записать в стандартный вывод\n"));
    QCOMPARE(process.exitCode(), 1);
}

void TadataTest::listShowsEverySeriesAndTimeframe()
{
    writeFile(path("store/NORD/MAIN/ALFA/20240117_60.iss"), "12345");
    writeFile(path("store/NORD/MAIN/ALFA/20240115_60.iss"), "");
    writeFile(path("store/NORD/MAIN/ALFA/20240116_60.iss"), "1234567");
    writeFile(path("store/NORD/MAIN/ALFA/20231231_1.iss"), "123");
    writeFile(path("store/NORD/MAIN/ALFA/20231231_60"), "a minute file, which is no day file");
    writeFile(path("store/NORD/MAIN/alfa/20240101_60.iss"), "1");
    writeFile(path("store/NORD/AUX/ALFA/20240229_1.iss"), "12");
    writeFile(path("store/Биржа/Режим 1/Сбер. ао/20991231_60.iss"), "1");

    // By code unit, whatever the locale: capitals first, Cyrillic last.
    QCOMPARE(list(), succeeded("NORD/AUX/ALFA\t1\t1\t2024-02-29\t2024-02-29\t2\n"
                               "NORD/MAIN/ALFA\t1\t1\t2023-12-31\t2023-12-31\t3\n"
                               "NORD/MAIN/ALFA\t60\t3\t2024-01-15\t2024-01-17\t12\n"
                               "NORD/MAIN/alfa\t60\t1\t2024-01-01\t2024-01-01\t1\n"
                               "Биржа/Режим 1/Сбер. ао\t60\t1\t2099-12-31\t2099-12-31\t1\n"));
}

void TadataTest::listPassesOverForeignFiles()
{
    writeFile(path("store/A/B/C/20240115_60.iss"), "1");
    constexpr std::array foreign{
        "20240115_60",      "20240115_60.iss~", "20240115_060.iss", "20240115_.iss",
        "20240115_0.iss",   "20240115.iss",     "20240230_60.iss",  "2024015_60.iss",
        "20240115-60.iss",  "20240115_60.ISS",  ".20240115_60.iss", "20240115_60.iss.bak",
        "20240115_-60.iss", "notes.txt",        "20240115_60s.iss", "20240115_+60.iss",
    };
    for (const char* name : foreign)
        writeFile(path("store/A/B/C/") + QLatin1String(name), "foreign");
    QVERIFY(QDir().mkpath(path("store/A/B/C/20240116_60.iss")));
    // Day files on the wrong level belong to no series.
    writeFile(path("store/20240115_60.iss"), "foreign");
    writeFile(path("store/A/20240115_60.iss"), "foreign");
    writeFile(path("store/A/B/20240115_60.iss"), "foreign");
    writeFile(path("store/A/B/C/D/20240115_60.iss"), "foreign");
    QVERIFY(QDir().mkpath(path("store/A/B/EMPTY")));

    QCOMPARE(list(), succeeded("A/B/C\t60\t1\t2024-01-15\t2024-01-15\t1\n"));
}

void TadataTest::listOfAnEmptyStoreIsEmpty()
{
    QVERIFY(QDir().mkpath(path("store")));
    QCOMPARE(list(), succeeded());
}

void TadataTest::listOfAMissingStoreFails()
{
    QCOMPARE(list(), failed(QStringLiteral("Нет каталога %1").arg(path("store"))));
    QVERIFY(!QFileInfo::exists(path("store")));

    writeFile(path("store"), "a file");
    QCOMPARE(list(), failed(QStringLiteral("Нет каталога %1").arg(path("store"))));
}

void TadataTest::listNamesWhatItCannotRead()
{
    m_dir.reset();
    const OtherUser user;
    init(); // in a directory of his own
    writeFile(path("store/A/B/C/20240115_60.iss"), oneRecord);
    writeFile(path("store/A/B/D/20240115_60.iss"), oneRecord);
    writeFile(path("store/A/X/C/20240115_60.iss"), oneRecord);
    const Permissions series(path("store/A/B/D"), 0);
    const Permissions board(path("store/A/X"), 0);
    // Of two days one can be looked at.
    writeFile(path("store/A/B/E/20240115_60.iss"), oneRecord);
    writeFile(path("hidden/20240116_60.iss"), oneRecord);
    QVERIFY(QFile::link(path("hidden/20240116_60.iss"), path("store/A/B/E/20240116_60.iss")));
    const Permissions hidden(path("hidden"), 0);
    const QByteArray rest = "A/B/C\t60\t1\t2024-01-15\t2024-01-15\t" +
                            QByteArray::number(qsizetype(qstrlen(oneRecord))) + "\n";
    const auto told = [](const QString& directory) {
        return QStringLiteral("Невозможно прочитать каталог %1: того, что в нём, в списке нет\n")
            .arg(directory)
            .toUtf8();
    };
    QCOMPARE(list(), (Outcome{1, rest,
                              told(path("store/A/B/D")) + told(path("store/A/B/E")) +
                                  told(path("store/A/X"))}));
}

void TadataTest::listShowsEveryNameOnItsOwnLine()
{
    const QByteArrayList names{"A\nB", "A\x1b[0m", "A\xff", "A\xc2\x85", "A\\x0a", "A\\n"};
    for (const QByteArray& name : names) {
        const QByteArray series = QFile::encodeName(path("store/V/W/")) + name;
        QVERIFY(QDir().mkpath(path("store/V/W")));
        QCOMPARE(::mkdir(series.constData(), 0700), 0);
        const int file =
            ::open((series + "/20240115_60.iss").constData(), O_CREAT | O_WRONLY, 0600);
        QVERIFY(file >= 0);
        ::close(file);
    }
    QByteArray wanted;
    // In the order of the codes.
    for (const char* shown : {"A\\x0aB", "A\\x1b[0m", "A\\n", "A\\\\x0a", "A\\u0085", "A\\xff"})
        wanted += QByteArray("V/W/") + shown + "\t60\t1\t2024-01-15\t2024-01-15\t0\n";
    const Outcome outcome = list();
    QCOMPARE(outcome, succeeded(wanted));
    // Qt cannot remove a directory whose name is no text.
    QCOMPARE(std::system(qPrintable(QStringLiteral("rm -r '%1'").arg(path("store/V")))), 0);
}

void TadataTest::listTakesTheCurrentDirectoryAsBase()
{
    writeFile(path("store/A/B/C/20240115_60.iss"), "1");
    QCOMPARE(runTadata(words("list --store store/"), plainEnvironment(), m_dir->path()),
             succeeded("A/B/C\t60\t1\t2024-01-15\t2024-01-15\t1\n"));
}

void TadataTest::listTakesNothingElseForTheStore_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("link to nothing") << true;
    QTest::newRow("file") << false;
}

// The data directory has folders of the same shape, which are somebody else's.
void TadataTest::listTakesNothingElseForTheStore()
{
    QFETCH(const bool, isLink);
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    writeFile(path("user/A/B/C/20240115_60.iss"), oneRecord);
    const QString store = path("user/tadata");
    if (isLink)
        QVERIFY(QFile::link(path("nothing"), store));
    else
        writeFile(store, "");
    QCOMPARE(runProgram(program, words("list")), failed(QStringLiteral("Нет каталога ") + store));
}

void TadataTest::defaultStoreIsBesideAPortableProgram()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    QCOMPARE(runProgram(program, words("list")), succeeded());
    QCOMPARE(runProgram(program, importIntoOwnStore()), succeeded());
    QCOMPARE(readFile(path("user/tadata/NORD/MAIN/ALFA/20240115_60.iss")), QByteArray(oneRecord));
    QCOMPARE(runProgram(program, words("list")),
             succeeded("NORD/MAIN/ALFA\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
}

void TadataTest::defaultStoreOfAnInstalledProgramIsTheUsers()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    writeFile(path(".installed"), "");
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path("share"));

    QCOMPARE(runProgram(program, importIntoOwnStore(), environment), succeeded());
    QDirIterator walk(path("share"), {QStringLiteral("tadata")}, QDir::Dirs,
                      QDirIterator::Subdirectories);
    QVERIFY(walk.hasNext());
    QCOMPARE(readTree(QDir(walk.next())),
             Tree({{QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"), oneRecord}}));
    QVERIFY(!QFileInfo::exists(path("user")));
    QCOMPARE(runProgram(program, words("list"), environment),
             succeeded("NORD/MAIN/ALFA\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
}

void TadataTest::referenceDataBesideTheProgramAreUsed()
{
    const QString program = copyProgram(QDir(m_dir->path()));
    QVERIFY(!program.isEmpty());
    const QStringList import = importLine(path("bars.csv"), words("--series X/Y/Z"));

    writeFile(path("user/reference.json"), R"({
        "stocks": [{"id": 7, "code": "X", "name": ""}],
        "boards": [{"stock": "X", "id": 3, "code": "Y", "name": "", "flags": 0}],
        "securities": [{"stock": "X", "board": "Y", "id": 5, "code": "Z", "title": "",
                        "decimals": 3}]})");
    QCOMPARE(runProgram(program, import), succeeded());
    QCOMPARE(readFile(path("store/X/Y/Z/20240115_60.iss")),
             QByteArray("100000;1.500;1.700;1.400;1.600;0;0.000;0\n"));

    writeFile(path("user/reference.json"), R"({"stocks": [], "boards": []})");
    QCOMPARE(runProgram(program, import),
             failed(QStringLiteral("Ошибка в справочнике %1: нет списка \"securities\"")
                        .arg(path("user/reference.json"))));
}

void TadataTest::everyLocaleGivesTheSameOutput_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("C") << QStringLiteral("C");
    QTest::newRow("POSIX") << QStringLiteral("POSIX");
    QTest::newRow("C.UTF-8") << QStringLiteral("C.UTF-8");
    QTest::newRow("ru_RU.UTF-8") << QStringLiteral("ru_RU.UTF-8");
    QTest::newRow("ru_RU.KOI8-R") << QStringLiteral("ru_RU.KOI8-R");
    QTest::newRow("one that there is not") << QStringLiteral("xx_XX");
    QTest::newRow("none") << QString();
}

void TadataTest::everyLocaleGivesTheSameOutput()
{
    QFETCH(QString, locale);
    QProcessEnvironment environment = plainEnvironment();
    for (const QString& name : environment.keys()) {
        if (name == u"LANG" || name == u"LANGUAGE" || name.startsWith(u"LC_"))
            environment.remove(name);
    }
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), locale);

    const QString file = path("Бары за день.csv");
    writeFile(file, oneBar);
    const auto import = [&](const QString& input) {
        return importLine(input,
                          {QStringLiteral("--store"), path("Хранилище"), QStringLiteral("--series"),
                           QStringLiteral("Биржа/Режим/Сбер. ао"), QStringLiteral("--decimals"),
                           QStringLiteral("2")});
    };
    QCOMPARE(runTadata(import(file), environment), succeeded());
    QCOMPARE(readFile(path("Хранилище/Биржа/Режим/Сбер. ао/20240115_60.iss")),
             QByteArray(oneRecord));
    QCOMPARE(runTadata({QStringLiteral("list"), QStringLiteral("--store"), path("Хранилище")},
                       environment),
             succeeded("Биржа/Режим/Сбер. ао\t60\t1\t2024-01-15\t2024-01-15\t36\n"));
    QCOMPARE(runTadata(import(path("Нет его")), environment),
             failed(QStringLiteral("Невозможно открыть файл %1").arg(path("Нет его")), ENOENT));
    QCOMPARE(runTadata({QStringLiteral("список")}, environment),
             refused(QStringLiteral("неизвестная команда «список»")));
}

void TadataTest::progressIsDrawnOnATerminal()
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        QSKIP("No pseudo-terminal can be made here");
    std::array<char, 64> name{};
    QCOMPARE(ptsname_r(terminal, name.data(), name.size()), 0);

    QProcess process;
    process.setProcessEnvironment(plainEnvironment());
    process.setStandardErrorFile(QString::fromLatin1(name.data()), QIODevice::Append);
    process.start(tadataProgram(), importLine(path("bars.csv")), QIODevice::ReadOnly);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());

    // What was drawn comes in pieces, and then an error: nobody draws any more.
    QByteArray drawn;
    std::array<char, 4096> buffer{};
    constexpr int patience = 10'000;
    pollfd pending{terminal, POLLIN, 0};
    while (poll(&pending, 1, patience) > 0) {
        const ssize_t length = read(terminal, buffer.data(), buffer.size());
        if (length <= 0)
            break;
        drawn.append(buffer.data(), length);
    }
    close(terminal);
    QVERIFY2(drawn.startsWith("\r["), drawn.constData());
    // The terminal turns the line feed into two characters.
    const QByteArray whole = "\r[" + QByteArray(40, '#') + "] 100%\r\n";
    QVERIFY2(drawn.endsWith(whole), drawn.constData());
}

void TadataTest::noWindowLibraryIsLoaded()
{
    // The loader's own account: every library with its dependencies, before main() runs.
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("LD_TRACE_LOADED_OBJECTS"), QStringLiteral("1"));
    const Outcome libraries = runProgram(tadataProgram(), {}, environment);
    if (libraries.exitCode != 0 || !libraries.out.contains("libc.so"))
        QSKIP("The loader does not tell which libraries it loads");

    QVERIFY2(libraries.out.contains("libQt6Core"), libraries.out.constData());
    QVERIFY2(libraries.out.contains("libvexdesk-core"), libraries.out.constData());
    for (const char* library :
         {"libQt6Gui", "libQt6Widgets", "libQt6DBus", "libQt6XcbQpa", "libvexdesk-gui", "libX11",
          "libxcb", "libGL", "libEGL", "libwayland-client"})
        QVERIFY2(!libraries.out.contains(library), library);
}

QTEST_GUILESS_MAIN(TadataTest)
#include "tst_tadata.moc"
