// SPDX-License-Identifier: MIT
#include "support/strictlog.h"

#include <vexdesk/terminal/language.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>
#include <QtTest/QTest>

using vexdesk::Language;

Q_DECLARE_METATYPE(Language)

class TestLanguage final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void codesAreThoseOfSettings();
    void choosesALanguage_data();
    void choosesALanguage();
    void translationsAreBesideTheProgramOrInstalled();
    void loadsTheFileOfTheLanguage();
    void takesTheFirstDirectoryThatHasTheFile();
    void withoutAFileThereIsNoTranslation();
};

void TestLanguage::init()
{
    testsupport::failOnStrayWarnings();
}

void TestLanguage::codesAreThoseOfSettings()
{
    for (const auto language : {Language::Russian, Language::English})
        QVERIFY(vexdesk::languageOf(vexdesk::languageCode(language)) == language);
    QCOMPARE(vexdesk::languageCode(Language::Russian), QStringLiteral("ru"));
    QCOMPARE(vexdesk::languageCode(Language::English), QStringLiteral("en"));
    for (const char* text : {"", "EN", "en_US", "de", " ru", "russian"})
        QVERIFY2(!vexdesk::languageOf(QLatin1String(text)), text);
}

void TestLanguage::choosesALanguage_data()
{
    QTest::addColumn<QStringList>("wishes");
    QTest::addColumn<QStringList>("userLanguages");
    QTest::addColumn<Language>("chosen");
    const QStringList none;
    const QStringList english{"en-US", "en-Latn-US", "en"};
    const QStringList russian{"ru-RU", "ru-Cyrl-RU", "ru"};
    const QStringList german{"de-DE", "de", "en-US", "en"};

    QTest::newRow("nothing known") << none << none << Language::Russian;
    QTest::newRow("English user") << none << english << Language::English;
    QTest::newRow("Russian user") << none << russian << Language::Russian;
    QTest::newRow("a language alone") << none << QStringList{"en"} << Language::English;
    QTest::newRow("English of the islands") << none << QStringList{"en-GB"} << Language::English;
    QTest::newRow("capital letters") << none << QStringList{"EN-us"} << Language::English;
    QTest::newRow("Russian before English") << none << russian + english << Language::Russian;
    QTest::newRow("English before Russian") << none << english + russian << Language::English;
    QTest::newRow("an unknown one before English") << none << german << Language::Russian;
    QTest::newRow("no choice of the user") << none << QStringList{"C"} << Language::Russian;
    QTest::newRow("POSIX") << none << QStringList{"POSIX"} << Language::Russian;
    QTest::newRow("a language that begins alike")
        << none << QStringList{"enm"} << Language::Russian;

    QTest::newRow("setting over user") << QStringList{"", "ru"} << english << Language::Russian;
    QTest::newRow("setting over the other user")
        << QStringList{"", "en"} << russian << Language::English;
    QTest::newRow("option over setting") << QStringList{"en", "ru"} << russian << Language::English;
    QTest::newRow("the other option over setting")
        << QStringList{"ru", "en"} << english << Language::Russian;
    QTest::newRow("option alone") << QStringList{"en", ""} << none << Language::English;
    QTest::newRow("wrong option") << QStringList{"de", "en"} << russian << Language::English;
    QTest::newRow("wrong setting") << QStringList{"", "12"} << english << Language::English;
    QTest::newRow("nothing right")
        << QStringList{"x", "y"} << QStringList{"z"} << Language::Russian;
}

void TestLanguage::choosesALanguage()
{
    QFETCH(const QStringList, wishes);
    QFETCH(const QStringList, userLanguages);
    QTEST(vexdesk::chooseLanguage(wishes, userLanguages), "chosen");
}

void TestLanguage::translationsAreBesideTheProgramOrInstalled()
{
    const QStringList directories = vexdesk::translationDirectories();
    const QDir program(QCoreApplication::applicationDirPath());
    QCOMPARE(directories.value(0), program.filePath(QStringLiteral("translations")));
    QCOMPARE(directories.size(), 2);
    const QString& installed = directories.at(1);
    QVERIFY2(QDir::isAbsolutePath(installed), qPrintable(installed));
    QVERIFY2(installed.endsWith(QStringLiteral("/vexdesk/translations")), qPrintable(installed));
    QCOMPARE(installed, QDir::cleanPath(installed));
}

void TestLanguage::loadsTheFileOfTheLanguage()
{
    const auto translation = vexdesk::loadTranslation(QStringLiteral("vexdesk"), Language::English,
                                                      {QStringLiteral(VEXDESK_TRANSLATIONS)});
    QVERIFY(translation);
    QCOMPARE(translation->translate("SelectorBox", "не выбрано"), QStringLiteral("not selected"));
}

void TestLanguage::takesTheFirstDirectoryThatHasTheFile()
{
    const QTemporaryDir directory;
    const QString source = QStringLiteral(VEXDESK_TRANSLATIONS "/vexdesk_en.qm");
    QVERIFY(QFile::copy(source, directory.filePath(QStringLiteral("tool_en.qm"))));
    const QStringList directories{directory.filePath(QStringLiteral("missing")), directory.path()};
    QVERIFY(vexdesk::loadTranslation(QStringLiteral("tool"), Language::English, directories));
}

void TestLanguage::withoutAFileThereIsNoTranslation()
{
    const QTemporaryDir directory;
    // Names that QTranslator would try when it is given one of another language.
    for (const char* name : {"tool.qm", "tool", "tool_en"}) {
        QVERIFY(QFile::copy(QStringLiteral(VEXDESK_TRANSLATIONS "/vexdesk_en.qm"),
                            directory.filePath(QLatin1String(name))));
    }
    for (const auto language : {Language::Russian, Language::English})
        QVERIFY(!vexdesk::loadTranslation(QStringLiteral("tool"), language, {directory.path()}));
}

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
