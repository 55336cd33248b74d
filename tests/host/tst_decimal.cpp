// SPDX-License-Identifier: MIT
#include <vexdesk/decimal.h>

#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtCore/QScopeGuard>
#include <QtTest/QTest>

#include <optional>
#include <type_traits>

static_assert(sizeof(decimal) == 8);
static_assert(std::is_trivially_copyable_v<decimal>);
static_assert(std::is_nothrow_default_constructible_v<decimal>);
static_assert(decimal::maxMantissa == 36028797018963967);
static_assert(decimal::minMantissa == -decimal::maxMantissa - 1);
static_assert(decimal::maxScale == 255);

namespace {

const QString largest = QStringLiteral("36028797018963967");
const QString smallest = QStringLiteral("-36028797018963968");

// What the call throws; null when it throws nothing.
template <typename Call>
QString thrownBy(Call call)
{
    try {
        call();
    } catch (const QString& message) {
        return message;
    }
    return QString();
}

QString incorrect(const QString& text)
{
    return QStringLiteral("Некорректное число '") + text + u'\'';
}

// The number as text, so that a failed comparison shows it; the mantissa and the scale tell 1.5
// from 1.50 as well.
QString shown(const decimal& number)
{
    return QStringLiteral("%1 (%2e-%3)")
        .arg(number.toString(), QString::number(number.mantissa()),
             QString::number(number.scale()));
}

// The slow reference: schoolbook arithmetic on strings of decimal digits.
struct SlowNumber
{
    bool negative = false;
    QByteArray digits = "0"; // no leading zeros, at least one digit
    int scale = 0;
};

QByteArray withoutLeadingZeros(const QByteArray& digits)
{
    qsizetype zeros = 0;
    while (zeros < digits.size() - 1 && digits.at(zeros) == '0')
        ++zeros;
    return digits.mid(zeros);
}

// -1, 0 or 1; neither may have leading zeros.
int compareDigits(const QByteArray& left, const QByteArray& right)
{
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left < right ? -1 : left > right ? 1 : 0;
}

SlowNumber normal(SlowNumber number)
{
    number.digits = withoutLeadingZeros(number.digits);
    if (number.digits == "0")
        number.negative = false;
    return number;
}

bool slowFits(const SlowNumber& number)
{
    const QByteArray limit = number.negative ? "36028797018963968" : "36028797018963967";
    return compareDigits(number.digits, limit) <= 0;
}

std::optional<SlowNumber> slowParse(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A([+-]?)([0-9]+)(?:\\.([0-9]+))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QByteArray fraction = match.captured(3).toLatin1();
    const SlowNumber number =
        normal({match.captured(1) == u"-", match.captured(2).toLatin1() + fraction,
                static_cast<int>(fraction.size())});
    if (!slowFits(number) || number.scale > 255)
        return std::nullopt;
    return number;
}

QString slowPrint(const SlowNumber& number)
{
    QByteArray text = number.digits;
    if (text.size() <= number.scale)
        text.prepend(QByteArray(number.scale + 1 - text.size(), '0'));
    if (number.scale > 0)
        text.insert(text.size() - number.scale, '.');
    return QString::fromLatin1(number.negative ? '-' + text : text);
}

// The digits without the last `count` of them, rounded half away from zero.
QByteArray withoutLastDigits(const QByteArray& digits, int count)
{
    if (count == 0)
        return digits;
    const QByteArray padded = QByteArray(count, '0') + digits;
    QByteArray kept = '0' + padded.left(padded.size() - count);
    if (padded.at(padded.size() - count) >= '5') {
        qsizetype at = kept.size() - 1;
        for (; kept.at(at) == '9'; --at)
            kept[at] = '0';
        kept[at] = static_cast<char>(kept.at(at) + 1);
    }
    return withoutLeadingZeros(kept);
}

SlowNumber slowWithMoreDigits(SlowNumber number, int scale)
{
    number.digits.append(QByteArray(scale - number.scale, '0'));
    number.scale = scale;
    return normal(number);
}

std::optional<SlowNumber> slowSetScale(const SlowNumber& number, int scale)
{
    if (scale < 0 || scale > 255)
        return std::nullopt;
    const SlowNumber result =
        scale >= number.scale
            ? slowWithMoreDigits(number, scale)
            : normal(
                  {number.negative, withoutLastDigits(number.digits, number.scale - scale), scale});
    return slowFits(result) ? std::optional(result) : std::nullopt;
}

int slowCompare(const SlowNumber& left, const SlowNumber& right)
{
    const int scale = qMax(left.scale, right.scale);
    const SlowNumber a = slowWithMoreDigits(left, scale);
    const SlowNumber b = slowWithMoreDigits(right, scale);
    if (a.negative != b.negative)
        return a.negative ? -1 : 1;
    const int order = compareDigits(a.digits, b.digits);
    return a.negative ? -order : order;
}

QByteArray addDigits(const QByteArray& left, const QByteArray& right)
{
    const qsizetype size = qMax(left.size(), right.size()) + 1;
    const QByteArray a = QByteArray(size - left.size(), '0') + left;
    const QByteArray b = QByteArray(size - right.size(), '0') + right;
    QByteArray sum(size, '0');
    int carry = 0;
    for (qsizetype i = size - 1; i >= 0; --i) {
        const int digit = (a.at(i) - '0') + (b.at(i) - '0') + carry;
        sum[i] = static_cast<char>('0' + digit % 10);
        carry = digit / 10;
    }
    return withoutLeadingZeros(sum);
}

// Larger minus smaller.
QByteArray subtractDigits(const QByteArray& larger, const QByteArray& smaller)
{
    const QByteArray b = QByteArray(larger.size() - smaller.size(), '0') + smaller;
    QByteArray difference(larger.size(), '0');
    int borrow = 0;
    for (qsizetype i = larger.size() - 1; i >= 0; --i) {
        const int digit = larger.at(i) - b.at(i) - borrow;
        borrow = digit < 0 ? 1 : 0;
        difference[i] = static_cast<char>('0' + digit + 10 * borrow);
    }
    return withoutLeadingZeros(difference);
}

std::optional<SlowNumber> slowAdd(const SlowNumber& left, const SlowNumber& right)
{
    const int scale = qMax(left.scale, right.scale);
    const SlowNumber a = slowWithMoreDigits(left, scale);
    const SlowNumber b = slowWithMoreDigits(right, scale);
    SlowNumber exact{a.negative, "0", scale};
    if (a.negative == b.negative) {
        exact.digits = addDigits(a.digits, b.digits);
    } else if (compareDigits(a.digits, b.digits) >= 0) {
        exact.digits = subtractDigits(a.digits, b.digits);
    } else {
        exact.negative = b.negative;
        exact.digits = subtractDigits(b.digits, a.digits);
    }
    // No number of more than 17 digits fits.
    const auto surplus = qMax(0, static_cast<int>(exact.digits.size()) - 17);
    for (int kept = scale - surplus; kept >= 0; --kept) {
        const SlowNumber rounded =
            normal({exact.negative, withoutLastDigits(exact.digits, scale - kept), kept});
        if (slowFits(rounded))
            return rounded;
    }
    return std::nullopt;
}

SlowNumber slow(qint64 mantissa, int scale)
{
    QByteArray digits = QByteArray::number(mantissa);
    if (mantissa < 0)
        digits.remove(0, 1);
    return {mantissa < 0, digits, scale};
}

QString shown(const SlowNumber& number)
{
    const QString sign = number.negative ? QStringLiteral("-") : QString();
    return QStringLiteral("%1 (%2e-%3)")
        .arg(slowPrint(number), sign + QString::fromLatin1(number.digits),
             QString::number(number.scale));
}

// Whether both are the same number in the same form, or both none.
bool agree(const std::optional<decimal>& number, const std::optional<SlowNumber>& expected)
{
    if (!number || !expected)
        return !number && !expected;
    const QByteArray sign = expected->negative ? "-" : "";
    return number->scale() == expected->scale &&
           QByteArray::number(number->mantissa()) == sign + expected->digits;
}

template <typename Number>
QString shown(const std::optional<Number>& number)
{
    return number ? shown(*number) : QStringLiteral("refused");
}

constexpr int randomCases = 100000;

// Numbers of every length, crowded where arithmetic goes wrong: at the limits, at powers of ten
// and at halves of them.
class NumberSource final
{
public:
    explicit NumberSource(quint32 seed)
        : m_random(seed)
    {}

    int below(int bound) { return static_cast<int>(m_random.bounded(bound)); }

    qint64 mantissa()
    {
        const qint64 sign = below(2) == 0 ? 1 : -1;
        switch (below(6)) {
        case 0:
            return below(2) == 0 ? decimal::maxMantissa - below(100)
                                 : decimal::minMantissa + below(100);
        case 1:
            return sign * (powerOfTen() + below(3) - 1);
        case 2:
            return sign * qMin(decimal::maxMantissa, 5 * (powerOfTen() / 10) + below(3) - 1);
        default:
            return sign * static_cast<qint64>(m_random.generate64() >> (9 + below(55)));
        }
    }

    int scale()
    {
        switch (below(4)) {
        case 0:
            return below(256);
        case 1:
            return below(45);
        default:
            return below(10);
        }
    }

    // At most 255 and often about as far from `scale` as a number has digits.
    int scaleNear(int scale)
    {
        if (below(2) == 0)
            return this->scale();
        return qBound(0, scale + below(51) - 25, 255);
    }

private:
    qint64 powerOfTen()
    {
        qint64 power = 1;
        for (int i = below(17); i > 0; --i)
            power *= 10;
        return power;
    }

    QRandomGenerator m_random;
};

} // namespace

class DecimalTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void defaultIsZeroWithoutDigits();
    void textIsRead_data();
    void textIsRead();
    void textIsRefused_data();
    void textIsRefused();
    void localePlaysNoPart();
    void mantissaAndScale();
    void mantissaAndScaleOutOfRange_data();
    void mantissaAndScaleOutOfRange();
    void toStringPrintsTheHeldScale_data();
    void toStringPrintsTheHeldScale();
    void setScaleRounds_data();
    void setScaleRounds();
    void setScaleRefused_data();
    void setScaleRefused();
    void compareIsExact_data();
    void compareIsExact();
    void sizeAndNotFormDecidesEquality();
    void sumIsRounded_data();
    void sumIsRounded();
    void sumThatDoesNotFit_data();
    void sumThatDoesNotFit();
    void addInPlace();
    void randomTexts();
    void randomNumbersPrint();
    void randomComparisons();
    void randomSums();
    void randomScales();
};

void DecimalTest::defaultIsZeroWithoutDigits()
{
    const decimal number;
    QCOMPARE(number.mantissa(), 0);
    QCOMPARE(number.scale(), 0);
    QVERIFY(number.isZero());
    QCOMPARE(number.toString(), QStringLiteral("0"));
    QCOMPARE(shown(decimal::zero), shown(number));
}

void DecimalTest::textIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("mantissa");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("printed");

    const auto row = [](const char* name, const QString& text, qint64 mantissa, int scale,
                        const QString& printed) {
        QTest::newRow(name) << text << mantissa << scale << printed;
    };
    row("zero", "0", 0, 0, "0");
    row("one digit", "7", 7, 0, "7");
    row("plus sign", "+1", 1, 0, "1");
    row("plus sign and fraction", "+1.50", 150, 2, "1.50");
    row("minus sign", "-1", -1, 0, "-1");
    row("small negative", "-0.05", -5, 2, "-0.05");
    row("fraction", "123.456", 123456, 3, "123.456");
    row("trailing zeros stay", "1.500", 1500, 3, "1.500");
    row("negative zero", "-0", 0, 0, "0");
    row("negative zero with digits", "-0.00", 0, 2, "0.00");
    row("positive zero", "+0.0", 0, 1, "0.0");
    row("leading zeros", "000123.40", 12340, 2, "123.40");
    row("many leading zeros", QString(1000, u'0') + "9.5", 95, 1, "9.5");
    row("negative with leading zeros", "-0007", -7, 0, "-7");
    row("largest", largest, decimal::maxMantissa, 0, largest);
    row("largest with plus", u'+' + largest, decimal::maxMantissa, 0, largest);
    row("largest behind zeros", QStringLiteral("000") + largest, decimal::maxMantissa, 0, largest);
    row("smallest", smallest, decimal::minMantissa, 0, smallest);
    row("largest mantissa with a point", "360287970189639.67", decimal::maxMantissa, 2,
        "360287970189639.67");
    row("smallest mantissa with a point", "-0.36028797018963968", decimal::minMantissa, 17,
        "-0.36028797018963968");
    row("255 zeros after the point", "0." + QString(255, u'0'), 0, 255, "0." + QString(255, u'0'));
    row("255 digits after the point", "0." + QString(254, u'0') + '3', 3, 255,
        "0." + QString(254, u'0') + '3');
    row("smallest after 255 digits", "-0." + QString(238, u'0') + smallest.mid(1),
        decimal::minMantissa, 255, "-0." + QString(238, u'0') + smallest.mid(1));
}

void DecimalTest::textIsRead()
{
    QFETCH(const QString, text);
    QFETCH(const qint64, mantissa);
    QFETCH(const int, scale);
    QFETCH(const QString, printed);

    const decimal number(text);
    QCOMPARE(number.mantissa(), mantissa);
    QCOMPARE(number.scale(), scale);
    QCOMPARE(number.isZero(), mantissa == 0);
    QCOMPARE(number.toString(), printed);

    const std::optional<decimal> same = decimal::fromText(text);
    QVERIFY(same.has_value());
    QCOMPARE(shown(same.value_or(decimal(-1, 255))), shown(number));
    const std::optional<decimal> ofBytes = decimal::fromText(QLatin1String(text.toLatin1()));
    QCOMPARE(shown(ofBytes.value_or(decimal(-1, 255))), shown(number));
}

// NOLINTNEXTLINE(readability-function-size): a table
void DecimalTest::textIsRefused_data()
{
    QTest::addColumn<QString>("text");

    const auto row = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
    row("null", QString());
    row("empty", "");
    row("plus alone", "+");
    row("minus alone", "-");
    row("point alone", ".");
    row("sign and point", "-.");
    row("nothing after the point", "5.");
    row("nothing after the point, signed", "-5.");
    row("nothing before the point", ".5");
    row("nothing before the point, signed", "+.5");
    row("two points", "1.2.3");
    row("two points in a row", "1..2");
    row("two signs", "--1");
    row("both signs", "+-1");
    row("sign behind", "1-");
    row("sign inside", "1.-5");
    row("blank alone", " ");
    row("blank before", " 1");
    row("blank behind", "1 ");
    row("blank inside", "1 000");
    row("blank after the sign", "- 1");
    row("tab", "1\t");
    row("line end", "1\n");
    row("carriage return", "1\r");
    row("no-break space", QStringLiteral("1\u00a0000"));
    row("byte-order mark", QStringLiteral("\ufeff1"));
    row("zero character inside", QStringLiteral("1") + QChar(0) + u'2');
    row("zero character behind", QStringLiteral("1") + QChar(0));
    row("exponent", "1e5");
    row("capital exponent", "1E5");
    row("signed exponent", "1.5e-3");
    row("decimal comma", "1,5");
    row("grouping comma", "1,000");
    row("grouping apostrophe", "1'000");
    row("underscore", "1_000");
    row("hexadecimal", "0x1f");
    row("letter", "1a");
    row("word", "abc");
    row("not a number", "nan");
    row("infinity", "inf");
    row("percent sign", "5%");
    row("currency", "$5");
    row("Arabic-Indic digits", QStringLiteral("\u0661\u0662"));
    row("Arabic-Indic digit after the point", QStringLiteral("1.\u0665"));
    row("fullwidth digit", QStringLiteral("\uff11"));
    row("superscript digit", QStringLiteral("1\u00b2"));
    row("minus of typography", QStringLiteral("\u22121"));
    row("fullwidth point", QStringLiteral("1\uff0e5"));
    row("character whose low byte is a digit", QStringLiteral("\u0131"));
    row("place marker 1", "%1");
    row("place marker 2", "%2");
    row("number and place markers", "1%1%2");
    row("one above the largest", "36028797018963968");
    row("one below the smallest", "-36028797018963969");
    row("one above the largest, with a point", "360287970189639.68");
    row("largest with a zero too many", largest + ".0");
    row("smallest with a zero too many", smallest + ".0");
    row("64 bits", "9223372036854775807");
    row("above 64 bits", "18446744073709551617");
    row("a wrapped 64-bit value", "18446744073709551616");
    row("a wrapped 56-bit value", "72057594037927937");
    row("very long", QString(5000, u'9'));
    row("256 zeros after the point", "0." + QString(256, u'0'));
    row("256 digits after the point", "0." + QString(255, u'0') + '3');
    row("512 zeros after the point", "0." + QString(512, u'0'));
}

void DecimalTest::textIsRefused()
{
    QFETCH(const QString, text);

    QCOMPARE(thrownBy([&text] { decimal{text}; }), incorrect(text));
    QVERIFY(!decimal::fromText(text).has_value());
}

void DecimalTest::localePlaysNoPart()
{
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    for (const QLocale::Language language : {QLocale::Russian, QLocale::German, QLocale::Arabic}) {
        QLocale::setDefault(QLocale(language));
        QCOMPARE(decimal("-1234567.50").toString(), QStringLiteral("-1234567.50"));
        QVERIFY(!decimal::fromText(u"1,5").has_value());
    }
}

void DecimalTest::mantissaAndScale()
{
    QCOMPARE(decimal(150, 2).toString(), QStringLiteral("1.50"));
    QCOMPARE(decimal(-5, 2).toString(), QStringLiteral("-0.05"));
    QCOMPARE(decimal(decimal::minMantissa, 0).toString(), smallest);
    const decimal corner(decimal::minMantissa, decimal::maxScale);
    QCOMPARE(corner.mantissa(), decimal::minMantissa);
    QCOMPARE(corner.scale(), 255);
}

void DecimalTest::mantissaAndScaleOutOfRange_data()
{
    QTest::addColumn<qint64>("mantissa");
    QTest::addColumn<int>("scale");
    QTest::newRow("mantissa too large") << decimal::maxMantissa + 1 << 0;
    QTest::newRow("mantissa too small") << decimal::minMantissa - 1 << 0;
    QTest::newRow("negative scale") << qint64(1) << -1;
    QTest::newRow("scale too large") << qint64(1) << 256;
    QTest::newRow("scale too large for zero") << qint64(0) << 256;
}

void DecimalTest::mantissaAndScaleOutOfRange()
{
    QFETCH(const qint64, mantissa);
    QFETCH(const int, scale);
    const QString message = thrownBy([&] { decimal(mantissa, scale); });
    QVERIFY2(message.startsWith(u"Некорректное число '"), qPrintable(message));
}

void DecimalTest::toStringPrintsTheHeldScale_data()
{
    QTest::addColumn<qint64>("mantissa");
    QTest::addColumn<int>("scale");
    QTest::addColumn<QString>("printed");
    const auto row = [](const char* name, qint64 mantissa, int scale, const QString& printed) {
        QTest::newRow(name) << mantissa << scale << printed;
    };
    row("as many digits as the scale", 25, 2, "0.25");
    row("fewer digits than the scale", 5, 4, "0.0005");
    row("negative, fewer digits than the scale", -5, 4, "-0.0005");
    row("zero with a scale", 0, 3, "0.000");
    row("whole number with a scale", 100, 2, "1.00");
    row("largest at scale 17", decimal::maxMantissa, 17, "0.36028797018963967");
    row("largest at scale 16", decimal::maxMantissa, 16, "3.6028797018963967");
    row("smallest at the largest scale", decimal::minMantissa, 255,
        "-0." + QString(238, u'0') + "36028797018963968");
    row("zero at the largest scale", 0, 255, "0." + QString(255, u'0'));
}

void DecimalTest::toStringPrintsTheHeldScale()
{
    QFETCH(const qint64, mantissa);
    QFETCH(const int, scale);
    QFETCH(const QString, printed);
    QCOMPARE(decimal(mantissa, scale).toString(), printed);
}

void DecimalTest::setScaleRounds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<short>("scale");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& text, short scale,
                        const QString& expected) {
        QTest::newRow(name) << text << scale << expected;
    };
    row("same scale", "1.50", 2, "1.50");
    row("more digits", "1.5", 4, "1.5000");
    row("more digits, negative", "-1.5", 2, "-1.50");
    row("exact digit dropped", "1.50", 1, "1.5");
    row("below half", "1.44", 1, "1.4");
    row("half goes up", "1.45", 1, "1.5");
    row("half of an even digit goes up", "2.5", 0, "3");
    row("half goes down below zero", "-1.45", 1, "-1.5");
    row("half of an even digit below zero", "-2.5", 0, "-3");
    row("below half, negative", "-1.44", 1, "-1.4");
    row("above half", "1.46", 1, "1.5");
    row("rounded once, not digit by digit", "1.4445", 0, "1");
    row("rounded once, negative", "-1.4445", 0, "-1");
    row("half becomes one", "0.5", 0, "1");
    row("minus half becomes minus one", "-0.5", 0, "-1");
    row("nothing left", "0.4", 0, "0");
    row("no negative zero", "-0.4", 0, "0");
    row("no negative zero with digits", "-0.004", 2, "0.00");
    row("carry through nines", "9.999", 2, "10.00");
    row("carry through nines, negative", "-0.999", 0, "-1");
    row("17 digits dropped", "0.36028797018963967", 0, "0");
    row("17 digits dropped, half", "0.03602879701896396", 1, "0.0");
    row("smallest mantissa", "-0.36028797018963968", 1, "-0.4");
    row("largest mantissa", "3.6028797018963967", 0, "4");
    row("largest fits exactly", "36028797018963.967", 3, "36028797018963.967");
    row("all digits of the largest scale", "0." + QString(238, u'0') + largest, 0, "0");
    row("zero to the largest scale", "0", 255, "0." + QString(255, u'0'));
    row("zero from the largest scale", "0." + QString(255, u'0'), 0, "0");
    row("just fits", "3.6", 16, "3.6000000000000000");
    row("just fits, negative", "-3.6", 16, "-3.6000000000000000");
    row("one to 16 digits", "1", 16, "1.0000000000000000");
}

void DecimalTest::setScaleRounds()
{
    QFETCH(const QString, text);
    QFETCH(const short, scale);
    QFETCH(const QString, expected);
    decimal number(text);
    number.setScale(scale);
    QCOMPARE(number.scale(), int(scale));
    QCOMPARE(number.toString(), expected);
}

void DecimalTest::setScaleRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<short>("scale");
    QTest::newRow("one digit too many") << "3.7" << short(16);
    QTest::newRow("one digit too many, negative") << "-3.7" << short(16);
    QTest::newRow("largest") << largest << short(1);
    QTest::newRow("smallest") << smallest << short(1);
    QTest::newRow("17 digits added") << "1" << short(17);
    QTest::newRow("18 digits added") << "1" << short(18);
    QTest::newRow("digits added up to a wrapped value") << "1" << short(64);
    QTest::newRow("to the largest scale") << "1.5" << short(255);
    QTest::newRow("negative scale") << "1.50" << short(-1);
    QTest::newRow("negative scale of zero") << "0" << short(-1);
    QTest::newRow("smallest short") << "1.50" << short(-32768);
    QTest::newRow("scale 256") << "1.50" << short(256);
    QTest::newRow("scale 256 of zero") << "0" << short(256);
    QTest::newRow("largest short") << "1.50" << short(32767);
}

void DecimalTest::setScaleRefused()
{
    QFETCH(const QString, text);
    QFETCH(const short, scale);
    decimal number(text);
    const QString before = shown(number);
    QCOMPARE(thrownBy([&] { number.setScale(scale); }), incorrect(text));
    QCOMPARE(shown(number), before);
}

void DecimalTest::compareIsExact_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<int>("order");
    const auto row = [](const char* name, const QString& left, const QString& right, int order) {
        QTest::newRow(name) << left << right << order;
    };
    const QString tiny = "0." + QString(254, u'0') + '1';
    row("equal", "1.5", "1.5", 0);
    row("equal at two scales", "1.5", "1.50", 0);
    row("equal whole numbers at two scales", "-7", "-7.000", 0);
    row("less", "1.49", "1.5", -1);
    row("greater", "1.51", "1.5", 1);
    row("signs", "-0.1", "0.1", -1);
    row("negative numbers", "-1.51", "-1.5", -1);
    row("zeros of all scales", "0", "0." + QString(255, u'0'), 0);
    row("zero and the smallest step", "0", tiny, -1);
    row("zero and the smallest step below", "0", u'-' + tiny, 1);
    row("one and the smallest step", "1", tiny, 1);
    row("minus one and the smallest step", "-1", tiny, -1);
    row("minus one and the smallest step below", "-1", u'-' + tiny, -1);
    row("largest and the smallest step", largest, tiny, 1);
    row("limits", smallest, largest, -1);
    row("limits at far scales", smallest, "0." + QString(238, u'0') + largest, -1);
    row("16 scales apart, equal", "3", "3.0000000000000000", 0);
    row("16 scales apart, one step", "3", "3.0000000000000001", -1);
    row("17 scales apart", "1", "0.36028797018963967", 1);
    row("17 scales apart, negative", "-1", "-0.36028797018963968", -1);
    row("neighbours beyond a double", "9007199254740993", "9007199254740992", 1);
    row("neighbours of fractions beyond a double", "90071992547409.93", "90071992547409.92", 1);
}

void DecimalTest::compareIsExact()
{
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    QFETCH(const int, order);
    const decimal a(left);
    const decimal b(right);
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    QCOMPARE(sign(a.compare(b)), order);
    QCOMPARE(sign(b.compare(a)), -order);
    QCOMPARE(a.compare(a), 0);
    QCOMPARE(a == b, order == 0);
    QCOMPARE(a != b, order != 0);
    QCOMPARE(a < b, order < 0);
    QCOMPARE(a <= b, order <= 0);
    QCOMPARE(a > b, order > 0);
    QCOMPARE(a >= b, order >= 0);
}

void DecimalTest::sizeAndNotFormDecidesEquality()
{
    const decimal brief("1.5");
    const decimal full("1.50");
    QVERIFY(brief == full);
    QVERIFY(!(brief < full) && !(full < brief));
    QVERIFY(brief.toString() != full.toString());
}

// NOLINTNEXTLINE(readability-function-size): a table
void DecimalTest::sumIsRounded_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("sum");
    const auto row = [](const char* name, const QString& left, const QString& right,
                        const QString& sum) { QTest::newRow(name) << left << right << sum; };
    const QString tiny = "0." + QString(254, u'0') + '1';
    row("same scale", "1.50", "2.25", "3.75");
    row("larger scale wins", "1.5", "2.25", "3.75");
    row("zeros stay", "1.50", "0.5", "2.00");
    row("whole numbers", "2", "3", "5");
    row("signs", "-1.5", "0.25", "-1.25");
    row("nothing left keeps the scale", "-0.05", "0.05", "0.00");
    row("zeros at two scales", "0", "0.00", "0.00");
    row("zero takes the larger scale", "1.5", "0.000", "1.500");
    row("zero of scale 0 changes nothing", "0", "-1.50", "-1.50");
    row("up to the largest", "36028797018963966", "1", largest);
    row("down to the smallest", "-36028797018963967", "-1", smallest);
    row("limits", largest, smallest, "-1");
    row("a digit is dropped", largest, "0.4", largest);
    row("a digit is dropped below zero", smallest, "-0.4", smallest);
    row("a zero's digits are dropped", largest, "0.00", largest);
    row("same scale, a digit is dropped", "30000000000000.000", "30000000000000.006",
        "60000000000000.01");
    row("same scale, half goes away from zero", "-30000000000000.000", "-30000000000000.005",
        "-60000000000000.01");
    row("two digits dropped, rounded once", "9000000000000000", "0.45", "9000000000000000");
    row("two digits dropped, rounded once below zero", "-9000000000000000", "-0.45",
        "-9000000000000000");
    row("two digits dropped, half", "9000000000000000", "0.50", "9000000000000001");
    row("rounding itself overflows", "3602879701896396.7", "0.06", "3602879701896397");
    row("rounding itself overflows, the smallest fits", "-3602879701896396.7", "-0.06",
        "-3602879701896396.8");
    row("17 scales apart", "1", "0.00000000000000004", "1.0000000000000000");
    row("17 scales apart, half", "1", "0.00000000000000005", "1.0000000000000001");
    row("below one, just under half", "1", "-0.000000000000000049", "1.0000000000000000");
    row("below one, half", "1", "-0.00000000000000005", "1.0000000000000000");
    row("below one, just above half", "1", "-0.0000000000000000500000000001", "0.9999999999999999");
    row("as far apart as can be", "1", tiny, "1.0000000000000000");
    row("as far apart as can be, negative", "-1", u'-' + tiny, "-1.0000000000000000");
    row("as far apart as can be, signs differ", "1", u'-' + tiny, "1.0000000000000000");
    row("largest and the smallest step", largest, tiny, largest);
    row("smallest and the smallest step", smallest, u'-' + tiny, smallest);
    row("largest and a zero of all digits", largest, "0." + QString(255, u'0'), largest);
    row("largest mantissa at the far scale", "7", "0." + QString(238, u'0') + largest,
        "7.000000000000000");
}

void DecimalTest::sumIsRounded()
{
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    QFETCH(const QString, sum);
    QCOMPARE((decimal(left) + decimal(right)).toString(), sum);
    QCOMPARE((decimal(right) + decimal(left)).toString(), sum);
}

void DecimalTest::sumThatDoesNotFit_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("right");
    QTest::newRow("one above the largest") << largest << "1";
    QTest::newRow("one below the smallest") << smallest << "-1";
    QTest::newRow("twice the largest") << largest << largest;
    QTest::newRow("rounded up over the largest") << largest << "0.5";
    QTest::newRow("rounded down over the smallest") << smallest << "-0.50";
    QTest::newRow("all digits dropped") << "36028797018963000"
                                        << "968.00";
}

void DecimalTest::sumThatDoesNotFit()
{
    QFETCH(const QString, left);
    QFETCH(const QString, right);
    decimal number(left);
    const QString message = thrownBy([&] { number += decimal(right); });
    QVERIFY2(message.startsWith(u"Некорректное число '"), qPrintable(message));
    QCOMPARE(number.toString(), left);
}

void DecimalTest::addInPlace()
{
    decimal total;
    for (int i = 0; i < 1000; ++i)
        total += decimal("0.01");
    QCOMPARE(total.toString(), QStringLiteral("10.00"));
    total += total;
    QCOMPARE(total.toString(), QStringLiteral("20.00"));
}

void DecimalTest::randomTexts()
{
    static constexpr char16_t wild[] = u"0123456789+-. ,eE%'\u0661";
    NumberSource source(1);
    const auto digits = [&source](int count) {
        QString text;
        for (int i = 0; i < count; ++i)
            text += QChar(u'0' + source.below(10));
        return text;
    };
    int accepted = 0;
    for (int i = 0; i < randomCases; ++i) {
        QString text;
        if (source.below(3) == 0) {
            for (int length = source.below(8); length > 0; --length)
                text += QChar(wild[source.below(static_cast<int>(std::size(wild)) - 1)]);
        } else {
            static constexpr QStringView signs[] = {u"", u"+", u"-"};
            text += signs[source.below(3)];
            text += QString(source.below(8) == 0 ? source.below(40) : 0, u'0');
            text += source.below(8) == 0 ? largest.left(14) + digits(3) : digits(source.below(19));
            if (source.below(2) == 0) {
                text += u'.';
                text += QString(source.below(8) == 0 ? source.below(270) : 0, u'0');
                text += digits(source.below(10));
            }
            if (source.below(8) == 0 && !text.isEmpty())
                text[source.below(static_cast<int>(text.size()))] =
                    QChar(wild[source.below(static_cast<int>(std::size(wild)) - 1)]);
        }

        const std::optional<SlowNumber> expected = slowParse(text);
        const std::optional<decimal> actual = decimal::fromText(text);
        accepted += expected.has_value();
        if (!agree(actual, expected))
            QFAIL(qPrintable(QStringLiteral("case %1, '%2': %3 instead of %4")
                                 .arg(QString::number(i), text, shown(actual), shown(expected))));
        // A digit of another script becomes a question mark, which is none either.
        if (!agree(decimal::fromText(QLatin1String(text.toLatin1())), expected))
            QFAIL(qPrintable(QStringLiteral("case %1, '%2' as bytes").arg(i).arg(text)));
    }
    // The source must keep reaching both sides.
    QVERIFY2(accepted > randomCases / 5 && accepted < randomCases * 4 / 5,
             qPrintable(QString::number(accepted)));
}

void DecimalTest::randomNumbersPrint()
{
    NumberSource source(2);
    for (int i = 0; i < randomCases; ++i) {
        const qint64 mantissa = source.mantissa();
        const int scale = source.scale();
        const QString wanted = slowPrint(slow(mantissa, scale));
        const QString got = decimal(mantissa, scale).toString();
        if (got != wanted)
            QFAIL(qPrintable(QStringLiteral("case %1, %2e-%3: %4 instead of %5")
                                 .arg(QString::number(i), QString::number(mantissa),
                                      QString::number(scale), got, wanted)));
        const std::optional<decimal> back = decimal::fromText(got);
        if (!back || back->mantissa() != mantissa || back->scale() != scale)
            QFAIL(qPrintable(
                QStringLiteral("case %1, %2 is not read back").arg(QString::number(i), got)));
    }
}

void DecimalTest::randomComparisons()
{
    NumberSource source(3);
    int equal = 0;
    for (int i = 0; i < randomCases; ++i) {
        const qint64 leftMantissa = source.mantissa();
        const int leftScale = source.scale();
        decimal left(leftMantissa, leftScale);
        decimal right(source.mantissa(), source.scaleNear(leftScale));
        if (source.below(4) == 0) {
            // The same number, or its neighbour, with more digits.
            right = left;
            try {
                right.setScale(static_cast<short>(qMin(255, leftScale + source.below(12))));
                right = decimal(right.mantissa() + source.below(3) - 1, right.scale());
            } catch (const QString&) {
                right = left;
            }
        }
        const int wanted =
            slowCompare(slow(left.mantissa(), left.scale()), slow(right.mantissa(), right.scale()));
        equal += wanted == 0;
        const int got = left.compare(right);
        if ((got > 0) - (got < 0) != wanted)
            QFAIL(qPrintable(QStringLiteral("case %1, %2 against %3: %4 instead of %5")
                                 .arg(QString::number(i), shown(left), shown(right),
                                      QString::number(got), QString::number(wanted))));
    }
    QVERIFY2(equal > randomCases / 50, qPrintable(QString::number(equal)));
}

void DecimalTest::randomSums()
{
    NumberSource source(4);
    int dropped = 0;
    int thrown = 0;
    for (int i = 0; i < randomCases; ++i) {
        const int leftScale = source.scale();
        decimal left(source.mantissa(), leftScale);
        decimal right(source.mantissa(), source.scaleNear(leftScale));
        if (source.below(2) == 0)
            std::swap(left, right);

        const std::optional<SlowNumber> expected =
            slowAdd(slow(left.mantissa(), left.scale()), slow(right.mantissa(), right.scale()));
        thrown += !expected;
        dropped += expected && expected->scale < qMax(left.scale(), right.scale());
        std::optional<decimal> actual;
        thrownBy([&] { actual = left + right; });
        if (!agree(actual, expected))
            QFAIL(qPrintable(QStringLiteral("case %1, %2 + %3: %4 instead of %5")
                                 .arg(QString::number(i), shown(left), shown(right), shown(actual),
                                      shown(expected))));
    }
    QVERIFY2(dropped > randomCases / 20, qPrintable(QString::number(dropped)));
    QVERIFY2(thrown > randomCases / 1000, qPrintable(QString::number(thrown)));
}

void DecimalTest::randomScales()
{
    NumberSource source(5);
    int thrown = 0;
    for (int i = 0; i < randomCases; ++i) {
        const decimal before(source.mantissa(), source.scale());
        const int scale =
            source.below(50) == 0 ? source.below(600) - 300 : source.scaleNear(before.scale());
        const std::optional<SlowNumber> expected =
            slowSetScale(slow(before.mantissa(), before.scale()), scale);
        thrown += !expected;
        decimal number = before;
        const bool threw = !thrownBy([&] { number.setScale(static_cast<short>(scale)); }).isNull();
        // What is refused must leave the number as it was.
        const SlowNumber wanted = expected.value_or(slow(before.mantissa(), before.scale()));
        if (threw == expected.has_value() || !agree(number, wanted))
            QFAIL(qPrintable(
                QStringLiteral("case %1, %2 to scale %3: %4%5 instead of %6")
                    .arg(QString::number(i), shown(before), QString::number(scale), shown(number),
                         threw ? QStringLiteral(" (thrown)") : QString(), shown(expected))));
    }
    QVERIFY2(thrown > randomCases / 20 && thrown < randomCases / 2,
             qPrintable(QString::number(thrown)));
}

QTEST_GUILESS_MAIN(DecimalTest)
#include "tst_decimal.moc"
