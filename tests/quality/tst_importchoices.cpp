// SPDX-License-Identifier: MIT
// What the user, a profile and a guess make of the choices of an import.
#include "importchoices.h"

#include "filelayout.h"
#include "importfiles.h"
#include "importoutlook.h"
#include "seriesguess.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QStringConverter>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <cerrno>
#include <memory>

using tadata::ImportChoices;
using tadata::ImportOutlook;
using tadata::OutlookCell;
using tadata::OutlookDay;
using tadata::ProfileOptions;
using testsupport::writeFile;
using Outcome = tadata::CheckedDay::Outcome;

class TestImportChoices final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void theGuessFillsEverythingIn();
    void whatIsGivenIsNotGuessed();
    void saysWhatIsStillToBeChosen();
    void whatWasNotCountedHasNoNumbers();
    void aFileNameTellsASeries_data();
    void aFileNameTellsASeries();
    void aProfileFillsInWhatItSays();
    void aProfileWithColumnsLeavesNothingToGuess();
    void aProfileForgetsTheOneBefore();
    void wrongOptionsOfAProfileAreNamed();
    void whatNobodyGuessesCanBeGiven();
    void daysShareTheirPlacesEvenly();
    void theOutlookAddsUpFilesAndSeries();
    void filesWithADayInCommonDoNotReplaceIt();
    void aDayOfSeveralFilesCountsOnce();
    void secondsAndMinutesOfADayGoTogether();
    void fewReasonsAreTold();
    void linesOfOtherTickersAreTold();
    void aBarThatIsTakenForTheHeaderIsTold();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    ImportOutlook outlookFor(const ImportChoices& choices) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

ProfileOptions options(const char* words)
{
    ProfileOptions options;
    const QStringList list = QString::fromUtf8(words).split(u' ');
    for (qsizetype i = 0; i + 1 < list.size(); i += 2)
        options.insert(list[i], list[i + 1]);
    return options;
}

OutlookDay day(int number, Outcome outcome, int lost = 0)
{
    return {.day = QDate(2024, 1, number), .outcome = outcome, .lost = lost};
}

const QByteArray twoBars =
    "100000;1.00;1.00;1.00;1.00;1;0.00;0\n110000;1.00;1.00;1.00;1.00;1;0.00;0\n";

} // namespace

ImportOutlook TestImportChoices::outlookFor(const ImportChoices& choices) const
{
    const std::atomic<bool> goesOn = false;
    const auto order = testsupport::orderOf(choices, QDir(path("store")));
    const auto checked = tadata::checkChoices(
        choices, order.files, order.root, 10, [](int) {}, goesOn);
    return tadata::outlookOf(checked.valueOr(std::vector<tadata::FileOutlook>()));
}

void TestImportChoices::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::knowSeries();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("in.csv"),
              testsupport::barFile({QDate(2024, 1, 15), QDate(2024, 1, 16)}, 9, 100));
}

void TestImportChoices::theGuessFillsEverythingIn()
{
    const auto layout = tadata::layoutOf(path("in.csv"), {});
    QVERIFY(bool(layout));
    QCOMPARE(layout->lacks(), QStringList());
    QCOMPARE(layout->details.separator, QStringLiteral(","));
    QCOMPARE(layout->details.dateFormat, QStringLiteral("yyyyMMdd"));
    QCOMPARE(layout->details.dateFormatTitle, QStringLiteral("ггггммдд"));
    QVERIFY(layout->details.firstLineIsHeader && !layout->hasTicker());
    QCOMPARE(layout->details.timeframe, 60);
    QCOMPARE(layout->details.columns.value(qint32(ColumnRole::Volume), -1), 6);
    QVERIFY(!tadata::layoutOf(path("missing.csv"), {}));
}

void TestImportChoices::whatIsGivenIsNotGuessed()
{
    tadata::GivenLayout given;
    given.timeframe = 1;
    given.hasHeader = false;
    given.timeFormat = QStringLiteral("HHmmss");
    given.columns = QMap<qint32, qint32>{{1, 3}};
    const auto layout = tadata::layoutOf(path("in.csv"), given);
    QCOMPARE(layout->details.timeframe, 1);
    QVERIFY(!layout->details.firstLineIsHeader);
    QCOMPARE(layout->details.timeFormat, QStringLiteral("HHmmss"));
    QCOMPARE(layout->details.timeFormatTitle, QStringLiteral("HHmmss"));
    QCOMPARE(layout->details.columns, *given.columns);
    QCOMPARE(layout->details.separator, QStringLiteral(","));
}

void TestImportChoices::saysWhatIsStillToBeChosen()
{
    writeFile(path("none.csv"), "no table\nat all\n");
    QCOMPARE(tadata::layoutOf(path("none.csv"), {})->lacks().size(), 1);
    writeFile(path("days.csv"), "01/02/2024,100000,1,2,1,2\n01/02/2024,100100,1,2,1,2\n");
    const auto layout = tadata::layoutOf(path("days.csv"), {});
    QCOMPARE(layout->ambiguous.size(), 2);
    QCOMPARE(layout->lacks().size(), 1);
    QVERIFY2(layout->lacks().first().contains(QStringLiteral("MM/dd/yyyy")),
             qPrintable(layout->lacks().first()));
    tadata::GivenLayout given;
    given.dateFormat = QStringLiteral("MM/dd/yyyy");
    QCOMPARE(tadata::layoutOf(path("days.csv"), given)->lacks(), QStringList());
    given.columns = QMap<qint32, qint32>{{1, 0}};
    QCOMPARE(tadata::layoutOf(path("days.csv"), given)->lacks().size(), 1);
}

void TestImportChoices::aProfileFillsInWhatItSays()
{
    ImportChoices before = testsupport::choicesOf({path("in.csv")}, ImportMode::Merge);
    const auto taken = tadata::withProfile(
        before, options("separator semicolon date-format dd.MM.yy time-format hh:mm timeframe 1 "
                        "no-header true mode fill stamp begin shift -30 skip-bad true series "
                        "S/B/{ticker} from-zone Europe/Moscow to-zone UTC"));
    QCOMPARE(taken.passedOver, QStringList());
    const ImportChoices& choices = taken.choices;
    QCOMPARE(choices.files, before.files);
    QCOMPARE(choices.series, QStringLiteral("S/B/{ticker}"));
    QCOMPARE(choices.given.separator, std::optional(QStringLiteral(";")));
    QCOMPARE(choices.given.dateFormat, std::optional(QStringLiteral("dd.MM.yy")));
    QCOMPARE(choices.given.timeFormat, std::optional(QStringLiteral("hh:mm")));
    QCOMPARE(choices.given.timeframe, std::optional(1));
    QCOMPARE(choices.given.hasHeader, std::optional(false));
    QVERIFY(!choices.given.columns);
    QVERIFY(choices.ways.mode == ImportMode::Fill && choices.ways.skipsBad);
    QVERIFY(choices.ways.clock.stampsBegin);
    QCOMPARE(choices.ways.clock.shiftMinutes, -30);
    QCOMPARE(choices.ways.clock.from.id(), QByteArray("Europe/Moscow"));
    QCOMPARE(choices.ways.clock.to.id(), QByteArray("UTC"));
}

void TestImportChoices::aProfileWithColumnsLeavesNothingToGuess()
{
    const auto taken =
        tadata::withProfile({}, options("columns date=1,time=0,open=2,high=3,low=4,close=5"));
    const tadata::GivenLayout& given = taken.choices.given;
    QCOMPARE(given.columns->value(qint32(ColumnRole::Date), -1), 1);
    QCOMPARE(given.separator, std::optional(QStringLiteral(",")));
    QCOMPARE(given.dateFormat, std::optional(QStringLiteral("yyyyMMdd")));
    QCOMPARE(given.timeFormat, std::optional(QStringLiteral("hhmmss")));
    QCOMPARE(given.hasHeader, std::optional(true));
    QCOMPARE(given.timeframe, std::optional(60));
}

void TestImportChoices::aProfileForgetsTheOneBefore()
{
    const auto first = tadata::withProfile({}, options("separator tab shift 5"));
    const auto second = tadata::withProfile(first.choices, options("timeframe 1"));
    QVERIFY(!second.choices.given.separator);
    QCOMPARE(second.choices.ways.clock.shiftMinutes, 0);
}

void TestImportChoices::wrongOptionsOfAProfileAreNamed()
{
    for (const char* zone : {"from-zone", "to-zone"})
        QCOMPARE(tadata::withProfile({}, {{QLatin1String(zone), QStringLiteral("Europe/Moscow")}})
                     .passedOver,
                 QStringList{QLatin1String(zone)});
    const auto taken = tadata::withProfile(
        {}, options("columns date=0 timeframe 5 mode eat shift 5000 date-format yy decimals 3 "
                    "from-zone Nowhere/Land series A/B"));
    QCOMPARE(taken.passedOver, QStringLiteral("columns date-format decimals from-zone mode series "
                                              "shift timeframe")
                                   .split(u' '));
    QVERIFY(taken.choices.given == tadata::GivenLayout());
    QVERIFY(taken.choices.ways.mode == ImportMode::Merge);
    QVERIFY(taken.choices.ways.clock.changesNothing());
}

void TestImportChoices::whatNobodyGuessesCanBeGiven()
{
    QStringEncoder encode(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    const QByteArray content = encode(QStringLiteral("20240115,100000,1,2,1,2\n"));
    writeFile(path("wide.csv"), content);
    const QString told = tadata::layoutOf(path("wide.csv"), {})->lacks().join(u' ');
    for (const QString& part :
         {path("wide.csv"), QStringLiteral("UTF-16"), QStringLiteral("UTF-8"),
          QStringLiteral("windows-1251"), QStringLiteral("Выберите разделитель")})
        QVERIFY2(told.contains(part), qPrintable(told));
    QVERIFY2(!told.contains(QStringLiteral("--")), qPrintable(told));
    // What was chosen stays, and nothing is asked for twice.
    tadata::GivenLayout some;
    some.separator = QStringLiteral(",");
    const auto more = tadata::layoutOf(path("wide.csv"), some);
    QCOMPARE(more->details.separator, QStringLiteral(","));
    QVERIFY(!more->lacks().join(u' ').contains(QStringLiteral("Выберите разделитель")));
    const auto taken =
        tadata::withProfile({}, options("columns date=0,time=1,open=2,high=3,low=4,close=5"));
    const auto layout = tadata::layoutOf(path("wide.csv"), taken.choices.given);
    QVERIFY(bool(layout));
    QCOMPARE(layout->lacks(), QStringList());
}

void TestImportChoices::daysShareTheirPlacesEvenly()
{
    std::vector<OutlookDay> days;
    for (int number = 1; number <= 7; ++number)
        days.push_back(day(number, number == 4 ? Outcome::Replaced : Outcome::Same, number == 6));
    const std::vector<OutlookCell> each = tadata::cellsOf(days, 100);
    QCOMPARE(each.size(), size_t(7));
    const std::vector<OutlookCell> cells = tadata::cellsOf(days, 3);
    QCOMPARE(cells.size(), size_t(3));
    QCOMPARE(cells.front().first, size_t(0));
    QCOMPARE(cells.back().last, size_t(6));
    for (size_t i = 1; i < cells.size(); ++i)
        QCOMPARE(cells[i].first, cells[i - 1].last + 1);
    QVERIFY(cells[1].outcome == Outcome::Replaced && !cells[1].loses);
    QVERIFY(cells[2].outcome == Outcome::Same && cells[2].loses);
    QVERIFY(tadata::cellsOf({}, 3).empty());
}

void TestImportChoices::theOutlookAddsUpFilesAndSeries()
{
    for (const char* file : {"store/S/B/X/20240115_60.iss", "store/S/B/Y/20240115_60.iss"})
        writeFile(path(file), twoBars);
    QVERIFY(QFile::copy(path("in.csv"), path("X.csv")));
    writeFile(path("Y.csv"), testsupport::barFile({QDate(2024, 1, 15)}, 30, 50) + "bad\n");
    auto choices =
        testsupport::choicesOf({path("X.csv"), path("Y.csv")}, ImportMode::Replace, "S/B/{name}");
    ImportOutlook outlook = outlookFor(choices);
    QVERIFY(!outlook.wouldImport);
    QCOMPARE(outlook.stops.size(), 1);
    QCOMPARE(outlook.badLines, 1);
    choices.ways.skipsBad = true;
    outlook = outlookFor(choices);
    QVERIFY(outlook.wouldImport && outlook.stops.isEmpty());
    QCOMPARE(outlook.bars, 48);
    QCOMPARE(outlook.series, 2);
    QCOMPARE(outlook.lost, 2); // 11:00, of each file's day
    QCOMPARE(outlook.count(Outcome::Replaced), 2);
    QCOMPARE(outlook.count(Outcome::New), 1);
    QCOMPARE(outlook.days.size(), size_t(2));
    QVERIFY(outlook.days[0].outcome == Outcome::Replaced);
    QCOMPARE(outlook.problems[0], 1);
    choices.series = QStringLiteral("S/B/Unknown");
    outlook = outlookFor(choices);
    QVERIFY(!outlook.wouldImport && outlook.days.empty());
    choices.series.clear();
    QVERIFY(!outlookFor(choices).wouldImport);
}

void TestImportChoices::filesWithADayInCommonDoNotReplaceIt()
{
    const QDate monday(2024, 1, 15);
    writeFile(path("more.csv"),
              testsupport::barFile({monday.addDays(1), monday.addDays(2)}, 5, 50));
    const QStringList files{path("in.csv"), path("more.csv")};
    const ImportOutlook replacing = outlookFor(testsupport::choicesOf(files, ImportMode::Replace));
    QVERIFY(!replacing.wouldImport);
    QCOMPARE(replacing.sharedDays, 1);
    const QString why = tadata::whyItStops(replacing);
    const QString day = QLocale().toString(monday.addDays(1), QLocale::ShortFormat);
    for (const QString& part : {QStringLiteral("in.csv, more.csv"), QStringLiteral("S/B/X"), day,
                                QStringLiteral("«Добавить»")})
        QVERIFY2(why.contains(part), qPrintable(why));
    const QString told = tadata::sentencesOf(replacing).join(u' ');
    QVERIFY2(!told.contains(QStringLiteral("Ни один бар")), qPrintable(told));

    // Each alone, and each into a series of its own.
    for (const QString& file : files)
        QVERIFY(outlookFor(testsupport::choicesOf({file}, ImportMode::Replace)).wouldImport);
    QVERIFY(QFile::copy(path("in.csv"), path("X.csv")));
    QVERIFY(QFile::copy(path("more.csv"), path("Y.csv")));
    const ImportOutlook apart = outlookFor(
        testsupport::choicesOf({path("X.csv"), path("Y.csv")}, ImportMode::Replace, "S/B/{name}"));
    QVERIFY(apart.wouldImport);
    QCOMPARE(apart.sharedDays, 0);
}

void TestImportChoices::aDayOfSeveralFilesCountsOnce()
{
    writeFile(path("store/S/B/X/20240115_60.iss"), twoBars);
    writeFile(path("more.csv"), testsupport::barFile({QDate(2024, 1, 15)}, 30, 50));
    for (const ImportMode mode : {ImportMode::Merge, ImportMode::Fill}) {
        const ImportOutlook outlook =
            outlookFor(testsupport::choicesOf({path("in.csv"), path("more.csv")}, mode));
        QVERIFY(outlook.wouldImport);
        QCOMPARE(outlook.series, 1);
        QCOMPARE(outlook.sharedDays, 1);
        QCOMPARE(outlook.count(Outcome::Merged), 1);
        QCOMPARE(outlook.count(Outcome::New), 1);
        QCOMPARE(outlook.days.size(), size_t(2));
        QVERIFY(outlook.days[0].isShared && !outlook.days[1].isShared);
        QCOMPARE(outlook.days[0].stored, 2);
        const QStringList told = tadata::sentencesOf(outlook);
        QVERIFY(told.contains(QStringLiteral("Дней, которые есть в нескольких файлах: 1; сказанное "
                                             "о них верно для каждого файла по отдельности")));
        QVERIFY(told.contains(QStringLiteral("Ни один бар не пропадёт")));
        const QString day = tadata::sentenceOf(outlook.days[0]);
        QVERIFY2(day.contains(QStringLiteral("в нескольких файлах")), qPrintable(day));
    }
}

// The minutes that are derived from seconds have a file of their own.
void TestImportChoices::secondsAndMinutesOfADayGoTogether()
{
    tadata::CheckedDay day;
    day.day = QDate(2024, 1, 15);
    std::vector<tadata::FileOutlook> files;
    for (const int timeframe : {1, 60}) {
        tadata::SeriesOutlook series{QStringLiteral("S/B/X")};
        series.check.bars = 1;
        series.check.days = {day};
        files.push_back({.path = QString::number(timeframe),
                         .series = {series},
                         .mode = ImportMode::Replace,
                         .timeframe = timeframe});
    }
    const ImportOutlook together = tadata::outlookOf(files);
    QVERIFY(together.wouldImport);
    QCOMPARE(together.sharedDays, 0);
    files.push_back(files.front());
    QVERIFY(!tadata::outlookOf(files).wouldImport);
}

void TestImportChoices::fewReasonsAreTold()
{
    std::vector<tadata::FileOutlook> files;
    files.reserve(5001);
    for (int file = 0; file < 5000; ++file)
        files.push_back({.path = {}, .refusal = QStringLiteral("file %1").arg(file)});
    files.push_back(files.front());
    const ImportOutlook outlook = tadata::outlookOf(files);
    QCOMPARE(outlook.stops.size(), 5000);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(tadata::whyItStops(outlook).remove(u','),
             QStringLiteral("file 0\nfile 1\nfile 2\nи ещё 4997"));
}

// All of them go into the one series that was chosen.
void TestImportChoices::linesOfOtherTickersAreTold()
{
    QLocale::setDefault(QLocale::c());
    const QDate monday(2024, 1, 15);
    const QByteArray other = testsupport::barFile({monday.addDays(1)}, 5, 100, "Y");
    QByteArray text =
        testsupport::barFile({monday}, 90, 100, "X") + other.mid(other.indexOf('\n') + 1);
    // An empty one is nobody's, small letters are the same, and a name with a slash is another.
    text += "20240117,100000,1,2,1,2,3,\n20240117,100100,1,2,1,2,3,x\n"
            "20240117,100200,1,2,1,2,3,A/B\nbad,100200,1,2,1,2,3,C\n";
    writeFile(path("both.csv"), text);
    auto choices = testsupport::choicesOf({path("both.csv")}, ImportMode::Fill);
    choices.ways.skipsBad = true;
    const ImportOutlook outlook = outlookFor(choices);
    QVERIFY(outlook.wouldImport);
    QCOMPARE(outlook.bars, 98);
    QCOMPARE(outlook.warnings.size(), 1);
    for (const char* part : {"инструмента: 6 (A/B, Y)", "S/B/X", "«из столбца»"})
        QVERIFY2(outlook.warnings.first().contains(QString::fromUtf8(part)),
                 qPrintable(outlook.warnings.first()));
    QCOMPARE(tadata::whatToHeed(outlook), outlook.warnings.first());

    // Each in its own series, and a file of one ticker: there is nothing to say.
    choices.series = QStringLiteral("S/B/{ticker}");
    QCOMPARE(outlookFor(choices).warnings, QStringList());
    writeFile(path("one.csv"), testsupport::barFile({monday}, 9, 100, "X"));
    QCOMPARE(outlookFor(testsupport::choicesOf({path("one.csv")}, ImportMode::Fill)).warnings,
             QStringList());
}

void TestImportChoices::aBarThatIsTakenForTheHeaderIsTold()
{
    const QByteArray bars = testsupport::barFile({QDate(2024, 1, 15)}, 9, 100);
    writeFile(path("bare.csv"), bars.mid(bars.indexOf('\n') + 1));
    auto choices = testsupport::choicesOf({path("bare.csv")}, ImportMode::Merge);
    QCOMPARE(outlookFor(choices).warnings, QStringList());
    choices.given.hasHeader = true;
    const ImportOutlook outlook = outlookFor(choices);
    QCOMPARE(outlook.bars, 8);
    QVERIFY(outlook.wouldImport);
    QCOMPARE(outlook.warnings.size(), 1);
    QVERIFY2(outlook.warnings.first().contains(QStringLiteral("«Заголовок»")),
             qPrintable(outlook.warnings.first()));
    choices.files = QStringList{path("in.csv")};
    QCOMPARE(outlookFor(choices).warnings, QStringList());
}

// NOLINTNEXTLINE(readability-function-size): a table
void TestImportChoices::aFileNameTellsASeries_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("board");
    QTest::addColumn<QString>("series");
    QTest::newRow("alone") << "/a/X.csv"
                           << "S/B"
                           << "S/B/X";
    QTest::newRow("small letters") << "x.txt"
                                   << "S/B"
                                   << "S/B/X";
    QTest::newRow("among words") << "history-Y_240101_240201.csv"
                                 << "S/B"
                                 << "S/B/Y";
    QTest::newRow("the same twice") << "X_X.csv"
                                    << "S/B"
                                    << "S/B/X";
    QTest::newRow("two of them") << "X_Y.csv"
                                 << "S/B"
                                 << "";
    QTest::newRow("none") << "Z.csv"
                          << "S/B"
                          << "";
    QTest::newRow("within a word") << "XY.csv"
                                   << "S/B"
                                   << "";
    QTest::newRow("no board") << "X.csv"
                              << "/"
                              << "";
    QTest::newRow("all codes") << "S_B_Y.csv"
                               << "/"
                               << "S/B/Y";
    QTest::newRow("a part of a future's code") << "X-12.26.csv"
                                               << "S/B"
                                               << "";
    QTest::newRow("a future") << "Q-12.26 (1).csv"
                              << "S/F"
                              << "S/F/Q-12.26";
    QTest::newRow("a future without a suffix") << "Q-12.26"
                                               << "S/F"
                                               << "S/F/Q-12.26";
    QTest::newRow("a future, all codes") << "S_F_Q-12.26_2024.txt"
                                         << "S/B"
                                         << "S/F/Q-12.26";
    QTest::newRow("another board") << "S_F_X_2024.csv"
                                   << "S/B"
                                   << "";
    QTest::newRow("another venue") << "W_B_X_2024.csv"
                                   << "S/B"
                                   << "";
    QTest::newRow("a date after it") << "X-2024.01.15.csv"
                                     << "S/B"
                                     << "S/B/X";
    QTest::newRow("a code like a suffix") << "TXT.txt"
                                          << "S/B"
                                          << "S/B/TXT";
    QTest::newRow("all codes of others") << "2024 S-B-Y 60.csv"
                                         << "NORD/MAIN"
                                         << "S/B/Y";
}

void TestImportChoices::aFileNameTellsASeries()
{
    QFETCH(const QString, file);
    QFETCH(const QString, board);
    auto data = vexdesk::ReferenceData::demonstration();
    for (const char* known : {"S/B/X", "S/B/Y", "S/B/TXT", "S/F/Q-12.26", "W/B/Z"}) {
        const QStringList codes = QString::fromLatin1(known).split(u'/');
        data.setSeries(codes[0], codes[1], codes[2], 2);
    }
    vexdesk::ReferenceData::install(data);
    QTEST(tadata::seriesOfFileName(file, board), "series");
}

void TestImportChoices::whatWasNotCountedHasNoNumbers()
{
    auto choices = testsupport::choicesOf({path("in.csv")}, ImportMode::Merge, "");
    const ImportOutlook nowhere = outlookFor(choices);
    QVERIFY(!nowhere.wouldImport && !nowhere.stops.isEmpty());
    QCOMPARE(tadata::sentencesOf(nowhere), QStringList());
    choices.series = QStringLiteral("S/B/X");
    QVERIFY(!tadata::sentencesOf(outlookFor(choices)).isEmpty());
    choices.files.append(path("gone.csv"));
    const QString told = tadata::sentencesOf(outlookFor(choices)).join(u' ');
    QVERIFY2(told.contains(QStringLiteral("ничего не сосчитано: 1")), qPrintable(told));

    // Why, as the system has it.
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    choices.files.append({path("pipe"), m_dir->path()});
    const QString why = outlookFor(choices).stops.join(u'\n');
    for (const QString& part : {path("gone.csv") + QStringLiteral(": ") + qt_error_string(ENOENT),
                                path("pipe") + QStringLiteral(": это не обычный файл"),
                                m_dir->path() + QStringLiteral(": ") + qt_error_string(EISDIR)})
        QVERIFY2(why.contains(part), qPrintable(why));
}

QTEST_GUILESS_MAIN(TestImportChoices)
#include "tst_importchoices.moc"
