// SPDX-License-Identifier: MIT
#include "importtadatawizard.h"

#include "importdetails.h"
#include "importjob.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/series.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"
#include "support/wizardtest.h"

#include <QtCore/QDir>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTableWidget>

using testsupport::choose;
using testsupport::click;
using testsupport::ImportChoices;
using testsupport::roleBoxes;

namespace {

const char bars[] = "20240115;100000;1;2;0;1.5\n20240115;100100;2;3;1;2.5\n";

QStringList linesOf(const QByteArray& file)
{
    return QString::fromUtf8(file).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

class TestImportTADataWizard final : public testsupport::WizardTest
{
    Q_OBJECT

public:
    TestImportTADataWizard()
        : WizardTest({.settings = "TADataManager/ImportWizard",
                      .title = QStringLiteral("Мастер импорта данных ТА"),
                      .pages = {"Серия", "Формат", "Столбцы"},
                      .labels = 7})
    {}

private Q_SLOTS:
    void goesThroughItsPages();
    void nextWaitsForTheSeries();
    void nextWaitsForTheSeparator();
    void goingBackKeepsEveryChoice();
    void tellsTheFormatsOfItsSecondPage();
    void gathersTheDetailsOfEveryPage();
    void opensWideEnoughForEightColumns();
    void opensNoWiderThanTheScreen();
    void tabFollowsTheEye();
    void theKeyboardSuffices();
    void importsEveryFormat_data();
    void importsEveryFormat();

private:
    ImportTADataWizard* wizard() const { return static_cast<ImportTADataWizard*>(m_wizard.get()); }
    std::unique_ptr<QWizard> makeWizard() override
    {
        return std::make_unique<ImportTADataWizard>(m_lines);
    }
    void tidy() override { m_lines = linesOf(bars); }
    void fillAll() override { fillImportWizard(m_wizard.get(), ImportChoices()); }
    QString nameOf(QWidget* widget) const override;
    void openFile(const QByteArray& file)
    {
        m_wizard.reset();
        m_lines = linesOf(file);
        open();
    }

    QStringList m_lines = linesOf(bars); // of the file; they outlive the wizard
};

QString TestImportTADataWizard::nameOf(QWidget* widget) const
{
    const auto column = roleBoxes(m_wizard.get()).indexOf(qobject_cast<QComboBox*>(widget));
    return column >= 0 ? QStringLiteral("role %1").arg(column) : widget->objectName();
}

void TestImportTADataWizard::goesThroughItsPages()
{
    open();
    const ImportChoices choices;
    QVERIFY(!enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::NextButton));
    QVERIFY(!button(QWizard::FinishButton)->isVisible());
    fillSeriesPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));

    QCOMPARE(title(), QStringLiteral("Формат"));
    QVERIFY(enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::NextButton));
    fillFormatPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));

    QCOMPARE(title(), QStringLiteral("Столбцы"));
    QVERIFY(!button(QWizard::NextButton)->isVisible());
    QVERIFY(button(QWizard::FinishButton)->isVisible());
    QVERIFY(!enabled(QWizard::FinishButton));
    fillColumnsPage(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));
    QVERIFY(!m_wizard->isVisible());
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
}

void TestImportTADataWizard::nextWaitsForTheSeries()
{
    open();
    const QString red = QStringLiteral("QLabel {color: red;}");
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("stockLabel")->styleSheet(), QString());
    QCOMPARE(child<QLabel>("boardLabel")->styleSheet(), red);
    choose(child<QComboBox>("board"), QStringLiteral("MAIN "));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("boardLabel")->styleSheet(), QString());
    QCOMPARE(child<QLabel>("secLabel")->styleSheet(), red);
    choose(child<QComboBox>("security"), QStringLiteral("GRAN "));
    QVERIFY(enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("secLabel")->styleSheet(), QString());
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("secLabel")->styleSheet(), red);
}

void TestImportTADataWizard::nextWaitsForTheSeparator()
{
    openFile("a,b,c\n1,2\n");
    fillSeriesPage(m_wizard.get(), ImportChoices());
    click(button(QWizard::NextButton));
    const QString red = QStringLiteral("QLabel {color: red;}");
    const QString black = QStringLiteral("QLabel {color: black;}");
    const auto* const label = child<QLabel>("sepLabel");
    QCOMPARE(label->styleSheet(), red);
    choose(child<QComboBox>("separator"), QStringLiteral("запятая (,)"));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(label->styleSheet(), red);
    choose(child<QComboBox>("separator"), QStringLiteral("точка с запятой (;)"));
    QVERIFY(enabled(QWizard::NextButton));
    QCOMPARE(label->styleSheet(), black);
    choose(child<QComboBox>("separator"), QStringLiteral("не задан"));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(label->styleSheet(), red);
}

void TestImportTADataWizard::goingBackKeepsEveryChoice()
{
    open();
    ImportChoices choices;
    choices.timeFrame = QStringLiteral("1 секунда");
    choices.dateFormat = QStringLiteral("дд.мм.гг");
    choices.timeFormat = QStringLiteral("чч:мм");
    fillImportWizard(m_wizard.get(), choices);
    click(button(QWizard::BackButton));
    QCOMPARE(child<QComboBox>("separator")->currentText(), choices.separator);
    QCOMPARE(child<QComboBox>("dateFormat")->currentText(), choices.dateFormat);
    QCOMPARE(child<QComboBox>("timeFormat")->currentText(), choices.timeFormat);
    QVERIFY(!child<QCheckBox>("firstStringIsHead")->isChecked());
    QCOMPARE(child<QTableWidget>("fileData")->columnCount(), 6);
    QVERIFY(enabled(QWizard::NextButton));
    click(button(QWizard::BackButton));
    QVERIFY(child<QComboBox>("stock")->currentText().startsWith(choices.stock));
    QVERIFY(child<QComboBox>("board")->currentText().startsWith(choices.board));
    QVERIFY(child<QComboBox>("security")->currentText().startsWith(choices.security));
    QCOMPARE(child<QComboBox>("timeFrame")->currentText(), choices.timeFrame);
    QVERIFY(enabled(QWizard::NextButton));
    click(button(QWizard::NextButton));
    QCOMPARE(child<QComboBox>("separator")->currentText(), choices.separator);
    QVERIFY(enabled(QWizard::NextButton));
}

void TestImportTADataWizard::tellsTheFormatsOfItsSecondPage()
{
    open();
    QCOMPARE(wizard()->columnSeparator(), QStringLiteral("\n"));
    QCOMPARE(wizard()->dateFormat(), QStringLiteral("yyyyMMdd"));
    QCOMPARE(wizard()->timeFormat(), QStringLiteral("hhmmss"));
    fillSeriesPage(m_wizard.get(), ImportChoices());
    click(button(QWizard::NextButton));
    ImportChoices choices;
    choices.dateFormat = QStringLiteral("ддммгг");
    choices.timeFormat = QStringLiteral("чч:мм:сс");
    fillFormatPage(m_wizard.get(), choices);
    QCOMPARE(wizard()->columnSeparator(), QStringLiteral(";"));
    QCOMPARE(wizard()->dateFormat(), QStringLiteral("ddMMyy"));
    QCOMPARE(wizard()->timeFormat(), QStringLiteral("hh:mm:ss"));
}

void TestImportTADataWizard::gathersTheDetailsOfEveryPage()
{
    openFile("1 2 3 4 5 6 7 8 9\n");
    ImportChoices choices;
    choices.stock = QStringLiteral("ORIENT ");
    choices.board = QStringLiteral("FX ");
    choices.security = QStringLiteral("USDJPY ");
    choices.timeFrame = QStringLiteral("1 секунда");
    choices.header = true;
    choices.separator = QStringLiteral("пробел ( )");
    choices.dateFormat = QStringLiteral("ггммдд");
    choices.timeFormat = QStringLiteral("ччмм");
    choices.roles = ImportChoices::allRoles();
    fillImportWizard(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));

    const ImportDetails details = wizard()->importDetails();
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({"2", "1", "104", "ORIENT", "FX", "USDJPY", "1", " ", "yyMMdd", "hhmm",
                          "ггммдд", "ччмм"}));
    QVERIFY(details.firstLineIsHeader);
    QCOMPARE(details.columns,
             (QMap<qint32, qint32>{
                 {1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}, {7, 6}, {8, 7}, {9, 8}}));
}

void TestImportTADataWizard::tabFollowsTheEye()
{
    open();
    QCOMPARE(tabNames(), QStringList({"stock", "board", "security", "timeFrame", "Cancel"}));
    fillSeriesPage(m_wizard.get(), ImportChoices());
    child<QComboBox>("stock")->setFocus();
    QCOMPARE(tabNames(),
             QStringList({"stock", "board", "security", "timeFrame", "Next", "Cancel"}));

    click(button(QWizard::NextButton));
    fillFormatPage(m_wizard.get(), ImportChoices());
    child<QCheckBox>("firstStringIsHead")->setFocus();
    QCOMPARE(tabNames(), QStringList({"firstStringIsHead", "separator", "dateFormat", "timeFormat",
                                      "fileData", "Back", "Next", "Cancel"}));

    click(button(QWizard::NextButton));
    fillColumnsPage(m_wizard.get(), ImportChoices());
    const QStringList columns{"fileData", "role 0", "role 1", "role 2", "role 3",
                              "role 4",   "role 5", "Back",   "Finish", "Cancel"};
    child<QTableWidget>("fileData")->setFocus();
    QCOMPARE(tabNames(), columns);

    // A second time the boxes are others.
    click(button(QWizard::BackButton));
    click(button(QWizard::NextButton));
    fillColumnsPage(m_wizard.get(), ImportChoices());
    child<QTableWidget>("fileData")->setFocus();
    QCOMPARE(tabNames(), columns);
}

void TestImportTADataWizard::theKeyboardSuffices()
{
    const testsupport::UnhurriedTyping typing;
    open();
    typeSeries();
    type(Qt::Key_Down);
    type(Qt::Key_Return);

    QCOMPARE(title(), QStringLiteral("Формат"));
    QCOMPARE(m_wizard->focusWidget(), child<QCheckBox>("firstStringIsHead"));
    type(Qt::Key_Space);
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Down);
    type(Qt::Key_Return);

    QCOMPARE(title(), QStringLiteral("Столбцы"));
    const QList<QComboBox*> boxes = roleBoxes(m_wizard.get());
    while (m_wizard->focusWidget() != boxes.first()) {
        QVERIFY(m_wizard->focusWidget() != button(QWizard::CancelButton));
        type(Qt::Key_Tab);
    }
    for (int role = 1; role <= 6; ++role) {
        for (int i = 0; i < role; ++i)
            type(Qt::Key_Down);
        if (role < 6)
            type(Qt::Key_Tab);
    }
    type(Qt::Key_Return);
    QVERIFY(!m_wizard->isVisible());
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
    const ImportDetails details = wizard()->importDetails();
    QCOMPARE(details.securityName, QStringLiteral("GBPUSD"));
    QCOMPARE(details.timeframe, 1);
    QCOMPARE(details.separator, QStringLiteral(";"));
    QVERIFY(!details.firstLineIsHeader);
    QCOMPARE(details.columns,
             (QMap<qint32, qint32>{{1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}}));
}

void TestImportTADataWizard::importsEveryFormat_data()
{
    QTest::addColumn<ImportChoices>("choices");
    QTest::addColumn<QByteArray>("input");
    struct Writing
    {
        const char* title;
        QByteArray first;
        QByteArray second;
    };
    const QList<Writing> separators{
        {"запятая (,)", ",", ""}, {"точка с запятой (;)", ";", ""}, {"пробел ( )", " ", ""}};
    // 5 December 2018 and 6 December 2018.
    const QList<Writing> dates{{"ггггммдд", "20181205", "20181206"},
                               {"ггммдд", "181205", "181206"},
                               {"ддммгг", "051218", "061218"},
                               {"дд.мм.гг", "05.12.18", "06.12.18"},
                               {"дд/мм/гг", "05/12/18", "06/12/18"}};
    // A quarter past nine in the morning and in the evening.
    const QList<Writing> times{{"ччммсс", "091500", "211500"},
                               {"ччмм", "0915", "2115"},
                               {"чч:мм:сс", "09:15:00", "21:15:00"},
                               {"чч:мм", "09:15", "21:15"}};
    for (const Writing& separator : separators) {
        for (const Writing& date : dates) {
            for (const Writing& time : times) {
                ImportChoices choices;
                choices.separator = QString::fromUtf8(separator.title);
                choices.dateFormat = QString::fromUtf8(date.title);
                choices.timeFormat = QString::fromUtf8(time.title);
                const auto line = [&](const QByteArray& day, const QByteArray& moment) {
                    const QByteArrayList fields{day, moment, "1.5", "2", "1", "1.75"};
                    return fields.join(separator.first) + "\n";
                };
                QTest::newRow(
                    (QByteArray(separator.first) + " " + date.title + " " + time.title).constData())
                    << choices
                    << line(date.first, time.first) + line(date.first, time.second) +
                           line(date.second, time.first);
            }
        }
    }
}

void TestImportTADataWizard::importsEveryFormat()
{
    QFETCH(const ImportChoices, choices);
    QFETCH(const QByteArray, input);
    openFile(input);
    fillImportWizard(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));

    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("bars.txt"));
    const QDir store(directory.filePath(QStringLiteral("store")));
    QVERIFY(QDir().mkpath(store.path()));
    testsupport::writeFile(path, input);
    const tadata::ImportResult result = tadata::importBars(
        path, wizard()->importDetails(), [&store] { return store; }, [](int) {});
    QVERIFY2(result.outcome, qPrintable(result.outcome.message()));
    QCOMPARE(
        testsupport::readTree(store),
        (QMap<QString, QByteArray>{{"20181205_60.iss", "091500;1.50;2.00;1.00;1.75;0;0.00;0\n"
                                                       "211500;1.50;2.00;1.00;1.75;0;0.00;0\n"},
                                   {"20181206_60.iss", "091500;1.50;2.00;1.00;1.75;0;0.00;0\n"}}));
}

void TestImportTADataWizard::opensWideEnoughForEightColumns()
{
    openFile("1;2;3;4;5;6;7;8\n1;2;3;4;5;6;7;8\n");
    const ImportChoices choices;
    fillSeriesPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));
    fillFormatPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));
    QCoreApplication::processEvents();
    const auto* const table = testsupport::child<QTableWidget>(m_wizard->currentPage());
    const QList<QComboBox*> boxes = roleBoxes(m_wizard.get());
    QCOMPARE(boxes.size(), 8);
    if (m_wizard->width() == m_wizard->screen()->availableSize().width())
        return; // a screen as small as that shows no more
    QCOMPARE(table->horizontalScrollBar()->maximum(), 0);
    for (const QComboBox* const box : boxes) {
        QVERIFY(box->geometry().right() < table->viewport()->width());
        QVERIFY(box->width() >= box->sizeHint().width());
    }
}

void TestImportTADataWizard::opensNoWiderThanTheScreen()
{
    const QFont before = QApplication::font();
    const auto restore = qScopeGuard([&before] { QApplication::setFont(before); });
    QFont large = before;
    large.setPointSize(40);
    QApplication::setFont(large);
    QStringList lines{"1;2"};
    ImportTADataWizard wizard(lines);
    wizard.show();
    QVERIFY(QTest::qWaitForWindowExposed(&wizard));
    const int screen = wizard.screen()->availableSize().width();
    QCOMPARE(wizard.width(), std::max(screen, wizard.minimumWidth()));
}

QTEST_MAIN(TestImportTADataWizard)
#include "tst_importtadatawizard.moc"
