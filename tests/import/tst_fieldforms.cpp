// SPDX-License-Identifier: MIT
// The forms of dates and times that a guess tries, beside the import's parser: a field of the
// form's length is in the form when the parser takes it.

#include "fieldforms.h"

#include "lineparser.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QTest>

using namespace tadata;

class TestFieldForms final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void readsDatesAsTheParser_data();
    void readsDatesAsTheParser();
    void readsTimesAsTheParser_data();
    void readsTimesAsTheParser();
    void readsDaysOfThisCentury();
    void readsOtherPatternsOfAnyLength();
    void readsUnusualDatesAsTheParser_data();
    void readsUnusualDatesAsTheParser();
    void readsUnusualTimesAsTheParser_data();
    void readsUnusualTimesAsTheParser();
};

namespace {

// As long as the pattern in most cases, with digits where it has letters in most.
QString field(QRandomGenerator& random, const QString& pattern)
{
    static const QString hostile = QStringLiteral(" \t+-./:,0123456789aAPyMd'\"\u00a0\u0661\uff11");
    QString text;
    for (const QChar sign : pattern) {
        if (random.bounded(12) == 0)
            text += hostile[random.bounded(hostile.size())];
        else if (sign.isLetter())
            text += QChar(u'0' + random.bounded(sign == u'y' || sign == u's' ? 10 : 4));
        else
            text += sign;
    }
    return text;
}

void addForms(const QStringList& forms)
{
    QTest::addColumn<QString>("pattern");
    for (const QString& form : forms)
        QTest::newRow(qPrintable(form)) << form;
}

constexpr int attempts = 5'000;

void addFormColumns()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
}

void form(const char* pattern, const char* text)
{
    QTest::addRow("%s: %s", pattern, text) << QString::fromUtf8(pattern) << QString::fromUtf8(text);
}

} // namespace

void TestFieldForms::readsDatesAsTheParser_data()
{
    addForms(knownDateForms());
}

void TestFieldForms::readsDatesAsTheParser()
{
    QFETCH(const QString, pattern);
    const DateForm form(pattern);
    QRandomGenerator random(1);
    int read = 0;
    for (int i = 0; i < attempts; ++i) {
        const QString text = field(random, pattern);
        const QDate expected = dateOfField(text, pattern);
        const std::optional<QDate> date = form.read(text.toUtf8());
        QVERIFY2(date.value_or(QDate()) == expected, qPrintable(text));
        read += date ? 1 : 0;
    }
    QVERIFY(read > attempts / 50);
    QVERIFY(!form.read(QDate(2024, 11, 12).toString(pattern).toUtf8() + ' '));
    QVERIFY(!form.read(' ' + QDate(2024, 11, 12).toString(pattern).toUtf8()));
}

void TestFieldForms::readsTimesAsTheParser_data()
{
    addForms(knownTimeForms());
}

void TestFieldForms::readsTimesAsTheParser()
{
    QFETCH(const QString, pattern);
    const TimeForm form(pattern);
    QRandomGenerator random(1);
    int read = 0;
    for (int i = 0; i < attempts; ++i) {
        const QString text = field(random, pattern);
        const QTime expected = QTime::fromString(text, pattern);
        const std::optional<QTime> time = form.read(text.toUtf8());
        QVERIFY2(time.value_or(QTime()) == expected, qPrintable(text));
        read += time ? 1 : 0;
    }
    QVERIFY(read > attempts / 50);
    QVERIFY(!form.read(QTime(10, 11).toString(pattern).toUtf8() + '0'));
}

void TestFieldForms::readsDaysOfThisCentury()
{
    const DateForm form(QStringLiteral("ddMMyy"));
    QCOMPARE(form.read("311299"), std::optional(QDate(2099, 12, 31)));
    QCOMPARE(form.read("290204"), std::optional(QDate(2004, 2, 29)));
    // 1900 had no such day.
    QCOMPARE(form.read("290200"), std::nullopt);
    QCOMPARE(form.read("300204"), std::nullopt);
}

void TestFieldForms::readsOtherPatternsOfAnyLength()
{
    const DateForm date(QStringLiteral("d.M.yyyy"));
    QCOMPARE(date.read("1.2.2024"), std::optional(QDate(2024, 2, 1)));
    QCOMPARE(date.read("11.12.2024"), std::optional(QDate(2024, 12, 11)));
    QCOMPARE(date.read("1.13.2024"), std::nullopt);
    const TimeForm time(QStringLiteral("h:mm:ss.zzz"));
    QCOMPARE(time.read("9:30:00.500"), std::optional(QTime(9, 30, 0, 500)));
    QCOMPARE(time.read("9:60:00.500"), std::nullopt);
    QCOMPARE(TimeForm(QStringLiteral("hh-mm")).read("10-30"), std::optional(QTime(10, 30)));
}

void TestFieldForms::readsUnusualDatesAsTheParser_data()
{
    addFormColumns();
    form("yyyy年MM月dd", "2024年01月15");
    form("yyyy年MM月dd", "2024?01?15");
    form("yyyy'-'MM'-'dd", "2024-01-15");
    form("yyyy'-'MM'-'dd", "2024'-'01'-'15");
    form("dd.MM", "15.01");
    form("dd.yyyy", "15.2024");
    form("MM.yyyy", "01.2024");
    form("MM.yyyy", "00.2024");
    form("dd.MM.yyy", "15.01.024");
    form("dd.MMM.yyyy", "15.001.2024");
    form("ddd.MM.yyyy", "015.01.2024");
    form("yyyyMMhh", "20240115");
    form("hhyyyyMM", "15202401");
    form("yyyyMMMM", "20240101");
    form("ddMMMM", "150101");
    form("dd.MM.dd", "15.01.15");
    form("dd.MM.dd", "15.01.16");
    form("yyyyy.MM.dd", "02024.01.15");
    form("yyyy.MM.dd.dd", "2024.01.15.15");
    form("yyyy_MM_dd", "0000_01_15");
    form("yyyy_MM_dd", "2024_00_15");
    form("yyyy_MM_dd", "2024_01_00");
    form("yyyy_MM_dd", "2023_02_29");
    form("yyyy_MM_dd", "2024_02_29");
    form("yy_MM_dd", "00_02_29");
    form("yy_MM_dd", "04_02_29");
}

void TestFieldForms::readsUnusualDatesAsTheParser()
{
    QFETCH(const QString, pattern);
    QFETCH(const QString, text);
    QCOMPARE(DateForm(pattern).read(text.toUtf8()).value_or(QDate()), dateOfField(text, pattern));
}

void TestFieldForms::readsUnusualTimesAsTheParser_data()
{
    addFormColumns();
    form("mm:hh", "30:10");
    form("ss:mm", "30:10");
    form("hh:ss", "10:30");
    form("hh:mm:hh", "10:30:10");
    form("h:mm", "9:30");
    form("hhh:mm", "010:30");
    form("hh'h'mm", "10h30");
    form("hh'h'mm", "10'h'30");
    form("hh", "10");
    form("hh:mm:ss.zzz", "10:30:15.500");
    form("hh:mm ap", "10:30 pm");
    form("hh-mm", "24-00");
    form("hh-mm", "23-60");
    form("hh-mm-ss", "23-59-60");
    form("hh-mm-ss", "23-59-59");
}

void TestFieldForms::readsUnusualTimesAsTheParser()
{
    QFETCH(const QString, pattern);
    QFETCH(const QString, text);
    QCOMPARE(TimeForm(pattern).read(text.toUtf8()).value_or(QTime()),
             QTime::fromString(text, pattern));
}

QTEST_GUILESS_MAIN(TestFieldForms)
#include "tst_fieldforms.moc"
