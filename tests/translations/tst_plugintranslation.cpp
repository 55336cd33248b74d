// SPDX-License-Identifier: MIT
// The plug-in speaks the language of the terminal that loads it, by the file beside its library.

#include "desk/deskapplication.h"
#include "desk/pluginloader.h"
#include "support/loadedplugin.h"
#include "support/strictlog.h"
#include "support/terminal.h"

#include <vexdesk/iplugin.h>
#include <vexdesk/terminal/core.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <memory>

using testsupport::pluginFile;
using vexdesk::Language;

namespace {

const QString russianName = QStringLiteral("Управление данными ТА");
const QString englishName = QStringLiteral("TA data management");

QString translationFile()
{
    return QFileInfo(pluginFile()).dir().filePath("translations/tadatamanager_en.qm");
}

} // namespace

class TestPluginTranslation final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void thePluginSpeaksTheTerminalsLanguage_data();
    void thePluginSpeaksTheTerminalsLanguage();
    void theFileIsNamedAsTheLibrary_data();
    void theFileIsNamedAsTheLibrary();
    void withoutTheFileThePluginStaysRussian();
    void theTextsGoWithThePlugin();
    void theVersionIsTheSameInEveryLanguage();
    void aHostThatTranslatesNothingShowsRussian();

private:
    /// Loads the copy of the plug-in with this file name; its record, with what it says of itself.
    vexdesk::PluginRecord load(const QString& fileName, Language language);
    QString path(const QString& name) const { return m_directory->filePath(name); }
    void copyTranslation();

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<vexdesk::Core> m_core;
    std::unique_ptr<vexdesk::PluginLoader> m_loader;
};

void TestPluginTranslation::init()
{
    testsupport::failOnStrayWarnings();
    m_directory = std::make_unique<QTemporaryDir>();
    m_core = std::make_unique<vexdesk::Core>();
    m_loader = std::make_unique<vexdesk::PluginLoader>();
}

void TestPluginTranslation::cleanup()
{
    m_loader.reset();
    m_core.reset();
    m_directory.reset();
}

vexdesk::PluginRecord TestPluginTranslation::load(const QString& fileName, Language language)
{
    QFile::copy(pluginFile(), path(fileName));
    m_loader->setLanguage(language);
    m_loader->load({m_directory->path()}, m_core.get());
    testsupport::verifyLoaded(*m_loader);
    return m_loader->records().value(0);
}

void TestPluginTranslation::copyTranslation()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("translations")));
    QVERIFY(QFile::copy(translationFile(), path("translations/tadatamanager_en.qm")));
}

void TestPluginTranslation::thePluginSpeaksTheTerminalsLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("name");
    QTest::newRow("Russian") << int(Language::Russian) << russianName;
    QTest::newRow("English") << int(Language::English) << englishName;
}

void TestPluginTranslation::thePluginSpeaksTheTerminalsLanguage()
{
    QFETCH(const int, language);
    QFETCH(const QString, name);
    copyTranslation();
    const vexdesk::PluginRecord record =
        load(QFileInfo(pluginFile()).fileName(), static_cast<Language>(language));
    QCOMPARE(record.state, vexdesk::PluginRecord::State::Loaded);
    QCOMPARE(record.name, name);
}

void TestPluginTranslation::theFileIsNamedAsTheLibrary_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("name");
    QTest::newRow("with lib") << QStringLiteral("libtadatamanager.so") << englishName;
    QTest::newRow("without lib") << QStringLiteral("tadatamanager.so") << englishName;
    QTest::newRow("with a number") << QStringLiteral("tadatamanager.so.7") << englishName;
    QTest::newRow("another name") << QStringLiteral("manager.so") << russianName;
}

void TestPluginTranslation::theFileIsNamedAsTheLibrary()
{
    QFETCH(const QString, fileName);
    copyTranslation();
    QTEST(load(fileName, Language::English).name, "name");
}

void TestPluginTranslation::withoutTheFileThePluginStaysRussian()
{
    QCOMPARE(load(QStringLiteral("tadatamanager.so"), Language::English).name, russianName);
}

void TestPluginTranslation::theTextsGoWithThePlugin()
{
    const auto author = [] { return QCoreApplication::translate("TADataManager", "Орвента"); };
    copyTranslation();
    load(QStringLiteral("tadatamanager.so"), Language::English);
    QCOMPARE(author(), QStringLiteral("Orventa"));
    m_loader->unload();
    QCOMPARE(author(), QStringLiteral("Орвента"));
}

void TestPluginTranslation::theVersionIsTheSameInEveryLanguage()
{
    copyTranslation();
    QCOMPARE(load(QStringLiteral("tadatamanager.so"), Language::English).version,
             QStringLiteral("7.06.1812"));
}

void TestPluginTranslation::aHostThatTranslatesNothingShowsRussian()
{
    copyTranslation();
    const QString copy = path(QStringLiteral("tadatamanager.so"));
    QVERIFY(QFile::copy(pluginFile(), copy));
    QPluginLoader loader;
    const vexdesk::Result<IPlugin*> plugin = testsupport::loadPlugin(loader, copy);
    QVERIFY2(plugin, qPrintable(plugin.message()));
    QCOMPARE((*plugin)->name(), russianName);
    (*plugin)->init(m_core.get());
    QCOMPARE((*plugin)->description(),
             QStringLiteral("Управление историческими данными для графиков"));
    delete loader.instance();
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestPluginTranslation test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_plugintranslation.moc"
