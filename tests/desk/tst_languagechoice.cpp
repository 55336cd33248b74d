// SPDX-License-Identifier: MIT
// The menu in which the user chooses the language of the terminal.
#include "desk/commands.h"
#include "desk/deskapplication.h"
#include "desk/languagechoice.h"
#include "desk/mainwindow.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/terminal.h"
#include "support/userhands.h"

#include <vexdesk/icore.h>

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <memory>

using vexdesk::Language;
using vexdesk::LanguageChoice;

namespace {

class Stubborn final : public QWidget
{
    Q_OBJECT

protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

} // namespace

class TestLanguageChoice final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theMenuNamesEachLanguageInItself();
    void theSpokenLanguageIsMarked();
    void theChoiceIsStoredAndMarked();
    void theSpokenLanguageIsStoredWithoutAWord();
    void theBoxSpeaksTheChosenLanguage();
    void aChoiceThatIsNotKeptIsTold();
    void escapeMeansLater();
    void restartClosesTheWindow();
    void aWindowThatRefusesPreventsTheRestart();
    void closingOtherwiseIsNoRestart();

private:
    void makeTerminal(Language language);
    QAction* item(Language language) const;
    // Chooses the language in the menu and answers the box, if there is one.
    void choose(Language language, const std::function<void(QMessageBox*)>& answer = {});
    static QPushButton* button(QMessageBox* box, QMessageBox::ButtonRole role);

    std::unique_ptr<testsupport::Terminal> m_terminal;
    QStringList m_boxes; // the texts of those that were shown
};

void TestLanguageChoice::init()
{
    testsupport::failOnStrayWarnings();
    QFile::remove(ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini")));
    m_boxes.clear();
    makeTerminal(Language::Russian);
}

void TestLanguageChoice::cleanup()
{
    m_terminal.reset();
}

void TestLanguageChoice::makeTerminal(Language language)
{
    cleanup();
    m_terminal = std::make_unique<testsupport::Terminal>(language);
}

QAction* TestLanguageChoice::item(Language language) const
{
    const QList<QMenu*> menus = m_terminal->window()->menuBar()->findChildren<QMenu*>();
    for (const QMenu* const menu : menus) {
        const QList<QAction*> entries = menu->actions();
        for (QAction* const entry : entries) {
            if (entry->data().toByteArray() == LanguageChoice::commandOf(language))
                return entry;
        }
    }
    return nullptr;
}

QPushButton* TestLanguageChoice::button(QMessageBox* box, QMessageBox::ButtonRole role)
{
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* const candidate : buttons) {
        if (box->buttonRole(candidate) == role)
            return qobject_cast<QPushButton*>(candidate);
    }
    return nullptr;
}

void TestLanguageChoice::choose(Language language, const std::function<void(QMessageBox*)>& answer)
{
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible() || !answer)
            return;
        poll.stop();
        m_boxes.append(box->text());
        answer(box);
    });
    poll.start(1);
    QVERIFY(item(language));
    item(language)->trigger();
}

void TestLanguageChoice::theMenuNamesEachLanguageInItself()
{
    QCOMPARE(item(Language::Russian)->text(), QStringLiteral("&Русский"));
    QCOMPARE(item(Language::English)->text(), QStringLiteral("&English"));
}

void TestLanguageChoice::theSpokenLanguageIsMarked()
{
    QVERIFY(item(Language::Russian)->isChecked());
    QVERIFY(!item(Language::English)->isChecked());
    makeTerminal(Language::English);
    QVERIFY(!item(Language::Russian)->isChecked());
    QVERIFY(item(Language::English)->isChecked());
}

void TestLanguageChoice::theChoiceIsStoredAndMarked()
{
    QCOMPARE(LanguageChoice::stored(), QString());
    choose(Language::English,
           [](QMessageBox* box) { testsupport::click(button(box, QMessageBox::RejectRole)); });
    QCOMPARE(LanguageChoice::stored(), QStringLiteral("en"));
    QVERIFY(item(Language::English)->isChecked());
    QVERIFY(!item(Language::Russian)->isChecked());
    QVERIFY(m_terminal->window()->isVisible());
    QVERIFY(!m_terminal->window()->isRestartWanted());
}

void TestLanguageChoice::theSpokenLanguageIsStoredWithoutAWord()
{
    choose(Language::Russian);
    QCOMPARE(LanguageChoice::stored(), QStringLiteral("ru"));
    QVERIFY(item(Language::Russian)->isChecked());
    QVERIFY(m_boxes.isEmpty());
}

void TestLanguageChoice::theBoxSpeaksTheChosenLanguage()
{
    QStringList texts;
    const auto read = [&texts](QMessageBox* box) {
        texts = {box->windowTitle(), box->text(), button(box, QMessageBox::AcceptRole)->text(),
                 button(box, QMessageBox::RejectRole)->text()};
        testsupport::click(button(box, QMessageBox::RejectRole));
    };
    choose(Language::English, read);
    QCOMPARE(texts,
             QStringList({"Language", "The language will change after the terminal is restarted.",
                          "Restart", "Later"}));
    makeTerminal(Language::English);
    choose(Language::Russian, read);
    QCOMPARE(texts, QStringList({"Язык", "Язык изменится после перезапуска терминала.",
                                 "Перезапустить", "Позже"}));
}

void TestLanguageChoice::aChoiceThatIsNotKeptIsTold()
{
    // In the place of the file it keeps everybody from writing.
    const QString file = ICore::getDir(QString(), false).filePath(QStringLiteral("vexdesk.ini"));
    QVERIFY(QDir().mkpath(file + QStringLiteral("/in the way")));
    QList<QMessageBox::Icon> icons;
    choose(Language::English, [&icons](QMessageBox* box) {
        icons.append(box->icon());
        hands::keyClick(box, Qt::Key_Return);
    });
    QVERIFY(QDir(file).removeRecursively());
    QCOMPARE(icons, QList<QMessageBox::Icon>{QMessageBox::Warning});
    QVERIFY2(m_boxes.constFirst().startsWith(QStringLiteral("The choice of the language")),
             qPrintable(m_boxes.constFirst()));
    QVERIFY2(m_boxes.constFirst().contains(
                 QDir::toNativeSeparators(ICore::getDir(QString(), false).path())),
             qPrintable(m_boxes.constFirst()));
    QVERIFY(item(Language::Russian)->isChecked());
    QVERIFY(!item(Language::English)->isChecked());
    QVERIFY(m_terminal->window()->isVisible());
}

void TestLanguageChoice::escapeMeansLater()
{
    choose(Language::English, [](QMessageBox* box) { hands::keyClick(box, Qt::Key_Escape); });
    QCOMPARE(m_boxes.size(), 1);
    QVERIFY(m_terminal->window()->isVisible());
    QVERIFY(!m_terminal->window()->isRestartWanted());
}

void TestLanguageChoice::restartClosesTheWindow()
{
    choose(Language::English,
           [](QMessageBox* box) { testsupport::click(button(box, QMessageBox::AcceptRole)); });
    QVERIFY(!m_terminal->window()->isVisible());
    QVERIFY(m_terminal->window()->isRestartWanted());
}

void TestLanguageChoice::aWindowThatRefusesPreventsTheRestart()
{
    Stubborn other;
    other.show();
    choose(Language::English,
           [](QMessageBox* box) { testsupport::click(button(box, QMessageBox::AcceptRole)); });
    QVERIFY(m_terminal->window()->isVisible());
    QVERIFY(!m_terminal->window()->isRestartWanted());
}

void TestLanguageChoice::closingOtherwiseIsNoRestart()
{
    choose(Language::English,
           [](QMessageBox* box) { testsupport::click(button(box, QMessageBox::RejectRole)); });
    QVERIFY(m_terminal->window()->close());
    QVERIFY(!m_terminal->window()->isRestartWanted());
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestLanguageChoice test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_languagechoice.moc"
