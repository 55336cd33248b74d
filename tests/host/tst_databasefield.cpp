// SPDX-License-Identifier: MIT
#include <vexdesk/database/field.h>
#include <vexdesk/database/table.h>

#include "support/strictlog.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtTest/QTest>

#include <functional>
#include <limits>

using vexdesk::FieldType;

Q_DECLARE_METATYPE(std::function<void(Field&)>)

namespace {

using Assignment = std::function<void(Field&)>;

constexpr int typeCount = 8;

// One column of each type, column n of the type n + 1.
QList<Table::Column> everyType()
{
    QList<Table::Column> columns;
    for (int code = 1; code <= typeCount; ++code)
        columns.append({QStringLiteral("c%1").arg(code), static_cast<FieldType>(code)});
    return columns;
}

QString thrownBy(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Exception& error) {
        return error.message();
    }
    return QStringLiteral("nothing thrown");
}

template <typename T>
Assignment assignment(const T& value)
{
    return [value](Field& field) { field = value; };
}

QString cannot(const QString& from, const QString& to)
{
    return "Can't convert from " + from + " to " + to;
}

QString cannotValue(const QString& value, const QString& to)
{
    return "Can't convert from '" + value + "'' to " + to;
}

} // namespace

class DatabaseFieldTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void isAbsentAtFirst();
    void converts_data();
    void converts();
    void storesTheValueInItsType();
    void aFailedAssignmentLeavesTheFieldAlone();
    void clearMakesAbsent();
    void oneFieldLeavesTheOthersAlone();
    void namesEveryType();
    void exceptionTellsItsMessage();
    void aFutureCarriesTheException();
};

void DatabaseFieldTest::isAbsentAtFirst()
{
    const Table table("t", everyType());
    const Record row(&table);
    for (int column = 0; column < typeCount; ++column) {
        QVERIFY(!row.field(column).isPresent());
        QVERIFY(row.field(column).toString().isNull());
        QCOMPARE(row.field(column).type(), static_cast<FieldType>(column + 1));
    }
}

// NOLINTNEXTLINE(readability-function-size): a table
void DatabaseFieldTest::converts_data()
{
    QTest::addColumn<Assignment>("assign");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");  // of the field afterwards
    QTest::addColumn<QString>("error"); // null when there is none

    // The rows of one source: what each type makes of it, and nothing where the error is told.
    struct Outcome
    {
        FieldType type;
        QString text;
        QString error;
    };
    const auto add = [](const char* name, const Assignment& assign,
                        const QList<Outcome>& outcomes) {
        for (const Outcome& outcome : outcomes)
            QTest::addRow("%s to %s", name, qPrintable(vexdesk::typeName(outcome.type)))
                << assign << static_cast<int>(outcome.type) << outcome.text << outcome.error;
    };
    const QString none;
    constexpr long long tooLong = qint64(std::numeric_limits<qint32>::max()) + 1;
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    const QString mostText = QStringLiteral("9223372036854775807");

    add("int", assignment(-42),
        {{FieldType::Int32, "-42", none},
         {FieldType::Int64, "-42", none},
         {FieldType::Double, "-42", none},
         {FieldType::Decimal, "-42", none},
         {FieldType::XDecimal, "-42", none},
         {FieldType::Code, "-42", none},
         {FieldType::DateTime, none, cannot("int32", "datetime")},
         {FieldType::Text, "-42", none}});
    add("long long", assignment(7LL),
        {{FieldType::Int32, "7", none},
         {FieldType::Int64, "7", none},
         {FieldType::Double, "7", none},
         {FieldType::Decimal, "7", none},
         {FieldType::XDecimal, "7", none},
         {FieldType::Code, "7", none},
         {FieldType::DateTime, none, cannot("int64", "datetime")},
         {FieldType::Text, "7", none}});
    add("int's end", assignment(static_cast<long long>(std::numeric_limits<qint32>::min())),
        {{FieldType::Int32, "-2147483648", none}});
    add("beyond int", assignment(tooLong),
        {{FieldType::Int32, none, cannotValue("2147483648", "int32")},
         {FieldType::Int64, "2147483648", none},
         {FieldType::Decimal, "2147483648", none},
         {FieldType::Text, "2147483648", none}});
    add("decimal's end", assignment(static_cast<long long>(decimal::maxMantissa)),
        {{FieldType::Decimal, "36028797018963967", none}});
    add("the largest long long", assignment(static_cast<long long>(most)),
        {{FieldType::Int64, mostText, none},
         {FieldType::Double, "9223372036854775807", none},
         {FieldType::Decimal, none, cannotValue(mostText, "decimal")},
         {FieldType::XDecimal, mostText, none},
         {FieldType::Code, mostText, none}});
    add("double", assignment(-0.1),
        {{FieldType::Int32, none, cannot("double", "int32")},
         {FieldType::Int64, none, cannot("double", "int64")},
         {FieldType::Double, "-0.1", none},
         {FieldType::Decimal, none, cannot("double", "decimal")},
         {FieldType::XDecimal, none, cannot("double", "xdecimal")},
         {FieldType::Code, "-0.1", none},
         {FieldType::DateTime, none, cannot("double", "datetime")},
         {FieldType::Text, "-0.1", none}});
    add("decimal", assignment(decimal(-150, 2)),
        {{FieldType::Int32, none, cannot("decimal", "int32")},
         {FieldType::Int64, none, cannot("decimal", "int64")},
         {FieldType::Double, "-1.5", none},
         {FieldType::Decimal, "-1.50", none},
         {FieldType::XDecimal, "-1.50", none},
         {FieldType::Code, "-1.50", none},
         {FieldType::DateTime, none, cannot("decimal", "datetime")},
         {FieldType::Text, "-1.50", none}});
    add("xdecimal", assignment(xdecimal(150, 2)),
        {{FieldType::Int32, none, cannot("xdecimal", "int32")},
         {FieldType::Int64, none, cannot("xdecimal", "int64")},
         {FieldType::Double, "1.5", none},
         {FieldType::Decimal, "1.50", none},
         {FieldType::XDecimal, "1.50", none},
         {FieldType::Code, "1.50", none},
         {FieldType::DateTime, none, cannot("xdecimal", "datetime")},
         {FieldType::Text, "1.50", none}});
    add("large xdecimal", assignment(xdecimal(most, 2)),
        {{FieldType::Decimal, none, cannotValue("92233720368547758.07", "decimal")},
         {FieldType::XDecimal, "92233720368547758.07", none}});
    const QString moment = QStringLiteral("2024-02-29 10:00:00.250");
    add("datetime", assignment(datetime(moment)),
        {{FieldType::Int32, none, cannot("datetime", "int32")},
         {FieldType::Int64, none, cannot("datetime", "int64")},
         {FieldType::Double, none, cannot("datetime", "double")},
         {FieldType::Decimal, none, cannot("datetime", "decimal")},
         {FieldType::XDecimal, none, cannot("datetime", "xdecimal")},
         {FieldType::Code, moment, none},
         {FieldType::DateTime, moment, none},
         {FieldType::Text, moment, none}});
    add("number's text", assignment(QStringLiteral("+0042")),
        {{FieldType::Int32, "42", none},
         {FieldType::Int64, "42", none},
         {FieldType::Double, "42", none},
         {FieldType::Decimal, "42", none},
         {FieldType::XDecimal, "42", none},
         {FieldType::Code, "+0042", none},
         {FieldType::DateTime, none, cannot("text", "datetime")},
         {FieldType::Text, "+0042", none}});
    add("fraction's text", assignment(QStringLiteral("1.50")),
        {{FieldType::Int32, none, cannotValue("1.50", "int32")},
         {FieldType::Int64, none, cannotValue("1.50", "int64")},
         {FieldType::Double, "1.5", none},
         {FieldType::Decimal, "1.50", none},
         {FieldType::XDecimal, "1.50", none}});
    add("moment's text", assignment(moment),
        {{FieldType::DateTime, none, cannot("text", "datetime")}, {FieldType::Text, moment, none}});
    add("large number's text", assignment(QStringLiteral("9223372036854775807")),
        {{FieldType::Int32, none, cannotValue(mostText, "int32")},
         {FieldType::Int64, mostText, none},
         {FieldType::Decimal, none, cannotValue(mostText, "decimal")},
         {FieldType::XDecimal, mostText, none}});
    for (const char* text : {"", " ", "abc", " 1", "1 ", "1\n", "1,5", "--1", "%1", "inf", "nan",
                             "9223372036854775808000"}) {
        const QString value = QString::fromLatin1(text);
        const bool isDouble = value.startsWith(u'9');
        add(text, assignment(value),
            {{FieldType::Int32, none, cannotValue(value, "int32")},
             {FieldType::Int64, none, cannotValue(value, "int64")},
             {FieldType::Double, isDouble ? "9.223372036854776e+21" : none,
              isDouble ? none : cannotValue(value, "double")},
             {FieldType::Decimal, none, cannotValue(value, "decimal")},
             {FieldType::XDecimal, none, cannotValue(value, "xdecimal")},
             {FieldType::Code, value, none},
             {FieldType::Text, value, none}});
    }
}

void DatabaseFieldTest::converts()
{
    QFETCH(Assignment, assign);
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(QString, error);

    const Table table("t", everyType());
    const Record row(&table);
    Field field = row.field(type - 1);
    if (!error.isNull()) {
        QCOMPARE(thrownBy([&] { assign(field); }), error);
        QVERIFY(!field.isPresent());
        return;
    }
    assign(field);
    QVERIFY(field.isPresent());
    // A double's shortest digits may be written with an exponent: read, they are the number.
    if (field.type() == FieldType::Double)
        QCOMPARE(field.toString().toDouble(), text.toDouble());
    else
        QCOMPARE(field.toString(), text);
}

void DatabaseFieldTest::storesTheValueInItsType()
{
    const Table table("t", everyType());
    const Record row(&table);
    row.field(0) = 1;
    row.field(1) = 2LL;
    row.field(2) = 0.5;
    row.field(3) = decimal(4, 1);
    row.field(4) = xdecimal(5, 1);
    row.field(5) = QStringLiteral("six");
    row.field(6) = datetime(7);
    row.field(7) = QStringLiteral("восемь");
    for (int column = 0; column < typeCount; ++column) {
        const Table::Cell cell = table.dataPtr(row.data(), column);
        QVERIFY(cell.present);
        QCOMPARE(static_cast<int>(cell.type), column + 1);
    }
    const auto cell = [&](int column) { return table.dataPtr(row.data(), column); };
    QCOMPARE(cell(0).as<qint32>(), 1);
    QCOMPARE(cell(1).as<qint64>(), 2);
    QCOMPARE(cell(2).as<double>(), 0.5);
    QCOMPARE(cell(3).as<decimal>().toString(), QStringLiteral("0.4"));
    QCOMPARE(cell(4).as<xdecimal>().toString(), QStringLiteral("0.5"));
    QCOMPARE(cell(5).as<QString>(), QStringLiteral("six"));
    QCOMPARE(cell(6).as<datetime>().msecsSinceEpoch(), 7);
    // The moment is a plain 64-bit integer in memory, and may be read as one.
    QCOMPARE(*static_cast<const qint64*>(cell(6).value), 7);
    QCOMPARE(cell(7).as<QString>(), QStringLiteral("восемь"));
}

void DatabaseFieldTest::aFailedAssignmentLeavesTheFieldAlone()
{
    const Table table("t", everyType());
    const Record row(&table);
    row.field(0) = 5;
    thrownBy([&] { row.field(0) = QStringLiteral("x"); });
    QVERIFY(row.field(0).isPresent());
    QCOMPARE(row.field(0).toString(), QStringLiteral("5"));
    row.field(6) = datetime(5);
    thrownBy([&] { row.field(6) = 1; });
    QCOMPARE(row.field(6).toString(), datetime(5).toString());
}

void DatabaseFieldTest::clearMakesAbsent()
{
    const Table table("t", everyType());
    const Record row(&table);
    for (const int column : {0, 5}) {
        row.field(column) = 5;
        row.field(column).clear();
        QVERIFY(!row.field(column).isPresent());
        QVERIFY(!table.dataPtr(row.data(), column).present);
        QVERIFY(row.field(column).toString().isNull());
        row.field(column) = 6;
        QCOMPARE(row.field(column).toString(), QStringLiteral("6"));
    }
}

void DatabaseFieldTest::oneFieldLeavesTheOthersAlone()
{
    // More columns than one word of presence bits holds, of types of different sizes.
    QList<Table::Column> columns;
    for (int i = 0; i < 100; ++i)
        columns.append(
            {QStringLiteral("c%1").arg(i), static_cast<FieldType>(i * 5 % typeCount + 1)});
    const Table table("t", columns);
    const Record row(&table);
    const auto set = [&](int column) {
        if (row.field(column).type() == FieldType::DateTime)
            row.field(column) = datetime(column);
        else
            row.field(column) = column;
    };
    for (int column = 0; column < columns.size(); column += 3)
        set(column);
    for (int column = 0; column < columns.size(); ++column) {
        const QString text = columns.at(column).type == FieldType::DateTime
                                 ? datetime(column).toString()
                                 : QString::number(column);
        QCOMPARE(row.field(column).isPresent(), column % 3 == 0);
        QCOMPARE(row.field(column).toString(), column % 3 == 0 ? text : QString());
    }
}

void DatabaseFieldTest::namesEveryType()
{
    QSet<QString> names;
    for (int code = 1; code <= typeCount; ++code)
        names.insert(vexdesk::typeName(static_cast<FieldType>(code)));
    QCOMPARE(names.size(), typeCount);
    QCOMPARE(Field::incompatibleType(FieldType::Double, FieldType::DateTime).message(),
             QStringLiteral("Can't convert from double to datetime"));
}

void DatabaseFieldTest::exceptionTellsItsMessage()
{
    const Exception error(QStringLiteral("Неверный тип"));
    QCOMPARE(error.message(), QStringLiteral("Неверный тип"));
    QCOMPARE(QByteArray(error.what()), QStringLiteral("Неверный тип").toUtf8());
    const std::unique_ptr<Exception> copy(error.clone());
    QCOMPARE(QByteArray(copy->what()), QStringLiteral("Неверный тип").toUtf8());
    QCOMPARE(thrownBy([&] { copy->raise(); }), error.message());
}

void DatabaseFieldTest::aFutureCarriesTheException()
{
    QFuture<QString> future = QtConcurrent::run([] {
        const Table table("t", everyType());
        const Record row(&table);
        row.field(6) = 1;
        return row.field(6).toString();
    });
    QCOMPARE(thrownBy([&] { future.result(); }), cannot("int32", "datetime"));
}

QTEST_GUILESS_MAIN(DatabaseFieldTest)
#include "tst_databasefield.moc"
