// SPDX-License-Identifier: MIT
#include "support/userhands.h"

#include "support/hands.h"

#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLineEdit>

namespace testsupport {

namespace {

// Without a window manager, a list that has closed stays the active window.
void giveBackActivation(const QWidget* widget)
{
    widget->window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(widget->window()));
}

} // namespace

void click(QAbstractButton* button)
{
    QVERIFY(button);
    QVERIFY2(button->isVisible(), qPrintable(button->text()));
    QVERIFY2(button->isEnabled(), qPrintable(button->text()));
    hands::mouseClick(button, Qt::LeftButton);
}

void choose(QComboBox* box, int index)
{
    QVERIFY(box);
    QVERIFY2(box->isVisible() && box->isEnabled(), qPrintable(box->objectName()));
    QVERIFY2(index >= 0 && index < box->count(), qPrintable(box->objectName()));
    // The header of a table scrolls to the box of a column that Tab reaches.
    if (box->visibleRegion().boundingRect() != box->rect())
        box->setFocus(Qt::TabFocusReason);
    // Near its beginning: a box whose entries have changed is as short as they are for a moment,
    // until the layout has been asked.
    hands::mouseClick(box, Qt::LeftButton, {},
                      box->isEditable() ? QPoint() : QPoint(8, box->height() / 2));
    QWidget* const list = box->view();
    QVERIFY2(list->isVisible(), qPrintable(box->objectName()));
    hands::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        hands::keyClick(list, Qt::Key_Down);
    hands::keyClick(list, Qt::Key_Return);
    QVERIFY2(!list->isVisible(), qPrintable(box->objectName()));
    QCOMPARE(box->currentIndex(), index);
    giveBackActivation(box);
}

void choose(QComboBox* box, const QString& beginning)
{
    QVERIFY(box);
    int index = box->findText(beginning, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0)
        index = box->findText(beginning, Qt::MatchStartsWith | Qt::MatchCaseSensitive);
    QVERIFY2(index >= 0, qPrintable(beginning));
    choose(box, index);
}

void type(QLineEdit* edit, const QString& text)
{
    QVERIFY(edit);
    edit->setFocus();
    edit->selectAll();
    if (text.isEmpty())
        hands::keyClick(edit, Qt::Key_Delete);
    hands::keyClicks(edit, text);
    QCOMPARE(edit->text(), text);
}

void typeDate(QDateEdit* edit, const QDate& date)
{
    QVERIFY(edit);
    QVERIFY(edit->isVisible() && edit->isEnabled());
    edit->setFocus();
    // In whatever order they are shown: a day fits into its month when it comes last.
    const auto type = [edit, &date](QDateTimeEdit::Section section, const char* format) {
        edit->setSelectedSection(section);
        hands::keyClicks(edit, date.toString(QLatin1String(format)));
    };
    type(QDateTimeEdit::YearSection, "yyyy");
    type(QDateTimeEdit::MonthSection, "MM");
    type(QDateTimeEdit::DaySection, "dd");
    QCOMPARE(edit->date(), date);
}

bool dropFiles(QWidget* window, const QStringList& paths)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    // What is dropped goes to the widget that was entered.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window, &drop);
    return enter.isAccepted() && drop.isAccepted();
}

UnhurriedTyping::UnhurriedTyping()
    : m_before(QApplication::keyboardInputInterval())
{
    QApplication::setKeyboardInputInterval(60'000);
}

UnhurriedTyping::~UnhurriedTyping()
{
    QApplication::setKeyboardInputInterval(m_before);
}

QList<QWidget*> tabOrder(QWidget* window)
{
    QList<QWidget*> order;
    for (QWidget* widget = window->focusWidget(); widget; widget = window->focusWidget()) {
        const bool stays = !order.isEmpty() && widget == order.constLast();
        if (!stays && order.contains(widget))
            break;
        if (!stays)
            order.append(widget);
        hands::keyClick(widget, Qt::Key_Tab);
    }
    return order;
}

} // namespace testsupport
