// SPDX-License-Identifier: MIT
// The window of the store's health over a store of 20 000 series: all of them are there, in the
// asked order, found by typing, and each with what is wrong with it.

#include "calendarview.h"
#include "healthwindow.h"
#include "remarksmodel.h"
#include "seriesmodel.h"

#include "support/child.h"
#include "support/dayfiles.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <memory>

using testsupport::child;

namespace {

constexpr int seriesCount = 20'000;
constexpr int boardSize = 500;
const QDate theDay(2024, 1, 15);
// The only ones with lines that are no bars: first, in the middle and last; how many of them.
const QMap<int, int> ill{{0, 1}, {12'345, 3}, {19'999, 2}};

QString nameOf(int series)
{
    return QStringLiteral("NORD/B%1/S%2")
        .arg(series / boardSize, 2, 10, QLatin1Char('0'))
        .arg(series, 5, 10, QLatin1Char('0'));
}

// Boards of one kind have a bar more: the column of their number has something to sort.
int barCountOf(int series)
{
    return 3 + series / boardSize % 2;
}

QByteArray barsOf(int series)
{
    constexpr int price = 100; // of all bars: nothing jumps
    QByteArray lines;
    for (int bar = 0; bar < barCountOf(series); ++bar)
        lines += testsupport::barLine(QTime(10, bar), price);
    return lines + QByteArray("this is no bar\n").repeated(ill.value(series));
}

void makeStore(const QDir& root)
{
    for (int series = 0; series < seriesCount; ++series)
        testsupport::writeFile(root.filePath(nameOf(series) + u'/' + testsupport::dayFile(theDay)),
                               barsOf(series));
}

} // namespace

class TestLargeStore final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void everySeriesIsThere();
    void allAreSorted_data();
    void allAreSorted();
    void oneIsFoundByTyping();
    void whatIsGoneLeavesTheTable();

private:
    QDir root() const { return QDir(m_dir.filePath(QStringLiteral("store"))); }
    QTreeView* table() const { return child<QTreeView>(m_window.get(), "series"); }
    QString at(int row, int column) const
    {
        return table()->model()->index(row, column).data().toString();
    }
    QString summary() const { return child<QLabel>(m_window.get(), "summary")->text(); }
    void sortBy(int column, Qt::SortOrder order);

    const QTemporaryDir m_dir;
    std::unique_ptr<tadata::HealthBook> m_book;
    std::unique_ptr<HealthWindow> m_window;
};

// Reading the store is what takes long: all look at the same window.
void TestLargeStore::initTestCase()
{
    testsupport::failOnStrayWarnings();
    QLocale::setDefault(QLocale::c());
    testsupport::userFolder().removeRecursively();
    makeStore(root());
    m_book = std::make_unique<tadata::HealthBook>(root());
    m_book->setPauses(std::chrono::milliseconds(20), 0);
    m_window = std::make_unique<HealthWindow>(
        m_book.get(), [](const auto&, const auto& told) { told(HealthWindow::Shown::NoCharts); });
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    constexpr int enough = 6 * testsupport::patience;
    QTRY_VERIFY_WITH_TIMEOUT(m_book->isKnown(), enough);
    EVENTUALLY_EQUAL(table()->model()->rowCount(), seriesCount);
}

void TestLargeStore::cleanupTestCase()
{
    m_window.reset();
    m_book.reset();
    testsupport::userFolder().removeRecursively();
}

void TestLargeStore::init()
{
    testsupport::failOnStrayWarnings();
    sortBy(SeriesModel::Series, Qt::AscendingOrder);
}

// By clicks upon the title, as often as it takes.
void TestLargeStore::sortBy(int column, Qt::SortOrder order)
{
    QHeaderView* const header = table()->header();
    const QPoint title(header->sectionViewportPosition(column) + 5, header->height() / 2);
    for (int click = 0; click < 2; ++click) {
        if (header->sortIndicatorSection() != column || header->sortIndicatorOrder() != order)
            hands::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
    }
    QCOMPARE(header->sortIndicatorSection(), column);
    QCOMPARE(header->sortIndicatorOrder(), order);
}

void TestLargeStore::everySeriesIsThere()
{
    QCOMPARE(summary(), QStringLiteral("Серий: 20000, с замечаниями: 3."));
    for (int row = 0; row < seriesCount; ++row) {
        QCOMPARE(at(row, SeriesModel::Series), nameOf(row));
        QCOMPARE(at(row, SeriesModel::Count), QString::number(barCountOf(row)));
        const int broken = ill.value(row);
        QCOMPARE(at(row, SeriesModel::Broken), broken > 0 ? QString::number(broken) : QString());
    }
}

void TestLargeStore::allAreSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QList<int>>("firstOnes");
    QTest::newRow("names") << int(SeriesModel::Series) << QList<int>{19'999, 19'998, 19'997};
    QTest::newRow("broken lines") << int(SeriesModel::Broken) << QList<int>{12'345, 19'999, 0};
    // Equal ones stay in the order of their names.
    QTest::newRow("bars") << int(SeriesModel::Count) << QList<int>{500, 501, 502};
}

void TestLargeStore::allAreSorted()
{
    QFETCH(const int, column);
    QFETCH(const QList<int>, firstOnes);
    sortBy(column, Qt::DescendingOrder);
    for (int row = 0; row < firstOnes.size(); ++row)
        QCOMPARE(at(row, SeriesModel::Series), nameOf(firstOnes.at(row)));
    QSet<QString> names;
    for (int row = 0; row < seriesCount; ++row)
        names.insert(at(row, SeriesModel::Series));
    QCOMPARE(names.size(), seriesCount);
}

void TestLargeStore::oneIsFoundByTyping()
{
    auto* const filter = child<QLineEdit>(m_window.get(), "filter");
    testsupport::type(filter, QStringLiteral("s1234"));
    QCOMPARE(table()->model()->rowCount(), 10);
    QCOMPARE(summary(), QStringLiteral("Показано серий: 10 из 20000, с замечаниями: 1."));
    testsupport::type(filter, QStringLiteral("s12345 b24"));
    QCOMPARE(table()->model()->rowCount(), 1);
    QCOMPARE(at(0, SeriesModel::Series), nameOf(12'345));
    QCOMPARE(child<CalendarView>(m_window.get(), "calendar")->day(), theDay);
    const QAbstractItemModel* const remarks = child<QTreeView>(m_window.get(), "remarks")->model();
    QCOMPARE(remarks->index(0, RemarksModel::What).data().toString(),
             QStringLiteral("Не записи баров: строки 4, 5, 6"));
    testsupport::type(filter, QString());
    QCOMPARE(table()->model()->rowCount(), seriesCount);
    // What was found is still the chosen one.
    QCOMPARE(table()->currentIndex().siblingAtColumn(SeriesModel::Series).data().toString(),
             nameOf(12'345));
}

void TestLargeStore::whatIsGoneLeavesTheTable()
{
    QVERIFY(QDir(root().filePath(nameOf(777))).removeRecursively());
    EVENTUALLY_EQUAL(table()->model()->rowCount(), seriesCount - 1);
    QCOMPARE(at(776, SeriesModel::Series), nameOf(776));
    QCOMPARE(at(777, SeriesModel::Series), nameOf(778));
    testsupport::writeFile(root().filePath(nameOf(777) + u'/' + testsupport::dayFile(theDay)),
                           barsOf(777));
    EVENTUALLY_EQUAL(table()->model()->rowCount(), seriesCount);
    QCOMPARE(at(777, SeriesModel::Series), nameOf(777));
}

QTEST_MAIN(TestLargeStore)
#include "tst_largestore.moc"
