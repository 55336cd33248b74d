// SPDX-License-Identifier: MIT
#include "linefault.h"

#include "series.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

using tadata::faultOf;
using tadata::LineFault;
using testsupport::detailsOfSeries;
using testsupport::with;

class TestLineFault final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void findsTheFirstWrongField_data();
    void findsTheFirstWrongField();
    void saysWhichSeparatorsWouldDo_data();
    void saysWhichSeparatorsWouldDo();
    void saysWhichFormsAFieldHas_data();
    void saysWhichFormsAFieldHas();
    void looksAtSoManyColumns();
};

namespace {

ImportDetails allColumns()
{
    return with(with(with(with(detailsOfSeries(2), ColumnRole::Volume, 6), ColumnRole::Value, 7),
                     ColumnRole::OpenInterest, 8),
                ColumnRole::Ticker, 9);
}

} // namespace

void TestLineFault::findsTheFirstWrongField_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<ColumnRole>("role");
    QTest::addColumn<QString>("field");
    const auto row = [](const char* line, ColumnRole role, const char* field) {
        QTest::newRow(line) << QString::fromUtf8(line) << role << QString::fromUtf8(field);
    };
    row("20240115;100000;1;2;0;1;5;2.5;7;X", ColumnRole::None, "");
    row("20240115;100000;1;2;0;1; -5 ;-2.5;-7;X;more", ColumnRole::None, "");
    row("20240230;x;1;2;0;1;5;2.5;7;X", ColumnRole::Date, "20240230");
    row(";x;1;2;0;1;5;2.5;7;X", ColumnRole::Date, "");
    row("20240115;246000;x;2;0;1;5;2.5;7;X", ColumnRole::Time, "246000");
    row("20240115;100000;x;y;0;1;5;2.5;7;X", ColumnRole::Open, "x");
    row("20240115;100000;1;1,5;z;1;5;2.5;7;X", ColumnRole::High, "1,5");
    row("20240115;100000;1;2;;z;5;2.5;7;X", ColumnRole::Low, "");
    row("20240115;100000;1;2;0;1e3;x;2.5;7;X", ColumnRole::Close, "1e3");
    // It has room for its digits, but not for two more behind the point.
    row("20240115;100000;1;2;0;9999999999999999;5;2.5;7;X", ColumnRole::Close, "9999999999999999");
    row("20240115;100000;1;2;0;1;5.0;x;7;X", ColumnRole::Volume, "5.0");
    row("20240115;100000;1;2;0;1;9223372036854775808;x;7;X", ColumnRole::Volume,
        "9223372036854775808");
    row("20240115;100000;1;2;0;1;5;x;y;X", ColumnRole::Value, "x");
    row("20240115;100000;1;2;0;1;5;2.5;2147483648;", ColumnRole::OpenInterest, "2147483648");
    row("20240115;100000;1;2;0;1;5;2.5;7;", ColumnRole::Ticker, "");
    row("20240115;100000;1;2;0;1;5;2.5;7;.", ColumnRole::Ticker, ".");
    row("20240115;100000;1;2;0;1;5;2.5;7;..", ColumnRole::Ticker, "..");
    row("20240115;100000;1;2;0;1;5;2.5;7;...", ColumnRole::None, "");
    row("20240115;100000;1;2;0;1;5;2.5;7;a/b", ColumnRole::Ticker, "a/b");
    row("20240115;100000;1;2;0;1;5;2.5;7;\xef\xbf\xbd", ColumnRole::Ticker, "\xef\xbf\xbd");
}

void TestLineFault::findsTheFirstWrongField()
{
    QFETCH(const QString, line);
    QFETCH(const ColumnRole, role);
    QFETCH(const QString, field);
    const LineFault fault = faultOf(line, allColumns());
    QCOMPARE(fault.role, role);
    QCOMPARE(line.mid(fault.begin, fault.length), field);
    QCOMPARE(fault.length, field.size());
    QCOMPARE(fault.wanted, 10);
    QCOMPARE(fault.columns, line.count(u';') + 1);
    // It stands behind what is right, and so not at the beginning.
    QCOMPARE(fault.begin > 0, role != ColumnRole::None && role != ColumnRole::Date);
}

void TestLineFault::saysWhichSeparatorsWouldDo_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("separators");
    QTest::addColumn<int>("columns");
    const auto row = [](const char* line, const char* separators, int columns) {
        QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(separators) << columns;
    };
    row("20240115,100000,1,2,0,1", ",", 1);
    row("20240115,100000,1,2,0", "", 1);
    row("20240115;100000;1;2;0", "", 5);
    row("20240115\t100000\t1\t2\t0\t1\t7", "\t", 1);
    row("20240115 100000 1 2 0 1", " ", 1);
    row("a|b|c|d|e|f g h i j k", " |", 1);
    row("a;b,c,d,e,f,g", ",", 2);
}

void TestLineFault::saysWhichSeparatorsWouldDo()
{
    QFETCH(const QString, line);
    QFETCH(const int, columns);
    const LineFault fault = faultOf(line, detailsOfSeries(2));
    QCOMPARE(fault.role, ColumnRole::None);
    QTEST(fault.fitting.join(QString()), "separators");
    QCOMPARE(fault.columns, columns);
    QCOMPARE(fault.wanted, 6);
}

void TestLineFault::saysWhichFormsAFieldHas_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("forms");
    const auto row = [](const char* line, const char* forms) {
        QTest::newRow(line) << QString::fromUtf8(line) << QString::fromUtf8(forms);
    };
    row("15.01.2024;100000;1;2;0;1", "dd.MM.yyyy");
    row("150124;100000;1;2;0;1", "yyMMdd ddMMyy");
    row("text;100000;1;2;0;1", "");
    row("20240115;10:00;1;2;0;1", "hh:mm");
    row("20240115;1000;1;2;0;1", "hhmm");
    row("20240115;20240115;1;2;0;1", "");
    row("20240115;100000;10:00;2;0;1", "");
}

void TestLineFault::saysWhichFormsAFieldHas()
{
    QFETCH(const QString, line);
    QTEST(faultOf(line, detailsOfSeries(2)).fitting.join(u' '), "forms");
}

// A damaged file's line may have any number of them.
void TestLineFault::looksAtSoManyColumns()
{
    QCOMPARE(faultOf(QString(998, u';'), {}).columns, 1);
    ImportDetails details = detailsOfSeries(2);
    QCOMPARE(faultOf(QString(998, u';'), details).columns, 999);
    QCOMPARE(faultOf(QString(999, u';'), details).columns, 1000);
    QCOMPARE(faultOf(QString(2000, u';'), details).columns, 1000);
    details.separator = QStringLiteral("::");
    const LineFault fault = faultOf(QStringLiteral("20240115::100000::1::x::0::1"), details);
    QCOMPARE(fault.role, ColumnRole::High);
    QCOMPARE(fault.begin, 21);
    details.columns = {{0, 0}};
    QCOMPARE(faultOf(QStringLiteral("text"), details).role, ColumnRole::None);
}

QTEST_GUILESS_MAIN(TestLineFault)
#include "tst_linefault.moc"
