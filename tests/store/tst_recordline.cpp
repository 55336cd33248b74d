#include "store/recordline.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

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
    void readsRandomLinesAsThePlainWay();
    void skipsTheByteOrderMarkOfAFile();
    void splitsOnlyEightFields_data();
    void splitsOnlyEightFields();
    void rewritesWithValueBeforeVolume();
    void rewritingTwiceRestoresTheOrder();
    void rewritingWithoutRowsRemovesTheFile();
    void rewritingWhatCannotBeOpenedChangesNothing();
    void rewritesFieldsAsTheyAre();
    void rewritingMakesNoFile_data();
    void rewritingMakesNoFile();
    void rewritingKeepsPermissions_data();
    void rewritingKeepsPermissions();
    void rewritingLeavesAReadOnlyFileAlone_data();
    void rewritingLeavesAReadOnlyFileAlone();
    void rewritingFollowsALink();
    void rewritingIsWholeOrNotAtAll();
};

using tadata::barFromRecordLine;
using vexdesk::splitRecordLine;

namespace {

const QDate day(2018, 12, 14);
const QString sampleLine = QStringLiteral("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42");

// The line taken apart by the framework alone.
BarDescription plainBar(const QString& line)
{
    const QStringList fields = line.split(u';');
    const auto number = [&fields](int field) {
        return decimal::fromText(fields.value(field)).value_or(decimal::zero);
    };
    BarDescription bar;
    bar.valid = true;
    bar.date = day;
    bar.time = QTime::fromString(fields.value(0), QStringLiteral("hhmmss"));
    bar.open = number(1);
    bar.high = number(2);
    bar.low = number(3);
    bar.close = number(4);
    bar.volume = fields.value(5).toInt();
    bar.value = number(6);
    bar.openInterest = fields.value(7).toInt();
    return bar;
}

QString shown(const BarDescription& bar)
{
    QStringList fields{bar.time.isValid() ? bar.time.toString(QStringLiteral("hhmmss.zzz"))
                                          : QStringLiteral("no time")};
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close, bar.value})
        fields.append(number.toString());
    fields << QString::number(bar.volume) << QString::number(bar.openInterest);
    return fields.join(u';');
}

// Fields as imports write them, and such that come near to them.
QString randomField(QRandomGenerator& random)
{
    static const QStringList strange{
        QString(),
        QStringLiteral("0"),
        QStringLiteral("-0"),
        QStringLiteral("+7"),
        QStringLiteral(" 5"),
        QStringLiteral("5 "),
        QStringLiteral("\t5"),
        QStringLiteral("000000001"),
        QStringLiteral("0000000000001"),
        QStringLiteral("2147483647"),
        QStringLiteral("2147483648"),
        QStringLiteral("-2147483648"),
        QStringLiteral("1,000"),
        QStringLiteral("0x10"),
        QStringLiteral("1e3"),
        QStringLiteral("5."),
        QStringLiteral(".5"),
        QStringLiteral("240000"),
        QStringLiteral("235960"),
        QStringLiteral("9:30:0"),
        QStringLiteral("93000"),
        QStringLiteral("0930001"),
        QStringLiteral("-93000"),
        QString::fromUtf8("٠٩٣٠٠٠"),
        QString::fromUtf8("цена"),
        QString::fromUtf8("１２"),
        QStringLiteral("36028797018963967"),
        QStringLiteral("36028797018963968"),
        QStringLiteral("0.0000000000000001"),
    };
    switch (random.bounded(4)) {
    case 0:
        return strange.at(random.bounded(static_cast<int>(strange.size())));
    case 1:
        return QString::number(random.bounded(1000000)).rightJustified(6, u'0');
    case 2:
        return QString::number(random.bounded(-100000, 100000)) + u'.' +
               QString::number(random.bounded(100)).rightJustified(2, u'0');
    default:
        return QString::number(random.bounded(1 << (1 + random.bounded(30))));
    }
}

QByteArray rewritten(const QByteArray& line)
{
    QByteArray content;
    tadata::appendRewritten(content, *splitRecordLine(line));
    return content;
}

// While it lives, no file of this process grows beyond a size: what a full disk looks like.
class FileSizeLimit final
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{bytes, m_before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace

void TestRecordLine::readsWhatWasWritten()
{
    const BarDescription bar = barFromRecordLine(sampleLine.toUtf8(), day);
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
    const BarDescription bar = barFromRecordLine(line.toUtf8(), day);
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
    const BarDescription bar = barFromRecordLine(line.toUtf8(), day);
    QVERIFY(bar.valid);
    QCOMPARE(bar.date, day);
    QCOMPARE(bar.open, decimal::zero);
    QCOMPARE(bar.open.scale(), 0);
}

void TestRecordLine::readsRandomLinesAsThePlainWay()
{
    QRandomGenerator random(20181214);
    for (int i = 0; i < 20000; ++i) {
        QStringList fields;
        const int count = random.bounded(4) == 0 ? random.bounded(11) : 8;
        for (int field = 0; field < count; ++field)
            fields.append(randomField(random));
        const QString line = fields.join(u';');
        QCOMPARE(shown(barFromRecordLine(line.toUtf8(), day)), shown(plainBar(line)));
        QCOMPARE(vexdesk::isRecordLine(line.toUtf8()), splitRecordLine(line.toUtf8()).has_value());
    }
}

void TestRecordLine::skipsTheByteOrderMarkOfAFile()
{
    QByteArray content = "\xef\xbb\xbf" + sampleLine.toUtf8() + "\n";
    QTextStream stream(&content);
    QCOMPARE(barFromRecordLine(stream.readLine().toUtf8(), day).time, QTime(9, 30));
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

void TestRecordLine::rewritesFieldsAsTheyAre()
{
    QCOMPARE(rewritten(";;;;;;;"), QByteArray(";;;;;;;\n"));
    QCOMPARE(rewritten("t; o ;h;l;c;1e3;+5.;Ё\r"), QByteArray("t; o ;h;l;c;+5.;1e3;Ё\r\n"));
}

void TestRecordLine::rewritingMakesNoFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("with rows") << rewritten(sampleLine.toUtf8());
    QTest::newRow("without rows") << QByteArray();
}

void TestRecordLine::rewritingMakesNoFile()
{
    QFETCH(const QByteArray, content);
    const QTemporaryDir store;
    const QDir dir(store.path());
    QVERIFY(!tadata::replaceDayFile(dir, QStringLiteral("20181214_60.iss"), content));
    QVERIFY(dir.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    const QDir missing(dir.filePath(QStringLiteral("missing")));
    QVERIFY(!tadata::replaceDayFile(missing, QStringLiteral("20181214_60.iss"), content));
    QVERIFY(!missing.exists());
}

void TestRecordLine::rewritingKeepsPermissions_data()
{
    QTest::addColumn<QFile::Permissions>("permissions");
    const QFile::Permissions own =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QTest::newRow("owner") << own;
    QTest::newRow("group") << (own | QFile::ReadGroup | QFile::WriteGroup);
    QTest::newRow("all") << (own | QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther);
}

void TestRecordLine::rewritingKeepsPermissions()
{
    QFETCH(const QFile::Permissions, permissions);
    const QTemporaryDir store;
    const QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    const QString path = dir.filePath(name);
    testsupport::writeFile(path, "old\n");
    QVERIFY(QFile::setPermissions(path, permissions));
    QCOMPARE(QFile::permissions(path), permissions);
    QVERIFY(tadata::replaceDayFile(dir, name, "new\n"));
    QCOMPARE(testsupport::readFile(path), QByteArray("new\n"));
    QCOMPARE(QFile::permissions(path), permissions);
}

void TestRecordLine::rewritingLeavesAReadOnlyFileAlone_data()
{
    rewritingMakesNoFile_data();
}

void TestRecordLine::rewritingLeavesAReadOnlyFileAlone()
{
    QFETCH(const QByteArray, content);
    if (::geteuid() == 0)
        QSKIP("To the superuser no file is read-only.");
    const QTemporaryDir store;
    const QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    const QString path = dir.filePath(name);
    testsupport::writeFile(path, "old\n");
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadUser));
    QVERIFY(!tadata::replaceDayFile(dir, name, content));
    QCOMPARE(testsupport::readFile(path), QByteArray("old\n"));
}

// A series on another disk: the link stays one.
void TestRecordLine::rewritingFollowsALink()
{
    const QTemporaryDir store;
    const QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("bars"));
    testsupport::writeFile(target, "old\n");
    QVERIFY(QFile::link(target, dir.filePath(name)));
    QVERIFY(tadata::replaceDayFile(dir, name, "new\n"));
    QVERIFY(QFileInfo(dir.filePath(name)).isSymLink());
    QCOMPARE(testsupport::readFile(target), QByteArray("new\n"));
}

void TestRecordLine::rewritingIsWholeOrNotAtAll()
{
    const QTemporaryDir store;
    const QDir dir(store.path());
    const QString name = QStringLiteral("20181214_60.iss");
    const QByteArray old(50'000, 'o');
    testsupport::writeFile(dir.filePath(name), old);
    bool isReplaced = true;
    {
        const FileSizeLimit limit(16'384);
        isReplaced = tadata::replaceDayFile(dir, name, QByteArray(40'000, 'n'));
    }
    QVERIFY(!isReplaced);
    QCOMPARE(testsupport::readTree(dir), (QMap<QString, QByteArray>{{name, old}}));
}

QTEST_GUILESS_MAIN(TestRecordLine)
#include "tst_recordline.moc"
