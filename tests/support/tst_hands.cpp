// SPDX-License-Identifier: MIT
// Mouse and keys of the tests: the application cannot tell those of an X server from a user's.
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"

#include <QtCore/QAbstractNativeEventFilter>
#include <QtGui/QCursor>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <utility>

namespace {

bool onX()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

// Counts what comes over the connection to the X server, before Qt makes its events of it.
class FromServer final : public QAbstractNativeEventFilter
{
public:
    FromServer() { QCoreApplication::instance()->installNativeEventFilter(this); }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override
    {
        if (type != "xcb_generic_event_t")
            return false;
        const auto* const bytes = static_cast<const unsigned char*>(message);
        constexpr int ofAnExtension = 35;
        const int code = bytes[0] & 0x7F;
        // The mouse comes by an extension, in which its events have the old numbers. The device
        // that it stands for may be heard as well.
        if (code == ofAnExtension && bytes[10] == 2) {
            mousePresses += bytes[8] == 4;
            mouseReleases += bytes[8] == 5;
        }
        keyPresses += code == 2;
        keyReleases += code == 3;
        return false;
    }

    int mousePresses = 0;
    int mouseReleases = 0;
    int keyPresses = 0;
    int keyReleases = 0;
};

// Notes what mouse and keys do to it.
class Pad final : public QWidget
{
public:
    Pad()
    {
        setFocusPolicy(Qt::StrongFocus);
        resize(300, 200);
        show();
    }

    QStringList takeNotes() { return std::exchange(m_notes, {}); }

protected:
    void mousePressEvent(QMouseEvent* event) override { note("press", event); }
    void mouseMoveEvent(QMouseEvent* event) override { note("drag", event); }
    void mouseReleaseEvent(QMouseEvent* event) override { note("release", event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { note("double", event); }
    void keyPressEvent(QKeyEvent* event) override
    {
        m_notes.append(QKeySequence(event->key()).toString());
        if (event->key() == Qt::Key_Escape)
            close();
    }

private:
    void note(const char* what, const QMouseEvent* event)
    {
        const QPoint place = event->position().toPoint();
        m_notes.append(
            QStringLiteral("%1 %2 %3").arg(QLatin1String(what)).arg(place.x()).arg(place.y()));
        if (event->modifiers())
            m_notes.last().prepend(QKeySequence(event->modifiers()).toString());
    }

    QStringList m_notes;
};

} // namespace

class TestHands final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void theMouseIsTheServers();
    void keysAreTheServers();
    void clicksAreNoDoubleClicks();
    void aDoubleClickIsOne();
    void whatIsDraggedFollows();
    void modifiersAreHeld();
    void everyCharacterIsTyped();
    void aFieldIsGivenTheFocus();
    void aClickOpensADialog();
    void aKeyClosesItsWindow();
    void menusHaveTheirKeys();
    void aCoveredWindowComesForward();
    void whatIsHiddenIsNotReached();
};

void TestHands::theMouseIsTheServers()
{
    Pad pad;
    const FromServer server;
    hands::mouseClick(&pad, Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(pad.takeNotes(),
             (QStringList{QStringLiteral("press 20 30"), QStringLiteral("release 20 30")}));
    QCOMPARE(server.mousePresses, onX() ? 1 : 0);
    QCOMPARE(server.mouseReleases, onX() ? 1 : 0);
    if (onX())
        QCOMPARE(QCursor::pos(), pad.mapToGlobal(QPoint(20, 30)));
}

void TestHands::keysAreTheServers()
{
    Pad pad;
    const FromServer server;
    hands::keyClick(&pad, Qt::Key_Home);
    hands::keyClick(&pad, 'a');
    QCOMPARE(pad.takeNotes(), (QStringList{QStringLiteral("Home"), QStringLiteral("A")}));
    QCOMPARE(server.keyPresses, onX() ? 2 : 0);
    QCOMPARE(server.keyReleases, onX() ? 2 : 0);
}

void TestHands::clicksAreNoDoubleClicks()
{
    Pad pad;
    for (int i = 0; i < 3; ++i) {
        hands::mouseClick(&pad, Qt::LeftButton, {}, QPoint(20, 30));
        QCOMPARE(pad.takeNotes(),
                 (QStringList{QStringLiteral("press 20 30"), QStringLiteral("release 20 30")}));
    }
}

void TestHands::aDoubleClickIsOne()
{
    Pad pad;
    hands::mouseClick(&pad, Qt::LeftButton, {}, QPoint(20, 30));
    hands::mouseDClick(&pad, Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(pad.takeNotes().count(QStringLiteral("double 20 30")), 1);
}

void TestHands::whatIsDraggedFollows()
{
    Pad pad;
    hands::mousePress(&pad, Qt::LeftButton, {}, QPoint(20, 30));
    hands::mouseMove(&pad, QPoint(50, 60));
    hands::mouseMove(&pad, QPoint(-20, 70)); // beside the window
    hands::mouseRelease(&pad, Qt::LeftButton, {}, QPoint(-20, 70));
    QCOMPARE(pad.takeNotes(),
             (QStringList{QStringLiteral("press 20 30"), QStringLiteral("drag 50 60"),
                          QStringLiteral("drag -20 70"), QStringLiteral("release -20 70")}));
}

void TestHands::modifiersAreHeld()
{
    Pad pad;
    hands::mouseClick(&pad, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier,
                      QPoint(20, 30));
    const QStringList notes = pad.takeNotes();
    QVERIFY2(notes.contains(QStringLiteral("Ctrl+Shift+press 20 30")),
             qPrintable(notes.join(u',')));
    hands::mouseClick(&pad, Qt::LeftButton, {}, QPoint(20, 30));
    QCOMPARE(pad.takeNotes().constFirst(), QStringLiteral("press 20 30"));
}

void TestHands::everyCharacterIsTyped()
{
    QLineEdit line;
    line.show();
    QString all;
    for (char character = ' '; character <= '~'; ++character)
        all += QLatin1Char(character);
    hands::keyClicks(&line, all);
    QCOMPARE(line.text(), all);
    hands::keySequence(&line, QKeySequence(QStringLiteral("Ctrl+A, Del")));
    QCOMPARE(line.text(), QString());
}

void TestHands::aFieldIsGivenTheFocus()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const first = new QLineEdit;
    auto* const second = new QLineEdit;
    layout->addWidget(first);
    layout->addWidget(second);
    window.show();
    hands::keyClick(second, '2');
    hands::keyClick(first, '1');
    QCOMPARE(first->text(), QStringLiteral("1"));
    QCOMPARE(second->text(), QStringLiteral("2"));
}

void TestHands::aClickOpensADialog()
{
    QPushButton button;
    button.show();
    QString typed;
    connect(&button, &QPushButton::clicked, &button, [&button, &typed] {
        QDialog dialog(&button);
        auto* const line = new QLineEdit(&dialog);
        dialog.exec();
        typed = line->text();
    });
    testsupport::ModalSteps steps;
    steps.on<QDialog>([](QDialog* dialog) {
        hands::keyClicks(dialog->findChild<QLineEdit*>(), QStringLiteral("typed"));
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    hands::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(typed, QStringLiteral("typed"));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestHands::aKeyClosesItsWindow()
{
    Pad stays;
    {
        Pad closes;
        hands::keyClick(&closes, Qt::Key_Escape);
        QVERIFY(!closes.isVisible());
    }
    hands::keyClick(&stays, 'a');
    QCOMPARE(stays.takeNotes(), QStringList{QStringLiteral("A")});
}

void TestHands::menusHaveTheirKeys()
{
    Pad pad;
    QVERIFY(QTest::qWaitForWindowActive(&pad));
    QMenu menu(&pad);
    int runs = 0;
    menu.addAction(QStringLiteral("first"));
    menu.addAction(QStringLiteral("second"), &pad, [&runs] { ++runs; });
    menu.popup(pad.mapToGlobal(QPoint(50, 50)));
    hands::keyClick(&menu, Qt::Key_Down);
    hands::keyClick(&menu, Qt::Key_Down);
    hands::keyClick(&menu, Qt::Key_Return);
    QCOMPARE(runs, 1);
    menu.popup(pad.mapToGlobal(QPoint(50, 50)));
    hands::mouseClick(&menu, Qt::LeftButton, {},
                      menu.actionGeometry(menu.actions().constLast()).center());
    QCOMPARE(runs, 2);
    QVERIFY(!menu.isVisible());
    QCOMPARE(pad.takeNotes(), QStringList());
}

void TestHands::aCoveredWindowComesForward()
{
    Pad behind;
    QVERIFY(QTest::qWaitForWindowActive(&behind));
    Pad before;
    before.move(behind.pos());
    QVERIFY(QTest::qWaitForWindowActive(&before));
    hands::mouseClick(&behind, Qt::LeftButton);
    QCOMPARE(behind.takeNotes().size(), 2);
    QCOMPARE(before.takeNotes(), QStringList());
}

void TestHands::whatIsHiddenIsNotReached()
{
    if (!onX())
        QSKIP("Qt Test gives its events to whatever there is");
    Pad pad;
    pad.hide();
    QEXPECT_FAIL("", "It is hidden", Abort);
    hands::mouseClick(&pad, Qt::LeftButton);
    QEXPECT_FAIL("", "It is hidden too", Abort);
    hands::keyClick(&pad, 'a');
    pad.show();
    pad.setEnabled(false);
    QPushButton button(&pad);
    button.show();
    QEXPECT_FAIL("", "Its window is disabled", Abort);
    hands::keyClick(&button, 'a');
    QCOMPARE(pad.takeNotes(), QStringList());
}

QTEST_MAIN(TestHands)

#include "tst_hands.moc"
