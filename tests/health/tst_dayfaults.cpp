// SPDX-License-Identifier: MIT
#include "dayfaults.h"

#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using tadata::DayFile;
using tadata::DayHealth;
using tadata::readDayFile;
using tadata::UnreadFile;

class TestDayFaults final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void findsFaults_data();
    void findsFaults();
    void measuresJumpsExactly_data();
    void measuresJumpsExactly();
    void comparesWithTheBarBefore();
    void countsLines_data();
    void countsLines();
    void tellsWhatItCannotRead();
    void tellsWhatIsWrittenMeanwhile();

private:
    DayFile read(const QByteArray& content, int jumpPercent = 10) const
    {
        const QString path = m_dir.filePath(QStringLiteral("day"));
        testsupport::writeFile(path, content);
        return readDayFile(path, QDate(2024, 1, 15), jumpPercent);
    }

    QTemporaryDir m_dir;
};

using Lines = std::vector<int>;

void TestDayFaults::findsFaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("counts");
    // bars, edited, duplicates, out of order, prices, volume
    const auto row = [](const char* name, const QByteArray& content, const char* counts) {
        QTest::newRow(name) << content << QString::fromLatin1(counts);
    };
    const QByteArray bar = "100000;1.00;1.10;0.90;1.00;5;5.00;0\n";
    row("nothing", "", "0 0 0 0 0 0");
    row("one", bar, "1 0 0 0 0 0");
    row("one at midnight", "000000;1.00;1.10;0.90;1.00;5;5.00;0\n", "1 0 0 0 0 0");
    row("edited", "100000;1.00;1.10;0.90;1.00;5.00;5;0\n", "1 1 0 0 0 0");
    row("three of a time", bar + bar + bar, "3 0 2 0 0 0");
    row("backwards", "100100;1;1;1;1;1;1;0\n" + bar + "100030;1;1;1;1;1;1;0\n", "3 0 0 1 0 0");
    row("high below open", "100000;1.11;1.10;0.90;1.00;5;5.00;0\n", "1 0 0 0 1 0");
    row("high below close", "100000;1.00;1.10;0.90;1.101;5;5.00;0\n", "1 0 0 0 1 0");
    row("high below low", "100000;1.00;0.80;0.90;1.00;5;5.00;0\n", "1 0 0 0 1 0");
    row("low above open", "100000;1.00;1.10;1.01;1.05;5;5.00;0\n", "1 0 0 0 1 0");
    row("low above close", "100000;1.05;1.10;1.01;1.00;5;5.00;0\n", "1 0 0 0 1 0");
    row("equal in other digits", "100000;1.0;1.00;1;1.000;5;5.00;0\n", "1 0 0 0 0 0");
    row("largest volume", "100000;1;1;1;1;2147483647;5;0\n", "1 0 0 0 0 0");
    row("too large a volume", "100000;1;1;1;1;2147483648;5;0\n", "1 0 0 0 0 1");
    row("too large an edited volume", "100000;1;1;1;1;5.0;2147483648;0\n", "1 1 0 0 0 1");
}

void TestDayFaults::findsFaults()
{
    QFETCH(const QByteArray, content);
    const DayHealth health = read(content).health;
    QTEST(QStringLiteral("%1 %2 %3 %4 %5 %6")
              .arg(health.bars)
              .arg(health.edited)
              .arg(health.duplicates)
              .arg(health.outOfOrder)
              .arg(health.prices)
              .arg(health.volume),
          "counts");
    QVERIFY(health.badLines.empty() && health.jumps.empty());
}

void TestDayFaults::measuresJumpsExactly_data()
{
    QTest::addColumn<QByteArray>("close");
    QTest::addColumn<QByteArray>("open");
    QTest::addColumn<int>("percent");
    QTest::addColumn<bool>("isJump");
    const auto row = [](const QByteArray& close, const QByteArray& open, int percent, bool isJump) {
        QTest::addRow("%s to %s, %d", close.constData(), open.constData(), percent)
            << close << open << percent << isJump;
    };
    const QByteArray tiny = "0." + QByteArray(254, '0') + "1";
    const QByteArray huge = "36028797018963967";
    row("100", "110", 10, false);
    row("100", "110.0000000000001", 10, true);
    row("100", "90.00", 10, false);
    row("100.00", "89.9", 10, true);
    row("-100", "-111", 10, true);
    row("-100", "-110", 10, false);
    row("100", "-100", 199, true);
    row("100", "-100", 200, false);
    row("0", "5", 10, false);
    row("0.00", "5", 0, false);
    row("5", "0", 99, true);
    row("5", "0", 100, false);
    row("1", "1.0", 0, false);
    row("1", "1.0000000000000001", 0, true);
    row(tiny, huge, 2147483647, true);
    row(huge, tiny, 99, true);
    row(huge, tiny, 100, false);
    row(huge, "-" + tiny, 100, true);
    row(huge, tiny, 101, false);
    row(tiny, tiny, 0, false);
    row(tiny, "0." + QByteArray(254, '0') + "2", 99, true);
    row(tiny, "0." + QByteArray(254, '0') + "2", 100, false);
}

void TestDayFaults::measuresJumpsExactly()
{
    QFETCH(const QByteArray, close);
    QFETCH(const QByteArray, open);
    QFETCH(const int, percent);
    QFETCH(const bool, isJump);
    const DayHealth health =
        read("100000;1;1;1;" + close + ";1;1;0\n100100;" + open + ";1;1;1;1;1;0\n", percent).health;
    QCOMPARE(health.bars, 2);
    QCOMPARE(health.jumps, isJump ? Lines{36060} : Lines{});
}

// The one in the line before, whatever its time; lines that are no bars do not come between.
void TestDayFaults::comparesWithTheBarBefore()
{
    const DayHealth health = read("100000;1;1;1;1;1;1;0\nnonsense\n110000;2;2;2;2;1;1;0\n"
                                  "103000;2;2;2;2;1;1;0\n104500;1;1;1;1;1;1;0\n")
                                 .health;
    QCOMPARE(health.jumps, (Lines{39600, 38700}));
    QCOMPARE(health.badLines, Lines{2});
}

void TestDayFaults::countsLines_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("bars");
    QTest::addColumn<Lines>("badLines");
    const QByteArray bar = "100000;1.00;1.10;0.90;1.00;5;5.00;0";
    const QByteArray mark = "\xef\xbb\xbf";
    QTest::newRow("last line without its end") << bar << 1 << Lines{};
    QTest::newRow("empty line") << bar + "\n\n" + bar + "\n" << 2 << Lines{2};
    QTest::newRow("empty last line") << bar + "\n\n" << 1 << Lines{2};
    QTest::newRow("carriage returns") << bar + "\r\n\r\n" + bar + "\r" << 2 << Lines{2};
    QTest::newRow("carriage return alone") << bar + "\n\r" << 1 << Lines{2};
    QTest::newRow("carriage return within") << bar + "\r\r\n" << 0 << Lines{1};
    QTest::newRow("line end of two characters alone") << QByteArray("\r\n") << 0 << Lines{1};
    QTest::newRow("three bytes with it") << QByteArray("1\r\n") << 0 << Lines{1};
    QTest::newRow("mark") << mark + bar + "\n" << 1 << Lines{};
    QTest::newRow("mark later") << bar + "\n" + mark + bar + "\n" << 1 << Lines{2};
    QTest::newRow("mark alone") << mark << 0 << Lines{};
    QTest::newRow("mark and a line end") << mark + "\n" << 0 << Lines{1};
    QTest::newRow("three line ends") << QByteArray("\n\n\n") << 0 << Lines{1, 2, 3};
    QTest::newRow("two, one with a carriage return") << QByteArray("\n\r\n") << 0 << Lines{1, 2};
    QTest::newRow("not UTF-8") << "\xff\n" + bar + "\n\xd0\xd0\n" << 1 << Lines{1, 3};
    QTest::newRow("bytes of a mark of UTF-16") << "\xff\xfe\n" + bar + "\n" << 1 << Lines{1};
    QTest::newRow("cut inside a character") << bar + "\n" + bar + "\xd0" << 1 << Lines{2};
    QTest::newRow("other characters") << "Цена\n" + bar + "\n" << 1 << Lines{1};
}

void TestDayFaults::countsLines()
{
    QFETCH(const QByteArray, content);
    const DayFile file = read(content);
    QTEST(file.health.bars, "bars");
    QTEST(file.health.badLines, "badLines");
    QVERIFY(!file.failure);
    QCOMPARE(file.health.day, QDate(2024, 1, 15));
}

void TestDayFaults::tellsWhatItCannotRead()
{
    const QString path = m_dir.filePath(QStringLiteral("missing"));
    const DayFile file = readDayFile(path, QDate(2024, 1, 15), 10);
    QVERIFY(file.failure);
    QCOMPARE(file.failure->path, path);
    QCOMPARE(file.failure->reason, UnreadFile::Reason::NotOpened);

    const QString large = m_dir.filePath(QStringLiteral("large"));
    testsupport::writeFile(large, "100000;1;1;1;1;1;1;0\n");
    QVERIFY(QFile::resize(large, qint64(1024) * 1024 * 1024 + 1));
    const DayFile tooLarge = readDayFile(large, QDate(2024, 1, 15), 10);
    QVERIFY(tooLarge.failure);
    QCOMPARE(tooLarge.failure->reason, UnreadFile::Reason::Broken);
    QVERIFY(!tooLarge.failure->message.isEmpty());
}

// The rest of its last line comes between two reads.
void TestDayFaults::tellsWhatIsWrittenMeanwhile()
{
    const QByteArray bar = "100000;1;1;1;1;1;1;0\n";
    const QString path = m_dir.filePath(QStringLiteral("day"));
    testsupport::writeFile(path, bar + "\r\n" + bar.first(4));
    bool isWritten = false;
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::ReadEnd, path, [&] {
        QFile file(path);
        isWritten = file.open(QIODevice::Append) && file.write(bar.mid(4)) == bar.size() - 4;
    });
    const DayFile file = readDayFile(path, QDate(2024, 1, 15), 10);
    QVERIFY(isWritten && file.failure);
    QCOMPARE(file.failure->path, path);
    QCOMPARE(file.failure->reason, UnreadFile::Reason::Changing);
}

QTEST_GUILESS_MAIN(TestDayFaults)

#include "tst_dayfaults.moc"
