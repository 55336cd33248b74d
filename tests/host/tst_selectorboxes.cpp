// SPDX-License-Identifier: MIT
// The boxes in which a user chooses a venue, a board and a security.

#include "support/hands.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/boardselectorbox.h>
#include <vexdesk/boardselectormodel.h>
#include <vexdesk/database/table.h>
#include <vexdesk/properties.h>
#include <vexdesk/securitydirectory.h>
#include <vexdesk/securityselectorbox.h>
#include <vexdesk/securityselectormodel.h>
#include <vexdesk/stockdirectory.h>
#include <vexdesk/stockselectorbox.h>
#include <vexdesk/stockselectormodel.h>
#include <vexdesk/terminal/referencedata.h>

#include <QtCore/QScopeGuard>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

#include <memory>

using testsupport::choose;
using vexdesk::ReferenceData;

namespace {

// What a form with the three boxes looks like to a user.
class Form final : public QWidget
{
public:
    Form()
        : stock(new StockSelectorBox)
        , board(new BoardSelectorBox)
        , security(new SecuritySelectorBox)
    {
        auto* const column = new QVBoxLayout(this);
        column->addWidget(stock);
        column->addWidget(board);
        column->addWidget(security);
        properties.connectAll(this);
        show();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }

    StockSelectorBox* stock;
    BoardSelectorBox* board;
    SecuritySelectorBox* security;
    Properties properties;
};

// What a box offers: the beginnings of the texts, which are the codes.
QStringList offered(const QComboBox& box)
{
    QStringList codes;
    for (int i = 0; i < box.count(); ++i)
        codes.append(box.itemText(i).section(QLatin1Char(' '), 0, 0));
    return codes;
}

QStringList texts(const QAbstractItemModel& model)
{
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row)
        all.append(model.index(row, 0).data().toString());
    return all;
}

QStringList taken(QSignalSpy& spy)
{
    QStringList codes;
    while (!spy.isEmpty())
        codes.append(spy.takeFirst().first().toString());
    return codes;
}

// Codes that other programs have put there, without an id of their own.
class CodesModel final : public StockSelectorModel
{
public:
    CodesModel(const QStringList& codes, QObject* parent)
        : StockSelectorModel(parent)
        , m_codes(codes)
    {}

    void setCodes(const QStringList& codes) { m_codes = codes; }
    int populated() const { return m_populated; }

    void populate() override
    {
        ++m_populated;
        beginResetModel();
        m_list.clear();
        for (const QString& code : std::as_const(m_codes))
            m_list.append({true, 0, QString(), code});
        endResetModel();
    }

private:
    QStringList m_codes;
    int m_populated = 0;
};

// Every second entry cannot be chosen.
template <typename Model>
class HalfDisabled final : public Model
{
public:
    using Model::Model;
    void populate() override
    {
        Model::populate();
        this->beginResetModel();
        for (qsizetype i = 1; i < this->m_list.size(); i += 2)
            this->m_list[i].enabled = false;
        this->endResetModel();
    }
};

class BoardsWithoutIds final : public BoardSelectorModel
{
public:
    using BoardSelectorModel::BoardSelectorModel;
    void populate() override
    {
        BoardSelectorModel::populate();
        beginResetModel();
        for (Data& entry : m_list)
            entry.boardId = 0;
        m_list.append({true, QString(), QStringLiteral("OLD"), QStringLiteral("NORD"), 1, 0, 0});
        endResetModel();
    }
};

class SecuritiesWithoutIds final : public SecuritySelectorModel
{
public:
    using SecuritySelectorModel::SecuritySelectorModel;
    void populate() override
    {
        SecuritySelectorModel::populate();
        beginResetModel();
        for (Data& entry : m_list)
            entry.securityId = 0;
        m_list.append({QStringLiteral("NORD"), QStringLiteral("OLD"), QStringLiteral("GONE"),
                       QStringLiteral("GONE"), 0, QString()});
        endResetModel();
    }
};

// Entries in no order at all.
ReferenceData shuffled()
{
    ReferenceData data;
    data.stocks = {{3, QStringLiteral("b"), QString()},
                   {1, QStringLiteral("Z"), QStringLiteral("Zet")},
                   {2, QStringLiteral("A"), QStringLiteral("A")}};
    data.boards = {{QStringLiteral("A"), 2, QStringLiteral("X"), QStringLiteral("Икс"), 4},
                   {QStringLiteral("b"), 1, QStringLiteral("B"), QString(), 4},
                   {QStringLiteral("Z"), 1, QStringLiteral("x"), QString(), 4},
                   {QStringLiteral("Z"), 2, QStringLiteral("X"), QString(), 4}};
    data.securities = {
        {QStringLiteral("Z"), QStringLiteral("x"), 1, QStringLiteral("S1"), QString(), 0},
        {QStringLiteral("Z"), QStringLiteral("X"), 1, QStringLiteral("T"), QString(), 0},
        {QStringLiteral("Z"), QStringLiteral("X"), 2, QStringLiteral("S10"), QString(), 0},
        {QStringLiteral("A"), QStringLiteral("X"), 1, QStringLiteral("S2"),
         QStringLiteral("Вторая"), 0},
        {QStringLiteral("Z"), QStringLiteral("X"), 3, QStringLiteral("S9"), QString(), 0}};
    return data;
}

} // namespace

class TestSelectorBoxes final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void stocksAreListedByCode();
    void boardsAreListedByStockIdAndCode();
    void securitiesAreListedByTheirCodes();
    void modelsAreFlat_data();
    void modelsAreFlat();
    void populatingAgainListsWhatThereIsNow();
    void stocksAcceptEveryRecord();

    void nothingIsChosenAtFirst();
    void theStockNarrowsTheBoardsAndTheBoardTheSecurities();
    void whatIsChosenHasIdCodeAndName();
    void startsWithTheStock_data();
    void startsWithTheStock();
    void otherValuesAreOnlyKept();
    void aFormNeedNotHaveAllTheBoxes();
    void aSingleEntryIsChosenByItself();
    void boardFlagsFilter_data();
    void boardFlagsFilter();
    void filteringKeepsTheChoice();
    void signalsComeOncePerChange();
    void theSameBoardCodeOfAnotherStockIsAnotherBoard();
    void typingTheBeginningOfACodeChoosesIt_data();
    void typingTheBeginningOfACodeChoosesIt();
    void arrowKeysChoose();
    void anIdThatTheRecordLacksIsLookedUp();
    void startsWithAStockWhoseIdIsLookedUp();
    void whatIsNotEnabledIsNotOffered();

    void aNewModelIsPopulatedAndOwned();
    void aModelWithAParentIsNotOwned();
    void anotherModelReplacesTheFirst();
    void theSameModelAgainStays();
    void aModelMayGoFirst();
    void aResetKeepsWhatIsStillOffered();
};

void TestSelectorBoxes::init()
{
    testsupport::failOnStrayWarnings();
    ReferenceData::install(ReferenceData::demonstration());
}

void TestSelectorBoxes::stocksAreListedByCode()
{
    ReferenceData::install(shuffled());
    StockSelectorModel model(nullptr);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 0);
    model.populate();
    // Capital letters first: by the numbers of the characters, in no locale.
    QCOMPARE(texts(model), QStringList({"A", "Z — Zet", "b"}));
    QCOMPARE(model.at(1).stockId, 1);
    QCOMPARE(model.at(1).code, QStringLiteral("Z"));
    QCOMPARE(model.at(1).name, QStringLiteral("Zet"));
    QVERIFY(model.at(1).enabled);
}

void TestSelectorBoxes::boardsAreListedByStockIdAndCode()
{
    ReferenceData::install(shuffled());
    BoardSelectorModel model(nullptr);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.populate();
    QStringList keys;
    for (int row = 0; row < model.rowCount(); ++row)
        keys.append(model.at(row).stockCode + u'/' + model.at(row).boardCode);
    QCOMPARE(keys, QStringList({"Z/X", "Z/x", "A/X", "b/B"}));
    QCOMPARE(texts(model), QStringList({"X", "x", "X — Икс", "B"}));
    QCOMPARE(model.at(2).stockId, 2);
    QCOMPARE(model.at(2).boardId, 2);
    QCOMPARE(model.at(2).name, QStringLiteral("Икс"));
    QCOMPARE(model.at(2).flags, 4);
    QVERIFY(model.at(2).enabled);
}

void TestSelectorBoxes::securitiesAreListedByTheirCodes()
{
    ReferenceData::install(shuffled());
    SecuritySelectorModel model(nullptr, true);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.populate();
    QStringList keys;
    for (int row = 0; row < model.rowCount(); ++row) {
        const SecuritySelectorModel::Data& entry = model.at(row);
        keys.append(entry.stockCode + u'/' + entry.boardCode + u'/' + entry.securityCode);
        QCOMPARE(entry.securityName, entry.securityCode);
    }
    QCOMPARE(keys, QStringList({"A/X/S2", "Z/X/S10", "Z/X/S9", "Z/X/T", "Z/x/S1"}));
    QCOMPARE(texts(model), QStringList({"S2 — Вторая", "S10", "S9", "T", "S1"}));
    QCOMPARE(model.at(1).securityId, 2);

    SecuritySelectorModel codes(nullptr, false);
    codes.populate();
    QCOMPARE(texts(codes), QStringList({"S2", "S10", "S9", "T", "S1"}));
}

void TestSelectorBoxes::modelsAreFlat_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("stocks") << 0;
    QTest::newRow("boards") << 1;
    QTest::newRow("securities") << 2;
}

void TestSelectorBoxes::modelsAreFlat()
{
    QFETCH(const int, kind);
    std::unique_ptr<SelectorModel> model;
    if (kind == 0)
        model = std::make_unique<StockSelectorModel>(nullptr);
    else if (kind == 1)
        model = std::make_unique<BoardSelectorModel>(nullptr);
    else
        model = std::make_unique<SecuritySelectorModel>(nullptr, true);
    const QAbstractItemModelTester tester(model.get(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model->populate();
    QVERIFY(model->rowCount() > 0);
    QCOMPARE(model->columnCount(), 1);
    const QModelIndex first = model->index(0, 0);
    QVERIFY(!model->parent(first).isValid());
    QCOMPARE(model->rowCount(first), 0);
    QCOMPARE(model->columnCount(first), 0);
    QVERIFY(!model->index(0, 0, first).isValid());
    QVERIFY(!model->index(model->rowCount(), 0).isValid());
    QVERIFY(!model->index(0, 1).isValid());
    QCOMPARE(model->flags(first),
             Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren);
    QVERIFY(!first.data(Qt::DecorationRole).isValid());
    QVERIFY(!model->data(QModelIndex()).isValid());
}

void TestSelectorBoxes::populatingAgainListsWhatThereIsNow()
{
    SecuritySelectorModel model(nullptr, true);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.populate();
    const int rows = model.rowCount();
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.populate();
    QCOMPARE(model.rowCount(), rows);
    QCOMPARE(reset.size(), 1);
    ReferenceData::install(shuffled());
    model.populate();
    QCOMPARE(model.rowCount(), 5);
}

void TestSelectorBoxes::stocksAcceptEveryRecord()
{
    const StockSelectorModel model(nullptr);
    QVERIFY(model.filter(Record::null));
    const QPointer<Table> securities = SecurityDirectory::i().table();
    for (const Record& row : securities->masterIndex())
        QVERIFY(model.filter(row));
    QVERIFY(model.filter(Record(securities)));
}

void TestSelectorBoxes::nothingIsChosenAtFirst()
{
    const Form form;
    QCOMPARE(offered(*form.stock), QStringList({"NORD", "NORDFUT", "ORIENT"}));
    QCOMPARE(form.stock->currentIndex(), -1);
    QCOMPARE(form.stock->getStockId(), 0);
    QCOMPARE(form.stock->getStockCode(), QString());
    QCOMPARE(form.stock->placeholderText(), QStringLiteral("не выбрано"));
    QCOMPARE(form.board->count(), 0);
    QCOMPARE(form.board->getBoardId(), 0);
    QCOMPARE(form.board->getBoardCode(), QString());
    QCOMPARE(form.board->getStockCode(), QString());
    QCOMPARE(form.security->count(), 0);
    QCOMPARE(form.security->getSecurityId(), 0);
    QCOMPARE(form.security->getSecurityCode(), QString());
    QCOMPARE(form.security->getSecurityName(), QString());
}

void TestSelectorBoxes::theStockNarrowsTheBoardsAndTheBoardTheSecurities()
{
    const Form form;
    choose(form.stock, QStringLiteral("NORD "));
    QCOMPARE(offered(*form.board), QStringList({"MAIN", "NEGO", "ODD", "REPO"}));
    QCOMPARE(form.board->currentIndex(), -1);
    QCOMPARE(form.security->count(), 0);

    choose(form.board, QStringLiteral("REPO "));
    QCOMPARE(offered(*form.security), QStringList({"ALFA", "GRAN"}));
    QCOMPARE(form.security->currentIndex(), -1);
    choose(form.board, QStringLiteral("ODD "));
    QCOMPARE(offered(*form.security),
             QStringList({"ALFA", "ALFAP", "BARK", "BORA", "GRAN", "VEGA"}));

    choose(form.stock, QStringLiteral("ORIENT "));
    QCOMPARE(offered(*form.board), QStringList({"CLEAR", "FX", "MAIN"}));
    QCOMPARE(form.board->currentIndex(), -1);
    QCOMPARE(form.security->count(), 0);
}

void TestSelectorBoxes::whatIsChosenHasIdCodeAndName()
{
    const Form form;
    choose(form.stock, QStringLiteral("ORIENT "));
    choose(form.board, QStringLiteral("FX "));
    choose(form.security, QStringLiteral("GBPUSD "));
    QCOMPARE(form.stock->getStockId(), 2);
    QCOMPARE(form.stock->getStockCode(), QStringLiteral("ORIENT"));
    QCOMPARE(form.board->getBoardId(), 1);
    QCOMPARE(form.board->getBoardCode(), QStringLiteral("FX"));
    QCOMPARE(form.board->getStockCode(), QStringLiteral("ORIENT"));
    QCOMPARE(form.security->getSecurityId(), 103);
    QCOMPARE(form.security->getSecurityCode(), QStringLiteral("GBPUSD"));
    QCOMPARE(form.security->getSecurityName(), QStringLiteral("GBPUSD"));
    QCOMPARE(form.security->currentText(), QStringLiteral("GBPUSD — Фунт — доллар"));
}

void TestSelectorBoxes::startsWithTheStock_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("code");
    const auto row = [](const char* name, const char* value, const char* code) {
        QTest::newRow(name) << QString::fromLatin1(value) << QString::fromLatin1(code);
    };
    row("none", "0", "");
    row("by its id", "2", "ORIENT");
    row("another id", "5", "NORDFUT");
    row("id that no stock has", "77", "");
    row("negative id", "-1", "");
    row("other text", "first", "NORD");
    row("no text", "", "NORD");
}

void TestSelectorBoxes::startsWithTheStock()
{
    QFETCH(const QString, value);
    for (const bool chosen : {false, true}) {
        Form form;
        if (chosen)
            choose(form.stock, QStringLiteral("NORDFUT "));
        form.properties.setValue(QStringLiteral("StockId"), value);
        QTEST(form.stock->getStockCode(), "code");
        QCOMPARE(form.properties.value(QStringLiteral("StockId")), value);
        QCOMPARE(form.board->count() > 0, !form.stock->getStockCode().isEmpty());
    }
}

void TestSelectorBoxes::otherValuesAreOnlyKept()
{
    Form form;
    QCOMPARE(form.properties.value(QStringLiteral("Colour")), QString());
    form.properties.setValue(QStringLiteral("Colour"), QStringLiteral("2"));
    QCOMPARE(form.properties.value(QStringLiteral("Colour")), QStringLiteral("2"));
    QCOMPARE(form.stock->currentIndex(), -1);
}

void TestSelectorBoxes::aFormNeedNotHaveAllTheBoxes()
{
    QWidget empty;
    Properties properties;
    properties.connectAll(&empty);
    properties.setValue(QStringLiteral("StockId"), QStringLiteral("1"));

    auto* const stock = new StockSelectorBox(&empty);
    auto* const security = new SecuritySelectorBox(&empty);
    properties.connectAll(&empty);
    properties.setValue(QStringLiteral("StockId"), QStringLiteral("1"));
    QCOMPARE(stock->getStockCode(), QStringLiteral("NORD"));
    QCOMPARE(security->count(), 0);

    // Whoever asks after the box has gone gets no answer.
    delete stock;
    properties.setValue(QStringLiteral("StockId"), QStringLiteral("2"));
    QCOMPARE(properties.value(QStringLiteral("StockId")), QStringLiteral("2"));
}

void TestSelectorBoxes::aSingleEntryIsChosenByItself()
{
    const Form form;
    QSignalSpy boards(form.board, &BoardSelectorBox::boardCodeChanged);
    choose(form.stock, QStringLiteral("NORDFUT "));
    QCOMPARE(form.board->getBoardCode(), QStringLiteral("FUT"));
    QCOMPARE(taken(boards), QStringList{"FUT"});
    QCOMPARE(form.security->count(), 4);
    QCOMPARE(form.security->getSecurityCode(), QString());

    choose(form.stock, QStringLiteral("ORIENT "));
    QCOMPARE(form.board->getBoardCode(), QString());
    choose(form.board, QStringLiteral("CLEAR "));
    QCOMPARE(form.security->getSecurityCode(), QStringLiteral("CASH"));
}

void TestSelectorBoxes::boardFlagsFilter_data()
{
    QTest::addColumn<int>("on");
    QTest::addColumn<int>("off");
    QTest::addColumn<QStringList>("codes");
    // Their flags are 4, 0, 4, 4 + 64.
    QTest::newRow("none") << 0 << 0 << QStringList{"MAIN", "NEGO", "ODD", "REPO"};
    QTest::newRow("one on") << 4 << 0 << QStringList{"MAIN", "ODD", "REPO"};
    QTest::newRow("one off") << 0 << 64 << QStringList{"MAIN", "NEGO", "ODD"};
    QTest::newRow("one on, one off") << 4 << 64 << QStringList{"MAIN", "ODD"};
    QTest::newRow("every one on") << 68 << 0 << QStringList{"REPO"};
    QTest::newRow("none of them off") << 0 << 68 << QStringList{"NEGO"};
    QTest::newRow("against each other") << 4 << 4 << QStringList();
    QTest::newRow("one that no board has") << 1 << 0 << QStringList();
}

void TestSelectorBoxes::boardFlagsFilter()
{
    QFETCH(const int, on);
    QFETCH(const int, off);
    QFETCH(const QStringList, codes);
    const Form form;
    choose(form.stock, QStringLiteral("NORD "));
    form.board->setBoardFlagsOnFilter(on);
    form.board->setBoardFlagsOffFilter(off);
    QCOMPARE(offered(*form.board), codes);
    form.board->setBoardFlagsOnFilter(0);
    form.board->setBoardFlagsOffFilter(0);
    QCOMPARE(form.board->count(), 4);
}

void TestSelectorBoxes::filteringKeepsTheChoice()
{
    const Form form;
    choose(form.stock, QStringLiteral("NORD "));
    choose(form.board, QStringLiteral("ODD "));
    choose(form.security, QStringLiteral("GRAN "));
    QSignalSpy boards(form.board, &BoardSelectorBox::boardCodeChanged);
    form.board->setBoardFlagsOnFilter(4);
    QCOMPARE(form.board->getBoardCode(), QStringLiteral("ODD"));
    QCOMPARE(form.security->getSecurityCode(), QStringLiteral("GRAN"));
    QCOMPARE(taken(boards), QStringList());
    form.board->setBoardFlagsOffFilter(4);
    QCOMPARE(form.board->getBoardCode(), QString());
    QCOMPARE(form.security->getSecurityCode(), QString());
    QCOMPARE(taken(boards), QStringList{QString()});
}

void TestSelectorBoxes::signalsComeOncePerChange()
{
    const Form form;
    QSignalSpy stocks(form.stock, &StockSelectorBox::stockCodeChanged);
    QSignalSpy boards(form.board, &BoardSelectorBox::boardCodeChanged);
    QSignalSpy securities(form.security, &SecuritySelectorBox::securityChanged);

    choose(form.stock, QStringLiteral("NORD "));
    QCOMPARE(taken(stocks), QStringList{"NORD"});
    QCOMPARE(taken(boards), QStringList());
    choose(form.board, QStringLiteral("MAIN "));
    QCOMPARE(taken(boards), QStringList{"MAIN"});
    QCOMPARE(taken(securities), QStringList());
    choose(form.security, QStringLiteral("GRAN "));
    QCOMPARE(taken(securities), QStringList{"GRAN"});

    // The same again is no change.
    choose(form.stock, QStringLiteral("NORD "));
    choose(form.board, QStringLiteral("MAIN "));
    choose(form.security, QStringLiteral("GRAN "));
    QCOMPARE(taken(stocks), QStringList());
    QCOMPARE(taken(boards), QStringList());
    QCOMPARE(taken(securities), QStringList());

    choose(form.security, QStringLiteral("ALFA "));
    QCOMPARE(taken(securities), QStringList{"ALFA"});
    choose(form.stock, QStringLiteral("NORDFUT "));
    QCOMPARE(taken(stocks), QStringList{"NORDFUT"});
    QCOMPARE(taken(boards), QStringList{"FUT"});
    QCOMPARE(taken(securities), QStringList{QString()});
}

void TestSelectorBoxes::theSameBoardCodeOfAnotherStockIsAnotherBoard()
{
    const Form form;
    choose(form.stock, QStringLiteral("NORD "));
    choose(form.board, QStringLiteral("MAIN "));
    choose(form.security, QStringLiteral("GRAN "));
    QSignalSpy boards(form.board, &BoardSelectorBox::boardCodeChanged);
    QSignalSpy securities(form.security, &SecuritySelectorBox::securityChanged);
    choose(form.stock, QStringLiteral("ORIENT "));
    QCOMPARE(form.board->getBoardCode(), QStringLiteral("MAIN"));
    QCOMPARE(form.board->getStockCode(), QStringLiteral("ORIENT"));
    QCOMPARE(form.board->getBoardId(), 2);
    QCOMPARE(taken(boards), QStringList{"MAIN"});
    QCOMPARE(offered(*form.security), QStringList({"JADE", "LOTOS", "SILK", "TIGER"}));
    QCOMPARE(form.security->getSecurityId(), 0);
    QCOMPARE(taken(securities), QStringList{QString()});
}

void TestSelectorBoxes::typingTheBeginningOfACodeChoosesIt_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("code");
    QTest::newRow("two letters") << "GR"
                                 << "GRAN";
    QTest::newRow("small letters") << "gr"
                                   << "GRAN";
    QTest::newRow("one letter") << "G"
                                << "GRAN";
    QTest::newRow("longer of two") << "ALFAP"
                                   << "ALFAP";
    QTest::newRow("shorter of two") << "ALFA"
                                    << "ALFA";
    QTest::newRow("no such code") << "QQ"
                                  << "";
}

void TestSelectorBoxes::typingTheBeginningOfACodeChoosesIt()
{
    QFETCH(const QString, typed);
    // However slow the machine is, the letters belong together.
    const int interval = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(60'000);
    const auto restore =
        qScopeGuard([interval] { QApplication::setKeyboardInputInterval(interval); });

    const Form form;
    choose(form.stock, QStringLiteral("NORD "));
    choose(form.board, QStringLiteral("MAIN "));
    form.security->setFocus();
    hands::keyClicks(form.security, typed);
    QTEST(form.security->getSecurityCode(), "code");
}

void TestSelectorBoxes::arrowKeysChoose()
{
    const Form form;
    form.stock->setFocus();
    hands::keyClick(form.stock, Qt::Key_Down);
    QCOMPARE(form.stock->getStockCode(), QStringLiteral("NORD"));
    hands::keyClick(form.stock, Qt::Key_Tab);
    QCOMPARE(form.focusWidget(), form.board);
    hands::keyClick(form.board, Qt::Key_End);
    QCOMPARE(form.board->getBoardCode(), QStringLiteral("REPO"));
    hands::keyClick(form.board, Qt::Key_Tab);
    QCOMPARE(form.focusWidget(), form.security);
    hands::keyClick(form.security, Qt::Key_Home);
    QCOMPARE(form.security->getSecurityId(), 301);
}

void TestSelectorBoxes::anIdThatTheRecordLacksIsLookedUp()
{
    const Form form;
    form.stock->setSourceModel(new CodesModel({"NORD", "UNKNOWN"}, nullptr));
    form.board->setSourceModel(new BoardsWithoutIds(nullptr));
    form.security->setSourceModel(new SecuritiesWithoutIds(nullptr, true));

    choose(form.stock, QStringLiteral("NORD"));
    choose(form.board, QStringLiteral("ODD "));
    choose(form.security, QStringLiteral("GRAN "));
    QCOMPARE(form.stock->getStockId(), 1);
    QCOMPARE(form.board->getBoardId(), 2);
    QCOMPARE(form.security->getSecurityId(), 206);

    choose(form.board, QStringLiteral("OLD"));
    QCOMPARE(form.security->getSecurityCode(), QStringLiteral("GONE"));
    QCOMPARE(form.board->getBoardId(), 0);
    QCOMPARE(form.security->getSecurityId(), 0);
    choose(form.stock, QStringLiteral("UNKNOWN"));
    QCOMPARE(form.stock->getStockId(), StockDirectory::i().idByCode(QStringLiteral("UNKNOWN")));
    QVERIFY(form.stock->getStockId() < 0);
}

void TestSelectorBoxes::startsWithAStockWhoseIdIsLookedUp()
{
    Form form;
    form.stock->setSourceModel(new CodesModel({"NORD", "ORIENT"}, nullptr));
    form.properties.setValue(QStringLiteral("StockId"), QStringLiteral("2"));
    QCOMPARE(form.stock->getStockCode(), QStringLiteral("ORIENT"));
}

void TestSelectorBoxes::whatIsNotEnabledIsNotOffered()
{
    const Form form;
    form.stock->setSourceModel(new HalfDisabled<StockSelectorModel>(nullptr));
    form.board->setSourceModel(new HalfDisabled<BoardSelectorModel>(nullptr));
    QCOMPARE(offered(*form.stock), QStringList({"NORD", "ORIENT"}));
    choose(form.stock, QStringLiteral("NORD "));
    QCOMPARE(offered(*form.board), QStringList({"MAIN", "ODD"}));
}

void TestSelectorBoxes::aNewModelIsPopulatedAndOwned()
{
    auto box = std::make_unique<StockSelectorBox>();
    const QPointer<CodesModel> model = new CodesModel({"B", "A"}, nullptr);
    box->setSourceModel(model);
    QCOMPARE(model->populated(), 1);
    QCOMPARE(offered(*box), QStringList({"B", "A"}));
    QCOMPARE(model->QObject::parent(), box.get());
    box.reset();
    QVERIFY(!model);
}

void TestSelectorBoxes::aModelWithAParentIsNotOwned()
{
    QObject owner;
    const QPointer<CodesModel> model = new CodesModel({"A", "B"}, &owner);
    auto box = std::make_unique<StockSelectorBox>();
    box->setSourceModel(model);
    QCOMPARE(model->QObject::parent(), &owner);
    box.reset();
    QVERIFY(model);
    model->populate();
}

void TestSelectorBoxes::anotherModelReplacesTheFirst()
{
    StockSelectorBox box;
    QObject owner;
    CodesModel foreign({"A", "B"}, &owner);
    const QPointer<CodesModel> owned = new CodesModel({"B", "C"}, nullptr);
    const QPointer<CodesModel> last = new CodesModel({"D", "E"}, nullptr);
    box.setSourceModel(&foreign);
    box.setCurrentIndex(1);
    QSignalSpy changed(&box, &StockSelectorBox::stockCodeChanged);

    box.setSourceModel(owned);
    QCOMPARE(offered(box), QStringList({"B", "C"}));
    QCOMPARE(box.getStockCode(), QStringLiteral("B"));
    QCOMPARE(taken(changed), QStringList());
    foreign.setCodes({"F"});
    foreign.populate();
    QCOMPARE(offered(box), QStringList({"B", "C"}));

    box.setSourceModel(last);
    QCOMPARE(offered(box), QStringList({"D", "E"}));
    QCOMPARE(box.getStockCode(), QString());
    QCOMPARE(taken(changed), QStringList{QString()});
    QTRY_VERIFY(!owned);
    QVERIFY(last);
}

void TestSelectorBoxes::theSameModelAgainStays()
{
    StockSelectorBox box;
    const QPointer<CodesModel> model = new CodesModel({"A", "B"}, nullptr);
    box.setSourceModel(model);
    box.setCurrentIndex(1);
    box.setSourceModel(model);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(model);
    QCOMPARE(model->populated(), 2);
    QCOMPARE(box.getStockCode(), QStringLiteral("B"));
    QCOMPARE(box.getStockId(), StockDirectory::i().idByCode(QStringLiteral("B")));
}

void TestSelectorBoxes::aModelMayGoFirst()
{
    StockSelectorBox box;
    QObject owner;
    auto model = std::make_unique<CodesModel>(QStringList{"A", "B"}, &owner);
    box.setSourceModel(model.get());
    box.setCurrentIndex(1);
    QSignalSpy changed(&box, &StockSelectorBox::stockCodeChanged);
    model.reset();
    QCOMPARE(box.count(), 0);
    QCOMPARE(box.getStockId(), 0);
    QCOMPARE(box.getStockCode(), QString());
    QCOMPARE(taken(changed), QStringList{QString()});
    box.chooseStock(1);
    QCOMPARE(box.getStockId(), 0);
}

void TestSelectorBoxes::aResetKeepsWhatIsStillOffered()
{
    StockSelectorBox box;
    auto* const model = new CodesModel({"A", "B", "C"}, nullptr);
    box.setSourceModel(model);
    box.setCurrentIndex(1);
    QSignalSpy changed(&box, &StockSelectorBox::stockCodeChanged);
    model->setCodes({"AA", "AB", "AC", "B"});
    model->populate();
    QCOMPARE(box.currentIndex(), 3);
    QCOMPARE(box.getStockCode(), QStringLiteral("B"));
    QCOMPARE(taken(changed), QStringList());
    model->setCodes({"A", "C"});
    model->populate();
    QCOMPARE(box.currentIndex(), -1);
    QCOMPARE(box.getStockCode(), QString());
    QCOMPARE(taken(changed), QStringList{QString()});
    // What has gone is forgotten.
    model->setCodes({"A", "B", "C"});
    model->populate();
    QCOMPARE(box.currentIndex(), -1);
    QCOMPARE(taken(changed), QStringList());
}

QTEST_MAIN(TestSelectorBoxes)
#include "tst_selectorboxes.moc"
