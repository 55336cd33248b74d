// SPDX-License-Identifier: MIT
#include "support/userhands.h"

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>

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
    QTest::mouseClick(button, Qt::LeftButton);
}

void choose(QComboBox* box, int index)
{
    QVERIFY(box);
    QVERIFY2(box->isVisible() && box->isEnabled(), qPrintable(box->objectName()));
    QVERIFY2(index >= 0 && index < box->count(), qPrintable(box->objectName()));
    QTest::mouseClick(box, Qt::LeftButton);
    QWidget* const list = box->view();
    QVERIFY2(list->isVisible(), qPrintable(box->objectName()));
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
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

QList<QWidget*> tabOrder(QWidget* window)
{
    QList<QWidget*> order;
    for (QWidget* widget = window->focusWidget(); widget && !order.contains(widget);
         widget = window->focusWidget()) {
        order.append(widget);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    return order;
}

} // namespace testsupport
