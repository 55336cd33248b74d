// SPDX-License-Identifier: MIT
#include "support/plainbar.h"
#include "support/strictlog.h"

#include <vexdesk/history/recordline.h>

#include <QtCore/QMap>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

#include <algorithm>
#include <array>
#include <limits>

class TestRecordLine final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsWhatWasWritten();
    void writesAsATextStreamDoes();
    void hasRoomForTheLongestLine();
    void readsIncompleteLines_data();
    void readsIncompleteLines();
    void readsAnyTextWithoutThrowing_data();
    void readsAnyTextWithoutThrowing();
    void readsRandomLinesAsThePlainWay();
    void writesEverySecondOfADay();
    void skipsTheByteOrderMarkOfAFile();
    void splitsOnlyEightFields_data();
    void splitsOnlyEightFields();
    void takesAMarkWithinTheTextForText();
    void checksLines_data();
    void checksLines();
    void readsCheckedLinesWhole();
    void checksRandomLinesAsThePlainWay();
};

using testsupport::plainBar;
using vexdesk::checkedBar;
using vexdesk::splitRecordLine;
using vexdesk::storedBar;
using vexdesk::StoredBar;

namespace {

const QDate day(2018, 12, 14);
const QString sampleLine = QStringLiteral("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42");

// What is no time is midnight.
int plainSecond(const QString& line)
{
    const QTime time = plainBar(line, day).time;
    return time.isValid() ? time.msecsSinceStartOfDay() / 1000 : 0;
}

QString shown(const StoredBar& bar)
{
    QStringList fields{bar.time.isValid() ? bar.time.toString(QStringLiteral("hhmmss.zzz"))
                                          : QStringLiteral("no time")};
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close, bar.value})
        fields.append(number.toString());
    fields << QString::number(bar.volume) << QString::number(bar.openInterest);
    return fields.join(u';');
}

QByteArray written(const StoredBar& bar)
{
    std::array<char, vexdesk::maxRecordLine> line;
    return QByteArray(line.data(), vexdesk::writeRecordLine(line.data(), bar) - line.data());
}

bool isNumberOf(const QString& text, const char* form)
{
    const QRegularExpression whole(QRegularExpression::anchoredPattern(QLatin1String(form)));
    return whole.match(text).hasMatch();
}

bool isDecimal(const QString& text)
{
    return isNumberOf(text, "[+-]?[0-9]+(\\.[0-9]+)?") && decimal::fromText(text);
}

template <typename Integer>
bool isInteger(const QString& text)
{
    bool fits = false;
    const qint64 number = text.toLongLong(&fits);
    return isNumberOf(text, "[+-]?[0-9]+") && fits &&
           number >= std::numeric_limits<Integer>::min() &&
           number <= std::numeric_limits<Integer>::max();
}

enum class Kind { Bad, Imported, Edited };

// By regular expressions alone.
Kind plainKind(const QString& line)
{
    const QStringList fields = line.split(u';');
    const bool isBar = fields.size() == 8 &&
                       isNumberOf(fields[0], "([01][0-9]|2[0-3])[0-5][0-9][0-5][0-9]") &&
                       std::all_of(fields.begin() + 1, fields.begin() + 5, isDecimal) &&
                       isInteger<qint32>(fields[7]);
    if (isBar && isInteger<qint64>(fields[5]) && isDecimal(fields[6]))
        return Kind::Imported;
    if (isBar && isDecimal(fields[5]) && fields[5].contains(u'.') && isInteger<qint64>(fields[6]))
        return Kind::Edited;
    return Kind::Bad;
}

Kind kindOf(const QByteArray& line)
{
    const auto checked = checkedBar(line, day);
    return !checked ? Kind::Bad : checked->isEdited ? Kind::Edited : Kind::Imported;
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

} // namespace

void TestRecordLine::readsWhatWasWritten()
{
    const StoredBar bar = storedBar(sampleLine.toUtf8(), day);
    QCOMPARE(bar.date, day);
    QCOMPARE(bar.time, QTime(9, 30));

    QCOMPARE(written(bar), sampleLine.toUtf8() + '\n');
}

void TestRecordLine::writesAsATextStreamDoes()
{
    QRandomGenerator random(20181215);
    const auto number = [&random] {
        const qint64 mantissa = qint64(random.generate64()) >> (8 + random.bounded(56));
        return decimal(mantissa, random.bounded(random.bounded(4) == 0 ? 256 : 5));
    };
    for (int i = 0; i < 20000; ++i) {
        StoredBar bar;
        bar.date = day;
        if (random.bounded(10) != 0)
            bar.time = QTime::fromMSecsSinceStartOfDay(random.bounded(24 * 60 * 60 * 1000));
        for (decimal* const field : {&bar.open, &bar.high, &bar.low, &bar.close, &bar.value})
            *field = number();
        bar.volume = qint64(random.generate64()) >> random.bounded(64);
        bar.openInterest = qint32(random.generate()) >> random.bounded(32);
        QByteArray wanted;
        QTextStream stream(&wanted);
        stream << bar.time.toString(QStringLiteral("hhmmss"));
        for (const decimal& price : {bar.open, bar.high, bar.low, bar.close})
            stream << ';' << price.toString();
        stream << ';' << bar.volume << ';' << bar.value.toString() << ';' << bar.openInterest
               << '\n';
        stream.flush();
        QCOMPARE(written(bar), wanted);
    }
}

void TestRecordLine::hasRoomForTheLongestLine()
{
    StoredBar bar;
    bar.time = QTime(23, 59, 59);
    bar.open = bar.high = bar.low = bar.close = bar.value =
        decimal(decimal::minMantissa, decimal::maxScale);
    bar.volume = std::numeric_limits<qint64>::min();
    bar.openInterest = std::numeric_limits<qint32>::min();
    QCOMPARE(written(bar).size(), vexdesk::maxRecordLine);
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
    const StoredBar bar = storedBar(line.toUtf8(), day);
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
    const StoredBar bar = storedBar(line.toUtf8(), day);
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
        QCOMPARE(shown(storedBar(line.toUtf8(), day)), shown(plainBar(line, day)));
        QCOMPARE(splitRecordLine(line.toUtf8()).has_value(), line.count(u';') == 7);
        QCOMPARE(vexdesk::secondOfRecordLine(line.toUtf8()), plainSecond(line));
    }
}

void TestRecordLine::writesEverySecondOfADay()
{
    constexpr int secondsOfADay = 24 * 60 * 60;
    for (int second = 0; second < secondsOfADay; ++second) {
        const auto digits = vexdesk::plainTime(second);
        const QByteArray text(digits.data(), digits.size());
        if (text != QTime(0, 0).addSecs(second).toString(QStringLiteral("hhmmss")).toLatin1() ||
            vexdesk::secondOfRecordLine(text + ";1") != second ||
            vexdesk::secondOfRecordLine(text) != second)
            QFAIL(text.constData());
    }
}

void TestRecordLine::skipsTheByteOrderMarkOfAFile()
{
    QByteArray content = "\xef\xbb\xbf" + sampleLine.toUtf8() + "\n";
    QTextStream stream(&content);
    QCOMPARE(storedBar(stream.readLine().toUtf8(), day).time, QTime(9, 30));
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

// Two marked files, one behind the other: a time with a mark before it is none.
void TestRecordLine::takesAMarkWithinTheTextForText()
{
    const QByteArray mark = "\xef\xbb\xbf";
    const StoredBar bar = storedBar(mark + "100100;" + mark + "1;2;3;4;" + mark + "5;6;7", day);
    QVERIFY(!bar.time.isValid());
    QCOMPARE(bar.open, decimal::zero);
    QCOMPARE(bar.high.toString(), QStringLiteral("2"));
    QCOMPARE(bar.volume, 0);
    QCOMPARE(bar.openInterest, 7);
}

void TestRecordLine::checksLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("isBar");
    const auto row = [](const char* line, bool isBar) {
        QTest::newRow(line) << QByteArray(line) << isBar;
    };
    row("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42", true);
    row("093000;1.50;1.70;-0.05;1.60;1975307.20;1234567;-42", true);
    row("000000;1;2;3;4;5;6;7", true);
    row("235959;+1;-2;+3.0;-4.00;+5;+6;+7", true);
    row("093000;1;2;3;4;9223372036854775807;0;2147483647", true);
    row("093000;1;2;3;4;-9223372036854775808;0;-2147483648", true);
    row("093000;1;2;3;4;0.0;9223372036854775807;0", true);
    row("093000;1;2;3;4;00000000000000000000005;0;00000000000007", true);
    row("", false);
    row("093000;1;2;3;4;5;6", false);
    row("093000;1;2;3;4;5;6;7;", false);
    row("093000;1;2;3;4;5;6;", false);
    row("093000;;2;3;4;5;6;7", false);
    row("93000;1;2;3;4;5;6;7", false);
    row("0930000;1;2;3;4;5;6;7", false);
    row("240000;1;2;3;4;5;6;7", false);
    row("096000;1;2;3;4;5;6;7", false);
    row("093060;1;2;3;4;5;6;7", false);
    row("09:300;1;2;3;4;5;6;7", false);
    row(" 093000;1;2;3;4;5;6;7", false);
    row("093000;1.;2;3;4;5;6;7", false);
    row("093000;.1;2;3;4;5;6;7", false);
    row("093000;1e3;2;3;4;5;6;7", false);
    row("093000;1;2;3;36028797018963968;5;6;7", false);
    row("093000;1;2;3;4;9223372036854775808;0;0", false);
    row("093000;1;2;3;4;0.0;9223372036854775808;0", false);
    row("093000;1;2;3;4;5;6;2147483648", false);
    row("093000;1;2;3;4;5;6;-2147483649", false);
    row("093000;1;2;3;4;5.0;6.0;7", false);
    row("093000;1;2;3;4;5;36028797018963968;7", false);
    row("093000;1;2;3;4;+;6;7", false);
    row("093000;1;2;3;4;+-5;6;7", false);
    row("093000;1;2;3;4;--5;6;7", false);
    row("093000;1;2;3;4; 5;6;7", false);
    row("093000;1;2;3;4;5;6;7\r", false);
}

void TestRecordLine::checksLines()
{
    QFETCH(const QByteArray, line);
    QTEST(checkedBar(line, day).has_value(), "isBar");
}

void TestRecordLine::readsCheckedLinesWhole()
{
    const auto imported = checkedBar("093000;1.50;1.70;-0.05;1.60;12345678901;20.50;-42", day);
    const auto edited = checkedBar("093000;1.50;1.70;-0.05;1.60;20.50;12345678901;-42", day);
    QVERIFY(imported && !imported->isEdited);
    QVERIFY(edited && edited->isEdited);
    for (const StoredBar& bar : {imported->bar, edited->bar}) {
        QCOMPARE(bar.date, day);
        QCOMPARE(written(bar), QByteArray("093000;1.50;1.70;-0.05;1.60;12345678901;20.50;-42\n"));
    }
}

void TestRecordLine::checksRandomLinesAsThePlainWay()
{
    QRandomGenerator random(20181216);
    QMap<Kind, int> seen;
    for (int i = 0; i < 20000; ++i) {
        QStringList fields = QStringLiteral("093000;1.50;1.70;-0.05;1.60;12;20.50;-42").split(u';');
        if (random.bounded(3) == 0)
            fields.swapItemsAt(5, 6);
        for (int changes = random.bounded(3); changes > 0; --changes)
            fields[random.bounded(8)] = randomField(random);
        const QString line = fields.join(u';');
        const Kind kind = plainKind(line);
        ++seen[kind];
        if (kindOf(line.toUtf8()) != kind)
            QFAIL(qPrintable(line));
    }
    QVERIFY(seen[Kind::Bad] > 1000 && seen[Kind::Imported] > 1000 && seen[Kind::Edited] > 1000);
}

QTEST_GUILESS_MAIN(TestRecordLine)
#include "tst_recordline.moc"
