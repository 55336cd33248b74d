// SPDX-License-Identifier: MIT
// A day as it is stored, the bars that a file has for it, and what becomes of both.
#include "dayofbars.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>
#include <optional>

using tadata::DayLine;
using tadata::FileDay;
using tadata::StoredDay;
using testsupport::writeFile;

class TestDayOfBars final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void namesTheFirstLineThatIsNoBar_data();
    void namesTheFirstLineThatIsNoBar();
    void takesTheBarsBesideABadLine();
    void aMissingDayHasNoState();
    void countsTimes_data();
    void countsTimes();
    void findsTheLargestAmount_data();
    void findsTheLargestAmount();
    void readsAFaultlessDayAsAnyOther_data();
    void readsAFaultlessDayAsAnyOther();
    void readsADayThatHasChangedOnceMore();
    void holdsTheBytesOfItsFileAlone();
    void knowsWhetherTheFilesBarsAscend();
    void keepsTheLinesOfTheFile();
    void writesEditedLinesInTheRegularOrder();
    void mergesTheFilesBarsIn_data();
    void mergesTheFilesBarsIn();
    void measuresAmountsWithoutTheirSign();

private:
    QString path() const { return m_dir->filePath(QStringLiteral("20240115_60.iss")); }
    StoredDay read(const QByteArray& content,
                   const std::optional<vexdesk::FileState>& faultless = {}) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

const QDate day(2024, 1, 15);
const QByteArray ten = "100000;1;1;1;1;5;2.5;0\n";
const QByteArray eleven = "110001;1;1;1;1;5;2.5;0\n";
const QByteArray edited = "120000;1;1;1;1;2.5;5;0\n";
const QByteArray mark = "\xef\xbb\xbf";

QByteArray inUtf16(const QByteArray& text)
{
    QByteArray bytes("\xff\xfe");
    for (const char character : text)
        bytes.append(character).append('\0');
    return bytes;
}

QStringList shown(const StoredDay& stored)
{
    QStringList lines;
    for (const DayLine& line : stored.lines())
        lines.append(QStringLiteral("%1 %2%3")
                         .arg(line.second)
                         .arg(QString::fromLatin1(stored.textOf(line)),
                              line.isEdited ? QStringLiteral(" edited") : QString()));
    return lines;
}

} // namespace

void TestDayOfBars::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

StoredDay TestDayOfBars::read(const QByteArray& content,
                              const std::optional<vexdesk::FileState>& faultless) const
{
    if (!content.isNull())
        writeFile(path(), content);
    StoredDay stored;
    const vexdesk::Outcome outcome = stored.read(path(), day, faultless);
    if (!outcome)
        QTest::qFail(qPrintable(outcome.message()), __FILE__, __LINE__);
    return stored;
}

void TestDayOfBars::namesTheFirstLineThatIsNoBar_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qint64>("line");
    QTest::newRow("nothing") << QByteArray("") << qint64(0);
    QTest::newRow("bars") << ten + eleven << qint64(0);
    QTest::newRow("no line end") << ten + eleven.chopped(1) << qint64(0);
    QTest::newRow("carriage returns") << ten.chopped(1) + "\r\n" + eleven << qint64(0);
    QTest::newRow("mark") << mark + ten << qint64(0);
    QTest::newRow("mark alone") << mark << qint64(0);
    QTest::newRow("mark and an empty line") << mark + "\n" << qint64(1);
    QTest::newRow("empty line") << QByteArray("\n") << qint64(1);
    QTest::newRow("empty line with a carriage return") << QByteArray("\r\n") << qint64(1);
    QTest::newRow("as long as a mark") << QByteArray("x\r\n") << qint64(1);
    QTest::newRow("second") << ten + "x\n" + eleven << qint64(2);
    QTest::newRow("two of them") << ten + "x\ny\n" << qint64(2);
    QTest::newRow("second, carriage returns")
        << ten.chopped(1) + "\r\nx\r\ny\r\n" + eleven << qint64(2);
    // A text stream would take both for bars.
    QTest::newRow("cut character") << ten + eleven.chopped(1) + '\xd0' << qint64(2);
    QTest::newRow("UTF-16") << inUtf16(ten) << qint64(1);
}

void TestDayOfBars::namesTheFirstLineThatIsNoBar()
{
    QFETCH(const QByteArray, content);
    QTEST(read(content).firstBadLine(), "line");
}

void TestDayOfBars::takesTheBarsBesideABadLine()
{
    for (const QByteArray& line : {QByteArray(), QByteArray("x"), QByteArray("x\r")}) {
        for (const QByteArray& content :
             {line + '\n' + ten + eleven, ten + line + '\n' + eleven, ten + eleven + line + '\n'}) {
            const StoredDay stored = read(content);
            QVERIFY(stored.firstBadLine() > 0);
            QCOMPARE(stored.lines().size(), size_t(2));
            QCOMPARE(stored.lines().front().second, 36000);
            QCOMPARE(stored.lines().back().second, 39601);
        }
    }
}

void TestDayOfBars::aMissingDayHasNoState()
{
    StoredDay stored = read({});
    QVERIFY(!stored.state());
    QCOMPARE(stored.firstBadLine(), 0);
    QVERIFY(stored.lines().empty());
    QVERIFY(!stored.holds(QByteArray()));
    // What was read before is forgotten.
    writeFile(path(), ten + "x\n");
    QVERIFY(stored.read(path(), day));
    QVERIFY(stored.state());
    QVERIFY(QFile::remove(path()));
    QVERIFY(stored.read(path(), day));
    QVERIFY(!stored.state());
    QCOMPARE(stored.firstBadLine(), 0);
    QVERIFY(stored.lines().empty());
    QCOMPARE(stored.keyCount(), 0);
}

void TestDayOfBars::countsTimes_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qint64>("count");
    QTest::newRow("nothing") << QByteArray("") << qint64(0);
    QTest::newRow("one") << ten << qint64(1);
    QTest::newRow("two") << ten + eleven << qint64(2);
    QTest::newRow("one, twice") << ten + ten << qint64(1);
    QTest::newRow("two, apart") << ten + eleven + ten << qint64(2);
    QTest::newRow("not in order") << edited + eleven + ten << qint64(3);
}

void TestDayOfBars::countsTimes()
{
    QFETCH(const QByteArray, content);
    QTEST(read(content).keyCount(), "count");
}

void TestDayOfBars::findsTheLargestAmount_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<double>("largest");
    QTest::newRow("nothing") << QByteArray("") << 0.0;
    QTest::newRow("money, not pieces") << ten << 2.5;
    QTest::newRow("in the first line") << "100000;1;1;1;1;5;7;0\n" + eleven << 7.0;
    QTest::newRow("in the last line") << ten + "110000;1;1;1;1;5;7;0\n" << 7.0;
    QTest::newRow("below zero") << ten + "110000;1;1;1;1;5;-7.25;0\n" << 7.25;
    QTest::newRow("of an edited line") << ten + "110000;1;1;1;1;3.5;9;0\n" << 3.5;
}

void TestDayOfBars::findsTheLargestAmount()
{
    QFETCH(const QByteArray, content);
    QTEST(read(content).largestValue(), "largest");
}

void TestDayOfBars::readsAFaultlessDayAsAnyOther_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("bars") << ten + eleven;
    QTest::newRow("edited") << ten + edited;
    QTest::newRow("carriage returns") << ten.chopped(1) + "\r\n" + edited.chopped(1) + "\r\n";
    QTest::newRow("mark") << mark + ten + edited;
    QTest::newRow("mark alone") << mark;
}

void TestDayOfBars::readsAFaultlessDayAsAnyOther()
{
    QFETCH(const QByteArray, content);
    const StoredDay once = read(content);
    const StoredDay again = read({}, once.state());
    QCOMPARE(shown(again), shown(once));
    QCOMPARE(again.firstBadLine(), 0);
    QCOMPARE(again.holds(content), once.holds(content));
}

void TestDayOfBars::readsADayThatHasChangedOnceMore()
{
    const StoredDay before = read(ten);
    QCOMPARE(read(ten + "x\n", before.state()).firstBadLine(), 2);
}

void TestDayOfBars::holdsTheBytesOfItsFileAlone()
{
    QVERIFY(read(ten + eleven).holds(ten + eleven));
    QVERIFY(!read(ten + eleven).holds(ten));
    QVERIFY(!read(ten + eleven.chopped(1)).holds(ten + eleven));
    QVERIFY(!read(mark + ten).holds(ten));
    QVERIFY(!read(ten.chopped(1) + "\r\n").holds(ten));
}

void TestDayOfBars::knowsWhetherTheFilesBarsAscend()
{
    FileDay file;
    QVERIFY(file.isAscending() && file.isEmpty());
    file.add(1, ten);
    QVERIFY(file.isAscending() && !file.isEmpty());
    file.add(2, ten);
    QVERIFY(file.isAscending());
    file.add(2, ten);
    QVERIFY(!file.isAscending());
    file.add(3, ten);
    QVERIFY(!file.isAscending());
    file.clear();
    QVERIFY(file.isAscending() && file.isEmpty() && file.text().isEmpty());
    file.add(2, ten);
    file.add(1, ten);
    QVERIFY(!file.isAscending());
}

void TestDayOfBars::keepsTheLinesOfTheFile()
{
    FileDay file;
    for (int round = 0; round < 2; ++round) {
        file.clear();
        vexdesk::StoredBar bar;
        bar.time = QTime(10, 0, 1, 999);
        bar.volume = 5;
        file.add(bar);
        file.add(40000, eleven.chopped(1));
        const QByteArray text = file.text().toByteArray();
        QCOMPARE(text, "100001;0;0;0;0;5;0;0\n" + eleven);
        QCOMPARE(file.lines().size(), size_t(2));
        const DayLine& first = file.lines().front();
        const DayLine& last = file.lines().back();
        QCOMPARE(first.second, 36001);
        QCOMPARE(last.second, 40000);
        QCOMPARE(text.mid(first.begin, first.size), QByteArray("100001;0;0;0;0;5;0;0"));
        QCOMPARE(text.mid(last.begin, last.size), eleven.chopped(1));
        QVERIFY(!first.isEdited && !last.isEdited);
    }
}

// An edited line is written as an import writes it.
void TestDayOfBars::writesEditedLinesInTheRegularOrder()
{
    const QByteArray regular = "120000;1;1;1;1;5;2.5;0\n";
    FileDay file;
    file.add(11 * 3600 + 1, eleven.chopped(1));
    const StoredDay stored = read(ten + edited);
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill})
        QCOMPARE(tadata::mergedDay(stored, file, mode).content, ten + eleven + regular);
}

void TestDayOfBars::mergesTheFilesBarsIn_data()
{
    QTest::addColumn<QByteArrayList>("stored");
    QTest::addColumn<QByteArrayList>("file");
    QTest::addColumn<QByteArrayList>("merged");
    QTest::addColumn<QByteArrayList>("filled");
    QTest::addColumn<qint64>("times");
    using Names = QByteArrayList;
    const auto row = [](const char* name, const Names& stored, const Names& file,
                        const Names& merged, const Names& filled, qint64 times) {
        QTest::newRow(name) << stored << file << merged << filled << times;
    };
    row("the file alone", {}, {"10a", "11b"}, {"10a", "11b"}, {"10a", "11b"}, 2);
    row("the file alone, not in order", {}, {"11a", "10b", "12c"}, {"10b", "11a", "12c"},
        {"10b", "11a", "12c"}, 3);
    row("the last of the file's", {}, {"10a", "10b", "11c"}, {"10b", "11c"}, {"10b", "11c"}, 2);
    row("what is stored alone", {"10a", "11b"}, {}, {"10a", "11b"}, {"10a", "11b"}, 2);
    row("stored not in order", {"11a", "10b"}, {}, {"10b", "11a"}, {"10b", "11a"}, 2);
    row("stored twice", {"10a", "11b", "10c"}, {}, {"10a", "10c", "11b"}, {"10a", "10c", "11b"}, 2);
    row("before", {"11a"}, {"10b"}, {"10b", "11a"}, {"10b", "11a"}, 2);
    row("behind", {"10a"}, {"11b"}, {"10a", "11b"}, {"10a", "11b"}, 2);
    row("between", {"10a", "12b"}, {"11c"}, {"10a", "11c", "12b"}, {"10a", "11c", "12b"}, 3);
    row("around", {"11a"}, {"10b", "12c"}, {"10b", "11a", "12c"}, {"10b", "11a", "12c"}, 3);
    row("the same time", {"10a"}, {"10b"}, {"10b"}, {"10a"}, 1);
    row("all that is stored of a time", {"10a", "10b", "11c"}, {"10d"}, {"10d", "11c"},
        {"10a", "10b", "11c"}, 2);
    row("the same bars", {"10a", "11b"}, {"11b", "10a"}, {"10a", "11b"}, {"10a", "11b"}, 2);
}

void TestDayOfBars::mergesTheFilesBarsIn()
{
    QFETCH(const QByteArrayList, stored);
    QFETCH(const QByteArrayList, file);
    QFETCH(const QByteArrayList, merged);
    QFETCH(const QByteArrayList, filled);
    // "10a" is a bar of ten o'clock that is like no other.
    const auto lineOf = [](const QByteArray& name) {
        return name.first(2) + "0000;1;1;1;1;" + QByteArray::number(int(name.back())) + ";2.5;0";
    };
    const auto textOf = [&lineOf](const QByteArrayList& names) {
        QByteArray text("");
        for (const QByteArray& name : names)
            text += lineOf(name) + '\n';
        return text;
    };
    const StoredDay before = read(textOf(stored));
    FileDay bars;
    for (const QByteArray& name : file)
        bars.add(name.first(2).toInt() * 3600, lineOf(name));
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const QByteArray wanted = textOf(mode == ImportMode::Merge ? merged : filled);
        const tadata::MergedDay after = tadata::mergedDay(before, bars, mode);
        QCOMPARE(after.content, wanted);
        QTEST(after.keyCount, "times");
        QCOMPARE(after.isSame, wanted == textOf(stored));
    }
}

void TestDayOfBars::measuresAmountsWithoutTheirSign()
{
    QCOMPARE(tadata::sizeOfValue(decimal(-125, 1)), 12.5);
    QCOMPARE(tadata::sizeOfValue(decimal(125, 0)), 125.0);
    QCOMPARE(tadata::sizeOfValue(decimal::zero), 0.0);
}

QTEST_GUILESS_MAIN(TestDayOfBars)
#include "tst_dayofbars.moc"
