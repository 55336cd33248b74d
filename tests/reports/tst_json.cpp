// SPDX-License-Identifier: MIT
#include "json.h"

#include "support/strictlog.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtTest/QTest>

#include <limits>

using tadata::Json;
using tadata::ratioText;
using tadata::Wide;

class TestJson final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void writesValues_data();
    void writesValues();
    void escapesNothingElse();
    void isReadBackByQt();
    void putsKeysInTheOrderOfCodePoints();
    void takesMembersFromAMap();
    void writesLists();
    void endsAReportWithOneLineEnd();
    void roundsHalvesUp_data();
    void roundsHalvesUp();
};

void TestJson::writesValues_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* name, const Json& value, const QByteArray& expected) {
        QTest::newRow(name) << value.text() << expected;
    };
    row("null", {}, "null");
    row("no value", std::optional<QDate>(), "null");
    row("yes", true, "true");
    row("no", false, "false");
    row("zero", 0, "0");
    row("smallest", std::numeric_limits<qint64>::min(), "-9223372036854775808");
    row("largest", std::numeric_limits<qint64>::max(), "9223372036854775807");
    row("a number that is there", std::optional<int>(5), "5");
    row("no text", QString(), "\"\"");
    row("literal", "bars", "\"bars\"");
    row("named escapes", QStringLiteral("\"\\/\b\f\n\r\t"), R"("\"\\/\b\f\n\r\t")");
    row("other controls", QStringLiteral("\x01\x1f\x7f"), "\"\\u0001\\u001f\x7f\"");
    row("nothing", QString(1, QChar(0)), R"("\u0000")");
    row("other letters", QStringLiteral("Файл €\U0001d11e"), "\"Файл €\xf0\x9d\x84\x9e\"");
    row("half a character", QStringLiteral("a") + QChar(0xdc80) + QStringLiteral("b"),
        "\"a\xef\xbf\xbd"
        "b\"");
    row("day", QDate(2024, 1, 31), "\"2024-01-31\"");
    row("early day", QDate(812, 1, 31), "\"0812-01-31\"");
    row("no day", QDate(), "null");
    row("time", QTime(9, 5, 0), "\"09:05:00\"");
    row("no time", QTime(), "null");
    row("moment", Json::moment(QDate(2024, 3, 31), QTime(2, 30)), "\"2024-03-31T02:30:00\"");
    row("no moment", Json::moment(QDate(), QTime(2, 30)), "null");
    row("empty object", Json::object({}), "{}");
}

void TestJson::writesValues()
{
    QFETCH(const QByteArray, text);
    QTEST(text, "expected");
}

void TestJson::escapesNothingElse()
{
    for (char16_t character = 0x20; character < 0xd800; ++character) {
        if (character == u'"' || character == u'\\')
            continue;
        const QString text(1, QChar(character));
        QCOMPARE(Json(text).text(), '"' + text.toUtf8() + '"');
    }
}

void TestJson::isReadBackByQt()
{
    QString text;
    for (char16_t character = 0; character < 0x400; ++character)
        text += QChar(character);
    const QByteArray report = Json::object({{text, Json::list(QStringList{text})}}).report();
    const QJsonObject read = QJsonDocument::fromJson(report).object();
    QCOMPARE(read.keys(), QStringList{text});
    QCOMPARE(read[text].toArray(), QJsonArray{text});
}

void TestJson::putsKeysInTheOrderOfCodePoints()
{
    // The second and the third stand the other way round where units of UTF-16 are compared.
    const Json object = Json::object({{QStringLiteral("\U0001d11e"), 4},
                                      {QStringLiteral("b"), 2},
                                      {QStringLiteral("\uff5e"), 3},
                                      {QStringLiteral("a"), 1},
                                      {QStringLiteral("B"), 0}});
    QCOMPARE(object.text(), QByteArray("{\"B\":0,\"a\":1,\"b\":2,\"\xef\xbd\x9e\":3,"
                                       "\"\xf0\x9d\x84\x9e\":4}"));
}

void TestJson::takesMembersFromAMap()
{
    const QList<Json::Member> counts{{QStringLiteral("volume"), 2}, {QStringLiteral("prices"), 1}};
    QCOMPARE(Json::object(counts).text(), QByteArray(R"({"prices":1,"volume":2})"));
}

void TestJson::writesLists()
{
    QCOMPARE(Json::list(QList<int>()).text(), QByteArray("[]"));
    QCOMPARE(Json::list(QList<int>{3, 1, 2}).text(), QByteArray("[3,1,2]"));
    const QList<int> numbers{1, 2};
    const Json objects = Json::list(numbers, [](int number) {
        return Json::object(
            {{QStringLiteral("n"), number},
             {QStringLiteral("list"), Json::list(QStringList{QStringLiteral("x")})}});
    });
    QCOMPARE(objects.text(), QByteArray(R"([{"list":["x"],"n":1},{"list":["x"],"n":2}])"));
}

void TestJson::endsAReportWithOneLineEnd()
{
    QCOMPARE(Json::object({}).report(), QByteArray("{}\n"));
}

void TestJson::roundsHalvesUp_data()
{
    QTest::addColumn<qint64>("part");
    QTest::addColumn<qint64>("whole");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << qint64(0) << qint64(7) << QStringLiteral("0.0000");
    QTest::newRow("all") << qint64(7) << qint64(7) << QStringLiteral("1.0000");
    QTest::newRow("half") << qint64(1) << qint64(20000) << QStringLiteral("0.0001");
    QTest::newRow("below half") << qint64(9999) << qint64(200000000) << QStringLiteral("0.0000");
    QTest::newRow("even half") << qint64(3) << qint64(20000) << QStringLiteral("0.0002");
    QTest::newRow("nearly all") << qint64(19999) << qint64(20000) << QStringLiteral("1.0000");
    QTest::newRow("third") << qint64(1) << qint64(3) << QStringLiteral("0.3333");
    QTest::newRow("more than all") << qint64(5) << qint64(4) << QStringLiteral("1.2500");
    // As doubles both are 0.00005 to the last digit.
    QTest::newRow("exact half") << qint64(230584300921369) << qint64(4611686018427380000)
                                << QStringLiteral("0.0001");
    QTest::newRow("one less") << qint64(230584300921368) << qint64(4611686018427380000)
                              << QStringLiteral("0.0000");
}

void TestJson::roundsHalvesUp()
{
    QFETCH(const qint64, part);
    QFETCH(const qint64, whole);
    QTEST(ratioText(part, whole), "text");
    constexpr Wide factor = Wide(1) << 48;
    QCOMPARE(ratioText(part * factor, whole * factor), ratioText(part, whole));
}

QTEST_APPLESS_MAIN(TestJson)

#include "tst_json.moc"
