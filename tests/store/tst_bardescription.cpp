// SPDX-License-Identifier: MIT
#include "bardescription.h"

#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QTextStream>
#include <QtTest/QTest>

class TestBarDescription final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void isEmptyOnConstruction();
    void comesFromALineOfADayFile();
    void writesEightFieldsAndOneLineFeed();
    void writesVolumesBeyond32Bits();
    void writesTheSameInEveryLocale();
    void writesAnInvalidTimeAsNothing();
};

namespace {

BarDescription sampleBar()
{
    BarDescription bar;
    bar.valid = true;
    bar.date = QDate(2018, 12, 14);
    bar.time = QTime(9, 30);
    bar.open = decimal(QStringLiteral("1.50"));
    bar.high = decimal(QStringLiteral("1.70"));
    bar.low = decimal(QStringLiteral("-0.05"));
    bar.close = decimal(QStringLiteral("1.60"));
    bar.volume = 1234567;
    bar.value = decimal(QStringLiteral("1975307.20"));
    bar.openInterest = -42;
    return bar;
}

QString lineOf(const BarDescription& bar)
{
    QString text;
    QTextStream stream(&text);
    stream << bar;
    return text;
}

} // namespace

void TestBarDescription::isEmptyOnConstruction()
{
    const BarDescription bar;
    QVERIFY(!bar.valid);
    QVERIFY(bar.error.isEmpty());
    QVERIFY(bar.date.isNull());
    QVERIFY(!bar.time.isValid());
    for (const decimal& number : {bar.open, bar.high, bar.low, bar.close, bar.value})
        QCOMPARE(number.toString(), QStringLiteral("0"));
    QCOMPARE(bar.volume, 0);
    QCOMPARE(bar.openInterest, 0);
}

void TestBarDescription::comesFromALineOfADayFile()
{
    const BarDescription wanted = sampleBar();
    const BarDescription bar =
        tadata::barFromRecordLine(lineOf(wanted).chopped(1).toUtf8(), wanted.date);
    QVERIFY(bar.valid);
    QVERIFY(bar.error.isNull());
    QCOMPARE(bar.date, wanted.date);
    QCOMPARE(lineOf(bar), lineOf(wanted));
    QVERIFY(tadata::barFromRecordLine("no line of a day file", wanted.date).valid);
}

void TestBarDescription::writesEightFieldsAndOneLineFeed()
{
    QCOMPARE(lineOf(sampleBar()),
             QStringLiteral("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42\n"));
}

void TestBarDescription::writesVolumesBeyond32Bits()
{
    BarDescription bar = sampleBar();
    bar.volume = 3'000'000'000;
    QVERIFY(lineOf(bar).contains(QStringLiteral(";3000000000;")));
}

void TestBarDescription::writesTheSameInEveryLocale()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString line = lineOf(sampleBar());
    QLocale::setDefault(before);
    QCOMPARE(line, QStringLiteral("093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42\n"));
}

void TestBarDescription::writesAnInvalidTimeAsNothing()
{
    BarDescription bar = sampleBar();
    bar.time = QTime();
    QVERIFY(lineOf(bar).startsWith(QStringLiteral(";1.50;")));
}

QTEST_GUILESS_MAIN(TestBarDescription)
#include "tst_bardescription.moc"
