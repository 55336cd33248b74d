// SPDX-License-Identifier: MIT
// DayFileLines against the text stream that they stand for.

#include <vexdesk/history/dayfilelines.h>

#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QStringDecoder>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <algorithm>

using testsupport::writeFile;
using vexdesk::DayFileLines;

namespace {

// Of those who read day files, and of an import.
constexpr qsizetype blockSize = qsizetype(256) * 1024;
constexpr qsizetype smallBlockSize = 16384;
const QByteArray bar = "093000;1.50;1.70;1.40;1.60;12;345.60;7";

std::optional<QByteArray> plainTextOf(const QString& path)
{
    DayFileLines reader(path);
    return reader.open() ? reader.plainText() : std::nullopt;
}

QByteArrayList linesOf(const QString& path, qsizetype block = blockSize)
{
    QByteArrayList lines;
    DayFileLines reader(path, DayFileLines::unlimited, block);
    if (!reader.open())
        return {"not opened"};
    QByteArrayView line;
    while (reader.next(&line))
        lines.append(line.toByteArray());
    // The end is the end.
    return reader.next(&line) || !reader.outcome() ? QByteArrayList{"no end"} : lines;
}

QByteArrayList streamedLinesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {"not opened by the stream"};
    QByteArrayList lines;
    QTextStream stream(&file);
    while (!stream.atEnd())
        lines.append(stream.readLine().toUtf8());
    return lines;
}

// The same of a text that is decoded as one: behind bytes that are no character a stream loses the
// next character where one of its blocks ends.
QByteArrayList decodedLinesOf(const QByteArray& content)
{
    const auto encoding = QStringConverter::encodingForData(content);
    QString text = QStringDecoder(encoding.value_or(QStringConverter::Utf8))(content);
    QByteArrayList lines;
    QTextStream stream(&text);
    while (!stream.atEnd())
        lines.append(stream.readLine().toUtf8());
    return lines;
}

// The lines that the whole text of a file has; whoever knows no text has DayFileLines.
QByteArrayList plainLinesOf(const QByteArray& text)
{
    QByteArrayList lines = text.split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool isPlain(const QByteArray& content)
{
    return !content.isEmpty() && std::all_of(content.begin(), content.end(), [](char c) {
        return c != '\r' && static_cast<signed char>(c) >= 0;
    });
}

// Every reader gives these lines; the text of a file is given for the plain ones.
bool readsAs(const QByteArrayList& expected, const QString& path, const QByteArray& content)
{
    const std::optional<QByteArray> text = plainTextOf(path);
    return linesOf(path) == expected && linesOf(path, smallBlockSize) == expected &&
           (text || !isPlain(content)) && (!text || plainLinesOf(*text) == expected);
}

// A file that nobody has written to for a long time: of a new one the rest of the last line may be
// on its way, which is waited for.
void writeOldFile(const QString& path, const QByteArray& content)
{
    writeFile(path, content);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime(QDate(2018, 12, 14), QTime(9, 30)),
                             QFileDevice::FileModificationTime));
}

QByteArray utf16(const QString& text, bool bigEndian)
{
    QByteArray bytes = bigEndian ? QByteArray("\xfe\xff") : QByteArray("\xff\xfe");
    for (const QChar c : text) {
        const char high = static_cast<char>(c.unicode() >> 8);
        const char low = static_cast<char>(c.unicode() & 0xff);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

// Bars that fill the given number of bytes exactly; the last line has its end.
QByteArray barsOf(qsizetype size)
{
    QByteArray content;
    while (content.size() + bar.size() + 1 <= size)
        content += bar + '\n';
    if (content.size() < size)
        content += QByteArray(size - content.size() - 1, '7') + '\n';
    return content;
}

// What lines are made of, hostile pieces among them.
QByteArray piece(QRandomGenerator& random, bool ascii)
{
    static const QByteArrayList plain{"\n",       "\r\n", "\r",   "\n\n", "\r\r\n", "\n\r",
                                      ";",        "0930", "1.5;", " ",    "\t",     bar,
                                      bar + "\n", "\x7f", "\x1a", "\f",   "\v",     ";;;;;;;"};
    static const QByteArrayList foreign{"Ё",        "\xef\xbb\xbf", "\xff\xfe",    "\xfe\xff",
                                        "\x80",     "\xc3",         "\xf0\x9f",    "😀",
                                        "\xc2\x85", "\xe2\x80\xa8", "\xed\xa0\x80"};
    const quint32 kind = random.bounded(ascii ? 24U : 32U);
    if (kind == 23)
        return QByteArray(1, '\0');
    if (kind >= 24)
        return foreign.at(random.bounded(foreign.size()));
    return plain.at(random.bounded(plain.size()));
}

QByteArray randomContent(QRandomGenerator& random)
{
    const bool ascii = random.bounded(2) == 0;
    const int pieces = static_cast<int>(random.bounded(40));
    QByteArray content;
    for (int i = 0; i < pieces; ++i)
        content += piece(random, ascii);
    return content;
}

} // namespace

class TestDayFileLines final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsWhatATextStreamReads_data();
    void readsWhatATextStreamReads();
    void readsRandomContentsAsATextStreamDoes();
    void readsRandomLargeContentsAsATextStreamDoes();
    void givesTheLinesOfABarFile();
    void leavesOutTheByteOrderMark();
    void readsWideCharacters_data();
    void readsWideCharacters();
    void givesTheTextOfPlainFilesAlone_data();
    void givesTheTextOfPlainFilesAlone();
    void tellsTheSizeOfTheFile();
    void doesNotOpenWhatIsNoFile_data();
    void doesNotOpenWhatIsNoFile();
    void followsALinkToAFile();
    void keepsHalfACharacterAtTheEnd();
    void aLineThatIsCutInsideACharacterCanBeToldFromAWholeOne_data();
    void aLineThatIsCutInsideACharacterCanBeToldFromAWholeOne();
    void strictlyAFileIsNeverInUtf16();
    void tellsWhetherTheFileWasWrittenTo();
    void saysWhyItStopped_data();
    void saysWhyItStopped();
    void waitsForTheRestOfALineThatIsBeingWritten();
    void readsNoMoreThanItMay_data();
    void readsNoMoreThanItMay();
    void readsNoMoreThanItMayOfAFileThatGrows();
    void isMixedOfMoreThanOneRead();
    void isNotMixedWhereOneReadGaveAll();
    void passesOverWhatTheEndHasCutAsATextStreamDoes();

private:
    QTemporaryDir m_dir;
    QString path() const { return m_dir.filePath(QStringLiteral("20181214_60.iss")); }
};

// NOLINTNEXTLINE(readability-function-size): a table
void TestDayFileLines::readsWhatATextStreamReads_data()
{
    QTest::addColumn<QByteArray>("content");
    const auto row = [](const QByteArray& name, const QByteArray& content) {
        QTest::newRow(name.constData()) << content;
    };
    row("nothing", "");
    row("line end", "\n");
    row("two line ends", "\n\n");
    row("carriage return", "\r");
    row("two carriage returns", "\r\r");
    row("carriage return and line end", "\r\n");
    row("two carriage returns and line end", "\r\r\n");
    row("line end and carriage return", "\n\r");
    row("one bar", bar + "\n");
    row("one bar without an end", bar);
    row("one bar with a carriage return at the end", bar + "\r");
    row("two bars with carriage returns", bar + "\r\n" + bar + "\r\n");
    row("carriage return in a line", "a\rb\nc\rd");
    row("blank lines", "\n\n" + bar + "\n\n\n" + bar + "\n\n");
    row("blanks", "  \n \t \n");
    row("zero bytes", QByteArray("\0;\0\n\0\0", 6));
    row("zero byte alone", QByteArray("\0", 1));
    row("byte order mark alone", "\xef\xbb\xbf");
    row("half a byte order mark", "\xef\xbb");
    row("byte order mark and bar", "\xef\xbb\xbf" + bar + "\n");
    row("two byte order marks", "\xef\xbb\xbf\xef\xbb\xbf" + bar + "\n");
    row("byte order mark in the second line", bar + "\n\xef\xbb\xbf" + bar + "\n");
    row("Cyrillic letters", "строка;два\nтри\n");
    row("invalid UTF-8", "a\xff\xfe\n\xc3\n\x80z\n");
    row("UTF-8 that is cut short", bar + "\n\xe2\x80");
    row("line separator of Unicode", "a\xe2\x80\xa8z\n");
    row("little-endian wide characters", utf16(QStringLiteral("один\r\nдва\n"), false));
    row("big-endian wide characters", utf16(QStringLiteral("один\r\nдва\n"), true));
    row("wide characters with half of one",
        utf16(QStringLiteral("a\n"), false) + QByteArray("z", 1));
    row("mark of wide characters alone", "\xff\xfe");
    row("mark of four-byte characters", QByteArray("\xff\xfe\0\0a\0\0\0\n\0\0\0b\0\0\0", 16));
    for (const int beyond : {-2, -1, 0, 1, 2}) {
        const QByteArray around = QByteArray::number(beyond);
        row("a block and " + around, barsOf(blockSize + beyond));
        row("two blocks and " + around, barsOf(2 * blockSize + beyond));
        row("without an end, a block and " + around, barsOf(blockSize + 1 + beyond).chopped(1));
        row("carriage return, a block and " + around,
            barsOf(blockSize + beyond).chopped(1) + "\r\n" + bar + "\n");
        row("other character, a block and " + around,
            barsOf(blockSize + beyond) + "Ё;\n" + bar + "\n");
        row("byte order mark, a block and " + around,
            barsOf(blockSize + beyond) + "\xef\xbb\xbf" + bar + "\n");
    }
    row("line of three blocks", QByteArray(3 * blockSize, 'x') + "\n" + bar + "\n");
    row("line of three blocks without an end", bar + "\n" + QByteArray(3 * blockSize, 'x'));
    row("line of ten blocks and an other character",
        bar + "\n" + QByteArray(10 * blockSize, 'x') + "Ё\n" + bar + "\n");
    row("blank lines of two blocks", QByteArray(2 * blockSize, '\n'));
    row("carriage returns of two blocks", QByteArray(2 * blockSize, '\r'));
    row("other character at the very end", barsOf(3 * blockSize) + "Ё");
}

void TestDayFileLines::readsWhatATextStreamReads()
{
    QFETCH(const QByteArray, content);
    writeFile(path(), content);
    const QByteArrayList expected = streamedLinesOf(path());
    const QByteArrayList lines = linesOf(path());
    QCOMPARE(lines.size(), expected.size());
    for (qsizetype i = 0; i < lines.size(); ++i)
        QVERIFY2(lines.at(i) == expected.at(i), qPrintable(QStringLiteral("line %1").arg(i)));
}

void TestDayFileLines::readsRandomContentsAsATextStreamDoes()
{
    QRandomGenerator random(20181214);
    for (int i = 0; i < 3000; ++i) {
        const QByteArray content = randomContent(random);
        writeOldFile(path(), content);
        QVERIFY2(readsAs(streamedLinesOf(path()), path(), content), content.toHex().constData());
    }
}

// Hostile pieces around the ends of blocks.
void TestDayFileLines::readsRandomLargeContentsAsATextStreamDoes()
{
    QRandomGenerator random(14122018);
    for (int i = 0; i < 30; ++i) {
        const qsizetype blocks = 1 + static_cast<qsizetype>(random.bounded(3));
        const QByteArray begin = randomContent(random);
        QByteArray content = random.bounded(2) == 0 ? barsOf(begin.size() + 1) : begin;
        const qsizetype edge = blocks * blockSize - static_cast<qsizetype>(random.bounded(12));
        content += barsOf(qMax(qsizetype(1), edge - content.size()));
        content += randomContent(random) + barsOf(blockSize) + randomContent(random);
        writeOldFile(path(), content);
        QVERIFY2(readsAs(decodedLinesOf(content), path(), content),
                 qPrintable(QStringLiteral("content %1").arg(i)));
    }
}

void TestDayFileLines::givesTheLinesOfABarFile()
{
    writeFile(path(), bar + "\n" + bar + "\r\n\n" + bar);
    QCOMPARE(linesOf(path()), QByteArrayList({bar, bar, "", bar}));
}

void TestDayFileLines::leavesOutTheByteOrderMark()
{
    writeFile(path(), "\xef\xbb\xbf" + bar + "\n");
    QCOMPARE(linesOf(path()), QByteArrayList{bar});
    QCOMPARE(plainTextOf(path()), bar + "\n");
}

void TestDayFileLines::readsWideCharacters_data()
{
    QTest::addColumn<bool>("bigEndian");
    QTest::newRow("little-endian") << false;
    QTest::newRow("big-endian") << true;
}

void TestDayFileLines::readsWideCharacters()
{
    QFETCH(const bool, bigEndian);
    writeFile(path(), utf16(QString::fromLatin1(bar) + QStringLiteral("\nЁ\n"), bigEndian));
    QCOMPARE(linesOf(path()), QByteArrayList({bar, "Ё"}));
}

void TestDayFileLines::givesTheTextOfPlainFilesAlone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("plain");
    QTest::newRow("bars") << bar + "\n" + bar + "\n" << true;
    QTest::newRow("no line end at the end") << bar << true;
    QTest::newRow("line ends alone") << QByteArray("\n\n") << true;
    QTest::newRow("a zero byte") << QByteArray("1\0002\n", 4) << true;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("carriage returns") << bar + "\r\n" << false;
    QTest::newRow("a carriage return inside") << QByteArray("1\r2\n") << false;
    QTest::newRow("a mark in the second line") << bar + "\n\xef\xbb\xbf" << false;
    QTest::newRow("other characters far behind") << barsOf(2 * blockSize) + "Ё\n" << false;
}

void TestDayFileLines::givesTheTextOfPlainFilesAlone()
{
    QFETCH(const QByteArray, content);
    QFETCH(const bool, plain);
    writeFile(path(), content);
    const std::optional<QByteArray> text = plainTextOf(path());
    QCOMPARE(text.has_value(), plain);
    if (plain)
        QCOMPARE(*text, content);
}

void TestDayFileLines::tellsTheSizeOfTheFile()
{
    writeFile(path(), bar + "\n");
    DayFileLines reader(path());
    QVERIFY(reader.open());
    QCOMPARE(reader.size(), bar.size() + 1);
}

void TestDayFileLines::doesNotOpenWhatIsNoFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("directory") << QStringLiteral("directory");
    QTest::newRow("pipe") << QStringLiteral("pipe");
    QTest::newRow("link to a pipe") << QStringLiteral("link");
    QTest::newRow("link to nothing") << QStringLiteral("dangling");
    QTest::newRow("below a file") << QStringLiteral("file/20181214_60.iss");
}

// Nobody writes into the pipe: to open it would be to wait for ever.
void TestDayFileLines::doesNotOpenWhatIsNoFile()
{
    QFETCH(const QString, name);
    const QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("directory")));
    writeFile(dir.filePath(QStringLiteral("file")), bar);
    const QString pipe = dir.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(QFile::link(pipe, dir.filePath(QStringLiteral("link"))));
    QVERIFY(QFile::link(dir.filePath(QStringLiteral("gone")),
                        dir.filePath(QStringLiteral("dangling"))));
    DayFileLines reader(dir.filePath(name));
    QVERIFY(!reader.open());
    QVERIFY(!plainTextOf(dir.filePath(name)));
}

void TestDayFileLines::followsALinkToAFile()
{
    writeFile(path(), bar + "\n");
    const QString link = m_dir.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path(), link));
    QCOMPARE(linesOf(link), QByteArrayList{bar});
}

// In UTF-32 a file may end with what is half a character in UTF-16.
void TestDayFileLines::keepsHalfACharacterAtTheEnd()
{
    const QByteArray wide("\xff\xfe\0\0"
                          "1\0\0\0"
                          "\x12\0\x3b\x34",
                          12);
    writeFile(path(), wide);
    const QByteArrayList lines = linesOf(path());
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.first().startsWith('1') && lines.first().endsWith("\xef\xbf\xbd"),
             lines.first().toHex().constData());
}

void TestDayFileLines::aLineThatIsCutInsideACharacterCanBeToldFromAWholeOne_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one of two") << QByteArray("\xd0");
    QTest::newRow("two of three") << QByteArray("\xe2\x80");
    QTest::newRow("three of four") << QByteArray("\xf0\x9f\x98");
}

// By those who ask for it; to all others it is what a text stream gives.
void TestDayFileLines::aLineThatIsCutInsideACharacterCanBeToldFromAWholeOne()
{
    QFETCH(const QByteArray, bytes);
    writeOldFile(path(), bar + bytes);
    QCOMPARE(linesOf(path()), QByteArrayList{bar});

    DayFileLines reader(path());
    reader.beStrict();
    QByteArrayView line;
    QVERIFY(reader.open() && !reader.plainText() && reader.next(&line));
    QCOMPARE(line.toByteArray(), bar + QByteArray("\xef\xbf\xbd").repeated(bytes.size()));
    QVERIFY(!reader.next(&line));
    QVERIFY(reader.outcome());
}

void TestDayFileLines::strictlyAFileIsNeverInUtf16()
{
    writeOldFile(path(), "\xff\xfe\n" + bar + "\n");
    DayFileLines reader(path());
    reader.beStrict();
    QByteArrayView line;
    QVERIFY(reader.open() && reader.nextBytes(&line));
    QCOMPARE(line.toByteArray(), QByteArray("\xff\xfe"));
    QVERIFY(reader.next(&line));
    QCOMPARE(line.toByteArray(), bar);
}

void TestDayFileLines::tellsWhetherTheFileWasWrittenTo()
{
    writeFile(path(), bar + "\n");
    DayFileLines reader(path());
    QVERIFY(reader.open());
    QVERIFY(!reader.isChanged());
    QFile writer(path());
    QVERIFY(writer.open(QIODevice::Append | QIODevice::Unbuffered));
    QCOMPARE(writer.write(bar), bar.size());
    QVERIFY(reader.isChanged());
}

void TestDayFileLines::saysWhyItStopped_data()
{
    QTest::addColumn<int>("passed");
    QTest::addColumn<bool>("plain");
    QTest::newRow("at once") << 0 << false;
    QTest::newRow("in the middle of a line") << 1 << false;
    QTest::newRow("at once, asked for the text") << 0 << true;
}

void TestDayFileLines::saysWhyItStopped()
{
    QFETCH(const int, passed);
    QFETCH(const bool, plain);
    writeOldFile(path(), (bar + '\n').repeated(3 * blockSize / bar.size()));
    const testsupport::Fault fault(testsupport::SystemCall::Read, path(), EIO, passed);
    DayFileLines reader(path());
    QVERIFY(reader.open());
    QVERIFY(reader.outcome());
    if (plain)
        QVERIFY(!reader.plainText());
    QByteArrayView line;
    qsizetype lines = 0;
    while (reader.next(&line)) {
        QCOMPARE(line, QByteArrayView(bar));
        ++lines;
    }
    QCOMPARE(lines, passed * (blockSize / (bar.size() + 1)));
    QVERIFY(!reader.outcome().message().isEmpty());
    QVERIFY(!reader.next(&line));
}

// The other writes the line in two parts, as some file systems let its readers see it.
void TestDayFileLines::waitsForTheRestOfALineThatIsBeingWritten()
{
    writeFile(path(), bar + '\n' + bar.first(20));
    DayFileLines reader(path());
    QVERIFY(reader.open());
    QByteArrayView line;
    QVERIFY(reader.next(&line));
    // From here on the first read at the end finds nothing, and the next one the rest.
    QFile file(path());
    QVERIFY(file.open(QIODevice::Append));
    const testsupport::Meanwhile rest(testsupport::SystemCall::ReadEnd, path(), [&] {
        file.write(bar.mid(20) + '\n');
        file.flush();
    });
    QVERIFY(reader.next(&line));
    QCOMPARE(line, QByteArrayView(bar));
}

void TestDayFileLines::readsNoMoreThanItMay_data()
{
    QTest::addColumn<int>("beyond");
    QTest::newRow("one less") << -1;
    QTest::newRow("as much") << 0;
    QTest::newRow("one more") << 1;
}

void TestDayFileLines::readsNoMoreThanItMay()
{
    QFETCH(const int, beyond);
    const QByteArray content = barsOf(40'000);
    writeOldFile(path(), content);
    const qint64 most = content.size() - beyond;
    DayFileLines whole(path(), most);
    QVERIFY(whole.open());
    QCOMPARE(whole.plainText().has_value(), beyond <= 0);
    DayFileLines reader(path(), most, smallBlockSize);
    QVERIFY(reader.open());
    QCOMPARE(reader.position(), 0);
    QByteArrayView line;
    qsizetype bytes = 0;
    while (reader.next(&line))
        bytes += line.size() + 1;
    QCOMPARE(bool(reader.outcome()), beyond <= 0);
    if (beyond <= 0) {
        QCOMPARE(bytes, content.size());
        QCOMPARE(reader.position(), content.size());
    }
}

// It is as large as it may be when it is opened.
void TestDayFileLines::readsNoMoreThanItMayOfAFileThatGrows()
{
    writeOldFile(path(), bar + '\n');
    DayFileLines reader(path(), bar.size() + 1);
    QByteArrayView line;
    QVERIFY(reader.open() && reader.next(&line));
    QFile writer(path());
    QVERIFY(writer.open(QIODevice::Append));
    QCOMPARE(writer.write("1"), 1);
    writer.close();
    QVERIFY(!reader.next(&line));
    QVERIFY(!reader.outcome());
}

void TestDayFileLines::isMixedOfMoreThanOneRead()
{
    writeOldFile(path(), barsOf(2 * smallBlockSize));
    for (const int reads : {1, 2}) {
        DayFileLines reader(path(), DayFileLines::unlimited, smallBlockSize);
        QByteArrayView line;
        QVERIFY(reader.open());
        while (reader.position() < reads * smallBlockSize)
            QVERIFY(reader.next(&line));
        QVERIFY(!reader.isMixed());
        writeFile(path(), barsOf(2 * smallBlockSize));
        QCOMPARE(reader.isMixed(), reads > 1);
        QVERIFY(reader.isChanged());
    }
}

// The read that finds the end gives nothing, so nothing of another state.
void TestDayFileLines::isNotMixedWhereOneReadGaveAll()
{
    writeOldFile(path(), bar + '\n');
    DayFileLines reader(path());
    QByteArrayView line;
    QVERIFY(reader.open() && reader.next(&line));
    QVERIFY(!reader.next(&line));
    writeFile(path(), bar + '\n' + bar + '\n');
    QVERIFY(reader.isChanged());
    QVERIFY(!reader.isMixed());
}

void TestDayFileLines::passesOverWhatTheEndHasCutAsATextStreamDoes()
{
    const QByteArrayList ends{"\x7f",         "\x80",         "\xbf",
                              "\xc0",         "\xc1",         "\xc2",
                              "\xdf",         "\xe0",         "\xe1",
                              "\xef",         "\xf0",         "\xf3",
                              "\xf4",         "\xf5",         "\xff",
                              "\xc2\x80",     "\xdf\xbf",     "\xe1\x80",
                              "\xef\xbe",     "\xe1\x80\x80", "\xef\xbe\xbf",
                              "\xf0\x90",     "\xf1\x80",     "\xf4\x8f",
                              "\xf1\x80\x80", "\xf4\x8f\xbf", "\xf1\x80\x80\x80"};
    for (const QByteArray& end : ends) {
        for (const QByteArray& before : {QByteArray(), QByteArray("1"), QByteArray("\xd0\x81")}) {
            writeOldFile(path(), before + end);
            QCOMPARE(linesOf(path()), streamedLinesOf(path()));
        }
    }
}

QTEST_GUILESS_MAIN(TestDayFileLines)
#include "tst_dayfilelines.moc"
