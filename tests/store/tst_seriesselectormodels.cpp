// SPDX-License-Identifier: MIT
#include "seriesselectormodels.h"

#include "support/filetree.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/database/record.h>
#include <vexdesk/properties.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectorbox.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <memory>

using testsupport::choose;
using vexdesk::ReferenceData;

namespace {

using Reporting = QAbstractItemModelTester::FailureReportingMode;

QString keyOf(const StockSelectorModel::Data& entry)
{
    return entry.code;
}

QString keyOf(const BoardSelectorModel::Data& entry)
{
    return entry.stockCode + u'/' + entry.boardCode;
}

QString keyOf(const SecuritySelectorModel::Data& entry)
{
    return entry.stockCode + u'/' + entry.boardCode + u'/' + entry.securityCode;
}

// The paths in the store that the entries stand for.
template <typename Model>
QStringList keys(const Model& model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row)
        all.append(keyOf(model.at(row)));
    return all;
}

template <typename Model>
QStringList populated(bool storedOnly)
{
    Model model(storedOnly, nullptr);
    const QAbstractItemModelTester tester(&model, Reporting::QtTest);
    model.populate();
    return keys(model);
}

QStringList storedStocks()
{
    return populated<StockWithStoredSelectorModel>(true);
}

QStringList storedBoards()
{
    return populated<BoardWithStoredSelectorModel>(true);
}

QStringList storedSecurities()
{
    return populated<SecurityWithStoredSelectorModel>(true);
}

QStringList texts(const QAbstractItemModel& model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row)
        all.append(model.index(row, 0).data().toString());
    return all;
}

// What a box offers: the beginnings of the texts, which are the codes.
QStringList offered(const QComboBox* box)
{
    QStringList codes;
    for (int i = 0; i < box->count(); ++i)
        codes.append(box->itemText(i).section(QLatin1Char(' '), 0, 0));
    return codes;
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

} // namespace

class TestSeriesSelectorModels final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anEmptyStoreListsNothing();
    void nothingIsListedBeforePopulating();
    void listsEachDirectoryOfItsLevel();
    void listsASeriesWithoutFiles();
    void filesPlayNoPart();
    void hiddenDirectoriesAreSkipped();
    void deeperDirectoriesPlayNoPart();

    void aKnownVenueHasItsIdAndName();
    void anUnknownVenueHasWhatTheDirectorySays();
    void aKnownBoardHasItsIdsAndName();
    void anUnknownBoardHasWhatTheDirectoriesSay();
    void aSecurityHasItsDirectorysNameAlone();

    void stocksAreInTheOrderOfCodeUnits();
    void boardsAreInTheOrderOfStockIds();
    void boardsOfUnknownVenuesAreAllListed();
    void securitiesAreInTheOrderOfTheirCodes();

    void storedStocksAreMergedIn();
    void storedBoardsAreMergedIn();
    void storedSecuritiesAreMergedIn();
    void theTerminalsEntriesAloneWithAnEmptyStore();

    void populatingAgainChangesNothing();
    void whatIsNewAppears();
    void whatHasVanishedStays();
    void whatHasVanishedGoesWithTheTerminalsEntries();
    void aPopulationIsAReset();

    void hasAMetaObjectOfItsOwn_data();
    void hasAMetaObjectOfItsOwn();
    void isFlat();
    void acceptsEveryRecord();

    void boxesOfferWhatIsStored();
    void boxesOfferUnknownVenuesBoards();
    void aBoxPopulatesItsModel();

private:
    void store(const QStringList& paths);
    QString path(const char* name) const
    {
        return m_user.filePath(QStringLiteral("tadata/") + QLatin1String(name));
    }

    QDir m_user;
};

void TestSeriesSelectorModels::init()
{
    testsupport::failOnStrayWarnings();
    ReferenceData::install(ReferenceData::demonstration());
    m_user = testsupport::newUserFolder();
}

void TestSeriesSelectorModels::cleanup()
{
    QVERIFY(m_user.removeRecursively());
}

void TestSeriesSelectorModels::store(const QStringList& paths)
{
    for (const QString& path : paths)
        QVERIFY(m_user.mkpath(QStringLiteral("tadata/") + path));
}

void TestSeriesSelectorModels::anEmptyStoreListsNothing()
{
    QCOMPARE(storedStocks(), QStringList());
    QVERIFY(m_user.exists(QStringLiteral("tadata")));
    QCOMPARE(storedBoards(), QStringList());
    QCOMPARE(storedSecurities(), QStringList());
    QVERIFY(QDir(m_user.filePath(QStringLiteral("tadata"))).isEmpty());
}

void TestSeriesSelectorModels::nothingIsListedBeforePopulating()
{
    store({"NORD/MAIN/ALFA"});
    QCOMPARE(StockWithStoredSelectorModel(true, nullptr).rowCount(), 0);
    QCOMPARE(BoardWithStoredSelectorModel(true, nullptr).rowCount(), 0);
    QCOMPARE(SecurityWithStoredSelectorModel(true, nullptr).rowCount(), 0);
    QCOMPARE(StockWithStoredSelectorModel(false, nullptr).rowCount(), 0);
}

void TestSeriesSelectorModels::listsEachDirectoryOfItsLevel()
{
    store({"NORD/MAIN/ALFA", "NORD/MAIN/GRAN", "NORD/ODD/ALFA", "ORIENT/FX", "NORDFUT"});
    QCOMPARE(storedStocks(), QStringList({"NORD", "NORDFUT", "ORIENT"}));
    QCOMPARE(storedBoards(), QStringList({"NORD/MAIN", "NORD/ODD", "ORIENT/FX"}));
    QCOMPARE(storedSecurities(),
             QStringList({"NORD/MAIN/ALFA", "NORD/MAIN/GRAN", "NORD/ODD/ALFA"}));
}

void TestSeriesSelectorModels::listsASeriesWithoutFiles()
{
    store({"NORD/MAIN/EMPTY"});
    testsupport::writeFile(path("NORD/MAIN/ALFA/20240115_60.iss"), "");
    QCOMPARE(storedSecurities(), QStringList({"NORD/MAIN/ALFA", "NORD/MAIN/EMPTY"}));
}

void TestSeriesSelectorModels::filesPlayNoPart()
{
    store({"NORD/MAIN/ALFA"});
    testsupport::writeFile(path("AFILE"), "x");
    testsupport::writeFile(path("NORD/AFILE"), "x");
    testsupport::writeFile(path("NORD/MAIN/AFILE"), "x");
    testsupport::writeFile(path("NORD/MAIN/ALFA/AFILE"), "x");
    QCOMPARE(storedStocks(), QStringList({"NORD"}));
    QCOMPARE(storedBoards(), QStringList({"NORD/MAIN"}));
    QCOMPARE(storedSecurities(), QStringList({"NORD/MAIN/ALFA"}));
}

void TestSeriesSelectorModels::hiddenDirectoriesAreSkipped()
{
#ifndef Q_OS_UNIX
    QSKIP("A dot hides a directory on Unix only");
#endif
    store({".A/B/C", "NORD/.B/C", "NORD/MAIN/.C", "NORD/MAIN/ALFA"});
    QCOMPARE(storedStocks(), QStringList({"NORD"}));
    QCOMPARE(storedBoards(), QStringList({"NORD/MAIN"}));
    QCOMPARE(storedSecurities(), QStringList({"NORD/MAIN/ALFA"}));
}

void TestSeriesSelectorModels::deeperDirectoriesPlayNoPart()
{
    store({"NORD/MAIN/ALFA/DEEP/DEEPER"});
    QCOMPARE(storedStocks(), QStringList({"NORD"}));
    QCOMPARE(storedBoards(), QStringList({"NORD/MAIN"}));
    QCOMPARE(storedSecurities(), QStringList({"NORD/MAIN/ALFA"}));
}

void TestSeriesSelectorModels::aKnownVenueHasItsIdAndName()
{
    store({"ORIENT"});
    StockWithStoredSelectorModel model(true, nullptr);
    model.populate();
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(model.at(0).enabled);
    QCOMPARE(model.at(0).stockId, 2);
    QCOMPARE(model.at(0).name, QStringLiteral("Площадка «Ориент»"));
    QCOMPARE(model.at(0).code, QStringLiteral("ORIENT"));
    QCOMPARE(texts(model), QStringList({"ORIENT — Площадка «Ориент»"}));
}

void TestSeriesSelectorModels::anUnknownVenueHasWhatTheDirectorySays()
{
    store({"gone & lost"});
    const QString code = QStringLiteral("gone & lost");
    StockWithStoredSelectorModel model(true, nullptr);
    model.populate();
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(model.at(0).enabled);
    QCOMPARE(model.at(0).code, code);
    QVERIFY(model.at(0).stockId < 0);
    QCOMPARE(model.at(0).stockId, StockDirectory::i().idByCode(code));
    QCOMPARE(model.at(0).name, StockDirectory::i().nameByCode(code));
    QCOMPARE(texts(model), QStringList({code}));
}

void TestSeriesSelectorModels::aKnownBoardHasItsIdsAndName()
{
    store({"ORIENT/MAIN"});
    BoardWithStoredSelectorModel model(true, nullptr);
    model.populate();
    QCOMPARE(model.rowCount(), 1);
    const BoardSelectorModel::Data& board = model.at(0);
    QVERIFY(board.enabled);
    QCOMPARE(board.name, QStringLiteral("Основной режим"));
    QCOMPARE(board.boardCode, QStringLiteral("MAIN"));
    QCOMPARE(board.stockCode, QStringLiteral("ORIENT"));
    QCOMPARE(board.stockId, 2);
    QCOMPARE(board.boardId, 2);
    QCOMPARE(board.flags, 0);
}

void TestSeriesSelectorModels::anUnknownBoardHasWhatTheDirectoriesSay()
{
    store({"GONE/MAIN", "NORD/OLD"});
    BoardWithStoredSelectorModel model(true, nullptr);
    model.populate();
    QCOMPARE(keys(model), QStringList({"GONE/MAIN", "NORD/OLD"}));
    for (int row = 0; row < model.rowCount(); ++row) {
        const BoardSelectorModel::Data& board = model.at(row);
        QVERIFY(board.enabled);
        QCOMPARE(board.stockId, StockDirectory::i().idByCode(board.stockCode));
        QCOMPARE(board.boardId, 0);
        QCOMPARE(board.name, QString());
    }
    QCOMPARE(model.at(1).stockId, 1);
}

void TestSeriesSelectorModels::aSecurityHasItsDirectorysNameAlone()
{
    // Known or not: nothing is looked up.
    store({"NORD/MAIN/ALFA", "NORD/MAIN/Привет"});
    SecurityWithStoredSelectorModel model(true, nullptr);
    model.populate();
    QCOMPARE(keys(model), QStringList({"NORD/MAIN/ALFA", "NORD/MAIN/Привет"}));
    for (int row = 0; row < model.rowCount(); ++row) {
        const SecuritySelectorModel::Data& security = model.at(row);
        QCOMPARE(security.securityName, security.securityCode);
        QCOMPARE(security.securityId, 0);
        QCOMPARE(security.title, QString());
    }
    QCOMPARE(texts(model), QStringList({"ALFA", "Привет"}));
}

void TestSeriesSelectorModels::stocksAreInTheOrderOfCodeUnits()
{
    // Capital letters before small ones and digits before both; the last but one is written with
    // surrogates, whose numbers are less than those of the full-width letter.
    const QStringList order{"1", "10", "9", "A", "AB", "B", "_",
                            "a", "Ё",  "А", "а", "ё",  "𐐀", "Ａ"};
    store(order);
    QCOMPARE(storedStocks(), order);
}

void TestSeriesSelectorModels::boardsAreInTheOrderOfStockIds()
{
    // By number, not by the text of the id or the code of the venue.
    ReferenceData data;
    data.stocks = {{10, QStringLiteral("A"), QString()},
                   {9, QStringLiteral("B"), QString()},
                   {1, QStringLiteral("C"), QString()}};
    ReferenceData::install(data);
    store({"A/X", "A/Y", "B/X", "B/b", "B/a", "C/X", "C/W"});
    QCOMPARE(storedBoards(), QStringList({"C/W", "C/X", "B/X", "B/a", "B/b", "A/X", "A/Y"}));
}

void TestSeriesSelectorModels::boardsOfUnknownVenuesAreAllListed()
{
    store({"GONE1/MAIN", "GONE2/MAIN", "NORD/MAIN", "ORIENT/MAIN"});
    const QStringList boards = storedBoards();
    QCOMPARE(sorted(boards), QStringList({"GONE1/MAIN", "GONE2/MAIN", "NORD/MAIN", "ORIENT/MAIN"}));
    // What is unknown has negative ids.
    QCOMPARE(boards.mid(2), QStringList({"NORD/MAIN", "ORIENT/MAIN"}));
}

void TestSeriesSelectorModels::securitiesAreInTheOrderOfTheirCodes()
{
    const QStringList order{"A/A/z", "A/B/A",  "A/B/B", "A/B/a", "A/a/A",
                            "B/A/A", "B/A/AA", "B/A/B", "a/A/A"};
    QStringList backwards = order;
    std::reverse(backwards.begin(), backwards.end());
    store(backwards);
    QCOMPARE(storedSecurities(), order);
}

void TestSeriesSelectorModels::storedStocksAreMergedIn()
{
    // One that it has, and others before, between and behind.
    store({"NORD", "AAA", "NORDA", "ZZZ"});
    StockWithStoredSelectorModel model(false, nullptr);
    const QAbstractItemModelTester tester(&model, Reporting::QtTest);
    model.populate();
    QCOMPARE(keys(model), QStringList({"AAA", "NORD", "NORDA", "NORDFUT", "ORIENT", "ZZZ"}));
    QCOMPARE(model.at(1).stockId, 1);
    QCOMPARE(model.at(1).name, QStringLiteral("Площадка «Норд»"));
    QVERIFY(model.at(0).stockId < 0);
}

void TestSeriesSelectorModels::storedBoardsAreMergedIn()
{
    store({"NORD/REPO", "NORD/OLD", "GONE/MAIN"});
    BoardWithStoredSelectorModel model(false, nullptr);
    const QAbstractItemModelTester tester(&model, Reporting::QtTest);
    model.populate();
    QCOMPARE(keys(model),
             QStringList({"GONE/MAIN", "NORD/MAIN", "NORD/NEGO", "NORD/ODD", "NORD/OLD",
                          "NORD/REPO", "ORIENT/CLEAR", "ORIENT/FX", "ORIENT/MAIN", "NORDFUT/FUT"}));
    // The terminal's entry has flags, which one of the store never has.
    QCOMPARE(model.at(5).flags, 68);
    QCOMPARE(model.at(4).flags, 0);
}

void TestSeriesSelectorModels::storedSecuritiesAreMergedIn()
{
    SecuritySelectorModel terminals(nullptr, true);
    terminals.populate();
    store({"NORD/MAIN/ALFA", "NORD/MAIN/ALFA1", "NORD/ZZZ/ALFA", "AAA/MAIN/ALFA"});
    SecurityWithStoredSelectorModel model(false, nullptr);
    const QAbstractItemModelTester tester(&model, Reporting::QtTest);
    model.populate();

    const QStringList all = keys(model);
    const QStringList added{"AAA/MAIN/ALFA", "NORD/MAIN/ALFA1", "NORD/ZZZ/ALFA"};
    QCOMPARE(sorted(all), sorted(keys(terminals) + added));
    QCOMPARE(all.first(), added.first());
    QCOMPARE(all.indexOf(added.at(1)), all.indexOf(QStringLiteral("NORD/MAIN/ALFA")) + 1);
    const auto& known = model.at(int(all.indexOf(QStringLiteral("NORD/MAIN/ALFA"))));
    QCOMPARE(known.securityId, 101);
    QCOMPARE(known.title, QStringLiteral("Альфа, обыкновенные"));
    QCOMPARE(model.at(0).securityId, 0);
    QVERIFY(texts(model).contains(QStringLiteral("ALFA — Альфа, обыкновенные")));
}

void TestSeriesSelectorModels::theTerminalsEntriesAloneWithAnEmptyStore()
{
    SecuritySelectorModel securities(nullptr, true);
    securities.populate();
    QCOMPARE(populated<StockWithStoredSelectorModel>(false),
             QStringList({"NORD", "NORDFUT", "ORIENT"}));
    QCOMPARE(populated<BoardWithStoredSelectorModel>(false).size(), 8);
    QCOMPARE(populated<SecurityWithStoredSelectorModel>(false), keys(securities));
}

void TestSeriesSelectorModels::populatingAgainChangesNothing()
{
    store({"NORD/MAIN/ALFA", "GONE/OLD/X"});
    for (const bool storedOnly : {true, false}) {
        StockWithStoredSelectorModel stocks(storedOnly, nullptr);
        BoardWithStoredSelectorModel boards(storedOnly, nullptr);
        SecurityWithStoredSelectorModel securities(storedOnly, nullptr);
        stocks.populate();
        boards.populate();
        securities.populate();
        const QStringList before = keys(stocks) + keys(boards) + keys(securities);
        stocks.populate();
        boards.populate();
        securities.populate();
        QCOMPARE(keys(stocks) + keys(boards) + keys(securities), before);
    }
}

void TestSeriesSelectorModels::whatIsNewAppears()
{
    store({"B/B/B"});
    StockWithStoredSelectorModel stocks(true, nullptr);
    BoardWithStoredSelectorModel boards(true, nullptr);
    SecurityWithStoredSelectorModel securities(true, nullptr);
    stocks.populate();
    boards.populate();
    securities.populate();
    store({"A/A/A", "B/A/A", "B/B/A", "B/B/C", "C/C/C"});
    QCOMPARE(keys(stocks), QStringList({"B"}));
    stocks.populate();
    boards.populate();
    securities.populate();
    QCOMPARE(keys(stocks), QStringList({"A", "B", "C"}));
    QCOMPARE(sorted(keys(boards)), QStringList({"A/A", "B/A", "B/B", "C/C"}));
    QVERIFY(keys(boards).indexOf("B/A") < keys(boards).indexOf("B/B"));
    QCOMPARE(keys(securities), QStringList({"A/A/A", "B/A/A", "B/B/A", "B/B/B", "B/B/C", "C/C/C"}));
}

void TestSeriesSelectorModels::whatHasVanishedStays()
{
    store({"NORD/MAIN/ALFA", "ORIENT/FX/EURUSD"});
    StockWithStoredSelectorModel stocks(true, nullptr);
    BoardWithStoredSelectorModel boards(true, nullptr);
    SecurityWithStoredSelectorModel securities(true, nullptr);
    stocks.populate();
    boards.populate();
    securities.populate();
    QVERIFY(QDir(path("NORD")).removeRecursively());
    store({"NORDFUT/FUT/X"});
    stocks.populate();
    boards.populate();
    securities.populate();
    QCOMPARE(keys(stocks), QStringList({"NORD", "NORDFUT", "ORIENT"}));
    QCOMPARE(keys(boards), QStringList({"NORD/MAIN", "ORIENT/FX", "NORDFUT/FUT"}));
    QCOMPARE(keys(securities),
             QStringList({"NORD/MAIN/ALFA", "NORDFUT/FUT/X", "ORIENT/FX/EURUSD"}));
    // Until the model goes.
    QCOMPARE(storedStocks(), QStringList({"NORDFUT", "ORIENT"}));
}

void TestSeriesSelectorModels::whatHasVanishedGoesWithTheTerminalsEntries()
{
    store({"GONE/OLD/X"});
    StockWithStoredSelectorModel stocks(false, nullptr);
    stocks.populate();
    QVERIFY(keys(stocks).contains(QStringLiteral("GONE")));
    QVERIFY(QDir(path("GONE")).removeRecursively());
    stocks.populate();
    QCOMPARE(keys(stocks), QStringList({"NORD", "NORDFUT", "ORIENT"}));
}

void TestSeriesSelectorModels::aPopulationIsAReset()
{
    store({"NORD/MAIN/ALFA"});
    SecurityWithStoredSelectorModel model(true, nullptr);
    const QAbstractItemModelTester tester(&model, Reporting::QtTest);
    const QSignalSpy before(&model, &QAbstractItemModel::modelAboutToBeReset);
    const QSignalSpy after(&model, &QAbstractItemModel::modelReset);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.populate();
    QCOMPARE(before.size(), 1);
    QCOMPARE(after.size(), 1);
    QCOMPARE(inserted.size(), 0);
}

void TestSeriesSelectorModels::hasAMetaObjectOfItsOwn_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<const QMetaObject*>("base");
    QTest::newRow("stocks") << &StockWithStoredSelectorModel::staticMetaObject
                            << QByteArray("StockWithStoredSelectorModel")
                            << &StockSelectorModel::staticMetaObject;
    QTest::newRow("boards") << &BoardWithStoredSelectorModel::staticMetaObject
                            << QByteArray("BoardWithStoredSelectorModel")
                            << &BoardSelectorModel::staticMetaObject;
    QTest::newRow("securities") << &SecurityWithStoredSelectorModel::staticMetaObject
                                << QByteArray("SecurityWithStoredSelectorModel")
                                << &SecuritySelectorModel::staticMetaObject;
}

void TestSeriesSelectorModels::hasAMetaObjectOfItsOwn()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(const QByteArray, name);
    QFETCH(const QMetaObject*, base);
    QCOMPARE(QByteArray(meta->className()), name);
    QCOMPARE(meta->superClass(), base);
    QCOMPARE(meta->methodCount(), base->methodCount());
    QCOMPARE(meta->propertyCount(), base->propertyCount());
}

void TestSeriesSelectorModels::isFlat()
{
    store({"NORD/MAIN/ALFA"});
    StockWithStoredSelectorModel stocks(true, nullptr);
    BoardWithStoredSelectorModel boards(true, nullptr);
    SecurityWithStoredSelectorModel securities(true, nullptr);
    for (SelectorModel* const model :
         {static_cast<SelectorModel*>(&stocks), static_cast<SelectorModel*>(&boards),
          static_cast<SelectorModel*>(&securities)}) {
        model->populate();
        QCOMPARE(model->rowCount(), 1);
        const QModelIndex first = model->index(0, 0);
        QVERIFY(first.isValid());
        QVERIFY(!model->parent(first).isValid());
        QCOMPARE(model->rowCount(first), 0);
    }
}

void TestSeriesSelectorModels::acceptsEveryRecord()
{
    const StockWithStoredSelectorModel model(true, nullptr);
    QVERIFY(model.filter(Record::null));
}

void TestSeriesSelectorModels::boxesOfferWhatIsStored()
{
    store({"NORD/MAIN/ALFA", "NORD/MAIN/OLD", "NORD/ODD/VEGA", "ORIENT/FX/EURUSD",
           "ORIENT/FX/GBPUSD", "ORIENT/MAIN/ALFA"});
    QWidget form;
    auto* const stock = new StockSelectorBox(&form);
    auto* const board = new BoardSelectorBox(&form);
    auto* const security = new SecuritySelectorBox(&form);
    auto* const column = new QVBoxLayout(&form);
    for (QWidget* const box : {static_cast<QWidget*>(stock), static_cast<QWidget*>(board),
                               static_cast<QWidget*>(security)})
        column->addWidget(box);
    Properties properties;
    properties.connectAll(&form);
    stock->setSourceModel(new StockWithStoredSelectorModel(true, nullptr));
    board->setSourceModel(new BoardWithStoredSelectorModel(true, nullptr));
    security->setSourceModel(new SecurityWithStoredSelectorModel(true, nullptr));
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));

    QCOMPARE(offered(stock), QStringList({"NORD", "ORIENT"}));
    QCOMPARE(offered(board), QStringList());
    QCOMPARE(offered(security), QStringList());
    choose(stock, QStringLiteral("NORD "));
    QCOMPARE(offered(board), QStringList({"MAIN", "ODD"}));
    QCOMPARE(offered(security), QStringList());
    choose(board, QStringLiteral("MAIN "));
    QCOMPARE(offered(security), QStringList({"ALFA", "OLD"}));
    choose(security, QStringLiteral("ALFA"));
    QCOMPARE(stock->getStockId(), 1);
    QCOMPARE(board->getBoardId(), 1);
    // The entry has no id, the directory knows it.
    QCOMPARE(security->getSecurityId(), 101);
    QCOMPARE(security->getSecurityName(), QStringLiteral("ALFA"));
    choose(security, QStringLiteral("OLD"));
    QCOMPARE(security->getSecurityId(), 0);
    QCOMPARE(security->getSecurityName(), QStringLiteral("OLD"));

    choose(stock, QStringLiteral("ORIENT "));
    QCOMPARE(offered(board), QStringList({"FX", "MAIN"}));
    choose(board, QStringLiteral("FX "));
    QCOMPARE(offered(security), QStringList({"EURUSD", "GBPUSD"}));
}

void TestSeriesSelectorModels::boxesOfferUnknownVenuesBoards()
{
    store({"GONE1/MAIN/A", "GONE1/SIDE/A", "GONE2/MAIN/B"});
    BoardSelectorBox board;
    board.setSourceModel(new BoardWithStoredSelectorModel(true, nullptr));
    board.setStockCode(QStringLiteral("GONE1"));
    QCOMPARE(offered(&board), QStringList({"MAIN", "SIDE"}));
    board.setStockCode(QStringLiteral("GONE2"));
    QCOMPARE(offered(&board), QStringList({"MAIN"}));
    SecuritySelectorBox security;
    security.setSourceModel(new SecurityWithStoredSelectorModel(true, nullptr));
    security.setBoard(QStringLiteral("GONE2"), QStringLiteral("MAIN"));
    QCOMPARE(offered(&security), QStringList({"B"}));
}

void TestSeriesSelectorModels::aBoxPopulatesItsModel()
{
    store({"NORD", "ORIENT"});
    StockSelectorBox box;
    auto* const model = new StockWithStoredSelectorModel(true, nullptr);
    box.setSourceModel(model);
    QCOMPARE(offered(&box), QStringList({"NORD", "ORIENT"}));
    QCOMPARE(model->QObject::parent(), &box);
    store({"AAA"});
    QCOMPARE(offered(&box), QStringList({"NORD", "ORIENT"}));
    model->populate();
    QCOMPARE(offered(&box), QStringList({"AAA", "NORD", "ORIENT"}));
}

QTEST_MAIN(TestSeriesSelectorModels)
#include "tst_seriesselectormodels.moc"
