// SPDX-License-Identifier: MIT
#include <vexdesk/database/xdecimal.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <limits>
#include <random>

namespace {

constexpr qint64 least = std::numeric_limits<qint64>::min();
constexpr qint64 most = std::numeric_limits<qint64>::max();

// The digits of a number without its sign and point, brought to the same lengths on both sides of
// the point as another's: texts that compare as the sizes of the numbers do.
std::pair<QString, QString> aligned(QString left, QString right)
{
    const auto split = [](QString& text) {
        text.remove(u'-');
        const qsizetype point = text.indexOf(u'.');
        const QString fraction = point < 0 ? QString() : text.mid(point + 1);
        text = point < 0 ? text : text.left(point);
        return fraction;
    };
    const QString leftFraction = split(left);
    const QString rightFraction = split(right);
    const qsizetype whole = qMax(left.size(), right.size());
    const qsizetype part = qMax(leftFraction.size(), rightFraction.size());
    return {left.rightJustified(whole, u'0') + leftFraction.leftJustified(part, u'0'),
            right.rightJustified(whole, u'0') + rightFraction.leftJustified(part, u'0')};
}

int compareTexts(const QString& left, const QString& right)
{
    const auto [leftSize, rightSize] = aligned(left, right);
    const bool leftNegative = left.startsWith(u'-');
    if (leftNegative != right.startsWith(u'-'))
        return leftNegative ? -1 : 1; // "-0" does not occur
    const int result = leftSize < rightSize ? -1 : leftSize > rightSize;
    return leftNegative ? -result : result;
}

QString thrownBy(const std::function<void()>& action)
{
    try {
        action();
    } catch (const QString& message) {
        return message;
    }
    return QString();
}

} // namespace

class XDecimalTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void isZeroAtFirst();
    void readsAndPrints_data();
    void readsAndPrints();
    void refuses_data();
    void refuses();
    void refusesAScaleOutOfRange();
    void holdsEveryDecimal();
    void compares_data();
    void compares();
    void comparesRandomNumbersAsTheirDigits();
};

void XDecimalTest::isZeroAtFirst()
{
    QCOMPARE(xdecimal().toString(), QStringLiteral("0"));
    QCOMPARE(xdecimal().scale(), 0);
}

void XDecimalTest::readsAndPrints_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("mantissa");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("printed");
    QTest::newRow("zero") << "0" << qint64(0) << 0 << "0";
    QTest::newRow("minus zero") << "-0.00" << qint64(0) << 2 << "0.00";
    QTest::newRow("plus") << "+1.50" << qint64(150) << 2 << "1.50";
    QTest::newRow("small") << "-0.05" << qint64(-5) << 2 << "-0.05";
    QTest::newRow("leading zeros") << "007.10" << qint64(710) << 2 << "7.10";
    QTest::newRow("beyond decimal")
        << "36028797018963968" << qint64(36028797018963968) << 0 << "36028797018963968";
    QTest::newRow("most") << "9223372036854775807" << most << 0 << "9223372036854775807";
    QTest::newRow("least") << "-9223372036854775808" << least << 0 << "-9223372036854775808";
    QTest::newRow("least with a point")
        << "-9.223372036854775808" << least << 18 << "-9.223372036854775808";
    QTest::newRow("largest scale")
        << "0." + QString(254, u'0') + "1" << qint64(1) << 255 << "0." + QString(254, u'0') + "1";
}

void XDecimalTest::readsAndPrints()
{
    QFETCH(QString, text);
    const xdecimal number(text);
    QTEST(number.mantissa(), "mantissa");
    QTEST(number.scale(), "scale");
    QTEST(number.toString(), "printed");
}

void XDecimalTest::refuses_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"",
                             "+",
                             "-",
                             ".",
                             "5.",
                             ".5",
                             "-.5",
                             " 1",
                             "1 ",
                             "1e3",
                             "1,5",
                             "1 000",
                             "--1",
                             "+-1",
                             "1.2.3",
                             "0x10",
                             "nan",
                             "9223372036854775808",
                             "-9223372036854775809",
                             "0.9223372036854775808",
                             "99999999999999999999999999999999999999999999999999",
                             "%1"})
        QTest::newRow(*text ? text : "empty") << text;
    QTest::newRow("arabic digit") << QStringLiteral("٣");
    QTest::newRow("scale 256") << "0." + QString(256, u'0');
}

void XDecimalTest::refuses()
{
    QFETCH(QString, text);
    QVERIFY(!xdecimal::fromText(text));
    QCOMPARE(thrownBy([&text] { const xdecimal number(text); }),
             "Некорректное число '" + text + "'");
}

void XDecimalTest::refusesAScaleOutOfRange()
{
    QCOMPARE(xdecimal(1, 255).scale(), 255);
    QVERIFY(!thrownBy([] { const xdecimal number(1, 256); }).isNull());
    QVERIFY(!thrownBy([] { const xdecimal number(1, -1); }).isNull());
}

void XDecimalTest::holdsEveryDecimal()
{
    for (const decimal& number : {decimal::zero, decimal(decimal::maxMantissa, 0),
                                  decimal(decimal::minMantissa, 255), decimal(-150, 2)}) {
        QCOMPARE(xdecimal(number).toString(), number.toString());
    }
}

void XDecimalTest::compares_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<int>("result");
    QTest::newRow("scale plays no part") << "1.5"
                                         << "1.50" << 0;
    QTest::newRow("zeros") << "0"
                           << "0.000" << 0;
    QTest::newRow("less") << "1.49"
                          << "1.5" << -1;
    QTest::newRow("negative") << "-1.49"
                              << "-1.5" << 1;
    QTest::newRow("signs") << "-1"
                           << "0.1" << -1;
    QTest::newRow("zero and negative") << "0"
                                       << "-0.1" << 1;
    QTest::newRow("ends") << "-9223372036854775808"
                          << "9223372036854775807" << -1;
    QTest::newRow("19 digits apart") << "1"
                                     << "0.9223372036854775807" << 1;
    QTest::newRow("largest 19 digits apart") << "9223372036854775807"
                                             << "-0.9223372036854775808" << 1;
    QTest::newRow("20 digits apart") << "-1"
                                     << "-0.09223372036854775807" << -1;
    QTest::newRow("far apart") << "1"
                               << "0." + QString(254, u'0') + "1" << 1;
    QTest::newRow("zero far apart") << "0"
                                    << "-0." + QString(254, u'0') + "1" << 1;
}

void XDecimalTest::compares()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    QFETCH(int, result);
    QCOMPARE(xdecimal(left).compare(xdecimal(right)), result);
    QCOMPARE(xdecimal(right).compare(xdecimal(left)), -result);
    QCOMPARE(xdecimal(left) == xdecimal(right), result == 0);
    QCOMPARE(xdecimal(left) < xdecimal(right), result < 0);
}

void XDecimalTest::comparesRandomNumbersAsTheirDigits()
{
    std::mt19937_64 random(7);
    const auto number = [&random](int scale) {
        const auto bits = static_cast<int>(random() % 64);
        return xdecimal(static_cast<qint64>(random()) >> bits, scale);
    };
    int equal = 0;
    for (int i = 0; i < 50000; ++i) {
        const int scale = static_cast<int>(random() % 60);
        const xdecimal left = number(scale);
        const xdecimal right = number(scale + static_cast<int>(random() % 25));
        const int expected = compareTexts(left.toString(), right.toString());
        equal += expected == 0;
        if (left.compare(right) != expected || right.compare(left) != -expected)
            QFAIL(qPrintable(left.toString() + " and " + right.toString()));
    }
    QVERIFY(equal > 0);
}

QTEST_GUILESS_MAIN(XDecimalTest)
#include "tst_xdecimal.moc"
