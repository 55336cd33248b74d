// SPDX-License-Identifier: MIT
#include <vexdesk/boarddirectory.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/terminal/referencedata.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>
#include <QtTest/QTest>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using vexdesk::Board;
using vexdesk::ReferenceData;
using vexdesk::Security;
using vexdesk::Stock;

namespace {

const StockDirectory& stocks()
{
    return StockDirectory::i();
}

const BoardDirectory& boards()
{
    return BoardDirectory::i();
}

const SecurityDirectory& securities()
{
    return SecurityDirectory::i();
}

const Security* find(const ReferenceData& data, const QString& stockCode, const QString& boardCode,
                     const QString& securityCode)
{
    for (const Security& security : data.securities) {
        if (security.stockCode == stockCode && security.boardCode == boardCode &&
            security.code == securityCode)
            return &security;
    }
    return nullptr;
}

// Everything but the names, entry by entry.
QStringList withoutNames(const ReferenceData& data)
{
    QStringList entries;
    for (const Stock& stock : data.stocks)
        entries.append(QStringLiteral("%1 %2").arg(stock.id).arg(stock.code));
    for (const Board& board : data.boards)
        entries.append(QStringLiteral("%1 %2 %3 %4")
                           .arg(board.stockCode)
                           .arg(board.id)
                           .arg(board.code)
                           .arg(board.flags));
    for (const Security& security : data.securities)
        entries.append(QStringLiteral("%1 %2 %3 %4 %5")
                           .arg(security.stockCode, security.boardCode)
                           .arg(security.id)
                           .arg(security.code)
                           .arg(security.decimals));
    return entries;
}

QStringList namesOf(const ReferenceData& data)
{
    QStringList names;
    for (const Stock& stock : data.stocks)
        names.append(stock.name);
    for (const Board& board : data.boards)
        names.append(board.name);
    for (const Security& security : data.securities)
        names.append(security.title);
    return names;
}

// While it lives, the texts are in a language that has this file with the demonstration.
class DemonstrationFile final : public QTranslator
{
public:
    explicit DemonstrationFile(QString name)
        : m_name(std::move(name))
    {
        QCoreApplication::installTranslator(this);
    }

    QString translate(const char* /*context*/, const char* source, const char* /*comment*/,
                      int /*n*/) const override
    {
        return qstrcmp(source, "demonstration.json") == 0 ? m_name : QString();
    }
    bool isEmpty() const override { return false; }

private:
    QString m_name;
};

// Two venues with a board of the same code and the same id, a security of the same code on both.
ReferenceData twoVenues()
{
    ReferenceData data;
    data.stocks = {{3, "EAST", "Восток"}, {8, "WEST", "Запад"}};
    data.boards = {{"EAST", 1, "SPOT", "Восток, спот", 4}, {"WEST", 1, "SPOT", "Запад, спот", 0}};
    data.securities = {{"EAST", "SPOT", 10, "AAA", "А с Востока", 2},
                       {"WEST", "SPOT", 10, "AAA", "А с Запада", 5}};
    return data;
}

constexpr char stocksJson[] = R"("stocks": [{"id": 1, "code": "EAST", "name": "Восток"}])";
constexpr char boardsJson[] =
    R"("boards": [{"stock": "EAST", "id": 1, "code": "SPOT", "name": "Спот", "flags": 4}])";
constexpr char securitiesJson[] =
    R"("securities": [{"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 2}])";

// A document in which one list is replaced; an empty text leaves the list out.
QByteArray document(const QByteArray& stocksList, const QByteArray& boardsList,
                    const QByteArray& securitiesList)
{
    QByteArray text;
    for (const QByteArray& list : {stocksList, boardsList, securitiesList}) {
        if (!list.isEmpty())
            text += (text.isEmpty() ? "" : ",\n") + list;
    }
    return '{' + text + '}';
}

} // namespace

class ReferenceDataTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void demonstrationIsInstalledAtFirst();
    void demonstrationHoldsWhatADemonstrationNeeds();
    void demonstrationIsConsistent();
    void demonstrationInEnglishDiffersInNamesAlone();
    void demonstrationWithoutATranslatedFileIsTheUsualOne();
    void directoriesAnswer();
    void unknownCodes();
    void unknownStocksHaveIdsOfTheirOwn();
    void sameCodesOnTwoVenues();
    void installReplaces();
    void setSeriesChangesTheDecimals();
    void setSeriesAddsWhatIsMissing();
    void readsAFile();
    void fileErrors_data();
    void fileErrors();
    void missingFile();
    void standardIsTheFileOfTheDataDirectory();
    void lookUpsWhileInstalling();
    void unknownStocksFromSeveralThreads();

private:
    QString m_dataDir;
};

void ReferenceDataTest::initTestCase()
{
    // Portable, so that the data directory lies beside this program.
    m_dataDir = QCoreApplication::applicationDirPath() + "/user";
    QDir(m_dataDir).removeRecursively();
}

void ReferenceDataTest::init()
{
    testsupport::failOnStrayWarnings();
}

void ReferenceDataTest::cleanup()
{
    QDir(m_dataDir).removeRecursively();
    ReferenceData::install(ReferenceData::demonstration());
}

void ReferenceDataTest::demonstrationIsInstalledAtFirst()
{
    const ReferenceData data = ReferenceData::demonstration();
    QVERIFY(!data.securities.isEmpty());
    const Security& last = data.securities.last();
    QCOMPARE(ReferenceData::installed().securities.size(), data.securities.size());
    QCOMPARE(securities().idByCode(last.stockCode, last.boardCode, last.code), last.id);
}

void ReferenceDataTest::demonstrationHoldsWhatADemonstrationNeeds()
{
    const ReferenceData data = ReferenceData::demonstration();
    QVERIFY(data.stocks.size() >= 2);
    QVERIFY(data.securities.size() >= 24);

    QSet<int> flags;
    for (const Board& board : data.boards)
        flags.insert(board.flags);
    QVERIFY2(flags.size() >= 2, "boards of one kind only");

    QSet<int> decimals;
    QSet<QString> boardsInUse;
    for (const Security& security : data.securities) {
        decimals.insert(security.decimals);
        boardsInUse.insert(security.stockCode + u'/' + security.boardCode);
    }
    QVERIFY(decimals.contains(QSet<int>{0, 2, 4, 5}));
    QVERIFY2(boardsInUse.size() >= 2, "all securities on one board");
}

void ReferenceDataTest::demonstrationIsConsistent()
{
    const ReferenceData data = ReferenceData::demonstration();
    QSet<QString> seen;
    const auto isNew = [&seen](const QString& what) {
        const qsizetype before = seen.size();
        seen.insert(what);
        return seen.size() > before;
    };
    QSet<QString> owners;
    for (const Stock& stock : data.stocks) {
        QVERIFY2(stock.id > 0 && !stock.name.isEmpty(), qPrintable(stock.code));
        QVERIFY2(isNew("stock code " + stock.code), qPrintable(stock.code));
        QVERIFY2(isNew("stock id " + QString::number(stock.id)), qPrintable(stock.code));
        owners.insert(stock.code);
    }
    for (const Board& board : data.boards) {
        const QString path = board.stockCode + u'/' + board.code;
        QVERIFY2(owners.contains(board.stockCode), qPrintable(path));
        QVERIFY2(board.id > 0 && !board.name.isEmpty(), qPrintable(path));
        QVERIFY2(isNew("board code " + path), qPrintable(path));
        QVERIFY2(isNew("board id " + board.stockCode + u'/' + QString::number(board.id)),
                 qPrintable(path));
        owners.insert(path);
    }
    for (const Security& security : data.securities) {
        const QString owner = security.stockCode + u'/' + security.boardCode;
        const QString path = owner + u'/' + security.code;
        QVERIFY2(owners.contains(owner), qPrintable(path));
        QVERIFY2(security.id > 0 && !security.title.isEmpty(), qPrintable(path));
        QVERIFY2(isNew("security code " + path), qPrintable(path));
        QVERIFY2(isNew("security id " + owner + u'/' + QString::number(security.id)),
                 qPrintable(path));
    }
}

void ReferenceDataTest::demonstrationInEnglishDiffersInNamesAlone()
{
    const ReferenceData russian = ReferenceData::demonstration();
    const DemonstrationFile translator(QStringLiteral("demonstration_en.json"));
    const ReferenceData english = ReferenceData::demonstration();
    QCOMPARE(withoutNames(english), withoutNames(russian));
    const QStringList names = namesOf(english);
    QCOMPARE(names.size(), namesOf(russian).size());
    QVERIFY(!names.contains(QString()));
    const QRegularExpression russianLetter(QStringLiteral("[А-Яа-яЁё]"));
    QCOMPARE(names.filter(russianLetter), QStringList());
    QVERIFY(!namesOf(russian).filter(russianLetter).isEmpty());
}

void ReferenceDataTest::demonstrationWithoutATranslatedFileIsTheUsualOne()
{
    const ReferenceData usual = ReferenceData::demonstration();
    const DemonstrationFile translator(QStringLiteral("demonstration_xx.json"));
    const ReferenceData data = ReferenceData::demonstration();
    QCOMPARE(data.securities.size(), usual.securities.size());
    QCOMPARE(data.securities.constLast().title, usual.securities.constLast().title);
}

void ReferenceDataTest::directoriesAnswer()
{
    const ReferenceData data = ReferenceData::demonstration();
    QHash<QString, int> stockIds;
    for (const Stock& stock : data.stocks) {
        QCOMPARE(stocks().idByCode(stock.code), stock.id);
        QCOMPARE(stocks().nameByCode(stock.code), stock.name);
        stockIds.insert(stock.code, stock.id);
    }
    QHash<QString, int> boardIds;
    for (const Board& board : data.boards) {
        QCOMPARE(boards().idByCode(board.stockCode, board.code), board.id);
        QCOMPARE(boards().nameByCode(board.stockCode, board.code), board.name);
        boardIds.insert(board.stockCode + u'/' + board.code, board.id);
    }
    for (const Security& security : data.securities) {
        QCOMPARE(securities().idByCode(security.stockCode, security.boardCode, security.code),
                 security.id);
        QCOMPARE(securities().decimalsById(
                     stockIds.value(security.stockCode),
                     boardIds.value(security.stockCode + u'/' + security.boardCode), security.id),
                 security.decimals);
    }
}

void ReferenceDataTest::unknownCodes()
{
    ReferenceData::install(twoVenues());
    QCOMPARE(stocks().nameByCode("NORTH"), QString());
    QCOMPARE(stocks().nameByCode(QString()), QString());
    QCOMPARE(boards().idByCode("EAST", "FUT"), 0);
    QCOMPARE(boards().idByCode("NORTH", "SPOT"), 0);
    QCOMPARE(boards().nameByCode("EAST", "FUT"), QString());
    QCOMPARE(boards().nameByCode("NORTH", "SPOT"), QString());
    QCOMPARE(securities().idByCode("EAST", "SPOT", "ZZZ"), 0);
    QCOMPARE(securities().idByCode("EAST", "FUT", "AAA"), 0);
    QCOMPARE(securities().idByCode("NORTH", "SPOT", "AAA"), 0);
    QCOMPARE(securities().decimalsById(3, 1, 11), 0);
    QCOMPARE(securities().decimalsById(3, 2, 10), 0);
    QCOMPARE(securities().decimalsById(-1, 1, 10), 0);
    QCOMPARE(securities().decimalsById(0, 0, 0), 0);
    // Codes are compared to the letter.
    QVERIFY(stocks().idByCode("east") < 0);
    QCOMPARE(boards().idByCode("EAST", "spot"), 0);
    QCOMPARE(securities().idByCode("EAST", "SPOT", "aaa"), 0);
}

void ReferenceDataTest::unknownStocksHaveIdsOfTheirOwn()
{
    QSet<int> ids;
    QHash<QString, int> first;
    for (int i = 0; i < 50; ++i) {
        const QString code = QStringLiteral("NOWHERE%1").arg(i);
        const int id = stocks().idByCode(code);
        QVERIFY2(id < 0, qPrintable(code));
        ids.insert(id);
        first.insert(code, id);
    }
    QCOMPARE(ids.size(), 50);
    QVERIFY(!ids.contains(stocks().idByCode(QString())));

    ReferenceData::install(twoVenues());
    for (auto it = first.cbegin(); it != first.cend(); ++it)
        QCOMPARE(stocks().idByCode(it.key()), it.value());
}

void ReferenceDataTest::sameCodesOnTwoVenues()
{
    ReferenceData::install(twoVenues());
    QCOMPARE(boards().nameByCode("EAST", "SPOT"), QStringLiteral("Восток, спот"));
    QCOMPARE(boards().nameByCode("WEST", "SPOT"), QStringLiteral("Запад, спот"));
    QCOMPARE(securities().decimalsById(3, 1, 10), 2);
    QCOMPARE(securities().decimalsById(8, 1, 10), 5);
}

void ReferenceDataTest::installReplaces()
{
    ReferenceData data = twoVenues();
    ReferenceData::install(data);
    QCOMPARE(stocks().idByCode("WEST"), 8);
    QCOMPARE(ReferenceData::installed().stocks.size(), 2);

    data.stocks[0].name = "Дальний Восток";
    data.stocks.removeLast();
    data.boards.removeLast();
    data.securities = {{"EAST", "SPOT", 77, "BBB", "Б", 4}};
    // What was installed does not change with the caller's copy.
    QCOMPARE(stocks().nameByCode("EAST"), QStringLiteral("Восток"));

    ReferenceData::install(data);
    QCOMPARE(stocks().nameByCode("EAST"), QStringLiteral("Дальний Восток"));
    QVERIFY(stocks().idByCode("WEST") < 0);
    QCOMPARE(boards().idByCode("WEST", "SPOT"), 0);
    QCOMPARE(securities().idByCode("EAST", "SPOT", "AAA"), 0);
    QCOMPARE(securities().idByCode("EAST", "SPOT", "BBB"), 77);
    QCOMPARE(securities().decimalsById(3, 1, 10), 0);
    QCOMPARE(securities().decimalsById(3, 1, 77), 4);

    ReferenceData::install(ReferenceData());
    QVERIFY(stocks().idByCode("EAST") < 0);
}

void ReferenceDataTest::setSeriesChangesTheDecimals()
{
    ReferenceData data = twoVenues();
    data.setSeries("WEST", "SPOT", "AAA", 7);
    QCOMPARE(data.stocks.size(), 2);
    QCOMPARE(data.boards.size(), 2);
    QCOMPARE(data.securities.size(), 2);

    ReferenceData::install(data);
    QCOMPARE(securities().decimalsById(8, 1, 10), 7);
    QCOMPARE(securities().decimalsById(3, 1, 10), 2);
}

void ReferenceDataTest::setSeriesAddsWhatIsMissing()
{
    ReferenceData data = twoVenues();
    data.setSeries("EAST", "SPOT", "NEW", 1);
    data.setSeries("EAST", "FUT", "AAA", 3);
    data.setSeries("NORTH", "SPOT", "AAA", 4);
    QCOMPARE(data.stocks.size(), 3);
    QCOMPARE(data.boards.size(), 4);
    QCOMPARE(data.securities.size(), 5);

    const auto decimals = [](const QString& stock, const QString& board, const QString& security) {
        return securities().decimalsById(stocks().idByCode(stock), boards().idByCode(stock, board),
                                         securities().idByCode(stock, board, security));
    };
    ReferenceData::install(data);
    QCOMPARE(decimals("EAST", "SPOT", "NEW"), 1);
    QCOMPARE(decimals("EAST", "FUT", "AAA"), 3);
    QCOMPARE(decimals("NORTH", "SPOT", "AAA"), 4);
    QCOMPARE(decimals("EAST", "SPOT", "AAA"), 2);
    QCOMPARE(decimals("WEST", "SPOT", "AAA"), 5);

    const int north = stocks().idByCode("NORTH");
    QVERIFY(north > 0 && north != 3 && north != 8);
    const int futures = boards().idByCode("EAST", "FUT");
    QVERIFY(futures > 0 && futures != 1);
    const long long added = securities().idByCode("EAST", "SPOT", "NEW");
    QVERIFY(added > 0 && added != 10);

    const Security* security = find(data, "EAST", "SPOT", "AAA");
    QVERIFY(security);
    QCOMPARE(security->title, QStringLiteral("А с Востока"));
}

void ReferenceDataTest::readsAFile()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("reference.json");
    testsupport::writeFile(path, R"({
        "stocks": [{"id": 2147483647, "code": "EAST", "name": "Восток"},
                   {"id": 2, "code": "WEST"}],
        "boards": [{"stock": "EAST", "id": 2147483647, "code": "SPOT", "name": "Спот",
                    "flags": 2147483647},
                   {"stock": "WEST", "id": 2147483647, "code": "SPOT", "flags": 0},
                   {"stock": "WEST", "id": 1, "code": "FUT", "flags": 4}],
        "securities": [{"stock": "EAST", "board": "SPOT", "id": 9223372036854775807,
                        "code": "AAA", "title": "А", "decimals": 15},
                       {"stock": "WEST", "board": "SPOT", "id": 9007199254740993,
                        "code": "AAA", "decimals": 0},
                       {"stock": "WEST", "board": "FUT", "id": 9007199254740993,
                        "code": "AAA", "decimals": 1}],
        "comment": "other keys are left alone"})");
    const auto read = ReferenceData::fromFile(path);
    QVERIFY2(read, qPrintable(read.message()));
    const ReferenceData& data = *read;
    QCOMPARE(data.stocks.size(), 2);
    QCOMPARE(data.boards.size(), 3);
    QCOMPARE(data.securities.size(), 3);

    QCOMPARE(data.stocks.at(0).id, 2147483647);
    QCOMPARE(data.stocks.at(0).code, QStringLiteral("EAST"));
    QCOMPARE(data.stocks.at(0).name, QStringLiteral("Восток"));
    QCOMPARE(data.stocks.at(1).name, QString());
    QCOMPARE(data.boards.at(0).stockCode, QStringLiteral("EAST"));
    QCOMPARE(data.boards.at(0).id, 2147483647);
    QCOMPARE(data.boards.at(0).code, QStringLiteral("SPOT"));
    QCOMPARE(data.boards.at(0).name, QStringLiteral("Спот"));
    QCOMPARE(data.boards.at(0).flags, 2147483647);
    QCOMPARE(data.securities.at(0).stockCode, QStringLiteral("EAST"));
    QCOMPARE(data.securities.at(0).boardCode, QStringLiteral("SPOT"));
    QCOMPARE(data.securities.at(0).id, 9223372036854775807);
    QCOMPARE(data.securities.at(0).code, QStringLiteral("AAA"));
    QCOMPARE(data.securities.at(0).title, QStringLiteral("А"));
    QCOMPARE(data.securities.at(0).decimals, 15);
    // Beyond what a double can hold.
    QCOMPARE(data.securities.at(1).id, 9007199254740993);
}

// NOLINTNEXTLINE(readability-function-size): a table
void ReferenceDataTest::fileErrors_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("what"); // the text after the file's name; empty: any text

    const auto row = [](const char* name, const QByteArray& content, const QString& what) {
        QTest::newRow(name) << content << what;
    };
    const auto wrong = [](const QString& list, int entry, const QString& key) {
        return QStringLiteral("список \"%1\", запись %2: неверное значение \"%3\"")
            .arg(list, QString::number(entry), key);
    };
    const auto repeated = [](const QString& list, int entry, const QString& key) {
        return QStringLiteral("список \"%1\", запись %2: повторное значение \"%3\"")
            .arg(list, QString::number(entry), key);
    };
    const auto unknown = [](const QString& list, int entry, const QString& key) {
        return QStringLiteral("список \"%1\", запись %2: неизвестное значение \"%3\"")
            .arg(list, QString::number(entry), key);
    };
    const auto missing = [](const QString& list) {
        return QStringLiteral("нет списка \"%1\"").arg(list);
    };
    const auto stocksOf = [](const QByteArray& entries) {
        return document("\"stocks\": [" + entries + ']', boardsJson, securitiesJson);
    };
    const auto boardsOf = [](const QByteArray& entries) {
        return document(stocksJson, "\"boards\": [" + entries + ']', securitiesJson);
    };
    const auto securitiesOf = [](const QByteArray& entries) {
        return document(stocksJson, boardsJson, "\"securities\": [" + entries + ']');
    };

    row("empty file", "", QString());
    row("broken after a comma", "{\"stocks\": [,", QString());
    row("cut off", document(stocksJson, boardsJson, securitiesJson).chopped(3), QString());
    row("no JSON", "NORD;SPOT;ALFA", QString());
    row("a list instead of an object", "[]", missing("stocks"));
    row("no lists", "{}", missing("stocks"));
    row("no stocks", document("", boardsJson, securitiesJson), missing("stocks"));
    row("no boards", document(stocksJson, "", securitiesJson), missing("boards"));
    row("no securities", document(stocksJson, boardsJson, ""), missing("securities"));
    row("stocks are no list", document("\"stocks\": {}", boardsJson, securitiesJson),
        missing("stocks"));
    row("the first error counts", document("\"stocks\": [{\"id\": 0}]", "", ""),
        wrong("stocks", 1, "id"));

    row("an entry that is no object", stocksOf("5"), wrong("stocks", 1, "id"));
    row("stock id missing", stocksOf(R"({"code": "EAST"})"), wrong("stocks", 1, "id"));
    row("stock id 0", stocksOf(R"({"id": 0, "code": "EAST"})"), wrong("stocks", 1, "id"));
    row("stock id negative", stocksOf(R"({"id": -1, "code": "EAST"})"), wrong("stocks", 1, "id"));
    row("stock id with a fraction", stocksOf(R"({"id": 1.5, "code": "EAST"})"),
        wrong("stocks", 1, "id"));
    row("stock id in quotes", stocksOf(R"({"id": "1", "code": "EAST"})"), wrong("stocks", 1, "id"));
    row("stock id too large", stocksOf(R"({"id": 2147483648, "code": "EAST"})"),
        wrong("stocks", 1, "id"));
    row("stock id far too large", stocksOf(R"({"id": 1e300, "code": "EAST"})"),
        wrong("stocks", 1, "id"));
    row("stock code missing", stocksOf(R"({"id": 1})"), wrong("stocks", 1, "code"));
    row("stock code empty", stocksOf(R"({"id": 1, "code": ""})"), wrong("stocks", 1, "code"));
    row("stock code with a slash", stocksOf(R"({"id": 1, "code": "EA/ST"})"),
        wrong("stocks", 1, "code"));
    row("stock code one point", stocksOf(R"({"id": 1, "code": "."})"), wrong("stocks", 1, "code"));
    row("stock code two points", stocksOf(R"({"id": 1, "code": ".."})"),
        wrong("stocks", 1, "code"));
    row("stock code a number", stocksOf(R"({"id": 1, "code": 5})"), wrong("stocks", 1, "code"));
    row("wrong third entry",
        stocksOf(R"({"id": 1, "code": "A"}, {"id": 2, "code": "B"}, {"id": 3})"),
        wrong("stocks", 3, "code"));
    row("stock code twice", stocksOf(R"({"id": 1, "code": "A"}, {"id": 2, "code": "A"})"),
        repeated("stocks", 2, "code"));
    row("stock id twice", stocksOf(R"({"id": 1, "code": "A"}, {"id": 1, "code": "B"})"),
        repeated("stocks", 2, "id"));

    row("board without a stock", boardsOf(R"({"id": 1, "code": "SPOT", "flags": 4})"),
        wrong("boards", 1, "stock"));
    row("board id 0", boardsOf(R"({"stock": "EAST", "id": 0, "code": "SPOT", "flags": 4})"),
        wrong("boards", 1, "id"));
    row("board code with a slash",
        boardsOf(R"({"stock": "EAST", "id": 1, "code": "/SPOT", "flags": 4})"),
        wrong("boards", 1, "code"));
    row("board flags missing", boardsOf(R"({"stock": "EAST", "id": 1, "code": "SPOT"})"),
        wrong("boards", 1, "flags"));
    row("board flags negative",
        boardsOf(R"({"stock": "EAST", "id": 1, "code": "SPOT", "flags": -1})"),
        wrong("boards", 1, "flags"));
    row("board of an unknown stock",
        boardsOf(R"({"stock": "WEST", "id": 1, "code": "SPOT", "flags": 4})"),
        unknown("boards", 1, "stock"));
    row("board code twice", boardsOf(R"({"stock": "EAST", "id": 1, "code": "SPOT", "flags": 4},
                    {"stock": "EAST", "id": 2, "code": "SPOT", "flags": 4})"),
        repeated("boards", 2, "code"));
    row("board id twice", boardsOf(R"({"stock": "EAST", "id": 1, "code": "SPOT", "flags": 4},
                    {"stock": "EAST", "id": 1, "code": "FUT", "flags": 4})"),
        repeated("boards", 2, "id"));

    row("security without a stock",
        securitiesOf(R"({"board": "SPOT", "id": 1, "code": "AAA", "decimals": 2})"),
        wrong("securities", 1, "stock"));
    row("security without a board",
        securitiesOf(R"({"stock": "EAST", "id": 1, "code": "AAA", "decimals": 2})"),
        wrong("securities", 1, "board"));
    row("security id 0",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 0, "code": "AAA", "decimals": 2})"),
        wrong("securities", 1, "id"));
    row("security code two points",
        securitiesOf(R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "..", "decimals": 2})"),
        wrong("securities", 1, "code"));
    row("decimals missing",
        securitiesOf(R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA"})"),
        wrong("securities", 1, "decimals"));
    row("decimals 16",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 16})"),
        wrong("securities", 1, "decimals"));
    row("decimals negative",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": -1})"),
        wrong("securities", 1, "decimals"));
    row("decimals with a fraction",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 2.5})"),
        wrong("securities", 1, "decimals"));
    row("security of an unknown stock",
        securitiesOf(
            R"({"stock": "WEST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 2})"),
        unknown("securities", 1, "stock"));
    row("security of an unknown board",
        securitiesOf(R"({"stock": "EAST", "board": "FUT", "id": 1, "code": "AAA", "decimals": 2})"),
        unknown("securities", 1, "board"));
    row("security of another venue's board",
        document(R"("stocks": [{"id": 1, "code": "EAST"}, {"id": 2, "code": "WEST"}])", boardsJson,
                 R"("securities": [{"stock": "WEST", "board": "SPOT", "id": 1, "code": "AAA",
                                    "decimals": 2}])"),
        unknown("securities", 1, "board"));
    row("security code twice",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 2},
               {"stock": "EAST", "board": "SPOT", "id": 2, "code": "AAA", "decimals": 2})"),
        repeated("securities", 2, "code"));
    row("security id twice",
        securitiesOf(
            R"({"stock": "EAST", "board": "SPOT", "id": 1, "code": "AAA", "decimals": 2},
               {"stock": "EAST", "board": "SPOT", "id": 1, "code": "BBB", "decimals": 2})"),
        repeated("securities", 2, "id"));
}

void ReferenceDataTest::fileErrors()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, what);

    const QTemporaryDir dir;
    const QString path = dir.filePath("%1 broken.json");
    testsupport::writeFile(path, content);
    const auto data = ReferenceData::fromFile(path);
    QVERIFY(!data);
    const QString error = data.message();
    const QString prefix = "Ошибка в справочнике " + path + ": ";
    QCOMPARE(error.left(prefix.size()), prefix);
    if (what.isEmpty())
        QVERIFY2(error.size() > prefix.size(), qPrintable(error));
    else
        QCOMPARE(error.mid(prefix.size()), what);
}

void ReferenceDataTest::missingFile()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("none.json");
    const auto data = ReferenceData::fromFile(path);
    QVERIFY(!data);
    QCOMPARE(data.message(), "Невозможно открыть файл " + path);
}

void ReferenceDataTest::standardIsTheFileOfTheDataDirectory()
{
    auto data = ReferenceData::standard();
    QVERIFY2(data, qPrintable(data.message()));
    QCOMPARE(data->securities.size(), ReferenceData::demonstration().securities.size());
    QVERIFY2(!QFileInfo::exists(m_dataDir), "asking must create nothing");

    const QString path = m_dataDir + "/reference.json";
    testsupport::writeFile(path, document(stocksJson, boardsJson, securitiesJson));
    data = ReferenceData::standard();
    QVERIFY2(data, qPrintable(data.message()));
    QCOMPARE(data->stocks.size(), 1);
    QCOMPARE(data->stocks.first().code, QStringLiteral("EAST"));

    testsupport::writeFile(path, "broken");
    data = ReferenceData::standard();
    QVERIFY(!data);
    QVERIFY2(data.message().contains(path), qPrintable(data.message()));
}

void ReferenceDataTest::lookUpsWhileInstalling()
{
    const ReferenceData one{.stocks = {{1, "EAST", "один"}},
                            .boards = {{"EAST", 1, "SPOT", "один", 0}},
                            .securities = {{"EAST", "SPOT", 1, "AAA", "один", 2}}};
    const ReferenceData two{
        .stocks = {{2, "EAST", "два"}, {1, "WEST", "другая"}},
        .boards = {{"EAST", 2, "SPOT", "два", 0}, {"WEST", 1, "SPOT", "другая", 0}},
        .securities = {{"EAST", "SPOT", 2, "AAA", "два", 4}, {"WEST", "SPOT", 1, "AAA", "", 3}}};
    ReferenceData::install(one);

    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::atomic<qint64> sawOne = 0;
    std::atomic<qint64> sawTwo = 0;
    std::array<std::thread, 4> readers;
    for (std::thread& reader : readers) {
        reader = std::thread([&] {
            while (!stop) {
                const int stock = stocks().idByCode("EAST");
                const QString name = stocks().nameByCode("EAST");
                const int board = boards().idByCode("EAST", "SPOT");
                const QString boardName = boards().nameByCode("EAST", "SPOT");
                const long long security = securities().idByCode("EAST", "SPOT", "AAA");
                const int decimals = securities().decimalsById(1, 1, 1);
                const bool right =
                    (stock == 1 || stock == 2) && (name == u"один" || name == u"два") &&
                    (board == 1 || board == 2) && (boardName == u"один" || boardName == u"два") &&
                    (security == 1 || security == 2) && (decimals == 2 || decimals == 3);
                wrong += !right;
                (stock == 1 ? sawOne : sawTwo) += 1;
            }
        });
    }
    // On until each of the two was seen often; the bound only ends a run that would never.
    int installs = 0;
    for (; installs < 20000 && (installs < 500 || sawOne < 100 || sawTwo < 100); ++installs) {
        ReferenceData::install(installs % 2 ? one : two);
        std::this_thread::yield();
    }
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    QCOMPARE(wrong.load(), 0);
    QVERIFY2(sawOne >= 100 && sawTwo >= 100, qPrintable(QString::number(installs)));
}

void ReferenceDataTest::unknownStocksFromSeveralThreads()
{
    constexpr int codes = 200;
    constexpr int threads = 4;
    std::vector<std::vector<int>> ids(threads, std::vector<int>(codes));
    std::vector<std::thread> askers;
    askers.reserve(threads);
    for (int thread = 0; thread < threads; ++thread) {
        askers.emplace_back([&ids, thread] {
            // Each from another end, so that each is the first to ask for some.
            for (int i = 0; i < codes; ++i) {
                const int code = (i + thread * codes / threads) % codes;
                ids.at(thread).at(code) = stocks().idByCode(QStringLiteral("THREADED%1").arg(code));
            }
        });
    }
    for (std::thread& asker : askers)
        asker.join();
    QSet<int> distinct;
    for (const int id : ids.front()) {
        QVERIFY(id < 0);
        distinct.insert(id);
    }
    QCOMPARE(distinct.size(), codes);
    for (const std::vector<int>& other : ids)
        QCOMPARE(other, ids.front());
}

QTEST_GUILESS_MAIN(ReferenceDataTest)
#include "tst_referencedata.moc"
