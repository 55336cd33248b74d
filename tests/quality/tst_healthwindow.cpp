// SPDX-License-Identifier: MIT
// The window of the store's health, by mouse and keys.

#include "calendarmodel.h"
#include "calendarview.h"
#include "healthwindow.h"
#include "illstore.h"
#include "remarksmodel.h"
#include "seriesmodel.h"

#include "support/child.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/textcheck.h"
#include "support/userhands.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
#include <QtGui/QPalette>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <cerrno>
#include <memory>

using tadata::SeriesMoment;
using testsupport::alfa;
using testsupport::brokenDay;
using testsupport::child;
using testsupport::click;
using testsupport::gapDay;
using testsupport::missingDay;
using testsupport::vega;

class TestHealthWindow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showsTheSeries();
    void saysThatThereIsNothing();
    void whatCannotBeReadIsNotNothing();
    void saysWhatCannotBeRead();
    void findsByTyping();
    void keepsTheChosenSeries();
    void showsTheFaultsOfADay();
    void walksTheCalendarByKeys();
    void tellsTheCalendarToAScreenReader();
    void showsThePlaceInTheChart_data();
    void showsThePlaceInTheChart();
    void saysWhyNoChartIsShown_data();
    void saysWhyNoChartIsShown();
    void isToldLaterWhatIsShown();
    void asksToFillTheSeries();
    void savesTheListForTheBroker();
    void saysThatTheListIsNotWhole();
    void asksForNoFileWhereNothingIsMissing();
    void saysWhereTheListCannotBeSaved();
    void followsTheStore();
    void isReachedByKeysAlone();
    void showsItsTextsWhole_data();
    void showsItsTextsWhole();

private:
    QDir root() const { return QDir(m_dir->filePath(QStringLiteral("store"))); }
    void open();
    void choose(const QString& series);
    QTreeView* view(const char* name) const { return child<QTreeView>(m_window.get(), name); }
    CalendarView* calendar() const { return child<CalendarView>(m_window.get(), "calendar"); }
    QString label(const char* name) const { return child<QLabel>(m_window.get(), name)->text(); }
    QPushButton* button(const char* name) const { return child<QPushButton>(m_window.get(), name); }
    int rows(const char* name) const { return view(name)->model()->rowCount(); }
    QString chosen() const
    {
        return view("series")->currentIndex().siblingAtColumn(0).data().toString();
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<tadata::HealthBook> m_book;
    std::unique_ptr<HealthWindow> m_window;
    QList<SeriesMoment> m_places;
    HealthWindow::Shown m_answer = HealthWindow::Shown::Yes;
    HealthWindow::Told m_told;
    bool m_isAnswerAwaited = false;
};

void TestHealthWindow::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::userFolder().removeRecursively();
    m_dir = std::make_unique<QTemporaryDir>();
    m_places.clear();
    m_answer = HealthWindow::Shown::Yes;
    m_isAnswerAwaited = false;
    QLocale::setDefault(QLocale::c()); // numbers and dates
    testsupport::makeIllStore(root());
}

void TestHealthWindow::cleanup()
{
    m_window.reset();
    m_book.reset();
    m_dir.reset();
    testsupport::userFolder().removeRecursively();
}

void TestHealthWindow::open()
{
    m_book = std::make_unique<tadata::HealthBook>(root());
    m_book->setPauses(std::chrono::milliseconds(20), 0);
    m_window = std::make_unique<HealthWindow>(
        m_book.get(), [this](const SeriesMoment& place, const HealthWindow::Told& told) {
            m_places.append(place);
            m_told = told;
            if (!m_isAnswerAwaited)
                told(m_answer);
        });
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    EVENTUALLY(m_book->isKnown());
}

void TestHealthWindow::choose(const QString& series)
{
    QTreeView* const list = view("series");
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        const QModelIndex index = list->model()->index(row, 0);
        if (index.data().toString() == series)
            hands::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualRect(index).center());
    }
    QCOMPARE(chosen(), series);
}

void TestHealthWindow::showsTheSeries()
{
    open();
    QCOMPARE(rows("series"), 2);
    QCOMPARE(label("summary"), QStringLiteral("Серий: 2, с замечаниями: 1."));
    QCOMPARE(chosen(), alfa);
    QCOMPARE(calendar()->day(), QDate(2024, 3, 29));
    EVENTUALLY(!child<QWidget>(m_window.get(), "progress")->isVisible());
}

void TestHealthWindow::saysThatThereIsNothing()
{
    QVERIFY(QDir(root()).removeRecursively());
    open();
    QCOMPARE(label("summary"), QStringLiteral("В хранилище нет серий."));
    for (const char* const name : {"show", "fill", "list"})
        QVERIFY(!button(name)->isEnabled());
}

void TestHealthWindow::whatCannotBeReadIsNotNothing()
{
    QVERIFY(QDir(root()).removeRecursively());
    QVERIFY(root().mkpath(QStringLiteral(".")));
    QVERIFY(QFile::link(QStringLiteral("/nowhere"), root().filePath(QStringLiteral("LOST"))));
    open();
    EVENTUALLY2(label("summary").startsWith(QStringLiteral("Не прочитано: 1. ")),
                qPrintable(label("summary")));
}

void TestHealthWindow::saysWhatCannotBeRead()
{
    const QString path = root().filePath(testsupport::dayPath(vega, gapDay));
    // Larger than a day may be.
    QVERIFY(QFile::resize(path, qint64(1024) * 1024 * 1024 + 1));
    open();
    EVENTUALLY2(label("summary").contains(QStringLiteral("Не прочитано: 1. ")),
                qPrintable(label("summary")));
    QVERIFY2(label("summary").contains(path), qPrintable(label("summary")));
    // Several are counted, with a reason for each, and all of them stand in the tool tip.
    const QString other = root().filePath(testsupport::dayPath(vega, testsupport::brokenDay));
    QVERIFY(QFile::resize(other, qint64(1024) * 1024 * 1024 + 1));
    EVENTUALLY2(label("summary").contains(QStringLiteral("Не прочитано: 2. ")),
                qPrintable(label("summary")));
    const QString tip = child<QLabel>(m_window.get(), "summary")->toolTip();
    for (const QString& part : {path, other + QStringLiteral(": файл больше 1 ГБ")})
        QVERIFY2(tip.contains(part), qPrintable(tip));
    QVERIFY2(label("summary").contains(QStringLiteral("подсказке")), qPrintable(label("summary")));
    QVERIFY(QFile::remove(other));
    testsupport::healDay(root(), testsupport::brokenDay);
    QCOMPARE(rows("series"), 1);
    // The others are there; this one comes back once it can be read.
    QVERIFY(QFile::remove(path));
    testsupport::healDay(root(), gapDay);
    EVENTUALLY_EQUAL(rows("series"), 2);
    EVENTUALLY(!label("summary").contains(QStringLiteral("Не прочитано")));
}

void TestHealthWindow::findsByTyping()
{
    open();
    auto* const filter = child<QLineEdit>(m_window.get(), "filter");
    testsupport::type(filter, QStringLiteral("veg"));
    QCOMPARE(rows("series"), 1);
    QCOMPARE(chosen(), vega);
    QCOMPARE(label("summary"), QStringLiteral("Показано серий: 1 из 2, с замечаниями: 1."));
    testsupport::type(filter, QStringLiteral("nothing"));
    QCOMPARE(rows("series"), 0);
    QVERIFY(!button("show")->isEnabled());
    QVERIFY(label("day").isEmpty());
    testsupport::type(filter, QString());
    QCOMPARE(rows("series"), 2);
}

void TestHealthWindow::keepsTheChosenSeries()
{
    open();
    choose(vega);
    QHeaderView* const header = view("series")->header();
    const QPoint title(header->sectionViewportPosition(SeriesModel::Gaps) + 5,
                       header->height() / 2);
    hands::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
    hands::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
    QCOMPARE(view("series")->model()->index(0, 0).data().toString(), vega);
    QCOMPARE(chosen(), vega);
    calendar()->setDay(gapDay);
    testsupport::healDay(root(), brokenDay);
    EVENTUALLY_EQUAL(m_book->digest(vega, 60)->sums.badLines, qint64(0));
    QCOMPARE(chosen(), vega);
    QCOMPARE(calendar()->day(), gapDay);
}

void TestHealthWindow::showsTheFaultsOfADay()
{
    open();
    choose(vega);
    // The last one that is wrong.
    QCOMPARE(calendar()->day(), brokenDay);
    QCOMPARE(view("remarks")->model()->index(0, RemarksModel::What).data().toString(),
             QStringLiteral("Не записи баров: строки 2"));
    const QModelIndex gap = static_cast<CalendarModel*>(calendar()->model())->indexOf(gapDay);
    calendar()->scrollTo(gap);
    hands::mouseClick(calendar()->viewport(), Qt::LeftButton, {},
                      calendar()->visualRect(gap).center());
    QCOMPARE(calendar()->day(), gapDay);
    QCOMPARE(view("remarks")->model()->index(0, RemarksModel::What).data().toString(),
             QStringLiteral("Нет баров с 10:20 по 10:29 (10)"));
    QVERIFY2(label("day").contains(QStringLiteral("баров: 50, обычно 60")),
             qPrintable(label("day")));
}

void TestHealthWindow::walksTheCalendarByKeys()
{
    open();
    choose(vega);
    CalendarView* const days = calendar();
    days->setDay(gapDay);
    days->setFocus();
    const auto press = [days](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        hands::keyClick(days, key, modifiers);
        return days->day();
    };
    QCOMPARE(press(Qt::Key_Right), gapDay.addDays(7));
    QCOMPARE(press(Qt::Key_Left), gapDay);
    QCOMPARE(press(Qt::Key_Down), gapDay.addDays(1));
    QCOMPARE(press(Qt::Key_Up), gapDay);
    QCOMPARE(press(Qt::Key_PageDown), gapDay.addMonths(1));
    QCOMPARE(press(Qt::Key_PageUp), gapDay);
    QCOMPARE(press(Qt::Key_Right, Qt::ControlModifier), missingDay);
    QCOMPARE(press(Qt::Key_Right, Qt::ControlModifier), brokenDay);
    QCOMPARE(press(Qt::Key_Right, Qt::ControlModifier), brokenDay);
    QCOMPARE(press(Qt::Key_Home), QDate(2024, 1, 1));
    QCOMPARE(press(Qt::Key_Up), QDate(2024, 1, 1));
    QCOMPARE(press(Qt::Key_End), QDate(2024, 3, 29));
    QCOMPARE(press(Qt::Key_Right), QDate(2024, 3, 29));
}

void TestHealthWindow::tellsTheCalendarToAScreenReader()
{
    open();
    choose(vega);
    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(calendar());
    QVERIFY(table && table->tableInterface());
    QCOMPARE(table->text(QAccessible::Name), QStringLiteral("Календарь покрытия выбранной серии"));
    const QModelIndex gap = static_cast<CalendarModel*>(calendar()->model())->indexOf(gapDay);
    QAccessibleInterface* const cell = table->tableInterface()->cellAt(gap.row(), gap.column());
    QVERIFY(cell);
    QVERIFY2(cell->text(QAccessible::Name).startsWith(QStringLiteral("14.02.2024; баров: 50")),
             qPrintable(cell->text(QAccessible::Name)));
}

void TestHealthWindow::showsThePlaceInTheChart_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("table, double click") << QByteArray("series") << false;
    QTest::newRow("table, Return") << QByteArray("series") << true;
    QTest::newRow("calendar, double click") << QByteArray("calendar") << false;
    QTest::newRow("calendar, Return") << QByteArray("calendar") << true;
    QTest::newRow("fault, double click") << QByteArray("remarks") << false;
    QTest::newRow("fault, Return") << QByteArray("remarks") << true;
    QTest::newRow("button") << QByteArray("show") << true;
}

void TestHealthWindow::showsThePlaceInTheChart()
{
    QFETCH(QByteArray, from);
    QFETCH(bool, byKey);
    open();
    choose(vega);
    calendar()->setDay(gapDay);
    auto* const widget = child<QWidget>(m_window.get(), from.constData());
    widget->setFocus();
    auto* const items = qobject_cast<QAbstractItemView*>(widget);
    if (items && !items->currentIndex().isValid())
        items->setCurrentIndex(items->model()->index(0, 0));
    if (byKey) {
        hands::keyClick(widget, Qt::Key_Return);
    } else if (items) {
        const QPoint place = items->visualRect(items->currentIndex()).center();
        hands::mouseClick(items->viewport(), Qt::LeftButton, {}, place);
        hands::mouseDClick(items->viewport(), Qt::LeftButton, {}, place);
    }
    QCOMPARE(m_places.size(), 1);
    QCOMPARE(tadata::pathOf(m_places.first().series), vega);
    QCOMPARE(m_places.first().day, gapDay);
    // The bar behind the gap.
    QCOMPARE(m_places.first().time, QTime(10, 29));
    QVERIFY(m_window->isVisible());
}

void TestHealthWindow::saysWhyNoChartIsShown_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("text");
    QTest::newRow("no charts") << int(HealthWindow::Shown::NoCharts)
                               << "У этого терминала нет графиков: показать место негде.";
    QTest::newRow("no such day") << int(HealthWindow::Shown::NoDay)
                                 << "В хранилище нет дня 29.03.2024 серии NORD/MAIN/ALFA: график "
                                    "показывает ближайшее место.";
    QTest::newRow("nothing there")
        << int(HealthWindow::Shown::NothingThere)
        << "График не показан: от серии NORD/MAIN/ALFA ничего не хранится.";
}

void TestHealthWindow::saysWhyNoChartIsShown()
{
    QFETCH(int, answer);
    QFETCH(QString, text);
    open();
    m_answer = static_cast<HealthWindow::Shown>(answer);
    click(button("show"));
    QCOMPARE(label("status"), text);
    m_answer = HealthWindow::Shown::Yes;
    click(button("show"));
    QVERIFY(label("status").isEmpty());
}

// The store is looked at elsewhere, and the window may be closed meanwhile.
void TestHealthWindow::isToldLaterWhatIsShown()
{
    m_isAnswerAwaited = true;
    open();
    click(button("show"));
    QVERIFY(label("status").isEmpty());
    m_told(HealthWindow::Shown::NothingThere);
    QVERIFY(label("status").startsWith(QStringLiteral("График не показан")));
    click(button("show"));
    m_window.reset();
    m_told(HealthWindow::Shown::NothingThere);
}

void TestHealthWindow::asksToFillTheSeries()
{
    open();
    choose(vega);
    const QSignalSpy asked(m_window.get(), &HealthWindow::fillRequested);
    click(button("fill"));
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first(), QVariantList({vega, 60}));
}

void TestHealthWindow::savesTheListForTheBroker()
{
    open();
    const QString path = m_dir->filePath(QStringLiteral("list.txt"));
    m_window->saveBrokerList(path);
    EVENTUALLY_EQUAL(label("status"), QStringLiteral("Список записан в %1.").arg(path));
    QCOMPARE(testsupport::readFile(path),
             QByteArray("NORD/MAIN/VEGA 60 2024-02-14\nNORD/MAIN/VEGA 60 2024-03-05\n"));
}

void TestHealthWindow::saysThatTheListIsNotWhole()
{
    const QString alfaDay = root().filePath(testsupport::dayPath(alfa, gapDay));
    QVERIFY(QFile::resize(alfaDay, qint64(1024) * 1024 * 1024 + 1)); // larger than a day may be
    open();
    EVENTUALLY(label("summary").contains(QStringLiteral("Не прочитано: 1. ")));
    m_window->saveBrokerList(m_dir->filePath(QStringLiteral("list.txt")));
    EVENTUALLY2(label("status").endsWith(QStringLiteral("хранилище прочитано не полностью.")),
                qPrintable(label("status")));
}

void TestHealthWindow::asksForNoFileWhereNothingIsMissing()
{
    open();
    testsupport::type(child<QLineEdit>(m_window.get(), "filter"), QStringLiteral("alfa"));
    click(button("list"));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY2(label("status").startsWith(QStringLiteral("Запрашивать нечего")),
             qPrintable(label("status")));
}

void TestHealthWindow::saysWhereTheListCannotBeSaved()
{
    open();
    const QString path = m_dir->filePath(QStringLiteral("missing/list.txt"));
    m_window->saveBrokerList(path);
    EVENTUALLY2(label("status").contains(path), qPrintable(label("status")));
    QVERIFY(label("status").startsWith(QStringLiteral("Невозможно записать")));
    QVERIFY2(label("status").contains(qt_error_string(ENOENT)), qPrintable(label("status")));
}

void TestHealthWindow::followsTheStore()
{
    open();
    choose(vega);
    for (const QDate& day : {gapDay, missingDay, brokenDay})
        testsupport::healDay(root(), day);
    EVENTUALLY_EQUAL(label("summary"), QStringLiteral("Серий: 2, с замечаниями: 0."));
    EVENTUALLY_EQUAL(rows("remarks"), 0);
    testsupport::writeFile(root().filePath(QStringLiteral("EAST/MAIN/BETA/20240115_60.iss")), "");
    EVENTUALLY_EQUAL(rows("series"), 3);
}

void TestHealthWindow::isReachedByKeysAlone()
{
    open();
    auto* const filter = child<QLineEdit>(m_window.get(), "filter");
    QCOMPARE(m_window->focusWidget(), filter);
    hands::keyClicks(m_window->focusWidget(), QStringLiteral("veg"));
    QCOMPARE(rows("series"), 1);
    hands::keyClick(filter, Qt::Key_Down);
    QCOMPARE(m_window->focusWidget(), view("series"));
    const QList<QWidget*> order = testsupport::tabOrder(m_window.get());
    for (QWidget* const widget :
         QList<QWidget*>{child<QLineEdit>(m_window.get(), "filter"), view("series"), calendar(),
                         view("remarks"), button("show"), button("fill"), button("list")})
        QVERIFY2(order.contains(widget), qPrintable(widget->objectName()));
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestHealthWindow::showsItsTextsWhole_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isDark");
    QTest::newRow("usual") << QSize(790, 560) << false;
    QTest::newRow("large and dark") << QSize(1200, 800) << true;
}

void TestHealthWindow::showsItsTextsWhole()
{
    QFETCH(QSize, size);
    QFETCH(bool, isDark);
    const QPalette before = QApplication::palette();
    const auto restore = qScopeGuard([before] { QApplication::setPalette(before); });
    if (isDark)
        QApplication::setPalette(QPalette(QColor(0x35, 0x35, 0x35), QColor(0x2a, 0x2a, 0x2a)));
    open();
    choose(vega);
    m_window->resize(size);
    calendar()->setDay(gapDay);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(m_window->size(), size);
    if (qEnvironmentVariableIsSet("TADATA_PICTURES"))
        m_window->grab().save(qEnvironmentVariable("TADATA_PICTURES") +
                              QStringLiteral("/health-%1.png").arg(size.width()));
    const QStringList cut = testsupport::cutTexts(m_window.get());
    QVERIFY2(cut.isEmpty(), qPrintable(cut.join(u'\n')));
    QCOMPARE(view("series")->horizontalScrollBar()->maximum(), 0);
    // All weeks of a year stand beside each other.
    const QRect lastWeek = calendar()->visualRect(calendar()->model()->index(1, 53));
    QVERIFY(calendar()->viewport()->rect().contains(lastWeek));
}

QTEST_MAIN(TestHealthWindow)
#include "tst_healthwindow.moc"
