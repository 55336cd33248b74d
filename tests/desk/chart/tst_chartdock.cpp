// SPDX-License-Identifier: MIT
// The chart as a part of the terminal's window: its menu entry, its place, and what it says in
// an empty store.

#include "desk/chart/chartdock.h"
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/pluginloader.h"
#include "support/child.h"
#include "support/strictlog.h"

#include <vexdesk/icore.h>
#include <vexdesk/terminal/core.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QScrollArea>

#include <memory>

using vexdesk::ChartDock;
using vexdesk::MainWindow;
using vexdesk::PluginLoader;

class TestChartDock final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isHiddenAtFirst();
    void opensAndClosesByMenu();
    void opensByShortcutAndTakesTheKeys();
    void theMarkFollowsTheDocksOwnButton();
    void hasRoomInTheWindow();
    void staysOpenUntilTheNextStart();
    void staysAloneUntilTheNextStart();
    void saysHowToGetBars();

private:
    void start();
    ChartDock* dock() const { return m_window->findChild<ChartDock*>(); }
    QAction* item() const;
    void choose();

    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<PluginLoader> m_loader;
    std::unique_ptr<MainWindow> m_window;
};

void TestChartDock::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<PluginLoader>();
    start();
}

void TestChartDock::cleanup()
{
    m_window.reset();
    m_loader.reset();
    m_core.reset();
}

void TestChartDock::start()
{
    m_window.reset();
    m_window = std::make_unique<MainWindow>(*m_loader);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

QAction* TestChartDock::item() const
{
    for (const QAction* const title : m_window->menuBar()->actions()) {
        if (title->text() == QStringLiteral("&Вид"))
            return title->menu()->actions().value(0);
    }
    return nullptr;
}

void TestChartDock::choose()
{
    QMenuBar* const bar = m_window->menuBar();
    for (QAction* const title : bar->actions()) {
        if (title->text() != QStringLiteral("&Вид"))
            continue;
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
        QTRY_VERIFY(title->menu()->isVisible());
        QTest::mouseMove(title->menu(), title->menu()->actionGeometry(item()).center());
        QTest::mouseClick(title->menu(), Qt::LeftButton, {},
                          title->menu()->actionGeometry(item()).center());
        QTRY_VERIFY(!title->menu()->isVisible());
    }
}

void TestChartDock::isHiddenAtFirst()
{
    QVERIFY(dock());
    QVERIFY(!dock()->isVisible());
    QVERIFY(!dock()->widget());
    QVERIFY(item());
    QCOMPARE(item()->text(), QStringLiteral("&График"));
    QVERIFY(item()->isCheckable() && !item()->isChecked());
}

void TestChartDock::opensAndClosesByMenu()
{
    choose();
    QVERIFY(dock()->isVisible());
    QVERIFY(item()->isChecked());
    QCOMPARE(dock()->windowTitle(), QStringLiteral("График"));
    choose();
    QVERIFY(!dock()->isVisible());
    QVERIFY(!item()->isChecked());
}

void TestChartDock::opensByShortcutAndTakesTheKeys()
{
    QTest::keyClick(m_window.get(), Qt::Key_G, Qt::ControlModifier);
    QVERIFY(dock()->isVisible());
    QVERIFY(dock()->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(m_window.get(), Qt::Key_G, Qt::ControlModifier);
    QVERIFY(!dock()->isVisible());
}

void TestChartDock::theMarkFollowsTheDocksOwnButton()
{
    choose();
    dock()->close();
    QVERIFY(!item()->isChecked());
    choose();
    QVERIFY(dock()->isVisible());
    QVERIFY(item()->isChecked());
}

void TestChartDock::hasRoomInTheWindow()
{
    choose();
    QCOMPARE(m_window->size(), QSize(960, 640));
    QTRY_VERIFY2(dock()->widget()->width() >= 400 && dock()->widget()->height() >= 300,
                 qPrintable(QStringLiteral("%1 x %2")
                                .arg(dock()->widget()->width())
                                .arg(dock()->widget()->height())));
    const QRect inWindow(dock()->mapTo(m_window.get(), QPoint()), dock()->size());
    QVERIFY(m_window->rect().contains(inWindow));
    // The start page goes on being there, to scroll.
    QVERIFY(m_window->centralWidget()->height() >= 100);
}

void TestChartDock::staysOpenUntilTheNextStart()
{
    choose();
    m_window->resizeDocks({dock()}, {420}, Qt::Vertical);
    QTRY_COMPARE(dock()->height(), 420);
    m_window->close();
    start();
    QVERIFY(dock()->isVisible());
    QVERIFY(item()->isChecked());
    QTRY_COMPARE(dock()->height(), 420);
    choose();
    m_window->close();
    start();
    QVERIFY(!dock()->isVisible());
    QVERIFY(!item()->isChecked());
}

void TestChartDock::staysAloneUntilTheNextStart()
{
    choose();
    dock()->setFloating(true);
    dock()->resize(500, 400);
    m_window->close();
    QVERIFY(!m_window->isVisible());
    start();
    QVERIFY(dock()->isVisible());
    QVERIFY(dock()->isFloating());
}

void TestChartDock::saysHowToGetBars()
{
    choose();
    const auto* const message = testsupport::child<QLabel>(dock(), "chartMessage");
    QVERIFY(message);
    QTRY_VERIFY(message->isVisible());
    QTRY_VERIFY2(message->text().contains(QStringLiteral("команду импорта")),
                 qPrintable(message->text()));
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestChartDock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_chartdock.moc"
