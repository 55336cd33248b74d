// SPDX-License-Identifier: MIT
#include "desk/deskapplication.h"
#include "desk/errorreport.h"
#include "messageboxes.h"
#include "support/hands.h"
#include "support/strictlog.h"

#include <QtCore/QScopeGuard>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <functional>
#include <memory>
#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
#    include <sanitizer/lsan_interface.h>
#endif

namespace {

const QString unknownError = QStringLiteral("Произошла неизвестная ошибка.");

enum class Kind { Exception, Derived, Text, EmptyText, Number, EmptyWhat };

[[noreturn]] void throwOfKind(Kind kind)
{
    switch (kind) {
    case Kind::Exception:
        throw std::runtime_error("порядок нарушен");
    case Kind::Derived:
        throw std::out_of_range("за краем");
    case Kind::Text:
        throw QStringLiteral("Файл <b>не</b> открыт");
    case Kind::EmptyText:
        throw QString();
    case Kind::EmptyWhat:
        throw std::runtime_error("");
    case Kind::Number:
        break;
    }
    throw 7;
}

// While it lives, leaks of this thread do not count: Qt's widget library is built without
// exceptions, and an exception that passes its functions leaves their locals behind.
class ThroughQt final
{
public:
#if defined(__SANITIZE_ADDRESS__)
    ThroughQt()
    {
        __lsan_disable();
    }
    ~ThroughQt()
    {
        __lsan_enable();
    }
#else
    ThroughQt() = default;
#endif
    Q_DISABLE_COPY_MOVE(ThroughQt)
};

// Throws in its own event handlers.
class ThrowingWidget final : public QWidget
{
    Q_OBJECT

protected:
    void keyPressEvent(QKeyEvent* /*event*/) override { throw QStringLiteral("клавиша"); }
};

} // namespace

class TestDeskApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void showsWhatASlotThrows_data();
    void showsWhatASlotThrows();
    void showsWhatAnEventHandlerThrows();
    void theBoxShowsTextAsItIs();
    void aWorkingHandlerIsLeftAlone();
    void theSameErrorDoesNotPileUp();
    void anotherErrorWaitsForItsTurn();
    void anErrorInAWorkerThreadComesToTheScreen();
    void anOpenMenuDoesNotBlockTheBox();
    void theParentMayDieUnderTheBox();
    void aDialogWithoutAParentStandsInFrontOfTheWindow();
    void aDialogThatWasMovedStaysThere();
    void hintsCanBeReadOnEveryGround_data();
    void hintsCanBeReadOnEveryGround();
    void suppliesIcons();
    void datesFollowTheLanguage_data();
    void datesFollowTheLanguage();
};

void TestDeskApplication::showsWhatASlotThrows_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    QTest::newRow("std::exception") << int(Kind::Exception) << QStringLiteral("порядок нарушен");
    QTest::newRow("derived exception") << int(Kind::Derived) << QStringLiteral("за краем");
    QTest::newRow("QString") << int(Kind::Text) << QStringLiteral("Файл <b>не</b> открыт");
    QTest::newRow("empty QString") << int(Kind::EmptyText) << unknownError;
    QTest::newRow("empty what()") << int(Kind::EmptyWhat) << unknownError;
    QTest::newRow("number") << int(Kind::Number) << unknownError;
}

void TestDeskApplication::showsWhatASlotThrows()
{
    QFETCH(int, kind);
    QFETCH(QString, text);
    [[maybe_unused]] const ThroughQt throughQt{};
    QPushButton button;
    button.show();
    connect(&button, &QPushButton::clicked, this, [kind] { throwOfKind(Kind(kind)); });
    const desktest::MessageBoxes boxes;
    hands::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(boxes.texts(), QStringList{text});
    QCOMPARE(boxes.titles(), QStringList{QStringLiteral("Ошибка")});
    // The terminal goes on.
    hands::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(boxes.texts(), QStringList({text, text}));
}

void TestDeskApplication::showsWhatAnEventHandlerThrows()
{
    [[maybe_unused]] const ThroughQt throughQt{};
    ThrowingWidget widget;
    widget.show();
    const desktest::MessageBoxes boxes;
    hands::keyClick(&widget, Qt::Key_A);
    QCOMPARE(boxes.texts(), QStringList{QStringLiteral("клавиша")});
}

void TestDeskApplication::theBoxShowsTextAsItIs()
{
    desktest::MessageBoxes boxes;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    Qt::TextFormat format = Qt::AutoText;
    boxes.whileOpen([&](const QMessageBox* box) {
        icon = box->icon();
        format = box->textFormat();
    });
    vexdesk::reportError(QStringLiteral("a < b"));
    QCOMPARE(boxes.texts(), QStringList{QStringLiteral("a < b")});
    QCOMPARE(icon, QMessageBox::Critical);
    QCOMPARE(format, Qt::PlainText);
}

void TestDeskApplication::aWorkingHandlerIsLeftAlone()
{
    QPushButton button;
    button.show();
    int clicks = 0;
    connect(&button, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    const desktest::MessageBoxes boxes;
    hands::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicks, 1);
    QCOMPARE(boxes.texts(), QStringList());
}

void TestDeskApplication::theSameErrorDoesNotPileUp()
{
    // The fault comes again and again while the box is open.
    int faults = 0;
    bool goOn = true;
    std::function<void()> fail;
    fail = [&] {
        ++faults;
        if (goOn)
            QMetaObject::invokeMethod(this, fail, Qt::QueuedConnection);
        throw QStringLiteral("снова и снова");
    };
    desktest::MessageBoxes boxes;
    boxes.whileOpen([&](const QMessageBox*) {
        QTRY_VERIFY(faults > 5);
        goOn = false;
        QCoreApplication::processEvents();
    });
    QMetaObject::invokeMethod(this, fail, Qt::QueuedConnection);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("снова и снова")});
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(boxes.texts().size(), 1);
    QVERIFY(faults > 5);
}

void TestDeskApplication::anotherErrorWaitsForItsTurn()
{
    desktest::MessageBoxes boxes;
    QList<int> visible;
    bool first = true;
    boxes.whileOpen([&](const QMessageBox*) {
        int count = 0;
        for (const QWidget* const window : QApplication::topLevelWidgets())
            count += window->isVisible() && qobject_cast<const QMessageBox*>(window) ? 1 : 0;
        visible.append(count);
        if (std::exchange(first, false)) {
            vexdesk::reportError(QStringLiteral("вторая"));
            vexdesk::reportError(QStringLiteral("третья"));
            vexdesk::reportError(QStringLiteral("вторая"));
        }
    });
    vexdesk::reportError(QStringLiteral("первая"));
    QCOMPARE(boxes.texts(), QStringList({QStringLiteral("первая"), QStringLiteral("вторая"),
                                         QStringLiteral("третья")}));
    QCOMPARE(visible, QList<int>({1, 1, 1}));
}

void TestDeskApplication::anErrorInAWorkerThreadComesToTheScreen()
{
    const desktest::MessageBoxes boxes;
    QThread thread;
    QObject worker;
    worker.moveToThread(&thread);
    thread.start();
    QMetaObject::invokeMethod(
        &worker, [] { throw std::runtime_error("в другом потоке"); }, Qt::QueuedConnection);
    QTRY_COMPARE(boxes.texts(), QStringList{QStringLiteral("в другом потоке")});
    QVERIFY(thread.isRunning());
    thread.quit();
    QVERIFY(thread.wait());
}

void TestDeskApplication::anOpenMenuDoesNotBlockTheBox()
{
    QWidget window;
    window.resize(200, 100);
    window.show();
    QMenu menu(&window);
    menu.addAction(QStringLiteral("пункт"));
    menu.popup(window.mapToGlobal(QPoint(10, 10)));
    QTRY_COMPARE(QApplication::activePopupWidget(), &menu);
    desktest::MessageBoxes boxes;
    boxes.whileOpen([](const QMessageBox*) { QVERIFY(!QApplication::activePopupWidget()); });
    vexdesk::reportError(QStringLiteral("поверх меню"));
    QCOMPARE(boxes.texts(), QStringList{QStringLiteral("поверх меню")});
}

void TestDeskApplication::theParentMayDieUnderTheBox()
{
    auto* const window = new QWidget;
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTimer timer;
    bool hadParent = false;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (const QWidget* const box = QApplication::activeModalWidget()) {
            timer.stop();
            hadParent = box->parentWidget() == window;
            delete window;
        }
    });
    timer.start(1);
    vexdesk::reportError(QStringLiteral("окно исчезает"));
    QVERIFY(hadParent);
    // The next report is not taken for one that waits behind the lost box.
    const desktest::MessageBoxes boxes;
    vexdesk::reportError(QStringLiteral("окно исчезает"));
    QCOMPARE(boxes.texts().size(), 1);
}

namespace {

// In a corner, with room for a dialog in front of it.
std::unique_ptr<QWidget> windowInTheCorner()
{
    auto window = std::make_unique<QWidget>();
    window->setGeometry(20, 30, 400, 300);
    window->show();
    window->activateWindow();
    return window;
}

} // namespace

void TestDeskApplication::aDialogWithoutAParentStandsInFrontOfTheWindow()
{
    const std::unique_ptr<QWidget> window = windowInTheCorner();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QDialog dialog;
    dialog.resize(100, 80);
    dialog.show();
    const auto distance = [&] {
        return (dialog.geometry().center() - window->geometry().center()).manhattanLength();
    };
    constexpr int frame = 60; // of a window manager
    QTRY_VERIFY2(distance() <= frame, qPrintable(QString::number(distance())));
    QCOMPARE(dialog.windowHandle()->transientParent(), window->windowHandle());
}

void TestDeskApplication::aDialogThatWasMovedStaysThere()
{
    const std::unique_ptr<QWidget> window = windowInTheCorner();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QDialog dialog;
    dialog.resize(100, 80);
    dialog.move(300, 310);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTRY_VERIFY((dialog.pos() - QPoint(300, 310)).manhattanLength() <= 60);
}

void TestDeskApplication::hintsCanBeReadOnEveryGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("text");
    QTest::newRow("dark") << QColor(30, 30, 30) << QColor(230, 230, 230);
    QTest::newRow("light") << QColor(250, 250, 250) << QColor(20, 20, 20);
}

void TestDeskApplication::hintsCanBeReadOnEveryGround()
{
    QFETCH(const QColor, ground);
    QFETCH(const QColor, text);
    const QPalette before = QApplication::palette();
    const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
    QPalette chosen = before;
    for (const auto role : {QPalette::Base, QPalette::Window})
        chosen.setColor(role, ground);
    for (const auto role : {QPalette::Text, QPalette::WindowText})
        chosen.setColor(role, text);
    QApplication::setPalette(chosen);
    const QLineEdit line;
    const QColor hint = line.palette().color(QPalette::PlaceholderText);
    const double share = hint.alphaF();
    const double seen = share * hint.lightnessF() + (1 - share) * ground.lightnessF();
    QVERIFY2(qAbs(seen - ground.lightnessF()) > 0.2, qPrintable(hint.name(QColor::HexArgb)));
    QCOMPARE(line.palette().color(QPalette::Base), ground);
}

void TestDeskApplication::suppliesIcons()
{
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        QCOMPARE(QApplication::windowIcon().actualSize(QSize(size, size)), QSize(size, size));
    // Plug-ins' options pages ask for this one by its path.
    const QIcon icon(QStringLiteral(":/icons/preferences/tadatamanager.png"));
    QCOMPARE(icon.actualSize(QSize(24, 24)), QSize(24, 24));
    QCOMPARE(QImage(QStringLiteral(":/icons/preferences/tadatamanager@2x.png")).size(),
             QSize(48, 48));
    QCOMPARE(QApplication::applicationVersion().isEmpty(), false);
}

void TestDeskApplication::datesFollowTheLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("month");
    QTest::newRow("English") << int(vexdesk::Language::English) << QStringLiteral("20 November");
    QTest::newRow("Russian") << int(vexdesk::Language::Russian) << QStringLiteral("20 ноября");
}

void TestDeskApplication::datesFollowTheLanguage()
{
    QFETCH(const int, language);
    QFETCH(const QString, month);
    const Qt::DayOfWeek first = QLocale::system().firstDayOfWeek();
    auto* const application = qobject_cast<vexdesk::DeskApplication*>(qApp);
    application->setLanguage(static_cast<vexdesk::Language>(language));
    const auto restore =
        qScopeGuard([application] { application->setLanguage(vexdesk::Language::Russian); });
    QDateEdit edit(QDate(2026, 11, 20));
    edit.setCalendarPopup(true);
    edit.setDisplayFormat(QStringLiteral("d MMMM"));
    QCOMPARE(edit.text(), month);
    QCOMPARE(edit.calendarWidget()->locale().language(), QLocale().language());
    QCOMPARE(QLocale().toString(edit.date(), QStringLiteral("d MMMM")), month);
    // What is the user's and not the language's.
    QCOMPARE(QLocale::system().firstDayOfWeek(), first);
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestDeskApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_deskapplication.moc"
