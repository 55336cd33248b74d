// SPDX-License-Identifier: MIT
// The tree of the stored series as a model: what it says of each, and what stays when the store
// changes.

#include "desk/chart/seriestreemodel.h"
#include "support/strictlog.h"

#include <vexdesk/terminal/referencedata.h>

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using vexdesk::SeriesName;
using vexdesk::SeriesTreeModel;
using vexdesk::StoredSeries;

namespace {

StoredSeries stored(const char* codes, int timeframe = 60, const QDate& first = {2024, 1, 15},
                    const QDate& last = {2024, 1, 17})
{
    const QStringList parts = QString::fromLatin1(codes).split(u'/');
    StoredSeries series;
    series.stockCode = parts.at(0);
    series.boardCode = parts.at(1);
    series.securityName = parts.at(2);
    series.timeframe = timeframe;
    series.firstDay = first;
    series.lastDay = last;
    return series;
}

SeriesName name(const char* codes)
{
    const StoredSeries series = stored(codes);
    return {series.stockCode, series.boardCode, series.securityName};
}

// One line for each row, its depth as blanks before the code.
QStringList rowsOf(const QAbstractItemModel& model, const QModelIndex& parent = {}, int depth = 0)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        rows.append(QString(depth, u' ') + index.data().toString());
        rows += rowsOf(model, index, depth + 1);
    }
    return rows;
}

} // namespace

class TestSeriesTreeModel final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void hasVenuesBoardsAndSeries();
    void saysWhatIsStored();
    void isSearchedByAllItsNames();
    void knowsTheSeriesOfARow();
    void findsTheRowOfASeries();
    void keepsRowsWhenTheStoreChanges();
    void tellsOfOtherDaysAlone();
    void becomesAnyOtherTree_data();
    void becomesAnyOtherTree();

private:
    QVariant text(const char* codes, int column) const
    {
        const QModelIndex row = m_model->indexOf(name(codes));
        return row.siblingAtColumn(column).data();
    }

    std::unique_ptr<SeriesTreeModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestSeriesTreeModel::init()
{
    testsupport::failOnStrayWarnings();
    m_tester.reset();
    m_model = std::make_unique<SeriesTreeModel>();
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
}

void TestSeriesTreeModel::hasVenuesBoardsAndSeries()
{
    m_model->setStored({stored("NORD/MAIN/ALFA"), stored("NORD/MAIN/VEGA"),
                        stored("NORD/SPOT/ALFA"), stored("WEST/MAIN/BETA")});
    QCOMPARE(rowsOf(*m_model), QStringList({"NORD", " MAIN", "  ALFA", "  VEGA", " SPOT", "  ALFA",
                                            "WEST", " MAIN", "  BETA"}));
    QCOMPARE(m_model->columnCount(), int(SeriesTreeModel::ColumnCount));
}

void TestSeriesTreeModel::saysWhatIsStored()
{
    // The timeframes of a series are one row; its days are those of any of them.
    m_model->setStored({stored("NORD/MAIN/ALFA", 1, {2024, 1, 10}, {2024, 1, 12}),
                        stored("NORD/MAIN/ALFA", 60, {2024, 1, 11}, {2024, 2, 1})});
    QCOMPARE(rowsOf(*m_model), QStringList({"NORD", " MAIN", "  ALFA"}));
    QCOMPARE(text("NORD/MAIN/ALFA", SeriesTreeModel::TimeframesColumn).toString(),
             QStringLiteral("1 с, 1 мин"));
    QCOMPARE(text("NORD/MAIN/ALFA", SeriesTreeModel::FirstDayColumn).toString(),
             QStringLiteral("10.01.2024"));
    QCOMPARE(text("NORD/MAIN/ALFA", SeriesTreeModel::LastDayColumn).toString(),
             QStringLiteral("01.02.2024"));
    QString title;
    for (const vexdesk::Security& security : vexdesk::ReferenceData::installed().securities) {
        if (security.stockCode == u"NORD" && security.boardCode == u"MAIN" &&
            security.code == u"ALFA")
            title = security.title;
    }
    QVERIFY(!title.isEmpty());
    QCOMPARE(text("NORD/MAIN/ALFA", SeriesTreeModel::TitleColumn).toString(), title);
    const QModelIndex venue = m_model->index(0, 0);
    QCOMPARE(venue.siblingAtColumn(SeriesTreeModel::FirstDayColumn).data().toString(), QString());
    QVERIFY(!venue.siblingAtColumn(SeriesTreeModel::TitleColumn).data().toString().isEmpty());
}

void TestSeriesTreeModel::isSearchedByAllItsNames()
{
    m_model->setStored({stored("NORD/MAIN/ALFA")});
    const QString searched =
        m_model->indexOf(name("NORD/MAIN/ALFA")).data(SeriesTreeModel::SearchRole).toString();
    const QModelIndex venue = m_model->index(0, 0);
    const QModelIndex board = m_model->index(0, 0, venue);
    for (const QString& part :
         {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA"),
          text("NORD/MAIN/ALFA", SeriesTreeModel::TitleColumn).toString(),
          venue.siblingAtColumn(SeriesTreeModel::TitleColumn).data().toString(),
          board.siblingAtColumn(SeriesTreeModel::TitleColumn).data().toString()})
        QVERIFY2(!part.isEmpty() && searched.contains(part), qPrintable(searched));
    // A venue is no series: only its series are found.
    QCOMPARE(venue.data(SeriesTreeModel::SearchRole).toString(), QString());
    QCOMPARE(board.data(SeriesTreeModel::SearchRole).toString(), QString());
}

void TestSeriesTreeModel::knowsTheSeriesOfARow()
{
    m_model->setStored({stored("NORD/MAIN/ALFA"), stored("WEST/SPOT/BETA")});
    const QModelIndex venue = m_model->index(1, 0);
    const QModelIndex board = m_model->index(0, 0, venue);
    const QModelIndex series = m_model->index(0, SeriesTreeModel::LastDayColumn, board);
    QCOMPARE(m_model->seriesAt(series), std::optional(name("WEST/SPOT/BETA")));
    QVERIFY(!m_model->seriesAt(venue));
    QVERIFY(!m_model->seriesAt(board));
    QVERIFY(!m_model->seriesAt(QModelIndex()));
}

void TestSeriesTreeModel::findsTheRowOfASeries()
{
    m_model->setStored({stored("NORD/MAIN/ALFA"), stored("NORD/MAIN/VEGA")});
    const QModelIndex row = m_model->indexOf(name("NORD/MAIN/VEGA"));
    QCOMPARE(m_model->seriesAt(row), std::optional(name("NORD/MAIN/VEGA")));
    for (const char* missing : {"NORD/MAIN/BETA", "NORD/SPOT/ALFA", "WEST/MAIN/ALFA"})
        QVERIFY2(!m_model->indexOf(name(missing)).isValid(), missing);
}

void TestSeriesTreeModel::keepsRowsWhenTheStoreChanges()
{
    m_model->setStored({stored("NORD/MAIN/ALFA"), stored("NORD/MAIN/VEGA")});
    const QPersistentModelIndex alfa = m_model->indexOf(name("NORD/MAIN/ALFA"));
    const QPersistentModelIndex vega = m_model->indexOf(name("NORD/MAIN/VEGA"));
    m_model->setStored({stored("EAST/MAIN/ALFA"), stored("NORD/MAIN/GRAN"),
                        stored("NORD/MAIN/VEGA"), stored("NORD/SPOT/ALFA")});
    QVERIFY(!alfa.isValid());
    QCOMPARE(m_model->seriesAt(vega), std::optional(name("NORD/MAIN/VEGA")));
    QCOMPARE(vega.row(), 1);
}

void TestSeriesTreeModel::tellsOfOtherDaysAlone()
{
    const StoredSeries vega = stored("NORD/MAIN/VEGA");
    m_model->setStored({stored("NORD/MAIN/ALFA"), vega});
    const QSignalSpy changes(m_model.get(), &QAbstractItemModel::dataChanged);
    m_model->setStored({stored("NORD/MAIN/ALFA"), vega});
    QCOMPARE(changes.count(), 0);
    m_model->setStored({stored("NORD/MAIN/ALFA", 60, {2024, 1, 15}, {2024, 1, 18}), vega});
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.at(0).at(0).toModelIndex(), m_model->indexOf(name("NORD/MAIN/ALFA")));
    QCOMPARE(text("NORD/MAIN/ALFA", SeriesTreeModel::LastDayColumn).toString(),
             QStringLiteral("18.01.2024"));
}

void TestSeriesTreeModel::becomesAnyOtherTree_data()
{
    QTest::addColumn<QByteArrayList>("before");
    QTest::addColumn<QByteArrayList>("after");
    QTest::newRow("the first") << QByteArrayList() << QByteArrayList{"A/A/A", "B/B/B"};
    QTest::newRow("all gone") << QByteArrayList{"A/A/A", "B/B/B"} << QByteArrayList();
    QTest::newRow("others") << QByteArrayList{"A/A/A", "C/A/A"} << QByteArrayList{"B/A/A", "D/A/A"};
    QTest::newRow("before") << QByteArrayList{"B/B/B"} << QByteArrayList{"A/A/A", "B/A/A", "B/B/B"};
    QTest::newRow("behind") << QByteArrayList{"A/A/A", "A/A/B", "A/A/C"}
                            << QByteArrayList{"A/A/B", "A/A/D", "A/B/A"};
}

void TestSeriesTreeModel::becomesAnyOtherTree()
{
    QFETCH(const QByteArrayList, before);
    QFETCH(const QByteArrayList, after);
    const auto listOf = [](const QByteArrayList& codes) {
        QList<StoredSeries> list;
        for (const QByteArray& one : codes)
            list.append(stored(one.constData()));
        return list;
    };
    m_model->setStored(listOf(before));
    m_model->setStored(listOf(after));
    SeriesTreeModel anew;
    anew.setStored(listOf(after));
    QCOMPARE(rowsOf(*m_model), rowsOf(anew));
}

QTEST_GUILESS_MAIN(TestSeriesTreeModel)
#include "tst_seriestreemodel.moc"
