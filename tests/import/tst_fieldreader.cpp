// SPDX-License-Identifier: MIT
// The reader of fields beside the framework's own functions: it may be faster, never different.

#include "fieldreader.h"

#include "support/strictlog.h"
#include "textformats.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

class TestFieldReader final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsEveryDayOfTwoCenturies_data();
    void readsEveryDayOfTwoCenturies();
    void readsEveryTimeOfADay_data();
    void readsEveryTimeOfADay();
    void readsHostileDates_data();
    void readsHostileDates();
    void readsHostileTimes_data();
    void readsHostileTimes();
    void readsHostileIntegers();
    void takesQuotedLettersForText();
};

namespace {

QDate plainDate(const QString& text, const QString& pattern)
{
    const QDate date = QDate::fromString(text, pattern);
    return date.year() <= 1999 && !pattern.contains(QStringLiteral("yyyy")) ? date.addYears(100)
                                                                            : date;
}

// Beside those that are offered, some that a script may ask for.
QStringList datePatterns()
{
    QStringList patterns;
    for (const tadata::TextFormat& format : tadata::dateFormats())
        patterns.append(format.pattern);
    patterns << QStringLiteral("yyyy-MM-dd") << QStringLiteral("d.M.yyyy")
             << QStringLiteral("yyyyyyyyyyyyMMdd") << QStringLiteral("yyyyMMdddddddddddddd")
             << QStringLiteral("yyyyMMddMM") << QStringLiteral("yyMMddyy")
             << QStringLiteral("dd'MM'yyyy") << QStringLiteral("ddd") << QStringLiteral("yyyy")
             << QStringLiteral("MMdd") << QString();
    return patterns;
}

QStringList timePatterns()
{
    QStringList patterns;
    for (const tadata::TextFormat& format : tadata::timeFormats())
        patterns.append(format.pattern);
    patterns << QStringLiteral("HHmmss") << QStringLiteral("h:mm") << QStringLiteral("hhmmzzz")
             << QStringLiteral("hhmmssssssssssssss") << QStringLiteral("hh'mm'ss")
             << QStringLiteral("hh:mm:ss.zzz") << QStringLiteral("hhmmap") << QStringLiteral("hh")
             << QString();
    return patterns;
}

void addPatterns(const QStringList& patterns)
{
    QTest::addColumn<QString>("pattern");
    for (const QString& pattern : patterns)
        QTest::newRow(pattern.isEmpty() ? "empty" : qPrintable(pattern)) << pattern;
}

// A text of the pattern's shape, now and then with something else in it.
QString randomText(QRandomGenerator& random, const QString& pattern)
{
    static const QString strange = QStringLiteral("0123456789 -+.,:/x٣\u0000");
    QString text;
    for (const QChar character : pattern)
        text += character.isLetter() ? QChar(u'0' + random.bounded(10)) : character;
    switch (random.bounded(6)) {
    case 0:
        text.insert(random.bounded(static_cast<int>(text.size() + 1)),
                    strange[random.bounded(static_cast<int>(strange.size()))]);
        break;
    case 1:
        text.chop(1 + random.bounded(2));
        break;
    case 2:
        if (!text.isEmpty())
            text[random.bounded(static_cast<int>(text.size()))] =
                strange[random.bounded(static_cast<int>(strange.size()))];
        break;
    default:
        break;
    }
    return text;
}

constexpr int hostileTexts = 4000;

} // namespace

void TestFieldReader::readsEveryDayOfTwoCenturies_data()
{
    addPatterns(datePatterns());
}

void TestFieldReader::readsEveryDayOfTwoCenturies()
{
    QFETCH(const QString, pattern);
    for (QDate day(1899, 12, 25); day.year() < 2101; day = day.addDays(1)) {
        const QString text = day.toString(pattern);
        const QDate wanted = plainDate(text, pattern);
        if (tadata::readDate(text, pattern) != wanted)
            QCOMPARE(tadata::readDate(text, pattern), wanted);
    }
}

void TestFieldReader::readsEveryTimeOfADay_data()
{
    addPatterns(timePatterns());
}

void TestFieldReader::readsEveryTimeOfADay()
{
    QFETCH(const QString, pattern);
    for (int second = 0; second < 86400; second += 7) {
        const QString text = QTime(0, 0).addSecs(second).toString(pattern);
        const QTime wanted = QTime::fromString(text, pattern);
        if (tadata::readTime(text, pattern) != wanted)
            QCOMPARE(tadata::readTime(text, pattern), wanted);
    }
}

void TestFieldReader::readsHostileDates_data()
{
    addPatterns(datePatterns());
}

void TestFieldReader::readsHostileDates()
{
    QFETCH(const QString, pattern);
    QRandomGenerator random(20240115);
    for (int i = 0; i < hostileTexts; ++i) {
        const QString text = randomText(random, pattern);
        const QDate wanted = plainDate(text, pattern);
        if (tadata::readDate(text, pattern) != wanted)
            QVERIFY2(tadata::readDate(text, pattern) == wanted, qPrintable(text));
    }
}

void TestFieldReader::readsHostileTimes_data()
{
    addPatterns(timePatterns());
}

void TestFieldReader::readsHostileTimes()
{
    QFETCH(const QString, pattern);
    QRandomGenerator random(20240116);
    for (int i = 0; i < hostileTexts; ++i) {
        const QString text = randomText(random, pattern);
        const QTime wanted = QTime::fromString(text, pattern);
        if (tadata::readTime(text, pattern) != wanted)
            QVERIFY2(tadata::readTime(text, pattern) == wanted, qPrintable(text));
    }
}

void TestFieldReader::readsHostileIntegers()
{
    QRandomGenerator random(20240117);
    const QString pattern = QStringLiteral("dddddddddddddddddddd");
    for (int i = 0; i < hostileTexts; ++i) {
        const QString text = randomText(random, pattern.left(random.bounded(21)));
        bool wantedOk = false;
        const qint64 wanted = text.toLongLong(&wantedOk);
        QVERIFY(tadata::readInteger(text) == (wantedOk ? std::optional(wanted) : std::nullopt));
        const qint32 wantedSmall = text.toInt(&wantedOk);
        QVERIFY(tadata::readSmallInteger(text) ==
                (wantedOk ? std::optional(wantedSmall) : std::nullopt));
    }
}

// Where the text has a quote too, the letters between are no number of a date.
void TestFieldReader::takesQuotedLettersForText()
{
    const QString date = QStringLiteral("dd'MM'yyyy");
    QVERIFY(!tadata::readDate(QStringLiteral("15'01'2024"), date).isValid());
    const QString time = QStringLiteral("hh'mm'ss");
    QVERIFY(!tadata::readTime(QStringLiteral("10'15'30"), time).isValid());
    QCOMPARE(tadata::readTime(QStringLiteral("10mm30"), time), QTime(10, 0, 30));
}

QTEST_GUILESS_MAIN(TestFieldReader)
#include "tst_fieldreader.moc"
