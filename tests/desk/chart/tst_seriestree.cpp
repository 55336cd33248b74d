// SPDX-License-Identifier: MIT
// The tree of the stored series: looking for one by keys, opening it, and following the store.

#include "desk/chart/seriesname.h"
#include "desk/chart/seriestree.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeView>

#include <memory>

using vexdesk::SeriesName;
using vexdesk::SeriesTree;

namespace {

const QDate day(2024, 1, 15);

SeriesName name(const QString& codes)
{
    const QStringList parts = codes.split(u'/');
    return {parts.at(0), parts.at(1), parts.at(2)};
}

} // namespace

class TestSeriesTree final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anEmptyStoreSaysHowToImport();
    void showsWhatIsStored();
    void followsTheStore();
    void looksForEveryWord_data();
    void looksForEveryWord();
    void findsByTitle();
    void typingInTheTreeLooks();
    void escapeEndsTheSearch();
    void returnOpensTheFirstThatIsFound();
    void returnBeforeTheStoreIsListedOpensThen();
    void escapeLeavesTheTree();
    void arrowsAndReturnOpen();
    void downGoesToTheSeriesThatIsFound();
    void aDoubleClickOpens();
    void aVenueIsNotOpened();
    void keepsWhatIsClosedWhenTheStoreChanges();
    void aSearchFollowsTheStore();
    void goesToTheSeriesOfTheChart();

private:
    void start();
    void write(const char* series, const QDate& date = day) const;
    QTreeView* view() const { return testsupport::child<QTreeView>(m_tree.get(), "seriesView"); }
    QLineEdit* line() const { return testsupport::child<QLineEdit>(m_tree.get(), "seriesFilter"); }
    // The codes that are seen, the closed ones without what is in them.
    QStringList seen() const;
    QModelIndex row(const QString& code) const;
    QStringList opened() const;

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<SeriesTree> m_tree;
    std::unique_ptr<QSignalSpy> m_opened;
};

void TestSeriesTree::init()
{
    testsupport::failOnStrayWarnings();
    m_root = std::make_unique<QTemporaryDir>();
}

void TestSeriesTree::cleanup()
{
    m_opened.reset();
    m_tree.reset();
    m_root.reset();
}

void TestSeriesTree::start()
{
    m_tree = std::make_unique<SeriesTree>(m_root->path());
    m_opened = std::make_unique<QSignalSpy>(m_tree.get(), &SeriesTree::opened);
    m_tree->show();
    m_tree->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_tree.get()));
}

void TestSeriesTree::write(const char* series, const QDate& date) const
{
    testsupport::writeFile(
        m_root->filePath(QLatin1String(series) + u'/' + testsupport::dayFile(date)),
        testsupport::barLines(QTime(10, 0), 3));
}

QStringList TestSeriesTree::seen() const
{
    QStringList codes;
    const QModelIndex first = view()->model()->index(0, 0);
    for (QModelIndex index = first; index.isValid(); index = view()->indexBelow(index))
        codes.append(index.data().toString());
    return codes;
}

QModelIndex TestSeriesTree::row(const QString& code) const
{
    const QModelIndex first = view()->model()->index(0, 0);
    for (QModelIndex index = first; index.isValid(); index = view()->indexBelow(index)) {
        if (index.data().toString() == code)
            return index;
    }
    return QModelIndex();
}

QStringList TestSeriesTree::opened() const
{
    QStringList codes;
    for (const QList<QVariant>& call : *m_opened)
        codes.append(vexdesk::seriesCode(call.at(0).value<SeriesName>()));
    return codes;
}

void TestSeriesTree::anEmptyStoreSaysHowToImport()
{
    QVERIFY(m_root->remove()); // not even the root is there
    start();
    const auto* const message = testsupport::child<QLabel>(m_tree.get(), "seriesMessage");
    QTRY_VERIFY(message->isVisible());
    QVERIFY2(message->text().contains(QStringLiteral("команду импорта")),
             qPrintable(message->text()));
    // The terminal knows no module's menu and no module's keys.
    QVERIFY(!message->text().contains(u'›') && !message->text().contains(u'+'));
    write("NORD/MAIN/ALFA");
    QTRY_VERIFY(view()->isVisible());
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "ALFA"}));
}

void TestSeriesTree::showsWhatIsStored()
{
    write("NORD/MAIN/VEGA");
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/ALFA", day.addDays(2));
    QVERIFY(QDir(m_root->path()).mkpath(QStringLiteral("NORD/MAIN/VOID")));
    start();
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "ALFA", "VEGA"}));
    const QModelIndex alfa = row(QStringLiteral("ALFA"));
    QCOMPARE(alfa.siblingAtColumn(1).data().toString(), QStringLiteral("1 мин"));
    QCOMPARE(alfa.siblingAtColumn(2).data().toString(), QStringLiteral("15.01.2024"));
    QCOMPARE(alfa.siblingAtColumn(3).data().toString(), QStringLiteral("17.01.2024"));
}

void TestSeriesTree::followsTheStore()
{
    write("NORD/MAIN/ALFA");
    start();
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "ALFA"}));
    write("WEST/SPOT/BETA");
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "ALFA", "WEST", "SPOT", "BETA"}));
    QVERIFY(QDir(m_root->filePath(QStringLiteral("NORD"))).removeRecursively());
    QTRY_COMPARE(seen(), QStringList({"WEST", "SPOT", "BETA"}));
    // What is not shown looks for nothing, and looks when it is shown again.
    m_tree->hide();
    write("WEST/SPOT/GRAN");
    m_tree->show();
    QTRY_COMPARE(seen(), QStringList({"WEST", "SPOT", "BETA", "GRAN"}));
}

void TestSeriesTree::looksForEveryWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("found");
    const QStringList all{"NORD", "MAIN", "ALFA", "VEGA", "SPOT", "ALFA", "WEST", "SPOT", "BETA"};
    QTest::newRow("nothing") << QString() << all;
    QTest::newRow("blanks") << QStringLiteral("  ") << all;
    QTest::newRow("a part") << QStringLiteral("eg") << QStringList{"NORD", "MAIN", "VEGA"};
    QTest::newRow("a venue") << QStringLiteral("west") << QStringList{"WEST", "SPOT", "BETA"};
    QTest::newRow("two words") << QStringLiteral("spot alfa")
                               << QStringList{"NORD", "SPOT", "ALFA"};
    QTest::newRow("what is not there") << QStringLiteral("xyz") << QStringList();
}

void TestSeriesTree::looksForEveryWord()
{
    QFETCH(const QString, text);
    for (const char* series :
         {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA", "NORD/SPOT/ALFA", "WEST/SPOT/BETA"})
        write(series);
    start();
    QTRY_COMPARE(seen().size(), 9);
    hands::keyClicks(line(), text);
    QTEST(seen(), "found");
    // A tree without a row says why.
    const auto* const message = testsupport::child<QLabel>(m_tree.get(), "seriesMessage");
    QCOMPARE(message->isVisible(), seen().isEmpty());
    QCOMPARE(view()->isVisible(), !seen().isEmpty());
    if (seen().isEmpty())
        QCOMPARE(message->text(), QStringLiteral("Нет такой серии"));
    hands::keyClick(line(), Qt::Key_Escape);
    if (!text.isEmpty())
        QCOMPARE(seen().size(), 9);
}

void TestSeriesTree::findsByTitle()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    start();
    QTRY_COMPARE(seen().size(), 4);
    const QString title = vexdesk::SecurityTitles().titleOf(name(QStringLiteral("NORD/MAIN/VEGA")));
    QVERIFY(!title.isEmpty());
    line()->setText(title.toUpper()); // no key of the test's keyboard is Russian
    QCOMPARE(seen(), QStringList({"NORD", "MAIN", "VEGA"}));
}

void TestSeriesTree::typingInTheTreeLooks()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    start();
    QTRY_COMPARE(seen().size(), 4);
    view()->setFocus();
    hands::keyClick(view(), 'v');
    QCOMPARE(QApplication::focusWidget(), line());
    hands::keyClicks(QApplication::focusWidget(), QStringLiteral("ega"));
    QCOMPARE(line()->text(), QStringLiteral("vega"));
    QCOMPARE(seen(), QStringList({"NORD", "MAIN", "VEGA"}));
    // Backspace goes on with the text too, and the other keys are the tree's.
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_Backspace);
    QCOMPARE(line()->text(), QStringLiteral("veg"));
    view()->setFocus();
    hands::keyClick(view(), Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), view());
}

void TestSeriesTree::escapeEndsTheSearch()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    start();
    QTRY_COMPARE(seen().size(), 4);
    testsupport::type(line(), QStringLiteral("vega"));
    QCOMPARE(seen().size(), 3);
    hands::keyClick(line(), Qt::Key_Escape);
    QCOMPARE(line()->text(), QString());
    QCOMPARE(seen().size(), 4);
}

void TestSeriesTree::returnOpensTheFirstThatIsFound()
{
    for (const char* series : {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA", "WEST/MAIN/VEGA"})
        write(series);
    start();
    QTRY_COMPARE(seen().size(), 7);
    testsupport::type(line(), QStringLiteral("ve"));
    hands::keyClick(line(), Qt::Key_Return);
    QCOMPARE(opened(), QStringList{"NORD/MAIN/VEGA"});
    testsupport::type(line(), QStringLiteral("xyz"));
    hands::keyClick(line(), Qt::Key_Return);
    QCOMPARE(opened().size(), 1);
}

void TestSeriesTree::returnBeforeTheStoreIsListedOpensThen()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    m_tree = std::make_unique<SeriesTree>(m_root->path());
    m_opened = std::make_unique<QSignalSpy>(m_tree.get(), &SeriesTree::opened);
    m_tree->show();
    QCOMPARE(view()->model()->rowCount(), 0);
    // Keys of the X server's would come when the store has been listed.
    QTest::keyClicks(line(), QStringLiteral("veg"));
    QTest::keyClick(line(), Qt::Key_Return);
    QCOMPARE(opened(), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(opened(), QStringList{"NORD/MAIN/VEGA"}, 30000);
    // Once: what is listed later opens nothing by itself.
    write("NORD/MAIN/VEGB");
    QTRY_COMPARE_WITH_TIMEOUT(seen().size(), 4, 30000);
    QCOMPARE(opened().size(), 1);
}

void TestSeriesTree::escapeLeavesTheTree()
{
    write("NORD/MAIN/ALFA");
    start();
    QSignalSpy left(m_tree.get(), &SeriesTree::left);
    hands::keyClicks(line(), QStringLiteral("a"));
    hands::keyClick(line(), Qt::Key_Escape);
    QCOMPARE(left.count(), 0);
    hands::keyClick(line(), Qt::Key_Escape);
    QCOMPARE(left.count(), 1);
}

void TestSeriesTree::arrowsAndReturnOpen()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    start();
    QTRY_COMPARE(seen().size(), 4);
    line()->setFocus();
    hands::keyClick(line(), Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), view());
    QCOMPARE(view()->currentIndex().data().toString(), QStringLiteral("ALFA"));
    hands::keyClick(view(), Qt::Key_Down);
    hands::keyClick(view(), Qt::Key_Return);
    QCOMPARE(opened(), QStringList{"NORD/MAIN/VEGA"});
}

void TestSeriesTree::downGoesToTheSeriesThatIsFound()
{
    for (const char* series : {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA", "WEST/SPOT/VEGB"})
        write(series);
    start();
    QTRY_COMPARE(seen().size(), 7);
    testsupport::type(line(), QStringLiteral("ve"));
    for (const char* above : {"NORD", "MAIN"}) {
        view()->setCurrentIndex(row(QLatin1String(above)));
        line()->setFocus();
        hands::keyClick(line(), Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), view());
        QCOMPARE(view()->currentIndex().data().toString(), QStringLiteral("VEGA"));
    }
    hands::keyClick(view(), Qt::Key_Return);
    QCOMPARE(opened(), QStringList{"NORD/MAIN/VEGA"});
    // The series to which the user has gone stays.
    view()->setCurrentIndex(row(QStringLiteral("VEGB")));
    line()->setFocus();
    hands::keyClick(line(), Qt::Key_Down);
    QCOMPARE(view()->currentIndex().data().toString(), QStringLiteral("VEGB"));
    // Where nothing is found the keys stay in the line.
    testsupport::type(line(), QStringLiteral("xyz"));
    hands::keyClick(line(), Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), line());
}

void TestSeriesTree::aDoubleClickOpens()
{
    write("NORD/MAIN/ALFA");
    start();
    QTRY_COMPARE(seen().size(), 3);
    const QPoint place = view()->visualRect(row(QStringLiteral("ALFA"))).center();
    hands::mouseClick(view()->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(opened(), QStringList());
    hands::mouseDClick(view()->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(opened(), QStringList{"NORD/MAIN/ALFA"});
}

void TestSeriesTree::aVenueIsNotOpened()
{
    write("NORD/MAIN/ALFA");
    start();
    QTRY_COMPARE(seen().size(), 3);
    for (const char* code : {"NORD", "MAIN"}) {
        view()->setCurrentIndex(row(QLatin1String(code)));
        hands::keyClick(view(), Qt::Key_Return);
    }
    QCOMPARE(opened(), QStringList());
}

void TestSeriesTree::keepsWhatIsClosedWhenTheStoreChanges()
{
    write("NORD/MAIN/ALFA");
    write("WEST/SPOT/BETA");
    start();
    QTRY_COMPARE(seen().size(), 6);
    view()->setCurrentIndex(row(QStringLiteral("BETA")));
    view()->collapse(row(QStringLiteral("NORD")));
    QCOMPARE(seen(), QStringList({"NORD", "WEST", "SPOT", "BETA"}));
    write("EAST/SPOT/GRAN");
    QTRY_COMPARE(seen(), QStringList({"EAST", "SPOT", "GRAN", "NORD", "WEST", "SPOT", "BETA"}));
    QCOMPARE(view()->currentIndex().data().toString(), QStringLiteral("BETA"));
}

void TestSeriesTree::aSearchFollowsTheStore()
{
    for (const char* series :
         {"NORD/MAIN/ALFA", "NORD/MAIN/VEGA", "NORD/SPOT/VEGA", "WEST/SPOT/BETA"})
        write(series);
    start();
    QTRY_COMPARE(seen().size(), 9);
    testsupport::type(line(), QStringLiteral("vega"));
    QCOMPARE(seen(), QStringList({"NORD", "MAIN", "VEGA", "SPOT", "VEGA"}));
    const auto remove = [this](const char* series) {
        QVERIFY(QDir(m_root->filePath(QLatin1String(series))).removeRecursively());
    };
    remove("NORD/MAIN/VEGA");
    QTRY_COMPARE(seen(), QStringList({"NORD", "SPOT", "VEGA"}));
    remove("NORD/SPOT/VEGA");
    QTRY_COMPARE(seen(), QStringList());
    write("NORD/MAIN/VEGA");
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "VEGA"}));
    write("WEST/SPOT/VEGA");
    QTRY_COMPARE(seen(), QStringList({"NORD", "MAIN", "VEGA", "WEST", "SPOT", "VEGA"}));
    remove("NORD");
    QTRY_COMPARE(seen(), QStringList({"WEST", "SPOT", "VEGA"}));
    remove("WEST/SPOT/VEGA");
    QTRY_COMPARE(seen(), QStringList());
    line()->clear();
    QCOMPARE(seen(), QStringList({"WEST", "SPOT", "BETA"}));
}

void TestSeriesTree::goesToTheSeriesOfTheChart()
{
    write("NORD/MAIN/ALFA");
    write("NORD/MAIN/VEGA");
    start();
    m_tree->setCurrent(name(QStringLiteral("NORD/MAIN/VEGA"))); // before it is listed
    QTRY_COMPARE(view()->currentIndex().data().toString(), QStringLiteral("VEGA"));
    m_tree->setCurrent(name(QStringLiteral("NORD/MAIN/ALFA")));
    QCOMPARE(view()->currentIndex().data().toString(), QStringLiteral("ALFA"));
    QCOMPARE(opened(), QStringList());
}

QTEST_MAIN(TestSeriesTree)
#include "tst_seriestree.moc"
