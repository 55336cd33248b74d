// SPDX-License-Identifier: MIT
#include "desk/commandbutton.h"
#include "desk/deskapplication.h"
#include "desk/startpage.h"
#include "messageboxes.h"
#include "support/child.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icore.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

using vexdesk::CommandButton;
using vexdesk::StartPage;

class TestStartPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void listsCommandsUnderTheirMenus();
    void leavesOutTheTerminalsOwnCommands();
    void showsTextAndShortcutOfACommand();
    void followsChanges();
    void isEnabledByItsAction();
    void aClickTriggers();
    void aKeyTriggers();
    void aThrowingSlotIsReported();
    void aCommandMayDestroyItselfWhileItRuns();
    void saysWhereDataLie();
    void saysWherePluginsAreLookedFor();
    void aLongTextIsNotCut();
    void recentSeriesStandBesideTheCommandsOrAlone();
    void aRowThatGetsTheFocusIsSeen();

private:
    QList<CommandButton*> buttons() const;
    // Headings and rows from top to bottom.
    QStringList texts() const;
    void show();

    std::unique_ptr<StartPage> m_page;
    std::unique_ptr<CommandContainer> m_menu;
    std::unique_ptr<CommandContainer> m_subMenu;
    std::unique_ptr<Command> m_import;
    std::unique_ptr<Command> m_other;
};

void TestStartPage::init()
{
    testsupport::failOnStrayWarnings();
    m_menu = std::make_unique<CommandContainer>("TA");
    m_menu->setTitle(QStringLiteral("Тех. &анализ"));
    m_subMenu = std::make_unique<CommandContainer>("TA.History");
    m_subMenu->setTitle(QStringLiteral("&История"));
    m_import = std::make_unique<Command>("import");
    m_import->setDefaultText(QStringLiteral("&Импорт..."));
    m_import->setDefaultShortcut(QKeySequence(Qt::SHIFT | Qt::Key_I));
    m_import->setContext(Command::GlobalContext);
    m_other = std::make_unique<Command>("other");
    m_other->setDefaultText(QStringLiteral("&Другое"));
    m_subMenu->addCommand(m_import.get(), "", "");
    m_menu->addCommand(m_other.get(), "A", "");
    m_menu->addContainer(m_subMenu.get(), "B", "");
    ActionManager::instance()->menuBar()->addContainer(m_menu.get(), "", "25");
    m_page = std::make_unique<StartPage>(QSet<QByteArray>{"own"});
}

void TestStartPage::cleanup()
{
    m_page.reset();
    m_import.reset();
    m_other.reset();
    m_subMenu.reset();
    m_menu.reset();
}

QList<CommandButton*> TestStartPage::buttons() const
{
    QList<CommandButton*> shown;
    for (CommandButton* const button : m_page->findChildren<CommandButton*>()) {
        if (!button->isHidden())
            shown.append(button);
    }
    std::sort(shown.begin(), shown.end(),
              [](const CommandButton* left, const CommandButton* right) {
                  return left->y() < right->y();
              });
    return shown;
}

QStringList TestStartPage::texts() const
{
    QMap<int, QString> byPlace;
    for (const CommandButton* const button : buttons())
        byPlace.insert(button->y(), button->text());
    const CommandButton* const any = buttons().value(0);
    if (!any)
        return QStringList();
    const QLabel* const hint = testsupport::child<QLabel>(m_page.get(), "pluginHint");
    const QLabel* const data = testsupport::child<QLabel>(m_page.get(), "dataPath");
    for (const QLabel* const label : m_page->findChildren<QLabel*>()) {
        if (label != hint && label != data && !label->isHidden() &&
            label->parentWidget() == any->parentWidget())
            byPlace.insert(label->y(), label->text());
    }
    return byPlace.values();
}

void TestStartPage::show()
{
    m_page->resize(700, 500);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page.get()));
}

void TestStartPage::listsCommandsUnderTheirMenus()
{
    show();
    QCOMPARE(texts(), QStringList({"Тех. анализ", "Другое", "Тех. анализ › История", "Импорт..."}));
}

void TestStartPage::leavesOutTheTerminalsOwnCommands()
{
    Command own("own");
    own.setDefaultText(QStringLiteral("Собственная"));
    m_menu->addCommand(&own, "A", "");
    m_page->rebuild();
    show();
    QCOMPARE(texts(), QStringList({"Тех. анализ", "Другое", "Тех. анализ › История", "Импорт..."}));
}

void TestStartPage::showsTextAndShortcutOfACommand()
{
    QPixmap picture(24, 24);
    picture.fill(Qt::red);
    m_import->setDefaultIcon(QIcon(picture));
    m_other->setDefaultShortcut(QKeySequence(Qt::CTRL | Qt::Key_K));
    m_page->rebuild();
    const Action action("import");
    show();
    const CommandButton* const row = buttons().at(1);
    QCOMPARE(row->text(), QStringLiteral("Импорт..."));
    QCOMPARE(row->shortcutText(),
             QKeySequence(Qt::SHIFT | Qt::Key_I).toString(QKeySequence::NativeText));
    // A shortcut that works nowhere is not promised.
    QCOMPARE(buttons().at(0)->shortcutText(), QString());
    const QImage image = buttons().at(1)->grab().toImage();
    int red = 0;
    for (int x = 0; x < image.width(); ++x)
        red += image.pixelColor(x, image.height() / 2) == QColor(Qt::red) ? 1 : 0;
    QVERIFY2(red >= 20, qPrintable(QString::number(red)));
}

void TestStartPage::followsChanges()
{
    show();
    m_import->setDefaultText(QStringLiteral("Загрузка"));
    Command added("added");
    added.setDefaultText(QStringLiteral("Новая"));
    m_subMenu->addCommand(&added, "", "9");
    m_menu->setTitle(QStringLiteral("Анализ"));
    QTRY_COMPARE(texts(),
                 QStringList({"Анализ", "Другое", "Анализ › История", "Загрузка", "Новая"}));
    m_import.reset();
    m_other.reset();
    QTRY_COMPARE(texts(), QStringList({"Анализ › История", "Новая"}));
    m_menu.reset();
    QTRY_COMPARE(texts(), QStringList());
}

void TestStartPage::isEnabledByItsAction()
{
    const CommandButton* const row = buttons().at(0);
    QVERIFY(!row->isEnabled());
    const bool isImport = row->commandId() == "import";
    auto action = std::make_unique<Action>(isImport ? "import" : "other");
    QVERIFY(row->isEnabled());
    action->setEnabled(false);
    QVERIFY(!row->isEnabled());
    action->setEnabled(true);
    QVERIFY(row->isEnabled());
    action.reset();
    QVERIFY(!row->isEnabled());
}

void TestStartPage::aClickTriggers()
{
    const Action action("import");
    const QSignalSpy spy(&action, &Action::triggered);
    show();
    hands::mouseClick(buttons().at(0), Qt::LeftButton);
    QCOMPARE(spy.count(), 0); // the other command has no action
    hands::mouseClick(buttons().at(1), Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

void TestStartPage::aKeyTriggers()
{
    const Action action("import");
    const QSignalSpy spy(&action, &Action::triggered);
    show();
    m_page->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    hands::keyClick(m_page.get(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), buttons().at(1));
    hands::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(spy.count(), 1);
    hands::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(spy.count(), 2);
}

void TestStartPage::aThrowingSlotIsReported()
{
    const Action action("import");
    connect(&action, &Action::triggered, this, [] { throw QStringLiteral("не вышло"); });
    show();
    const desktest::MessageBoxes boxes;
    hands::mouseClick(buttons().at(1), Qt::LeftButton);
    QCOMPARE(boxes.texts(), QStringList{QStringLiteral("не вышло")});
}

void TestStartPage::aCommandMayDestroyItselfWhileItRuns()
{
    const Action action("import");
    bool ran = false;
    connect(&action, &Action::triggered, this, [&] {
        m_import.reset();
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&loop] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
        loop.exec();
        ran = true;
    });
    show();
    hands::mouseClick(buttons().at(1), Qt::LeftButton);
    QVERIFY(ran);
    QTRY_COMPARE(texts(), QStringList({"Тех. анализ", "Другое"}));
}

void TestStartPage::saysWhereDataLie()
{
    const auto* const label = testsupport::child<QLabel>(m_page.get(), "dataPath");
    QVERIFY(label);
    QCOMPARE(label->text(),
             QStringLiteral("Данные и настройки: %1")
                 .arg(QDir::toNativeSeparators(ICore::getDir(QString(), false).path())));
}

void TestStartPage::saysWherePluginsAreLookedFor()
{
    const auto* const hint = testsupport::child<QLabel>(m_page.get(), "pluginHint");
    QVERIFY(hint);
    const QTemporaryDir present;
    const QString missing = QDir(present.path()).filePath(QStringLiteral("missing"));
    m_page->setPlugins(0, {present.path(), missing});
    show();
    QVERIFY(hint->isVisible());
    const QStringList lines = hint->text().split(u'\n');
    QVERIFY(lines.contains(QStringLiteral("• %1").arg(QDir::toNativeSeparators(present.path()))));
    QVERIFY(lines.contains(
        QStringLiteral("• %1 (каталога нет)").arg(QDir::toNativeSeparators(missing))));
    m_page->setPlugins(1, {present.path()});
    QVERIFY(!hint->isVisible());
}

void TestStartPage::aLongTextIsNotCut()
{
    m_import->setDefaultText(QString(QStringLiteral("Очень длинная команда ")).repeated(6));
    m_page->rebuild();
    show();
    const CommandButton* const row = buttons().at(1);
    const int text = row->fontMetrics().horizontalAdvance(row->text());
    const int shortcut = row->fontMetrics().horizontalAdvance(row->shortcutText());
    QVERIFY2(row->width() > text + shortcut + row->iconSize().width(),
             qPrintable(QString::number(row->width())));
}

void TestStartPage::recentSeriesStandBesideTheCommandsOrAlone()
{
    m_page->setRecent({{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA")}});
    show();
    m_page->resize(1200, 600);
    const auto leftOf = [this](const QWidget* widget) {
        return widget->mapTo(m_page.get(), QPoint()).x();
    };
    const QWidget* const series = m_page->lastRow();
    const auto* const hint = testsupport::child<QLabel>(m_page.get(), "dataPath");
    QTRY_VERIFY(leftOf(series) > leftOf(buttons().constFirst()) + 300);
    // Without commands there is no room kept for them.
    m_import.reset();
    m_other.reset();
    m_page->rebuild();
    QTRY_COMPARE(leftOf(m_page->lastRow()), leftOf(hint));
    // Below each other they stand at the top, whatever room there is.
    m_page->resize(600, 1300);
    QTRY_VERIFY(m_page->lastRow()->mapTo(m_page.get(), QPoint()).y() < 300);
}

void TestStartPage::aRowThatGetsTheFocusIsSeen()
{
    const Action import("import"); // who can be triggered can get the focus
    const Action other("other");
    m_page->resize(400, 120);
    m_page->show();
    m_page->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    const auto isSeen = [this](const QWidget* row) {
        const int top = row->mapTo(m_page->viewport(), QPoint()).y();
        return top >= 0 && top + row->height() <= m_page->viewport()->height();
    };
    for (QWidget* const row : {m_page->lastRow(), m_page->firstRow(), m_page->lastRow()}) {
        QVERIFY(!isSeen(row));
        row->setFocus(Qt::BacktabFocusReason); // from the tree of series, say
        QTRY_VERIFY(isSeen(row));
    }
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestStartPage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_startpage.moc"
