// SPDX-License-Identifier: MIT
#include "textcolours.h"
#include "toolwindow.h"

#include "support/child.h"
#include "support/eventually.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <vexdesk/appsettings.h>

#include <QtCore/QStringListModel>
#include <QtGui/QHideEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using testsupport::child;

namespace {

constexpr QSize usual(500, 400);
constexpr QLatin1String group("tst_toolwindow");

// A table above, a field below, and a button.
class Window final : public tadata::ToolWindow
{
public:
    Window()
        : ToolWindow(QStringLiteral("Каталог"), group, nullptr)
    {
        auto* const lower = new QWidget;
        layoutOf(lower)->addWidget(field);
        prepareTable(table, &model, "table");
        setParts(table, lower, button);
        restoreSizeOr(usual);
    }

    using ToolWindow::plainLabel;
    using ToolWindow::say;

    QStringListModel model{QStringList{QStringLiteral("one"), QStringLiteral("two")}};
    QTreeView* table = new QTreeView;
    QLineEdit* field = new QLineEdit;
    QPushButton* button = new QPushButton(QStringLiteral("&OK"));
};

} // namespace

/// What the windows that stay open beside the terminal's have in common.
class TestToolWindow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void isAWindowWithItsTitle();
    void itsPartsFillIt();
    void whatItSaysIsTheLastLine();
    void itsTableHasNoBranches();
    void itsSizeIsRemembered();
    void remembersNoSizeOfAMinimizedWindow();
    void returnPressesTheButtonThatHasTheFocus();
    void escapeClosesIt();

private:
    void open();

    std::unique_ptr<Window> m_window;
};

void TestToolWindow::init()
{
    testsupport::failOnStrayWarnings();
    AppSettings(group).remove(QString());
    open();
}

void TestToolWindow::open()
{
    m_window = std::make_unique<Window>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestToolWindow::isAWindowWithItsTitle()
{
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Каталог"));
    // With a place of its own in the task bar, and buttons to make it large.
    QCOMPARE(m_window->windowType(), Qt::Window);
}

void TestToolWindow::itsPartsFillIt()
{
    auto* const parts = m_window->findChild<QSplitter*>();
    QCOMPARE(parts->orientation(), Qt::Vertical);
    QVERIFY(!parts->childrenCollapsible());
    QCOMPARE(parts->widget(0), m_window->table);
    QVERIFY(parts->geometry().bottom() < m_window->button->geometry().top());
    // What the window has too much is theirs, not the button's.
    EVENTUALLY_EQUAL(m_window->size(), usual);
    const int button = m_window->button->height();
    const int height = parts->height();
    m_window->resize(usual + QSize(0, 100));
    EVENTUALLY_EQUAL(parts->height(), height + 100);
    QCOMPARE(m_window->button->height(), button);
    // The parts keep no distance from their own edges.
    QCOMPARE(m_window->field->parentWidget()->layout()->contentsMargins(), QMargins());
}

void TestToolWindow::whatItSaysIsTheLastLine()
{
    auto* const line = child<QLabel>(m_window.get(), "status");
    QVERIFY(!line->isVisible());
    m_window->say(QStringLiteral("<b>Готово</b>"));
    EVENTUALLY(line->isVisible());
    QCOMPARE(line->text(), QStringLiteral("<b>Готово</b>"));
    QCOMPARE(line->textFormat(), Qt::PlainText);
    QVERIFY(line->wordWrap());
    QTRY_VERIFY(line->geometry().bottom() < m_window->button->geometry().top());
    QVERIFY(line->geometry().top() > m_window->findChild<QSplitter*>()->geometry().bottom());
    const QColor usualText = line->palette().color(QPalette::WindowText);
    m_window->say(QStringLiteral("Не вышло"), true);
    const QColor fault = tadata::faultText(m_window->palette());
    QVERIFY(fault != usualText);
    QCOMPARE(line->palette().color(QPalette::WindowText), fault);
    m_window->say(QStringLiteral("Вышло"));
    QCOMPARE(line->palette().color(QPalette::WindowText), usualText);
    m_window->say(QString());
    QVERIFY(!line->isVisible());
}

void TestToolWindow::itsTableHasNoBranches()
{
    const QTreeView* const table = m_window->table;
    QCOMPARE(table->objectName(), QStringLiteral("table"));
    QCOMPARE(table->model(), &m_window->model);
    QVERIFY(!table->rootIsDecorated());
    QVERIFY(table->uniformRowHeights());
    QVERIFY(table->allColumnsShowFocus());
    QVERIFY(!table->header()->sectionsMovable());
    QCOMPARE(table->header()->resizeContentsPrecision(), 0);
}

void TestToolWindow::itsSizeIsRemembered()
{
    constexpr QSize larger(620, 470);
    EVENTUALLY_EQUAL(m_window->size(), usual);
    m_window->resize(larger);
    EVENTUALLY_EQUAL(m_window->size(), larger);
    m_window->close();
    open();
    EVENTUALLY_EQUAL(m_window->size(), larger);
}

// The window system hides it then, not the user.
void TestToolWindow::remembersNoSizeOfAMinimizedWindow()
{
    const QString key = QStringLiteral("dialog_size");
    QHideEvent hide;
    QSpontaneKeyEvent::setSpontaneous(&hide);
    QCoreApplication::instance()->notify(m_window.get(), &hide);
    QVERIFY(!AppSettings(group).contains(key));
    m_window->close();
    QVERIFY(AppSettings(group).contains(key));
}

void TestToolWindow::returnPressesTheButtonThatHasTheFocus()
{
    const QSignalSpy clicks(m_window->button, &QPushButton::clicked);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        m_window->field->setFocus();
        hands::keyClick(m_window->field, key);
        m_window->table->setFocus();
        hands::keyClick(m_window->table, key);
        QVERIFY(clicks.isEmpty());
    }
    QVERIFY(m_window->isVisible());
    m_window->button->setFocus();
    hands::keyClick(m_window->button, Qt::Key_Return);
    EVENTUALLY_EQUAL(clicks.size(), 1);
}

void TestToolWindow::escapeClosesIt()
{
    m_window->field->setFocus();
    hands::keyClick(m_window->field, Qt::Key_Escape);
    EVENTUALLY(!m_window->isVisible());
}

QTEST_MAIN(TestToolWindow)
#include "tst_toolwindow.moc"
