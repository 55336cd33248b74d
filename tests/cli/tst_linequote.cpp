// SPDX-License-Identifier: MIT
// What follows the message of a wrong line.

#include "linequote.h"

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <algorithm>

namespace {

ImportDetails details()
{
    ImportDetails details;
    details.separator = QStringLiteral(",");
    details.dateFormat = QStringLiteral("yyyyMMdd");
    details.timeFormat = QStringLiteral("hhmmss");
    for (qint32 role = 1; role <= 9; ++role)
        details.columns.insert(role, role - 1);
    return details;
}

} // namespace

class TestLineQuote final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void marksTheWrongField_data();
    void marksTheWrongField();
    void isAsWideAsTheScreen_data();
    void isAsWideAsTheScreen();
    void asksForColumns();
    void knowsAHeader();
};

void TestLineQuote::marksTheWrongField_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("advice");
    const auto row = [](const char* line, const char* field, const char* advice) {
        QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(field)
                            << QString::fromUtf8(advice);
    };
    row("15.01.2024,100000,1,1,1,1,1,1,1", "15.01.2024",
        "date: нужно yyyyMMdd; похоже на dd.MM.yyyy: --date-format dd.MM.yyyy");
    row("2024-01-15,100000,1,1,1,1,1,1,1", "2024-01-15",
        "date: нужно yyyyMMdd; похоже на yyyy-MM-dd: --date-format yyyy-MM-dd");
    row("01/02/24,100000,1,1,1,1,1,1,1", "01/02/24",
        "date: нужно yyyyMMdd; похоже на dd/MM/yy или MM/dd/yy: --date-format dd/MM/yy");
    row("tomorrow,100000,1,1,1,1,1,1,1", "tomorrow", "date: нужно yyyyMMdd");
    row("20240115,10:00,1,1,1,1,1,1,1", "10:00",
        "time: нужно hhmmss; похоже на hh:mm: --time-format hh:mm");
    row("20240115,100000,1.5,x,1,1,1,1,1", "x", "high: нужно число, например 1250.75");
    row("20240115,100000,1, 2,1,1,1,1,1", " 2",
        "high: нужно число, например 1250.75; вокруг него пробелы");
    row("20240115,100000,1,1,\"1\",1,1,1,1", "\"1\"",
        "low: нужно число, например 1250.75; оно в кавычках");
    row("20240115,100000,1,1,1,1,1.5,1,1", "1.5", "volume: нужно целое число, например 1250");
    row("20240115,100000,1,1,1,1,1,,1", "", "value: нужно число, например 1250.75; поле пустое");
    row("20240115,100000,1,1,1,1,1,1,4294967296", "4294967296",
        "oi: нужно целое число, например 1250");
}

void TestLineQuote::marksTheWrongField()
{
    QFETCH(const QString, line);
    QFETCH(const QString, field);
    QFETCH(const QString, advice);
    const QStringList lines = tadata::cli::quotedLine(line, 7, details(), 80).split(u'\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0], "  " + line);
    const qsizetype begin = lines[1].indexOf(u'^');
    QCOMPARE(lines[1], QString(begin, u' ') + QString(std::max<qsizetype>(field.size(), 1), u'^'));
    QCOMPARE(lines[0].mid(begin, field.size()), field);
    QCOMPARE(lines[2], "  " + advice);
}

void TestLineQuote::isAsWideAsTheScreen_data()
{
    QTest::addColumn<QString>("line");
    const QString rest = QStringLiteral(",") + QString(500, u'z');
    QTest::newRow("at the beginning") << "wrong,100000,1,1,1,1,1,1,1" + rest;
    QTest::newRow("in the middle") << "20240115," + QString(200, u'1') + rest + ",1,1,1,1,1,1";
    QTest::newRow("control characters") << "wro\x1b[1m\tng,100000,1,1,1,1,1,1,1" + rest;
}

void TestLineQuote::isAsWideAsTheScreen()
{
    QFETCH(const QString, line);
    for (const int width : {30, 40, 80, 200}) {
        const QStringList lines = tadata::cli::quotedLine(line, 7, details(), width).split(u'\n');
        QVERIFY(lines[0].size() <= width);
        QVERIFY(lines[1].size() <= width);
        QVERIFY(lines[0].contains(u'…'));
        QVERIFY(lines[1].contains(u'^'));
        QVERIFY(!lines[0].contains(u'\x1b') && !lines[0].contains(u'\t'));
    }
}

void TestLineQuote::asksForColumns()
{
    QCOMPARE(
        tadata::cli::quotedLine(QStringLiteral("20240115;100000;1;1;1;1;1;1;1"), 2, details(), 80),
        QStringLiteral("  20240115;100000;1;1;1;1;1;1;1\n  столбцов: 1, нужно: 9; похоже на "
                       "другой разделитель: --separator semicolon"));
    QCOMPARE(tadata::cli::quotedLine(QStringLiteral("20240115,100000"), 2, details(), 80),
             QStringLiteral("  20240115,100000\n  столбцов: 2, нужно: 9"));
    // Nothing is wrong with the fields of a line whose sum does not fit.
    QCOMPARE(
        tadata::cli::quotedLine(QStringLiteral("20240115,100000,1,1,1,1,1,1,1"), 2, details(), 80),
        QStringLiteral("  20240115,100000,1,1,1,1,1,1,1"));
}

void TestLineQuote::knowsAHeader()
{
    const QString header = QStringLiteral("d,t,o,h,l,c,v,m,i");
    QVERIFY(tadata::cli::quotedLine(header, 1, details(), 80)
                .endsWith(QStringLiteral("похоже на заголовок: уберите --no-header")));
    // A bar whose date is wrong is a bar.
    for (const char* line : {"20230229,100000,1,1,1,1,1,1,1", "9.02.24,100000,1,1,1,1,1,1,1"})
        QVERIFY(!tadata::cli::quotedLine(QString::fromUtf8(line), 1, details(), 80)
                     .contains(QStringLiteral("заголовок")));
    QVERIFY(
        !tadata::cli::quotedLine(header, 2, details(), 80).contains(QStringLiteral("заголовок")));
}

QTEST_GUILESS_MAIN(TestLineQuote)
#include "tst_linequote.moc"
