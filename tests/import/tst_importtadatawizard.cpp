// SPDX-License-Identifier: MIT
#include "importtadatawizard.h"

#include "importdetails.h"
#include "importjob.h"
#include "support/filetree.h"
#include "support/importchoices.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/appsettings.h>
#include <vexdesk/terminal/referencedata.h>

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

AppSettings settings()
{
    return AppSettings(QStringLiteral("TADataManager/ImportWizard"));
}

const QString sizeKey = QStringLiteral("dialog_size");

const char bars[] = "20240115;100000;1;2;0;1.5\n20240115;100100;2;3;1;2.5\n";

} // namespace

class TestImportTADataWizard final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void looksAsItShould();
    void goesThroughItsPages();
    void nextWaitsForTheSeries();
    void nextWaitsForTheSeparator();
    void goingBackKeepsEveryChoice();
    void tellsTheFormatsOfItsSecondPage();
    void gathersTheDetailsOfEveryPage();
    void keepsItsSize_data();
    void keepsItsSize();
    void hasASizeOfItsOwnAtFirst();
    void opensWideEnoughForEightColumns();
    void opensNoWiderThanTheScreen();
    void survivesASizeThatIsNone();
    void tabFollowsTheEye();
    void everyLabelHasABuddy();
    void theKeyboardSuffices();
    void importsEveryFormat_data();
    void importsEveryFormat();

private:
    void open(const QByteArray& file);
    QAbstractButton* button(QWizard::WizardButton which) const { return m_wizard->button(which); }
    bool enabled(QWizard::WizardButton which) const { return button(which)->isEnabled(); }
    template <typename Widget>
    Widget* child(const char* name) const
    {
        return m_wizard->currentPage()->findChild<Widget*>(QLatin1String(name));
    }
    // Where Tab goes from the widget that has the focus, by names.
    QStringList tabNames() const;
    void type(Qt::Key key) const { QTest::keyClick(m_wizard->focusWidget(), key); }
    void type(const char* text) const
    {
        QTest::keyClicks(m_wizard->focusWidget(), QLatin1String(text));
    }

    QDir m_user;
    QStringList m_lines; // outlives the wizard
    std::unique_ptr<ImportTADataWizard> m_wizard;
};

void TestImportTADataWizard::init()
{
    testsupport::failOnStrayWarnings();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_user = QDir(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("user")));
    QVERIFY(!m_user.exists());
}

void TestImportTADataWizard::cleanup()
{
    m_wizard.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestImportTADataWizard::open(const QByteArray& file)
{
    m_wizard.reset();
    m_lines = QString::fromUtf8(file).split(u'\n', Qt::SkipEmptyParts);
    m_wizard = std::make_unique<ImportTADataWizard>(m_lines);
    m_wizard->show();
    QVERIFY(QTest::qWaitForWindowActive(m_wizard.get()));
}

QStringList TestImportTADataWizard::tabNames() const
{
    const QList<std::pair<QWizard::WizardButton, QString>> buttons{
        {QWizard::BackButton, QStringLiteral("Back")},
        {QWizard::NextButton, QStringLiteral("Next")},
        {QWizard::FinishButton, QStringLiteral("Finish")},
        {QWizard::CancelButton, QStringLiteral("Cancel")}};
    const QList<QComboBox*> roles = roleBoxes(m_wizard.get());
    QStringList names;
    const QList<QWidget*> order = testsupport::tabOrder(m_wizard.get());
    for (QWidget* widget : order) {
        QString name = widget->objectName();
        for (const auto& [which, title] : buttons) {
            if (button(which) == widget)
                name = title;
        }
        if (const auto column = roles.indexOf(qobject_cast<QComboBox*>(widget)); column >= 0)
            name = QStringLiteral("role %1").arg(column);
        names.append(name);
    }
    return names;
}

void TestImportTADataWizard::looksAsItShould()
{
    open(bars);
    QCOMPARE(m_wizard->windowTitle(), QStringLiteral("Мастер импорта данных ТА"));
    QVERIFY(!m_wizard->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QVERIFY(!m_wizard->parentWidget());
    QStringList titles;
    const QList<int> ids = m_wizard->pageIds();
    for (const int id : ids)
        titles.append(m_wizard->page(id)->title());
    QCOMPARE(titles, QStringList({"Серия", "Формат", "Столбцы"}));
    QCOMPARE(m_wizard->currentPage()->title(), QStringLiteral("Серия"));
}

void TestImportTADataWizard::goesThroughItsPages()
{
    open(bars);
    const ImportChoices choices;
    QVERIFY(!enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::NextButton));
    QVERIFY(!button(QWizard::FinishButton)->isVisible());
    fillSeriesPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));

    QCOMPARE(m_wizard->currentPage()->title(), QStringLiteral("Формат"));
    QVERIFY(enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::NextButton));
    fillFormatPage(m_wizard.get(), choices);
    click(button(QWizard::NextButton));

    QCOMPARE(m_wizard->currentPage()->title(), QStringLiteral("Столбцы"));
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
    open(bars);
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
    open("a,b,c\n1,2\n");
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
    open(bars);
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
    open(bars);
    QCOMPARE(m_wizard->columnSeparator(), QStringLiteral("\n"));
    QCOMPARE(m_wizard->dateFormat(), QStringLiteral("yyyyMMdd"));
    QCOMPARE(m_wizard->timeFormat(), QStringLiteral("hhmmss"));
    fillSeriesPage(m_wizard.get(), ImportChoices());
    click(button(QWizard::NextButton));
    ImportChoices choices;
    choices.dateFormat = QStringLiteral("ддммгг");
    choices.timeFormat = QStringLiteral("чч:мм:сс");
    fillFormatPage(m_wizard.get(), choices);
    QCOMPARE(m_wizard->columnSeparator(), QStringLiteral(";"));
    QCOMPARE(m_wizard->dateFormat(), QStringLiteral("ddMMyy"));
    QCOMPARE(m_wizard->timeFormat(), QStringLiteral("hh:mm:ss"));
}

void TestImportTADataWizard::gathersTheDetailsOfEveryPage()
{
    open("1 2 3 4 5 6 7 8 9\n");
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

    const ImportDetails details = m_wizard->importDetails();
    QCOMPARE(details.stockId, 2);
    QCOMPARE(details.boardId, 1);
    QCOMPARE(details.securityId, 104);
    QCOMPARE(details.stockCode, QStringLiteral("ORIENT"));
    QCOMPARE(details.boardCode, QStringLiteral("FX"));
    QCOMPARE(details.securityName, QStringLiteral("USDJPY"));
    QCOMPARE(details.timeframe, 1);
    QCOMPARE(details.separator, QStringLiteral(" "));
    QCOMPARE(details.dateFormat, QStringLiteral("yyMMdd"));
    QCOMPARE(details.timeFormat, QStringLiteral("hhmm"));
    QCOMPARE(details.dateFormatTitle, QStringLiteral("ггммдд"));
    QCOMPARE(details.timeFormatTitle, QStringLiteral("ччмм"));
    QVERIFY(details.firstLineIsHeader);
    QCOMPARE(details.columns,
             (QMap<qint32, qint32>{
                 {1, 0}, {2, 1}, {3, 2}, {4, 3}, {5, 4}, {6, 5}, {7, 6}, {8, 7}, {9, 8}}));
}

void TestImportTADataWizard::keepsItsSize_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"finish", "cancel", "escape", "destroyed"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestImportTADataWizard::keepsItsSize()
{
    QFETCH(const QString, how);
    const QSize size(611, 433);
    open(bars);
    if (how == u"finish")
        fillImportWizard(m_wizard.get(), ImportChoices());
    m_wizard->resize(size);
    QCOMPARE(m_wizard->size(), size);
    if (how == u"finish")
        click(button(QWizard::FinishButton));
    else if (how == u"cancel")
        click(button(QWizard::CancelButton));
    else if (how == u"escape")
        QTest::keyClick(m_wizard.get(), Qt::Key_Escape);
    QVERIFY(!settings().contains(sizeKey));
    m_wizard.reset();
    QCOMPARE(settings().value(sizeKey).toSize(), size);

    open(bars);
    QCOMPARE(m_wizard->size(), size);
}

void TestImportTADataWizard::hasASizeOfItsOwnAtFirst()
{
    open(bars);
    QVERIFY(!settings().contains(sizeKey));
    const QSize minimum = m_wizard->minimumSizeHint();
    QVERIFY(m_wizard->width() >= minimum.width() && m_wizard->height() >= minimum.height());
}

void TestImportTADataWizard::survivesASizeThatIsNone()
{
    settings().setValue(sizeKey, QStringLiteral("large"));
    open(bars);
    QVERIFY(m_wizard->width() >= m_wizard->minimumWidth());
    QVERIFY(m_wizard->height() >= m_wizard->minimumHeight());
    fillImportWizard(m_wizard.get(), ImportChoices());
    QVERIFY(enabled(QWizard::FinishButton));
}

void TestImportTADataWizard::tabFollowsTheEye()
{
    open(bars);
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

void TestImportTADataWizard::everyLabelHasABuddy()
{
    open(bars);
    fillImportWizard(m_wizard.get(), ImportChoices());
    int labels = 0;
    const QList<int> ids = m_wizard->pageIds();
    for (const int id : ids) {
        const QList<QLabel*> all = m_wizard->page(id)->findChildren<QLabel*>();
        for (const QLabel* label : all) {
            // It names nothing, it warns.
            if (label->objectName() == u"warningLabel")
                continue;
            ++labels;
            QVERIFY2(label->buddy(), qPrintable(label->text()));
            QVERIFY2(label->buddy()->focusPolicy() & Qt::TabFocus, qPrintable(label->text()));
            QCOMPARE(label->buddy()->parentWidget(), m_wizard->page(id));
        }
    }
    QCOMPARE(labels, 7);
}

void TestImportTADataWizard::theKeyboardSuffices()
{
    // However slow the machine is, the letters belong together.
    const int interval = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(60'000);
    const auto restore =
        qScopeGuard([interval] { QApplication::setKeyboardInputInterval(interval); });

    open(bars);
    QCOMPARE(m_wizard->focusWidget(), child<QComboBox>("stock"));
    type("ORIENT");
    type(Qt::Key_Tab);
    type("FX");
    type(Qt::Key_Tab);
    type("GB");
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Return);

    QCOMPARE(m_wizard->currentPage()->title(), QStringLiteral("Формат"));
    QCOMPARE(m_wizard->focusWidget(), child<QCheckBox>("firstStringIsHead"));
    type(Qt::Key_Space);
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Down);
    type(Qt::Key_Return);

    QCOMPARE(m_wizard->currentPage()->title(), QStringLiteral("Столбцы"));
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
    const ImportDetails details = m_wizard->importDetails();
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
    open(input);
    fillImportWizard(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));

    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("bars.txt"));
    const QDir store(directory.filePath(QStringLiteral("store")));
    QVERIFY(QDir().mkpath(store.path()));
    testsupport::writeFile(path, input);
    const QString error =
        tadata::importBars(
            path, m_wizard->importDetails(), [&store] { return store; }, [](int) {})
            .error;
    QVERIFY2(error.isNull(), qPrintable(error));
    QCOMPARE(
        testsupport::readTree(store),
        (QMap<QString, QByteArray>{{"20181205_60.iss", "091500;1.50;2.00;1.00;1.75;0;0.00;0\n"
                                                       "211500;1.50;2.00;1.00;1.75;0;0.00;0\n"},
                                   {"20181206_60.iss", "091500;1.50;2.00;1.00;1.75;0;0.00;0\n"}}));
}

void TestImportTADataWizard::opensWideEnoughForEightColumns()
{
    open("1;2;3;4;5;6;7;8\n1;2;3;4;5;6;7;8\n");
    testsupport::ImportChoices choices;
    fillSeriesPage(m_wizard.get(), choices);
    click(m_wizard->button(QWizard::NextButton));
    fillFormatPage(m_wizard.get(), choices);
    click(m_wizard->button(QWizard::NextButton));
    QCoreApplication::processEvents();
    const auto* const table = m_wizard->currentPage()->findChild<QTableWidget*>();
    const QList<QComboBox*> boxes = testsupport::roleBoxes(m_wizard.get());
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
