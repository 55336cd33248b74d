#include "store/recordline.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

class TestRecordLine final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsWhatWasWritten();
    void readsIncompleteLines_data();
    void readsIncompleteLines();
    void readsAnyTextWithoutThrowing_data();
    void readsAnyTextWithoutThrowing();
    void skipsTheByteOrderMarkOfAFile();
    void splitsOnlyEightFields_data();
    void splitsOnlyEightFields();
    void rewritesWithValueBeforeVolume();
    void rewritingTwiceRestoresTheOrder();
    void rewritingWithoutRowsRemovesTheFile();
    void rewritingWhatCannotBeOpenedChangesNothing();
};

using tadata::barFromRecordLine;
using tadata::splitRecordLine;

namespace {

const QDate day(2018, 12, 14);
const QString sampleLine = QStringLiteral("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42");

QByteArray rewritten(const QByteArray& line)
{
    QByteArray content;
    tadata::appendRewritten(content, *splitRecordLine(line));
    return content;
}

} // namespace

void TestRecordLine::readsWhatWasWritten()
{
    const BarDescription bar = barFromRecordLine(sampleLine, day);
    QVERIFY(bar.valid);
    QCOMPARE(bar.date, day);
    QCOMPARE(bar.time, QTime(9, 30));

    QString text;
    QTextStream stream(&text);
    stream << bar;
    QCOMPARE(text, sampleLine + u'\n');
}

void TestRecordLine::readsIncompleteLines_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<qint64>("volume");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("openInterest");

    const QString prices = QStringLiteral("093000;1;2;3;4");
    QTest::newRow("five fields") << prices << qint64(0) << QStringLiteral("0") << 0;
    QTest::newRow("six fields") << prices + ";7" << qint64(7) << QStringLiteral("0") << 0;
    QTest::newRow("seven fields") << prices + ";7;8.50" << qint64(7) << QStringLiteral("8.50") << 0;
    QTest::newRow("eight fields") << prices + ";7;8.50;9" << qint64(7) << QStringLiteral("8.50")
                                  << 9;
    QTest::newRow("nine fields") << prices + ";7;8.50;9;10" << qint64(7) << QStringLiteral("8.50")
                                 << 9;
    QTest::newRow("empty fields") << prices + ";;;" << qint64(0) << QStringLiteral("0") << 0;
    QTest::newRow("largest 32-bit volume")
        << prices + ";2147483647;0;0" << qint64(2147483647) << QStringLiteral("0") << 0;
    QTest::newRow("volume beyond 32 bits")
        << prices + ";3000000000;0;0" << qint64(0) << QStringLiteral("0") << 0;
    QTest::newRow("open interest beyond 32 bits")
        << prices + ";1;2;3000000000" << qint64(1) << QStringLiteral("2") << 0;
    QTest::newRow("no numbers") << prices + ";a;b;c" << qint64(0) << QStringLiteral("0") << 0;
}

void TestRecordLine::readsIncompleteLines()
{
    QFETCH(const QString, line);
    const BarDescription bar = barFromRecordLine(line, day);
    QCOMPARE(bar.close.toString(), QStringLiteral("4"));
    QTEST(bar.volume, "volume");
    QTEST(bar.value.toString(), "value");
    QTEST(int(bar.openInterest), "openInterest");
}

void TestRecordLine::readsAnyTextWithoutThrowing_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blank") << QStringLiteral(" ");
    QTest::newRow("words") << QStringLiteral("a;b;c;d;e;f;g;h");
    QTest::newRow("separators") << QStringLiteral(";;;;;;;;;;");
    QTest::newRow("too large a price") << QStringLiteral("093000;99999999999999999999;1;1;1;1;1;1");
    QTest::newRow("carriage return") << QStringLiteral("093000\r;\r;\r;\r;\r;\r;\r;\r");
}

void TestRecordLine::readsAnyTextWithoutThrowing()
{
    QFETCH(const QString, line);
    const BarDescription bar = barFromRecordLine(line, day);
    QVERIFY(bar.valid);
    QCOMPARE(bar.date, day);
    QCOMPARE(bar.open, decimal::zero);
    QCOMPARE(bar.open.scale(), 0);
}

void TestRecordLine::skipsTheByteOrderMarkOfAFile()
{
    QByteArray content = "\xef\xbb\xbf" + sampleLine.toUtf8() + "\n";
    QTextStream stream(&content);
    QCOMPARE(barFromRecordLine(stream.readLine(), day).time, QTime(9, 30));
}

void TestRecordLine::splitsOnlyEightFields_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("empty line") << QString() << false;
    QTest::newRow("seven") << QStringLiteral("1;2;3;4;5;6;7") << false;
    QTest::newRow("eight") << QStringLiteral("1;2;3;4;5;6;7;8") << true;
    QTest::newRow("eight empty ones") << QStringLiteral(";;;;;;;") << true;
    QTest::newRow("nine") << QStringLiteral("1;2;3;4;5;6;7;8;") << false;
}

void TestRecordLine::splitsOnlyEightFields()
{
    QFETCH(const QString, line);
    QTEST(splitRecordLine(line.toUtf8()).has_value(), "accepted");
}

void TestRecordLine::rewritesWithValueBeforeVolume()
{
    const QTemporaryDir store;
    QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    testsupport::writeFile(dir.filePath(name), "old content that is longer than what comes\n");

    QVERIFY(tadata::replaceDayFile(dir, name, rewritten(sampleLine.toUtf8())));
    QCOMPARE(testsupport::readFile(dir.filePath(name)),
             QByteArray("093000;1.50;1.70;-0.05;1.60;1975307.20;1234567;-42\n"));
}

void TestRecordLine::rewritingTwiceRestoresTheOrder()
{
    const QTemporaryDir store;
    QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    testsupport::writeFile(dir.filePath(name), sampleLine.toUtf8() + "\n");
    for (int pass = 0; pass < 2; ++pass) {
        const QByteArray content = testsupport::readFile(dir.filePath(name));
        QVERIFY(tadata::replaceDayFile(dir, name, rewritten(content.chopped(1))));
    }
    QCOMPARE(testsupport::readFile(dir.filePath(name)), sampleLine.toUtf8() + "\n");
}

void TestRecordLine::rewritingWithoutRowsRemovesTheFile()
{
    const QTemporaryDir store;
    QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    testsupport::writeFile(dir.filePath(name), sampleLine.toUtf8());
    QVERIFY(tadata::replaceDayFile(dir, name, QByteArray()));
    QVERIFY(!QFile::exists(dir.filePath(name)));
}

void TestRecordLine::rewritingWhatCannotBeOpenedChangesNothing()
{
    const QTemporaryDir store;
    QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    QVERIFY(dir.mkdir(name));
    QVERIFY(!tadata::replaceDayFile(dir, name, QByteArray()));
    QVERIFY(QFileInfo(dir.filePath(name)).isDir());
}

QTEST_GUILESS_MAIN(TestRecordLine)
#include "tst_recordline.moc"
