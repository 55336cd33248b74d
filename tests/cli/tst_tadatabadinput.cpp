// SPDX-License-Identifier: MIT
// What cannot be imported: one clear message, exit code 1, and nothing of the store lost but the
// days that were being replaced.

#include "commandtest.h"

#include "support/filetree.h"
#include "support/otheruser.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace testsupport;

namespace {

constexpr char allColumns[] = "date=0,time=1,open=2,high=3,low=4,close=5,volume=6,value=7,oi=8";
constexpr char series[] = "NORD/MAIN/ALFA";

constexpr char firstDay[] = "20240115,100000,1.5,1.7,1.4,1.6,10,15.5,3\n";
constexpr char firstRecord[] = "100000;1.50;1.70;1.40;1.60;10;15.50;3\n";
constexpr char secondDay[] = "20240116,100000,1.5,1.7,1.4,1.6,20,31,4\n";
constexpr char secondRecord[] = "100000;1.50;1.70;1.40;1.60;20;31.00;4\n";

QString cannotOpen(const QString& path)
{
    return QStringLiteral("Невозможно открыть файл %1").arg(path);
}

QString cannotWrite(const QString& path)
{
    return QStringLiteral("Невозможно записать файл %1").arg(path);
}

QString cannotMake(const QString& directory)
{
    return QStringLiteral("Невозможно создать каталог %1").arg(directory);
}

const QString isNoFile = QStringLiteral(": это не обычный файл");

QString lineError(int number, const QString& what)
{
    return QStringLiteral("Ошибка при импорте %1-й строки:\n%2.")
        .arg(QString::number(number), what);
}

QString tooFewColumns(int number)
{
    return lineError(number, QStringLiteral("Недостаточное количество столбцов"));
}

// The name of a day file of the series, relative to the store.
QString stored(const char* name)
{
    return QStringLiteral("%1/%2").arg(QLatin1String(series), QLatin1String(name));
}

} // namespace

class TadataBadInputTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void inputThatCannotBeOpenedLeavesTheStoreAlone_data();
    void inputThatCannotBeOpenedLeavesTheStoreAlone();
    void unreadableInputLeavesTheStoreAlone();
    void pipeIsRefused();
    void readErrorIsNotTheEndOfTheInput();
    void lineWithoutEndIsRefused();
    void ownDayFileIsRefused();
    void pipeInPlaceOfADayFileStopsTheImport();
    void seriesThatCannotBeShownIsRefused_data();
    void seriesThatCannotBeShownIsRefused();

    void inputWithoutBarsSucceeds_data();
    void inputWithoutBarsSucceeds();

    void wrongLineEndsTheImport_data();
    void wrongLineEndsTheImport();
    void firstFaultOfALineIsTold_data();
    void firstFaultOfALineIsTold();
    void headerCountsAsALine();
    void fileThatMayNotBecomeLarger();
    void wrongLineEndsTheMinutesToo();

    void binaryInputIsRefused();

    void fileInPlaceOfADirectoryStopsTheImport_data();
    void fileInPlaceOfADirectoryStopsTheImport();
    void directoryInPlaceOfADayFileStopsTheImport();
    void directoryInPlaceOfAMinuteFileStopsTheImport();
    void readOnlyDirectoryStopsTheImport();
    void readOnlyStoreStopsTheImport();
    void tooLongNameStopsTheImport();
    void fullDiskIsNoSuccess_data();
    void fullDiskIsNoSuccess();

    void wrongReferenceFileIsRefused_data();
    void wrongReferenceFileIsRefused();

private:
    QString storePath(const QString& name) const { return path(QStringLiteral("store/")) + name; }
    Outcome importFile(const QString& file, const QStringList& more = {}) const;
    Outcome import(const QByteArray& content, const QStringList& more = {}) const;

    QProcessEnvironment m_environment = plainEnvironment();
    // A day that no test imports: it must be there at the end of each.
    Tree m_earlier;
};

void TadataBadInputTest::init()
{
    CommandTest::init();
    m_environment = plainEnvironment();
    m_earlier = {{::stored("20240112_60.iss"), "an earlier day\n"}};
    writeFile(storePath(m_earlier.firstKey()), m_earlier.first());
}

void TadataBadInputTest::cleanup()
{
    QCOMPARE(readFile(storePath(m_earlier.firstKey())), m_earlier.first());
    CommandTest::cleanup();
}

Outcome TadataBadInputTest::importFile(const QString& file, const QStringList& more) const
{
    return runTadata(importLine(file, more + words("--columns") << QLatin1String(allColumns)),
                     m_environment);
}

Outcome TadataBadInputTest::import(const QByteArray& content, const QStringList& more) const
{
    return CommandTest::import(content, more + words("--columns") << QLatin1String(allColumns),
                               m_environment);
}

void TadataBadInputTest::inputThatCannotBeOpenedLeavesTheStoreAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("error"); // 0: it is no file
    QTest::newRow("missing") << QStringLiteral("missing.csv") << ENOENT;
    QTest::newRow("in a missing directory") << QStringLiteral("missing/bars.csv") << ENOENT;
    QTest::newRow("below a file") << QStringLiteral("file/bars.csv") << ENOTDIR;
    QTest::newRow("directory") << QStringLiteral("folder") << EISDIR;
    QTest::newRow("directory with a slash") << QStringLiteral("folder/") << EISDIR;
    QTest::newRow("link to nothing") << QStringLiteral("link") << ENOENT;
    QTest::newRow("link to itself") << QStringLiteral("circle") << ELOOP;
    QTest::newRow("device without an end") << QStringLiteral("zero") << 0;
    QTest::newRow("Cyrillic and blanks") << QStringLiteral("Нет такого файла.csv") << ENOENT;
    QTest::newRow("placeholders") << QStringLiteral("%1 %2.csv") << ENOENT;
}

void TadataBadInputTest::inputThatCannotBeOpenedLeavesTheStoreAlone()
{
    QFETCH(QString, name);
    QFETCH(const int, error);
    QVERIFY(QDir().mkpath(path(QStringLiteral("folder"))));
    writeFile(path(QStringLiteral("file")), firstDay);
    QVERIFY(QFile::link(path(QStringLiteral("nothing")), path(QStringLiteral("link"))));
    QVERIFY(QFile::link(path(QStringLiteral("circle")), path(QStringLiteral("circle"))));
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path(QStringLiteral("zero"))));

    const QString newSeries = QStringLiteral("NORD/MAIN/BARK");
    QCOMPARE(importFile(path(name), QStringList{QStringLiteral("--series"), newSeries}),
             failed(cannotOpen(path(name)) + (error == 0 ? isNoFile : QString()), error));
    QCOMPARE(stored(), m_earlier);
    QVERIFY(!QFileInfo::exists(storePath(newSeries)));
}

void TadataBadInputTest::unreadableInputLeavesTheStoreAlone()
{
    m_dir.reset();
    const OtherUser user;
    init(); // in a directory of his own
    const QString file = path(QStringLiteral("secret.csv"));
    writeFile(file, firstDay);
    QVERIFY(QFile::setPermissions(file, QFile::WriteOwner));
    QCOMPARE(importFile(file), failed(cannotOpen(file), EACCES));
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::pipeIsRefused()
{
    const QString pipe = path(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    // Open at both ends, so that nobody waits for the other side.
    const int ends = open(QFile::encodeName(pipe).constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(ends >= 0);
    const QByteArray content(firstDay);
    QCOMPARE(write(ends, content.constData(), content.size()), content.size());
    const Outcome outcome = importFile(pipe, words("--series NORD/MAIN/BARK"));
    close(ends);
    QCOMPARE(outcome, failed(cannotOpen(pipe) + isNoFile));
    QCOMPARE(stored(), m_earlier);
    QVERIFY(!QFileInfo::exists(storePath(QStringLiteral("NORD/MAIN/BARK"))));
}

void TadataBadInputTest::readErrorIsNotTheEndOfTheInput()
{
    // The first block is read, the next is not.
    QByteArray content;
    while (content.size() < 40'000)
        content += firstDay;
    m_environment = faultyEnvironment(QStringLiteral("read"), QStringLiteral("/bars.csv"), EIO, 1);
    const Outcome outcome = import(content);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.startsWith("Невозможно прочитать файл " +
                                    path(QStringLiteral("bars.csv")).toUtf8() + ": "),
             outcome.err.constData());
    // Whole bars alone, as many as the first block has.
    const QByteArray stored = readFile(storePath(::stored("20240115_60.iss")));
    constexpr qsizetype block = 16384;
    QCOMPARE(stored, QByteArray(firstRecord).repeated(block / qsizetype(qstrlen(firstDay))));
}

// A file that has no more than this line takes no room on the disk.
void TadataBadInputTest::lineWithoutEndIsRefused()
{
    const QString file = path(QStringLiteral("bars.csv"));
    QFile sparse(file);
    QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(qint64(300) * 1024 * 1024));
    sparse.close();
    QCOMPARE(
        importFile(file),
        failed(QStringLiteral("Невозможно прочитать файл %1: строка длиннее 256 МБ").arg(file)));
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::ownDayFileIsRefused()
{
    const QString dayFile = storePath(::stored("20240115_60.iss"));
    writeFile(dayFile, firstDay);
    const QString link = path(QStringLiteral("bars.csv"));
    QVERIFY(QFile::link(dayFile, link));
    const Outcome outcome = importFile(link);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.err.contains(link.toUtf8()), outcome.err.constData());
    QCOMPARE(readFile(dayFile), QByteArray(firstDay));
}

void TadataBadInputTest::pipeInPlaceOfADayFileStopsTheImport()
{
    const QString pipe = storePath(::stored("20240116_60.iss"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QCOMPARE(import(QByteArray(firstDay) + secondDay), failed(cannotOpen(pipe) + isNoFile));
    QCOMPARE(readFile(storePath(::stored("20240115_60.iss"))), QByteArray(firstRecord));
    QVERIFY(QFile::remove(pipe));
}

void TadataBadInputTest::seriesThatCannotBeShownIsRefused_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QString>("shown");
    QTest::newRow("line feed") << QByteArray("AL\nFA") << QStringLiteral("AL\\x0aFA");
    QTest::newRow("escape") << QByteArray("AL\x1b[1mFA") << QStringLiteral("AL\\x1b[1mFA");
    QTest::newRow("next line") << QByteArray("AL\xc2\x85") << QStringLiteral("AL\\u0085");
    QTest::newRow("line separator") << QByteArray("AL\xe2\x80\xa8") << QStringLiteral("AL\\u2028");
    QTest::newRow("no UTF-8") << QByteArray("AL\xff") << QStringLiteral("AL\ufffd");
}

void TadataBadInputTest::seriesThatCannotBeShownIsRefused()
{
    QFETCH(const QByteArray, code);
    QFETCH(const QString, shown);
    writeFile(path(QStringLiteral("bars.csv")), firstDay);
    // Not through Qt, which has no way to pass on bytes that are no text.
    const QByteArray script = "exec '" + tadataProgram().toUtf8() +
                              "' import \"$1\" --store \"$2\" --series \"NORD/MAIN/$(printf '" +
                              QByteArray(code).replace('\\', "\\\\") + "')\" --columns " +
                              allColumns;
    writeFile(path(QStringLiteral("import.sh")), script);
    const Outcome outcome = runProgram(QStringLiteral("sh"), {path(QStringLiteral("import.sh")),
                                                              path(QStringLiteral("bars.csv")),
                                                              path(QStringLiteral("store"))});
    QCOMPARE(outcome,
             refused(QStringLiteral("--series: неверное значение «NORD/MAIN/%1»: в кодах не может "
                                    "быть управляющих символов и того, что не UTF-8; нужно: три "
                                    "кода через «/», ни один из них не пустой, не «.» и не «..»")
                         .arg(shown)));
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::inputWithoutBarsSucceeds_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("empty") << QByteArray("") << QStringList();
    QTest::newRow("empty where a header is expected") << QByteArray("") << words("header");
    QTest::newRow("header only") << QByteArray("date,time,open\n") << words("header");
    QTest::newRow("header without a line end") << QByteArray("date,time,open") << words("header");
    QTest::newRow("header that is a line end") << QByteArray("\n") << words("header");
    QTest::newRow("byte order mark only") << QByteArray("\xEF\xBB\xBF") << words("header");
    QTest::newRow("header of seconds")
        << QByteArray("date,time\n") << words("header --timeframe 1");
}

void TadataBadInputTest::inputWithoutBarsSucceeds()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, options);
    // No error; but whoever expects bars is told.
    const QString told = QStringLiteral("Ни одного бара не импортировано: в файле %1 их нет\n")
                             .arg(path(QStringLiteral("bars.csv")));
    const Outcome outcome = import(content, options + words("--series NORD/MAIN/BARK"));
    QCOMPARE(outcome, (Outcome{0, QByteArray(), told.toUtf8()}));
    QCOMPARE(stored(), m_earlier);
    QVERIFY(QFileInfo(storePath(QStringLiteral("NORD/MAIN/BARK"))).isDir());
}

// NOLINTNEXTLINE(readability-function-size): a table
void TadataBadInputTest::wrongLineEndsTheImport_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QStringList>("options");

    const auto row = [](const char* name, const QByteArray& line, const QString& reason,
                        const QStringList& options = {}) {
        QTest::newRow(name) << line << reason << options;
    };
    const QString columns = QStringLiteral("Недостаточное количество столбцов");
    row("too few columns", "20240117,100000,1.5,1.7,1.4,1.6,10,15.5", columns);
    row("another separator", "20240117;100000;1.5;1.7;1.4;1.6;10;15.5;3", columns);
    row("blank line", "", columns);
    row("line of one NUL", QByteArray(1, '\0'), columns);

    const auto date = [&](const char* name, const QByteArray& text) {
        row(name, text + ",100000,1.5,1.7,1.4,1.6,10,15.5,3",
            QStringLiteral("Дата '%1' не соответствует заявленному формату 'ггггммдд'")
                .arg(QString::fromUtf8(text)));
    };
    date("date empty", "");
    date("date in another notation", "15.01.2024");
    date("date of no calendar", "20240230");
    date("leap day of a common year", "20230229");
    date("month 13", "20241301");
    date("date too short", "2024117");
    date("date too long", "202401170");
    date("date with a blank", " 20240117");
    date("date with a blank after it", "20240117 ");
    date("date with a NUL", QByteArray("2024117").insert(4, '\0'));
    date("date of invalid UTF-8", "2024\xFF");
    date("date of other digits", "２０２４０１１７");
    date("date with placeholders", "%1%2");
    date("header among the bars", "date");
    row("byte order mark after the start", "\uFEFF20240117,100000,1.5,1.7,1.4,1.6,10,15.5,3",
        QStringLiteral("Дата '\uFEFF20240117' не соответствует заявленному формату 'ггггммдд'"));

    const auto time = [&](const char* name, const QByteArray& text) {
        row(name, "20240117," + text + ",1.5,1.7,1.4,1.6,10,15.5,3",
            QStringLiteral("Время '%1' не соответствует заявленному формату 'ччммсс'")
                .arg(QString::fromUtf8(text)));
    };
    time("time empty", "");
    time("time in another notation", "10:00:00");
    time("hour 24", "240000");
    time("minute 60", "106000");
    time("second 60", "100060");
    time("time too short", "93000");
    time("time too long", "1000000");
    time("time with a blank", "100000 ");

    const auto number = [&](const char* name, const QByteArray& text) {
        row(name, "20240117,100000,1.5,1.7," + text + ",1.6,10,15.5,3",
            QStringLiteral("Некорректное число '%1'").arg(QString::fromUtf8(text)));
    };
    number("price empty", "");
    number("price with letters", "1.5x");
    number("price with a blank", " 1.5");
    number("price with an exponent", "1e5");
    number("price without digits before the point", ".5");
    number("price without digits after the point", "5.");
    number("price with two points", "1.5.0");
    number("price with two signs", "--1");
    number("price that is a sign", "-");
    number("price without a number", "nan");
    number("price beyond the largest", "36028797018963968");
    number("price with a NUL", QByteArray("1.5\0", 4));
    number("price of other digits", "１.５");
    number("price of invalid UTF-8", "1.5\xC3");
    // Scaled to the two decimals of the series it does not fit any more.
    number("price beyond the largest at its scale", "36028797018963967");

    row("money empty", "20240117,100000,1.5,1.7,1.4,1.6,10,,3",
        QStringLiteral("Некорректное число ''"));
    row("money in quotes", "20240117,100000,1.5,1.7,1.4,1.6,10,\"15.5\",3",
        QStringLiteral("Некорректное число '\"15.5\"'"));

    const auto volume = [&](const char* name, const QByteArray& text) {
        row(name, "20240117,100000,1.5,1.7,1.4,1.6," + text + ",15.5,3",
            QStringLiteral("Некорректное значение поля 'Объём в шт.' (%1)")
                .arg(QString::fromUtf8(text)));
    };
    volume("volume with a point", "12.0");
    volume("volume empty", "");
    volume("volume with an exponent", "1e3");
    volume("volume beyond 64 bits", "9223372036854775808");
    volume("volume in hexadecimal", "0x10");

    const auto interest = [&](const char* name, const QByteArray& text) {
        row(name, "20240117,100000,1.5,1.7,1.4,1.6,10,15.5," + text,
            QStringLiteral("Некорректное значение поля 'Открытый интерес' (%1)")
                .arg(QString::fromUtf8(text)));
    };
    interest("open interest beyond 32 bits", "3000000000");
    interest("open interest just beyond 32 bits", "2147483648");
    interest("open interest far below 32 bits", "-2147483649");
    interest("open interest empty", "");
    interest("open interest with a point", "3.0");
    interest("lone carriage return", "3\r20240117");

    row("leap day of 2000 with two digits", "290200,100000,1.5,1.7,1.4,1.6,10,15.5,3",
        QStringLiteral("Дата '290200' не соответствует заявленному формату 'ддммгг'"),
        words("--date-format ddMMyy"));
    row("date with other signs", "15/01/24,100000,1.5,1.7,1.4,1.6,10,15.5,3",
        QStringLiteral("Дата '15/01/24' не соответствует заявленному формату 'дд.мм.гг'"),
        words("--date-format dd.MM.yy"));
    row("time of one digit", "20240117,9:30,1.5,1.7,1.4,1.6,10,15.5,3",
        QStringLiteral("Время '9:30' не соответствует заявленному формату 'чч:мм'"),
        words("--time-format hh:mm"));
}

void TadataBadInputTest::wrongLineEndsTheImport()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, reason);
    QFETCH(QStringList, options);

    // Two lines before it; those after it do not count.
    QByteArray before = QByteArray(firstDay) + secondDay;
    if (options.contains(QStringLiteral("ddMMyy")))
        before.replace("20240115", "150124").replace("20240116", "160124");
    if (options.contains(QStringLiteral("dd.MM.yy")))
        before.replace("20240115", "15.01.24").replace("20240116", "16.01.24");
    if (options.contains(QStringLiteral("hh:mm")))
        before.replace(",100000,", ",10:00,");
    QCOMPARE(messageOf(import(before + line + '\n' + before, options)),
             failed(lineError(3, reason)));

    Tree expected = m_earlier;
    expected.insert(::stored("20240115_60.iss"), firstRecord);
    expected.insert(::stored("20240116_60.iss"), secondRecord);
    QCOMPARE(stored(), expected);

    // The same without a line end behind it. A blank line is none then.
    if (!line.isEmpty()) {
        QCOMPARE(messageOf(import(before + line, options)), failed(lineError(3, reason)));
        QCOMPARE(stored(), expected);
    }
}

void TadataBadInputTest::firstFaultOfALineIsTold_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* line, const char* reason) {
        QTest::newRow(name) << QByteArray(line) << QString::fromUtf8(reason);
    };
    row("columns before the date", "x,x,x,x,x,x,x,x", "Недостаточное количество столбцов");
    row("date before the time", "x,y,a,b,c,d,e,f,g",
        "Дата 'x' не соответствует заявленному формату 'ггггммдд'");
    row("time before the prices", "20240117,y,a,b,c,d,e,f,g",
        "Время 'y' не соответствует заявленному формату 'ччммсс'");
    row("open before high", "20240117,100000,a,b,c,d,e,f,g", "Некорректное число 'a'");
    row("high before low", "20240117,100000,1,b,c,d,e,f,g", "Некорректное число 'b'");
    row("low before close", "20240117,100000,1,1,c,d,e,f,g", "Некорректное число 'c'");
    row("close before volume", "20240117,100000,1,1,1,d,e,f,g", "Некорректное число 'd'");
    row("scale before volume", "20240117,100000,36028797018963967,1,1,1,e,f,g",
        "Некорректное число '36028797018963967'");
    row("volume before money", "20240117,100000,1,1,1,1,e,f,g",
        "Некорректное значение поля 'Объём в шт.' (e)");
    row("money before open interest", "20240117,100000,1,1,1,1,1,f,g", "Некорректное число 'f'");
    row("open interest last", "20240117,100000,1,1,1,1,1,1,g",
        "Некорректное значение поля 'Открытый интерес' (g)");
}

void TadataBadInputTest::firstFaultOfALineIsTold()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, reason);
    QCOMPARE(messageOf(import(line + '\n')), failed(lineError(1, reason)));
    QCOMPARE(stored(), m_earlier);
}

// By a limit of the shell's; the system's signal for it would end the program without a word.
void TadataBadInputTest::fileThatMayNotBecomeLarger()
{
    QByteArray lines;
    for (int minute = 0; minute < 60; ++minute)
        lines +=
            "20240115," + QByteArray::number(100'000 + minute * 100) + ",1.5,1.7,1.4,1.6,1,1,1\n";
    writeFile(path("bars.csv"), lines);
    const Outcome outcome = runTadataLimited(
        importLine(path("bars.csv"), {QStringLiteral("--columns"), QLatin1String(allColumns)}));
    QCOMPARE(outcome.exitCode, 1);
    const QString file = path("store") + u'/' + ::stored("20240115_60.iss");
    QVERIFY2(QString::fromUtf8(outcome.err).contains(cannotWrite(file)), outcome.err.constData());
}

void TadataBadInputTest::headerCountsAsALine()
{
    QCOMPARE(messageOf(import("header\nwrong\n", words("header"))), failed(tooFewColumns(2)));
    QCOMPARE(messageOf(import("wrong\n")), failed(tooFewColumns(1)));
    QCOMPARE(messageOf(import(QByteArray("header\r\n") + firstDay + "\r\n", words("header"))),
             failed(tooFewColumns(3)));
}

void TadataBadInputTest::wrongLineEndsTheMinutesToo()
{
    QCOMPARE(messageOf(import(QByteArray(firstDay) + "20240115,100130,1,1,1,1,1,1,1\nwrong\n",
                              words("--timeframe 1"))),
             failed(tooFewColumns(3)));
    // The minute that was finished is stored, the open one is not.
    Tree expected = m_earlier;
    expected.insert(::stored("20240115_1.iss"),
                    QByteArray(firstRecord) + "100130;1.00;1.00;1.00;1.00;1;1.00;1\n");
    expected.insert(::stored("20240115_60"), "100100;1.50;1.70;1.40;1.60;10;15.50;3\n");
    QCOMPARE(stored(), expected);
}

void TadataBadInputTest::binaryInputIsRefused()
{
    // The program's own bytes, and noise that is the same in every run.
    const Outcome program = importFile(tadataProgram());
    QCOMPARE(program.exitCode, 1);
    QVERIFY2(program.err.startsWith("Ошибка при импорте 1-й строки:\n"), program.err.constData());

    QRandomGenerator random(20240115);
    for (int round = 0; round < 20; ++round) {
        QByteArray noise;
        for (int i = 0; i < 5000; ++i) {
            const auto byte = static_cast<char>(random.bounded(256));
            noise.append(byte == ',' ? '.' : byte);
        }
        // No first bytes that announce an encoding in which a comma could hide.
        QCOMPARE(messageOf(import('x' + noise)), failed(tooFewColumns(1)));
    }
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::fileInPlaceOfADirectoryStopsTheImport_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("store") << QStringLiteral("other");
    QTest::newRow("stock") << QStringLiteral("other/NORD");
    QTest::newRow("board") << QStringLiteral("other/NORD/MAIN");
    QTest::newRow("security") << QStringLiteral("other/NORD/MAIN/ALFA");
}

void TadataBadInputTest::fileInPlaceOfADirectoryStopsTheImport()
{
    QFETCH(QString, place);
    writeFile(path(place), "a file\n");
    const QString input = path(QStringLiteral("bars.csv"));
    writeFile(input, firstDay);
    const auto before = readTree(QDir(m_dir->path()));

    QCOMPARE(importFile(input, words("--store") << path(QStringLiteral("other"))),
             failed(cannotMake(path(QStringLiteral("other/NORD/MAIN/ALFA"))), ENOTDIR));
    QCOMPARE(readTree(QDir(m_dir->path())), before);
}

void TadataBadInputTest::directoryInPlaceOfADayFileStopsTheImport()
{
    QVERIFY(QDir().mkpath(storePath(::stored("20240116_60.iss"))));
    QCOMPARE(import(QByteArray(firstDay) + secondDay + firstDay),
             failed(cannotOpen(storePath(::stored("20240116_60.iss"))) + isNoFile));
    Tree expected = m_earlier;
    expected.insert(::stored("20240115_60.iss"), firstRecord);
    QCOMPARE(stored(), expected);
    QVERIFY(QFileInfo(storePath(::stored("20240116_60.iss"))).isDir());
}

void TadataBadInputTest::directoryInPlaceOfAMinuteFileStopsTheImport()
{
    QVERIFY(QDir().mkpath(storePath(::stored("20240116_60"))));
    QCOMPARE(import(QByteArray(firstDay) + secondDay + firstDay, words("--timeframe 1")),
             failed(cannotOpen(storePath(::stored("20240116_60"))) + isNoFile));
    // The day file had been opened by then, and nothing was written to it.
    Tree expected = m_earlier;
    expected.insert(::stored("20240115_1.iss"), firstRecord);
    expected.insert(::stored("20240115_60"), "100100;1.50;1.70;1.40;1.60;10;15.50;3\n");
    expected.insert(::stored("20240116_1.iss"), "");
    QCOMPARE(stored(), expected);
}

void TadataBadInputTest::readOnlyDirectoryStopsTheImport()
{
    m_dir.reset();
    const OtherUser user;
    init(); // in a directory of his own
    const QString dir = storePath(QLatin1String(series));
    QVERIFY(QFile::setPermissions(dir, QFile::ReadOwner | QFile::ExeOwner));
    const Outcome outcome = import(firstDay);
    QVERIFY(QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(outcome, failed(cannotOpen(storePath(::stored("20240115_60.iss"))), EACCES));
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::readOnlyStoreStopsTheImport()
{
    m_dir.reset();
    const OtherUser user;
    init(); // in a directory of his own
    const QString store = path(QStringLiteral("locked"));
    QVERIFY(QDir().mkpath(store));
    QVERIFY(QFile::setPermissions(store, QFile::ReadOwner | QFile::ExeOwner));
    const QString input = path(QStringLiteral("bars.csv"));
    writeFile(input, firstDay);
    const Outcome outcome = importFile(input, words("--store") << store);
    QVERIFY(QFile::setPermissions(store, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(outcome, failed(cannotMake(store + QStringLiteral("/NORD/MAIN/ALFA")), EACCES));
}

void TadataBadInputTest::tooLongNameStopsTheImport()
{
    const QString name(300, u'A');
    const QString lock = path(QStringLiteral("store-restore/locks/NORD/MAIN/%1.lock").arg(name));
    QCOMPARE(import(firstDay, {QStringLiteral("--series"), QStringLiteral("NORD/MAIN/") + name,
                               QStringLiteral("--decimals"), QStringLiteral("2")}),
             failed(QStringLiteral("Невозможно создать файл блокировки ") + lock, ENAMETOOLONG));
    QCOMPARE(stored(), m_earlier);
}

void TadataBadInputTest::fullDiskIsNoSuccess_data()
{
    QTest::addColumn<QString>("full");
    QTest::addColumn<int>("barsOfTheDay");
    QTest::addColumn<bool>("isLastDay");
    QTest::addColumn<QStringList>("options");

    const QString dayFile = ::stored("20240116_60.iss");
    const QStringList seconds = words("--timeframe 1");
    QTest::newRow("last day") << dayFile << 1 << true << QStringList();
    QTest::newRow("day before others") << dayFile << 1 << false << QStringList();
    QTest::newRow("day larger than a buffer") << dayFile << 2000 << true << QStringList();
    QTest::newRow("larger day before others") << dayFile << 2000 << false << QStringList();
    QTest::newRow("second file") << ::stored("20240116_1.iss") << 1 << true << seconds;
    QTest::newRow("minute file of the last day")
        << ::stored("20240116_60") << 200 << true << seconds;
    QTest::newRow("minute file before others")
        << ::stored("20240116_60") << 200 << false << seconds;
}

void TadataBadInputTest::fullDiskIsNoSuccess()
{
    QFETCH(QString, full);
    QFETCH(int, barsOfTheDay);
    QFETCH(bool, isLastDay);
    QFETCH(QStringList, options);
    QByteArray content(firstDay);
    for (int i = 0; i < barsOfTheDay; ++i) {
        content += QStringLiteral("20240116,%1,1.5,1.7,1.4,1.6,20,31,4\n")
                       .arg(QTime(0, 0).addSecs(i * 30).toString(QStringLiteral("hhmmss")))
                       .toLatin1();
    }
    if (!isLastDay)
        content += "20240117,100000,1,1,1,1,1,1,1\n";
    // Some file systems say it only when the file is closed.
    for (const char* call : {"write", "close"}) {
        m_environment = faultyEnvironment(QLatin1String(call), storePath(full), ENOSPC);
        QCOMPARE(import(content, options), failed(cannotWrite(storePath(full)), ENOSPC));
    }

    // The day before stays as written.
    const bool hasSeconds = options.contains(QStringLiteral("1"));
    QCOMPARE(readFile(storePath(::stored(hasSeconds ? "20240115_1.iss" : "20240115_60.iss"))),
             QByteArray(firstRecord));
}

void TadataBadInputTest::wrongReferenceFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* content, const char* reason) {
        QTest::newRow(name) << QByteArray(content) << QString::fromUtf8(reason);
    };
    row("no lists", "{}", "нет списка \"stocks\"");
    row("list for an object", "[]", "нет списка \"stocks\"");
    row("wrong decimals",
        R"({"stocks": [], "boards": [], "securities": [{"stock": "A", "board": "B", "id": 1,
            "code": "C", "title": "", "decimals": 16}]})",
        "список \"securities\", запись 1: неверное значение \"decimals\"");
    row("code with a slash", R"({"stocks": [{"id": 1, "code": "A/B"}], "boards": [],
        "securities": []})",
        "список \"stocks\", запись 1: неверное значение \"code\"");
}

void TadataBadInputTest::wrongReferenceFileIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const QString reference = path(QStringLiteral("reference.json"));
    const QStringList option{QStringLiteral("--reference"), reference};
    QCOMPARE(import(firstDay, option), failed(cannotOpen(reference)));
    writeFile(reference, content);
    QCOMPARE(import(firstDay, option),
             failed(QStringLiteral("Ошибка в справочнике %1: %2").arg(reference, reason)));
    QCOMPARE(stored(), m_earlier);
}

QTEST_GUILESS_MAIN(TadataBadInputTest)
#include "tst_tadatabadinput.moc"
