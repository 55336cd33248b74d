// SPDX-License-Identifier: MIT
// The options page in the terminal's own dialog, and what the purge makes of the values: the
// plug-in is loaded from its file, and the dialog is driven with mouse and keys.

#include "desk/commands.h"
#include "desk/deskapplication.h"
#include "desk/mainwindow.h"
#include "desk/optionsdialog.h"
#include "support/child.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/strictlog.h"
#include "support/terminal.h"
#include "support/userhands.h"

#include <vexdesk/ioptionspage.h>
#include <vexdesk/terminal/core.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStackedWidget>

#include <functional>
#include <memory>

using vexdesk::OptionsDialog;

namespace {

QCheckBox* deleteSeconds(const QWidget* dialog)
{
    return testsupport::child<QCheckBox>(dialog, "deleteSeconds");
}

QSpinBox* storeForDays(const QWidget* dialog)
{
    return testsupport::child<QSpinBox>(dialog, "storeForDays");
}

void press(const QWidget* dialog, QDialogButtonBox::StandardButton which)
{
    testsupport::click(testsupport::child<QDialogButtonBox>(dialog, "buttons")->button(which));
}

void switchPurge(const QWidget* dialog)
{
    QCheckBox* const box = deleteSeconds(dialog);
    hands::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
}

void typeDays(const QWidget* dialog, const char* days)
{
    QSpinBox* const box = storeForDays(dialog);
    box->setFocus();
    box->selectAll();
    hands::keyClicks(box, QLatin1String(days));
    QCOMPARE(box->value(), QByteArray(days).toInt());
}

} // namespace

class TestOptionsCommand final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theDialogShowsThePage();
    void okStoresBothValues();
    void applyStoresAndCancelKeepsWhatWasApplied();
    void cancelStoresNothing();
    void storedValuesAreShownTheNextTime();
    void thePurgeFollowsTheValuesOnTheNextDay();
    void withThePurgeOffANewDayRemovesNothing();
    void aDialogThatIsOpenDoesNotHinderThePurge();

private:
    /// Opens the dialog as the menu does, and returns when it is closed.
    void withOptions(const std::function<void(OptionsDialog*)>& act);
    static void newDay() { vexdesk::triggerCommand("Desk.NewDay"); }
    /// A second file of so many days ago, which it makes.
    QString secondFile(int age) const;
    QByteArray storedValues() const;

    QDir m_user;
    std::unique_ptr<testsupport::Terminal> m_terminal;
};

void TestOptionsCommand::init()
{
    testsupport::failOnStrayWarnings();
    m_terminal.reset(); // of an init that has failed
    m_user = testsupport::userFolder();
    QVERIFY(m_user.removeRecursively());
    m_terminal = testsupport::Terminal::withPlugin();
}

void TestOptionsCommand::cleanup()
{
    m_terminal.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestOptionsCommand::withOptions(const std::function<void(OptionsDialog*)>& act)
{
    testsupport::ModalSteps steps;
    steps.on<OptionsDialog>(act);
    vexdesk::triggerCommand("Desk.Options");
    QVERIFY2(steps.complaint().isNull(), qPrintable(steps.complaint()));
}

QString TestOptionsCommand::secondFile(int age) const
{
    const QString day = QDate::currentDate().addDays(-age).toString(QStringLiteral("yyyyMMdd"));
    const QString path = m_user.filePath(QStringLiteral("tadata/S/B/X/%1_1").arg(day));
    testsupport::writeFile(path, "x");
    return path;
}

// The plug-in's group of the settings file.
QByteArray TestOptionsCommand::storedValues() const
{
    const QByteArray file = testsupport::readFile(m_user.filePath(QStringLiteral("vexdesk.ini")));
    const QByteArray heading = "[TADataManager]\n";
    const qsizetype begin = file.indexOf(heading);
    if (begin < 0)
        return QByteArray();
    const qsizetype end = file.indexOf("\n\n", begin);
    return file.mid(begin + heading.size(), end < 0 ? -1 : end + 1 - begin - heading.size());
}

void TestOptionsCommand::theDialogShowsThePage()
{
    withOptions([](OptionsDialog* dialog) {
        const auto* const list = testsupport::child<QListWidget>(dialog, "categories");
        QCOMPARE(list->item(0)->text(), QStringLiteral("Истор. данные ТА"));
        const QImage icon = list->item(0)->icon().pixmap(24).toImage();
        bool drawn = false;
        for (int x = 0; x < icon.width(); ++x)
            drawn = drawn || icon.pixelColor(x, icon.height() / 2).alpha() > 0;
        QVERIFY(drawn); // the terminal has the picture
        QCOMPARE(
            icon,
            QIcon(QStringLiteral(":/icons/preferences/tadatamanager.png")).pixmap(24).toImage());
        // Another plug-in may have a page as well.
        const QWidget* const page =
            testsupport::child<QStackedWidget>(dialog, "pages")->currentWidget();
        QCOMPARE(testsupport::child<QLabel>(page, "pageTitle")->text(), QStringLiteral("Общее"));
        QVERIFY(deleteSeconds(dialog)->isVisible());
        QVERIFY(deleteSeconds(dialog)->isChecked());
        QCOMPARE(storeForDays(dialog)->value(), 7);
        QVERIFY(storeForDays(dialog)->isEnabled());
        press(dialog, QDialogButtonBox::Cancel);
    });
    QVERIFY(storedValues().isEmpty());
}

void TestOptionsCommand::okStoresBothValues()
{
    withOptions([](OptionsDialog* dialog) {
        typeDays(dialog, "30");
        switchPurge(dialog);
        QVERIFY(!storeForDays(dialog)->isEnabled());
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(!dialog->isVisible());
    });
    QCOMPARE(storedValues(), QByteArray("deleteSeconds=false\nstoreForDays=30\n"));
}

void TestOptionsCommand::applyStoresAndCancelKeepsWhatWasApplied()
{
    withOptions([this](OptionsDialog* dialog) {
        typeDays(dialog, "20");
        press(dialog, QDialogButtonBox::Apply);
        QVERIFY(dialog->isVisible());
        QCOMPARE(storedValues(), QByteArray("deleteSeconds=true\nstoreForDays=20\n"));
        typeDays(dialog, "40");
        switchPurge(dialog);
        press(dialog, QDialogButtonBox::Cancel);
    });
    QCOMPARE(storedValues(), QByteArray("deleteSeconds=true\nstoreForDays=20\n"));
}

void TestOptionsCommand::cancelStoresNothing()
{
    withOptions([](OptionsDialog* dialog) {
        typeDays(dialog, "40");
        switchPurge(dialog);
        hands::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
    });
    QVERIFY(storedValues().isEmpty());
    // Far from the bound on both sides: midnight may pass at any moment.
    const QString kept = secondFile(4);
    const QString old = secondFile(12);
    newDay();
    QVERIFY(QFile::exists(kept));
    QVERIFY(!QFile::exists(old));
}

void TestOptionsCommand::storedValuesAreShownTheNextTime()
{
    withOptions([](OptionsDialog* dialog) {
        typeDays(dialog, "0");
        switchPurge(dialog);
        press(dialog, QDialogButtonBox::Ok);
    });
    withOptions([](OptionsDialog* dialog) {
        QVERIFY(!deleteSeconds(dialog)->isChecked());
        QVERIFY(!storeForDays(dialog)->isEnabled());
        QCOMPARE(storeForDays(dialog)->value(), 0);
        switchPurge(dialog);
        QVERIFY(storeForDays(dialog)->isEnabled());
        press(dialog, QDialogButtonBox::Ok);
    });
    QCOMPARE(storedValues(), QByteArray("deleteSeconds=true\nstoreForDays=0\n"));
}

void TestOptionsCommand::thePurgeFollowsTheValuesOnTheNextDay()
{
    const QString young = secondFile(2);
    const QString middle = secondFile(14);
    const QString old = secondFile(40);
    withOptions([](OptionsDialog* dialog) {
        typeDays(dialog, "20");
        press(dialog, QDialogButtonBox::Ok);
    });
    QVERIFY(QFile::exists(old)); // not before the day begins
    newDay();
    QVERIFY(!QFile::exists(old));
    QVERIFY(QFile::exists(middle));

    withOptions([](OptionsDialog* dialog) {
        typeDays(dialog, "9");
        press(dialog, QDialogButtonBox::Apply);
        press(dialog, QDialogButtonBox::Cancel);
    });
    QVERIFY(QFile::exists(middle));
    newDay();
    QVERIFY(!QFile::exists(middle));
    QVERIFY(QFile::exists(young));
}

void TestOptionsCommand::withThePurgeOffANewDayRemovesNothing()
{
    const QString old = secondFile(40);
    withOptions([](OptionsDialog* dialog) {
        switchPurge(dialog);
        press(dialog, QDialogButtonBox::Ok);
    });
    newDay();
    QVERIFY(QFile::exists(old));
    withOptions([](OptionsDialog* dialog) {
        switchPurge(dialog);
        press(dialog, QDialogButtonBox::Ok);
    });
    newDay();
    QVERIFY(!QFile::exists(old));
}

void TestOptionsCommand::aDialogThatIsOpenDoesNotHinderThePurge()
{
    const QString old = secondFile(40);
    withOptions([this, &old](OptionsDialog* dialog) {
        switchPurge(dialog); // not stored
        Q_EMIT m_terminal->core().notifier()->aNewDay();
        QVERIFY(!QFile::exists(old));
        press(dialog, QDialogButtonBox::Cancel);
    });
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication app(argc, argv);
    TestOptionsCommand test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_optionscommand.moc"
