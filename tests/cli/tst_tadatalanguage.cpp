// SPDX-License-Identifier: MIT
// The language of the program's messages.

#include "commandtest.h"

#include "support/filetree.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace testsupport;

namespace {

// The environment of a user with this locale, and the variable as it is set; null for none.
QProcessEnvironment environmentOf(const char* locale, const char* variable)
{
    QProcessEnvironment environment = plainEnvironment();
    for (const char* name : {"LANG", "LC_MESSAGES", "LANGUAGE", "TADATA_LANGUAGE"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("LC_ALL"), QLatin1String(locale));
    if (variable)
        environment.insert(QStringLiteral("TADATA_LANGUAGE"), QLatin1String(variable));
    return environment;
}

QProcessEnvironment english()
{
    return environmentOf("C.UTF-8", "en");
}

} // namespace

class TadataLanguageTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void theVariableOrTheUserDecides_data();
    void theVariableOrTheUserDecides();
    void theHelpIsEnglish_data();
    void theHelpIsEnglish();
    void messagesOfTheJobsAreEnglish();
    void messagesOfTheLibraryAreEnglish();
    void whatIsWrittenIsTheSame();
    void withoutTranslationsItSpeaksRussian();
};

void TadataLanguageTest::theVariableOrTheUserDecides_data()
{
    QTest::addColumn<QProcessEnvironment>("environment");
    QTest::addColumn<bool>("isEnglish");
    QTest::newRow("no choice at all") << environmentOf("C.UTF-8", nullptr) << false;
    QTest::newRow("POSIX") << environmentOf("POSIX", nullptr) << false;
    QTest::newRow("English user") << environmentOf("en_US.UTF-8", nullptr) << true;
    QTest::newRow("Russian user") << environmentOf("ru_RU.UTF-8", nullptr) << false;
    QTest::newRow("user of another language") << environmentOf("de_DE.UTF-8", nullptr) << false;
    QTest::newRow("English wanted") << environmentOf("ru_RU.UTF-8", "en") << true;
    QTest::newRow("Russian wanted") << environmentOf("en_US.UTF-8", "ru") << false;
    QTest::newRow("nothing wanted") << environmentOf("en_US.UTF-8", "") << true;
    QTest::newRow("unknown wish") << environmentOf("en_US.UTF-8", "de") << true;
}

void TadataLanguageTest::theVariableOrTheUserDecides()
{
    QFETCH(const QProcessEnvironment, environment);
    QFETCH(const bool, isEnglish);
    const Outcome wanted =
        isEnglish ? Outcome{2, {}, "tadata: unknown command \"move\"\nHint: tadata --help\n"}
                  : refused(QStringLiteral("неизвестная команда «move»"));
    QCOMPARE(runTadata({QStringLiteral("move")}, environment), wanted);
}

void TadataLanguageTest::theHelpIsEnglish_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::newRow("program") << words("--help");
    QTest::newRow("import") << words("import --help");
    QTest::newRow("export") << words("export --help");
    QTest::newRow("list") << words("list --help");
    for (const char* name : {"points", "undo", "delete", "copy", "rename", "unlock"})
        QTest::newRow(name) << QStringList({QLatin1String(name), QStringLiteral("--help")});
}

void TadataLanguageTest::theHelpIsEnglish()
{
    QFETCH(const QStringList, words);
    const Outcome outcome = runTadata(words, english());
    QCOMPARE(outcome.exitCode, 0);
    const QString text = QString::fromUtf8(outcome.out);
    QVERIFY2(text.contains(QStringLiteral("Usage:")), qPrintable(text));
    QVERIFY2(!text.contains(QRegularExpression(QStringLiteral("[А-Яа-яЁё]"))), qPrintable(text));
    const QStringList lines = text.split(u'\n');
    for (const QString& line : lines)
        QVERIFY2(line.size() <= 100, qPrintable(line));
}

void TadataLanguageTest::messagesOfTheJobsAreEnglish()
{
    QCOMPARE(messageOf(import("20240115,100000,1,1,1,1\n20240115,1001,1,1,1,1\n", {}, english())),
             failed(QStringLiteral("Error importing line 2:\nThe time '1001' does not match the "
                                   "stated format 'hhmmss'.")));
}

void TadataLanguageTest::messagesOfTheLibraryAreEnglish()
{
#ifndef WITH_LIBRARY_TRANSLATION
    QSKIP("an installed terminal has its texts with it");
#endif
    const QString file = path("reference.json");
    QVERIFY(QDir().mkpath(path("store")));
    QCOMPARE(runTadata(exportLine(path("out.txt"), words("--reference") << file), english()),
             failed(QStringLiteral("Cannot open file %1").arg(file)));
}

void TadataLanguageTest::whatIsWrittenIsTheSame()
{
    QList<Tree> stored;
    for (const char* language : {"ru", "en"}) {
        const QStringList options = words("--date-format dd.MM.yy --time-format hh:mm --store")
                                    << path(language);
        QCOMPARE(import("15.01.24,10:00,1,1,1,1\n", options, environmentOf("C.UTF-8", language)),
                 succeeded());
        stored.append(readTree(QDir(path(language))));
    }
    QVERIFY(!stored.first().isEmpty());
    QCOMPARE(stored.last(), stored.first());
}

void TadataLanguageTest::withoutTranslationsItSpeaksRussian()
{
    const QString program = path("tadata");
    QVERIFY(QFile::copy(tadataProgram(), program));
    QCOMPARE(runProgram(program, {}, english()), refused(QStringLiteral("нет команды")));
}

QTEST_GUILESS_MAIN(TadataLanguageTest)
#include "tst_tadatalanguage.moc"
