// SPDX-License-Identifier: MIT
// The second plug-in as the terminal meets it: loaded from its file into a real core.

#include "changedstore.h"
#include "illstore.h"

#include "support/child.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/loadedplugin.h"
#include "support/markingtranslator.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/appsettings.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icharts.h>
#include <vexdesk/ioptionspage.h>
#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QJsonObject>
#include <QtGui/QIcon>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTreeView>

#include <functional>
#include <memory>
#include <utility>

using testsupport::child;
using testsupport::click;
using testsupport::LoadedPlugin;
using vexdesk::ChartMark;
using vexdesk::SeriesName;

namespace {

const CommandContainer* theMenu()
{
    const QList<CommandContainer::Entry> bar = ActionManager::instance()->menuBar()->entries();
    for (const CommandContainer::Entry& entry : bar) {
        if (entry.container && entry.container->id() == "TA")
            return entry.container;
    }
    return nullptr;
}

// The windows that the user sees, by their classes.
QList<QWidget*> visibleWindows(const char* className)
{
    QList<QWidget*> found;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && window->inherits(className))
            found.append(window);
    }
    return found;
}

// Charts that note what they are asked to do.
class NotingCharts final : public vexdesk::ICharts
{
public:
    void show(const SeriesName& series, const QDate& day, const QTime&,
              const std::function<void(vexdesk::ChartShown)>& told) override
    {
        shown.append({series, day});
        told(hasSeries ? vexdesk::ChartShown::Moment : vexdesk::ChartShown::NoSeries);
    }
    void addMarks(vexdesk::IChartMarks* marks) override { makers.append(marks); }
    void removeMarks(vexdesk::IChartMarks* marks) override { makers.removeAll(marks); }
    void marksChanged(const SeriesName& series) override { changed.append(series); }

    bool hasSeries = true;
    QList<std::pair<SeriesName, QDate>> shown;
    QList<vexdesk::IChartMarks*> makers;
    QList<SeriesName> changed;
};

class CoreWithCharts final : public ICore
{
public:
    void addOptionsPage(IOptionsPage* page) override { pages.append(page); }
    QObject* notifier() const override { return nullptr; }
    IDatabase* database() const override { return nullptr; }
    IRawQueue* rawQueue() const override { return nullptr; }
    vexdesk::ICharts* charts() const override { return theCharts; }
    void reportProblem(const QString& text) override { problems.append(text); }

    QList<IOptionsPage*> pages;
    QStringList problems;
    vexdesk::ICharts* theCharts = nullptr;
};

const SeriesName theSeries{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("VEGA")};

QStringList textsOf(const QList<ChartMark>& marks)
{
    QStringList texts;
    for (const ChartMark& mark : marks)
        texts.append(mark.text);
    texts.sort();
    return texts;
}

} // namespace

class TestTADataQuality final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void carriesMetadata();
    void introducesItself();
    void translatesItsTextsButNotItsVersion();
    void addsItsMenu();
    void addsItsCommands();
    void sharesTheMenuWithTheFirstPlugin_data();
    void sharesTheMenuWithTheFirstPlugin();
    void showsEachWindowOnce_data();
    void showsEachWindowOnce();
    void marksWhatIsWrongInCharts();
    void marksFaultsOfSecondsBesideMinutes();
    void saysInChartsThatADayHidesTheRest();
    void doesWithoutCharts();
    void showsAPlaceInTheChart();
    void fillsASeriesFromAFile();
    void opensFilesThatAreDroppedOnTheTerminal();
    void tellsOfAnInterruptedCommand();
    void offersItsOptions();
    void keepsLimitsThatNobodyChanged();
    void takesNoLimitsThatWereNotShown();

private:
    IPlugin* plugin() const { return m_plugin->plugin(); }
    /// Begins with a core that has these charts.
    void start(vexdesk::ICharts* charts)
    {
        m_core = std::make_unique<CoreWithCharts>();
        m_core->theCharts = charts;
        testsupport::makeIllStore(m_plugin->store());
        plugin()->init(m_core.get());
    }
    QWidget* openHealth();

    std::unique_ptr<NotingCharts> m_charts; ///< outlives the plug-in, also where a test fails
    std::unique_ptr<CoreWithCharts> m_core; ///< where a test begins with it
    std::unique_ptr<LoadedPlugin> m_plugin;
};

void TestTADataQuality::init()
{
    testsupport::failOnStrayWarnings();
    m_charts = std::make_unique<NotingCharts>();
    m_plugin = std::make_unique<LoadedPlugin>(testsupport::qualityPluginFile());
}

void TestTADataQuality::cleanup()
{
    m_plugin.reset();
    m_core.reset();
    m_charts.reset();
}

void TestTADataQuality::carriesMetadata()
{
    const QJsonObject metaData = m_plugin->loader().metaData();
    QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
             QStringLiteral("qgui.plugin.tadataquality"));
    QCOMPARE(metaData.value(QStringLiteral("className")).toString(),
             QStringLiteral("TADataQuality"));
}

void TestTADataQuality::introducesItself()
{
    QCOMPARE(plugin()->code().toByteArray(), QByteArray("tadataquality"));
    QCOMPARE(plugin()->name(), QStringLiteral("Качество данных ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("Орвента"));
    QCOMPARE(plugin()->version(), QStringLiteral("1.0.0"));
    QVERIFY(!plugin()->description().isEmpty());
}

void TestTADataQuality::translatesItsTextsButNotItsVersion()
{
    const testsupport::MarkingTranslator translator;
    QCOMPARE(plugin()->name(), QStringLiteral("TADataQuality|Качество данных ТА"));
    QCOMPARE(plugin()->author(), QStringLiteral("TADataQuality|Орвента"));
    QCOMPARE(plugin()->version(), QStringLiteral("1.0.0"));
}

void TestTADataQuality::addsItsMenu()
{
    m_plugin->start();
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Тех. &анализ"));
    QCOMPARE(menu->entries().size(), 1);
    const CommandContainer* const commands = menu->entries().first().container;
    QVERIFY(commands);
    QCOMPARE(commands->title(), QStringLiteral("&Качество данных ТА"));
}

void TestTADataQuality::addsItsCommands()
{
    m_plugin->start();
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu && menu->entries().size() == 1);
    struct Expected
    {
        const char* text;
        Qt::Key key;
    };
    const QList<Expected> expected{{"&Безопасный импорт...", Qt::Key_I},
                                   {"&Здоровье данных...", Qt::Key_H},
                                   {"&Точки восстановления...", Qt::Key_Z}};
    const QList<CommandContainer::Entry> entries = menu->entries().first().container->entries();
    QCOMPARE(entries.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const Command* const command = entries.at(i).command;
        QVERIFY(command);
        QCOMPARE(command->defaultText(), QString::fromUtf8(expected.at(i).text));
        QCOMPARE(command->defaultShortcut(),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | expected.at(i).key));
        QCOMPARE(command->context(), int(Command::GlobalContext));
        QVERIFY(!command->defaultIcon().pixmap(24).isNull());
        QVERIFY(ActionManager::instance()->action(command->id()));
    }
}

void TestTADataQuality::sharesTheMenuWithTheFirstPlugin_data()
{
    QTest::addColumn<bool>("comesFirst");
    QTest::newRow("before the first plug-in") << true;
    QTest::newRow("after the first plug-in") << false;
}

void TestTADataQuality::sharesTheMenuWithTheFirstPlugin()
{
    QFETCH(bool, comesFirst);
    QPluginLoader loader;
    const vexdesk::Result<IPlugin*> first =
        testsupport::loadPlugin(loader, testsupport::pluginFile());
    QVERIFY2(first, qPrintable(first.message()));
    if (comesFirst) {
        m_plugin->start();
        (*first)->init(&m_plugin->core());
    } else {
        vexdesk::Core core;
        (*first)->init(&core);
        plugin()->init(&core);
    }
    const CommandContainer* const menu = theMenu();
    QVERIFY(menu);
    QStringList titles;
    const QList<CommandContainer::Entry> entries = menu->entries();
    for (const CommandContainer::Entry& entry : entries)
        titles.append(entry.container->title());
    QCOMPARE(titles, QStringList({QStringLiteral("&Управление данными ТА"),
                                  QStringLiteral("&Качество данных ТА")}));
    (*first)->tini();
    delete loader.instance();
    loader.unload();
}

void TestTADataQuality::showsEachWindowOnce_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("window");
    QTest::newRow("safe import") << QByteArray("TADataQuality.SafeImport")
                                 << QByteArray("SafeImportWindow");
    QTest::newRow("health") << QByteArray("TADataQuality.Health") << QByteArray("HealthWindow");
    QTest::newRow("points") << QByteArray("TADataQuality.Points") << QByteArray("PointsWindow");
}

void TestTADataQuality::showsEachWindowOnce()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, window);
    m_plugin->start();
    LoadedPlugin::trigger(command);
    LoadedPlugin::trigger(command);
    const QList<QWidget*> shown = visibleWindows(window.constData());
    QCOMPARE(shown.size(), 1);
    QVERIFY(!shown.first()->isModal());
    QVERIFY(!shown.first()->testAttribute(Qt::WA_QuitOnClose));
    hands::keyClick(shown.first(), Qt::Key_Escape);
    EVENTUALLY(visibleWindows(window.constData()).isEmpty());
    LoadedPlugin::trigger(command);
    QCOMPARE(visibleWindows(window.constData()).size(), 1);
    plugin()->tini();
    QVERIFY(visibleWindows(window.constData()).isEmpty());
}

QWidget* TestTADataQuality::openHealth()
{
    LoadedPlugin::trigger("TADataQuality.Health");
    QWidget* const window = visibleWindows("HealthWindow").value(0);
    if (!window)
        qFatal("no window of the health");
    return window;
}

void TestTADataQuality::marksWhatIsWrongInCharts()
{
    NotingCharts& charts = *m_charts;
    start(&charts);
    QCOMPARE(charts.makers.size(), 1);
    vexdesk::IChartMarks* const marks = charts.makers.first();
    const QDate first(2024, 1, 1);
    const QDate last(2024, 3, 29);
    // It is asked while a chart is painted: what is not known yet comes later.
    QVERIFY(marks->marks(theSeries, first, last).isEmpty());
    EVENTUALLY(charts.changed.contains(theSeries));
    QCOMPARE(textsOf(marks->marks(theSeries, first, last)),
             QStringList({QStringLiteral("Не записи баров: строки 2"),
                          QStringLiteral("Нет баров с 10:20 по 10:29 (10)"),
                          QStringLiteral("Нет файла дня, а у соседей он есть")}));
    const QList<ChartMark> ofGap =
        marks->marks(theSeries, testsupport::gapDay, testsupport::gapDay);
    QCOMPARE(ofGap.size(), 1);
    QVERIFY(ofGap.first().kind == ChartMark::Kind::Warning);
    QCOMPARE(ofGap.first().from, QTime(10, 19));
    QCOMPARE(ofGap.first().to, QTime(10, 29));
    QVERIFY(
        marks->marks(theSeries, testsupport::gapDay.addDays(1), testsupport::missingDay).size() ==
        1);
    QVERIFY(marks->marks({}, first, last).isEmpty());
    plugin()->tini();
    QVERIFY(charts.makers.isEmpty());
}

void TestTADataQuality::marksFaultsOfSecondsBesideMinutes()
{
    NotingCharts& charts = *m_charts;
    start(&charts);
    const QDate day(2024, 1, 18);
    testsupport::writeFile(
        m_plugin->store().filePath(QStringLiteral("NORD/MAIN/VEGA/20240118_1.iss")),
        "100000;1.00;1.00;1.00;1.00;1;0.00;0\nbad\n100001;1.00;1.00;1.00;1.00;1;0.00;0\n");
    vexdesk::IChartMarks* const marks = charts.makers.value(0);
    QVERIFY(marks && marks->marks(theSeries, day, day).isEmpty());
    EVENTUALLY(charts.changed.contains(theSeries));
    QCOMPARE(textsOf(marks->marks(theSeries, day, day)),
             QStringList{QStringLiteral("Секунды: Не записи баров: строки 2")});
    // Minutes of other days lack nothing for that.
    QCOMPARE(marks->marks(theSeries, QDate(2024, 1, 1), QDate(2024, 3, 29)).size(), 4);
}

void TestTADataQuality::saysInChartsThatADayHidesTheRest()
{
    NotingCharts& charts = *m_charts;
    start(&charts);
    const QString path = m_plugin->store().filePath(
        QStringLiteral("NORD/MAIN/VEGA/%1_60.iss").arg(testsupport::gapDay.toString(u"yyyyMMdd")));
    QVERIFY(QFile::resize(path, qint64(1024) * 1024 * 1024 + 1)); // larger than a day may be
    vexdesk::IChartMarks* const marks = charts.makers.value(0);
    QVERIFY(marks);
    QVERIFY(marks->marks(theSeries, testsupport::gapDay, testsupport::missingDay).isEmpty());
    EVENTUALLY(charts.changed.contains(theSeries));
    const QList<ChartMark> told =
        marks->marks(theSeries, testsupport::gapDay, testsupport::missingDay);
    QCOMPARE(told.size(), 1);
    QVERIFY(told.first().kind == ChartMark::Kind::Fault);
    QCOMPARE(told.first().day, testsupport::gapDay);
    QVERIFY2(told.first().text.contains(path) &&
                 told.first().text.endsWith(QStringLiteral("другие дни серии не проверены")),
             qPrintable(told.first().text));
    QVERIFY(
        marks->marks(theSeries, testsupport::gapDay.addDays(1), testsupport::missingDay).isEmpty());
}

void TestTADataQuality::doesWithoutCharts()
{
    start(nullptr);
    QWidget* const window = openHealth();
    auto* const show = child<QPushButton>(window, "show");
    EVENTUALLY(show->isEnabled());
    click(show);
    QCOMPARE(child<QLabel>(window, "status")->text(),
             QStringLiteral("У этого терминала нет графиков: показать место негде."));
    plugin()->tini();
}

void TestTADataQuality::showsAPlaceInTheChart()
{
    NotingCharts& charts = *m_charts;
    start(&charts);
    QWidget* const window = openHealth();
    auto* const series = child<QTreeView>(window, "series");
    EVENTUALLY_EQUAL(series->model()->rowCount(), 2);
    hands::keyClick(series, Qt::Key_Down);
    hands::keyClick(series, Qt::Key_Return);
    QCOMPARE(charts.shown.size(), 1);
    QVERIFY(charts.shown.first().first == theSeries);
    QCOMPARE(charts.shown.first().second, testsupport::brokenDay);
    QVERIFY(child<QLabel>(window, "status")->text().isEmpty());
    charts.hasSeries = false;
    hands::keyClick(series, Qt::Key_Return);
    QVERIFY(
        child<QLabel>(window, "status")->text().startsWith(QStringLiteral("График не показан")));
    plugin()->tini();
}

void TestTADataQuality::fillsASeriesFromAFile()
{
    start(nullptr);
    QWidget* const window = openHealth();
    auto* const fill = child<QPushButton>(window, "fill");
    EVENTUALLY(fill->isEnabled());
    click(fill);
    QCOMPARE(visibleWindows("SafeImportWindow").size(), 1);
    plugin()->tini();
}

void TestTADataQuality::opensFilesThatAreDroppedOnTheTerminal()
{
    QMainWindow terminal;
    terminal.show();
    start(nullptr);
    const QString file = m_plugin->store().filePath(QStringLiteral("bars & more.csv"));
    testsupport::writeFile(file, "<DATE>,<TIME>,<CLOSE>\n20240115,100100,100.25\n");
    QVERIFY(testsupport::dropFiles(&terminal, {file}));
    QWidget* const window = visibleWindows("SafeImportWindow").value(0);
    QVERIFY(window);
    auto* const files = child<QComboBox>(window, "files");
    QCOMPARE(files->count(), 1);
    QCOMPARE(files->currentData().toString(), file);
    plugin()->tini();
    QVERIFY(!testsupport::dropFiles(&terminal, {file}));
    QVERIFY(visibleWindows("SafeImportWindow").isEmpty());
}

// Without a window that would be in the user's way.
void TestTADataQuality::tellsOfAnInterruptedCommand()
{
    start(nullptr);
    testsupport::interruptCommand(
        m_plugin->store(), QStringLiteral("import"),
        {{testsupport::dayPath(testsupport::vega, testsupport::gapDay), "half"}});
    plugin()->initStage(IPlugin::InitStage::PluginsReady);
    plugin()->initStage(IPlugin::InitStage::WindowShown);
    EVENTUALLY_EQUAL(m_core->problems.size(), 1);
    const QString told = m_core->problems.first();
    for (const char* const part : {"импорт", "NORD/MAIN/VEGA", "«Точки восстановления»"})
        QVERIFY2(told.contains(QString::fromUtf8(part)), qPrintable(told));
    QVERIFY(!QApplication::activeModalWidget());
    plugin()->tini();
}

void TestTADataQuality::offersItsOptions()
{
    start(nullptr);
    QCOMPARE(m_core->pages.size(), 1);
    IOptionsPage* const page = m_core->pages.first();
    QCOMPARE(page->displayName(), QStringLiteral("Точки восстановления"));
    QCOMPARE(page->displayCategory(), QStringLiteral("Качество данных ТА"));
    QVERIFY(!page->categoryIcon().pixmap(24).isNull());
    QVERIFY(page->matches(QStringLiteral("ОТМЕНА")));
    QVERIFY(!page->matches(QStringLiteral("шрифт")));
    QWidget dialog;
    QWidget* const form = page->createPage(&dialog);
    auto* const keep = child<QSpinBox>(form, "keep");
    auto* const megabytes = child<QSpinBox>(form, "megabytes");
    QCOMPARE(keep->value(), 20);
    QCOMPARE(megabytes->value(), 1024);
    keep->setValue(0);
    QVERIFY(!megabytes->isEnabled());
    keep->setValue(7);
    QVERIFY(megabytes->isEnabled());
    megabytes->setValue(300);
    page->apply();
    const AppSettings settings(QStringLiteral("TADataManager/RestorePoints"));
    QCOMPARE(settings.value(QStringLiteral("keep")).toInt(), 7);
    QCOMPARE(settings.value(QStringLiteral("megabytes")).toInt(), 300);
    page->finish();
    page->apply(); // nothing is shown any more
    QCOMPARE(settings.value(QStringLiteral("keep")).toInt(), 7);
}

void TestTADataQuality::keepsLimitsThatNobodyChanged()
{
    start(nullptr);
    {
        AppSettings settings(QStringLiteral("TADataManager/RestorePoints"));
        settings.setValue(QStringLiteral("keep"), 1'000'000);
        settings.setValue(QStringLiteral("megabytes"), 100'000'000);
    }
    QWidget dialog;
    m_core->pages.first()->createPage(&dialog);
    m_core->pages.first()->apply();
    const AppSettings settings(QStringLiteral("TADataManager/RestorePoints"));
    QCOMPARE(settings.value(QStringLiteral("keep")).toInt(), 1'000'000);
    QCOMPARE(settings.value(QStringLiteral("megabytes")).toInt(), 100'000'000);
    m_core->pages.first()->finish();
}

void TestTADataQuality::takesNoLimitsThatWereNotShown()
{
    start(nullptr);
    m_core->pages.first()->apply();
    QVERIFY(!AppSettings(QStringLiteral("TADataManager/RestorePoints"))
                 .contains(QStringLiteral("keep")));
}

QTEST_MAIN(TestTADataQuality)
#include "tst_tadataquality.moc"
