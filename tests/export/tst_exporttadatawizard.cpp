// SPDX-License-Identifier: MIT
#include "exporttadatawizard.h"

#include "exportdetails.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/lineformats.h"
#include "support/modalsteps.h"
#include "support/series.h"
#include "support/userhands.h"
#include "support/wizardchoices.h"
#include "support/wizardtest.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QKeyEvent>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

#include <memory>

using testsupport::choose;
using testsupport::click;
using testsupport::ExportChoices;
using testsupport::ModalSteps;

namespace {

const QString seriesTitle = QStringLiteral("Серия");
const QString formatTitle = QStringLiteral("Формат");

} // namespace

class TestExportTADataWizard final : public testsupport::WizardTest
{
    Q_OBJECT

public:
    TestExportTADataWizard()
        : WizardTest({.settings = "TADataManager/ExportWizard",
                      .title = QStringLiteral("Мастер экспорта данных ТА"),
                      .pages = {seriesTitle, formatTitle},
                      .labels = 13})
    {}

private Q_SLOTS:
    void goesThroughItsPages();
    void nextWaitsForTheSeries();
    void nextWaitsForGoodDates();
    void goingBackKeepsEveryChoice();
    void gathersTheDetailsOfBothPages();
    void beginsWithTheDefaults();

    void asksBeforeAFileIsReplaced();
    void asksOnce_data();
    void asksOnce();
    void aCallOfNextAsksNobody();
    void asksNothingForANewFile_data();
    void asksNothingForANewFile();
    void asksForADirectoryOfThatName();
    void asksAgain();
    void asksOnTheSeriesPageOnly();
    void checksTheFileWithoutThePage();
    void aNextThatIsDisabledIsLeftAlone();
    void otherEventsAreLeftAlone();
    void goesOnAtThePress();

    void keepsNothingElse();
    void opensWideEnoughForTheLongestLineFormat();
    void returnDoesNothingWhileNextIsDisabled_data();
    void returnDoesNothingWhileNextIsDisabled();
    void nothingIsCutOff();
    void tabFollowsTheEye();
    void theKeyboardSuffices();

private:
    ExportTADataWizard* wizard() const { return static_cast<ExportTADataWizard*>(m_wizard.get()); }
    void prepare() override;
    void tidy() override { m_output.reset(); }
    std::unique_ptr<QWizard> makeWizard() override
    {
        return std::make_unique<ExportTADataWizard>(nullptr);
    }
    void fillAll() override { fillExportWizard(m_wizard.get(), choices()); }
    // Choices whose file is "bars.txt" in a directory of the test.
    ExportChoices choices() const;
    QString output() const { return m_output->filePath(QStringLiteral("bars.txt")); }
    // Does what leads to the next page.
    void goOn(const QString& how) const;

    std::unique_ptr<QTemporaryDir> m_output;
};

void TestExportTADataWizard::prepare()
{
    for (const char* series : {"NORD/MAIN/GRAN", "NORD/MAIN/ALFA", "NORD/ODD/VEGA",
                               "ORIENT/FX/GBPUSD", "ORIENT/FX/USDJPY", "ORIENT/CLEAR/X"})
        QVERIFY(user().mkpath(QStringLiteral("tadata/") + QLatin1String(series)));
    m_output = std::make_unique<QTemporaryDir>();
}

ExportChoices TestExportTADataWizard::choices() const
{
    ExportChoices choices;
    choices.outputFile = QStringLiteral("bars");
    choices.outputDir = m_output->path();
    return choices;
}

void TestExportTADataWizard::goOn(const QString& how) const
{
    QAbstractButton* const next = button(QWizard::NextButton);
    if (how == u"click") {
        click(next);
    } else if (how == u"Return" || how == u"Enter" || how == u"Space") {
        next->setFocus();
        hands::keyClick(next, how == u"Return"  ? Qt::Key_Return
                              : how == u"Enter" ? Qt::Key_Enter
                                                : Qt::Key_Space);
    } else if (how == u"shortcut") {
        const QKeySequence keys = next->shortcut();
        QCOMPARE(keys.count(), 1);
        hands::keyClick(m_wizard.get(), keys[0].key(), keys[0].keyboardModifiers());
    } else {
        auto* const field =
            testsupport::child<QWidget>(m_wizard->currentPage(), qUtf8Printable(how));
        field->setFocus();
        hands::keyClick(field, Qt::Key_Return);
    }
}

void TestExportTADataWizard::goesThroughItsPages()
{
    open();
    QVERIFY(!enabled(QWizard::BackButton));
    QVERIFY(!enabled(QWizard::NextButton));
    QVERIFY(!button(QWizard::FinishButton)->isVisible());
    fillSeriesPage(m_wizard.get(), choices());
    QVERIFY(enabled(QWizard::NextButton));
    click(button(QWizard::NextButton));

    QCOMPARE(title(), formatTitle);
    QVERIFY(enabled(QWizard::BackButton));
    QVERIFY(!button(QWizard::NextButton)->isVisible());
    QVERIFY(button(QWizard::FinishButton)->isVisible());
    QVERIFY(enabled(QWizard::FinishButton));
    fillFormatPage(m_wizard.get(), choices());
    click(button(QWizard::FinishButton));
    QVERIFY(!m_wizard->isVisible());
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
    QVERIFY(!QFile::exists(output()));
}

void TestExportTADataWizard::nextWaitsForTheSeries()
{
    open();
    choose(child<QComboBox>("stock"), QStringLiteral("NORD "));
    QVERIFY(!enabled(QWizard::NextButton));
    choose(child<QComboBox>("board"), QStringLiteral("MAIN "));
    QVERIFY(!enabled(QWizard::NextButton));
    choose(child<QComboBox>("security"), QStringLiteral("GRAN"));
    QVERIFY(enabled(QWizard::NextButton));
    choose(child<QComboBox>("stock"), QStringLiteral("ORIENT "));
    QVERIFY(!enabled(QWizard::NextButton));
    // The only security of its board.
    choose(child<QComboBox>("board"), QStringLiteral("CLEAR "));
    QVERIFY(enabled(QWizard::NextButton));
}

void TestExportTADataWizard::nextWaitsForGoodDates()
{
    open();
    const QString red = QStringLiteral("QLabel {color: red;}");
    fillSeriesPage(m_wizard.get(), choices());
    const QDate today = QDate::currentDate();
    // Two days, of which midnight can take one.
    child<QDateEdit>("dateTo")->setDate(today.addDays(2));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("toLabel")->styleSheet(), red);
    QCOMPARE(child<QLabel>("fromLabel")->styleSheet(), QString());
    child<QDateEdit>("dateTo")->setDate(today.addDays(-1));
    QVERIFY(!enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("toLabel")->styleSheet(), QString());
    QCOMPARE(child<QLabel>("fromLabel")->styleSheet(), red);
    child<QDateEdit>("dateFrom")->setDate(today.addDays(-1));
    QVERIFY(enabled(QWizard::NextButton));
    QCOMPARE(child<QLabel>("fromLabel")->styleSheet(), QString());
}

void TestExportTADataWizard::goingBackKeepsEveryChoice()
{
    open();
    ExportChoices choices = this->choices();
    choices.dateFrom = QDate(2024, 3, 1);
    choices.dateTo = QDate(2024, 3, 15);
    choices.timeFrame = QStringLiteral("1 час");
    choices.extension = QStringLiteral(".csv");
    choices.lineFormat = QStringLiteral("DATE,TIME,CLOSE");
    choices.separator = QStringLiteral("пробел ( )");
    choices.header = false;
    fillExportWizard(m_wizard.get(), choices);
    click(button(QWizard::BackButton));
    QCOMPARE(title(), seriesTitle);
    QVERIFY(child<QComboBox>("security")->currentText().startsWith(choices.security));
    QCOMPARE(child<QDateEdit>("dateFrom")->date(), choices.dateFrom);
    QCOMPARE(child<QDateEdit>("dateTo")->date(), choices.dateTo);
    QCOMPARE(child<QComboBox>("timeFrame")->currentText(), choices.timeFrame);
    QCOMPARE(child<QLineEdit>("outputFile")->text(), choices.outputFile);
    QCOMPARE(child<QComboBox>("extensionComboBox")->currentText(), choices.extension);
    QCOMPARE(child<QLineEdit>("outputDir")->text(), choices.outputDir);
    QVERIFY(enabled(QWizard::NextButton));
    click(button(QWizard::NextButton));
    QCOMPARE(child<QComboBox>("lineFormat")->currentText(), choices.lineFormat);
    QCOMPARE(child<QComboBox>("separator")->currentText(), choices.separator);
    QVERIFY(!child<QCheckBox>("writeHead")->isChecked());
}

void TestExportTADataWizard::gathersTheDetailsOfBothPages()
{
    open();
    ExportChoices choices;
    choices.stock = QStringLiteral("ORIENT ");
    choices.board = QStringLiteral("FX ");
    choices.security = QStringLiteral("USDJPY");
    choices.dateFrom = QDate(2024, 3, 1);
    choices.dateTo = QDate(2024, 3, 15);
    choices.timeFrame = QStringLiteral("30 минут");
    choices.extension = QStringLiteral(".csv");
    choices.outputDir = m_output->path();
    choices.lineFormat = QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VOL");
    choices.separator = QStringLiteral("точка с запятой (;)");
    choices.dateFormat = QStringLiteral("дд/мм/гг");
    choices.timeFormat = QStringLiteral("чч:мм");
    choices.header = false;
    fillExportWizard(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));

    const ExportDetails details = wizard()->exportDetails();
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({"2", "1", "104", "ORIENT", "FX", "USDJPY", "1800", ";", "dd/MM/yy",
                          "hh:mm", "", ""}));
    QVERIFY(!details.addHeader);
    QCOMPARE(details.lineFormat, QStringLiteral("TICKER,PER,DATE,TIME,CLOSE,VOL"));
    QCOMPARE(details.dateFrom, QDate(2024, 3, 1));
    QCOMPARE(details.dateTo, QDate(2024, 3, 15));
    QCOMPARE(details.outputPath, m_output->filePath(QStringLiteral("USDJPY_240301_240315.csv")));
}

void TestExportTADataWizard::beginsWithTheDefaults()
{
    open();
    const ExportDetails details = wizard()->exportDetails();
    QCOMPARE(details.dateFrom, child<QDateEdit>("dateFrom")->date());
    QCOMPARE(QDir::cleanPath(details.outputPath), QStringLiteral(".txt"));
    QCOMPARE(details.lineFormat, QLatin1String(testsupport::lineFormats[0]));
    QCOMPARE(testsupport::fieldsOf(details),
             QStringList({"0", "0", "0", "", "", "", "60", ",", "yyyyMMdd", "hhmmss", "", ""}));
    QVERIFY(details.addHeader);
}

void TestExportTADataWizard::asksBeforeAFileIsReplaced()
{
    testsupport::writeFile(output(), "old");
    open();
    fillSeriesPage(m_wizard.get(), choices());
    ModalSteps steps;
    steps.on<QMessageBox>([this](QMessageBox* box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("Файл существует"));
        QCOMPARE(box->text(), QStringLiteral("Файл с таким именем уже существует и будет "
                                             "перезаписан при экспорте. Все равно продолжить?"));
        QCOMPARE(box->icon(), QMessageBox::Question);
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box->defaultButton(), box->button(QMessageBox::No));
        QCOMPARE(box->escapeButton(), nullptr);
        QCOMPARE(box->parentWidget(), m_wizard.get());
        hands::keyClick(box, Qt::Key_Return);
    });
    click(button(QWizard::NextButton));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), seriesTitle);
    QCOMPARE(testsupport::readFile(output()), QByteArray("old"));
}

void TestExportTADataWizard::asksOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesOn");
    for (const char* how :
         {"click", "Return", "Enter", "Space", "shortcut", "outputFile", "outputDir", "dateFrom",
          "dateTo", "stock", "timeFrame", "extensionComboBox"}) {
        QTest::addRow("%s, yes", how) << QString::fromLatin1(how) << "yes" << true;
        QTest::addRow("%s, no", how) << QString::fromLatin1(how) << "no" << false;
        QTest::addRow("%s, escape", how) << QString::fromLatin1(how) << "escape" << false;
    }
}

void TestExportTADataWizard::asksOnce()
{
    QFETCH(const QString, how);
    QFETCH(const QString, answer);
    QFETCH(const bool, goesOn);
    testsupport::writeFile(output(), "old");
    open();
    fillSeriesPage(m_wizard.get(), choices());
    ModalSteps steps;
    steps.on<QMessageBox>([answer](QMessageBox* box) {
        if (answer == u"escape")
            hands::keyClick(box, Qt::Key_Escape);
        else
            click(box->button(answer == u"yes" ? QMessageBox::Yes : QMessageBox::No));
    });
    goOn(how);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), goesOn ? formatTitle : seriesTitle);
    QCOMPARE(testsupport::readFile(output()), QByteArray("old"));
    // A second time all is as it was.
    if (!goesOn) {
        QVERIFY(enabled(QWizard::NextButton));
        QVERIFY(!button(QWizard::NextButton)->isDown());
    }
}

void TestExportTADataWizard::aCallOfNextAsksNobody()
{
    testsupport::writeFile(output(), "old");
    open();
    fillSeriesPage(m_wizard.get(), choices());
    const ModalSteps nobody;
    m_wizard->next();
    QCOMPARE(title(), formatTitle);
    m_wizard->back();
    button(QWizard::NextButton)->click();
    QCOMPARE(title(), formatTitle);
    QVERIFY2(nobody.complaint().isNull(), qPrintable(nobody.complaint()));
}

void TestExportTADataWizard::asksNothingForANewFile_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"click", "Return", "Enter", "Space", "shortcut", "outputFile",
                            "outputDir", "dateFrom", "dateTo"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void TestExportTADataWizard::asksNothingForANewFile()
{
    QFETCH(const QString, how);
    // Of another name or another kind.
    testsupport::writeFile(m_output->filePath(QStringLiteral("bars.csv")), "old");
    testsupport::writeFile(m_output->filePath(QStringLiteral("bars")), "old");
    open();
    fillSeriesPage(m_wizard.get(), choices());
    const ModalSteps steps;
    goOn(how);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), formatTitle);
}

void TestExportTADataWizard::asksForADirectoryOfThatName()
{
    QVERIFY(QDir().mkpath(output()));
    open();
    fillSeriesPage(m_wizard.get(), choices());
    ModalSteps steps;
    steps.on<QMessageBox>([](QMessageBox* box) { click(box->button(QMessageBox::No)); });
    click(button(QWizard::NextButton));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), seriesTitle);
}

void TestExportTADataWizard::asksAgain()
{
    testsupport::writeFile(output(), "old");
    open();
    fillSeriesPage(m_wizard.get(), choices());
    ModalSteps steps;
    for (const auto answer : {QMessageBox::No, QMessageBox::Yes, QMessageBox::Yes})
        steps.on<QMessageBox>([answer](QMessageBox* box) { click(box->button(answer)); });
    click(button(QWizard::NextButton));
    QCOMPARE(title(), seriesTitle);
    click(button(QWizard::NextButton));
    QCOMPARE(title(), formatTitle);
    click(button(QWizard::BackButton));
    QCOMPARE(title(), seriesTitle);
    click(button(QWizard::NextButton));
    QCOMPARE(title(), formatTitle);
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

void TestExportTADataWizard::asksOnTheSeriesPageOnly()
{
    open();
    fillExportWizard(m_wizard.get(), choices());
    testsupport::writeFile(output(), "new by now");
    const ModalSteps steps;
    click(button(QWizard::FinishButton));
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
}

void TestExportTADataWizard::checksTheFileWithoutThePage()
{
    open();
    fillSeriesPage(m_wizard.get(), choices());
    QVERIFY(wizard()->checkFileName());
    testsupport::writeFile(output(), "old");
    ModalSteps steps;
    for (const auto answer : {QMessageBox::Yes, QMessageBox::No})
        steps.on<QMessageBox>([answer](QMessageBox* box) { click(box->button(answer)); });
    QVERIFY(wizard()->checkFileName());
    QVERIFY(!wizard()->checkFileName());
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), seriesTitle);
}

void TestExportTADataWizard::aNextThatIsDisabledIsLeftAlone()
{
    open();
    QAbstractButton* const next = button(QWizard::NextButton);
    QVERIFY(!next->isEnabled());
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QVERIFY(!wizard()->eventFilter(next, &press));
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QVERIFY(!wizard()->eventFilter(next, &space));
    QShortcutEvent shortcut(QKeySequence(Qt::ALT | Qt::Key_N), 0);
    QVERIFY(!wizard()->eventFilter(next, &shortcut));
    ModalSteps steps; // complains of every window
    hands::mouseClick(next, Qt::LeftButton);
    // Whoever has the focus is given the keys; a button that is disabled has it in no window
    // system.
    QTest::keyClick(next, Qt::Key_Space);
    QTest::keyClick(next, Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
    QCOMPARE(title(), seriesTitle);
}

void TestExportTADataWizard::otherEventsAreLeftAlone()
{
    open();
    fillSeriesPage(m_wizard.get(), choices());
    QAbstractButton* const next = button(QWizard::NextButton);
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QVERIFY(!wizard()->eventFilter(next, &tab));
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QVERIFY(!wizard()->eventFilter(next, &release));
    QEvent enter(QEvent::HoverEnter);
    QVERIFY(!wizard()->eventFilter(next, &enter));
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QVERIFY(!wizard()->eventFilter(button(QWizard::CancelButton), &press));
    QCOMPARE(title(), seriesTitle);

    QVERIFY(wizard()->eventFilter(next, &press));
    QCOMPARE(title(), formatTitle);
    QVERIFY(!wizard()->eventFilter(next, &press));
    QCOMPARE(title(), formatTitle);
}

void TestExportTADataWizard::goesOnAtThePress()
{
    open();
    fillSeriesPage(m_wizard.get(), choices());
    hands::mousePress(button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(title(), formatTitle);
    QVERIFY(!button(QWizard::NextButton)->isDown());
    hands::mouseRelease(button(QWizard::NextButton), Qt::LeftButton);
    QCOMPARE(title(), formatTitle);
    click(button(QWizard::FinishButton));
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
}

void TestExportTADataWizard::keepsNothingElse()
{
    open();
    ExportChoices choices = this->choices();
    choices.dateFrom = QDate(2024, 3, 1);
    choices.dateTo = QDate(2024, 3, 15);
    choices.timeFrame = QStringLiteral("1 день");
    choices.extension = QStringLiteral(".csv");
    choices.lineFormat = QStringLiteral("DATE,TIME,CLOSE");
    choices.header = false;
    fillExportWizard(m_wizard.get(), choices);
    click(button(QWizard::FinishButton));

    open();
    QCOMPARE(child<QComboBox>("stock")->currentIndex(), -1);
    QVERIFY(child<QDateEdit>("dateFrom")->date() > choices.dateFrom);
    QCOMPARE(child<QComboBox>("timeFrame")->currentText(), QStringLiteral("1 минута"));
    QCOMPARE(child<QLineEdit>("outputFile")->text(), QString());
    QCOMPARE(child<QComboBox>("extensionComboBox")->currentText(), QStringLiteral(".txt"));
    QCOMPARE(child<QLineEdit>("outputDir")->text(), QString());
    QVERIFY(wizard()->exportDetails().addHeader);
    QVERIFY(wizard()->exportDetails().lineFormat.startsWith(QStringLiteral("TICKER,")));
}

void TestExportTADataWizard::nothingIsCutOff()
{
    // As small as it can be made.
    open();
    fillSeriesPage(m_wizard.get(), choices());
    for (const QString& page : {seriesTitle, formatTitle}) {
        QCOMPARE(title(), page);
        m_wizard->resize(m_wizard->minimumSize());
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        const QList<QWidget*> widgets =
            m_wizard->currentPage()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget* widget : widgets) {
            if (!widget->isVisible() || widget->isWindow())
                continue;
            QVERIFY2(m_wizard->currentPage()->rect().contains(widget->geometry()),
                     qPrintable(widget->objectName()));
            const int needed = widget->minimumSizeHint().width();
            QVERIFY2(widget->width() >= std::min(needed, widget->maximumWidth()),
                     qPrintable(widget->objectName()));
        }
        if (page == seriesTitle)
            click(button(QWizard::NextButton));
    }
}

void TestExportTADataWizard::tabFollowsTheEye()
{
    open();
    const QStringList names{"stock",     "board",     "security",   "dateFrom",
                            "dateTo",    "timeFrame", "outputFile", "extensionComboBox",
                            "outputDir", "chooseDir"};
    QCOMPARE(tabNames(), names + QStringList({"Cancel"}));
    fillSeriesPage(m_wizard.get(), choices());
    child<QComboBox>("stock")->setFocus();
    QCOMPARE(tabNames(), names + QStringList({"Next", "Cancel"}));

    click(button(QWizard::NextButton));
    QCOMPARE(tabNames(), QStringList({"lineFormat", "separator", "dateFormat", "timeFormat",
                                      "writeHead", "Back", "Finish", "Cancel"}));
}

void TestExportTADataWizard::theKeyboardSuffices()
{
    const testsupport::UnhurriedTyping typing;
    open();
    typeSeries();
    type("01032024");
    type(Qt::Key_Tab);
    type("15032024");
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Tab);
    QCOMPARE(m_wizard->focusWidget(), child<QLineEdit>("outputFile"));
    QCOMPARE(child<QLineEdit>("outputFile")->text(), QStringLiteral("GBPUSD_240301_240315"));
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Tab);
    hands::keyClicks(m_wizard->focusWidget(), m_output->path());
    type(Qt::Key_Return);

    QCOMPARE(title(), formatTitle);
    QCOMPARE(m_wizard->focusWidget(), child<QComboBox>("lineFormat"));
    type(Qt::Key_End);
    type(Qt::Key_Tab);
    type(Qt::Key_Down);
    type(Qt::Key_Return);
    QVERIFY(!m_wizard->isVisible());
    QCOMPARE(m_wizard->result(), int(QDialog::Accepted));
    const ExportDetails details = wizard()->exportDetails();
    QCOMPARE(details.securityName, QStringLiteral("GBPUSD"));
    QCOMPARE(details.timeframe, 300);
    QCOMPARE(details.dateFrom, QDate(2024, 3, 1));
    QCOMPARE(details.dateTo, QDate(2024, 3, 15));
    QCOMPARE(details.outputPath, m_output->filePath(QStringLiteral("GBPUSD_240301_240315.csv")));
    QCOMPARE(details.lineFormat, QStringLiteral("DATE,TIME,CLOSE"));
    QCOMPARE(details.separator, QStringLiteral(";"));
}

void TestExportTADataWizard::opensWideEnoughForTheLongestLineFormat()
{
    open();
    const QSize opened = m_wizard->size();
    fillSeriesPage(m_wizard.get(), choices());
    click(button(QWizard::NextButton));
    QCOMPARE(title(), formatTitle);
    QCOMPARE(m_wizard->width(), opened.width());
    const auto* const box = child<QComboBox>("lineFormat");
    const QFontMetrics metrics(box->font());
    QStyleOptionComboBox option;
    option.initFrom(box);
    const QRect field = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                     QStyle::SC_ComboBoxEditField, box);
    for (int i = 0; i < box->count(); ++i)
        QVERIFY2(field.width() >= metrics.horizontalAdvance(box->itemText(i)),
                 qPrintable(box->itemText(i)));
}

void TestExportTADataWizard::returnDoesNothingWhileNextIsDisabled_data()
{
    QTest::addColumn<QString>("field");
    for (const char* field : {"outputFile", "outputDir", "dateFrom", "dateTo", "stock", "board",
                              "security", "timeFrame", "extensionComboBox"})
        QTest::newRow(field) << QString::fromLatin1(field);
}

void TestExportTADataWizard::returnDoesNothingWhileNextIsDisabled()
{
    QFETCH(const QString, field);
    // There is a file that would be asked for, and no series yet.
    testsupport::writeFile(output(), "precious");
    open();
    child<QLineEdit>("outputFile")->setText(QStringLiteral("bars"));
    child<QLineEdit>("outputDir")->setText(m_output->path());
    QVERIFY(!enabled(QWizard::NextButton));
    auto* const widget = child<QWidget>(field.toLatin1().constData());
    ModalSteps steps; // complains of every window
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        widget->setFocus();
        hands::keyClick(widget, key);
        QCoreApplication::processEvents();
        QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
        QCOMPARE(title(), seriesTitle);
        QVERIFY(m_wizard->isVisible());
    }
}

QTEST_MAIN(TestExportTADataWizard)
#include "tst_exporttadatawizard.moc"
