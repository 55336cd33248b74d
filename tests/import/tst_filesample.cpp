// SPDX-License-Identifier: MIT
// The lines that a format is guessed from: which they are, however large the file and however long
// they are.

#include "filesample.h"

#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <memory>

using namespace tadata;
using testsupport::writeFile;

class TestFileSample final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesAllOfSmallFiles_data();
    void takesAllOfSmallFiles();
    void takesBothEnds_data();
    void takesBothEnds();
    void findsALineThatBeginsWithABlock();
    void leavesOutBlanks();
    void keepsLongLinesShort();
    void readsTheEndsOfAHugeFile();
    void readsLongLinesAtTheEnd();
    void saysThatAFileCannotBeRead();
    void saysThatAFileHasBecomeShorter();
    void knowsTheEncoding_data();
    void knowsTheEncoding();
    void refuses_data();
    void refuses();
    void refusesEndlessLines_data();
    void refusesEndlessLines();
    void refusesWhatIsNoFile();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    FileSample sampleOf(const QByteArray& content) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

QByteArrayList textsOf(const FileSample& sample)
{
    QByteArrayList texts;
    for (const SampledLine& line : sample.lines)
        texts.append(line.text);
    return texts;
}

// Numbers from `first` on, each with so many characters more.
QByteArrayList numbers(int first, int count, int more = 0)
{
    QByteArrayList lines;
    for (int i = 0; i < count; ++i)
        lines.append(QByteArray::number(first + i) + QByteArray(more, 'x'));
    return lines;
}

} // namespace

void TestFileSample::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
}

FileSample TestFileSample::sampleOf(const QByteArray& content) const
{
    writeFile(path("file"), content);
    const vexdesk::Result<FileSample> sample = sampleFile(path("file"));
    return sample ? *sample : FileSample{{{"not read"}}};
}

void TestFileSample::takesAllOfSmallFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArrayList>("lines");

    QTest::newRow("nothing") << QByteArray() << QByteArrayList();
    QTest::newRow("one character") << QByteArray("a") << QByteArrayList{"a"};
    QTest::newRow("one line end") << QByteArray("\n") << QByteArrayList();
    QTest::newRow("one behind the first thousand")
        << QByteArray("a\n").repeated(1001) << QByteArrayList(1001, "a");
    QTest::newRow("one more than is read at a time")
        << QByteArray("\n").repeated(500) + QByteArray(65035, ' ') + "\na" << QByteArrayList{"a"};
    QTest::newRow("a mark alone") << QByteArray("\xef\xbb\xbf") << QByteArrayList();
    QTest::newRow("a mark") << QByteArray("\xef\xbb\xbf"
                                          "a\n")
                            << QByteArrayList{"a"};
    QTest::newRow("two marks") << QByteArray("\xef\xbb\xbf\xef\xbb\xbf\n")
                               << QByteArrayList{"\xef\xbb\xbf"};
    QTest::newRow("line ends") << QByteArray("a\nb\r\nc\r\r\nd\re\r\n")
                               << QByteArrayList{"a", "b", "c\r", "d\re"};
    QTest::newRow("no last line end") << QByteArray("a\nb") << QByteArrayList{"a", "b"};
    QTest::newRow("a last carriage return") << QByteArray("a\nb\r") << QByteArrayList{"a", "b"};
    QTest::newRow("blanks") << QByteArray("\n a \n\t\v\f\r \n\r\n\nb\n\n")
                            << QByteArrayList{" a ", "b"};
    QTest::newRow("other spaces") << QByteArray("\xc2\xa0\n\0\n", 5)
                                  << QByteArrayList{"\xc2\xa0", QByteArray("\0", 1)};
}

void TestFileSample::takesAllOfSmallFiles()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QByteArrayList, lines);
    const FileSample sample = sampleOf(content);
    QCOMPARE(textsOf(sample), lines);
    QCOMPARE(sample.secondHalf, sample.lines.size());
}

void TestFileSample::takesBothEnds_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("more");
    for (const int more : {0, 50, 1000}) {
        for (const int count : {1, 999, 1000, 1001, 1500, 1998, 1999, 2000, 2001, 2500, 9000})
            QTest::addRow("%d of %d", count, more) << count << more;
    }
}

void TestFileSample::takesBothEnds()
{
    QFETCH(const int, count);
    QFETCH(const int, more);
    const bool hasHalves = count >= 2000;
    const QByteArrayList expected = hasHalves
                                        ? numbers(1, 1000, more) + numbers(count - 999, 1000, more)
                                        : numbers(1, count, more);
    const size_t secondHalf = hasHalves ? 1000 : static_cast<size_t>(count);
    const QByteArray content = numbers(1, count, more).join('\n');
    for (const char* end : {"", "\n", "\r\n"}) {
        const FileSample sample = sampleOf(content + end);
        QCOMPARE(textsOf(sample), expected);
        QCOMPARE(sample.secondHalf, secondHalf);
    }
    // Whether there are two halves is not a matter of blanks: they are lines, too.
    const FileSample sample = sampleOf(content + "\n\n");
    QCOMPARE(sample.secondHalf, count >= 1999 ? 1000 : static_cast<size_t>(count));
    QCOMPARE(qsizetype(sample.lines.size()), std::min(count, 1999));
    QCOMPARE(sample.lines.back().text, expected.last());
}

// It is read backwards in blocks: the last thousand lines are as long as one.
void TestFileSample::findsALineThatBeginsWithABlock()
{
    const QByteArrayList begin = numbers(1, 1000);
    const QByteArrayList end = QByteArrayList(999, QByteArray(64, 'x')) << QByteArray(600, 'y');
    const QByteArray last = end.join('\n') + '\n';
    QCOMPARE(last.size(), 65536);
    for (const int between : {1, 2}) {
        const QByteArray middle = QByteArray("middle\n").repeated(between);
        QCOMPARE(textsOf(sampleOf(begin.join('\n') + '\n' + middle + last)), begin + end);
    }
}

void TestFileSample::leavesOutBlanks()
{
    const FileSample sample =
        sampleOf(QByteArray("\n").repeated(999) + "a\n" + QByteArray(" \n").repeated(5) + "b\nc\n" +
                 QByteArray("\r\n").repeated(998));
    QCOMPARE(textsOf(sample), (QByteArrayList{"a", "b", "c"}));
    QCOMPARE(sample.secondHalf, 1U);
    QCOMPARE(sampleOf(QByteArray("\n").repeated(1000) + numbers(1, 1000).join('\n')).secondHalf,
             0U);
}

void TestFileSample::keepsLongLinesShort()
{
    const QByteArray longest(65536, 'x');
    const FileSample sample =
        sampleOf(longest + '\n' + longest + "\r\n" + longest.repeated(3) + "y\r\nz");
    QCOMPARE(sample.lines.size(), 4U);
    const auto isLine = [&](size_t index, const QByteArray& text, bool isCut) {
        return sample.lines[index].text == text && sample.lines[index].isCut == isCut;
    };
    QVERIFY(isLine(0, longest, false));
    QVERIFY(isLine(1, longest, true)); // the carriage return is one character too many
    QVERIFY(isLine(2, longest, true));
    QVERIFY(isLine(3, "z", false));
}

void TestFileSample::readsTheEndsOfAHugeFile()
{
    const QByteArray head = numbers(1, 1000).join('\n') + '\n';
    const QByteArray tail = numbers(5000, 1001).join('\n') + '\n';
    writeFile(path("huge"), head);
    QFile file(path("huge"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    // A hole of 1 TB, which takes no room.
    if (!file.resize(qint64(1) << 40))
        QSKIP("the file system has no files of this size");
    QVERIFY(file.seek(file.size()) && file.write('\n' + tail) > 0);
    file.close();
    const vexdesk::Result<FileSample> sample = sampleFile(path("huge"));
    QVERIFY2(sample, qPrintable(sample.message()));
    QCOMPARE(textsOf(*sample), numbers(1, 1000) + numbers(5001, 1000));
}

// Together they may be longer than one may be.
void TestFileSample::readsLongLinesAtTheEnd()
{
    constexpr qint64 length = 300'000;
    const QByteArray head = numbers(1, 1000).join('\n') + '\n';
    writeFile(path("file"), head);
    QFile file(path("file"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    // Holes, which take no room.
    for (int line = 1; line <= 1000; ++line)
        QVERIFY(file.seek(head.size() + line * length - 1) && file.write("\n") == 1);
    file.close();
    const vexdesk::Result<FileSample> sample = sampleFile(path("file"));
    QVERIFY2(sample, qPrintable(sample.message()));
    QCOMPARE(sample->lines.size(), 2000U);
    QCOMPARE(sample->secondHalf, 1000U);
    QVERIFY(sample->lines.back().isCut);
}

void TestFileSample::saysThatAFileCannotBeRead()
{
    writeFile(path("file"), numbers(1, 9000, 50).join('\n'));
    int passed = 0;
    for (;; ++passed) {
        const testsupport::Fault broken(testsupport::SystemCall::Read, path("file"), EIO, passed);
        const vexdesk::Result<FileSample> sample = sampleFile(path("file"));
        if (broken.failed() == 0)
            break;
        QVERIFY2(sample.message().startsWith(
                     QStringLiteral("Невозможно прочитать файл %1:").arg(path("file"))),
                 qPrintable(sample.message()));
    }
    QVERIFY(passed > 2);
    QCOMPARE(sampleFile(path("file"))->lines.size(), 2000U);
}

// Between the reading of its beginning and that of its end.
void TestFileSample::saysThatAFileHasBecomeShorter()
{
    writeFile(path("file"), numbers(1, 9000, 50).join('\n'));
    const auto shorten = [this] { QVERIFY(QFile::resize(path("file"), 1000)); };
    std::unique_ptr<testsupport::Meanwhile> atSecond;
    const testsupport::Meanwhile atFirst(
        testsupport::SystemCall::Read, path("file"), [this, &atSecond, &shorten] {
            atSecond = std::make_unique<testsupport::Meanwhile>(testsupport::SystemCall::Read,
                                                                path("file"), shorten);
        });
    QCOMPARE(sampleFile(path("file")).message(),
             QStringLiteral("Невозможно прочитать файл %1: файл стал короче, пока его читали")
                 .arg(path("file")));
}

void TestFileSample::knowsTheEncoding_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isUtf8");
    QTest::newRow("ASCII") << QByteArray("a\nb\n") << true;
    QTest::newRow("UTF-8") << QByteArray("дата\na\xef\xbb\xbf\n\xf0\x9f\x98\x80\n") << true;
    QTest::newRow("windows-1251") << QByteArray("\xe4\xe0\xf2\xe0\n") << false;
    QTest::newRow("both") << QByteArray("дата\n\xe4\xe0\xf2\xe0\n") << false;
    QTest::newRow("half a character") << QByteArray("\xd0\na\n") << false;
    QTest::newRow("longer than needed") << QByteArray("\xc0\xaf\n") << false;
    QTest::newRow("half a pair") << QByteArray("\xed\xa0\x80\n") << false;
    QTest::newRow("cut in a character") << 'x' + QByteArray("ж").repeated(40'000) + '\n' << true;
    QTest::newRow("in the second half") << QByteArray("a\n").repeated(2500) + "\xff\n" << false;
    QTest::newRow("in between") << QByteArray("a\n").repeated(1000) + "\xff\n" +
                                       QByteArray("a\n").repeated(1000)
                                << true;
}

void TestFileSample::knowsTheEncoding()
{
    QFETCH(const QByteArray, content);
    QTEST(sampleOf(content).isUtf8, "isUtf8");
}

void TestFileSample::refuses_data()
{
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("UTF-16, low bytes first") << QByteArray("\xff\xfe"
                                                           "a\0\n\0",
                                                           6);
    QTest::newRow("UTF-16, high bytes first") << QByteArray("\xfe\xff\0a\0\n", 6);
    QTest::newRow("UTF-32, low bytes first") << QByteArray("\xff\xfe\0\0a\0\0\0", 8);
    QTest::newRow("UTF-32, high bytes first") << QByteArray("\0\0\xfe\xff\0\0\0a", 8);
    QTest::newRow("only a mark") << QByteArray("\xff\xfe");
}

void TestFileSample::refuses()
{
    QFETCH(const QByteArray, mark);
    writeFile(path("file"), mark);
    QCOMPARE(sampleFile(path("file")).message(),
             QStringLiteral("Невозможно прочитать файл %1: формат файлов в UTF-16 и UTF-32 не "
                            "угадывается; сохраните файл в UTF-8 или задайте --columns")
                 .arg(path("file")));
}

void TestFileSample::refusesEndlessLines_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::newRow("the first") << QByteArray();
    QTest::newRow("the last") << QByteArray("a\n").repeated(1000);
    QTest::newRow("the last, behind many") << QByteArray("a\n").repeated(3000);
}

void TestFileSample::refusesEndlessLines()
{
    QFETCH(const QByteArray, head);
    writeFile(path("file"), head);
    if (!QFile::resize(path("file"), qint64(1) << 40))
        QSKIP("the file system has no files of this size");
    QCOMPARE(
        sampleFile(path("file")).message(),
        QStringLiteral("Невозможно прочитать файл %1: строка длиннее 256 МБ").arg(path("file")));
}

void TestFileSample::refusesWhatIsNoFile()
{
    const auto isRefused = [](const QString& path) {
        return sampleFile(path).message() == QStringLiteral("Невозможно открыть файл %1").arg(path);
    };
    QVERIFY(isRefused(path("missing")));
    QVERIFY(isRefused(m_dir->path()));
    QVERIFY(isRefused(QString()));
    QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QVERIFY(isRefused(path("pipe")));
    QVERIFY(isRefused(QStringLiteral("/dev/zero")));
}

QTEST_GUILESS_MAIN(TestFileSample)
#include "tst_filesample.moc"
