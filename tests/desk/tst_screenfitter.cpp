// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

namespace {

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

QPushButton* makeTile()
{
    auto* const tile = new QPushButton;
    tile->setMinimumSize(250, 250);
    return tile;
}

// Five by five of them, for which no screen of the tests has room.
QList<QPushButton*> addTiles(QWidget* window)
{
    QList<QPushButton*> tiles;
    auto* const layout = new QGridLayout(window);
    for (int i = 0; i < 25; ++i) {
        tiles.append(makeTile());
        layout->addWidget(tiles.last(), i / 5, i % 5);
    }
    return tiles;
}

// Those at the edges of the window that can be seen.
QList<QScrollBar*> barsOf(const QWidget& window)
{
    QList<QScrollBar*> bars =
        window.findChildren<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly);
    bars.removeIf([](const QScrollBar* bar) { return !bar->isVisible(); });
    return bars;
}

QRect placeOf(const QWidget* widget)
{
    return QRect(widget->mapTo(widget->window(), QPoint()), widget->size());
}

// A window that takes a size of its own when it is shown, as the wizards take a saved one.
class Remembering final : public QDialog
{
    Q_OBJECT

public:
    QSize remembered;

protected:
    void showEvent(QShowEvent* event) override
    {
        QDialog::showEvent(event);
        resize(remembered);
    }
};

} // namespace

class TestScreenFitter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void aWindowLargerThanTheScreenIsLimited_data();
    void aWindowLargerThanTheScreenIsLimited();
    void aWindowOffTheScreenIsMovedThere_data();
    void aWindowOffTheScreenIsMovedThere();
    void aSizeThatIsTakenWhenShownIsLimited();
    void everythingInALargeDialogCanBeReached();
    void theWheelScrollsWhatDoesNotFit();
    void theBarsGoWhenThereIsRoom();
    void aCrampedDialogGrowsWithItsContents();
    void aLongMessageIsLimited();
    void aDialogThatGrowsStaysOnTheScreen();
    void aWindowThatFitsIsLeftAlone();
    void aMaximizedWindowIsLeftAlone();
    void whatTheUserMovesStaysThere();
    void isFittedEveryTimeItIsShown();
};

void TestScreenFitter::aWindowLargerThanTheScreenIsLimited_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide") << QSize(5000, 300);
    QTest::newRow("high") << QSize(365, 32767);
    QTest::newRow("both") << QSize(5000, 5000);
}

void TestScreenFitter::aWindowLargerThanTheScreenIsLimited()
{
    QFETCH(const QSize, size);
    for (const Qt::WindowType type : {Qt::Window, Qt::Dialog}) {
        QWidget window(nullptr, type);
        window.resize(size);
        window.show();
        QTRY_VERIFY(available().contains(window.frameGeometry()));
        const QSize least = size.boundedTo(available().size()) - QSize(50, 50);
        QVERIFY(window.width() >= least.width() && window.height() >= least.height());
    }
}

void TestScreenFitter::aWindowOffTheScreenIsMovedThere_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("left") << QPoint(-1000, 100);
    QTest::newRow("above") << QPoint(100, -1000);
    QTest::newRow("right") << QPoint(5000, 100);
    QTest::newRow("below") << QPoint(100, 5000);
    QTest::newRow("in part") << available().bottomRight() - QPoint(50, 50);
}

void TestScreenFitter::aWindowOffTheScreenIsMovedThere()
{
    QFETCH(const QPoint, place);
    QDialog window;
    window.resize(300, 200);
    window.move(place);
    window.show();
    QTRY_VERIFY(available().contains(window.frameGeometry()));
    QCOMPARE(window.size(), QSize(300, 200));
}

void TestScreenFitter::aSizeThatIsTakenWhenShownIsLimited()
{
    Remembering window;
    window.remembered = QSize(365, 32767);
    window.show();
    QTRY_VERIFY(available().contains(window.frameGeometry()));
    QCOMPARE(window.width(), 365);
}

void TestScreenFitter::everythingInALargeDialogCanBeReached()
{
    QDialog window;
    const QList<QPushButton*> tiles = addTiles(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_COMPARE(barsOf(window).size(), 2);
    QTRY_VERIFY(available().contains(window.frameGeometry()));
    tiles.first()->setFocus();
    for (QPushButton* const tile : tiles) {
        QTRY_COMPARE(window.focusWidget(), tile);
        QTRY_VERIFY(window.rect().contains(placeOf(tile)));
        QVERIFY(tile->width() >= 250 && tile->height() >= 250);
        for (const QScrollBar* const bar : barsOf(window))
            QVERIFY(!bar->geometry().intersects(placeOf(tile)));
        hands::keyClick(tile, Qt::Key_Tab);
    }
}

void TestScreenFitter::theWheelScrollsWhatDoesNotFit()
{
    QDialog window;
    const QList<QPushButton*> tiles = addTiles(&window);
    window.show();
    QTRY_COMPARE(barsOf(window).size(), 2);
    const QRect before = placeOf(tiles.last());
    QWheelEvent event(QPointF(5, 5), window.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window, &event);
    QTRY_VERIFY(placeOf(tiles.last()).top() < before.top());
    QCOMPARE(placeOf(tiles.last()).left(), before.left());
}

void TestScreenFitter::theBarsGoWhenThereIsRoom()
{
    QWidget window;
    const QList<QPushButton*> tiles = addTiles(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_COMPARE(barsOf(window).size(), 2);
    tiles.last()->setFocus();
    QTRY_VERIFY(placeOf(tiles.first()).left() < 0);
    window.resize(2000, 2000); // as the user may; only dialogs are limited then
    QTRY_COMPARE(barsOf(window).size(), 0);
    QVERIFY(window.rect().contains(placeOf(tiles.first())));
    QVERIFY(window.rect().contains(placeOf(tiles.last())));
}

void TestScreenFitter::aCrampedDialogGrowsWithItsContents()
{
    QDialog window;
    auto* const layout = new QVBoxLayout(&window);
    QPushButton* const wide = makeTile();
    wide->setMinimumWidth(3000);
    layout->addWidget(wide);
    window.show();
    QTRY_COMPARE(barsOf(window).size(), 1);
    QVERIFY(window.height() < 400);
    QPushButton* const added = makeTile();
    layout->addWidget(added);
    QTRY_VERIFY(window.height() > 500);
    QTRY_VERIFY(added->height() >= 250 && placeOf(added).bottom() < window.height());
    QTRY_VERIFY(available().contains(window.frameGeometry()));
}

void TestScreenFitter::aLongMessageIsLimited()
{
    QMessageBox box(QMessageBox::Warning, QString(), QStringLiteral("text\n").repeated(500),
                    QMessageBox::Ok);
    box.show();
    QTRY_VERIFY(available().contains(box.frameGeometry()));
}

void TestScreenFitter::aDialogThatGrowsStaysOnTheScreen()
{
    QDialog window;
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents(); // what showing it has brought about is over
    QVERIFY(available().contains(window.frameGeometry()));
    window.resize(5000, 200);
    QTRY_VERIFY(available().contains(window.frameGeometry()));
}

void TestScreenFitter::aWindowThatFitsIsLeftAlone()
{
    QDialog window;
    window.setGeometry(QRect(available().topLeft() + QPoint(120, 130), QSize(310, 220)));
    const QRect before = window.geometry();
    const QSize least = window.minimumSize();
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    QCOMPARE(window.geometry(), before);
    QCOMPARE(window.minimumSize(), least);
}

void TestScreenFitter::aMaximizedWindowIsLeftAlone()
{
    QWidget window;
    window.showMaximized();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    QVERIFY(window.isMaximized());
}

void TestScreenFitter::whatTheUserMovesStaysThere()
{
    QWidget window;
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    const QPoint place = available().bottomRight() - QPoint(50, 50);
    window.move(place);
    QDialog other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCoreApplication::processEvents();
    QCOMPARE(window.pos(), place);
}

void TestScreenFitter::isFittedEveryTimeItIsShown()
{
    QWidget window;
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.hide();
    window.resize(5000, 5000);
    window.show();
    QTRY_VERIFY(available().contains(window.frameGeometry()));
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestScreenFitter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_screenfitter.moc"
