// SPDX-License-Identifier: MIT
// Capital letters in boxes and lists, while a command of the menu has such a letter for a shortcut.
#include "desk/deskapplication.h"
#include "desk/menubuilder.h"
#include "support/eventually.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace {

const QStringList entries{QStringLiteral("ALFA"), QStringLiteral("IRIS"), QStringLiteral("VEGA")};

// One widget of each kind, in a window or in the middle of the terminal's.
class Fields final : public QWidget
{
public:
    Fields()
        : box(new QComboBox)
        , list(new QListWidget)
        , line(new QLineEdit)
        , button(new QPushButton)
    {
        box->addItems(entries);
        list->addItems(entries);
        auto* const layout = new QVBoxLayout(this);
        for (QWidget* const field : std::initializer_list<QWidget*>{box, list, line, button})
            layout->addWidget(field);
    }

    QComboBox* const box;
    QListWidget* const list;
    QLineEdit* const line;
    QPushButton* const button;
};

} // namespace

class TestLetterKeys final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aBoxOfAnotherWindowTakesItsLetters();
    void anOpenListOfABoxTakesItsLetters();
    void aListOfAnotherWindowTakesItsLetters();
    void aFieldOfTextTakesItsLetters();
    void theTerminalsWindowRunsItsCommands();
    void keysThatAreNoLettersRunCommands();

private:
    void type(QWidget* field, Qt::KeyboardModifiers modifiers = Qt::ShiftModifier)
    {
        field->setFocus();
        EVENTUALLY(field->hasFocus());
        hands::keyClick(field, Qt::Key_I, modifiers);
    }
    void open(QWidget* window)
    {
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }
    void addCommand(const QByteArray& id, const QKeySequence& keys);

    std::unique_ptr<QObject> m_commands;
    std::unique_ptr<QMainWindow> m_terminal;
    std::unique_ptr<vexdesk::MenuBuilder> m_builder;
    Fields* m_own = nullptr; // of the terminal's window
    std::unique_ptr<Fields> m_other;
    int m_runs = 0;
};

void TestLetterKeys::addCommand(const QByteArray& id, const QKeySequence& keys)
{
    auto* const command = new Command(id, m_commands.get());
    command->setDefaultText(QLatin1String(id));
    command->setContext(Command::GlobalContext);
    command->setDefaultShortcut(keys);
    connect(new Action(id, m_commands.get()), &Action::triggered, this, [this] { ++m_runs; });
    ActionManager::instance()
        ->container("Test", QStringLiteral("Test"), "MenuBar", "", "10")
        ->addCommand(command, "", "");
}

void TestLetterKeys::init()
{
    testsupport::failOnStrayWarnings();
    m_commands = std::make_unique<QObject>();
    addCommand("Letter", QKeySequence(Qt::SHIFT | Qt::Key_I));
    addCommand("Keys", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I));
    m_terminal = std::make_unique<QMainWindow>();
    m_builder = std::make_unique<vexdesk::MenuBuilder>(m_terminal->menuBar());
    m_own = new Fields;
    m_terminal->setCentralWidget(m_own);
    m_other = std::make_unique<Fields>();
    m_runs = 0;
    open(m_terminal.get());
}

void TestLetterKeys::cleanup()
{
    m_other.reset();
    m_builder.reset();
    m_terminal.reset();
    m_commands.reset();
}

void TestLetterKeys::aBoxOfAnotherWindowTakesItsLetters()
{
    open(m_other.get());
    type(m_other->box);
    QCOMPARE(m_other->box->currentText(), QStringLiteral("IRIS"));
    QCOMPARE(m_runs, 0);
}

void TestLetterKeys::anOpenListOfABoxTakesItsLetters()
{
    open(m_other.get());
    m_other->box->showPopup();
    EVENTUALLY(m_other->box->view()->isVisible());
    hands::keyClick(m_other->box->view(), Qt::Key_I, Qt::ShiftModifier);
    QCOMPARE(m_other->box->view()->currentIndex().data().toString(), QStringLiteral("IRIS"));
    QCOMPARE(m_runs, 0);
    m_other->box->hidePopup();
}

void TestLetterKeys::aListOfAnotherWindowTakesItsLetters()
{
    open(m_other.get());
    type(m_other->list);
    QCOMPARE(m_other->list->currentRow(), 1);
    QCOMPARE(m_runs, 0);
}

void TestLetterKeys::aFieldOfTextTakesItsLetters()
{
    open(m_other.get());
    type(m_other->line);
    QCOMPARE(m_other->line->text().toUpper(), QStringLiteral("I"));
    QCOMPARE(m_runs, 0);
}

void TestLetterKeys::theTerminalsWindowRunsItsCommands()
{
    type(m_own->list);
    QCOMPARE(m_runs, 1);
    type(m_own->box);
    QCOMPARE(m_runs, 2);
    QCOMPARE(m_own->box->currentText(), QStringLiteral("ALFA"));
}

void TestLetterKeys::keysThatAreNoLettersRunCommands()
{
    open(m_other.get());
    type(m_other->box, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(m_runs, 1);
    type(m_other->button); // nothing there is looked for by letters
    QCOMPARE(m_runs, 2);
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestLetterKeys test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_letterkeys.moc"
