// SPDX-License-Identifier: MIT
#include <vexdesk/database/indexsort.h>
#include <vexdesk/database/masterindex.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <cmath>
#include <functional>
#include <limits>
#include <random>

using vexdesk::FieldType;

Q_DECLARE_METATYPE(std::function<void(Field&)>)

namespace {

using Assignment = std::function<void(Field&)>;

template <typename T>
Assignment value(const T& assigned)
{
    return [assigned](Field& field) { field = assigned; };
}

int sign(int number)
{
    return (number > 0) - (number < 0);
}

constexpr int columnCount = 4;

// Three integer columns, as a scan compares them, and a text.
std::unique_ptr<Table> integerTable()
{
    return std::make_unique<Table>(QStringLiteral("t"),
                                   QList<Table::Column>{{"a", FieldType::Int32},
                                                        {"b", FieldType::Int32},
                                                        {"c", FieldType::Int64},
                                                        {"d", FieldType::Code}});
}

Record makeRow(const Table& table, std::optional<int> a, std::optional<int> b,
               std::optional<long long> c)
{
    Record row(&table);
    if (a)
        row.field(0) = *a;
    if (b)
        row.field(1) = *b;
    if (c)
        row.field(2) = *c;
    return row;
}

template <typename Action>
QString thrownBy(Action action)
{
    try {
        action();
    } catch (const Exception& error) {
        return error.message();
    }
    return QString();
}

} // namespace

class MasterIndexTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void comparesOneColumn_data();
    void comparesOneColumn();
    void absentComesFirst_data();
    void absentComesFirst();
    void comparesColumnsInTheirOrder();
    void theQuickWayAgrees();
    void comparesColumnsOfAWideTable();
    void noColumnsMakeAllRowsEqual();
    void theNullRecordComesFirst();
    void outlivesTheTable();
    void wrongColumnsAreRefused();
    void findsEveryRow();
    void findsNothingThatIsNotThere();
    void findsByTheFirstPartsOfTheKey();
    void findsAmongAbsentValues();
    void findsByOtherTypes();
    void keysNeedAnOrderOfTheirTypes();
};

void MasterIndexTest::comparesOneColumn_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<Assignment>("left");
    QTest::addColumn<Assignment>("right");
    QTest::addColumn<int>("result");
    const auto add = [](const char* name, FieldType type, const Assignment& left,
                        const Assignment& right, int result) {
        QTest::newRow(name) << static_cast<int>(type) << left << right << result;
    };
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    constexpr long long leastLong = std::numeric_limits<long long>::min();
    constexpr long long mostLong = std::numeric_limits<long long>::max();
    const double nan = std::nan("");
    const auto text = [](const char16_t* characters) {
        return value(QString::fromUtf16(characters));
    };

    add("int32", FieldType::Int32, value(1), value(2), -1);
    add("int32 equal", FieldType::Int32, value(-5), value(-5), 0);
    add("int32 ends", FieldType::Int32, value(least), value(most), -1);
    add("int64", FieldType::Int64, value(3000000000LL), value(2000000000LL), 1);
    add("int64 equal", FieldType::Int64, value(mostLong), value(mostLong), 0);
    add("int64 ends", FieldType::Int64, value(leastLong), value(mostLong), -1);
    add("int64 differs in the upper half", FieldType::Int64, value(1LL << 32), value(0LL), 1);
    add("double", FieldType::Double, value(0.5), value(0.25), 1);
    add("double zeros", FieldType::Double, value(-0.0), value(0.0), 0);
    add("double NaN", FieldType::Double, value(nan), value(-1e300), -1);
    add("double NaNs", FieldType::Double, value(nan), value(nan), 0);
    add("decimal", FieldType::Decimal, value(decimal(15, 1)), value(decimal(151, 2)), -1);
    add("decimal scales", FieldType::Decimal, value(decimal(15, 1)), value(decimal(150, 2)), 0);
    add("xdecimal", FieldType::XDecimal, value(xdecimal(mostLong)), value(xdecimal(-1)), 1);
    add("xdecimal scales", FieldType::XDecimal, value(xdecimal(1)), value(xdecimal(100, 2)), 0);
    add("datetime", FieldType::DateTime, value(datetime(-1)), value(datetime(0)), -1);
    add("datetime equal", FieldType::DateTime, value(datetime(5)), value(datetime(5)), 0);
    for (const FieldType type : {FieldType::Code, FieldType::Text}) {
        add("text", type, text(u"ALFA"), text(u"BETA"), -1);
        add("text equal", type, text(u"ALFA"), text(u"ALFA"), 0);
        add("text case", type, text(u"a"), text(u"B"), 1);
        add("text length", type, text(u"ALFA"), text(u"ALFAP"), -1);
        add("text empty", type, text(u""), text(u""), 0);
        add("text digits", type, text(u"10"), text(u"9"), -1);
        // By code units: a surrogate pair stands before U+FFFD.
        add("text surrogates", type, text(u"\xd83d\xde00"), text(u"\xfffd"), -1);
    }
}

void MasterIndexTest::comparesOneColumn()
{
    QFETCH(int, type);
    QFETCH(Assignment, left);
    QFETCH(Assignment, right);
    QFETCH(int, result);
    // Behind a column of another size, so that the place is looked up.
    const Table table("t", {{"other", FieldType::Int32}, {"c", static_cast<FieldType>(type)}});
    const Record leftRow(&table);
    const Record rightRow(&table);
    Field leftField = leftRow.field(1);
    left(leftField);
    Field rightField = rightRow.field(1);
    right(rightField);
    const MasterIndex_Column_Pure index(&table, {1});
    QCOMPARE(sign(index.compare(leftRow, rightRow)), result);
    QCOMPARE(sign(index.compare(rightRow, leftRow)), -result);
    QCOMPARE(index.compare(leftRow, leftRow), 0);
}

void MasterIndexTest::absentComesFirst_data()
{
    QTest::addColumn<int>("type");
    for (int code = 1; code <= 8; ++code)
        QTest::newRow(qPrintable(vexdesk::typeName(static_cast<FieldType>(code)))) << code;
}

void MasterIndexTest::absentComesFirst()
{
    QFETCH(int, type);
    const Table table("t", {{"c", static_cast<FieldType>(type)}});
    const Record absent(&table);
    const Record alsoAbsent(&table);
    const Record present(&table);
    if (static_cast<FieldType>(type) == FieldType::DateTime)
        present.field(0) = datetime(-1);
    else
        present.field(0) = -1;
    // What was there once plays no part.
    alsoAbsent.field(0).clear();
    const MasterIndex_Column_Pure index(&table, {0});
    QVERIFY(index.compare(absent, present) < 0);
    QVERIFY(index.compare(present, absent) > 0);
    QCOMPARE(index.compare(absent, alsoAbsent), 0);
}

void MasterIndexTest::comparesColumnsInTheirOrder()
{
    const auto table = integerTable();
    const Record left = makeRow(*table, 1, 5, 9);
    const Record right = makeRow(*table, 2, 4, 9);
    QVERIFY(MasterIndex_Column_Pure(table.get(), {0, 1}).compare(left, right) < 0);
    QVERIFY(MasterIndex_Column_Pure(table.get(), {1, 0}).compare(left, right) > 0);
    QCOMPARE(MasterIndex_Column_Pure(table.get(), {2}).compare(left, right), 0);
    QCOMPARE(MasterIndex_Column_Pure(table.get(), {1, 0}).columns(), (QList<int>{1, 0}));
    left.field(3) = QStringLiteral("B");
    right.field(3) = QStringLiteral("A");
    QVERIFY(MasterIndex_Column_Pure(table.get(), {2, 3}).compare(left, right) > 0);
}

// Integers that are present are compared without a look at the types; the comparison by types known
// to the compiler is another program for the same answer.
void MasterIndexTest::theQuickWayAgrees()
{
    const auto table = integerTable();
    const MasterIndex_Column_Pure pure(table.get(), {0, 1, 2});
    const MasterIndex_Struct<int, int, long long> typed(table.get(), {0, 1, 2});
    std::mt19937 random(5);
    const auto maybe = [&random]() -> std::optional<int> {
        const auto number = static_cast<int>(random() % 4);
        return number == 3 ? std::nullopt : std::optional(number - 1);
    };
    std::vector<Record> rows;
    rows.reserve(300);
    for (int i = 0; i < 300; ++i)
        rows.push_back(makeRow(*table, maybe(), maybe(), maybe()));
    int equal = 0;
    for (const Record& left : rows) {
        for (const Record& right : rows) {
            const int expected = sign(typed.compare(left, right));
            equal += expected == 0;
            QCOMPARE(sign(pure.compare(left, right)), expected);
        }
    }
    QVERIFY(equal > 300);
}

void MasterIndexTest::comparesColumnsOfAWideTable()
{
    // The presence bits of column 35 stand in another word than those of column 3.
    QList<Table::Column> columns;
    for (int i = 0; i < 40; ++i)
        columns.append({QStringLiteral("c%1").arg(i), FieldType::Int32});
    const Table table("t", columns);
    const MasterIndex_Column_Pure index(&table, {3, 35});
    const Record absent(&table);
    absent.field(3) = 1;
    const Record zero(&table);
    zero.field(3) = 1;
    zero.field(35) = 0;
    const Record one(&table);
    one.field(3) = 1;
    one.field(35) = 1;
    QVERIFY(index.compare(absent, zero) < 0);
    QVERIFY(index.compare(one, zero) > 0);
    QCOMPARE(index.compare(absent, absent), 0);
    // Column 35 alone is absent where the bit of column 3 is set.
    const MasterIndex_Column_Pure last(&table, {35});
    QVERIFY(last.compare(absent, zero) < 0);
}

void MasterIndexTest::noColumnsMakeAllRowsEqual()
{
    const auto table = integerTable();
    const MasterIndex_Column_Pure index(table.get(), {});
    QCOMPARE(index.compare(makeRow(*table, 1, 2, 3), makeRow(*table, 4, 5, 6)), 0);
}

void MasterIndexTest::theNullRecordComesFirst()
{
    const auto table = integerTable();
    const Record absent(table.get());
    const Record present = makeRow(*table, -1, -1, -1);
    const MasterIndex_Column_Pure pure(table.get(), {0, 1, 2});
    const MasterIndex_Struct<int, int, long long> typed(table.get(), {0, 1, 2});
    for (const MasterIndex* index : std::initializer_list<const MasterIndex*>{&pure, &typed}) {
        for (const Record& row : {absent, present}) {
            QVERIFY(index->compare(Record::null, row) < 0);
            QVERIFY(index->compare(row, Record::null) > 0);
        }
        QCOMPARE(index->compare(Record::null, Record::null), 0);
    }
}

void MasterIndexTest::outlivesTheTable()
{
    auto table = integerTable();
    const MasterIndex_Column_Pure index(table.get(), {0, 3});
    const Record left = makeRow(*table, 1, 1, 1);
    const Record right = makeRow(*table, 1, 1, 1);
    right.field(3) = QStringLiteral("x");
    table.reset();
    QVERIFY(index.compare(left, right) < 0);
}

void MasterIndexTest::wrongColumnsAreRefused()
{
    const auto table = integerTable();
    for (const int column : {-1, columnCount})
        QVERIFY(!thrownBy([&] { MasterIndex_Column_Pure(table.get(), {0, column}); }).isNull());
    using Typed = MasterIndex_Struct<int, long long>;
    QVERIFY(thrownBy([&] { Typed(table.get(), {0, 2}); }).isNull());
    QVERIFY(!thrownBy([&] { Typed(table.get(), {0}); }).isNull());
    QVERIFY(!thrownBy([&] { Typed(table.get(), {0, 2, 1}); }).isNull());
    QVERIFY(!thrownBy([&] { Typed(table.get(), {0, -1}); }).isNull());
    QVERIFY(thrownBy([&] { Typed(table.get(), {2, 0}); }).contains("int64"));
    QVERIFY(thrownBy([&] { Typed(table.get(), {0, 3}); }).contains("code"));
}

namespace {

using Key = MasterKey_Struct<int, int, long long>;
using Order = MasterIndex_Struct<int, int, long long>;

// Keys with even parts, so that there is room between any two of them. Several times what a piece
// of the index holds.
std::unique_ptr<Table> sortedTable()
{
    auto table = integerTable();
    table->setOrder(std::make_unique<Order>(table.get(), QList<int>{0, 1, 2}));
    for (int a = 0; a < 20; a += 2) {
        for (int b = 0; b < 20; b += 2) {
            for (int c = 0; c < 80; c += 2)
                table->insert(makeRow(*table, a, b, c));
        }
    }
    return table;
}

} // namespace

void MasterIndexTest::findsEveryRow()
{
    const auto table = sortedTable();
    const Order::CompareKey compare(table.get());
    for (const Record& row : table->masterIndex()) {
        const Key key(row.field(0).toString().toInt(), row.field(1).toString().toInt(),
                      row.field(2).toString().toLongLong());
        QVERIFY(IndexSort::findBinary(table->masterIndex(), key, -1, compare) == row);
    }
}

void MasterIndexTest::findsNothingThatIsNotThere()
{
    const auto table = sortedTable();
    const Order::CompareKey compare(table.get());
    const auto find = [&](int a, int b, long long c) {
        return IndexSort::findBinary(table->masterIndex(), Key(a, b, c), -1, compare);
    };
    QVERIFY(!find(0, 0, 0).isNull());
    for (const auto& [a, b, c] :
         {std::tuple(-1, 0, 0), std::tuple(0, 0, -2), std::tuple(0, 0, 80), std::tuple(4, 5, 6),
          std::tuple(5, 4, 6), std::tuple(4, 6, 5), std::tuple(18, 18, 80), std::tuple(20, 0, 0)})
        QVERIFY(find(a, b, c) == Record::null);
    const auto empty = integerTable();
    empty->setOrder(std::make_unique<Order>(empty.get(), QList<int>{0, 1, 2}));
    QVERIFY(IndexSort::findBinary(empty->masterIndex(), Key(0, 0, 0), -1, compare).isNull());
}

void MasterIndexTest::findsByTheFirstPartsOfTheKey()
{
    const auto table = sortedTable();
    const Order::CompareKey compare(table.get());
    const auto find = [&](int a, int b, long long c, int count) {
        const Record row =
            IndexSort::findBinary(table->masterIndex(), Key(a, b, c), count, compare);
        return row.isNull() ? QString()
                            : row.field(0).toString() + u' ' + row.field(1).toString() + u' ' +
                                  row.field(2).toString();
    };
    QCOMPARE(find(4, 6, 8, 3), QStringLiteral("4 6 8"));
    QCOMPARE(find(4, 6, 9, 3), QString());
    QCOMPARE(find(4, 6, 9, 2), QStringLiteral("4 6 0"));
    QCOMPARE(find(4, 7, 9, 2), QString());
    QCOMPARE(find(4, 7, 9, 1), QStringLiteral("4 0 0"));
    QCOMPARE(find(5, 7, 9, 1), QString());
    QCOMPARE(find(5, 7, 9, 0), QStringLiteral("0 0 0"));
}

void MasterIndexTest::findsAmongAbsentValues()
{
    const auto table = integerTable();
    table->setOrder(std::make_unique<Order>(table.get(), QList<int>{0, 1, 2}));
    const Record found = makeRow(*table, 0, -5, 7);
    table->insert(found);
    table->insert(makeRow(*table, std::nullopt, std::nullopt, std::nullopt));
    table->insert(makeRow(*table, 0, std::nullopt, 7));
    table->insert(makeRow(*table, 0, -5, std::nullopt));
    const Order::CompareKey compare(table.get());
    QVERIFY(IndexSort::findBinary(table->masterIndex(), Key(0, -5, 7), -1, compare) == found);
    // A zero that is absent is no zero.
    QVERIFY(IndexSort::findBinary(table->masterIndex(), Key(0, 0, 0), -1, compare).isNull());
}

void MasterIndexTest::findsByOtherTypes()
{
    using Texts = MasterIndex_Struct<QString, QString, decimal, xdecimal, double, datetime>;
    Table table("t", {{"code", FieldType::Code},
                      {"text", FieldType::Text},
                      {"decimal", FieldType::Decimal},
                      {"xdecimal", FieldType::XDecimal},
                      {"double", FieldType::Double},
                      {"moment", FieldType::DateTime}});
    table.setOrder(std::make_unique<Texts>(&table, QList<int>{0, 1, 2, 3, 4, 5}));
    for (int i = 0; i < 64; ++i) {
        const Record row(&table);
        row.field(0) = i & 1;
        row.field(1) = i >> 1 & 1;
        row.field(2) = decimal(i >> 2 & 1, 1);
        row.field(3) = xdecimal(i >> 3 & 1, 1);
        row.field(4) = 0.5 * (i >> 4 & 1);
        row.field(5) = datetime(i >> 5 & 1);
        table.insert(row);
    }
    const MasterKey_Struct<QString, QString, decimal, xdecimal, double, datetime> key(
        QStringLiteral("1"), QStringLiteral("0"), decimal(10, 2), xdecimal(0, 5), 0.5, datetime(1));
    const Record found =
        IndexSort::findBinary(table.masterIndex(), key, -1, Texts::CompareKey(&table));
    QStringList texts;
    for (int column = 0; column < table.columnCount() && !found.isNull(); ++column)
        texts.append(found.field(column).toString());
    QCOMPARE(texts.join(u'|'), QStringLiteral("1|0|0.1|0.0|0.5|1970-01-01 00:00:00.001"));
}

void MasterIndexTest::keysNeedAnOrderOfTheirTypes()
{
    const auto table = integerTable();
    QVERIFY(!thrownBy([&] { Order::CompareKey(table.get()); }).isNull());
    QVERIFY(!thrownBy([&] { Order::CompareKey(nullptr); }).isNull());
    table->setOrder(std::make_unique<MasterIndex_Struct<int, int>>(table.get(), QList<int>{0, 1}));
    QVERIFY(!thrownBy([&] { Order::CompareKey(table.get()); }).isNull());
    // The order may be of another class, as long as it is by columns of these types.
    table->setOrder(std::make_unique<MasterIndex_Column_Pure>(table.get(), QList<int>{1, 0, 2}));
    table->insert(makeRow(*table, 1, 2, 3));
    const Record found = IndexSort::findBinary(table->masterIndex(), Key(2, 1, 3), -1,
                                               Order::CompareKey(table.get()));
    QVERIFY(!found.isNull());
}

QTEST_GUILESS_MAIN(MasterIndexTest)
#include "tst_masterindex.moc"
