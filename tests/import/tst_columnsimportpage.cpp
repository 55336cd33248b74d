// SPDX-License-Identifier: MIT
#include "columnsimportpage.h"

#include "columnsheader.h"
#include "columnstablewidget.h"
#include "importdetails.h"
#include "importtadatawizard.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/strictlog.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"

#include <QtCore/QDir>
#include <QtGui/QTextDocumentFragment>
#include <QtGui/QWheelEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleOptionSlider>

using testsupport::choose;
using testsupport::click;
using testsupport::ImportChoices;
using testsupport::roleBoxes;

namespace {

const char oneDate[] = "Выберите единственный столбец 'Дата окон-я'; ";
const char oneTime[] = "Выберите единственный столбец 'Вр. окон-я'; ";
const char oneOpen[] = "Выберите единственный столбец 'Цена откр.'; ";
const char oneHigh[] = "Выберите единственный столбец 'Цена макс.'; ";
const char oneLow[] = "Выберите единственный столбец 'Цена мин.'; ";
const char oneClose[] = "Выберите единственный столбец 'Цена закр.'; ";
const char oneVolume[] = "Выберите не более одного столбца 'Объем в шт.'; ";
const char oneValue[] = "Выберите не более одного столбца 'Объем в ден.'; ";
const char oneInterest[] = "Выберите не более одного столбца 'Откр. инт.'; ";

QStringList line(int fields)
{
    QStringList texts;
    for (int i = 1; i <= fields; ++i)
        texts.append(QString::number(i));
    return texts;
}

// Clicks on the arrow at the right or lower end of a scroll bar.
void scrollOn(QScrollBar* bar)
{
    QVERIFY(bar->isVisible());
    QStyleOptionSlider option;
    option.initFrom(bar);
    option.orientation = bar->orientation();
    option.minimum = bar->minimum();
    option.maximum = bar->maximum();
    option.sliderPosition = option.sliderValue = bar->value();
    option.pageStep = bar->pageStep();
    option.singleStep = bar->singleStep();
    option.subControls = QStyle::SC_All;
    option.state.setFlag(QStyle::State_Horizontal, bar->orientation() == Qt::Horizontal);
    const QRect arrow = bar->style()->subControlRect(QStyle::CC_ScrollBar, &option,
                                                     QStyle::SC_ScrollBarAddLine, bar);
    const int before = bar->value();
    hands::mouseClick(bar, Qt::LeftButton, {}, arrow.center());
    QVERIFY(bar->value() > before);
}

// One notch towards the user, over the middle of the widget, as the window system tells of it.
void turnWheel(const QWidget* widget)
{
    QWidget* const window = widget->window();
    const QPoint at = widget->mapTo(window, widget->rect().center());
    QWheelEvent event(at, window->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window->windowHandle(), &event);
}

} // namespace

class TestColumnsImportPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void looksAsItShould();
    void saysSomethingBeforeItIsEntered();
    void showsTheFields();
    void offersEveryRoleInEveryColumn();
    void aFreshPageAsksForTheMandatoryRoles();
    void warnsOfWhatIsWrong_data();
    void warnsOfWhatIsWrong();
    void theWarningGoesWhenAllIsWell();
    void tellsWhichColumnCarriesWhat_data();
    void tellsWhichColumnCarriesWhat();

    void boxesLieOverTheirColumns();
    void boxesFollowTheScrollBar();
    void boxesStayWhenTheRowsScroll();
    void boxesFollowAColumnThatIsResized();
    void boxesFollowAWindowThatIsResized();
    void rolesBeginAnewOnEveryEntry();
    void anotherSeparatorRebuildsTheTable();
    void tabReachesEveryBoxAndShowsIt();
    void aClickDoesNotScroll();
    void keysChooseARole();
    void theLastOfTwoColumnsCounts();
    void theWheelScrollsTheRows();
    void theWheelScrollsSidewaysWhereAllRowsAreShown();
    void theWheelTurnsTheBoxThatHasTheFocus();
    void showsWholeLinesInAnotherWizard();
    void showsWholeLinesWithoutAWizard();

private:
    // Shows the third page for these lines.
    void enter(const QStringList& lines, const QString& separator = QStringLiteral("запятая (,)"));
    void next() { click(m_wizard->button(QWizard::NextButton)); }
    void back() { click(m_wizard->button(QWizard::BackButton)); }
    bool canFinish() const { return m_wizard->button(QWizard::FinishButton)->isEnabled(); }

    ColumnsTableWidget* table() const
    {
        return testsupport::child<ColumnsTableWidget>(m_wizard->currentPage(), "fileData");
    }
    ColumnsHeader* header() const
    {
        return qobject_cast<ColumnsHeader*>(table()->horizontalHeader());
    }
    QLabel* warning() const
    {
        return testsupport::child<QLabel>(m_wizard->currentPage(), "warningLabel");
    }
    void chooseRoles(const QList<int>& roles) const;
    // Null when every box lies where it should, otherwise which one does not.
    QString misplaced() const;

    QDir m_user;
    QStringList m_lines; // outlives the wizard
    std::unique_ptr<ImportTADataWizard> m_wizard;
};

void TestColumnsImportPage::init()
{
    testsupport::failOnStrayWarnings();
    m_user = testsupport::newUserFolder();
}

void TestColumnsImportPage::cleanup()
{
    m_wizard.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestColumnsImportPage::enter(const QStringList& lines, const QString& separator)
{
    m_lines = lines;
    m_wizard = std::make_unique<ImportTADataWizard>(m_lines);
    m_wizard->resize(500, 360);
    m_wizard->show();
    QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
    ImportChoices choices;
    choices.separator = separator;
    fillSeriesPage(m_wizard.get(), choices);
    next();
    fillFormatPage(m_wizard.get(), choices);
    next();
    QVERIFY(header());
    // The boxes are placed for good when the page has its size.
    QTRY_VERIFY2(misplaced().isNull(), qPrintable(misplaced()));
}

void TestColumnsImportPage::chooseRoles(const QList<int>& roles) const
{
    for (int column = 0; column < roles.size(); ++column) {
        if (header()->box(column)->currentIndex() != roles[column])
            choose(header()->box(column), roles[column]);
    }
}

QString TestColumnsImportPage::misplaced() const
{
    const ColumnsHeader* const header = this->header();
    for (int section = 0; section < header->count(); ++section) {
        const QRect expected(header->sectionViewportPosition(section) + 2, 0,
                             header->sectionSize(section) - 4, header->height());
        const QRect actual = header->box(section)->geometry();
        if (actual != expected) {
            return QStringLiteral("box %1 begins at %2 instead of %3 and is %4 wide, not %5")
                .arg(section)
                .arg(actual.x())
                .arg(expected.x())
                .arg(actual.width())
                .arg(expected.width());
        }
    }
    return QString();
}

void TestColumnsImportPage::looksAsItShould()
{
    enter({"1,2"});
    const QWizardPage* const page = m_wizard->currentPage();
    QVERIFY(qobject_cast<const ColumnsImportPage*>(page));
    QCOMPARE(page->objectName(), QStringLiteral("ColumnsImportPage"));
    QCOMPARE(page->title(), QStringLiteral("Столбцы"));
    QVERIFY(table());
    QCOMPARE(table()->selectionMode(), QAbstractItemView::NoSelection);
    QVERIFY(warning()->wordWrap());
    QCOMPARE(warning()->styleSheet(), QStringLiteral("QLabel {color: red;}"));
    QVERIFY(warning()->geometry().top() > table()->geometry().bottom());
}

void TestColumnsImportPage::saysSomethingBeforeItIsEntered()
{
    const QStringList lines{"1,2"};
    const ColumnsImportPage page(lines);
    const auto* const label = testsupport::child<QLabel>(&page, "warningLabel");
    QVERIFY(Qt::mightBeRichText(label->text()));
    QCOMPARE(QTextDocumentFragment::fromHtml(label->text()).toPlainText().trimmed(),
             QStringLiteral("Что-то не так..."));
    QVERIFY(label->text().contains(QStringLiteral("#ff0000")));
    QVERIFY(!page.isComplete());
    ImportDetails details;
    page.getImportDetails(details);
    QVERIFY(details.columns.isEmpty());
}

void TestColumnsImportPage::showsTheFields()
{
    // Of the second line there is more than the first one has columns for, of the third one less.
    enter({"a,b,c", "d,,f", "g,h,i,j", "k"});
    QCOMPARE(table()->columnCount(), 3);
    QCOMPARE(table()->rowCount(), 4);
    QStringList texts;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QTableWidgetItem* const item = table()->item(row, column);
            texts.append(item ? item->text() : QStringLiteral("-"));
        }
    }
    QCOMPARE(texts, QStringList({"a", "b", "c", "d", "", "f", "g", "h", "i", "k", "-", "-"}));
    // No row is higher than its text needs.
    const int height = table()->rowHeight(0);
    table()->resizeRowsToContents();
    QCOMPARE(table()->rowHeight(0), height);
}

void TestColumnsImportPage::offersEveryRoleInEveryColumn()
{
    enter({"1,2,3"});
    QCOMPARE(header()->orientation(), Qt::Horizontal);
    const QList<QComboBox*> boxes = roleBoxes(m_wizard.get());
    QCOMPARE(boxes.size(), 3);
    for (int section = 0; section < boxes.size(); ++section) {
        const QComboBox* const box = boxes.at(section);
        QCOMPARE(header()->box(section), box);
        QVERIFY(box->isVisible());
        QCOMPARE(box->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(box->currentIndex(), 0);
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts.append(box->itemText(i));
        QCOMPARE(texts, QStringList({"Не импор-ть", "Дата окон-я", "Вр. окон-я", "Цена откр.",
                                     "Цена макс.", "Цена мин.", "Цена закр.", "Объем в шт.",
                                     "Объем в ден.", "Откр. инт."}));
    }
}

void TestColumnsImportPage::aFreshPageAsksForTheMandatoryRoles()
{
    enter({"1,2,3,4,5,6,7"});
    const QList<QComboBox*> boxes = roleBoxes(m_wizard.get());
    QCOMPARE(boxes.size(), 7);
    for (const QComboBox* box : boxes)
        QCOMPARE(box->currentText(), QStringLiteral("Не импор-ть"));
    QVERIFY(warning()->isVisible());
    QCOMPARE(warning()->text(), QString::fromUtf8(QByteArray(oneDate) + oneTime + oneOpen +
                                                  oneHigh + oneLow + oneClose));
    QVERIFY(!canFinish());
}

void TestColumnsImportPage::warnsOfWhatIsWrong_data()
{
    QTest::addColumn<QList<int>>("roles");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const QList<int>& roles, const QByteArray& text) {
        QTest::newRow(name) << roles << text;
    };
    row("open twice", {3, 3},
        QByteArray(oneDate) + oneTime + oneOpen + oneHigh + oneLow + oneClose);
    row("open twice, the rest is there", {1, 2, 3, 4, 5, 6, 3}, oneOpen);
    row("open three times", {1, 2, 3, 4, 5, 6, 3, 3}, oneOpen);
    row("date alone", {1}, QByteArray(oneTime) + oneOpen + oneHigh + oneLow + oneClose);
    row("date missing", {0, 2, 3, 4, 5, 6}, oneDate);
    row("close missing", {1, 2, 3, 4, 5}, oneClose);
    row("order of the roles, not of the columns", {6, 6, 5, 5, 4, 3, 2, 1},
        QByteArray(oneLow) + oneClose);
    row("pieces twice", {1, 2, 3, 4, 5, 6, 7, 7}, oneVolume);
    row("money twice", {1, 2, 3, 4, 5, 6, 8, 8}, oneValue);
    row("interest three times", {1, 2, 3, 4, 5, 6, 9, 9, 9}, oneInterest);
    row("all of the optional ones twice", {9, 9, 8, 8, 7, 7, 1, 2, 3, 4, 5, 6},
        QByteArray(oneVolume) + oneValue + oneInterest);
    row("mandatory ones before optional ones", {9, 9, 1, 2, 3, 4, 5, 1},
        QByteArray(oneDate) + oneClose + oneInterest);
}

void TestColumnsImportPage::warnsOfWhatIsWrong()
{
    QFETCH(const QList<int>, roles);
    QFETCH(const QByteArray, text);
    enter({line(12).join(u',')});
    chooseRoles(roles);
    QVERIFY(warning()->isVisible());
    QCOMPARE(warning()->text(), QString::fromUtf8(text));
    QVERIFY(!m_wizard->currentPage()->isComplete());
    QVERIFY(!canFinish());
}

void TestColumnsImportPage::theWarningGoesWhenAllIsWell()
{
    enter({"1,2,3,4,5,6"});
    chooseRoles({1, 2, 3, 4, 5});
    QVERIFY(warning()->isVisible());
    QVERIFY(!canFinish());
    choose(header()->box(5), QStringLiteral("Цена закр."));
    QVERIFY(!warning()->isVisible());
    QCOMPARE(warning()->text(), QString::fromUtf8(oneClose));
    QVERIFY(m_wizard->currentPage()->isComplete());
    QVERIFY(canFinish());

    choose(header()->box(0), QStringLiteral("Не импор-ть"));
    QVERIFY(warning()->isVisible());
    QCOMPARE(warning()->text(), QString::fromUtf8(oneDate));
    QVERIFY(!canFinish());
}

void TestColumnsImportPage::tellsWhichColumnCarriesWhat_data()
{
    QTest::addColumn<QList<int>>("roles");
    QTest::addColumn<QMap<qint32, qint32>>("columns");
    using Columns = QMap<qint32, qint32>;
    QTest::newRow("mandatory ones")
        << QList<int>{1, 2, 3, 4, 5, 6} << Columns{{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}};
    QTest::newRow("every one") << QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}
                               << Columns{{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4},
                                          {6, 5}, {7, 6}, {8, 7}, {9, 8}};
    QTest::newRow("backwards, with gaps")
        << QList<int>{0, 9, 0, 6, 5, 4, 3, 0, 2, 1}
        << Columns{{9, 1}, {6, 3}, {5, 4}, {4, 5}, {3, 6}, {2, 8}, {1, 9}};
}

void TestColumnsImportPage::tellsWhichColumnCarriesWhat()
{
    QFETCH(const QList<int>, roles);
    enter({line(10).join(u',')});
    chooseRoles(roles);
    QVERIFY(canFinish());
    ImportDetails details;
    qobject_cast<ColumnsImportPage*>(m_wizard->currentPage())->getImportDetails(details);
    QTEST(details.columns, "columns");
}

void TestColumnsImportPage::boxesLieOverTheirColumns()
{
    enter({line(12).join(u',')});
    for (int section = 0; section < 12; ++section) {
        const QComboBox* const box = header()->box(section);
        QCOMPARE(header()->sectionSize(section), box->sizeHint().width() + 4);
        QCOMPARE(box->geometry(), QRect(header()->sectionViewportPosition(section) + 2, 0,
                                        box->sizeHint().width(), header()->height()));
        // As the user sees them.
        QCOMPARE(box->mapTo(table(), QPoint()).x(),
                 table()->viewport()->x() + table()->columnViewportPosition(section) + 2);
    }
    QVERIFY(header()->height() > 0);
}

void TestColumnsImportPage::boxesFollowTheScrollBar()
{
    enter({line(12).join(u',')});
    const int first = header()->box(0)->x();
    scrollOn(table()->horizontalScrollBar());
    QVERIFY(header()->box(0)->x() < first);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    scrollOn(table()->horizontalScrollBar());
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    table()->horizontalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    QVERIFY(header()->rect().contains(header()->box(11)->geometry()));
    // Back by one column.
    table()->horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    table()->horizontalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    QCOMPARE(header()->box(0)->x(), first);
}

void TestColumnsImportPage::boxesStayWhenTheRowsScroll()
{
    enter({"1,2", "1,2", "1,2", "1,2", "1,2", "1,2", "1,2", "1,2", "1,2", "1,2"});
    m_wizard->resize(m_wizard->width(), m_wizard->minimumSizeHint().height());
    QTRY_VERIFY(table()->verticalScrollBar()->isVisible());
    const QRect before = header()->box(0)->geometry();
    scrollOn(table()->verticalScrollBar());
    QCOMPARE(header()->box(0)->geometry(), before);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
}

void TestColumnsImportPage::boxesFollowAColumnThatIsResized()
{
    enter({line(4).join(u',')});
    const QRect before = header()->box(1)->geometry();
    const int nextX = header()->box(2)->x();
    // Pulls at the gap between two boxes.
    QWidget* const strip = header()->viewport();
    const int y = strip->height() / 2;
    const int edge = header()->sectionViewportPosition(2) - 1;
    hands::mousePress(strip, Qt::LeftButton, {}, QPoint(edge, y));
    hands::mouseMove(strip, QPoint(edge + 20, y));
    hands::mouseMove(strip, QPoint(edge + 40, y));
    hands::mouseRelease(strip, Qt::LeftButton, {}, QPoint(edge + 40, y));
    QCOMPARE(header()->box(1)->geometry(), before.adjusted(0, 0, 40, 0));
    QCOMPARE(header()->box(2)->x(), nextX + 40);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));

    // Also when it is scrolled.
    header()->resizeSection(0, 600);
    scrollOn(table()->horizontalScrollBar());
    header()->resizeSection(1, 200);
    QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
}

void TestColumnsImportPage::boxesFollowAWindowThatIsResized()
{
    enter({line(12).join(u',')});
    table()->horizontalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
    const int before = header()->box(11)->x();
    // With more room, the last column stays at the edge and the others move in.
    m_wizard->resize(m_wizard->width() + 150, m_wizard->height());
    QTRY_VERIFY(header()->box(11)->x() > before);
    QTRY_VERIFY2(misplaced().isNull(), qPrintable(misplaced()));
}

void TestColumnsImportPage::rolesBeginAnewOnEveryEntry()
{
    enter({"1,2,3,4,5,6"});
    chooseRoles({1, 2, 3, 4, 5, 6});
    QVERIFY(canFinish());
    const QPointer<ColumnsHeader> old = header();
    back();
    next();
    QVERIFY(!old);
    const QList<QComboBox*> boxes = roleBoxes(m_wizard.get());
    QCOMPARE(boxes.size(), 6);
    for (const QComboBox* box : boxes)
        QCOMPARE(box->currentIndex(), 0);
    QVERIFY(warning()->isVisible());
    QVERIFY(!canFinish());
    QTRY_VERIFY2(misplaced().isNull(), qPrintable(misplaced()));

    // And they still count.
    chooseRoles({6, 5, 4, 3, 2, 1});
    QVERIFY(canFinish());
    QCOMPARE(m_wizard->importDetails().columns,
             (QMap<qint32, qint32>{{6, 0}, {5, 1}, {4, 2}, {3, 3}, {2, 4}, {1, 5}}));
}

void TestColumnsImportPage::anotherSeparatorRebuildsTheTable()
{
    enter({"1,2,3;4,5;6", "1,2,3;4,5;6"});
    QCOMPARE(table()->columnCount(), 4);
    chooseRoles({1, 2, 3, 4});
    back();
    choose(testsupport::child<QComboBox>(m_wizard->currentPage(), "separator"),
           QStringLiteral("точка с запятой (;)"));
    next();
    QCOMPARE(table()->columnCount(), 3);
    QCOMPARE(table()->item(1, 1)->text(), QStringLiteral("4,5"));
    QCOMPARE(roleBoxes(m_wizard.get()).size(), 3);
    for (int section = 0; section < 3; ++section)
        QCOMPARE(header()->box(section)->currentIndex(), 0);
    QTRY_VERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    QVERIFY(!canFinish());
}

void TestColumnsImportPage::tabReachesEveryBoxAndShowsIt()
{
    enter({line(12).join(u',')});
    table()->setFocus();
    for (int section = 0; section < 12; ++section) {
        hands::keyClick(m_wizard->focusWidget(), Qt::Key_Tab);
        const QComboBox* const box = header()->box(section);
        QCOMPARE(m_wizard->focusWidget(), box);
        QVERIFY2(header()->viewport()->rect().contains(box->geometry()),
                 qPrintable(QString::number(section)));
        QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    }
    for (int section = 10; section >= 0; --section) {
        hands::keyClick(m_wizard->focusWidget(), Qt::Key_Backtab);
        const QComboBox* const box = header()->box(section);
        QCOMPARE(m_wizard->focusWidget(), box);
        QVERIFY2(header()->viewport()->rect().contains(box->geometry()),
                 qPrintable(QString::number(section)));
        QVERIFY2(misplaced().isNull(), qPrintable(misplaced()));
    }
    hands::keyClick(m_wizard->focusWidget(), Qt::Key_Backtab);
    QCOMPARE(m_wizard->focusWidget(), table());
}

// What is under the mouse stays there.
void TestColumnsImportPage::aClickDoesNotScroll()
{
    enter({line(12).join(u',')});
    // The column at the edge, of which only a part is seen.
    int section = 0;
    while (header()->viewport()->rect().contains(header()->box(section)->geometry()))
        ++section;
    QComboBox* const box = header()->box(section);
    const QPoint seen(5, box->height() / 2);
    QVERIFY(header()->viewport()->rect().contains(box->pos() + seen));
    const QRect before = box->geometry();
    hands::mouseClick(box, Qt::LeftButton, {}, seen);
    QVERIFY(box->view()->isVisible());
    hands::keyClick(box->view(), Qt::Key_Escape);
    QCOMPARE(m_wizard->focusWidget(), box);
    QCOMPARE(box->geometry(), before);
}

void TestColumnsImportPage::keysChooseARole()
{
    enter({"1,2,3"});
    header()->box(1)->setFocus();
    hands::keyClick(header()->box(1), Qt::Key_End);
    QCOMPARE(header()->box(1)->currentText(), QStringLiteral("Откр. инт."));
    hands::keyClick(header()->box(1), Qt::Key_Home);
    hands::keyClick(header()->box(1), Qt::Key_Down);
    QCOMPARE(header()->box(1)->currentText(), QStringLiteral("Дата окон-я"));
    QCOMPARE(warning()->text(),
             QString::fromUtf8(QByteArray(oneTime) + oneOpen + oneHigh + oneLow + oneClose));
}

// An incomplete page never gets so far; whoever asks all the same is told of one of them.
void TestColumnsImportPage::theLastOfTwoColumnsCounts()
{
    enter({"1,2,3,4"});
    chooseRoles({3, 0, 3, 1});
    const auto* const page = qobject_cast<ColumnsImportPage*>(m_wizard->currentPage());
    QVERIFY(!page->isComplete());
    ImportDetails details;
    page->getImportDetails(details);
    QCOMPARE(details.columns, (QMap<qint32, qint32>{{1, 3}, {3, 2}}));
}

void TestColumnsImportPage::theWheelScrollsTheRows()
{
    enter(QStringList(10, QStringLiteral("1,2")));
    m_wizard->resize(m_wizard->minimumSize());
    const QScrollBar* const rows = table()->verticalScrollBar();
    QTRY_VERIFY(rows->maximum() > rows->minimum());
    turnWheel(header()->box(1));
    QVERIFY(rows->value() > rows->minimum());
    QCOMPARE(header()->box(1)->currentIndex(), 0);
    QVERIFY(!header()->box(1)->hasFocus());
}

void TestColumnsImportPage::theWheelScrollsSidewaysWhereAllRowsAreShown()
{
    enter({line(20).join(u',')});
    const QScrollBar* const columns = table()->horizontalScrollBar();
    QCOMPARE(table()->verticalScrollBar()->maximum(), table()->verticalScrollBar()->minimum());
    QVERIFY(columns->maximum() > columns->minimum());
    turnWheel(header()->box(0));
    QVERIFY(columns->value() > columns->minimum());
    for (const QComboBox* const box : header()->boxes())
        QCOMPARE(box->currentIndex(), 0);
}

void TestColumnsImportPage::theWheelTurnsTheBoxThatHasTheFocus()
{
    enter({line(20).join(u',')});
    QComboBox* const box = header()->box(1);
    box->setFocus(Qt::TabFocusReason);
    QVERIFY(box->hasFocus());
    const int before = table()->horizontalScrollBar()->value();
    turnWheel(box);
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(table()->horizontalScrollBar()->value(), before);
    // And only that one.
    turnWheel(header()->box(0));
    QCOMPARE(header()->box(0)->currentIndex(), 0);
    QCOMPARE(box->currentIndex(), 1);
    QVERIFY(box->hasFocus());
}

void TestColumnsImportPage::showsWholeLinesInAnotherWizard()
{
    const QStringList lines{"20240115,100000;1", "20240116 100000"};
    QWizard wizard;
    auto* const page = new ColumnsImportPage(lines);
    wizard.addPage(page);
    wizard.show();
    QVERIFY(QTest::qWaitForWindowActive(&wizard));
    const auto* const table = testsupport::child<QTableWidget>(page);
    QCOMPARE(table->columnCount(), 1);
    QCOMPARE(table->rowCount(), 2);
    QCOMPARE(table->item(0, 0)->text(), lines.at(0));
    QCOMPARE(table->item(1, 0)->text(), lines.at(1));
    QVERIFY(!wizard.button(QWizard::FinishButton)->isEnabled());
}

void TestColumnsImportPage::showsWholeLinesWithoutAWizard()
{
    const QStringList lines{"20240115,100000;1"};
    ColumnsImportPage page(lines);
    page.initializePage();
    QVERIFY(!page.isComplete());
    const auto* const table = testsupport::child<QTableWidget>(&page);
    QCOMPARE(table->columnCount(), 1);
    QCOMPARE(table->item(0, 0)->text(), lines.at(0));
}

QTEST_MAIN(TestColumnsImportPage)
#include "tst_columnsimportpage.moc"
