// SPDX-License-Identifier: MIT
#include "outcomebox.h"

#include "support/child.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTextEdit>

using testsupport::ModalSteps;

namespace {

const QString title = QStringLiteral("Ошибка");

// What the user reads in the box.
QLabel* textLabel(const OutcomeBox& box)
{
    return testsupport::child<QLabel>(&box, "qt_msgbox_label");
}

} // namespace

class TestOutcomeBox final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }

    void showsAShortMessageAsItIs_data();
    void showsAShortMessageAsItIs();
    void leavesOutTheMiddleOfALongMessage_data();
    void leavesOutTheMiddleOfALongMessage();
    void leavesOutNoMoreThanItMust_data();
    void leavesOutNoMoreThanItMust();
    void cutsNoCharacterInTwo();
    void theDetailsEndSomewhere();
    void isNeverWiderThanTheScreen_data();
    void isNeverWiderThanTheScreen();
    void isAsWideAsItsTitle();
    void isClosedByItsOnlyButton();
};

void TestOutcomeBox::showsAShortMessageAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << QStringLiteral("Импорт данных ТА успешно завершен");
    QTest::newRow("two lines") << QStringLiteral("Ошибка при импорте 5-й строки:\n"
                                                 "Некорректное число 'x'.");
    QTest::newRow("a tag") << QStringLiteral("Невозможно открыть файл /tmp/<b>bars</b>.txt");
    QTest::newRow("an entity") << QStringLiteral("Файл &lt;&amp;.txt пуст");
    QTest::newRow("a picture") << QStringLiteral("<img src=\"/etc/passwd\">\n<table><tr><td>x");
    QTest::newRow("blanks and tabs") << QStringLiteral("  a   b\t c  ");
    QTest::newRow("a path of 200 characters")
        << QStringLiteral("Невозможно открыть файл ") +
               QStringLiteral("/folder-of-20-letter").repeated(10);
    QTest::newRow("a word of 100") << QString(99, u'x') + u' ' + QString(100, u'y');
    QTest::newRow("just short enough") << QStringLiteral("слово ").repeated(100);
    QTest::newRow("twelve lines") << QStringLiteral("line\n").repeated(11) + QStringLiteral("end");
    QTest::newRow("nothing") << QString();
}

void TestOutcomeBox::showsAShortMessageAsItIs()
{
    QFETCH(const QString, text);
    OutcomeBox box(QMessageBox::Warning, title, text);
    QCOMPARE(box.text(), text);
    QCOMPARE(box.textFormat(), Qt::PlainText);
    QVERIFY(box.detailedText().isEmpty());
    QCOMPARE(box.buttons().size(), 1);
    QCOMPARE(box.standardButtons(), QMessageBox::Ok);
    QCOMPARE(box.icon(), QMessageBox::Warning);
    QCOMPARE(box.windowTitle(), title);
    QVERIFY(!box.parentWidget());
    QCOMPARE(textLabel(box)->text(), text);
    QCOMPARE(textLabel(box)->textFormat(), Qt::PlainText);
}

void TestOutcomeBox::leavesOutTheMiddleOfALongMessage_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("words") << QStringLiteral("Начало ") + QStringLiteral("слово ").repeated(1000) +
                                  QStringLiteral("конец");
    QTest::newRow("one word") << QStringLiteral("Начало '") + QString(1000, u'9') +
                                     QStringLiteral("' конец");
    QTest::newRow("a word of 101")
        << QStringLiteral("Начало ") + QString(101, u'9') + QStringLiteral(" конец");
    QTest::newRow("lines") << QStringLiteral("Начало\n") + QStringLiteral("a\n").repeated(50) +
                                  QStringLiteral("конец");
    QTest::newRow("thirteen lines") << QStringLiteral("Начало\n") +
                                           QStringLiteral("a\n").repeated(11) +
                                           QStringLiteral("конец");
    QTest::newRow("ten million") << QStringLiteral("Начало ") + QString(10'000'000, u'<') +
                                        QStringLiteral(" конец");
}

void TestOutcomeBox::leavesOutTheMiddleOfALongMessage()
{
    QFETCH(const QString, text);
    const OutcomeBox box(QMessageBox::Warning, title, text);
    QVERIFY(box.text().startsWith(u"Начало"));
    QVERIFY(box.text().endsWith(u"конец"));
    QVERIFY(box.text().contains(u'…'));
    QVERIFY(box.text().size() <= 600);
    QVERIFY(box.text().count(u'\n') <= 12);
    QVERIFY(box.detailedText().startsWith(text.left(32000)));
    QCOMPARE(box.standardButtons(), QMessageBox::Ok);
    QCOMPARE(box.buttons().size(), 2);
}

void TestOutcomeBox::leavesOutNoMoreThanItMust_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("begin"); // what is left of it, in characters
    QTest::addColumn<qsizetype>("end");
    const QString words = QStringLiteral("слово ").repeated(100);
    const QString picture = QStringLiteral("\U0001F4C8"); // two code units
    const auto row = [](const char* name, const QString& text, qsizetype begin, qsizetype end) {
        QTest::newRow(name) << text << begin << end;
    };
    row("one letter too much", words + u'!', 400, 199);
    row("twice as much", words + words, 400, 199);
    row("a picture at the cut", words.left(399) + picture + words.left(300), 399, 200);
    row("a picture behind the cut", words.left(400) + picture + words.left(300), 400, 199);
    row("a picture where it goes on", words + picture + words.left(198), 400, 200);
    row("a word of 101 letters", QString(101, u'x'), 66, 33);
    row("a word behind others", words.left(300) + QString(200, u'x'), 366, 33);
    row("thirteen lines", QStringLiteral("a\n").repeated(12) + u'a', 12, 12);
}

void TestOutcomeBox::leavesOutNoMoreThanItMust()
{
    QFETCH(const QString, text);
    QFETCH(const qsizetype, begin);
    QFETCH(const qsizetype, end);
    QCOMPARE(OutcomeBox::shown(text), QString(text.left(begin) + u'…' + text.right(end)));
}

void TestOutcomeBox::cutsNoCharacterInTwo()
{
    const QString picture = QStringLiteral("\U0001F4C8"); // two code units
    for (const qsizetype before : {0, 1}) {
        const QString text = QString(before, u'x') + picture.repeated(100'000);
        for (const QString& part : {OutcomeBox::shown(text), OutcomeBox::details(text)}) {
            QVERIFY(part.size() < text.size());
            QVERIFY(part.isValidUtf16());
        }
    }
}

void TestOutcomeBox::theDetailsEndSomewhere()
{
    constexpr qsizetype whole = 32768;
    const QString text(10'000'000, u'9');
    QCOMPARE(OutcomeBox::details(text.left(whole)), text.left(whole));
    QCOMPARE(OutcomeBox::details(text.left(whole + 1)),
             text.left(whole) +
                 QStringLiteral("\n\n(показано начало сообщения, не показано символов: 1)"));
    const QString left = QLocale().toString(text.size() - whole);
    QCOMPARE(
        OutcomeBox::details(text),
        text.left(whole) +
            QStringLiteral("\n\n(показано начало сообщения, не показано символов: %1)").arg(left));
}

void TestOutcomeBox::isNeverWiderThanTheScreen_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one word") << QString(10'000'000, u'W');
    QTest::newRow("short words") << QStringLiteral("WW ").repeated(1'000'000);
    QTest::newRow("lines") << QStringLiteral("WW\n").repeated(1'000'000);
    QTest::newRow("no-break blanks") << QStringLiteral("WW\u00a0").repeated(1'000'000);
}

void TestOutcomeBox::isNeverWiderThanTheScreen()
{
    QFETCH(const QString, text);
    OutcomeBox box(QMessageBox::Warning, title, text);
    box.open();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    const QSize screen = box.screen()->availableSize();
    QVERIFY(box.width() <= screen.width());
    QVERIFY(box.height() <= screen.height());
    // What is shown is not cut off at the side.
    QVERIFY(textLabel(box)->sizeHint().width() <= textLabel(box)->width() ||
            textLabel(box)->wordWrap());

    QAbstractButton* const more = box.buttons().constFirst() == box.button(QMessageBox::Ok)
                                      ? box.buttons().constLast()
                                      : box.buttons().constFirst();
    testsupport::click(more);
    const auto* const details = testsupport::child<QTextEdit>(&box);
    QVERIFY(details->isVisible());
    QCOMPARE(details->toPlainText().left(1000).simplified(), text.left(1000).simplified());
    QVERIFY(box.isVisible());
    QVERIFY(box.width() <= screen.width());
    QVERIFY(box.height() <= screen.height());
    testsupport::click(box.button(QMessageBox::Ok));
    QVERIFY(!box.isVisible());
}

void TestOutcomeBox::isAsWideAsItsTitle()
{
    const QString longTitle = QStringLiteral("Успешное завершение экспорта и ещё немного слов");
    OutcomeBox box(QMessageBox::Information, longTitle, QStringLiteral("Да"));
    box.open();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QFont bold = box.font();
    bold.setBold(true);
    const int titleWidth = QFontMetrics(bold).horizontalAdvance(longTitle);
    const int button = box.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &box);
    QVERIFY(box.width() >= titleWidth + 6 * button);
}

void TestOutcomeBox::isClosedByItsOnlyButton()
{
    for (const int key : {Qt::Key_Escape, Qt::Key_Return}) {
        ModalSteps steps;
        steps.on<OutcomeBox>([key](OutcomeBox* box) { hands::keyClick(box, Qt::Key(key)); });
        OutcomeBox::tell(QMessageBox::Warning, title, QString(1000, u'x'));
        QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    }
}

QTEST_MAIN(TestOutcomeBox)
#include "tst_outcomebox.moc"
