// SPDX-License-Identifier: MIT
// What a chart and the tree of the series say of what they cannot read, and that they go on as soon
// as it can be read: directories and files without rights, and directories that are moved away.

#include "chartsupport.h"
#include "desk/chart/chartpage.h"
#include "desk/chart/chartview.h"
#include "desk/chart/marksources.h"
#include "desk/chart/seriestree.h"
#include "support/child.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <cerrno>
#include <memory>

using testsupport::barLines;
using testsupport::dayFile;
using testsupport::Permissions;
using testsupport::writeFile;
using vexdesk::ChartPage;
using vexdesk::ChartState;
using vexdesk::SeriesTree;

namespace {

const QDate day(2024, 1, 15);
const QTime ten(10, 0);
constexpr int patience = 30'000; // ms

const QString series = QStringLiteral("NORD/MAIN/ALFA");

} // namespace

#define TRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, patience)
#define TRY_COMPARE(left, right) QTRY_COMPARE_WITH_TIMEOUT(left, right, patience)

class TestUnreadableStore final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_user.reset(); }
    void init();
    void cleanup();

    void aChartSaysWhatItCannotRead_data();
    void aChartSaysWhatItCannotRead();
    void aChartThatCannotBeOpenedYet();
    void aDayThatCannotBeRead_data();
    void aDayThatCannotBeRead();
    void aDayThatIsNotAllBars();
    void aDayThatLosesItsFileIsToldByKeyToo();
    void theTreeSaysWhatItCannotRead_data();
    void theTreeSaysWhatItCannotRead();
    void directoriesAreMovedAway_data();
    void directoriesAreMovedAway();

private:
    QString store() const { return m_place->filePath(QStringLiteral("data/tadata")); }
    QString path(const QDate& date) const { return store() + u'/' + series + u'/' + dayFile(date); }
    void writeDays(int days, int bars) const;
    void startChart(const ChartState& state = {});
    void startTree();
    int barsInView() const;
    int unreadInView() const;
    QString problem() const { return shown(m_page.get(), "chartProblem"); }
    QString message() const { return shown(m_page.get(), "chartMessage"); }
    static QString shown(QWidget* parent, const char* name);
    QStringList seen() const;
    /// What the user is asked, and what he was told in the end.
    QString copyAll(bool isAsked);

    std::unique_ptr<testsupport::OtherUser> m_user;
    std::unique_ptr<QTemporaryDir> m_place;
    std::unique_ptr<vexdesk::MarkSources> m_marks;
    std::unique_ptr<ChartPage> m_page;
    std::unique_ptr<SeriesTree> m_tree;
};

// The superuser may read everything.
void TestUnreadableStore::initTestCase()
{
    QLocale::setDefault(QLocale::c());
    m_user = std::make_unique<testsupport::OtherUser>();
}

void TestUnreadableStore::init()
{
    testsupport::failOnStrayWarnings();
    m_place = std::make_unique<QTemporaryDir>();
    QVERIFY(m_place->isValid());
    m_marks = std::make_unique<vexdesk::MarkSources>();
}

void TestUnreadableStore::cleanup()
{
    m_page.reset();
    m_tree.reset();
    m_marks.reset();
    m_place.reset();
}

void TestUnreadableStore::writeDays(int days, int bars) const
{
    for (int i = 0; i < days; ++i)
        writeFile(path(day.addDays(i)), barLines(ten, bars, 100));
}

void TestUnreadableStore::startChart(const ChartState& state)
{
    ChartState named = state;
    named.series = {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")};
    m_page = std::make_unique<ChartPage>(store(), named, *m_marks);
    m_page->resize(900, 450);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
}

void TestUnreadableStore::startTree()
{
    m_tree = std::make_unique<SeriesTree>(store());
    m_tree->resize(400, 400);
    m_tree->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_tree.get()));
}

int TestUnreadableStore::barsInView() const
{
    int count = 0;
    for (const auto& placed : m_page->view().chart().candles)
        count += static_cast<int>(placed.candle.count);
    return count;
}

int TestUnreadableStore::unreadInView() const
{
    return static_cast<int>(m_page->view().chart().unread.size());
}

QString TestUnreadableStore::shown(QWidget* parent, const char* name)
{
    const auto* const label = testsupport::child<QLabel>(parent, name);
    return label->isVisible() ? label->text() : QString();
}

QStringList TestUnreadableStore::seen() const
{
    const auto* const model =
        testsupport::child<QAbstractItemView>(m_tree.get(), "seriesView")->model();
    QStringList codes;
    for (QModelIndex index = model->index(0, 0); index.isValid(); index = model->index(0, 0, index))
        codes.append(index.data().toString());
    return codes;
}

QString TestUnreadableStore::copyAll(bool isAsked)
{
    QStringList texts;
    QSignalSpy told(m_page.get(), &ChartPage::told);
    testsupport::ModalSteps steps;
    if (isAsked) {
        steps.on<QMessageBox>([&texts, &told](QMessageBox* box) {
            texts.append(box->text());
            if (told.isEmpty() || !told.back().front().toString().isEmpty())
                texts.append(QStringLiteral("Something else is told beside the question"));
            box->reject();
        });
    }
    m_page->copyBars();
    // What is told before is how far it has come.
    const auto isDone = [&told] {
        return !told.isEmpty() && !told.back().front().toString().contains(QStringLiteral("Esc"));
    };
    const bool isTold = QTest::qWaitFor(isDone, patience);
    texts.append(isTold ? told.back().front().toString() : QStringLiteral("nothing"));
    return steps.complaint() + texts.join(u'\n');
}

void TestUnreadableStore::aChartSaysWhatItCannotRead_data()
{
    QTest::addColumn<QString>("directory");
    QTest::newRow("store") << QString();
    QTest::newRow("venue") << QStringLiteral("/NORD");
    QTest::newRow("series") << QStringLiteral("/NORD/MAIN/ALFA");
}

void TestUnreadableStore::aChartSaysWhatItCannotRead()
{
    QFETCH(const QString, directory);
    constexpr int days = 60;
    constexpr int bars = 20;
    writeDays(days, bars);
    ChartState few;
    few.slotsInView = 30;
    startChart(few);
    TRY_VERIFY(barsInView() > 0 && unreadInView() == 0);
    {
        const Permissions none(store() + directory, 0);
        m_page->view().showAll();
        TRY_VERIFY(problem().contains(QStringLiteral("\"%1\"").arg(store() + directory)));
        // The days are known, and that they were not read is seen.
        QCOMPARE(m_page->view().daysInView().first, day);
        TRY_VERIFY(unreadInView() > 0);
        const QString copied = copyAll(true);
        QVERIFY2(copied.contains(QStringLiteral("Не удалось прочитать дней")), qPrintable(copied));
        QVERIFY2(copied.contains(path(day)), qPrintable(copied));
    }
    TRY_COMPARE(barsInView(), days * bars);
    TRY_COMPARE(problem(), QString());
    // It follows the files again.
    writeFile(path(day), barLines(ten, bars + 1, 7));
    TRY_COMPARE(barsInView(), days * bars + 1);
    writeFile(path(day.addDays(days)), barLines(ten, bars, 7));
    TRY_COMPARE(m_page->view().daysInView().second, day.addDays(days));
}

void TestUnreadableStore::aChartThatCannotBeOpenedYet()
{
    writeDays(2, 20);
    {
        const Permissions none(store() + u'/' + series, 0);
        startChart();
        TRY_VERIFY(message().contains(store() + u'/' + series));
    }
    TRY_COMPARE(barsInView(), 40);
    QCOMPARE(problem(), QString());
}

void TestUnreadableStore::aDayThatCannotBeRead_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("reason");
    QTest::newRow("rights") << "rights" << qt_error_string(EACCES);
    QTest::newRow("directory") << "directory" << QStringLiteral("это каталог, а не файл");
    QTest::newRow("garbage") << "garbage" << QStringLiteral("в файле нет ни одного бара");
    QTest::newRow("link") << "link" << QStringLiteral("ссылка никуда не ведёт");
}

void TestUnreadableStore::aDayThatCannotBeRead()
{
    QFETCH(const QString, kind);
    QFETCH(const QString, reason);
    writeDays(3, 20);
    const QString file = path(day.addDays(1));
    if (kind == QStringLiteral("rights")) {
        QVERIFY(QFile::setPermissions(file, {}));
    } else {
        QVERIFY(QFile::remove(file));
        if (kind == QStringLiteral("directory"))
            QVERIFY(QDir().mkpath(file));
        else if (kind == QStringLiteral("garbage"))
            writeFile(file, QByteArray("\x01\xfe;\xc3;what;0\n\0;", 14));
        else
            QVERIFY(QFile::link(m_place->filePath(QStringLiteral("nowhere")), file));
    }
    startChart();
    const QString expected = QStringLiteral("1 день не прочитан: %1: %2").arg(file, reason);
    TRY_COMPARE(problem(), expected);
    TRY_COMPARE(barsInView(), 40);
    const QString copied = copyAll(true);
    QVERIFY2(copied.contains(file + QStringLiteral(": ") + reason), qPrintable(copied));
    QVERIFY2(!copied.contains(QStringLiteral("beside")), qPrintable(copied));
    // Made good.
    if (kind == QStringLiteral("rights")) {
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    } else {
        QVERIFY(kind == QStringLiteral("directory") ? QDir().rmdir(file) : QFile::remove(file));
        writeFile(file, barLines(ten, 20, 100));
    }
    TRY_COMPARE(barsInView(), 60);
    TRY_COMPARE(problem(), QString());
    const QString all = copyAll(false);
    QVERIFY2(all.startsWith(QStringLiteral("Скопировано баров: 60")) && !all.contains(u';'),
             qPrintable(all));
}

// F5, where nothing tells that it can be read: here, before it is told.
void TestUnreadableStore::aDayThatIsNotAllBars()
{
    constexpr int bars = 60;
    writeDays(3, bars);
    const QByteArray whole = barLines(ten, bars, 100);
    writeFile(path(day), "no bar\n" + whole + "100\n");
    startChart();
    TRY_COMPARE(problem(),
                QStringLiteral("Строк, которые не бары и не показаны: 2, файл: %1").arg(path(day)));
    QVERIFY(barsInView() > 0);
    writeFile(path(day.addDays(2)), whole + "no bar\n");
    TRY_COMPARE(problem(),
                QStringLiteral("Строк, которые не бары и не показаны: 3, дней с ними: 2. "
                               "Первый из них: %1")
                    .arg(path(day)));
    for (const int broken : {0, 2})
        writeFile(path(day.addDays(broken)), whole);
    TRY_COMPARE(problem(), QString());
}

void TestUnreadableStore::aDayThatLosesItsFileIsToldByKeyToo()
{
    writeDays(3, 20);
    QVERIFY(QFile::setPermissions(path(day), {}));
    startChart();
    TRY_VERIFY(problem().contains(path(day)));
    const auto* const button = testsupport::child<QPushButton>(m_page.get(), "chartReadAgain");
    QVERIFY(button->isVisible());
    QVERIFY(QFile::setPermissions(path(day), QFile::ReadOwner));
    hands::keyClick(&m_page->view(), Qt::Key_F5);
    TRY_COMPARE(problem(), QString());
    QVERIFY(!button->isVisible());
}

void TestUnreadableStore::theTreeSaysWhatItCannotRead_data()
{
    aChartSaysWhatItCannotRead_data();
}

void TestUnreadableStore::theTreeSaysWhatItCannotRead()
{
    QFETCH(const QString, directory);
    writeDays(1, 20);
    for (const bool isOpen : {true, false}) {
        if (isOpen) {
            startTree();
            TRY_COMPARE(seen().value(2), QStringLiteral("ALFA"));
        }
        const auto none = std::make_unique<Permissions>(store() + directory, 0);
        if (!isOpen)
            startTree();
        const auto problem = [this] { return shown(m_tree.get(), "seriesProblem"); };
        TRY_VERIFY(problem().contains(QStringLiteral("\"%1\"").arg(store() + directory)));
        QVERIFY(problem().contains(qt_error_string(EACCES)));
        const QString message = shown(m_tree.get(), "seriesMessage");
        QVERIFY2(!message.contains(QStringLiteral("пока нет")), qPrintable(message));
    }
    TRY_COMPARE(seen().value(2), QStringLiteral("ALFA"));
    QCOMPARE(shown(m_tree.get(), "seriesProblem"), QString());
}

void TestUnreadableStore::directoriesAreMovedAway_data()
{
    QTest::addColumn<QString>("directory");
    QTest::newRow("series") << QStringLiteral("data/tadata/NORD/MAIN/ALFA");
    QTest::newRow("board") << QStringLiteral("data/tadata/NORD/MAIN");
    QTest::newRow("store") << QStringLiteral("data/tadata");
    QTest::newRow("data") << QStringLiteral("data");
}

void TestUnreadableStore::directoriesAreMovedAway()
{
    QFETCH(const QString, directory);
    const QString there = m_place->filePath(directory);
    const QString away = m_place->filePath(QStringLiteral("away"));
    writeDays(2, 20);
    startTree();
    startChart();
    for (int bars = 20; bars < 23; ++bars) {
        TRY_COMPARE(barsInView(), 2 * bars);
        TRY_COMPARE(seen().value(2), QStringLiteral("ALFA"));
        QVERIFY(QFile::rename(there, away));
        TRY_COMPARE(message(), QStringLiteral("Этой серии больше нет в хранилище."));
        TRY_COMPARE(seen(), QStringList());
        // The same directory comes back, and then another one with its name.
        if (bars == 20) {
            QVERIFY(QFile::rename(away, there));
            TRY_COMPARE(barsInView(), 2 * bars);
        } else {
            QVERIFY(QDir(away).removeRecursively());
        }
        writeDays(2, bars + 1);
    }
    TRY_COMPARE(barsInView(), 46);
}

QTEST_MAIN(TestUnreadableStore)
#include "tst_unreadablestore.moc"
