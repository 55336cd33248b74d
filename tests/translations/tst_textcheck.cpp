// SPDX-License-Identifier: MIT
// The look at texts by which the windows are tested: it finds what it is there to find.

#include "support/strictlog.h"
#include "support/textcheck.h"

#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

#include <functional>

using testsupport::cutTexts;
using testsupport::foreignTexts;
using testsupport::sharedAccessKeys;
using testsupport::Speech;

using Make = std::function<QWidget*(const QString& text)>;
Q_DECLARE_METATYPE(Make)

class TestTextCheck final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void findsATextOfTheOtherLanguage_data();
    void findsATextOfTheOtherLanguage();
    void hiddenWidgetsDoNotCount();
    void menusCount();
    void namesAndDataAreTheSameInRussian();
    void aLanguagesOwnNameMayStayInEnglish();
    void findsACutText_data();
    void findsACutText();
    void findsTheLongestEntryOfABox();
    void findsAWrappedTextWithoutRoom();
    void findsAHeadingWithoutRoom();
    void findsWhatIsClipped();
    void whatCanBeScrolledIsNotClipped();
    void findsSharedAccessKeys();

private:
    static void addKinds();
};

void TestTextCheck::init()
{
    testsupport::failOnStrayWarnings();
}

void TestTextCheck::addKinds()
{
    QTest::addColumn<Make>("make");
    QTest::newRow("label") << Make([](const QString& text) { return new QLabel(text); });
    QTest::newRow("button") << Make([](const QString& text) { return new QPushButton(text); });
    QTest::newRow("check box") << Make([](const QString& text) { return new QCheckBox(text); });
    QTest::newRow("group box") << Make([](const QString& text) { return new QGroupBox(text); });
    QTest::newRow("combo box") << Make([](const QString& text) {
        auto* const box = new QComboBox;
        box->addItem(text);
        return box;
    });
    QTest::newRow("empty field") << Make([](const QString& text) {
        auto* const line = new QLineEdit;
        line->setPlaceholderText(text);
        return line;
    });
}

void TestTextCheck::findsATextOfTheOtherLanguage_data()
{
    addKinds();
    QTest::newRow("tool tip") << Make([](const QString& text) {
        auto* const widget = new QWidget;
        widget->setToolTip(text);
        return widget;
    });
    QTest::newRow("heading") << Make([](const QString& text) {
        auto* const table = new QTableWidget(1, 1);
        table->setHorizontalHeaderLabels({text});
        return table;
    });
}

void TestTextCheck::findsATextOfTheOtherLanguage()
{
    QFETCH(const Make, make);
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    layout->addWidget(make(QStringLiteral("Close")));
    window.show();
    QCOMPARE(foreignTexts(&window, Speech::English), QStringList());
    QVERIFY(foreignTexts(&window, Speech::Russian).join(u'\n').contains(QLatin1String("Close")));

    layout->addWidget(make(QStringLiteral("Закрыть")));
    QCoreApplication::processEvents();
    const QString found = foreignTexts(&window, Speech::English).join(u'\n');
    QVERIFY2(found.contains(QStringLiteral("Закрыть")), qPrintable(found));
    QVERIFY(!found.contains(QLatin1String("Close")));
}

void TestTextCheck::hiddenWidgetsDoNotCount()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const label = new QLabel(QStringLiteral("Закрыть"));
    layout->addWidget(label);
    label->hide();
    window.show();
    QCOMPARE(foreignTexts(&window, Speech::English), QStringList());
    label->show();
    QCOMPARE(foreignTexts(&window, Speech::English).size(), 1);
}

void TestTextCheck::menusCount()
{
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(QStringLiteral("&File"));
    QAction* const action = menu->addMenu(QStringLiteral("More"))->addAction(QString());
    window.show();
    QCOMPARE(foreignTexts(&window, Speech::English), QStringList());
    action->setStatusTip(QStringLiteral("Закрыть"));
    QCOMPARE(foreignTexts(&window, Speech::English).size(), 1);
}

void TestTextCheck::namesAndDataAreTheSameInRussian()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    layout->addWidget(new QLabel(QStringLiteral("Vexdesk")));
    layout->addWidget(new QLineEdit(QStringLiteral("report")));
    auto* const table = new QTableWidget(1, 1);
    table->setItem(0, 0, new QTableWidgetItem(QStringLiteral("Close")));
    layout->addWidget(table);
    window.show();
    QCOMPARE(foreignTexts(&window, Speech::Russian), QStringList());
}

void TestTextCheck::aLanguagesOwnNameMayStayInEnglish()
{
    QMainWindow window;
    window.menuBar()->addAction(QStringLiteral("&Русский"));
    window.show();
    QCOMPARE(foreignTexts(&window, Speech::English), QStringList());
}

void TestTextCheck::findsACutText_data()
{
    addKinds();
}

void TestTextCheck::findsACutText()
{
    QFETCH(const Make, make);
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    QWidget* const widget = make(QStringLiteral("A text that takes its room"));
    layout->addWidget(widget);
    window.resize(400, 100);
    window.show();
    QCOMPARE(cutTexts(&window), QStringList());
    widget->setFixedWidth(60);
    QCoreApplication::processEvents();
    QCOMPARE(cutTexts(&window).size(), 1);
}

void TestTextCheck::findsTheLongestEntryOfABox()
{
    QWidget window;
    auto* const layout = new QVBoxLayout(&window);
    auto* const box = new QComboBox;
    box->addItem(QStringLiteral("A"));
    layout->addWidget(box);
    window.show();
    QCOMPARE(cutTexts(&window), QStringList());
    box->setFixedWidth(box->width());
    box->addItem(QString(500, u'B'));
    QCoreApplication::processEvents();
    QCOMPARE(cutTexts(&window).size(), 1);
}

void TestTextCheck::findsAWrappedTextWithoutRoom()
{
    QWidget window;
    auto* const label =
        new QLabel(QStringLiteral("Many words that stand on several lines"), &window);
    label->setWordWrap(true);
    label->resize(100, 200);
    window.resize(200, 200);
    window.show();
    QCOMPARE(cutTexts(&window), QStringList());
    label->resize(100, label->fontMetrics().height());
    QCOMPARE(cutTexts(&window).size(), 1);
}

void TestTextCheck::findsAHeadingWithoutRoom()
{
    QTableWidget table(1, 1);
    table.setHorizontalHeaderLabels({QStringLiteral("Open interest")});
    table.resizeColumnsToContents();
    table.show();
    QCOMPARE(cutTexts(&table), QStringList());
    table.setColumnWidth(0, table.columnWidth(0) / 2);
    QCOMPARE(cutTexts(&table).size(), 1);
}

void TestTextCheck::findsWhatIsClipped()
{
    QWidget window;
    auto* const button = new QPushButton(QStringLiteral("Close"), &window);
    button->resize(button->sizeHint());
    window.resize(300, 100);
    window.show();
    QCOMPARE(cutTexts(&window), QStringList());
    button->move(290, 0);
    QCOMPARE(cutTexts(&window).size(), 1);
}

void TestTextCheck::whatCanBeScrolledIsNotClipped()
{
    QScrollArea area;
    auto* const button = new QPushButton(QStringLiteral("Close"));
    button->setMinimumSize(500, 500);
    area.setWidget(button);
    area.resize(100, 100);
    area.show();
    QCOMPARE(cutTexts(&area), QStringList());
}

void TestTextCheck::findsSharedAccessKeys()
{
    QMainWindow window;
    QMenu* const menu = window.menuBar()->addMenu(QStringLiteral("&File"));
    menu->addAction(QStringLiteral("&Open"));
    menu->addAction(QStringLiteral("&Find && forget"));
    QCOMPARE(sharedAccessKeys(&window), QStringList());
    menu->addAction(QStringLiteral("F&orget"));
    QCOMPARE(sharedAccessKeys(&window).size(), 1);
}

QTEST_MAIN(TestTextCheck)
#include "tst_textcheck.moc"
