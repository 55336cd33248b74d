// SPDX-License-Identifier: MIT
#include "editortadatadialog.h"

#include "support/child.h"
#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/markingtranslator.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/boardselectorbox.h>
#include <vexdesk/headerproxystyle.h>
#include <vexdesk/history/restorepoint.h>
#include <vexdesk/history/serieslock.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/itemdelegate.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockselectorbox.h>
#include <vexdesk/terminal/core.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QScopeGuard>
#include <QtGui/QCloseEvent>
#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::choose;
using testsupport::click;
using testsupport::dayFile;
using testsupport::editedBarLine;
using testsupport::editedBarLines;

using Tree = QMap<QString, QByteArray>;

namespace {

const QDate day(2023, 1, 5);
const QString red = QStringLiteral("QLabel {color: red;}");
const QString sizeKey = QStringLiteral("dialog_size");
const QString series = QStringLiteral("NORD/MAIN/GRAN");

AppSettings settings()
{
    return AppSettings(QStringLiteral("TADataManager/Editor"));
}

} // namespace

class TestEditorTADataDialog final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void looksAsItShould();
    void namesItsWidgets_data();
    void namesItsWidgets();
    void placesItsWidgets();
    void translatesItsTexts();
    void setsUpItsTable();
    void setsUpItsButtons();
    void setsUpItsCalendars();
    void offersTwoTimeframes();
    void beginsWithYesterday();
    void declaresItsSlotsInOrder();
    void answersToItsInterface();
    void tabFollowsTheEye();
    void everyLabelHasItsBuddy();
    void placesTheRowsOfItsForm();
    void followsTheLanguage_data();
    void followsTheLanguage();
    void letsItselfBeCalled();
    void beginsWithTheFirstVenue();

    void isRedWithoutAStore();
    void choosesTheOnlySeries();
    void waitsForTheSeries();
    void offersWhatIsStored();
    void reversedRangeIsRed();
    void makesNoDirectory();
    void isReadyWhereNothingIsToBeDone();

    void showsTheRange();
    void showsOneMoment();
    void showsTheChosenTimeframe();
    void showsTheChosenSeries();
    void makesRoomForTheTexts();
    void makesRoomForEveryRow_data();
    void makesRoomForEveryRow();
    void makesRoomForEveryTime_data();
    void makesRoomForEveryTime();
    void makesNoMoreRoomThanThereCanBe();
    void keepsTheTableWithoutTheDirectory();

    void findsARow_data();
    void findsARow();
    void findsNothingInAnEmptyTable();
    void findingAgainAddsToTheSelection();
    void findingScrollsThere();
    void findingScrollsNoFurtherThanItMust();
    void theKeyboardGoesOnFromTheFoundRow_data();
    void theKeyboardGoesOnFromTheFoundRow();
    void returnElsewhereDoesNothing();

    void deletesTheSelectedRows_data();
    void deletesTheSelectedRows();
    void deletesWithoutAQuestion();
    void deletesRowsThatLieApart();
    void deletesEverything();
    void deletesOneRowAfterTheOther();
    void deleteButtonFollowsTheSelection();
    void deleteButtonIsOffAfterShowing();
    void deleteKeyDoesNothingWithoutASelection();
    void deleteKeyInAFieldDeletesText();

    void writesWhenItIsClosed_data();
    void writesWhenItIsClosed();
    void writesNothingWithoutADeletion_data();
    void writesNothingWithoutADeletion();
    void writesBeforeItShowsAnotherRange();
    void writesOnlyOnce();
    void isEmptyWhenTheDirectoryHasGone();
    void tellsTheTerminalWhatItCouldNotWrite_data();
    void tellsTheTerminalWhatItCouldNotWrite();
    void whatItDeletesCanBePutBack();
    void aSeriesThatAnotherChangesIsLeftAlone();
    void tellsTheTerminalWhatItCouldNotRead();
    void doesNotNeedTheTerminal();
    void storesOnlyWhatTheRangeShowed();
    void removesTheFileOfADayThatIsEmpty();

    void keepsItsSize_data();
    void keepsItsSize();
    void survivesASizeThatIsNone();

private:
    void store(const QString& name, const QByteArray& content,
               const QString& ofSeries = series) const
    {
        testsupport::writeFile(seriesDir(ofSeries).filePath(name), content);
    }
    QDir seriesDir(const QString& ofSeries = series) const
    {
        return QDir(m_user.absoluteFilePath(QStringLiteral("tadata/") + ofSeries));
    }
    Tree stored() const { return testsupport::readTree(seriesDir()); }

    void open();
    // Shows so many bars of the day, one a minute from ten o'clock on.
    void openWith(int bars);
    // The same of three bars, the second of which is deleted from the table. Gives what is stored.
    Tree openAndDeleteARow();
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_dialog.get(), name);
    }
    QPushButton* button(const char* name) const { return child<QPushButton>(name); }
    QTreeView* table() const { return child<QTreeView>("dataTable"); }
    QString styleOf(const char* label) const { return child<QLabel>(label)->styleSheet(); }

    // Types a moment into a field, to the second.
    void type(const char* field, const QDateTime& moment) const;
    void chooseRange(const QDateTime& from, const QDateTime& to) const;
    void showRange(const QTime& from, const QTime& to) const;
    void showDay() const { showRange(QTime(0, 0), QTime(23, 59, 59)); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    QStringList openPrices() const;
    QList<int> selectedRows() const;
    void closeWindow() const;

    QDir m_user;
    std::unique_ptr<EditorTADataDialog> m_dialog;
};

void TestEditorTADataDialog::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_user = testsupport::newUserFolder();
}

void TestEditorTADataDialog::cleanup()
{
    m_dialog.reset();
    QVERIFY(!m_user.exists() || m_user.removeRecursively());
}

void TestEditorTADataDialog::open()
{
    m_dialog.reset();
    m_dialog = std::make_unique<EditorTADataDialog>(nullptr);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void TestEditorTADataDialog::openWith(int bars)
{
    store(dayFile(day), barLines(QTime(10, 0), bars));
    open();
    showDay();
}

Tree TestEditorTADataDialog::openAndDeleteARow()
{
    openWith(3);
    clickRow(1);
    hands::keyClick(table(), Qt::Key_Delete);
    return stored();
}

void TestEditorTADataDialog::type(const char* field, const QDateTime& moment) const
{
    auto* const edit = child<QDateTimeEdit>(field);
    QVERIFY(edit->isEnabled());
    edit->setFocus();
    // As Tab and a double click do: what is typed then takes the place of the selected part, and
    // the next part is selected when it is complete.
    edit->setSelectedSection(QDateTimeEdit::DaySection);
    hands::keyClicks(edit, moment.toString(QStringLiteral("ddMMyyyyhhmmss")));
    QCOMPARE(edit->dateTime(), moment);
}

void TestEditorTADataDialog::chooseRange(const QDateTime& from, const QDateTime& to) const
{
    type("fromDateTime", from);
    type("toDateTime", to);
}

void TestEditorTADataDialog::showRange(const QTime& from, const QTime& to) const
{
    chooseRange(QDateTime(day, from), QDateTime(day, to));
    click(button("loadDataButton"));
}

void TestEditorTADataDialog::clickRow(int row, Qt::KeyboardModifiers modifiers) const
{
    const QModelIndex index = table()->model()->index(row, 0);
    QVERIFY(index.isValid());
    table()->scrollTo(index);
    hands::mouseClick(table()->viewport(), Qt::LeftButton, modifiers,
                      table()->visualRect(index).center());
}

QStringList TestEditorTADataDialog::openPrices() const
{
    QStringList prices;
    for (int row = 0; row < table()->model()->rowCount(); ++row)
        prices.append(table()->model()->index(row, 1).data().toString());
    return prices;
}

QList<int> TestEditorTADataDialog::selectedRows() const
{
    QList<int> rows;
    const QModelIndexList selected = table()->selectionModel()->selectedRows();
    for (const QModelIndex& index : selected)
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

// As the window system does when the user closes the window.
void TestEditorTADataDialog::closeWindow() const
{
    QCloseEvent event;
    QCoreApplication::sendEvent(m_dialog->windowHandle(), &event);
    QVERIFY(event.isAccepted());
}

void TestEditorTADataDialog::looksAsItShould()
{
    open();
    QCOMPARE(m_dialog->objectName(), QStringLiteral("EditorTADataDialog"));
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Редактирование данных ТА"));
    QCOMPARE(m_dialog->size(), QSize(674, 518));
    QVERIFY(!m_dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!m_dialog->parentWidget());
    QCOMPARE(table()->model()->rowCount(), 0);
    QVERIFY(!button("delButton")->isEnabled());
    QVERIFY(!button("loadDataButton")->isEnabled());
    QVERIFY(button("findButton")->isEnabled());
    QVERIFY(button("closeButton")->isEnabled());
}

void TestEditorTADataDialog::namesItsWidgets_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* type, const char* text) {
        QTest::newRow(name) << QByteArray(name) << QByteArray(type) << QString::fromUtf8(text);
    };
    row("groupBox", "QGroupBox", "Серия");
    row("groupBox_2", "QGroupBox", "Исторические данные");
    row("stockLabel", "QLabel", "Площадка:");
    row("stock", "StockSelectorBox", "");
    row("boardLabel", "QLabel", "Режим торгов:");
    row("board", "BoardSelectorBox", "");
    row("secLabel", "QLabel", "Инструмент:");
    row("security", "SecuritySelectorBox", "");
    row("label", "QLabel", "Таймфрейм:");
    row("timeFrame", "QComboBox", "");
    row("timeRangeLabel", "QLabel", "Интервал:");
    row("fromLabel", "QLabel", "с");
    row("fromDateTime", "QDateTimeEdit", "");
    row("toLabel", "QLabel", "по");
    row("toDateTime", "QDateTimeEdit", "");
    row("line", "QFrame", "");
    row("loadDataButton", "QPushButton", "Показать");
    row("dataTable", "QTreeView", "");
    row("delButton", "QPushButton", "Удалить");
    row("findButton", "QPushButton", "Найти");
    row("findDateTime", "QDateTimeEdit", "");
    row("closeButton", "QPushButton", "Закрыть");
}

void TestEditorTADataDialog::namesItsWidgets()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QByteArray, type);
    open();
    auto* const widget = child<QWidget>(name.constData());
    QVERIFY(widget);
    QVERIFY(widget->isVisible());
    QCOMPARE(QByteArray(widget->metaObject()->className()), type);
    QString text;
    if (const auto* const label = qobject_cast<QLabel*>(widget))
        text = label->text();
    else if (const auto* const push = qobject_cast<QPushButton*>(widget))
        text = push->text();
    else if (const auto* const group = qobject_cast<QGroupBox*>(widget))
        text = group->title();
    QTEST(text, "text");
}

void TestEditorTADataDialog::placesItsWidgets()
{
    open();
    const auto place = [this](const char* layout, QLayoutItem* item) {
        const auto* const grid = child<QGridLayout>(layout);
        int row = -1;
        int column = -1;
        int rowSpan = 0;
        int columnSpan = 0;
        for (int i = 0; i < grid->count(); ++i) {
            if (grid->itemAt(i)->widget() == item->widget() &&
                grid->itemAt(i)->layout() == item->layout())
                grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        }
        return QList<int>{row, column, rowSpan, columnSpan};
    };
    const auto placeOf = [&](const char* layout, const char* widget) {
        QWidgetItem item(child<QWidget>(widget));
        return place(layout, &item);
    };
    QCOMPARE(m_dialog->layout()->objectName(), QStringLiteral("gridLayout_3"));
    QCOMPARE(placeOf("gridLayout_3", "groupBox"), QList<int>({0, 0, 1, 2}));
    QCOMPARE(placeOf("gridLayout_3", "groupBox_2"), QList<int>({1, 0, 1, 2}));
    QCOMPARE(placeOf("gridLayout_3", "closeButton"), QList<int>({2, 1, 1, 1}));
    QCOMPARE(placeOf("gridLayout_2", "line"), QList<int>({0, 1, 1, 1}));
    QCOMPARE(placeOf("gridLayout_2", "loadDataButton"), QList<int>({0, 2, 1, 1}));
    QCOMPARE(placeOf("gridLayout", "dataTable"), QList<int>({0, 0, 2, 3}));
    QCOMPARE(placeOf("gridLayout", "delButton"), QList<int>({0, 3, 1, 1}));
    QCOMPARE(placeOf("gridLayout", "findButton"), QList<int>({2, 1, 1, 1}));
    QCOMPARE(placeOf("gridLayout", "findDateTime"), QList<int>({2, 0, 1, 1}));
    QCOMPARE(child<QFrame>("line")->frameShape(), QFrame::VLine);
    QCOMPARE(child<QFrame>("line")->frameShadow(), QFrame::Sunken);
}

void TestEditorTADataDialog::translatesItsTexts()
{
    const testsupport::MarkingTranslator translator;
    open();
    const QString mark = QStringLiteral("EditorTADataDialog|");
    QVERIFY(m_dialog->windowTitle().startsWith(mark));
    const auto buttons = m_dialog->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 4);
    for (const QPushButton* each : buttons)
        QVERIFY2(each->text().startsWith(mark), qPrintable(each->text()));
    const auto* const timeFrame = child<QComboBox>("timeFrame");
    for (int i = 0; i < timeFrame->count(); ++i)
        QVERIFY2(timeFrame->itemText(i).startsWith(mark), qPrintable(timeFrame->itemText(i)));
}

void TestEditorTADataDialog::setsUpItsTable()
{
    open();
    QVERIFY(!table()->alternatingRowColors());
    QCOMPARE(table()->selectionMode(), QAbstractItemView::ExtendedSelection);
    QCOMPARE(table()->selectionBehavior(), QAbstractItemView::SelectRows);
    QVERIFY(!table()->rootIsDecorated());
    QVERIFY(!table()->itemsExpandable());
    QVERIFY(!table()->expandsOnDoubleClick());
    // Else the height of each of a million rows is asked for.
    QVERIFY(table()->uniformRowHeights());
    QCOMPARE(table()->model()->columnCount(), 8);
    QCOMPARE(static_cast<QObject*>(table()->model())->parent(), m_dialog.get());
    QVERIFY(qobject_cast<ItemDelegate*>(table()->itemDelegate()));
    QCOMPARE(table()->header()->style(), HeaderProxyStyle::instance());
}

void TestEditorTADataDialog::setsUpItsButtons()
{
    open();
    for (const char* name : {"loadDataButton", "delButton", "findButton", "closeButton"}) {
        QVERIFY2(!button(name)->autoDefault(), name);
        QVERIFY2(!button(name)->isDefault(), name);
    }
}

void TestEditorTADataDialog::setsUpItsCalendars()
{
    open();
    for (const char* name : {"fromDateTime", "toDateTime", "findDateTime"}) {
        const auto* const edit = child<QDateTimeEdit>(name);
        QVERIFY(edit->calendarPopup());
        QCOMPARE(edit->calendarWidget()->firstDayOfWeek(), QLocale::system().firstDayOfWeek());
        QVERIFY(edit->calendarWidget()->isGridVisible());
        // A bar has a second of its own.
        QVERIFY(edit->displayedSections() & QDateTimeEdit::SecondSection);
        QVERIFY(edit->displayedSections() & QDateTimeEdit::YearSection);
    }
}

void TestEditorTADataDialog::offersTwoTimeframes()
{
    open();
    const auto* const box = child<QComboBox>("timeFrame");
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemText(0), QStringLiteral("1 минута"));
    QCOMPARE(box->itemData(0), QVariant(60));
    QCOMPARE(box->itemText(1), QStringLiteral("1 секунда"));
    QCOMPARE(box->itemData(1), QVariant(1));
    QVERIFY(box->itemIcon(0).isNull() && box->itemIcon(1).isNull());
    QCOMPARE(box->currentIndex(), 0);
}

void TestEditorTADataDialog::beginsWithYesterday()
{
    const QDate before = QDate::currentDate();
    open();
    const QDate today =
        child<QDateTimeEdit>("fromDateTime")->date().addDays(1); // midnight may have passed
    QVERIFY(today == before || today == QDate::currentDate());
    const QDateTime from = today.addDays(-1).startOfDay();
    QCOMPARE(child<QDateTimeEdit>("fromDateTime")->dateTime(), from);
    QCOMPARE(child<QDateTimeEdit>("toDateTime")->dateTime(), from.addDays(1));
    QCOMPARE(child<QDateTimeEdit>("findDateTime")->dateTime(), from);
}

void TestEditorTADataDialog::declaresItsSlotsInOrder()
{
    const QMetaObject& meta = EditorTADataDialog::staticMetaObject;
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        methods.append(meta.method(i).methodSignature());
    }
    QCOMPARE(methods, QByteArrayList({"validateForm()", "on_findButton_clicked()",
                                      "on_delButton_clicked()", "on_loadDataButton_clicked()",
                                      "onSelectionChanged()", "delDataFromFiles()"}));
}

void TestEditorTADataDialog::answersToItsInterface()
{
    store(dayFile(day), barLines(QTime(10, 0), 1));
    open();
    QVERIFY(m_dialog->qt_metacast("com.kavo.quelmor.terminal.IValidateForm/1.0"));
    auto* const form = qobject_cast<IValidateForm*>(static_cast<QObject*>(m_dialog.get()));
    QVERIFY(form);
    QVERIFY(form->validate());
    type("fromDateTime", QDateTime(day, QTime(10, 0)));
    type("toDateTime", QDateTime(day, QTime(9, 59, 59)));
    QVERIFY(!form->validate());
}

void TestEditorTADataDialog::tabFollowsTheEye()
{
    openWith(2);
    clickRow(0);
    child<QComboBox>("stock")->setFocus();
    QStringList names;
    // In a field Tab goes from part to part first.
    constexpr int enough = 100;
    for (int i = 0; i < enough; ++i) {
        const QString name = m_dialog->focusWidget()->objectName();
        if (names.isEmpty() || names.last() != name)
            names.append(name);
        hands::keyClick(m_dialog->focusWidget(), Qt::Key_Tab);
        if (m_dialog->focusWidget()->objectName() == names.first())
            break;
    }
    QCOMPARE(names, QStringList({"stock", "board", "security", "timeFrame", "fromDateTime",
                                 "toDateTime", "loadDataButton", "dataTable", "delButton",
                                 "findDateTime", "findButton", "closeButton"}));
}

void TestEditorTADataDialog::everyLabelHasItsBuddy()
{
    open();
    for (const auto& [label, buddy] : {std::pair("stockLabel", "stock"),
                                       {"boardLabel", "board"},
                                       {"secLabel", "security"},
                                       {"label", "timeFrame"},
                                       {"timeRangeLabel", "fromDateTime"},
                                       {"fromLabel", "fromDateTime"},
                                       {"toLabel", "toDateTime"}}) {
        QVERIFY2(child<QLabel>(label)->buddy(), label);
        QCOMPARE(child<QLabel>(label)->buddy()->objectName(), QLatin1String(buddy));
        QVERIFY2(child<QLabel>(label)->buddy()->focusPolicy() & Qt::TabFocus, label);
    }
}

void TestEditorTADataDialog::placesTheRowsOfItsForm()
{
    open();
    const auto* const form = child<QFormLayout>("formLayout");
    QCOMPARE(form->rowCount(), 5);
    const auto nameAt = [form](int row, QFormLayout::ItemRole role) {
        QLayoutItem* const item = form->itemAt(row, role);
        return item->widget() ? item->widget()->objectName() : item->layout()->objectName();
    };
    const QStringList labels{"stockLabel", "boardLabel", "secLabel", "label", "timeRangeLabel"};
    const QStringList fields{"stock", "board", "security", "timeFrame", "horizontalLayout"};
    for (int row = 0; row < form->rowCount(); ++row) {
        QCOMPARE(nameAt(row, QFormLayout::LabelRole), labels.at(row));
        QCOMPARE(nameAt(row, QFormLayout::FieldRole), fields.at(row));
    }
    QStringList range;
    const auto* const row = child<QHBoxLayout>("horizontalLayout");
    for (int i = 0; i < row->count(); ++i)
        range.append(row->itemAt(i)->widget() ? row->itemAt(i)->widget()->objectName() : QString());
    QCOMPARE(range, QStringList({"fromLabel", "fromDateTime", "toLabel", "toDateTime", QString()}));
}

void TestEditorTADataDialog::followsTheLanguage_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::newRow("Russian") << QLocale(QStringLiteral("ru_RU"))
                             << QStringLiteral("05.03.2023 14:07:09");
    QTest::newRow("English") << QLocale(QStringLiteral("en_US"))
                             << QStringLiteral("03/05/2023 02:07:09 PM");
    QTest::newRow("German") << QLocale(QStringLiteral("de_DE"))
                            << QStringLiteral("05.03.2023 14:07:09");
    QTest::newRow("none") << QLocale::c() << QStringLiteral("05.03.2023 14:07:09");
}

void TestEditorTADataDialog::followsTheLanguage()
{
    QFETCH(const QLocale, locale);
    const auto restore = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
    QLocale::setDefault(locale);
    open();
    for (const char* name : {"fromDateTime", "toDateTime", "findDateTime"}) {
        auto* const edit = child<QDateTimeEdit>(name);
        QCOMPARE(edit->locale(), locale);
        QCOMPARE(edit->calendarWidget()->locale(), locale);
        QCOMPARE(edit->calendarWidget()->firstDayOfWeek(), QLocale::system().firstDayOfWeek());
        edit->setDateTime(QDateTime(QDate(2023, 3, 5), QTime(14, 7, 9)));
        // Newer data of the languages have a narrow blank before the half of the day.
        QTEST(edit->text().replace(QChar(0x202f), u' '), "text");
    }
}

// A program that is compiled with the header calls what it declares.
void TestEditorTADataDialog::letsItselfBeCalled()
{
    store(dayFile(day), barLines(QTime(10, 0), 3));
    EditorTADataDialog dialog;
    QVERIFY(!dialog.parentWidget());
    const auto setUp = &EditorTADataDialog::setupUI;
    QVERIFY(setUp);
    const auto edit = [&dialog](const char* name) {
        return testsupport::child<QDateTimeEdit>(&dialog, name);
    };
    edit("fromDateTime")->setDateTime(QDateTime(day, QTime(0, 0)));
    edit("toDateTime")->setDateTime(QDateTime(day, QTime(23, 0)));
    edit("findDateTime")->setDateTime(QDateTime(day, QTime(10, 1)));
    QVERIFY(dialog.validate());
    dialog.validateForm();
    dialog.on_loadDataButton_clicked();
    dialog.on_findButton_clicked();
    dialog.onSelectionChanged();
    dialog.on_delButton_clicked();
    dialog.delDataFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day),
                              editedBarLine(QTime(10, 0), 1) + editedBarLine(QTime(10, 2), 3)}}));
}

// Of those that the terminal knows, where bars of it are stored; any other is the user's to choose.
void TestEditorTADataDialog::beginsWithTheFirstVenue()
{
    StockSelectorBox all;
    all.setCurrentIndex(0);
    const QString first = all.getStockCode();
    for (const QString& stock : {QStringLiteral("AA"), first, QStringLiteral("ZZ")})
        store(dayFile(day), barLines(QTime(10, 0), 1), stock + QStringLiteral("/A/B"));
    open();
    QCOMPARE(child<StockSelectorBox>("stock")->count(), 3);
    QCOMPARE(child<StockSelectorBox>("stock")->getStockCode(), first);
}

void TestEditorTADataDialog::isRedWithoutAStore()
{
    open();
    QCOMPARE(styleOf("stockLabel"), red);
    QCOMPARE(styleOf("boardLabel"), red);
    QCOMPARE(styleOf("secLabel"), red);
    QCOMPARE(styleOf("fromLabel"), QString());
    QVERIFY(!button("loadDataButton")->isEnabled());
    QCOMPARE(child<QComboBox>("stock")->count(), 0);
}

void TestEditorTADataDialog::choosesTheOnlySeries()
{
    store(dayFile(day), barLines(QTime(10, 0), 1));
    open();
    QCOMPARE(child<StockSelectorBox>("stock")->getStockCode(), QStringLiteral("NORD"));
    QCOMPARE(child<BoardSelectorBox>("board")->getBoardCode(), QStringLiteral("MAIN"));
    QCOMPARE(child<SecuritySelectorBox>("security")->getSecurityCode(), QStringLiteral("GRAN"));
    for (const char* label : {"stockLabel", "boardLabel", "secLabel", "fromLabel"})
        QCOMPARE(styleOf(label), QString());
    QVERIFY(button("loadDataButton")->isEnabled());
}

void TestEditorTADataDialog::waitsForTheSeries()
{
    for (const char* name : {"ORIENT/FX/USDJPY", "ORIENT/FX/EURUSD", "ORIENT/OTHER/X", "ZZ/A/B"})
        store(dayFile(day), barLines(QTime(10, 0), 1), QLatin1String(name));
    open();
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT"));
    QCOMPARE(styleOf("stockLabel"), QString());
    QCOMPARE(styleOf("boardLabel"), red);
    QCOMPARE(styleOf("secLabel"), red);
    QVERIFY(!button("loadDataButton")->isEnabled());
    choose(child<QComboBox>("board"), QStringLiteral("FX"));
    QCOMPARE(styleOf("boardLabel"), QString());
    QCOMPARE(styleOf("secLabel"), red);
    QVERIFY(!button("loadDataButton")->isEnabled());
    choose(child<QComboBox>("security"), QStringLiteral("USDJPY"));
    QCOMPARE(styleOf("secLabel"), QString());
    QVERIFY(button("loadDataButton")->isEnabled());
    choose(child<QComboBox>("board"), QStringLiteral("OTHER"));
    QVERIFY(button("loadDataButton")->isEnabled());
    choose(child<QComboBox>("board"), QStringLiteral("FX"));
    QCOMPARE(styleOf("secLabel"), red);
    QVERIFY(!button("loadDataButton")->isEnabled());
}

void TestEditorTADataDialog::offersWhatIsStored()
{
    store(dayFile(day), barLines(QTime(10, 0), 1));
    store(dayFile(day), barLines(QTime(10, 0), 1), QStringLiteral("NORD/MAIN/Ёлка 1"));
    QVERIFY(QDir().mkpath(seriesDir(QStringLiteral("NORD/MAIN/EMPTY")).path()));
    store(QStringLiteral("file"), "", QStringLiteral("NORD/MAIN"));
    open();
    const auto* const box = child<QComboBox>("security");
    QStringList offered;
    for (int i = 0; i < box->count(); ++i)
        offered.append(box->itemText(i));
    QCOMPARE(offered.size(), 3);
    QVERIFY(offered.at(0).startsWith(QStringLiteral("EMPTY")));
    QVERIFY(offered.at(1).startsWith(QStringLiteral("GRAN")));
    QVERIFY(offered.at(2).startsWith(QStringLiteral("Ёлка 1")));
}

void TestEditorTADataDialog::reversedRangeIsRed()
{
    store(dayFile(day), barLines(QTime(10, 0), 1));
    open();
    const QDateTime at(day, QTime(10, 0));
    chooseRange(at, at);
    QCOMPARE(styleOf("fromLabel"), QString());
    QVERIFY(button("loadDataButton")->isEnabled());
    type("toDateTime", at.addSecs(-1));
    QCOMPARE(styleOf("fromLabel"), red);
    QCOMPARE(styleOf("toLabel"), QString());
    QVERIFY(!button("loadDataButton")->isEnabled());
    type("fromDateTime", at.addSecs(-1));
    QCOMPARE(styleOf("fromLabel"), QString());
    QVERIFY(button("loadDataButton")->isEnabled());
}

void TestEditorTADataDialog::makesNoDirectory()
{
    store(dayFile(day), barLines(QTime(10, 0), 1));
    open();
    QVERIFY(seriesDir().removeRecursively());
    click(button("loadDataButton"));
    QVERIFY(!seriesDir().exists());
    QCOMPARE(table()->model()->rowCount(), 0);
}

// Every command by key or click, with nothing loaded.
void TestEditorTADataDialog::isReadyWhereNothingIsToBeDone()
{
    open();
    click(button("findButton"));
    hands::keyClick(table(), Qt::Key_Delete);
    hands::keyClick(table(), Qt::Key_A, Qt::ControlModifier);
    hands::keyClick(child<QWidget>("findDateTime"), Qt::Key_Return);
    QVERIFY(m_dialog->isVisible());
    QVERIFY(!button("delButton")->isEnabled());
    click(button("closeButton"));
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(testsupport::readTree(QDir(m_user.filePath(QStringLiteral("tadata")))).isEmpty());
}

void TestEditorTADataDialog::showsTheRange()
{
    store(dayFile(day), barLines(QTime(10, 0), 5));
    store(dayFile(day.addDays(1)), barLines(QTime(10, 0), 5, 11));
    open();
    showRange(QTime(10, 1), QTime(10, 2, 59));
    QCOMPARE(openPrices(), QStringList({"2.10", "3.10"}));
    chooseRange(QDateTime(day, QTime(10, 4)), QDateTime(day.addDays(1), QTime(10, 0)));
    QCOMPARE(openPrices(), QStringList({"2.10", "3.10"}));
    click(button("loadDataButton"));
    QCOMPARE(openPrices(), QStringList({"5.10", "11.10"}));
}

void TestEditorTADataDialog::showsOneMoment()
{
    store(dayFile(day), barLines(QTime(10, 0), 5));
    open();
    showRange(QTime(10, 3), QTime(10, 3));
    QCOMPARE(openPrices(), QStringList({"4.10"}));
}

void TestEditorTADataDialog::showsTheChosenTimeframe()
{
    store(dayFile(day, 60), barLines(QTime(10, 0), 1, 60));
    store(dayFile(day, 1), barLine(QTime(10, 0, 1), 1) + barLine(QTime(10, 0, 2), 2));
    open();
    showDay();
    QCOMPARE(openPrices(), QStringList({"60.10"}));
    choose(child<QComboBox>("timeFrame"), QStringLiteral("1 секунда"));
    QCOMPARE(openPrices(), QStringList({"60.10"}));
    click(button("loadDataButton"));
    QCOMPARE(openPrices(), QStringList({"1.10", "2.10"}));
}

void TestEditorTADataDialog::showsTheChosenSeries()
{
    store(dayFile(day), barLines(QTime(10, 0), 1, 1));
    store(dayFile(day), barLines(QTime(10, 0), 1, 2), QStringLiteral("NORD/MAIN/%1 Ёлка"));
    store(dayFile(day), barLines(QTime(10, 0), 1, 3), QStringLiteral("NORD/MAIN/:x"));
    open();
    chooseRange(QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 0)));
    for (const auto& [name, price] :
         {std::pair("GRAN", "1.10"), {"%1 Ёлка", "2.10"}, {":x", "3.10"}}) {
        choose(child<QComboBox>("security"), QString::fromUtf8(name));
        click(button("loadDataButton"));
        QCOMPARE(openPrices(), QStringList({price}));
    }
}

void TestEditorTADataDialog::makesRoomForTheTexts()
{
    const QByteArray wide(60, '7');
    store(dayFile(day), "100000;" + wide + ";1;1;1;1;1;1\n");
    open();
    showDay();
    const QFontMetrics metrics(table()->font());
    QVERIFY(table()->columnWidth(1) >= metrics.horizontalAdvance(QString::fromLatin1(wide)));
    for (int column = 0; column < 8; ++column) {
        const QString title = table()->model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(table()->columnWidth(column) >= metrics.horizontalAdvance(title),
                 qPrintable(title));
        const QString text = table()->model()->index(0, column).data().toString();
        QVERIFY2(table()->columnWidth(column) >= metrics.horizontalAdvance(text), qPrintable(text));
    }
}

void TestEditorTADataDialog::makesRoomForEveryRow_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("numbers") << QByteArray(";111111.10;-2.5;33333333;4444.444444;1;22.30;999999");
    QTest::newRow("long numbers") << QByteArray(";") + QByteArray(90, '4') + ";1;1;1;1;1;" +
                                         QByteArray(60, '-');
    QTest::newRow("other characters") << QByteArray(";MMMMMMMMMMMM;цена;1e+300;@@@@@@@@;%;&&&&;WW");
    QTest::newRow("signs") << QByteArray(";++++++++++;+1;+1;+1;+1;+1;+++++");
}

// The wide one stands far below what the window shows.
void TestEditorTADataDialog::makesRoomForEveryRow()
{
    QFETCH(const QByteArray, line);
    const QDate next = day.addDays(1);
    store(dayFile(day), barLines(QTime(0, 0), 1400));
    store(dayFile(next),
          barLines(QTime(0, 0), 700) + "120000" + line + '\n' + barLines(QTime(12, 1), 700));
    open();
    chooseRange(QDateTime(day, QTime(0, 0)), QDateTime(next, QTime(23, 59, 59)));
    click(button("loadDataButton"));
    QCOMPARE(table()->model()->rowCount(), 2801);
    for (int row = 0; row < table()->model()->rowCount(); ++row) {
        for (int column = 0; column < 8; ++column) {
            const QModelIndex cell = table()->model()->index(row, column);
            if (table()->sizeHintForIndex(cell).width() > table()->columnWidth(column))
                QFAIL(qPrintable(
                    QStringLiteral("%1, %2: %3").arg(row).arg(column).arg(cell.data().toString())));
        }
    }
}

void TestEditorTADataDialog::makesRoomForEveryTime_data()
{
    QTest::addColumn<QLocale>("locale");
    for (const char* name : {"ru_RU", "en_US", "de_DE", "ar_EG", "zh_CN", "fa_IR", "C"})
        QTest::newRow(name) << QLocale(QLatin1String(name));
}

void TestEditorTADataDialog::makesRoomForEveryTime()
{
    QFETCH(const QLocale, locale);
    const auto restore = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
    QLocale::setDefault(locale);
    for (int month = 1; month <= 12; ++month) {
        for (const int dayOfMonth : {1, 8, 20, 28})
            store(dayFile(QDate(2023, month, dayOfMonth)),
                  barLine(QTime(0, 0), 1) + barLine(QTime(8, 48), 2) + barLine(QTime(10, 8), 2) +
                      barLine(QTime(12, 44), 1) + barLine(QTime(20, 28), 1));
    }
    open();
    // Large letters: no rounding makes up for one.
    QFont font = table()->font();
    font.setPointSize(60);
    table()->setFont(font);
    child<QDateTimeEdit>("fromDateTime")->setDateTime(QDateTime(day, QTime(0, 0)));
    child<QDateTimeEdit>("toDateTime")->setDateTime(QDateTime(day.addDays(400), QTime(0, 0)));
    click(button("loadDataButton"));
    QVERIFY(table()->model()->rowCount() > 200);
    for (int row = 0; row < table()->model()->rowCount(); ++row) {
        const QModelIndex cell = table()->model()->index(row, 0);
        QVERIFY2(table()->sizeHintForIndex(cell).width() <= table()->columnWidth(0),
                 qPrintable(cell.data().toString()));
    }
}

void TestEditorTADataDialog::makesNoMoreRoomThanThereCanBe()
{
    store(dayFile(day), "100000;" + QByteArray(1'000'000, '7') + ";1;1;1;1;1;1\n");
    open();
    showDay();
    QCOMPARE(table()->columnWidth(1), table()->header()->maximumSectionSize());
}

void TestEditorTADataDialog::keepsTheTableWithoutTheDirectory()
{
    openWith(3);
    QVERIFY(seriesDir().removeRecursively());
    click(button("loadDataButton"));
    QCOMPARE(openPrices(), QStringList({"1.10", "2.10", "3.10"}));
}

void TestEditorTADataDialog::findsARow_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<int>("row");
    for (const char* how : {"button", "Return", "Enter"}) {
        const QString text = QLatin1String(how);
        QTest::addRow("%s, a bar", how) << text << QTime(10, 2) << 2;
        QTest::addRow("%s, between bars", how) << text << QTime(10, 2, 59) << 2;
        QTest::addRow("%s, before all", how) << text << QTime(1, 0) << 0;
        QTest::addRow("%s, after all", how) << text << QTime(23, 0) << 4;
    }
}

void TestEditorTADataDialog::findsARow()
{
    QFETCH(const QString, how);
    QFETCH(const QTime, time);
    openWith(5);
    type("findDateTime", QDateTime(day, time));
    if (how == u"button")
        click(button("findButton"));
    else if (how == u"Return")
        hands::keyClick(child<QWidget>("findDateTime"), Qt::Key_Return);
    else
        hands::keyClick(child<QWidget>("findDateTime"), Qt::Key_Enter, Qt::KeypadModifier);
    QFETCH(const int, row);
    QCOMPARE(selectedRows(), QList<int>{row});
    QVERIFY(table()->hasFocus());
    QVERIFY(button("delButton")->isEnabled());
    QVERIFY(m_dialog->isVisible());
}

void TestEditorTADataDialog::findsNothingInAnEmptyTable()
{
    store(dayFile(day), "");
    open();
    showDay();
    type("findDateTime", QDateTime(day, QTime(10, 0)));
    click(button("findButton"));
    QVERIFY(selectedRows().isEmpty());
    QVERIFY(!button("delButton")->isEnabled());
    QVERIFY(table()->hasFocus());
}

void TestEditorTADataDialog::findingAgainAddsToTheSelection()
{
    openWith(5);
    for (const QTime& time : {QTime(10, 1), QTime(10, 3), QTime(10, 1)}) {
        type("findDateTime", QDateTime(day, time));
        click(button("findButton"));
    }
    QCOMPARE(selectedRows(), QList<int>({1, 3}));
}

void TestEditorTADataDialog::findingScrollsThere()
{
    openWith(500);
    const auto isVisible = [this](int row) {
        const QRect rect = table()->visualRect(table()->model()->index(row, 0));
        return rect.height() > 0 && table()->viewport()->rect().contains(rect.center());
    };
    QVERIFY(isVisible(0));
    QVERIFY(!isVisible(400));
    type("findDateTime", QDateTime(day, QTime(16, 40)));
    click(button("findButton"));
    QVERIFY(isVisible(400));
    QVERIFY(!isVisible(0));
    type("findDateTime", QDateTime(day, QTime(10, 0)));
    click(button("findButton"));
    QVERIFY(isVisible(0));
}

void TestEditorTADataDialog::findingScrollsNoFurtherThanItMust()
{
    openWith(500);
    QScrollBar* const bar = table()->verticalScrollBar();
    type("findDateTime", QDateTime(day, QTime(10, 3)));
    click(button("findButton"));
    QCOMPARE(bar->value(), 0);
    // A row below the view becomes its last one, a row above it the first.
    type("findDateTime", QDateTime(day, QTime(14, 0)));
    click(button("findButton"));
    const int below = table()->visualRect(table()->model()->index(240, 0)).bottom();
    QVERIFY(below <= table()->viewport()->rect().bottom());
    QVERIFY(below > table()->viewport()->rect().bottom() - 2 * table()->fontMetrics().height());
    const int before = bar->value();
    type("findDateTime", QDateTime(day, QTime(13, 59)));
    click(button("findButton"));
    QCOMPARE(bar->value(), before);
}

void TestEditorTADataDialog::theKeyboardGoesOnFromTheFoundRow_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QList<int>>("selected");
    QTest::newRow("at first") << QString() << QList<int>{};
    QTest::newRow("after a click") << QStringLiteral("click") << QList<int>{2};
    QTest::newRow("after a selection") << QStringLiteral("range") << QList<int>{2, 3, 4};
    QTest::newRow("after a search") << QStringLiteral("find") << QList<int>{2};
}

// The user is looking at the found bar: Shift and an arrow extend from there.
void TestEditorTADataDialog::theKeyboardGoesOnFromTheFoundRow()
{
    QFETCH(const QString, before);
    QFETCH(const QList<int>, selected);
    openWith(500);
    if (before == u"find") {
        type("findDateTime", QDateTime(day, QTime(10, 2)));
        click(button("findButton"));
    } else if (!before.isEmpty()) {
        clickRow(2);
        if (before == u"range")
            clickRow(4, Qt::ShiftModifier);
    }
    QCOMPARE(selectedRows(), selected);
    type("findDateTime", QDateTime(day, QTime(16, 40)));
    hands::keyClick(child<QWidget>("findDateTime"), Qt::Key_Return);
    QCOMPARE(selectedRows(), selected + QList<int>{400});
    QCOMPARE(table()->currentIndex().row(), 400);
    hands::keyClick(table(), Qt::Key_Down, Qt::ShiftModifier);
    hands::keyClick(table(), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(selectedRows(), selected + QList<int>({400, 401, 402}));
    QStringList expected = openPrices();
    for (const int row : {402, 401, 400})
        expected.removeAt(row);
    std::for_each(selected.crbegin(), selected.crend(),
                  [&expected](int row) { expected.removeAt(row); });
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(openPrices(), expected);
}

void TestEditorTADataDialog::returnElsewhereDoesNothing()
{
    openWith(5);
    type("findDateTime", QDateTime(day, QTime(10, 2)));
    for (const char* name : {"stock", "timeFrame", "fromDateTime", "toDateTime", "dataTable"}) {
        child<QWidget>(name)->setFocus();
        hands::keyClick(child<QWidget>(name), Qt::Key_Return);
        hands::keyClick(child<QWidget>(name), Qt::Key_Enter);
        QVERIFY2(selectedRows().isEmpty(), name);
        QVERIFY2(m_dialog->isVisible(), name);
    }
}

void TestEditorTADataDialog::deletesTheSelectedRows_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("key") << true;
}

void TestEditorTADataDialog::deletesTheSelectedRows()
{
    QFETCH(const bool, byKey);
    openWith(5);
    clickRow(1);
    clickRow(3, Qt::ShiftModifier);
    QCOMPARE(selectedRows(), QList<int>({1, 2, 3}));
    if (byKey)
        hands::keyClick(table(), Qt::Key_Delete);
    else
        click(button("delButton"));
    QCOMPARE(openPrices(), QStringList({"1.10", "5.10"}));
    QVERIFY(selectedRows().isEmpty());
    QVERIFY(table()->hasFocus());
    QVERIFY(!button("delButton")->isEnabled());
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 5)}}));
}

void TestEditorTADataDialog::deletesWithoutAQuestion()
{
    openWith(2);
    clickRow(0);
    click(button("delButton"));
    QVERIFY(!QApplication::activeModalWidget() ||
            QApplication::activeModalWidget() == m_dialog.get());
    QCOMPARE(openPrices(), QStringList({"2.10"}));
}

void TestEditorTADataDialog::deletesRowsThatLieApart()
{
    openWith(7);
    clickRow(5);
    for (const int row : {0, 2, 6})
        clickRow(row, Qt::ControlModifier);
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(openPrices(), QStringList({"2.10", "4.10", "5.10"}));
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLine(QTime(10, 1), 2) +
                                                editedBarLines(QTime(10, 3), 2, 4)}}));
}

void TestEditorTADataDialog::deletesEverything()
{
    openWith(300);
    hands::keyClick(table(), Qt::Key_A, Qt::ControlModifier);
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(table()->model()->rowCount(), 0);
    QVERIFY(!button("delButton")->isEnabled());
    // Once more, with nothing there.
    hands::keyClick(table(), Qt::Key_Delete);
    click(button("closeButton"));
    QVERIFY(stored().isEmpty());
    QVERIFY(seriesDir().exists());
}

// Who clicks and deletes on and on need not look where the selection went.
void TestEditorTADataDialog::deletesOneRowAfterTheOther()
{
    openWith(5);
    for (int row = 0; row < 2; ++row) {
        clickRow(1);
        hands::keyClick(table(), Qt::Key_Delete);
    }
    QCOMPARE(openPrices(), QStringList({"1.10", "4.10", "5.10"}));
    // The row that took the place is where the keyboard goes on.
    QCOMPARE(table()->currentIndex().row(), 1);
    hands::keyClick(table(), Qt::Key_Down);
    QCOMPARE(selectedRows(), QList<int>{2});
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(openPrices(), QStringList({"1.10", "4.10"}));
    QCOMPARE(table()->currentIndex().row(), 1);
    clickRow(1);
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(openPrices(), QStringList{"1.10"});
    QCOMPARE(table()->currentIndex().row(), 0);
}

void TestEditorTADataDialog::deleteButtonFollowsTheSelection()
{
    openWith(5);
    QVERIFY(!button("delButton")->isEnabled());
    clickRow(2);
    QVERIFY(button("delButton")->isEnabled());
    clickRow(2, Qt::ControlModifier);
    QVERIFY(!button("delButton")->isEnabled());
    hands::keyClick(table(), Qt::Key_A, Qt::ControlModifier);
    QVERIFY(button("delButton")->isEnabled());
}

// What was selected is no longer shown.
void TestEditorTADataDialog::deleteButtonIsOffAfterShowing()
{
    openWith(5);
    clickRow(2);
    click(button("loadDataButton"));
    QVERIFY(selectedRows().isEmpty());
    QVERIFY(!button("delButton")->isEnabled());
    hands::keyClick(table(), Qt::Key_Delete);
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 5)}}));
}

void TestEditorTADataDialog::deleteKeyDoesNothingWithoutASelection()
{
    openWith(5);
    table()->setFocus();
    hands::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(table()->model()->rowCount(), 5);
    QVERIFY(m_dialog->isVisible());
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 5)}}));
}

void TestEditorTADataDialog::deleteKeyInAFieldDeletesText()
{
    openWith(5);
    clickRow(2);
    for (const char* name : {"findDateTime", "fromDateTime", "toDateTime"}) {
        child<QWidget>(name)->setFocus();
        hands::keyClick(child<QWidget>(name), Qt::Key_Delete);
        QCOMPARE(table()->model()->rowCount(), 5);
    }
}

void TestEditorTADataDialog::writesWhenItIsClosed_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"button", "escape", "window"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestEditorTADataDialog::writesWhenItIsClosed()
{
    QFETCH(const QString, how);
    store(dayFile(day), barLines(QTime(10, 0), 4));
    open();
    QSignalSpy rejected(m_dialog.get(), &QDialog::rejected);
    showDay();
    clickRow(1);
    click(button("delButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 4)}}));
    if (how == u"button")
        click(button("closeButton"));
    else if (how == u"escape")
        hands::keyClick(m_dialog->focusWidget(), Qt::Key_Escape);
    else
        closeWindow();
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(rejected.size(), 1);
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLine(QTime(10, 0), 1) +
                                                editedBarLines(QTime(10, 2), 2, 3)}}));
}

void TestEditorTADataDialog::writesNothingWithoutADeletion_data()
{
    writesWhenItIsClosed_data();
}

void TestEditorTADataDialog::writesNothingWithoutADeletion()
{
    QFETCH(const QString, how);
    store(dayFile(day), barLines(QTime(10, 0), 4));
    open();
    showRange(QTime(10, 1), QTime(10, 2));
    clickRow(1);
    click(button("loadDataButton"));
    if (how == u"button")
        click(button("closeButton"));
    else if (how == u"escape")
        hands::keyClick(m_dialog->focusWidget(), Qt::Key_Escape);
    else
        closeWindow();
    QVERIFY(!m_dialog->isVisible());
    m_dialog.reset();
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 4)}}));
}

void TestEditorTADataDialog::writesBeforeItShowsAnotherRange()
{
    const QDate next = day.addDays(1);
    store(dayFile(day), barLines(QTime(10, 0), 4));
    store(dayFile(next), barLines(QTime(10, 0), 2, 11));
    open();
    showDay();
    clickRow(0);
    click(button("delButton"));
    chooseRange(QDateTime(day, QTime(10, 2)), QDateTime(next, QTime(23, 0)));
    click(button("loadDataButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 1), 3, 2)},
                             {dayFile(next), barLines(QTime(10, 0), 2, 11)}}));
    QCOMPARE(openPrices(), QStringList({"3.10", "4.10", "11.10", "12.10"}));
    // The table shows what is in the files now.
    QCOMPARE(table()->model()->index(0, 5).data().toString(), QStringLiteral("2003.50"));
    QCOMPARE(table()->model()->index(2, 5).data().toString(), QStringLiteral("1011"));
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 1), 3, 2)},
                             {dayFile(next), barLines(QTime(10, 0), 2, 11)}}));
}

void TestEditorTADataDialog::writesOnlyOnce()
{
    openWith(3);
    clickRow(0);
    click(button("delButton"));
    click(button("closeButton"));
    const Tree after{{dayFile(day), editedBarLines(QTime(10, 1), 2, 2)}};
    QCOMPARE(stored(), after);
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    click(button("closeButton"));
    m_dialog.reset();
    QCOMPARE(stored(), after);
}

// Pending deletions have nowhere to go; the table does not show what is not there.
void TestEditorTADataDialog::isEmptyWhenTheDirectoryHasGone()
{
    openWith(5);
    clickRow(0);
    click(button("delButton"));
    clickRow(2);
    QVERIFY(seriesDir().removeRecursively());
    click(button("loadDataButton"));
    QCOMPARE(table()->model()->rowCount(), 0);
    QVERIFY(!table()->indexAt(QPoint(5, 5)).isValid());
    QVERIFY(selectedRows().isEmpty());
    QVERIFY(!button("delButton")->isEnabled());
    QVERIFY(!table()->grab().isNull());
    click(button("findButton"));
    click(button("closeButton"));
    QVERIFY(!seriesDir().exists());
}

void TestEditorTADataDialog::tellsTheTerminalWhatItCouldNotWrite_data()
{
    QTest::addColumn<bool>("closed");
    QTest::newRow("closed") << true;
    QTest::newRow("shown again") << false;
}

// In its own words, without a box, and for each file once.
void TestEditorTADataDialog::tellsTheTerminalWhatItCouldNotWrite()
{
    QFETCH(const bool, closed);
    const vexdesk::Core core;
    openWith(3);
    clickRow(1);
    hands::keyClick(table(), Qt::Key_Delete);
    store(dayFile(day), barLines(QTime(10, 0), 4));
    QVERIFY(core.problems().isEmpty());
    click(button(closed ? "closeButton" : "loadDataButton"));
    QCOMPARE(core.problems().size(), 1);
    QVERIFY2(core.problems().first().contains(seriesDir().filePath(dayFile(day))),
             qPrintable(core.problems().first()));
    QVERIFY(!QApplication::activeModalWidget());
    m_dialog.reset();
    QCOMPARE(core.problems().size(), 1);
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 4)}}));
}

void TestEditorTADataDialog::whatItDeletesCanBePutBack()
{
    const vexdesk::Core core;
    const Tree before = openAndDeleteARow();
    click(button("closeButton"));
    QVERIFY(stored() != before);
    const auto place = *vexdesk::restorePlace(vexdesk::storePlace());
    const auto points = vexdesk::restorePoints(place);
    QVERIFY(points);
    QCOMPARE(points->points.size(), 1);
    const vexdesk::RestorePointRecord& point = points->points.first();
    QCOMPARE(point.by, QStringLiteral("edit"));
    QVERIFY(point.isComplete);
    QCOMPARE(point.kept, QStringList(point.series.first() + u'/' + dayFile(day)));
    vexdesk::PuttingBack puttingBack(place, point);
    QVERIFY(puttingBack.begin());
    QVERIFY(puttingBack.run(nullptr));
    QCOMPARE(stored(), before);
    QVERIFY(core.problems().isEmpty());
}

void TestEditorTADataDialog::aSeriesThatAnotherChangesIsLeftAlone()
{
    const vexdesk::Core core;
    const Tree before = openAndDeleteARow();
    const auto place = vexdesk::makeRestorePlace(vexdesk::storePlace());
    QVERIFY(place);
    vexdesk::SeriesLocks other;
    QVERIFY(other.take(*place, {series}, std::chrono::seconds(0)));
    click(button("closeButton"));
    QCOMPARE(stored(), before);
    QCOMPARE(core.problems().size(), 1);
    QVERIFY2(
        core.problems().first().contains(series) &&
            core.problems().first().contains(QString::number(QCoreApplication::applicationPid())),
        qPrintable(core.problems().first()));
}

void TestEditorTADataDialog::tellsTheTerminalWhatItCouldNotRead()
{
    const vexdesk::Core core;
    store(dayFile(day), barLines(QTime(10, 0), 3));
    open();
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(day));
        showDay();
    }
    QCOMPARE(table()->model()->rowCount(), 0);
    QCOMPARE(core.problems().size(), 1);
    QVERIFY2(core.problems().first().contains(seriesDir().filePath(dayFile(day))),
             qPrintable(core.problems().first()));
    showDay();
    QCOMPARE(table()->model()->rowCount(), 3);
    QCOMPARE(core.problems().size(), 1);
}

void TestEditorTADataDialog::doesNotNeedTheTerminal()
{
    QVERIFY(!ICore::instance());
    openWith(3);
    clickRow(1);
    hands::keyClick(table(), Qt::Key_Delete);
    store(dayFile(day), barLines(QTime(10, 0), 4));
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 4)}}));
}

void TestEditorTADataDialog::storesOnlyWhatTheRangeShowed()
{
    store(dayFile(day),
          barLine(QTime(9, 59), 7) + barLines(QTime(10, 0), 61) + barLine(QTime(11, 1), 8));
    open();
    showRange(QTime(10, 0), QTime(11, 0));
    QCOMPARE(table()->model()->rowCount(), 61);
    clickRow(60);
    hands::keyClick(table(), Qt::Key_Delete);
    click(button("closeButton"));
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 0), 60)}}));
}

void TestEditorTADataDialog::removesTheFileOfADayThatIsEmpty()
{
    store(dayFile(day), barLines(QTime(10, 0), 2));
    store(dayFile(day, 1), barLines(QTime(10, 0), 2));
    open();
    showDay();
    hands::keyClick(table(), Qt::Key_A, Qt::ControlModifier);
    click(button("delButton"));
    hands::keyClick(m_dialog.get(), Qt::Key_Escape);
    QCOMPARE(stored(), Tree({{dayFile(day, 1), barLines(QTime(10, 0), 2)}}));
}

void TestEditorTADataDialog::keepsItsSize_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"button", "escape", "window", "destroyed"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestEditorTADataDialog::keepsItsSize()
{
    QFETCH(const QString, how);
    const QSize size(811, 633);
    open();
    m_dialog->resize(size);
    if (how == u"button")
        click(button("closeButton"));
    else if (how == u"escape")
        hands::keyClick(m_dialog.get(), Qt::Key_Escape);
    else if (how == u"window")
        closeWindow();
    QVERIFY(!settings().contains(sizeKey));
    m_dialog.reset();
    QCOMPARE(settings().value(sizeKey).toSize(), size);
    open();
    QCOMPARE(m_dialog->size(), size);
}

void TestEditorTADataDialog::survivesASizeThatIsNone()
{
    settings().setValue(sizeKey, QStringLiteral("large"));
    store(dayFile(day), barLines(QTime(10, 0), 2));
    open();
    QVERIFY(m_dialog->width() >= m_dialog->minimumSizeHint().width());
    QVERIFY(m_dialog->height() >= m_dialog->minimumSizeHint().height());
    showDay();
    QCOMPARE(table()->model()->rowCount(), 2);
}

QTEST_MAIN(TestEditorTADataDialog)
#include "tst_editortadatadialog.moc"
