// SPDX-License-Identifier: MIT
#include "seriesexportpage.h"

#include "exportdetails.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/series.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectorbox.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QDir>
#include <QtCore/QLocale>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QWizard>

#include <memory>

using testsupport::choose;
using testsupport::click;
using testsupport::ModalSteps;
using testsupport::typeDate;

namespace {

const QString red = QStringLiteral("QLabel {color: red;}");

// Long ago, so that no midnight changes what it means.
const QDate from(2024, 3, 1);
const QDate to(2024, 3, 15);

// What a box offers: the beginnings of the texts, which are the codes.
QStringList offered(const QComboBox* box)
{
    QStringList codes;
    for (int i = 0; i < box->count(); ++i)
        codes.append(box->itemText(i).section(QLatin1Char(' '), 0, 0));
    return codes;
}

} // namespace

class TestSeriesExportPage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hasItsFields();
    void hasItsRowsInOrder();
    void hasASizeToBeginWith();
    void theBoxesFitTheirContents();
    void smallThingsStaySmall();
    void offersTheTimeframes();
    void offersTheExtensions();
    void theCalendarsShowTheirGrid();
    void theWeekBeginsAsTheSystemSays();
    void takesADateAsItIsTyped_data();
    void takesADateAsItIsTyped();
    void datesAreInTheLanguageOfTheTerminal_data();
    void datesAreInTheLanguageOfTheTerminal();
    void beginsWithNothingChosen();
    void offersWhatIsStored();
    void anEmptyStoreOffersNothing();

    void beginsWithTodayAndNothingElse();
    void namesTheFileAfterSeriesAndDays();
    void theOnlyChoicesAreMadeAndNamed();
    void theOnlySecurityOfABoardIsNamed();
    void theNameGoesWithTheSecurity();
    void aNameMayHoldPercentSigns();
    void keepsATypedName();
    void keepsANameThatWasCleared();

    void marksWhatIsMissing();
    void marksAReversedInterval();
    void marksATomorrow();
    void marksAFileWithoutAName();
    void oneDayIsAnInterval();
    void needsNoDirectory();
    void isValidatedThroughItsInterface();
    void tellsOfEveryChange();
    void isCompleteWhenItSaysThatItChanged();

    void joinsThePath_data();
    void joinsThePath();
    void aFileWithoutADirectoryIsInTheWorkingDirectory();
    void fillsInTheSeries();
    void fillsInASeriesThatTheTerminalDoesNotKnow();
    void fillsInTheTimeframe_data();
    void fillsInTheTimeframe();
    void fillsInNothingElse();

    void takesTheDirectoryThatIsChosen();
    void startsWithTheDirectoryThatIsShown();
    void keepsTheDirectoryWhenNoneIsChosen();

private:
    void open(const QStringList& series);
    // Three venues, boards with one security and with two.
    void openUsual();
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return testsupport::child<Widget>(m_page.get(), name);
    }
    QString text(const char* name) const { return child<QLineEdit>(name)->text(); }
    void type(const char* name, const QString& text) const
    {
        testsupport::type(child<QLineEdit>(name), text);
    }
    void chooseSeries(const char* stock, const char* board, const char* security) const;
    void typeDates(const QDate& first, const QDate& last) const;
    // The names of the labels that are red.
    QStringList marked() const;
    ExportDetails details() const
    {
        ExportDetails details;
        m_page->getExportDetails(details);
        return details;
    }

    QDir m_user;
    std::unique_ptr<SeriesExportPage> m_page;
};

void TestSeriesExportPage::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_user = testsupport::newUserFolder();
}

void TestSeriesExportPage::cleanup()
{
    m_page.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestSeriesExportPage::open(const QStringList& series)
{
    for (const QString& path : series)
        QVERIFY(m_user.mkpath(QStringLiteral("tadata/") + path));
    m_page = std::make_unique<SeriesExportPage>();
    m_page->show();
    QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
}

void TestSeriesExportPage::openUsual()
{
    open({"NORD/MAIN/GRAN", "NORD/MAIN/ALFA", "NORD/ODD/VEGA", "ORIENT/FX/EURUSD",
          "ORIENT/FX/GBPUSD", "GONE/OLD/X"});
}

void TestSeriesExportPage::chooseSeries(const char* stock, const char* board,
                                        const char* security) const
{
    choose(child<QComboBox>("stock"), QLatin1String(stock));
    choose(child<QComboBox>("board"), QLatin1String(board));
    choose(child<QComboBox>("security"), QLatin1String(security));
}

void TestSeriesExportPage::typeDates(const QDate& first, const QDate& last) const
{
    typeDate(child<QDateEdit>("dateFrom"), first);
    typeDate(child<QDateEdit>("dateTo"), last);
}

QStringList TestSeriesExportPage::marked() const
{
    QStringList names;
    for (const char* name :
         {"stockLabel", "boardLabel", "secLabel", "fromLabel", "toLabel", "outputLabel"}) {
        const QString style = child<QLabel>(name)->styleSheet();
        if (!style.isEmpty()) {
            names.append(style == red ? QString::fromLatin1(name) : style);
        }
    }
    return names;
}

void TestSeriesExportPage::hasItsFields()
{
    openUsual();
    QCOMPARE(m_page->objectName(), QStringLiteral("SeriesExportPage"));
    QCOMPARE(m_page->title(), QStringLiteral("Серия"));
    QCOMPARE(m_page->windowTitle(), QStringLiteral("Form"));
    QVERIFY(child<StockSelectorBox>("stock"));
    QVERIFY(child<BoardSelectorBox>("board"));
    QVERIFY(child<SecuritySelectorBox>("security"));
    QVERIFY(child<QPushButton>("chooseDir"));
    QCOMPARE(child<QPushButton>("chooseDir")->text(), QStringLiteral("..."));
}

void TestSeriesExportPage::hasItsRowsInOrder()
{
    openUsual();
    // As the eye goes: line by line, from the left.
    struct Place
    {
        const char* label;
        const char* text;
        const char* buddy;
    };
    const QList<QList<Place>> lines{{{"stockLabel", "Площадка:", "stock"}},
                                    {{"boardLabel", "Режим торгов:", "board"}},
                                    {{"secLabel", "Инструмент:", "security"}},
                                    {{"label_5", "Интервал:", "dateFrom"},
                                     {"fromLabel", "с", "dateFrom"},
                                     {"toLabel", "по", "dateTo"}},
                                    {{"label_4", "Таймфрейм:", "timeFrame"}},
                                    {{"outputLabel", "Выходной файл:", "outputFile"}},
                                    {{"label", "Путь:", "outputDir"}}};
    int above = -1;
    for (const QList<Place>& line : lines) {
        int before = -1;
        for (const Place& place : line) {
            const auto* const label = child<QLabel>(place.label);
            QVERIFY2(label, place.label);
            QCOMPARE(label->text(), QString::fromUtf8(place.text));
            QVERIFY(label->buddy());
            QCOMPARE(label->buddy()->objectName(), QLatin1String(place.buddy));
            QVERIFY2(label->geometry().left() > before, place.label);
            QVERIFY2(label->geometry().top() > above, place.label);
            QVERIFY2(label->geometry().right() < label->buddy()->geometry().left(), place.label);
            QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()),
                     place.label);
            before = label->geometry().left();
        }
        above = child<QLabel>(line.first().label)->buddy()->geometry().bottom();
    }
    QVERIFY(child<QWidget>("extensionComboBox")->x() >
            child<QWidget>("outputFile")->geometry().right());
    QVERIFY(child<QWidget>("chooseDir")->x() > child<QWidget>("outputDir")->geometry().right());
}

void TestSeriesExportPage::hasASizeToBeginWith()
{
    QCOMPARE(SeriesExportPage().size(), QSize(561, 422));
}

void TestSeriesExportPage::theBoxesFitTheirContents()
{
    openUsual();
    for (const char* name : {"stock", "board", "security", "timeFrame"})
        QCOMPARE(child<QComboBox>(name)->sizeAdjustPolicy(), QComboBox::AdjustToContents);
}

void TestSeriesExportPage::smallThingsStaySmall()
{
    openUsual();
    QCOMPARE(child<QLabel>("toLabel")->maximumWidth(), 15);
    QCOMPARE(child<QPushButton>("chooseDir")->maximumWidth(), 20);
    m_page->resize(1000, 700);
    QVERIFY(child<QPushButton>("chooseDir")->width() <= 20);
    QVERIFY(child<QLineEdit>("outputDir")->width() > 500);
}

void TestSeriesExportPage::offersTheTimeframes()
{
    openUsual();
    const auto* const box = child<QComboBox>("timeFrame");
    QList<std::pair<QString, int>> items;
    for (int i = 0; i < box->count(); ++i)
        items.append({box->itemText(i), box->itemData(i).toInt()});
    QCOMPARE(items, (QList<std::pair<QString, int>>{{"1 секунда", 1},
                                                    {"1 минута", 60},
                                                    {"5 минут", 300},
                                                    {"10 минут", 600},
                                                    {"30 минут", 1800},
                                                    {"1 час", 3600},
                                                    {"1 день", 86400}}));
    QCOMPARE(box->currentIndex(), 1);
}

void TestSeriesExportPage::offersTheExtensions()
{
    openUsual();
    const auto* const box = child<QComboBox>("extensionComboBox");
    QCOMPARE(offered(box), QStringList({".txt", ".csv"}));
    QCOMPARE(box->currentText(), QStringLiteral(".txt"));
}

void TestSeriesExportPage::theCalendarsShowTheirGrid()
{
    openUsual();
    for (const char* name : {"dateFrom", "dateTo"}) {
        const auto* const edit = child<QDateEdit>(name);
        QVERIFY(edit->calendarPopup());
        QVERIFY(edit->calendarWidget()->isGridVisible());
        QCOMPARE(edit->calendarWidget()->firstDayOfWeek(), QLocale::system().firstDayOfWeek());
    }
}

void TestSeriesExportPage::offersWhatIsStored()
{
    openUsual();
    QCOMPARE(offered(child<QComboBox>("stock")), QStringList({"GONE", "NORD", "ORIENT"}));
    QCOMPARE(offered(child<QComboBox>("board")), QStringList());
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QCOMPARE(offered(child<QComboBox>("board")), QStringList({"MAIN", "ODD"}));
    choose(child<QComboBox>("board"), QStringLiteral("MAIN "));
    QCOMPARE(offered(child<QComboBox>("security")), QStringList({"ALFA", "GRAN"}));
}

void TestSeriesExportPage::anEmptyStoreOffersNothing()
{
    open({});
    for (const char* name : {"stock", "board", "security"})
        QCOMPARE(child<QComboBox>(name)->count(), 0);
    QVERIFY(!m_page->isComplete());
    QVERIFY(m_user.exists(QStringLiteral("tadata")));
}

void TestSeriesExportPage::beginsWithTodayAndNothingElse()
{
    const QDate before = QDate::currentDate();
    openUsual();
    const QDate after = QDate::currentDate();
    const QDate shown = child<QDateEdit>("dateFrom")->date();
    QVERIFY(before <= shown && shown <= after);
    QCOMPARE(child<QDateEdit>("dateTo")->date(), shown);
    QCOMPARE(child<QComboBox>("timeFrame")->currentText(), QStringLiteral("1 минута"));
    QCOMPARE(text("outputFile"), QString());
    QCOMPARE(text("outputDir"), QString());
    for (const char* name : {"stock", "board", "security"})
        QCOMPARE(child<QComboBox>(name)->currentIndex(), -1);

    chooseSeries("NORD ", "MAIN ", "GRAN");
    const QString day = shown.toString(QStringLiteral("yyMMdd"));
    QCOMPARE(text("outputFile"), QStringLiteral("GRAN_%1_%1").arg(day));
}

void TestSeriesExportPage::namesTheFileAfterSeriesAndDays()
{
    openUsual();
    typeDates(from, to);
    QCOMPARE(text("outputFile"), QString());
    chooseSeries("NORD ", "MAIN ", "GRAN");
    QCOMPARE(text("outputFile"), QStringLiteral("GRAN_240301_240315"));
    choose(child<QComboBox>("security"), QStringLiteral("ALFA"));
    QCOMPARE(text("outputFile"), QStringLiteral("ALFA_240301_240315"));
    typeDate(child<QDateEdit>("dateTo"), to.addDays(1));
    QCOMPARE(text("outputFile"), QStringLiteral("ALFA_240301_240316"));
    typeDate(child<QDateEdit>("dateFrom"), from.addDays(8));
    QCOMPARE(text("outputFile"), QStringLiteral("ALFA_240309_240316"));
    // A directory of its own is not a name of its own.
    type("outputDir", QStringLiteral("/tmp"));
    typeDate(child<QDateEdit>("dateFrom"), from);
    QCOMPARE(text("outputFile"), QStringLiteral("ALFA_240301_240316"));
}

void TestSeriesExportPage::theOnlyChoicesAreMadeAndNamed()
{
    open({"NORD/MAIN/GRAN"});
    const QString day = child<QDateEdit>("dateFrom")->date().toString(QStringLiteral("yyMMdd"));
    QCOMPARE(text("outputFile"), QStringLiteral("GRAN_%1_%1").arg(day));
    QVERIFY(m_page->isComplete());
    QCOMPARE(details().securityName, QStringLiteral("GRAN"));
}

void TestSeriesExportPage::theOnlySecurityOfABoardIsNamed()
{
    openUsual();
    typeDates(from, to);
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    choose(child<QComboBox>("board"), QStringLiteral("ODD "));
    QCOMPARE(text("outputFile"), QStringLiteral("VEGA_240301_240315"));
    QVERIFY(m_page->isComplete());
}

void TestSeriesExportPage::theNameGoesWithTheSecurity()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    QVERIFY(m_page->isComplete());
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QCOMPARE(text("outputFile"), QString());
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"secLabel", "outputLabel"}));
}

void TestSeriesExportPage::aNameMayHoldPercentSigns()
{
    open({"NORD/MAIN/A%1%2", "NORD/MAIN/B"});
    typeDates(from, to);
    choose(child<QComboBox>("security"), QStringLiteral("A%1%2"));
    QCOMPARE(text("outputFile"), QStringLiteral("A%1%2_240301_240315"));
}

void TestSeriesExportPage::keepsATypedName()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    type("outputFile", QStringLiteral("mine"));
    typeDates(from, to);
    QCOMPARE(text("outputFile"), QStringLiteral("mine"));
    choose(child<QComboBox>("security"), QStringLiteral("ALFA"));
    QCOMPARE(text("outputFile"), QStringLiteral("mine"));
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QCOMPARE(text("outputFile"), QStringLiteral("mine"));
}

void TestSeriesExportPage::keepsANameThatWasCleared()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    type("outputFile", QString());
    QCOMPARE(marked(), QStringList({"outputLabel"}));
    typeDates(from, to);
    choose(child<QComboBox>("security"), QStringLiteral("ALFA"));
    QCOMPARE(text("outputFile"), QString());
    QVERIFY(!m_page->isComplete());
}

void TestSeriesExportPage::marksWhatIsMissing()
{
    openUsual();
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"stockLabel", "boardLabel", "secLabel", "outputLabel"}));
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"boardLabel", "secLabel", "outputLabel"}));
    choose(child<QComboBox>("board"), QStringLiteral("MAIN "));
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"secLabel", "outputLabel"}));
    choose(child<QComboBox>("security"), QStringLiteral("GRAN"));
    QVERIFY(m_page->isComplete());
    QCOMPARE(marked(), QStringList());
}

void TestSeriesExportPage::marksAReversedInterval()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    typeDates(to, from);
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"fromLabel"}));
    typeDate(child<QDateEdit>("dateTo"), to);
    QVERIFY(m_page->isComplete());
    QCOMPARE(marked(), QStringList());
}

void TestSeriesExportPage::marksATomorrow()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    auto* const dateFrom = child<QDateEdit>("dateFrom");
    auto* const dateTo = child<QDateEdit>("dateTo");
    QDate today;
    QList<bool> complete;
    QList<QStringList> marks;
    const auto set = [&](int first, int last) {
        dateFrom->setDate(today.addDays(first));
        dateTo->setDate(today.addDays(last));
        complete.append(m_page->isComplete());
        marks.append(marked());
    };
    // Once more when midnight has come between.
    do {
        today = QDate::currentDate();
        complete.clear();
        marks.clear();
        set(0, 0);
        set(0, 1);
        set(1, 1);
        set(2, 1);
        set(1, 0);
        set(-1, 0);
    } while (QDate::currentDate() != today);
    QCOMPARE(complete, QList<bool>({true, false, false, false, false, true}));
    QCOMPARE(marks,
             QList<QStringList>(
                 {{}, {"toLabel"}, {"toLabel"}, {"fromLabel", "toLabel"}, {"fromLabel"}, {}}));
}

void TestSeriesExportPage::marksAFileWithoutAName()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    type("outputFile", QString());
    QVERIFY(!m_page->isComplete());
    QCOMPARE(marked(), QStringList({"outputLabel"}));
    type("outputFile", QStringLiteral("x"));
    QVERIFY(m_page->isComplete());
    QCOMPARE(marked(), QStringList());
}

void TestSeriesExportPage::oneDayIsAnInterval()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    typeDates(from, from);
    QVERIFY(m_page->isComplete());
}

void TestSeriesExportPage::needsNoDirectory()
{
    openUsual();
    chooseSeries("NORD ", "MAIN ", "GRAN");
    QVERIFY(m_page->isComplete());
    type("outputDir", QStringLiteral("/there/is/none"));
    QVERIFY(m_page->isComplete());
}

void TestSeriesExportPage::isValidatedThroughItsInterface()
{
    openUsual();
    auto* const form = qobject_cast<IValidateForm*>(m_page.get());
    QVERIFY(form);
    QVERIFY(!form->validate());
    QCOMPARE(marked(), QStringList({"stockLabel", "boardLabel", "secLabel", "outputLabel"}));
    chooseSeries("ORIENT ", "FX ", "EURUSD");
    QVERIFY(form->validate());
    QCOMPARE(marked(), QStringList());
}

void TestSeriesExportPage::tellsOfEveryChange()
{
    openUsual();
    QSignalSpy changed(m_page.get(), &QWizardPage::completeChanged);
    const auto told = [&changed] {
        const bool any = !changed.isEmpty();
        changed.clear();
        return any;
    };
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QVERIFY(told());
    choose(child<QComboBox>("board"), QStringLiteral("MAIN "));
    QVERIFY(told());
    choose(child<QComboBox>("security"), QStringLiteral("GRAN"));
    QVERIFY(told());
    child<QDateEdit>("dateFrom")->setDate(from);
    QVERIFY(told());
    child<QDateEdit>("dateTo")->setDate(to);
    QVERIFY(told());
    type("outputFile", QStringLiteral("x"));
    QVERIFY(told());

    choose(child<QComboBox>("timeFrame"), 3);
    choose(child<QComboBox>("extensionComboBox"), 1);
    type("outputDir", QStringLiteral("x"));
    QVERIFY(!told());
}

void TestSeriesExportPage::isCompleteWhenItSaysThatItChanged()
{
    openUsual();
    QList<bool> complete;
    connect(m_page.get(), &QWizardPage::completeChanged, m_page.get(),
            [this, &complete] { complete.append(m_page->isComplete()); });
    chooseSeries("NORD ", "MAIN ", "GRAN");
    QCOMPARE(complete.last(), true);
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QCOMPARE(complete.last(), false);
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QCOMPARE(complete.last(), false);
    choose(child<QComboBox>("board"), QStringLiteral("ODD "));
    QCOMPARE(complete.last(), true);
}

void TestSeriesExportPage::joinsThePath_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("extension");
    QTest::addColumn<QString>("path");
    const auto row = [](const char* name, const char* directory, const char* file, int extension,
                        const char* path) {
        QTest::newRow(name) << QString::fromLatin1(directory) << QString::fromLatin1(file)
                            << extension << QString::fromLatin1(path);
    };
    row("a directory", "/data/bars", "x", 0, "/data/bars/x.txt");
    row("another extension", "/data/bars", "x", 1, "/data/bars/x.csv");
    row("a slash at the end", "/data/bars/", "x", 0, "/data/bars/x.txt");
    row("the root", "/", "x", 0, "/x.txt");
    row("a relative directory", "bars", "x", 0, "bars/x.txt");
    row("an extension of its own", "/data", "x.csv", 0, "/data/x.csv.txt");
    row("a whole path as the name", "/data", "/other/x", 0, "/other/x.txt");
    row("blanks", "/my data", "my bars", 0, "/my data/my bars.txt");
}

void TestSeriesExportPage::joinsThePath()
{
    QFETCH(const QString, directory);
    QFETCH(const QString, file);
    QFETCH(const int, extension);
    QFETCH(const QString, path);
    openUsual();
    type("outputDir", directory);
    type("outputFile", file);
    choose(child<QComboBox>("extensionComboBox"), extension);
    QCOMPARE(m_page->fileName(), path);
    QCOMPARE(details().outputPath, path);
}

void TestSeriesExportPage::aFileWithoutADirectoryIsInTheWorkingDirectory()
{
    openUsual();
    type("outputFile", QStringLiteral("x"));
    QVERIFY(QDir::isRelativePath(m_page->fileName()));
    QCOMPARE(QDir::cleanPath(m_page->fileName()), QStringLiteral("x.txt"));
    QCOMPARE(details().outputPath, m_page->fileName());
}

void TestSeriesExportPage::fillsInTheSeries()
{
    openUsual();
    chooseSeries("ORIENT ", "FX ", "GBPUSD");
    typeDates(from, to);
    type("outputDir", QStringLiteral("/data"));
    const ExportDetails details = this->details();
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({"2", "1", "103", "ORIENT", "FX", "GBPUSD", "60", "", "", "", "", ""}));
    QCOMPARE(details.dateFrom, from);
    QCOMPARE(details.dateTo, to);
    QCOMPARE(details.outputPath, QStringLiteral("/data/GBPUSD_240301_240315.txt"));
}

void TestSeriesExportPage::fillsInASeriesThatTheTerminalDoesNotKnow()
{
    openUsual();
    choose(child<QComboBox>("stock"), QStringLiteral("GONE"));
    QVERIFY(m_page->isComplete());
    const ExportDetails details = this->details();
    const auto stockId = StockDirectory::i().idByCode(QStringLiteral("GONE"));
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({QString::number(stockId), "0", "0", "GONE", "OLD", "X", "60", "", "", "",
                          "", ""}));
}

void TestSeriesExportPage::fillsInTheTimeframe_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("seconds");
    QTest::newRow("1") << "1 секунда" << 1;
    QTest::newRow("60") << "1 минута" << 60;
    QTest::newRow("300") << "5 минут" << 300;
    QTest::newRow("600") << "10 минут" << 600;
    QTest::newRow("1800") << "30 минут" << 1800;
    QTest::newRow("3600") << "1 час" << 3600;
    QTest::newRow("86400") << "1 день" << 86400;
}

void TestSeriesExportPage::fillsInTheTimeframe()
{
    QFETCH(const QString, title);
    QFETCH(const int, seconds);
    openUsual();
    choose(child<QComboBox>("timeFrame"), title);
    QCOMPARE(details().timeframe, seconds);
}

void TestSeriesExportPage::fillsInNothingElse()
{
    openUsual();
    ExportDetails details;
    details.separator = QStringLiteral("separator");
    details.dateFormat = QStringLiteral("date");
    details.timeFormat = QStringLiteral("time");
    details.addHeader = true;
    details.lineFormat = QStringLiteral("line");
    m_page->getExportDetails(details);
    QCOMPARE(details.separator, QStringLiteral("separator"));
    QCOMPARE(details.dateFormat, QStringLiteral("date"));
    QCOMPARE(details.timeFormat, QStringLiteral("time"));
    QVERIFY(details.addHeader);
    QCOMPARE(details.lineFormat, QStringLiteral("line"));
    QCOMPARE(details.dateFormatTitle, QString());
    QCOMPARE(details.timeFormatTitle, QString());
}

void TestSeriesExportPage::takesTheDirectoryThatIsChosen()
{
    const QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkpath(QStringLiteral("bars")));
    openUsual();
    type("outputDir", directory.path());
    ModalSteps steps;
    steps.on<QFileDialog>([](QFileDialog* dialog) {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Выбор директории для экспорта"));
        QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
        QVERIFY(dialog->testOption(QFileDialog::ShowDirsOnly));
        QVERIFY(!dialog->parentWidget());
        auto* const edit = testsupport::child<QLineEdit>(dialog, "fileNameEdit");
        QVERIFY(edit);
        edit->selectAll();
        hands::keyClicks(edit, QStringLiteral("bars"));
        hands::keyClick(edit, Qt::Key_Return);
    });
    click(child<QPushButton>("chooseDir"));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(text("outputDir"), directory.filePath(QStringLiteral("bars")));
}

void TestSeriesExportPage::startsWithTheDirectoryThatIsShown()
{
    const QTemporaryDir directory;
    openUsual();
    type("outputDir", directory.path());
    ModalSteps steps;
    steps.on<QFileDialog>([&directory](QFileDialog* dialog) {
        QCOMPARE(dialog->directory().canonicalPath(), QDir(directory.path()).canonicalPath());
        hands::keyClick(dialog, Qt::Key_Escape);
    });
    click(child<QPushButton>("chooseDir"));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestSeriesExportPage::keepsTheDirectoryWhenNoneIsChosen()
{
    openUsual();
    for (const QString& shown : {QString(), QStringLiteral("/tmp")}) {
        type("outputDir", shown);
        ModalSteps steps;
        steps.on<QFileDialog>([](QFileDialog* dialog) { hands::keyClick(dialog, Qt::Key_Escape); });
        click(child<QPushButton>("chooseDir"));
        QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
        QCOMPARE(text("outputDir"), shown);
    }
}

// Whatever the terminal's language: it is the user's calendar on the wall that counts.
void TestSeriesExportPage::theWeekBeginsAsTheSystemSays()
{
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    const Qt::DayOfWeek first = QLocale::system().firstDayOfWeek();
    const QLocale other(first == Qt::Monday ? "en_US" : "ru_RU");
    QVERIFY(other.firstDayOfWeek() != first);
    QLocale::setDefault(other);
    openUsual();
    for (const char* name : {"dateFrom", "dateTo"})
        QCOMPARE(child<QDateEdit>(name)->calendarWidget()->firstDayOfWeek(), first);
}

void TestSeriesExportPage::takesADateAsItIsTyped_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QByteArray>("typed");
    QTest::newRow("Russian") << "ru_RU" << QByteArray("05032024");
    QTest::newRow("English") << "en_US" << QByteArray("03052024");
}

// In a wizard, which looks at the page with every digit.
void TestSeriesExportPage::takesADateAsItIsTyped()
{
    QFETCH(const QString, locale);
    QFETCH(const QByteArray, typed);
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(locale));
    QWizard wizard;
    auto* const page = new SeriesExportPage;
    wizard.addPage(page);
    wizard.show();
    QVERIFY(QTest::qWaitForWindowActive(&wizard));
    auto* const edit = testsupport::child<QDateEdit>(page, "dateFrom");
    edit->setFocus(Qt::TabFocusReason);
    edit->setSelectedSection(edit->sectionAt(0));
    for (const char digit : typed)
        hands::keyClick(edit, digit);
    QCOMPARE(edit->date(), QDate(2024, 3, 5));
}

void TestSeriesExportPage::datesAreInTheLanguageOfTheTerminal_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("month");
    QTest::addColumn<QString>("friday");
    QTest::newRow("Russian") << "ru_RU"
                             << "05.03.2024" << QStringLiteral("март") << QStringLiteral("пт");
    QTest::newRow("English") << "en_US"
                             << "03/05/2024"
                             << "March"
                             << "Fri";
    QTest::newRow("English of the island") << "en_GB"
                                           << "05/03/2024"
                                           << "March"
                                           << "Fri";
}

void TestSeriesExportPage::datesAreInTheLanguageOfTheTerminal()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, friday);
    const QLocale before;
    const auto restore = qScopeGuard([&before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(locale));
    openUsual();
    for (const char* name : {"dateFrom", "dateTo"}) {
        auto* const edit = child<QDateEdit>(name);
        edit->setDate(QDate(2024, 3, 5));
        QTEST(edit->text(), "text");
        const QCalendarWidget* const calendar = edit->calendarWidget();
        const auto* const month =
            testsupport::child<QToolButton>(calendar, "qt_calendar_monthbutton");
        QTEST(month->text(), "month");
        const auto* const days =
            testsupport::child<QTableView>(calendar, "qt_calendar_calendarview");
        QStringList names;
        for (int column = 0; column < days->model()->columnCount(); ++column)
            names.append(days->model()->index(0, column).data().toString());
        QVERIFY2(names.contains(friday), qPrintable(names.join(u' ')));
    }
}

void TestSeriesExportPage::beginsWithNothingChosen()
{
    vexdesk::ReferenceData data = vexdesk::ReferenceData::demonstration();
    data.stocks.removeIf([](const vexdesk::Stock& stock) { return stock.code != u"NORD"; });
    vexdesk::ReferenceData::install(data);
    open({"NORD/MAIN/GRAN", "ORIENT/FX/USDJPY"});
    QCOMPARE(child<QComboBox>("stock")->count(), 2);
    QCOMPARE(child<QComboBox>("stock")->currentIndex(), -1);
}

QTEST_MAIN(TestSeriesExportPage)
#include "tst_seriesexportpage.moc"
