// SPDX-License-Identifier: MIT
#include "editortadatamodel.h"

#include "support/dayfiles.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/markingtranslator.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <QtCore/QLocale>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <algorithm>
#include <functional>
#include <memory>

using testsupport::barLine;
using testsupport::barLines;
using testsupport::dayFile;
using testsupport::editedBarLine;
using testsupport::editedBarLines;

using Tree = QMap<QString, QByteArray>;

namespace {

constexpr int columns = 8;
const QDate day(2023, 1, 5);

QStringList rowTexts(const QAbstractItemModel& model, int row)
{
    QStringList texts;
    for (int column = 0; column < columns; ++column)
        texts.append(model.index(row, column, QModelIndex()).data().toString());
    return texts;
}

// Each bar has an open price of its own.
QStringList openPrices(const QAbstractItemModel& model)
{
    QStringList prices;
    for (int row = 0; row < model.rowCount(); ++row)
        prices.append(rowTexts(model, row).at(1));
    return prices;
}

QStringList openPricesOf(std::initializer_list<int> numbers)
{
    QStringList prices;
    for (const int number : numbers)
        prices.append(QStringLiteral("%1.10").arg(number));
    return prices;
}

// The day files that sentences for the user tell of, one for each.
QStringList filesOf(const QStringList& problems)
{
    static const QRegularExpression file(QStringLiteral("/([0-9]{8}_[0-9]+\\.iss)[ :]"));
    QStringList names;
    for (const QString& problem : problems)
        names.append(file.match(problem).captured(1));
    return names;
}

} // namespace

class TestEditorTADataModel final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isEmptyAtFirst();
    void namesItsColumns();
    void translatesTheNamesOfItsColumns();
    void leavesOtherHeadersToTheBaseClass();
    void isAFlatTable();
    void showsNothingButText();
    void givesNoTextForAnIndexThatIsNone();
    void letsRowsBeSelectedOnly();

    void showsTheFieldsAsTheyAre();
    void showsTheTimeInTheShortNotation_data();
    void showsTheTimeInTheShortNotation();
    void showsTheRangeWithBothEnds_data();
    void showsTheRangeWithBothEnds();
    void showsTheDaysThatExistInTheirOrder();
    void showsOneTimeframe();
    void showsTheWholeOfTheDaysBetween();
    void leavesOutTheLastSecondsOfADay();
    void showsOtherLinesAsBlankRows_data();
    void showsOtherLinesAsBlankRows();
    void leavesOutOtherLinesBeforeTheRange();
    void takesAnUnreadableTimeForMidnight_data();
    void takesAnUnreadableTimeForMidnight();
    void takesAMarkWithinTheTextForText();
    void stopsAtTheFirstLineAfterTheRange();
    void readsForeignLineEnds_data();
    void readsForeignLineEnds();
    void readsOtherCharacters();
    void passesOverWhatIsNoFile();
    void passesOverAMissingDirectory();
    void loadingReplacesWhatWasShown();

    void findsTheRowAtOrBefore_data();
    void findsTheRowAtOrBefore();
    void findsTheFirstRowOfNone();
    void findsTheLastOfEqualTimes();

    void removesRowsFromTheLastToTheFirst();
    void removesARowForEachTimeItsNumberIsGiven();
    void ignoresNumbersOutsideTheTable();
    void removesNoRowOfAnEmptyList();
    void removingLeavesTheFilesAlone();
    void keepsTheOtherRowsWhicheverAreRemoved();

    void rewritesWithValueBeforeVolume();
    void rewritesEveryFileOfTheRange();
    void rewritingDropsWhatTheRangeLeftOut();
    void rewritingDropsWhatFollowsTheStop();
    void rewritingDropsBlankRows();
    void rewritingRemovesEmptiedFiles();
    void rewritingKeepsOtherFiles();
    void rewritesTheTimeThatWasUnderstood();
    void rewritesWithPlainLineEnds();
    void rewritingMakesNoFileThatHasGone();
    void rewritingSurvivesTheDirectory();
    void rewritingLeavesADirectoryAlone();
    void rewritingLeavesAReadOnlyFileAlone();
    void rewritingLeavesAChangedFileAlone_data();
    void rewritingLeavesAChangedFileAlone();
    void rewritingLeavesANewFileAlone();
    void rewritingTellsOfAFileThatHasGone();
    void rewritingLeavesAFileAloneThatWasNotOpened();
    void leavesADayAloneThatItCouldNotRead_data();
    void leavesADayAloneThatItCouldNotRead();
    void showsNothingOfAFileThatIsWrittenMeanwhile();
    void aStopAtTheEndOfTheRangeIsNoError();
    void tellsEachProblemOnce();
    void rewritesEachOfManyDays();
    void forgetsTheRowsAfterARewrite();
    void rewritesOnlyOnce();
    void rewritesNothingOfAReversedRange();
    void rewritesWhatWasLoadedLast();

private:
    QString path(const QString& name) const { return m_store->filePath(name); }
    void write(const QDate& date, const QByteArray& content, int timeframe = 60) const
    {
        testsupport::writeFile(path(dayFile(date, timeframe)), content);
    }
    Tree stored() const { return testsupport::readTree(QDir(m_store->path())); }
    void load(const QDateTime& from, const QDateTime& to, int timeframe = 60)
    {
        m_model->load(QDir(m_store->path()), from, to, timeframe);
    }
    void load(const QTime& from, const QTime& to)
    {
        load(QDateTime(day, from), QDateTime(day, to));
    }
    void becomeOtherUser(); ///< with a store of his own
    void loadDay() { load(QTime(0, 0), QTime(23, 59, 59)); }

    std::unique_ptr<testsupport::OtherUser> m_otherUser;
    std::unique_ptr<QTemporaryDir> m_store;
    std::unique_ptr<EditorTADataModel> m_model;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

void TestEditorTADataModel::init()
{
    testsupport::failOnStrayWarnings();
    m_store = std::make_unique<QTemporaryDir>();
    QVERIFY(m_store->isValid());
    m_model = std::make_unique<EditorTADataModel>(nullptr);
    m_tester = std::make_unique<QAbstractItemModelTester>(
        m_model.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
}

void TestEditorTADataModel::cleanup()
{
    m_tester.reset();
    m_model.reset();
    m_store.reset();
    m_otherUser.reset();
}

void TestEditorTADataModel::becomeOtherUser()
{
    m_store.reset();
    m_otherUser = std::make_unique<testsupport::OtherUser>();
    m_store = std::make_unique<QTemporaryDir>();
}

void TestEditorTADataModel::isEmptyAtFirst()
{
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), columns);
    QVERIFY(!m_model->index(0, 0).isValid());
    QVERIFY(!EditorTADataModel().QObject::parent());
    QObject owner;
    QCOMPARE((new EditorTADataModel(&owner))->parent(), &owner);
}

void TestEditorTADataModel::namesItsColumns()
{
    QStringList titles;
    for (int column = 0; column < m_model->columnCount(); ++column)
        titles.append(m_model->headerData(column, Qt::Horizontal).toString());
    QCOMPARE(titles, QStringList({"Время", "Открытие", "Максимум", "Минимум", "Закрытие",
                                  "Объём в шт.", "Объём в деньгах", "Откр. интерес"}));
}

void TestEditorTADataModel::translatesTheNamesOfItsColumns()
{
    const testsupport::MarkingTranslator translator;
    for (int column = 0; column < columns; ++column) {
        const QString title = m_model->headerData(column, Qt::Horizontal).toString();
        QVERIFY2(title.startsWith("EditorTADataModel|"), qPrintable(title));
    }
}

void TestEditorTADataModel::leavesOtherHeadersToTheBaseClass()
{
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    QCOMPARE(m_model->headerData(0, Qt::Vertical), QVariant(1));
    QCOMPARE(m_model->headerData(2, Qt::Vertical), QVariant(3));
    QCOMPARE(m_model->headerData(columns, Qt::Horizontal), QVariant(columns + 1));
    QCOMPARE(m_model->headerData(-1, Qt::Horizontal), QVariant(0));
    for (const int role :
         {Qt::EditRole, Qt::ToolTipRole, Qt::DecorationRole, Qt::TextAlignmentRole, Qt::UserRole}) {
        QVERIFY(!m_model->headerData(0, Qt::Horizontal, role).isValid());
        QVERIFY(!m_model->headerData(0, Qt::Vertical, role).isValid());
    }
}

void TestEditorTADataModel::isAFlatTable()
{
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    QCOMPARE(m_model->rowCount(), 3);
    QCOMPARE(m_model->columnCount(), columns);
    const QModelIndex cell = m_model->index(2, columns - 1);
    QVERIFY(cell.isValid());
    QCOMPARE(cell.row(), 2);
    QCOMPARE(cell.column(), columns - 1);
    QCOMPARE(cell.internalPointer(), static_cast<void*>(nullptr));
    QVERIFY(!m_model->parent(cell).isValid());
    QVERIFY(!m_model->parent(QModelIndex()).isValid());

    QCOMPARE(m_model->rowCount(cell), 0);
    QCOMPARE(m_model->columnCount(cell), 0);
    QVERIFY(!m_model->index(0, 0, cell).isValid());
    for (const auto& [row, column] : {std::pair(3, 0), {0, columns}, {-1, 0}, {0, -1}, {3, 8}})
        QVERIFY(!m_model->index(row, column).isValid());
}

void TestEditorTADataModel::showsNothingButText()
{
    write(day, barLines(QTime(10, 0), 1));
    loadDay();
    for (int role = 0; role < Qt::UserRole + 8; ++role) {
        for (int column = 0; column < columns; ++column) {
            const QVariant data = m_model->data(m_model->index(0, column), role);
            QCOMPARE(data.isValid(), role == Qt::DisplayRole);
            if (data.isValid())
                QCOMPARE(data.typeId(), int(QMetaType::QString));
        }
    }
}

void TestEditorTADataModel::givesNoTextForAnIndexThatIsNone()
{
    QVERIFY(!m_model->data(QModelIndex()).isValid());
    write(day, barLines(QTime(10, 0), 2));
    loadDay();
    const QModelIndex last = m_model->index(1, 0);
    QVERIFY(m_model->data(last).isValid());
    m_model->delRows({1});
    QVERIFY(!m_model->data(last).isValid());
    m_model->delRowsFromFiles();
    QVERIFY(!m_model->data(last).isValid());
}

void TestEditorTADataModel::letsRowsBeSelectedOnly()
{
    write(day, barLines(QTime(10, 0), 1) + "1\n");
    load(QTime(0, 0), QTime(23, 0));
    QCOMPARE(m_model->flags(QModelIndex()), Qt::ItemFlags(Qt::NoItemFlags));
    for (int column = 0; column < columns; ++column) {
        QCOMPARE(m_model->flags(m_model->index(0, column)),
                 Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    }
    QVERIFY(!m_model->setData(m_model->index(0, 1), QStringLiteral("2"), Qt::EditRole));
}

void TestEditorTADataModel::showsTheFieldsAsTheyAre()
{
    write(day, "101500;1.50;+1.7;.5; 1,6 ;12x;3e2;-0\n"
               "101600;;;;;;;\n");
    loadDay();
    QCOMPARE(m_model->rowCount(), 2);
    const QString time = QLocale().toString(QDateTime(day, QTime(10, 15)), QLocale::ShortFormat);
    QCOMPARE(rowTexts(*m_model, 0),
             QStringList({time, "1.50", "+1.7", ".5", " 1,6 ", "12x", "3e2", "-0"}));
    QCOMPARE(rowTexts(*m_model, 1).mid(1), QStringList(7, QString()));
}

void TestEditorTADataModel::showsTheTimeInTheShortNotation_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("Russian") << QLocale(QStringLiteral("ru_RU"));
    QTest::newRow("English") << QLocale(QStringLiteral("en_US"));
    QTest::newRow("German") << QLocale(QStringLiteral("de_DE"));
    QTest::newRow("Arabic") << QLocale(QStringLiteral("ar_EG"));
    QTest::newRow("C") << QLocale::c();
}

void TestEditorTADataModel::showsTheTimeInTheShortNotation()
{
    QFETCH(const QLocale, locale);
    const auto restore = qScopeGuard([before = QLocale()] { QLocale::setDefault(before); });
    QLocale::setDefault(locale);
    const QTime times[] = {QTime(0, 0), QTime(9, 5, 7), QTime(12, 0), QTime(23, 59, 59)};
    QByteArray content;
    for (const QTime& time : times)
        content += barLine(time, 1);
    write(day, content);
    loadDay();
    QCOMPARE(m_model->rowCount(), 4);
    for (int row = 0; row < 4; ++row) {
        QCOMPARE(m_model->index(row, 0).data().toString(),
                 locale.toString(QDateTime(day, times[row]), QLocale::ShortFormat));
    }
    if (locale.language() == QLocale::Russian)
        QCOMPARE(m_model->index(1, 0).data().toString(), QStringLiteral("05.01.2023 09:05"));
}

void TestEditorTADataModel::showsTheRangeWithBothEnds_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<QDateTime>("to");
    QTest::addColumn<QStringList>("shown");
    const auto at = [](int hour, int minute, int second = 0, int ms = 0) {
        return QDateTime(day, QTime(hour, minute, second, ms));
    };
    const auto row = [](const char* name, const QDateTime& from, const QDateTime& to,
                        std::initializer_list<int> numbers) {
        QTest::newRow(name) << from << to << openPricesOf(numbers);
    };
    row("all", at(0, 0), at(23, 59), {1, 2, 3, 4, 5});
    row("at the bars", at(10, 1), at(10, 3), {2, 3, 4});
    row("between the bars", at(10, 0, 1), at(10, 3, 59), {2, 3, 4});
    row("a thousandth too narrow", at(10, 1, 0, 1), at(10, 2, 59, 999), {3});
    row("a thousandth wider", at(10, 0, 59, 999), at(10, 3, 0, 1), {2, 3, 4});
    row("one moment", at(10, 2), at(10, 2), {3});
    row("one moment without a bar", at(10, 2, 30), at(10, 2, 30), {});
    row("before all", at(8, 0), at(9, 59, 59), {});
    row("after all", at(10, 4, 1), at(23, 0), {});
    row("reversed within the day", at(10, 3), at(10, 1), {});
    row("reversed days", at(10, 0).addDays(1), at(10, 3), {});
    row("from the day before", at(12, 0).addDays(-1), at(10, 1), {1, 2});
    row("to the day after", at(10, 3), at(0, 0).addDays(1), {4, 5});
    row("to midnight", at(10, 0).addDays(-1), at(0, 0), {});
    row("all of many years", QDateTime(QDate(1900, 1, 1), QTime(0, 0)),
        QDateTime(QDate(2900, 1, 1), QTime(0, 0)), {1, 2, 3, 4, 5});
    row("no begin", QDateTime(), at(23, 0), {});
    row("no end", at(0, 0), QDateTime(), {});
}

void TestEditorTADataModel::showsTheRangeWithBothEnds()
{
    QFETCH(const QDateTime, from);
    QFETCH(const QDateTime, to);
    write(day, barLines(QTime(10, 0), 5));
    load(from, to);
    QTEST(openPrices(*m_model), "shown");
}

void TestEditorTADataModel::showsTheDaysThatExistInTheirOrder()
{
    write(day.addDays(3), barLines(QTime(9, 0), 1, 30));
    write(day, barLines(QTime(10, 0), 2, 1));
    write(day.addDays(7), barLines(QTime(8, 0), 2, 70));
    write(day.addDays(1), "");
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(9), QTime(0, 0)));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 2, 30, 70, 71}));
}

void TestEditorTADataModel::showsOneTimeframe()
{
    write(day, barLines(QTime(10, 0), 1, 60), 60);
    write(day, barLines(QTime(10, 0), 1, 10), 1);
    testsupport::writeFile(path(QStringLiteral("20230105_60")), barLine(QTime(10, 0), 3));
    const QDateTime from(day, QTime(0, 0));
    load(from, from.addDays(1), 60);
    QCOMPARE(openPrices(*m_model), openPricesOf({60}));
    load(from, from.addDays(1), 1);
    QCOMPARE(openPrices(*m_model), openPricesOf({10}));
    load(from, from.addDays(1), 5);
    QCOMPARE(m_model->rowCount(), 0);
}

// The times of the range count on its first and its last day only.
void TestEditorTADataModel::showsTheWholeOfTheDaysBetween()
{
    for (int i = 0; i < 3; ++i)
        write(day.addDays(i),
              barLine(QTime(0, 0), 10 * i) + barLine(QTime(23, 59, 59), 10 * i + 1));
    load(QDateTime(day, QTime(12, 0)), QDateTime(day.addDays(2), QTime(11, 0)));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 10, 11, 20}));
}

void TestEditorTADataModel::leavesOutTheLastSecondsOfADay()
{
    write(day, barLine(QTime(0, 0), 1) + barLine(QTime(23, 58, 59), 2) +
                   barLine(QTime(23, 59, 58), 3) + barLine(QTime(23, 59, 59), 4));
    for (const auto& [to, count] :
         {std::pair(QTime(23, 58, 59), 2), {QTime(23, 59, 58), 3}, {QTime(23, 59, 59), 4}}) {
        load(QTime(0, 0), to);
        QCOMPARE(m_model->rowCount(), count);
    }
    load(QTime(0, 0, 1), QTime(23, 59, 59));
    QCOMPARE(openPrices(*m_model), openPricesOf({2, 3, 4}));
}

void TestEditorTADataModel::showsOtherLinesAsBlankRows_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("one") << QByteArray("100000");
    QTest::newRow("five") << QByteArray("100000;1;1;1;1");
    QTest::newRow("six") << QByteArray("100000;1;1;1;1;5");
    QTest::newRow("seven") << QByteArray("100000;1;1;1;1;5;5");
    QTest::newRow("nine") << QByteArray("100000;1;1;1;1;5;5;5;");
    QTest::newRow("twenty") << QByteArray("100000") + QByteArray(19, ';');
    QTest::newRow("comma") << QByteArray("100000,1,1,1,1,5,5,5");
    QTest::newRow("carriage return") << QByteArray("\r");
}

void TestEditorTADataModel::showsOtherLinesAsBlankRows()
{
    QFETCH(const QByteArray, line);
    write(day, barLine(QTime(10, 0), 1) + line + '\n' + barLine(QTime(10, 1), 2));
    loadDay();
    QCOMPARE(m_model->rowCount(), 3);
    QCOMPARE(rowTexts(*m_model, 1), QStringList(columns, QString()));
    QVERIFY(m_model->index(1, 0).data().isValid());
    QCOMPARE(openPrices(*m_model), QStringList({"1.10", "", "2.10"}));
}

// A time that cannot be read is the day's midnight.
void TestEditorTADataModel::leavesOutOtherLinesBeforeTheRange()
{
    write(day, barLine(QTime(10, 0), 1) + "\n100030;1;1;1;1\n095959;1;1;1;1\nx;1\n" +
                   barLine(QTime(10, 1), 2));
    load(QTime(10, 0), QTime(11, 0));
    QCOMPARE(openPrices(*m_model), QStringList({"1.10", "", "2.10"}));
}

void TestEditorTADataModel::takesAnUnreadableTimeForMidnight_data()
{
    QTest::addColumn<QByteArray>("time");
    for (const char* time : {"", "abcdef", "240000", "126000", "120060", "12:00:00", "12000",
                             "1200000", "-12000", "12000x", " 120000", "120000 ", "Ёлка"})
        QTest::newRow(time) << QByteArray(time);
}

void TestEditorTADataModel::takesAnUnreadableTimeForMidnight()
{
    QFETCH(const QByteArray, time);
    // What the toolkit reads in spite of all is a time.
    if (QTime::fromString(QString::fromUtf8(time), QStringLiteral("hhmmss")).isValid())
        QSKIP("This version of the toolkit reads it.");
    write(day, time + ";7.10;1;1;1;1;1;1\n" + barLine(QTime(10, 0), 1));
    load(QTime(0, 0, 1), QTime(23, 0));
    QCOMPARE(openPrices(*m_model), openPricesOf({1}));
    loadDay();
    QCOMPARE(openPrices(*m_model), openPricesOf({7, 1}));
    QCOMPARE(m_model->index(0, 0).data().toString(),
             QLocale().toString(QDateTime(day, QTime(0, 0)), QLocale::ShortFormat));
}

// Two files that each began with a mark, one behind the other: the second mark is no part of a
// time.
void TestEditorTADataModel::takesAMarkWithinTheTextForText()
{
    const QByteArray mark = "\xef\xbb\xbf";
    write(day, mark + barLine(QTime(10, 0), 1) + mark + barLine(QTime(10, 1), 2));
    loadDay();
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 2}));
    QCOMPARE(m_model->index(1, 0).data().toString(),
             QLocale().toString(QDateTime(day, QTime(0, 0)), QLocale::ShortFormat));
    load(QTime(0, 0, 1), QTime(23, 0));
    QCOMPARE(openPrices(*m_model), openPricesOf({1}));
    // Nor is it lost from a field that begins with it.
    write(day, "100000;" + mark + "1;1;1;1;1;1;1\n");
    loadDay();
    QCOMPARE(openPrices(*m_model), QStringList(QChar(QChar::ByteOrderMark) + QStringLiteral("1")));
}

void TestEditorTADataModel::stopsAtTheFirstLineAfterTheRange()
{
    write(day, barLine(QTime(10, 5), 1) + barLine(QTime(10, 1), 2) + barLine(QTime(11, 1), 3) +
                   barLine(QTime(10, 2), 4));
    write(day.addDays(1), barLine(QTime(9, 0), 5));
    load(QTime(10, 0), QTime(11, 0));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 2}));
    // A line before the range stops nothing, and other days are read on.
    load(QDateTime(day, QTime(10, 2)), QDateTime(day.addDays(1), QTime(9, 0)));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 3, 4, 5}));
}

void TestEditorTADataModel::readsForeignLineEnds_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray plain = barLines(QTime(10, 0), 2);
    QTest::newRow("carriage returns") << QByteArray(plain).replace("\n", "\r\n");
    QTest::newRow("no last end") << plain.chopped(1);
    QTest::newRow("carriage return as the last end") << plain.chopped(1) + "\r";
    QTest::newRow("byte-order mark") << "\xef\xbb\xbf" + plain;
}

void TestEditorTADataModel::readsForeignLineEnds()
{
    QFETCH(const QByteArray, content);
    write(day, content);
    load(QTime(10, 0), QTime(10, 1));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 2}));
    QCOMPARE(rowTexts(*m_model, 0).last(), QStringLiteral("1"));
    QCOMPARE(rowTexts(*m_model, 1).last(), QStringLiteral("2"));
}

void TestEditorTADataModel::readsOtherCharacters()
{
    write(day, barLine(QTime(10, 0), 1) + "100100;цена;1;1;1;1;1;😀\n");
    loadDay();
    QCOMPARE(rowTexts(*m_model, 1).mid(1), QStringList({"цена", "1", "1", "1", "1", "1", "😀"}));
    m_model->delRowsFromFiles();
    QCOMPARE(stored(),
             Tree({{dayFile(day), editedBarLine(QTime(10, 0), 1) + "100100;цена;1;1;1;1;1;😀\n"}}));
}

void TestEditorTADataModel::passesOverWhatIsNoFile()
{
    write(day, barLine(QTime(10, 0), 1));
    QVERIFY(QDir().mkdir(path(dayFile(day.addDays(1)))));
    // To open it would be to wait for somebody who writes.
    const QByteArray pipe = QFile::encodeName(path(dayFile(day.addDays(2))));
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(QFile::link(path(QStringLiteral("gone")), path(dayFile(day.addDays(3)))));
    write(day.addDays(4), barLine(QTime(10, 0), 5));
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(9), QTime(0, 0)));
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 5}));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QVERIFY(QFileInfo(path(dayFile(day.addDays(1)))).isDir());
    QVERIFY(QFileInfo::exists(QFile::decodeName(pipe)));
    QCOMPARE(testsupport::readFile(path(dayFile(day.addDays(4)))), editedBarLine(QTime(10, 0), 5));
}

void TestEditorTADataModel::passesOverAMissingDirectory()
{
    const QDir missing(path(QStringLiteral("missing")));
    m_model->load(missing, QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 0)), 60);
    QCOMPARE(m_model->rowCount(), 0);
    m_model->delRowsFromFiles();
    QVERIFY(!missing.exists());
}

void TestEditorTADataModel::loadingReplacesWhatWasShown()
{
    const QByteArray words = "100500;1;high;1;1;1;1;1\n";
    write(day, barLines(QTime(10, 0), 3) + words);
    write(day.addDays(1), barLines(QTime(10, 0), 2, 10));
    loadDay();
    QCOMPARE(m_model->rowsOfText(), std::vector<int>{3});
    m_model->delRows({0, 3});
    QSignalSpy begun(m_model.get(), &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy ended(m_model.get(), &QAbstractItemModel::modelReset);
    load(QDateTime(day.addDays(1), QTime(0, 0)), QDateTime(day.addDays(1), QTime(23, 0)));
    QCOMPARE(begun.size(), 1);
    QCOMPARE(ended.size(), 1);
    QCOMPARE(openPrices(*m_model), openPricesOf({10, 11}));
    QCOMPARE(m_model->rowsOfText(), std::vector<int>());
    loadDay();
    QCOMPARE(openPrices(*m_model).first(3), openPricesOf({1, 2, 3}));
    QCOMPARE(m_model->rowsOfText(), std::vector<int>{3});
}

void TestEditorTADataModel::findsTheRowAtOrBefore_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("row");
    QTest::newRow("first") << QStringLiteral("20230105 100000") << 0;
    QTest::newRow("second") << QStringLiteral("20230105 100100") << 1;
    QTest::newRow("last of the day") << QStringLiteral("20230105 100400") << 4;
    QTest::newRow("last of all") << QStringLiteral("20230107 100200") << 7;
    QTest::newRow("between") << QStringLiteral("20230105 100259") << 2;
    QTest::newRow("between days") << QStringLiteral("20230106 120000") << 4;
    QTest::newRow("just before a day") << QStringLiteral("20230107 095959") << 4;
    QTest::newRow("before all") << QStringLiteral("20230105 095959") << 0;
    QTest::newRow("long before all") << QStringLiteral("19000101 000000") << 0;
    QTest::newRow("after all") << QStringLiteral("20230107 100201") << 7;
    QTest::newRow("long after all") << QStringLiteral("99991231 235959") << 7;
    QTest::newRow("nothing") << QString() << 0;
    QTest::newRow("day alone") << QStringLiteral("20230107") << 4;
    QTest::newRow("words") << QStringLiteral("x") << 7;
}

void TestEditorTADataModel::findsTheRowAtOrBefore()
{
    QFETCH(const QString, key);
    write(day, barLines(QTime(10, 0), 5));
    write(day.addDays(2), barLines(QTime(10, 0), 3));
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(3), QTime(0, 0)));
    QTEST(m_model->find(key), "row");
}

void TestEditorTADataModel::findsTheFirstRowOfNone()
{
    QCOMPARE(m_model->find(QStringLiteral("20230105 100000")), 0);
    QCOMPARE(m_model->find(QString()), 0);
    write(day, barLine(QTime(10, 0), 1));
    loadDay();
    for (const char* key : {"20230105 095959", "20230105 100000", "20230105 100001"})
        QCOMPARE(m_model->find(QLatin1String(key)), 0);
    m_model->delRows({0});
    QCOMPARE(m_model->find(QStringLiteral("20230105 100000")), 0);
    m_model->delRowsFromFiles();
    QCOMPARE(m_model->find(QStringLiteral("20230105 100000")), 0);
}

void TestEditorTADataModel::findsTheLastOfEqualTimes()
{
    QByteArray content = barLine(QTime(10, 0), 1);
    for (int number = 2; number < 7; ++number)
        content += barLine(QTime(10, 1), number);
    write(day, content + barLine(QTime(10, 2), 7));
    loadDay();
    QCOMPARE(m_model->find(QStringLiteral("20230105 100100")), 5);
    QCOMPARE(m_model->find(QStringLiteral("20230105 100101")), 5);
    QCOMPARE(m_model->find(QStringLiteral("20230105 100059")), 0);
}

void TestEditorTADataModel::removesRowsFromTheLastToTheFirst()
{
    write(day, barLines(QTime(10, 0), 7));
    loadDay();
    QStringList begun;
    const auto note = [this, &begun](const QModelIndex& parent, int first, int last) {
        begun.append(QStringLiteral("%1-%2 of %3, parent %4")
                         .arg(first)
                         .arg(last)
                         .arg(m_model->rowCount())
                         .arg(parent.isValid()));
    };
    connect(m_model.get(), &QAbstractItemModel::rowsAboutToBeRemoved, this, note);
    connect(m_model.get(), &QAbstractItemModel::rowsRemoved, this, note);
    QSignalSpy reset(m_model.get(), &QAbstractItemModel::modelReset);
    m_model->delRows({2, 0, 5});
    QCOMPARE(begun,
             QStringList({"5-5 of 7, parent 0", "5-5 of 6, parent 0", "2-2 of 6, parent 0",
                          "2-2 of 5, parent 0", "0-0 of 5, parent 0", "0-0 of 4, parent 0"}));
    QVERIFY(reset.isEmpty());
    QCOMPARE(openPrices(*m_model), openPricesOf({2, 4, 5, 7}));
}

void TestEditorTADataModel::removesARowForEachTimeItsNumberIsGiven()
{
    write(day, barLines(QTime(10, 0), 5));
    loadDay();
    m_model->delRows({1, 1});
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 4, 5}));
}

void TestEditorTADataModel::ignoresNumbersOutsideTheTable()
{
    m_model->delRows({0, -1, 7});
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    QSignalSpy removed(m_model.get(), &QAbstractItemModel::rowsRemoved);
    m_model->delRows({-1, 3, 1, 2'147'483'647, -2'147'483'647 - 1});
    QCOMPARE(removed.size(), 1);
    QCOMPARE(openPrices(*m_model), openPricesOf({1, 3}));
    // The second time, the row is no longer there.
    m_model->delRows({1, 1});
    QCOMPARE(openPrices(*m_model), openPricesOf({1}));
}

void TestEditorTADataModel::removesNoRowOfAnEmptyList()
{
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    QSignalSpy removed(m_model.get(), &QAbstractItemModel::rowsRemoved);
    m_model->delRows({});
    QVERIFY(removed.isEmpty());
    QCOMPARE(m_model->rowCount(), 3);
}

void TestEditorTADataModel::removingLeavesTheFilesAlone()
{
    write(day, barLines(QTime(10, 0), 3));
    const Tree before = stored();
    loadDay();
    m_model->delRows({0, 1, 2});
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(stored(), before);
    // Nor does loading another range write what is pending: that is the caller's to decide.
    loadDay();
    QCOMPARE(m_model->rowCount(), 3);
    QCOMPARE(stored(), before);
}

// Rows are removed above, below and in the midst of where rows were removed before.
void TestEditorTADataModel::keepsTheOtherRowsWhicheverAreRemoved()
{
    m_tester.reset();
    QRandomGenerator random(20230105);
    for (int time = 0; time < 50; ++time) {
        const int count = 1 + static_cast<int>(random.bounded(60));
        write(day, barLines(QTime(10, 0), count));
        loadDay();
        QStringList expected = openPrices(*m_model);
        while (!expected.isEmpty()) {
            QList<int> rows;
            for (quint32 i = random.bounded(5U) + 1; i > 0; --i) {
                const int row = static_cast<int>(random.bounded(expected.size()));
                if (!rows.contains(row))
                    rows.append(row);
            }
            m_model->delRows(rows);
            std::sort(rows.begin(), rows.end(), std::greater<>());
            for (const int row : std::as_const(rows))
                expected.removeAt(row);
            QCOMPARE(openPrices(*m_model), expected);
        }
    }
}

void TestEditorTADataModel::rewritesWithValueBeforeVolume()
{
    write(day, "101500;1.50;1.70;1.40;1.60;12;345.60;7\n101600; a;+b;c ;d;vol;val;oi\n");
    loadDay();
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), "101500;1.50;1.70;1.40;1.60;345.60;12;7\n"
                                            "101600; a;+b;c ;d;val;vol;oi\n"}}));
}

void TestEditorTADataModel::rewritesEveryFileOfTheRange()
{
    for (int i = 0; i < 3; ++i)
        write(day.addDays(i), barLines(QTime(10, 0), 3, 10 * i));
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(2), QTime(23, 0)));
    m_model->delRows({4});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 0), 3, 0)},
                             {dayFile(day.addDays(1)),
                              editedBarLine(QTime(10, 0), 10) + editedBarLine(QTime(10, 2), 12)},
                             {dayFile(day.addDays(2)), editedBarLines(QTime(10, 0), 3, 20)}}));
}

void TestEditorTADataModel::rewritingDropsWhatTheRangeLeftOut()
{
    for (int i = 0; i < 3; ++i)
        write(day.addDays(i), barLines(QTime(10, 0), 5, 10 * i + 1));
    load(QDateTime(day, QTime(10, 2)), QDateTime(day.addDays(2), QTime(10, 1)));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 3), 2, 4)},
                             {dayFile(day.addDays(1)), editedBarLines(QTime(10, 0), 5, 11)},
                             {dayFile(day.addDays(2)), editedBarLines(QTime(10, 0), 2, 21)}}));
}

void TestEditorTADataModel::rewritingDropsWhatFollowsTheStop()
{
    write(day, barLine(QTime(10, 0), 1) + barLine(QTime(12, 0), 2) + barLine(QTime(10, 30), 3));
    load(QTime(10, 0), QTime(11, 0));
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLine(QTime(10, 0), 1)}}));
}

void TestEditorTADataModel::rewritingDropsBlankRows()
{
    write(day, barLine(QTime(10, 0), 1) + "100030;1;1;1;1\n\n" + barLine(QTime(10, 1), 2));
    write(day.addDays(1), "\n\n");
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(23, 0)));
    QCOMPARE(m_model->rowCount(), 6);
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 0), 2)}}));
}

void TestEditorTADataModel::rewritingRemovesEmptiedFiles()
{
    write(day, barLines(QTime(10, 0), 2));
    write(day.addDays(1), barLines(QTime(10, 0), 1, 10));
    write(day.addDays(2), "");
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(2), QTime(23, 0)));
    m_model->delRows({0, 1});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day.addDays(1)), editedBarLines(QTime(10, 0), 1, 10)}}));
    QVERIFY(QDir(m_store->path()).exists());
}

void TestEditorTADataModel::rewritingKeepsOtherFiles()
{
    const Tree others{{dayFile(day.addDays(-1)), barLines(QTime(10, 0), 1)},
                      {dayFile(day.addDays(1)), barLines(QTime(10, 0), 1)},
                      {dayFile(day, 1), barLines(QTime(10, 0), 1)},
                      {QStringLiteral("20230105_60"), barLines(QTime(10, 0), 1)},
                      {QStringLiteral("20230105_60.iss.bak"), "anything"},
                      {QStringLiteral("below/20230105_60.iss"), barLines(QTime(10, 0), 1)}};
    for (auto other = others.cbegin(); other != others.cend(); ++other)
        testsupport::writeFile(path(other.key()), other.value());
    write(day, barLines(QTime(10, 0), 1));
    loadDay();
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), others);
}

void TestEditorTADataModel::rewritesTheTimeThatWasUnderstood()
{
    write(day, "no time;1;1;1;1;5;6;7\n" + barLine(QTime(10, 0), 1));
    loadDay();
    m_model->delRowsFromFiles();
    QCOMPARE(stored(),
             Tree({{dayFile(day), "000000;1;1;1;1;6;5;7\n" + editedBarLine(QTime(10, 0), 1)}}));
}

void TestEditorTADataModel::rewritesWithPlainLineEnds()
{
    write(day, "\xef\xbb\xbf" + barLines(QTime(10, 0), 2).replace("\n", "\r\n").chopped(2));
    loadDay();
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 0), 2)}}));
}

void TestEditorTADataModel::rewritingMakesNoFileThatHasGone()
{
    write(day, barLines(QTime(10, 0), 2));
    write(day.addDays(1), barLines(QTime(10, 0), 2, 10));
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(23, 0)));
    QVERIFY(QFile::remove(path(dayFile(day))));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day.addDays(1)), editedBarLines(QTime(10, 0), 2, 10)}}));
}

void TestEditorTADataModel::rewritingSurvivesTheDirectory()
{
    const QDir series(path(QStringLiteral("series")));
    testsupport::writeFile(series.filePath(dayFile(day)), barLines(QTime(10, 0), 2));
    m_model->load(series, QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(23, 0)), 60);
    m_model->delRows({0});
    QVERIFY(QDir(series).removeRecursively());
    m_model->delRowsFromFiles();
    QVERIFY(!series.exists());
    QCOMPARE(m_model->rowCount(), 0);
}

void TestEditorTADataModel::rewritingLeavesADirectoryAlone()
{
    write(day, barLines(QTime(10, 0), 2));
    loadDay();
    QVERIFY(QFile::remove(path(dayFile(day))));
    QVERIFY(QDir().mkdir(path(dayFile(day))));
    m_model->delRows({0, 1});
    m_model->delRowsFromFiles();
    QVERIFY(QFileInfo(path(dayFile(day))).isDir());
}

void TestEditorTADataModel::rewritingLeavesAReadOnlyFileAlone()
{
    becomeOtherUser();
    for (int i = 0; i < 3; ++i)
        write(day.addDays(i), barLines(QTime(10, 0), 2));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QFile::setPermissions(path(dayFile(day.addDays(i))),
                                      QFile::ReadOwner | QFile::ReadUser));
    }
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(2), QTime(23, 0)));
    m_model->delRows({0, 2, 3});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 2)},
                             {dayFile(day.addDays(1)), barLines(QTime(10, 0), 2)},
                             {dayFile(day.addDays(2)), editedBarLines(QTime(10, 0), 2)}}));
    QCOMPARE(filesOf(m_model->takeProblems()),
             QStringList({dayFile(day), dayFile(day.addDays(1))}));
}

void TestEditorTADataModel::rewritingLeavesAChangedFileAlone_data()
{
    QTest::addColumn<bool>("removed");
    QTest::addColumn<QByteArray>("how");
    for (const char* how : {"grown", "shrunk", "replaced"}) {
        QTest::addRow("%s, some rows removed", how) << false << QByteArray(how);
        QTest::addRow("%s, all rows removed", how) << true << QByteArray(how);
    }
}

// An import at the same time: what it has written must not go with what it replaced.
void TestEditorTADataModel::rewritingLeavesAChangedFileAlone()
{
    QFETCH(const bool, removed);
    QFETCH(const QByteArray, how);
    const QDate next = day.addDays(1);
    write(day, barLines(QTime(10, 0), 3));
    write(next, barLines(QTime(10, 0), 3, 11));
    load(QDateTime(day, QTime(0, 0)), QDateTime(next, QTime(23, 0)));
    QByteArray content = barLines(QTime(10, 0), how == "grown" ? 300 : 3, 11);
    if (how == "shrunk")
        content.chop(20);
    else if (how == "replaced")
        QVERIFY(QFile::rename(path(dayFile(next)), path(QStringLiteral("other"))));
    write(next, content);
    m_model->delRows(removed ? QList<int>{0, 3, 4, 5} : QList<int>{0, 3});
    m_model->delRowsFromFiles();
    QCOMPARE(testsupport::readFile(path(dayFile(day))), editedBarLines(QTime(10, 1), 2, 2));
    QCOMPARE(testsupport::readFile(path(dayFile(next))), content);
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(next)));
}

void TestEditorTADataModel::rewritingLeavesANewFileAlone()
{
    write(day, barLines(QTime(10, 0), 3));
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(2), QTime(23, 0)));
    write(day.addDays(2), barLines(QTime(10, 0), 3, 11));
    write(day.addDays(3), barLines(QTime(10, 0), 3, 21));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLines(QTime(10, 1), 2, 2)},
                             {dayFile(day.addDays(2)), barLines(QTime(10, 0), 3, 11)},
                             {dayFile(day.addDays(3)), barLines(QTime(10, 0), 3, 21)}}));
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day.addDays(2))));
}

void TestEditorTADataModel::rewritingTellsOfAFileThatHasGone()
{
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    QVERIFY(QFile::remove(path(dayFile(day))));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QVERIFY(stored().isEmpty());
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day)));
}

// It is passed over without a word, as a day without bars, until it is to be written.
void TestEditorTADataModel::rewritingLeavesAFileAloneThatWasNotOpened()
{
    becomeOtherUser();
    write(day, barLines(QTime(10, 0), 3));
    write(day.addDays(1), barLines(QTime(10, 0), 3, 11));
    {
        const testsupport::Permissions unreadable(path(dayFile(day)), 0200);
        load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(23, 0)));
    }
    QCOMPARE(openPrices(*m_model), openPricesOf({11, 12, 13}));
    QVERIFY(m_model->takeProblems().isEmpty());
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 3)},
                             {dayFile(day.addDays(1)), editedBarLines(QTime(10, 1), 2, 12)}}));
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day)));
}

void TestEditorTADataModel::leavesADayAloneThatItCouldNotRead_data()
{
    QTest::addColumn<QTime>("from");
    QTest::addColumn<int>("passed");
    // A whole day is read at once, a part of one block by block.
    QTest::newRow("at its begin") << QTime(0, 0) << 0;
    QTest::newRow("at its begin, a part") << QTime(0, 1) << 0;
    QTest::newRow("half-way, a part") << QTime(0, 1) << 1;
}

// Half a day must not look like a whole one, nor take its place.
void TestEditorTADataModel::leavesADayAloneThatItCouldNotRead()
{
    QFETCH(const QTime, from);
    QFETCH(const int, passed);
    QByteArray large;
    for (int number = 0; number < 20'000; ++number)
        large += barLine(QTime(1, 0).addSecs(number), number);
    write(day.addDays(-1), barLines(QTime(23, 58), 2, 1));
    write(day, large);
    write(day.addDays(1), barLines(QTime(10, 0), 2, 11));
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(day), EIO, passed);
        load(QDateTime(from == QTime(0, 0) ? day.addDays(-1) : day, from),
             QDateTime(day.addDays(1), QTime(23, 0)));
        QVERIFY(fault.failed() > 0);
    }
    const bool both = from == QTime(0, 0);
    QCOMPARE(openPrices(*m_model), both ? openPricesOf({1, 2, 11, 12}) : openPricesOf({11, 12}));
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day)));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QVERIFY(testsupport::readFile(path(dayFile(day))) == large);
    QCOMPARE(testsupport::readFile(path(dayFile(day.addDays(1)))),
             both ? editedBarLines(QTime(10, 0), 2, 11) : editedBarLines(QTime(10, 1), 1, 12));
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day)));
}

void TestEditorTADataModel::showsNothingOfAFileThatIsWrittenMeanwhile()
{
    write(day, barLines(QTime(10, 0), 3));
    const testsupport::Meanwhile meanwhile(testsupport::SystemCall::Read, dayFile(day), [this] {
        QFile file(path(dayFile(day)));
        QVERIFY(file.open(QIODevice::Append));
        QVERIFY(file.write(barLines(QTime(10, 3), 3, 4)) > 0);
    });
    loadDay();
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(filesOf(m_model->takeProblems()), QStringList(dayFile(day)));
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 6)}}));
}

void TestEditorTADataModel::aStopAtTheEndOfTheRangeIsNoError()
{
    QByteArray large;
    for (int number = 0; number < 20'000; ++number)
        large += barLine(QTime(1, 0).addSecs(number), number);
    write(day, large);
    {
        const testsupport::Fault fault(testsupport::SystemCall::Read, dayFile(day), EIO, 1);
        load(QTime(1, 0), QTime(1, 0, 1));
    }
    QCOMPARE(openPrices(*m_model), openPricesOf({0, 1}));
    m_model->delRows({0});
    m_model->delRowsFromFiles();
    QCOMPARE(m_model->takeProblems(), QStringList());
    QCOMPARE(stored(), Tree({{dayFile(day), editedBarLine(QTime(1, 0, 1), 1)}}));
}

void TestEditorTADataModel::tellsEachProblemOnce()
{
    QVERIFY(m_model->takeProblems().isEmpty());
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    write(day, barLines(QTime(10, 0), 4));
    m_model->delRowsFromFiles();
    const QStringList problems = m_model->takeProblems();
    QCOMPARE(problems.size(), 1);
    QVERIFY2(problems.first().contains(path(dayFile(day))), qPrintable(problems.first()));
    QVERIFY(m_model->takeProblems().isEmpty());
    m_model->delRowsFromFiles();
    QVERIFY(m_model->takeProblems().isEmpty());
}

// Each day is written from its own rows, wherever it stands among the others.
void TestEditorTADataModel::rewritesEachOfManyDays()
{
    constexpr int days = 300;
    Tree expected;
    QList<int> removed;
    for (int i = 0; i < days; ++i) {
        const QDate date = day.addDays(i + i / 5 * 2);
        write(date, barLines(QTime(10, 0), 3, 10 * i));
        // Of every third day the first bar goes, of every seventh all of them.
        if (i % 7 == 0)
            removed.append({3 * i, 3 * i + 1, 3 * i + 2});
        else if (i % 3 == 0)
            removed.append(3 * i);
        const int kept = i % 7 == 0 ? 0 : i % 3 == 0 ? 2 : 3;
        if (kept > 0) {
            expected.insert(dayFile(date),
                            editedBarLines(QTime(10, 3 - kept), kept, 10 * i + 3 - kept));
        }
    }
    load(QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(2 * days), QTime(0, 0)));
    m_model->delRows(removed);
    m_model->delRowsFromFiles();
    QCOMPARE(m_model->takeProblems(), QStringList());
    QCOMPARE(stored(), expected);
}

// No view goes on showing rows that are gone.
void TestEditorTADataModel::forgetsTheRowsAfterARewrite()
{
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    m_model->delRows({1});
    const QPersistentModelIndex kept(m_model->index(0, 0));
    QSignalSpy begun(m_model.get(), &QAbstractItemModel::modelAboutToBeReset);
    QSignalSpy ended(m_model.get(), &QAbstractItemModel::modelReset);
    m_model->delRowsFromFiles();
    QCOMPARE(m_model->rowCount(), 0);
    QCOMPARE(m_model->columnCount(), columns);
    QCOMPARE(begun.size(), 1);
    QCOMPARE(ended.size(), 1);
    QVERIFY(!kept.isValid());
}

void TestEditorTADataModel::rewritesOnlyOnce()
{
    m_model->delRowsFromFiles();
    write(day, barLines(QTime(10, 0), 3));
    loadDay();
    m_model->delRows({1});
    m_model->delRowsFromFiles();
    // A second exchange of the fields would undo the first.
    const Tree after = stored();
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), after);
    write(day, barLines(QTime(10, 0), 3));
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day), barLines(QTime(10, 0), 3)}}));
}

void TestEditorTADataModel::rewritesNothingOfAReversedRange()
{
    write(day, barLines(QTime(10, 0), 3));
    write(day.addDays(1), barLines(QTime(10, 0), 3));
    const Tree before = stored();
    load(QDateTime(day.addDays(1), QTime(0, 0)), QDateTime(day, QTime(23, 0)));
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), before);
}

void TestEditorTADataModel::rewritesWhatWasLoadedLast()
{
    write(day, barLines(QTime(10, 0), 3), 60);
    write(day, barLines(QTime(10, 0), 3), 1);
    const QDateTime from(day, QTime(0, 0));
    load(from, from.addDays(1), 60);
    m_model->delRows({0});
    load(from, from.addDays(1), 1);
    m_model->delRows({2});
    m_model->delRowsFromFiles();
    QCOMPARE(stored(), Tree({{dayFile(day, 60), barLines(QTime(10, 0), 3)},
                             {dayFile(day, 1), editedBarLines(QTime(10, 0), 2)}}));
}

QTEST_GUILESS_MAIN(TestEditorTADataModel)
#include "tst_editortadatamodel.moc"
