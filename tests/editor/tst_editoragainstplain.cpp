// SPDX-License-Identifier: MIT
// The editor's model beside a plain implementation, on days when the clock is changed above all.

#include "editortadatamodel.h"

#include "plaineditor.h"
#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/localzone.h"
#include "support/strictlog.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>

#include <algorithm>
#include <optional>
#include <utility>

using testsupport::dayFile;
using testsupport::LocalZone;
using testsupport::readTree;

namespace {

constexpr int secondsPerDay = 24 * 60 * 60;

QTime timeOfDay(int second)
{
    return QTime(0, 0).addSecs(second);
}

// Stores that are made at random around one day, and what is done to them.
class Chance final
{
public:
    Chance(quint32 seed, const QDate& day)
        : m_random(seed)
        , m_day(day)
    {}

    int below(int bound) { return static_cast<int>(m_random.bounded(bound)); }
    bool oneOf(int many) { return below(many) == 0; }

    // Of a day: often around the hours at which clocks are changed.
    int second()
    {
        if (oneOf(2))
            return below(secondsPerDay / 60) * 60;
        return oneOf(3) ? below(secondsPerDay) : below(4 * 60) * 60;
    }

    QDateTime moment()
    {
        QDateTime moment(m_day.addDays(below(5) - 2), timeOfDay(second()));
        // One that the clock skips is a moment to an edit field, but there is no reckoning with it.
        if (moment.isValid() && oneOf(10))
            moment = moment.addMSecs(below(2000) - 1000);
        return moment.isValid() && oneOf(15) ? moment.toUTC() : moment;
    }

    QByteArray time(int second)
    {
        static const QByteArrayList unreadable{"", "noon", "240000", "9300", "12:00:00", "1 0000"};
        if (oneOf(50))
            return unreadable.at(below(static_cast<int>(unreadable.size())));
        return timeOfDay(second).toString(QStringLiteral("hhmmss")).toLatin1();
    }

    QByteArray line(int second)
    {
        static const QByteArrayList texts{"1.50", "0", "-1", "", "1e3", "a b"};
        QByteArray line = time(second);
        const int fields = oneOf(20) ? below(11) : 7;
        for (int i = 0; i < fields; ++i)
            line += ';' + texts.at(below(static_cast<int>(texts.size())));
        return oneOf(300) ? line + "Ё" : line;
    }

    QByteArray dayContent()
    {
        QList<int> seconds(below(60));
        for (int& second : seconds)
            second = this->second();
        if (!oneOf(6))
            std::sort(seconds.begin(), seconds.end());
        const QByteArray end = oneOf(10) ? "\r\n" : "\n";
        QByteArray content = oneOf(20) ? "\xef\xbb\xbf" : "";
        for (const int second : std::as_const(seconds))
            content += line(second) + (oneOf(60) ? end + end : end);
        return oneOf(8) ? content.chopped(qMin(content.size(), end.size())) : content;
    }

    QList<int> rows(int count)
    {
        QList<int> rows;
        const int many = oneOf(4) ? count : below(8);
        for (int i = 0; i < many; ++i)
            rows.append(below(count + 1));
        return rows;
    }

private:
    QRandomGenerator m_random;
    QDate m_day;
};

constexpr int minutesPerDay = 24 * 60;

// A bar in each minute of the day, loaded from days before to days after it.
void loadWholeDay(EditorTADataModel& model, const QDir& dir, const QDate& day)
{
    testsupport::writeFile(dir.filePath(dayFile(day)),
                           testsupport::barLines(QTime(0, 0), minutesPerDay));
    model.load(dir, QDateTime(day.addDays(-2), QTime(12, 0)),
               QDateTime(day.addDays(2), QTime(12, 0)), 60);
    QCOMPARE(model.rowCount(), minutesPerDay);
}

// The same files in each of the stores, of some days around one.
void writeDays(Chance& chance, const QDate& day, const QList<QDir>& stores)
{
    for (int i = -2; i <= 2; ++i) {
        if (chance.oneOf(4))
            continue;
        const QByteArray content = chance.dayContent();
        for (const QDir& store : stores)
            testsupport::writeFile(store.filePath(dayFile(day.addDays(i))), content);
    }
}

QStringList randomKeys(Chance& chance, const QDate& day)
{
    QStringList keys;
    for (int i = 0; i < 10; ++i) {
        keys.append(day.addDays(chance.below(5) - 2).toString(QStringLiteral("yyyyMMdd ")) +
                    timeOfDay(chance.second()).toString(QStringLiteral("hhmmss")));
    }
    return keys;
}

// Now and then a reversed one.
std::pair<QDateTime, QDateTime> interval(Chance& chance)
{
    QDateTime from = chance.moment();
    QDateTime to = chance.moment();
    if (to < from && !chance.oneOf(10))
        std::swap(from, to);
    return {from, to};
}

} // namespace

class TestEditorAgainstPlain final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void doesWhatAPlainEditorDoes_data() { zones(); }
    void doesWhatAPlainEditorDoes();
    void keepsEveryBarOfTheDay_data() { zones(); }
    void keepsEveryBarOfTheDay();
    void showsTheTimesOfTheFile_data() { zones(); }
    void showsTheTimesOfTheFile();

private:
    static void zones();
};

void TestEditorAgainstPlain::zones()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDate>("day");
    const auto row = [](const char* zone, const char* what, const QDate& day) {
        QTest::addRow("%s, %s", zone, what) << QByteArray(zone) << day;
    };
    row("UTC", "no change", QDate(2018, 3, 25));
    row("Europe/Moscow", "no change", QDate(2018, 3, 25));
    row("Asia/Kathmandu", "no change", QDate(2018, 3, 25));
    row("America/New_York", "spring", QDate(2018, 3, 11));
    row("America/New_York", "autumn", QDate(2018, 11, 4));
    row("Europe/Berlin", "spring", QDate(2018, 3, 25));
    row("Europe/Berlin", "autumn", QDate(2018, 10, 28));
    row("America/Havana", "midnight that is skipped", QDate(2018, 3, 11));
    row("America/Havana", "midnight that comes twice", QDate(2018, 11, 4));
    row("America/Asuncion", "last hour that comes twice", QDate(2018, 3, 24));
    row("America/Asuncion", "midnight that is skipped", QDate(2018, 10, 7));
    row("Australia/Lord_Howe", "half an hour that is skipped", QDate(2018, 10, 7));
    row("Australia/Lord_Howe", "half an hour that comes twice", QDate(2018, 4, 1));
    row("Europe/Moscow", "change for good", QDate(2014, 10, 26));
    row("Pacific/Apia", "day that is skipped", QDate(2011, 12, 30));
}

void TestEditorAgainstPlain::doesWhatAPlainEditorDoes()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QDate, day);
    const LocalZone here(zone);
    for (quint32 seed = 1; seed <= 120; ++seed) {
        Chance chance(seed, day);
        const QTemporaryDir store;
        const QTemporaryDir plainStore;
        const QDir dir(store.path());
        const QDir plainDir(plainStore.path());
        writeDays(chance, day, {dir, plainDir});

        EditorTADataModel model(nullptr);
        PlainEditor plain;
        std::optional<QAbstractItemModelTester> tester;
        if (seed <= 10)
            tester.emplace(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        for (int pass = 0; pass < 3; ++pass) {
            const auto [from, to] = interval(chance);
            const QByteArray about = zone + ", seed " + QByteArray::number(seed) + ", " +
                                     from.toString(Qt::ISODateWithMs).toLatin1() + " to " +
                                     to.toString(Qt::ISODateWithMs).toLatin1();
            model.load(dir, from, to, 60);
            plain.load(plainDir, from, to, 60);
            QVERIFY2(tableOf(model) == plain.table(), about.constData());

            for (const QString& key : plain.keys() + randomKeys(chance, day))
                QVERIFY2(model.find(key) == plain.find(key), about.constData());

            for (int time = 0; time < 2; ++time) {
                const QList<int> rows = chance.rows(model.rowCount());
                model.delRows(rows);
                plain.remove(rows);
                QVERIFY2(tableOf(model) == plain.table(), about.constData());
            }
            if (chance.oneOf(4))
                continue;
            model.delRowsFromFiles();
            plain.rewrite();
            QVERIFY2(model.rowCount() == 0 && readTree(dir) == readTree(plainDir),
                     about.constData());
        }
    }
}

// Bars of an exchange elsewhere, at times that are none here: who deletes one bar deletes one.
void TestEditorAgainstPlain::keepsEveryBarOfTheDay()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QDate, day);
    const LocalZone here(zone);
    const QTemporaryDir store;
    const QDir dir(store.path());
    EditorTADataModel model(nullptr);
    loadWholeDay(model, dir, day);
    const int last = model.find(day.toString(QStringLiteral("yyyyMMdd 235900")));
    QCOMPARE(last, minutesPerDay - 1);
    model.delRows({last});
    model.delRowsFromFiles();
    QCOMPARE(testsupport::readFile(dir.filePath(dayFile(day))),
             testsupport::editedBarLines(QTime(0, 0), minutesPerDay - 1));
}

void TestEditorAgainstPlain::showsTheTimesOfTheFile()
{
    QFETCH(const QByteArray, zone);
    QFETCH(const QDate, day);
    const LocalZone here(zone);
    const QTemporaryDir store;
    const QDir dir(store.path());
    EditorTADataModel model(nullptr);
    loadWholeDay(model, dir, day);
    for (int row = 0; row < minutesPerDay; ++row) {
        const QDateTime time(day, timeOfDay(row * 60), Qt::UTC);
        QCOMPARE(model.index(row, 0).data().toString(),
                 QLocale().toString(time, QLocale::ShortFormat));
        QCOMPARE(model.find(time.toString(QStringLiteral("yyyyMMdd hhmmss"))), row);
    }
}

QTEST_GUILESS_MAIN(TestEditorAgainstPlain)
#include "tst_editoragainstplain.moc"
