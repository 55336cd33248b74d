// SPDX-License-Identifier: MIT
// The numbers of plain lines beside Qt's own reading and writing.

#include "support/strictlog.h"

#include <vexdesk/history/digits.h>

#include <QtTest/QTest>

#include <array>
#include <optional>

using vexdesk::readDigits;
using vexdesk::readSixtieth;

class TestDigits final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsDigitsAlone_data();
    void readsDigitsAlone();
    void readsSixtiethsAlone();
    void writesTwoDigits();
};

namespace {

template <typename Integer>
std::optional<Integer> read(QByteArrayView text)
{
    Integer number = 0;
    return readDigits(text, &number) ? std::optional(number) : std::nullopt;
}

} // namespace

void TestDigits::readsDigitsAlone_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isInteger");
    QTest::addColumn<bool>("isLongInteger");
    const auto row = [](const QByteArray& text, bool isInteger, bool isLongInteger) {
        QTest::newRow(text.constData()) << text << isInteger << isLongInteger;
    };
    for (const char* text : {"0", "9", "007", "999999999", "000000000"})
        row(text, true, true);
    // Some numbers of so many digits do not fit.
    row("1000000000", false, true);
    row("999999999999999999", false, true);
    row("1000000000000000000", false, false);
    for (const char* text :
         {"", " 1", "1 ", "+1", "-1", "1.0", "/", ":", "1/", ":1", "1e3", "\xd9"})
        row(text, false, false);
}

void TestDigits::readsDigitsAlone()
{
    QFETCH(const QByteArray, text);
    QFETCH(const bool, isInteger);
    QFETCH(const bool, isLongInteger);
    const std::optional<int> integer = read<int>(text);
    const std::optional<qint64> longInteger = read<qint64>(text);
    QCOMPARE(integer.has_value(), isInteger);
    QCOMPARE(longInteger.has_value(), isLongInteger);
    QCOMPARE(integer.value_or(0), isInteger ? text.toInt() : 0);
    QCOMPARE(longInteger.value_or(0), isLongInteger ? text.toLongLong() : 0);
}

// Every two bytes that there are.
void TestDigits::readsSixtiethsAlone()
{
    const QByteArray digits = "0123456789";
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::array text{static_cast<char>(first), static_cast<char>(second)};
            const qsizetype tens = digits.indexOf(text[0]);
            const qsizetype ones = digits.indexOf(text[1]);
            const bool isOne = tens >= 0 && tens <= 5 && ones >= 0;
            if (readSixtieth(text.data()) != (isOne ? tens * 10 + ones : -1))
                QFAIL(QByteArray(text.data(), 2).toHex().constData());
        }
    }
}

void TestDigits::writesTwoDigits()
{
    for (int number = 0; number < 100; ++number) {
        std::array<char, 3> text{'x', 'x', 'x'};
        QVERIFY(vexdesk::writeTwoDigits(text.data(), number) == text.data() + 2);
        QCOMPARE(QByteArray(text.data(), 3),
                 QByteArray::number(number).rightJustified(2, '0') + 'x');
    }
}

QTEST_GUILESS_MAIN(TestDigits)
#include "tst_digits.moc"
