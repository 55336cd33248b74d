// SPDX-License-Identifier: MIT
// The window of the safe import, as a user drives it with mouse and keys.
#include "safeimportwindow.h"

#include "compactbox.h"
#include "daystrip.h"
#include "filedrop.h"
#include "importfiles.h"
#include "previewview.h"
#include "profiles.h"
#include "recentfiles.h"
#include "restoresettings.h"
#include "rolesheader.h"
#include "support/child.h"
#include "support/eventually.h"
#include "support/faults.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/hold.h"
#include "support/strictlog.h"
#include "support/textcheck.h"
#include "support/userhands.h"

#include <vexdesk/history/storejob.h>
#include <vexdesk/history/storepaths.h>
#include <vexdesk/icore.h>

#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include <cerrno>
#include <memory>

using tadata::PreviewModel;
using testsupport::barFile;
using testsupport::child;
using testsupport::choose;
using testsupport::click;
using testsupport::newUserFolder;
using testsupport::readTree;
using testsupport::userFolder;
using testsupport::writeFile;
using Tree = QMap<QString, QByteArray>;

namespace {

const QDate monday(2024, 1, 15);
const QDate tuesday(2024, 1, 16);
const QDate wednesday(2024, 1, 17);

// As the disk writes the file of the second day, however it does.
const QList<testsupport::SystemCall> writing{testsupport::SystemCall::Write,
                                             testsupport::SystemCall::Rename};

// How often a widget was disabled.
class Disablings final : public QObject
{
public:
    explicit Disablings(QWidget* widget) { widget->installEventFilter(this); }

    int count() const { return m_count; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* const widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::EnabledChange && !widget->isEnabled())
            ++m_count;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

class TestSafeImportWindow final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void beginsWithoutAFile();
    void aFileFillsEverythingIn();
    void importsAndUndoes();
    void whatIsWrongStandsWhereItIs();
    void aProblemIsShownWhereItIs();
    void thePreviewGoesThroughTheWholeFile();
    void rolesAreChosenAboveTheColumns();
    void theLayoutIsChosenInItsBoxes();
    void modesAndBadLinesAreChosen();
    void aProfileFillsIn();
    void tickersGoToTheirSeries();
    void aColumnOfTickersIsUsedByItself();
    void otherTickersThanTheChosenOneAreSaid();
    void aFileThatNobodyGuessesIsChosenByHand();
    void anotherFileHasAnotherSeries();
    void severalFilesAreImportedTogether();
    void filesWithADayInCommonAreNotReplaced();
    void ofManyUnknownTickersThreeAreTold();
    void filesAreDropped();
    void recentFilesAreOffered();
    void filesAreChosenInADialog();
    void aRequestFillsIn();
    void aRequestIsForItsFilesAlone();
    void theVenueIsRemembered();
    void whatIsTypedInFullIsChosen();
    void returnInABoxImportsNothing();
    void whatCannotBeReadIsNotSaidToHaveChanged();
    void tellsOfAVolumeThatIsLeftOut();
    void cancelTakesEverythingBack_data();
    void cancelTakesEverythingBack();
    void whatComesWhileAnImportRunsIsAnswered();
    void theEndOfTheWindowTakesEverythingBack();
    void aFileThatChangesIsShownAnew();
    void whatCameOfAnImportIsNotHiddenByAChange();
    void theStoreIsFollowed();
    void whatBarsAnImportIsLookedAtAgain();
    void aKeyLooksAgain();
    void aLockedSeriesIsSaid();
    void aFullDiskIsSaid();
    void aPlaceThatCannotBeMadeIsSaid();
    void saysWhereNothingCanBeUndone();
    void theStripIsWalkedByKeys();
    void allIsReachedByTab();
    void listsOpenAsWideAsTheirEntries();
    void aListWidensWithAnEntryThatCameLate();
    void fitsASmallScreen_data();
    void fitsASmallScreen();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    static QDir store() { return vexdesk::storePlace(); }
    void open(const QStringList& files);
    void openInto(const QStringList& files, const char* series);
    void waitForOutlook() const;
    void import();
    void showAgain();
    QString textOf(const char* name) const { return child<QLabel>(m_window.get(), name)->text(); }
    QPushButton* button(const char* name) const { return child<QPushButton>(m_window.get(), name); }
    PreviewView* preview() const { return child<PreviewView>(m_window.get()); }
    QRadioButton* mode(const char* text) const;

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SafeImportWindow> m_window;
};

void TestSafeImportWindow::init()
{
    testsupport::failOnStrayWarnings();
    newUserFolder();
    vexdesk::ReferenceData::install(vexdesk::ReferenceData::demonstration());
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeFile(path("new.csv"), barFile({monday, tuesday, wednesday}, 8, 200));
    m_window = std::make_unique<SafeImportWindow>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestSafeImportWindow::cleanup()
{
    m_window.reset();
    m_dir.reset();
    QVERIFY(userFolder().removeRecursively());
}

void TestSafeImportWindow::open(const QStringList& files)
{
    m_window->take({.files = files});
    EVENTUALLY(!textOf("sentences").isEmpty() || !textOf("verdict").isEmpty());
}

void TestSafeImportWindow::openInto(const QStringList& files, const char* series)
{
    m_window->take({.files = files, .series = QLatin1String(series)});
    waitForOutlook();
}

void TestSafeImportWindow::waitForOutlook() const
{
    EVENTUALLY(button("import")->isEnabled());
}

void TestSafeImportWindow::import()
{
    waitForOutlook();
    click(button("import"));
    EVENTUALLY(child<QLabel>(m_window.get(), "message")->isVisible());
}

QRadioButton* TestSafeImportWindow::mode(const char* text) const
{
    const QList<QRadioButton*> buttons = m_window->findChildren<QRadioButton*>();
    for (QRadioButton* const one : buttons) {
        if (one->text().remove(u'&') == QString::fromUtf8(text))
            return one;
    }
    qFatal("no mode %s", text);
}

void TestSafeImportWindow::beginsWithoutAFile()
{
    QVERIFY(!button("import")->isEnabled());
    QVERIFY(!button("undo")->isVisible());
    QVERIFY(textOf("sentences").contains(QStringLiteral("перетащите")));
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    QVERIFY(!m_window->isVisible());
}

void TestSafeImportWindow::aFileFillsEverythingIn()
{
    open({path("new.csv")});
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("Выберите площадку")));
    QCOMPARE(textOf("sentences"), QString());
    QVERIFY(!button("import")->isEnabled());
    choose(child<QComboBox>(m_window.get(), "stock"), QStringLiteral("NORD —"));
    choose(child<QComboBox>(m_window.get(), "board"), QStringLiteral("MAIN"));
    choose(child<QComboBox>(m_window.get(), "security"), 0);
    waitForOutlook();
    QCOMPARE(textOf("verdict"), QStringLiteral("Импорт пройдёт до конца."));
    QVERIFY2(textOf("sentences").contains(QStringLiteral("новых: 3")),
             qPrintable(textOf("sentences")));
    QCOMPARE(child<QComboBox>(m_window.get(), "separator")->currentData().toString(),
             QStringLiteral(","));
    QCOMPARE(child<QComboBox>(m_window.get(), "dateFormat")->currentData().toString(),
             QStringLiteral("yyyyMMdd"));
    QVERIFY(child<QCheckBox>(m_window.get(), "header")->isChecked());
    EVENTUALLY(preview()->roles().box(0)); // the lines are read beside the check
    QCOMPARE(preview()->roles().box(0)->currentText(), QStringLiteral("Дата"));
    EVENTUALLY_EQUAL(preview()->model().index(1, 0).data().toString(), QStringLiteral("20240115"));
    QVERIFY(readTree(store()).isEmpty());
}

void TestSafeImportWindow::importsAndUndoes()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    import();
    QVERIFY2(textOf("message").contains(
                 QStringLiteral("Новых баров: 24, заменены значения баров: 0, записано дней: 3")),
             qPrintable(textOf("message")));
    QCOMPARE(readTree(store()).size(), 3);
    // What it would do now.
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("без изменений: 3")));
    QCOMPARE(tadata::recentFiles(), QStringList{path("new.csv")});
    QVERIFY(child<QToolButton>(m_window.get(), "recent")->isEnabled());
    // Whoever presses twice has changed nothing, and can undo the first.
    import();
    EVENTUALLY(textOf("message").contains(QStringLiteral("записано дней: 0")));
    click(button("undo"));
    EVENTUALLY(textOf("message").contains(QStringLiteral("Импорт отменён")));
    QVERIFY(!button("undo")->isVisible());
    QVERIFY(readTree(store()).isEmpty());
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("новых: 3")));
}

void TestSafeImportWindow::whatIsWrongStandsWhereItIs()
{
    writeFile(path("bad.csv"), barFile({monday}, 30, 100) +
                                   "20240115,103500,1,2,x,2,3\n20240115,103600,1,2,1,2,3\n");
    m_window->take({.files = {path("bad.csv")}, .series = QStringLiteral("NORD/MAIN/ALFA")});
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 33);
    preview()->showLine(32);
    EVENTUALLY(preview()->table()->currentIndex().isValid());
    const int row = preview()->table()->currentIndex().row();
    EVENTUALLY(preview()->model().index(row, 4).data(PreviewModel::FaultRole).toBool());
    QVERIFY(!preview()->model().index(row, 3).data(PreviewModel::FaultRole).toBool());
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("32-й строки")));
    QVERIFY(!button("import")->isEnabled());
    click(child<QCheckBox>(m_window.get(), "skipBad"));
    import();
    QVERIFY2(textOf("message").contains(QStringLiteral("ошибочных строк: 1")),
             qPrintable(textOf("message")));
}

void TestSafeImportWindow::aProblemIsShownWhereItIs()
{
    writeFile(path("bad.csv"), barFile({monday, tuesday}, 400, 100) + "nonsense\n");
    m_window->take({.files = {path("bad.csv")}, .series = QStringLiteral("NORD/MAIN/ALFA")});
    auto* const tree = child<QTreeView>(m_window.get(), "problems");
    EVENTUALLY_EQUAL(tree->model()->rowCount(), 1);
    const QModelIndex line = tree->model()->index(0, 0, tree->model()->index(0, 0));
    EVENTUALLY(tree->visualRect(line).isValid());
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 802);
    hands::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(line).center());
    const auto row = [this] { return preview()->table()->currentIndex().row(); };
    EVENTUALLY_EQUAL(preview()->model().firstLine() + row() + 1, 802);
    EVENTUALLY(preview()->model().index(row(), 0).data(PreviewModel::FaultRole).toBool());
}

void TestSafeImportWindow::thePreviewGoesThroughTheWholeFile()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    QByteArray many = barFile({monday}, 300, 100);
    for (int day = 1; day < 200; ++day) {
        const QByteArray more = barFile({monday.addDays(day)}, 300, 100);
        many += more.mid(more.indexOf('\n') + 1);
    }
    writeFile(path("many.csv"), many);
    openInto({path("many.csv")}, "NORD/MAIN/ALFA");
    const PreviewModel& model = preview()->model();
    EVENTUALLY_EQUAL(model.lineCount(), 60'001);
    EVENTUALLY(model.columnCount() > 0); // they are read beside the search
    QVERIFY(model.rowCount() < 60);
    auto* const table = preview()->table();
    table->setFocus();
    hands::keyClick(table, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(model.firstLine() + table->currentIndex().row(), 60'000);
    EVENTUALLY(model.index(model.rowCount() - 1, 0).data().toString().startsWith(u'2'));
    hands::keyClick(table, Qt::Key_PageUp);
    QCOMPARE(model.firstLine(), 60'001 - 2 * model.pageSize());
    hands::keyClick(table, Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(model.firstLine(), 0);
    hands::keyClick(table, Qt::Key_Up);
    QCOMPARE(model.firstLine(), 0);
    for (int line = 0; line < model.pageSize(); ++line)
        hands::keyClick(table, Qt::Key_Down);
    QCOMPARE(model.firstLine(), 1);
    auto* const bar = child<QScrollBar>(m_window.get(), "previewBar");
    QCOMPARE(bar->value(), 1);
    bar->setValue(30'000);
    QCOMPARE(model.firstLine(), 30'000);
}

void TestSafeImportWindow::rolesAreChosenAboveTheColumns()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY(preview()->roles().box(6));
    choose(preview()->roles().box(1), QStringLiteral("не брать"));
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("время")));
    QVERIFY(!button("import")->isEnabled());
    choose(preview()->roles().box(1), QStringLiteral("Время"));
    waitForOutlook();
    // A role that another column had is taken from there.
    choose(preview()->roles().box(6), QStringLiteral("Закрытие"));
    EVENTUALLY_EQUAL(preview()->roles().box(5)->currentText(), QStringLiteral("не брать"));
}

void TestSafeImportWindow::theLayoutIsChosenInItsBoxes()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    choose(child<QComboBox>(m_window.get(), "dateFormat"), QStringLiteral("ддммгг"));
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("дата")) ||
               textOf("verdict").contains(QStringLiteral("Ошибка")));
    choose(child<QComboBox>(m_window.get(), "dateFormat"), QStringLiteral("ггггммдд"));
    waitForOutlook();
    choose(child<QComboBox>(m_window.get(), "timeframe"), QStringLiteral("1 секунда"));
    waitForOutlook();
    import();
    QVERIFY(readTree(store()).contains(QStringLiteral("NORD/MAIN/ALFA/20240115_1.iss")));
}

void TestSafeImportWindow::modesAndBadLinesAreChosen()
{
    writeFile(path("first.csv"), barFile({monday}, 20, 100));
    openInto({path("first.csv")}, "NORD/MAIN/ALFA");
    import();
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("дополняемых: 1")));
    QVERIFY(textOf("sentences").contains(QStringLiteral("Ни один бар не пропадёт")));
    click(mode("Заменить дни"));
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("заменяемых: 1")));
    for (const char* const place : {"sentences", "verdict"})
        QVERIFY(textOf(place).contains(QStringLiteral("Пропадёт баров: 12")));
    click(mode("Дозаполнить"));
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("без изменений: 1")));
}

void TestSafeImportWindow::showAgain()
{
    m_window->hide();
    // An X server tells of it later, and whoever is shown before is not known to be active.
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        EVENTUALLY(!QGuiApplication::focusWindow());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestSafeImportWindow::aProfileFillsIn()
{
    QVERIFY(tadata::saveProfile(QStringLiteral("broker"),
                                {{QStringLiteral("series"), QStringLiteral("NORD/MAIN/ALFA")},
                                 {QStringLiteral("mode"), QStringLiteral("fill")},
                                 {QStringLiteral("skip-bad"), QStringLiteral("true")},
                                 {QStringLiteral("decimals"), QStringLiteral("2")}}));
    showAgain();
    open({path("new.csv")});
    choose(child<QComboBox>(m_window.get(), "profile"), QStringLiteral("broker"));
    waitForOutlook();
    QVERIFY(mode("Дозаполнить")->isChecked());
    QVERIFY(child<QCheckBox>(m_window.get(), "skipBad")->isChecked());
    QVERIFY(textOf("message").contains(QStringLiteral("decimals")));
    QVERIFY(tadata::saveProfile(QStringLiteral("other"),
                                {{QStringLiteral("separator"), QStringLiteral("comma")}}));
    showAgain();
    for (const int profile : {2, 0}) {
        // What the first one said is not said by another, nor by none.
        choose(child<QComboBox>(m_window.get(), "profile"), profile);
        QVERIFY(mode("Добавить")->isChecked());
        QVERIFY(!child<QCheckBox>(m_window.get(), "skipBad")->isChecked());
        EVENTUALLY(textOf("verdict").contains(QStringLiteral("Выберите площадку")));
        choose(child<QComboBox>(m_window.get(), "profile"), QStringLiteral("broker"));
        waitForOutlook();
    }
    // What the user has chosen himself stays.
    m_window->take({.series = QStringLiteral("NORD/MAIN/BARK")});
    choose(child<QComboBox>(m_window.get(), "profile"), 0);
    waitForOutlook();
    QCOMPARE(child<QComboBox>(m_window.get(), "security")->currentText().left(4),
             QStringLiteral("BARK"));
}

void TestSafeImportWindow::tickersGoToTheirSeries()
{
    const QByteArray bark = barFile({tuesday}, 4, 300, "BARK");
    writeFile(path("both.csv"),
              barFile({monday}, 4, 200, "ALFA") + bark.mid(bark.indexOf('\n') + 1));
    openInto({path("both.csv")}, "NORD/MAIN/ALFA");
    choose(child<QComboBox>(m_window.get(), "source"), 1);
    QVERIFY(!child<QWidget>(m_window.get(), "security")->isVisible());
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("Серий: 2")));
    import();
    QVERIFY(readTree(store()).contains(QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss")));
    QVERIFY(readTree(store()).contains(QStringLiteral("NORD/MAIN/BARK/20240116_60.iss")));
}

void TestSafeImportWindow::aColumnOfTickersIsUsedByItself()
{
    const QByteArray bark = barFile({tuesday}, 4, 300, "BARK");
    writeFile(path("both.csv"),
              barFile({monday}, 4, 200, "ALFA") + bark.mid(bark.indexOf('\n') + 1));
    choose(child<QComboBox>(m_window.get(), "stock"), QStringLiteral("NORD —"));
    choose(child<QComboBox>(m_window.get(), "board"), QStringLiteral("MAIN"));
    open({path("both.csv")});
    EVENTUALLY_EQUAL(child<QComboBox>(m_window.get(), "source")->currentIndex(), 1);
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("Серий: 2")));
    waitForOutlook();
    // A file without them has its own series.
    open({path("new.csv")});
    QCOMPARE(child<QComboBox>(m_window.get(), "source")->currentIndex(), 0);
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("Выберите площадку")));
}

// The series was asked for, and stays.
void TestSafeImportWindow::otherTickersThanTheChosenOneAreSaid()
{
    writeFile(path("bark.csv"), barFile({monday}, 4, 200, "BARK"));
    m_window->take({.series = QStringLiteral("NORD/MAIN/ALFA"), .timeframe = 60, .isFill = true});
    m_window->take({.files = {path("bark.csv")}});
    waitForOutlook();
    for (const char* part : {"инструмента: 4 (BARK)", "NORD/MAIN/ALFA"})
        QVERIFY2(textOf("verdict").contains(QString::fromUtf8(part)),
                 qPrintable(textOf("verdict")));
    choose(child<QComboBox>(m_window.get(), "source"), 1);
    EVENTUALLY(textOf("verdict") == QStringLiteral("Импорт пройдёт до конца."));
}

void TestSafeImportWindow::aFileThatNobodyGuessesIsChosenByHand()
{
    QStringEncoder encode(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    const QString text = QString::fromUtf8(barFile({monday}, 4, 200));
    const QByteArray wide = encode(text.mid(text.indexOf(u'\n') + 1));
    writeFile(path("wide.csv"), wide);
    m_window->take({.files = {path("wide.csv")}, .series = QStringLiteral("NORD/MAIN/ALFA")});
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("UTF-16")));
    QVERIFY(!textOf("verdict").contains(QStringLiteral("--")));
    choose(child<QComboBox>(m_window.get(), "separator"), 0);
    EVENTUALLY(preview()->roles().box(6));
    const char* const roles[]{"Дата", "Время", "Открытие", "Максимум", "Минимум", "Закрытие"};
    for (int column = 0; column < 6; ++column) {
        EVENTUALLY(preview()->roles().box(column)->isEnabled());
        choose(preview()->roles().box(column), QString::fromUtf8(roles[column]));
        EVENTUALLY_EQUAL(preview()->roles().box(column)->currentText(),
                         QString::fromUtf8(roles[column]));
    }
    choose(child<QComboBox>(m_window.get(), "dateFormat"), QStringLiteral("ггггммдд"));
    choose(child<QComboBox>(m_window.get(), "timeFormat"), QStringLiteral("ччммсс"));
    EVENTUALLY2(button("import")->isEnabled(), qPrintable(textOf("verdict")));
    import();
    QCOMPARE(readTree(store()).value(QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss")).count('\n'),
             4);
}

void TestSafeImportWindow::anotherFileHasAnotherSeries()
{
    writeFile(path("BARK_2024.csv"), barFile({monday}, 4, 200));
    writeFile(path("other.csv"), barFile({monday}, 4, 200));
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    const auto security = [this] {
        return child<QComboBox>(m_window.get(), "security")->currentText();
    };
    const QString alfa = security();
    // The same one again is no other.
    open({path("new.csv")});
    waitForOutlook();
    QCOMPARE(security(), alfa);
    QVERIFY(testsupport::dropFiles(m_window.get(), {path("BARK_2024.csv")}));
    EVENTUALLY(textOf("message").contains(QStringLiteral("NORD/MAIN/BARK")));
    waitForOutlook();
    QVERIFY(testsupport::dropFiles(m_window.get(), {path("other.csv")}));
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("Выберите площадку")));
    QVERIFY(textOf("message").contains(QStringLiteral("Инструмент прежнего файла снят")));
    QVERIFY(!button("import")->isEnabled());
    QCOMPARE(security(), QString());
}

void TestSafeImportWindow::severalFilesAreImportedTogether()
{
    writeFile(path("ALFA.csv"), barFile({monday}, 4, 200));
    writeFile(path("BARK.csv"), barFile({tuesday}, 5, 200));
    openInto({path("ALFA.csv"), path("BARK.csv")}, "NORD/MAIN/{name}");
    auto* const files = child<QComboBox>(m_window.get(), "files");
    QCOMPARE(files->count(), 2);
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 5);
    choose(files, 1);
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 6);
    import();
    QVERIFY(textOf("message").contains(QStringLiteral("Новых баров: 9, ")));
    QVERIFY(readTree(store()).contains(QStringLiteral("NORD/MAIN/BARK/20240116_60.iss")));
}

void TestSafeImportWindow::filesWithADayInCommonAreNotReplaced()
{
    writeFile(path("morning.csv"), barFile({monday, tuesday}, 30, 200));
    writeFile(path("evening.csv"), barFile({tuesday, wednesday}, 5, 200));
    openInto({path("morning.csv"), path("evening.csv")}, "NORD/MAIN/ALFA");
    const QString shared = QStringLiteral("есть в нескольких файлах: 1");
    QVERIFY2(textOf("sentences").contains(shared), qPrintable(textOf("sentences")));
    click(mode("Заменить дни"));
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("morning.csv, evening.csv")));
    QVERIFY(!button("import")->isEnabled());
    QVERIFY2(!textOf("sentences").contains(QStringLiteral("Ни один бар")),
             qPrintable(textOf("sentences")));
    click(mode("Добавить"));
    import();
    QCOMPARE(readTree(store()).size(), 3);
    QCOMPARE(readTree(store()).value(QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss")).count('\n'),
             30);
}

void TestSafeImportWindow::ofManyUnknownTickersThreeAreTold()
{
    QByteArray text = barFile({monday}, 30, 200, "ALFA");
    for (int i = 0; i < 50; ++i)
        text += "20240115,110000,1.00,1.00,1.00,1.00,1,NONE" + QByteArray::number(i) + '\n';
    writeFile(path("many.csv"), text);
    m_window->take({.files = {path("many.csv")}, .series = QStringLiteral("NORD/MAIN/{ticker}")});
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("и ещё 47")));
    QCOMPARE(textOf("verdict").count(u'\n'), 3);
    QVERIFY(!button("import")->isEnabled());
}

void TestSafeImportWindow::filesAreDropped()
{
    QVERIFY(testsupport::dropFiles(m_window.get(), {path("new.csv")}));
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 25);

    // On the terminal's window, whenever that was made.
    QMainWindow early;
    FileDrop onTerminal(this);
    QMainWindow late;
    late.show();
    QSignalSpy dropped(&onTerminal, &FileDrop::dropped);
    for (QMainWindow* const window : {&early, &late}) {
        QVERIFY(window->acceptDrops());
        QVERIFY(testsupport::dropFiles(window, {path("new.csv")}));
        QCOMPARE(dropped.takeFirst().first().toStringList(), QStringList{path("new.csv")});
    }
    // What is no file is told where it is opened.
    QVERIFY(testsupport::dropFiles(m_window.get(), {m_dir->path()}));
    EVENTUALLY(textOf("verdict").contains(m_dir->path()));
    QVERIFY(!button("import")->isEnabled());
}

void TestSafeImportWindow::recentFilesAreOffered()
{
    auto* const recent = child<QToolButton>(m_window.get(), "recent");
    QVERIFY(!recent->isEnabled());
    tadata::addRecentFiles({path("new.csv"), path("gone.csv")});
    m_window = std::make_unique<SafeImportWindow>();
    m_window->show();
    auto* const button = child<QToolButton>(m_window.get(), "recent");
    QVERIFY(button->isEnabled());
    Q_EMIT button->menu()->aboutToShow();
    const QList<QAction*> actions = button->menu()->actions();
    QCOMPARE(actions.size(), 2);
    EVENTUALLY(!actions[1]->isEnabled());
    QVERIFY(actions[0]->isEnabled());
    actions[0]->trigger();
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 25);
}

void TestSafeImportWindow::filesAreChosenInADialog()
{
    // No event by the way: with some, the dialog does not always take a file that is chosen by its
    // name.
    QTest::mouseClick(button("open"), Qt::LeftButton);
    auto* const dialog = child<QFileDialog>(m_window.get());
    QVERIFY(dialog->isVisible());
    dialog->selectFile(path("new.csv"));
    QVERIFY(QMetaObject::invokeMethod(dialog, "accept"));
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 25);
    // The terminal may end while it is open.
    EVENTUALLY(!m_window->findChild<QFileDialog*>());
    click(button("open"));
    QVERIFY(m_window->findChild<QFileDialog*>());
    m_window.reset();
}

void TestSafeImportWindow::aRequestFillsIn()
{
    m_window->take({.series = QStringLiteral("NORD/MAIN/BARK"), .timeframe = 1, .isFill = true});
    QVERIFY(mode("Дозаполнить")->isChecked());
    m_window->take({.files = {path("new.csv")}});
    waitForOutlook();
    QCOMPARE(child<QComboBox>(m_window.get(), "timeframe")->currentData().toInt(), 1);
    import();
    QVERIFY(readTree(store()).contains(QStringLiteral("NORD/MAIN/BARK/20240115_1.iss")));
}

// Whether its file came or not.
void TestSafeImportWindow::aRequestIsForItsFilesAlone()
{
    for (const bool hasFile : {true, false}) {
        m_window->take(
            {.series = QStringLiteral("NORD/MAIN/BARK"), .timeframe = 1, .isFill = true});
        if (hasFile) {
            m_window->take({.files = {path("new.csv")}});
            waitForOutlook();
        }
        m_window->hide();
        m_window->show();
        writeFile(path("NORD_MAIN_ALFA.csv"), barFile({monday}, 5, 300));
        m_window->take({.files = {path("NORD_MAIN_ALFA.csv")}});
        QVERIFY(mode("Добавить")->isChecked());
        waitForOutlook();
        QCOMPARE(child<QComboBox>(m_window.get(), "timeframe")->currentData().toInt(), 60);
        QCOMPARE(child<QComboBox>(m_window.get(), "security")->currentText().left(4),
                 QStringLiteral("ALFA"));
    }
}

void TestSafeImportWindow::theVenueIsRemembered()
{
    const auto textOfBox = [this](const char* name) {
        return child<QComboBox>(m_window.get(), name)->currentText();
    };
    choose(child<QComboBox>(m_window.get(), "stock"), QStringLiteral("NORD —"));
    choose(child<QComboBox>(m_window.get(), "board"), QStringLiteral("MAIN"));
    choose(child<QComboBox>(m_window.get(), "security"), 0);
    const QString stock = textOfBox("stock");
    const QString board = textOfBox("board");
    m_window->close();
    // What the health's window asks for is not his choice.
    m_window->show();
    m_window->take({.series = QStringLiteral("ORIENT/FX/EURUSD"), .isFill = true});
    m_window->take({.files = {path("new.csv")}});
    m_window->close();
    m_window = std::make_unique<SafeImportWindow>();
    m_window->show();
    QCOMPARE(textOfBox("stock"), stock);
    QCOMPARE(textOfBox("board"), board);
    QCOMPARE(textOfBox("security"), QString());
    // A file that says otherwise is heard.
    writeFile(path("ORIENT_FX_EURUSD.csv"), barFile({monday}, 5, 300));
    open({path("ORIENT_FX_EURUSD.csv")});
    EVENTUALLY(textOfBox("stock").startsWith(QStringLiteral("ORIENT")));
}

void TestSafeImportWindow::whatIsTypedInFullIsChosen()
{
    const int interval = QApplication::keyboardInputInterval();
    const auto restore =
        qScopeGuard([interval] { QApplication::setKeyboardInputInterval(interval); });
    constexpr int forEver = 600'000; // nothing that was typed is over
    QApplication::setKeyboardInputInterval(forEver);
    const QList<QPair<QString, QString>> codes{
        {QStringLiteral("NORD"), QStringLiteral("NORD")},
        {QStringLiteral("nord"), QStringLiteral("NORD")},
        {QStringLiteral("nordf"), QStringLiteral("NORDFUT")}};
    for (const bool inList : {false, true}) {
        for (const auto& [typed, chosen] : codes) {
            m_window = std::make_unique<SafeImportWindow>();
            m_window->show();
            QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
            auto* const box = child<QComboBox>(m_window.get(), "stock");
            choose(box, QStringLiteral("NORD —"));
            if (inList)
                box->showPopup();
            QWidget* const where = inList ? static_cast<QWidget*>(box->view()) : box;
            hands::keyClicks(where, typed);
            hands::keyClick(where, Qt::Key_Return);
            EVENTUALLY_EQUAL(box->currentText().section(u' ', 0, 0), chosen);
        }
    }
}

// What will happen was not seen yet, and what was chosen stays.
void TestSafeImportWindow::returnInABoxImportsNothing()
{
    writeFile(path("in.csv"), barFile({monday}, 10, 100));
    openInto({path("in.csv")}, "NORD/MAIN/ALFA");
    for (const char* const name : {"stock", "board", "security"}) {
        auto* const box = child<QComboBox>(m_window.get(), name);
        const QString chosen = box->currentText();
        box->setFocus();
        hands::keyClicks(box, chosen.section(u' ', 0, 0));
        QCOMPARE(box->currentText(), chosen);
        waitForOutlook();
        hands::keyClick(box, Qt::Key_Return);
        QVERIFY(button("import")->isEnabled()); // nothing runs
    }
    QVERIFY(readTree(store()).isEmpty());
}

void TestSafeImportWindow::whatCannotBeReadIsNotSaidToHaveChanged()
{
    for (const char* const name : {"none.csv", "."}) {
        m_window->take(
            {.files = {path(name), path("new.csv")}, .series = QStringLiteral("NORD/MAIN/ALFA")});
        EVENTUALLY(textOf("verdict").contains(QStringLiteral("Невозможно открыть файл")));
        constexpr int longerThanItWaits = 1000; // ms
        QTest::qWait(longerThanItWaits);
        QVERIFY2(!textOf("message").contains(QStringLiteral("прочитан заново")),
                 qPrintable(textOf("message")));
    }
}

// A volume with a point is none; the stored bars would get 0 in its place.
void TestSafeImportWindow::tellsOfAVolumeThatIsLeftOut()
{
    QByteArray bars = barFile({monday}, 10, 100);
    bars.replace("100\n", "100.5\n").replace("101\n", "101.5\n");
    writeFile(path("volumes.csv"), bars);
    openInto({path("volumes.csv")}, "NORD/MAIN/ALFA");
    QVERIFY2(textOf("verdict").contains(QStringLiteral("Столбец объёма не взят")),
             qPrintable(textOf("verdict")));
    QVERIFY2(textOf("sentences").contains(QStringLiteral("не взяты: <VOL>")),
             qPrintable(textOf("sentences")));
    openInto({path("volumes.csv"), path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("volumes.csv: Столбец объёма")));
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY(!textOf("verdict").contains(QStringLiteral("Столбец объёма")));
}

void TestSafeImportWindow::cancelTakesEverythingBack_data()
{
    QTest::addColumn<QString>("mode");
    for (const char* text : {"Добавить", "Дозаполнить", "Заменить дни"})
        QTest::newRow(text) << QString::fromUtf8(text);
}

// As the disk writes the file of the second day the user presses the button, Escape, or closes the
// window.
void TestSafeImportWindow::cancelTakesEverythingBack()
{
    QFETCH(const QString, mode);
    writeFile(path("first.csv"), barFile({monday}, 20, 100));
    openInto({path("first.csv")}, "NORD/MAIN/ALFA");
    import();
    const Tree before = readTree(store());
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    click(this->mode(mode.toUtf8().constData()));
    for (int way = 0; way < 3; ++way) {
        waitForOutlook();
        testsupport::Hold hold(writing, QStringLiteral("20240116_60.iss"));
        click(button("import"));
        EVENTUALLY(hold.isReached());
        QCOMPARE(button("close")->text(), QStringLiteral("Прервать"));
        if (way == 0)
            click(button("close"));
        else if (way == 1)
            hands::keyClick(m_window.get(), Qt::Key_Escape);
        else
            QVERIFY(!m_window->close());
        QVERIFY(m_window->isVisible());
        hold.letGo();
        EVENTUALLY(textOf("message").contains(QStringLiteral("прерван")));
        // Who closes it has his wish once all is taken back, and not before.
        QCOMPARE(m_window->isVisible(), way < 2);
        QCOMPARE(readTree(store()), before);
        QVERIFY(!button("undo")->isVisible());
    }
}

void TestSafeImportWindow::whatComesWhileAnImportRunsIsAnswered()
{
    writeFile(path("other.csv"), barFile({monday}, 3, 200));
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    auto* const message = child<QLabel>(m_window.get(), "message");
    testsupport::Hold hold(writing, QStringLiteral("20240116_60.iss"));
    click(button("import"));
    EVENTUALLY(hold.isReached());
    QVERIFY(!message->isVisible());
    QVERIFY(testsupport::dropFiles(m_window.get(), {path("other.csv")}));
    QVERIFY(message->isVisible() && message->text().contains(QStringLiteral("не закончен")));
    message->clear();
    m_window->take({.series = QStringLiteral("NORD/MAIN/BARK"), .isFill = true});
    QVERIFY(message->text().contains(QStringLiteral("не закончен")));
    hold.letGo();
    EVENTUALLY(message->text().contains(QStringLiteral("Импорт закончен")));
    QCOMPARE(child<QComboBox>(m_window.get(), "files")->currentText(), QStringLiteral("new.csv"));
    QVERIFY(mode("Добавить")->isChecked());
    QCOMPARE(readTree(store()).size(), 3);
}

void TestSafeImportWindow::theEndOfTheWindowTakesEverythingBack()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    click(button("import"));
    m_window.reset();
    const Tree after = readTree(store());
    // All of it, or nothing.
    QVERIFY(after.isEmpty() || after.size() == 3);
}

void TestSafeImportWindow::aFileThatChangesIsShownAnew()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 25);
    writeFile(path("new.csv"), barFile({monday}, 4, 200));
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 5);
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("новых: 1")));
    QVERIFY(textOf("message").contains(QStringLiteral("изменился")));
    // Also where it is replaced, or goes.
    writeFile(path("other.csv"), barFile({monday, tuesday}, 4, 200));
    QVERIFY(QFile::remove(path("new.csv")));
    QVERIFY(QFile::rename(path("other.csv"), path("new.csv")));
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 9);
    QVERIFY(QFile::remove(path("new.csv")));
    EVENTUALLY(textOf("verdict").contains(QStringLiteral("Невозможно открыть")));
    QVERIFY2(textOf("verdict").contains(qt_error_string(ENOENT)), qPrintable(textOf("verdict")));
    QVERIFY(!button("import")->isEnabled());
}

void TestSafeImportWindow::whatCameOfAnImportIsNotHiddenByAChange()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    import();
    EVENTUALLY(textOf("message").contains(QStringLiteral("Импорт закончен")));
    waitForOutlook();
    writeFile(path("new.csv"), barFile({monday}, 4, 200));
    EVENTUALLY_EQUAL(preview()->model().lineCount(), 5);
    QVERIFY(textOf("message").contains(QStringLiteral("Импорт закончен")));
}

void TestSafeImportWindow::theStoreIsFollowed()
{
    // Another series of the store: of this one there is nothing yet.
    writeFile(store().filePath(QStringLiteral("NORD/MAIN/BARK/20240115_60.iss")), "");
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    QVERIFY(textOf("sentences").contains(QStringLiteral("новых: 3")));
    writeFile(store().filePath(QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss")),
              "235900;1.00;1.00;1.00;1.00;1;0.00;0\n");
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("новых: 2")));
    waitForOutlook();
    // Its own work is told of once, and the store is followed on.
    import();
    waitForOutlook();
    QVERIFY(QFile::remove(store().filePath(QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss"))));
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("новых: 1")));
}

void TestSafeImportWindow::whatBarsAnImportIsLookedAtAgain()
{
    const QString day = store().filePath(QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss"));
    QVERIFY(QDir().mkpath(day));
    m_window->take({.files = {path("new.csv")}, .series = QStringLiteral("NORD/MAIN/ALFA")});
    EVENTUALLY(textOf("verdict").contains(day));
    QVERIFY(!button("import")->isEnabled());
    QVERIFY(QDir().rmdir(day));
    waitForOutlook();
    // In its place, by a program that does not hold with new names.
    import();
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("без изменений: 3")));
    QFile file(day);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("235900;1.00;1.00;1.00;1.00;1;0.00;0\n");
    file.close();
    EVENTUALLY(textOf("sentences").contains(QStringLiteral("без изменений: 2")));
}

void TestSafeImportWindow::aKeyLooksAgain()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    // For as long as it looks nothing can be imported, which may be over before the key comes up.
    Disablings disablings(button("import"));
    hands::keyClick(m_window.get(), Qt::Key_F5);
    EVENTUALLY_EQUAL(disablings.count(), 1);
    waitForOutlook();
}

void TestSafeImportWindow::aLockedSeriesIsSaid()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    vexdesk::StoreJob other(vexdesk::StoreJobSettings{});
    QVERIFY(other.begin(store(), {QStringLiteral("NORD/MAIN/ALFA")}));
    click(button("import"));
    QCOMPARE(button("close")->text(), QStringLiteral("Прервать"));
    // For whom it waits, and that can be ended.
    EVENTUALLY(textOf("message").contains(QStringLiteral("освободит серию NORD/MAIN/ALFA")));
    QVERIFY(child<QLabel>(m_window.get(), "message")->isVisible());
    hands::keyClick(m_window.get(), Qt::Key_Escape);
    EVENTUALLY(textOf("message").contains(QStringLiteral("прерван")));
    waitForOutlook();
    click(button("import"));
    EVENTUALLY(textOf("message").contains(QStringLiteral("сейчас меняет")));
    QVERIFY(textOf("message").contains(QStringLiteral("NORD/MAIN/ALFA")));
    QVERIFY(readTree(store()).isEmpty());
    QVERIFY(other.end());
    import();
    QCOMPARE(readTree(store()).size(), 3);
}

void TestSafeImportWindow::aFullDiskIsSaid()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    click(mode("Заменить дни"));
    waitForOutlook();
    {
        const testsupport::Fault full(testsupport::SystemCall::Write,
                                      QStringLiteral("20240116_60.iss"), ENOSPC);
        import();
        QVERIFY(full.failed() > 0);
    }
    for (const QString& part :
         {QStringLiteral("возвращено"), QStringLiteral("20240116_60.iss"), qt_error_string(ENOSPC)})
        QVERIFY2(textOf("message").contains(part), qPrintable(textOf("message")));
    QVERIFY(readTree(store()).isEmpty());
}

// With what the system says, wherever it cannot be made.
void TestSafeImportWindow::aPlaceThatCannotBeMadeIsSaid()
{
    const QString beside = store().path() + QStringLiteral("-restore");
    writeFile(beside, "");
    writeFile(ICore::getDir(QString(), false).filePath(QStringLiteral("restore")), "");
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    import();
    for (const QString& part : {beside, qt_error_string(EEXIST), qt_error_string(ENOTDIR)})
        QVERIFY2(textOf("message").contains(part), qPrintable(textOf("message")));
    QVERIFY(readTree(store()).isEmpty());
}

void TestSafeImportWindow::saysWhereNothingCanBeUndone()
{
    tadata::setRestoreLimits({.keep = 0});
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    import();
    QVERIFY2(textOf("message").contains(QStringLiteral("Отменить его нельзя")),
             qPrintable(textOf("message")));
    QVERIFY(!button("undo")->isVisible());
    // An import that changes nothing has nothing to undo.
    import();
    QVERIFY(!textOf("message").contains(QStringLiteral("Отменить его нельзя")));
}

void TestSafeImportWindow::theStripIsWalkedByKeys()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    auto* const strip = child<DayStrip>(m_window.get(), "days");
    strip->setFocus();
    hands::keyClick(strip, Qt::Key_Home);
    QCOMPARE(strip->currentDay(), 0);
    hands::keyClick(strip, Qt::Key_Right);
    QCOMPARE(strip->currentDay(), 1);
    QVERIFY(strip->accessibleDescription().contains(QStringLiteral("баров в файле: 8")));
    QCOMPARE(textOf("legend"), strip->accessibleDescription().toHtmlEscaped());
    hands::keyClick(strip, Qt::Key_End);
    hands::keyClick(strip, Qt::Key_Right);
    QCOMPARE(strip->currentDay(), 2);
    hands::mouseClick(strip, Qt::LeftButton, {}, strip->placeOf(1).center());
    QCOMPARE(strip->currentDay(), 1);
}

void TestSafeImportWindow::allIsReachedByTab()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    EVENTUALLY(preview()->roles().box(6));
    child<QComboBox>(m_window.get(), "files")->setFocus();
    const QList<QWidget*> order = testsupport::tabOrder(m_window.get());
    for (const char* name :
         {"files",     "open",       "profile",    "stock",     "board",  "source",  "security",
          "separator", "dateFormat", "timeFormat", "timeframe", "header", "preview", "role0",
          "role6",     "days",       "problems",   "skipBad",   "import", "close"}) {
        auto* const widget = child<QWidget>(m_window.get(), name);
        if (widget->isEnabled())
            QVERIFY2(order.contains(widget), name);
    }
}

void TestSafeImportWindow::listsOpenAsWideAsTheirEntries()
{
    openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    m_window->resize(m_window->minimumSizeHint());
    for (const char* const name : {"stock", "board", "security", "dateFormat"}) {
        auto* const box = child<QComboBox>(m_window.get(), name);
        box->showPopup();
        for (int entry = 0; entry < box->count(); ++entry) {
            const int needs = box->fontMetrics().horizontalAdvance(box->itemText(entry));
            EVENTUALLY2(box->view()->viewport()->width() >= needs, name);
        }
        box->hidePopup();
        QCOMPARE(box->toolTip(), box->currentText());
    }
}

void TestSafeImportWindow::aListWidensWithAnEntryThatCameLate()
{
    // In whose look a list is as wide as its box, unless it is told otherwise.
    const std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("Windows")));
    QComboBox box;
    box.setStyle(style.get());
    box.addItem(QStringLiteral("short"));
    constexpr int letters = 6;
    tadata::makeCompact(&box, letters);
    box.show();
    const QString longest(60, u'm');
    box.addItem(longest);
    const int needs = box.fontMetrics().horizontalAdvance(longest);
    QVERIFY(box.width() < needs);
    box.showPopup();
    EVENTUALLY(box.view()->viewport()->width() >= needs);
    box.hidePopup();
    QVERIFY(box.sizeHint().width() < needs);
}

void TestSafeImportWindow::fitsASmallScreen_data()
{
    QTest::addColumn<bool>("withFile");
    QTest::addColumn<bool>("isDark");
    QTest::newRow("empty") << false << false;
    QTest::newRow("with a file") << true << false;
    QTest::newRow("dark") << true << true;
}

void TestSafeImportWindow::fitsASmallScreen()
{
    QFETCH(const bool, withFile);
    QFETCH(const bool, isDark);
    const QPalette before = QApplication::palette();
    const auto restore = qScopeGuard([before] { QApplication::setPalette(before); });
    if (isDark)
        QApplication::setPalette(QPalette(QColor(0x35, 0x35, 0x35), QColor(0x2a, 0x2a, 0x2a)));
    if (withFile)
        openInto({path("new.csv")}, "NORD/MAIN/ALFA");
    const QSize least = m_window->minimumSizeHint();
    QVERIFY2(least.width() <= 800 && least.height() <= 560,
             qPrintable(QStringLiteral("%1x%2").arg(least.width()).arg(least.height())));
    m_window->resize(790, 560);
    EVENTUALLY2(testsupport::cutTexts(m_window.get()).isEmpty(),
                qPrintable(testsupport::cutTexts(m_window.get()).join(u'\n')));
    if (qEnvironmentVariableIsSet("TADATA_PICTURES"))
        m_window->grab().save(qEnvironmentVariable("TADATA_PICTURES") +
                              QStringLiteral("/import-%1.png").arg(QTest::currentDataTag()));
    QStringList foreign = testsupport::foreignTexts(m_window.get(), testsupport::Speech::Russian);
    // The name of a file is the user's.
    foreign.removeAll(QStringLiteral("files:QComboBox: \"new.csv\""));
    QVERIFY2(foreign.isEmpty(), qPrintable(foreign.join(u'\n')));
}

QTEST_MAIN(TestSafeImportWindow)
#include "tst_safeimportwindow.moc"
