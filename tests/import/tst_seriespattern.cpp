// SPDX-License-Identifier: MIT
#include "seriespattern.h"

#include "support/series.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtTest/QTest>

using tadata::SeriesPattern;

class TestSeriesPattern final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsNamesOfSeries_data();
    void readsNamesOfSeries();
    void fillsItsPlaces_data();
    void fillsItsPlaces();
    void knowsSeriesByTheReferenceData();
};

void TestSeriesPattern::readsNamesOfSeries_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOne");
    const auto row = [](const char* name, bool isOne) {
        QTest::newRow(name) << QString::fromUtf8(name) << isOne;
    };
    row("S/B/X", true);
    row("С/Б 1/...", true);
    row("", false);
    row("S/B", false);
    row("S/B/X/Y", false);
    row("S/B/X/", false);
    row("/B/X", false);
    row("S//X", false);
    row("S/B/", false);
    row("./B/X", false);
    row("S/../X", false);
    row("S/B/..", false);
}

void TestSeriesPattern::readsNamesOfSeries()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isOne);
    const auto codes = tadata::seriesFrom(name);
    QCOMPARE(codes.has_value(), isOne);
    if (codes)
        QCOMPARE(codes->name(), name);
}

void TestSeriesPattern::fillsItsPlaces_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("series"); // null: none
    const auto row = [](const char* pattern, const char* file, const char* series) {
        QTest::addRow("%s of %s", pattern, file)
            << QString::fromUtf8(pattern) << QString::fromUtf8(file) << QString::fromUtf8(series);
    };
    row("S/B/X", "/in/a.csv", "S/B/X");
    row("S/B/{name}", "/in/a.csv", "S/B/a");
    row("S/B/{name}", "/in.d/a.b.csv", "S/B/a.b");
    row("S/B/{name}", "/in.d/a", "S/B/a");
    row("S/{ticker}/x{name}y", "a.csv", "S/T/xay");
    row("{name}{ticker}/{ticker}{name}/{name}{name}", "a.csv", "aT/Ta/aa");
    row("S/B/{ticker}", "a.csv", "S/B/T");
    // What comes into a place is no place.
    row("S/B/{name}", "{ticker}.csv", "S/B/{ticker}");
    row("S/B/{name", "a.csv", "S/B/{name");
    row("S/B/{Name}", "a.csv", "S/B/{Name}");
    row("S/B/{name}", ".csv", nullptr);
    row("S/B/{name}", "...csv", nullptr);
    row("{name}/B", "a.csv", nullptr);
    row("S/B/X/{name}", "a.csv", nullptr);
    row("", "a.csv", nullptr);
}

void TestSeriesPattern::fillsItsPlaces()
{
    QFETCH(const QString, pattern);
    QFETCH(const QString, file);
    QFETCH(const QString, series);
    const SeriesPattern filled(pattern);
    QCOMPARE(filled.text(), pattern);
    QCOMPARE(filled.hasTicker(), pattern.contains(QStringLiteral("{ticker}")));
    const auto codes = filled.codesOf(file, QStringLiteral("T"));
    QCOMPARE(codes.has_value(), !series.isNull());
    if (codes)
        QCOMPARE(codes->name(), series);
    // A code with a slash would be two, also where there are three then.
    QVERIFY(!SeriesPattern(QStringLiteral("S/{ticker}")).codesOf(file, QStringLiteral("B/X")));
    QVERIFY(!SeriesPattern(QStringLiteral("S/B/{ticker}")).codesOf(file, QStringLiteral("X/Y")));
}

void TestSeriesPattern::knowsSeriesByTheReferenceData()
{
    auto data = vexdesk::ReferenceData::demonstration();
    data.setSeries(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X"), 2);
    vexdesk::ReferenceData::install(data);
    const tadata::SeriesCodes known{QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("X")};
    const tadata::SeriesCodes other{QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("Y")};
    QVERIFY(tadata::isKnown(known));
    QVERIFY(!tadata::isKnown(other));
    TADataDescription wanted;
    testsupport::setSeries(wanted, "S", "B", "X");
    QVERIFY(wanted.stockId != 0 && wanted.boardId != 0 && wanted.securityId != 0);
    TADataDescription description;
    tadata::setSeries(description, known);
    QCOMPARE(testsupport::fieldsOf(description), testsupport::fieldsOf(wanted));
}

QTEST_GUILESS_MAIN(TestSeriesPattern)
#include "tst_seriespattern.moc"
