// SPDX-License-Identifier: MIT
// The documents keep what they promise: links lead somewhere, commands do what stands beside them,
// both guides say the same, and what they quote is what the programs say.

#include "markdown.h"

#include "cli/tadatarunner.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>

using namespace testsupport;

namespace {

using Tree = QMap<QString, QByteArray>;

const QString sourceFolder = QStringLiteral(SOURCE_FOLDER);

QString sourcePath(const QString& relative)
{
    return QDir(sourceFolder).filePath(relative);
}

Page guide(const QString& language)
{
    return readPage(sourcePath(QStringLiteral("docs/guide.%1.md").arg(language)));
}

const Section* sectionWith(const Page& page, const QString& link)
{
    const auto found =
        std::find_if(page.sections.begin(), page.sections.end(),
                     [&link](const Section& section) { return section.links.contains(link); });
    return found == page.sections.end() ? nullptr : &*found;
}

// What the samples are stored as when they are imported by the commands that stand beside them.
Tree storedSamples()
{
    return {
        {QStringLiteral("NORD/MAIN/VEGA/20240115_60.iss"),
         "100100;120.00;120.15;119.90;120.10;1450;0.00;0\n"
         "100200;120.10;120.20;120.05;120.20;830;0.00;0\n"
         "100300;120.20;120.20;120.00;120.05;1210;0.00;0\n"},
        {QStringLiteral("NORD/MAIN/VEGA/20240116_60.iss"),
         "100100;121.00;121.40;120.95;121.30;2040;0.00;0\n"
         "100200;121.30;121.35;121.10;121.15;960;0.00;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240115_60.iss"),
         "100100;1.09512;1.09530;1.09508;1.09521;112;0.00000;0\n"
         "100200;1.09521;1.09526;1.09515;1.09520;87;0.00000;0\n"
         "100300;1.09520;1.09541;1.09519;1.09538;140;0.00000;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240116_60.iss"),
         "100100;1.08731;1.08745;1.08729;1.08740;98;0.00000;0\n"
         "100200;1.08740;1.08744;1.08733;1.08735;76;0.00000;0\n"},
        {QStringLiteral("NORD/MAIN/BORA/20240115_60.iss"),
         "100100;0.8812;0.8815;0.8810;0.8814;120000;105756.0000;0\n"
         "100200;0.8814;0.8814;0.8809;0.8810;95000;83724.5000;0\n"
         "100300;0.8810;0.8813;0.8810;0.8812;40000;35244.0000;0\n"},
        {QStringLiteral("NORD/MAIN/BORA/20240116_60.iss"),
         "100100;0.8790;0.8795;0.8788;0.8794;150000;131872.5000;0\n"},
        {QStringLiteral("NORDFUT/FUT/ALFA-12.26/20240115_60.iss"),
         "100100;12000;12010;11980;11995;0;0;45210\n"
         "100200;11995;12005;11990;12005;0;0;45216\n"
         "100300;12005;12025;12000;12020;0;0;45230\n"},
        {QStringLiteral("NORDFUT/FUT/ALFA-12.26/20240116_60.iss"),
         "100100;12100;12120;12090;12110;0;0;45302\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240115_1.iss"),
         "100001;120.00;120.02;120.00;120.01;30;3600.30;0\n"
         "100030;120.01;120.05;120.01;120.05;20;2400.80;0\n"
         "100100;120.05;120.05;119.98;120.00;45;5400.00;0\n"
         "100101;120.00;120.03;120.00;120.03;10;1200.20;0\n"
         "100145;120.03;120.04;120.02;120.02;15;1800.40;0\n"
         "100201;120.02;120.02;120.01;120.01;25;3000.30;0\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240115_60"),
         "100100;120.00;120.05;119.98;120.00;95;11401.10;0\n"
         "100200;120.00;120.04;120.00;120.02;25;3000.60;0\n"},
        {QStringLiteral("PRIVATE/OTC/OPAL/20240115_60.iss"),
         "100100;17.125;17.250;17.000;17.200;0;0.000;0\n"
         "100200;17.200;17.300;17.100;17.251;0;0.000;0\n"},
        {QStringLiteral("PRIVATE/OTC/OPAL/20240116_60.iss"),
         "100100;17.300;17.375;17.300;17.350;0;0.000;0\n"},
    };
}

// The files that the commands of the page about files of brokers name.
Tree filesOfBrokers()
{
    const QByteArray named = "ticker,date,time,open,high,low,close,vol\n";
    return {
        {QStringLiteral("eurusd.csv"), "15.01.24;10:01;1.09512;1.09530;1.09508;1.09521;112\n"
                                       "15.01.24;10:02;1.09521;1.09526;1.09515;1.09520;87\n"
                                       "16.01.24;10:01;1.08731;1.08745;1.08729;1.08740;98\n"},
        {QStringLiteral("eurusd-new.csv"), "16.01.24;10:02;1.08740;1.08744;1.08733;1.08735;76\n"
                                           "16.01.24;10:01;1.08731;1.08745;1.08729;1.08741;99\n"},
        {QStringLiteral("eurusd-old.csv"), "16.01.24;10:02;3;3;3;3;3\n"
                                           "12.01.24;10:01;1.09700;1.09700;1.09700;1.09700;5\n"},
        {QStringLiteral("eurusd-bad.csv"), "17.01.24;10:01;1,08800;1,08810;1,08790;1,08805;7\n"
                                           "17.01.24;10:02;1.08805;1.08805;1.08805;1.08805;8\n"},
        {QStringLiteral("eurusd-utc.csv"), "31.03.24;20:59;1.07900;1.07900;1.07900;1.07900;9\n"},
        {QStringLiteral("incoming/ALFA.csv"), named + "x,20240115,100100,120,121,119,120.5,1\n"},
        {QStringLiteral("incoming/VEGA.csv"), named + "x,20240115,100100,88,89,87,88.5,2\n"},
        {QStringLiteral("tickers.csv"), named + "ALFA,20240116,100100,121,122,120,121.5,3\n"
                                                "VEGA,20240116,100100,89,90,88,89.5,4\n"},
    };
}

// What these commands make of them.
Tree storedFilesOfBrokers()
{
    return {
        {QStringLiteral("ORIENT/FX/EURUSD/20240112_60.iss"),
         "100100;1.09700;1.09700;1.09700;1.09700;5;0.00000;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240115_60.iss"),
         "100100;1.09512;1.09530;1.09508;1.09521;112;0.00000;0\n"
         "100200;1.09521;1.09526;1.09515;1.09520;87;0.00000;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240116_60.iss"),
         "100100;1.08731;1.08745;1.08729;1.08741;99;0.00000;0\n"
         "100200;1.08740;1.08744;1.08733;1.08735;76;0.00000;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240117_60.iss"),
         "100100;1.08800;1.08810;1.08790;1.08805;7;0.00000;0\n"
         "100200;1.08805;1.08805;1.08805;1.08805;8;0.00000;0\n"},
        {QStringLiteral("ORIENT/FX/EURUSD/20240401_60.iss"),
         "000000;1.07900;1.07900;1.07900;1.07900;9;0.00000;0\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240115_60.iss"),
         "100100;120.00;121.00;119.00;120.50;1;0.00;0\n"},
        {QStringLiteral("NORD/MAIN/ALFA/20240116_60.iss"),
         "100100;121.00;122.00;120.00;121.50;3;0.00;0\n"},
        {QStringLiteral("NORD/MAIN/VEGA/20240115_60.iss"),
         "100100;88.00;89.00;87.00;88.50;2;0.00;0\n"},
        {QStringLiteral("NORD/MAIN/VEGA/20240116_60.iss"),
         "100100;89.00;90.00;88.00;89.50;4;0.00;0\n"},
    };
}

// The code of a language in the parts of a section, in its order. Both guides show the same.
QStringList codesBelow(const char* anchor, const char* language)
{
    QStringList codes;
    bool isBelow = false;
    for (const Section& section : guide(QStringLiteral("en")).sections) {
        if (section.level <= 2)
            isBelow = section.anchor == QLatin1String(anchor);
        for (const Section::Code& code : section.codes) {
            if (isBelow && code.language == QLatin1String(language))
                codes.append(code.text);
        }
    }
    return codes;
}

// A text as a guide quotes it: without mnemonics, and with "…" for what is put in.
QStringList quotableLines(QString text)
{
    static const QRegularExpression argument(QStringLiteral("%\\d|%n"));
    text.remove(u'&').replace(argument, QStringLiteral("…"));
    QStringList lines = text.split(u'\n');
    for (QString& line : lines)
        line = line.simplified();
    return lines;
}

QString pairOf(const QString& russian, const QString& english)
{
    return russian + QStringLiteral(" => ") + english;
}

// Every line that the programs show, in Russian as in the sources and in English.
QSet<QString> shownTexts()
{
    // The languages call themselves the same in every language.
    QSet<QString> texts;
    for (const char* name : {"Русский", "English"})
        texts.insert(pairOf(QString::fromUtf8(name), QString::fromUtf8(name)));
    for (const char* name : {"vexdesk", "tadatamanager", "tadataquality", "tadata"}) {
        QFile file(sourcePath(QStringLiteral("translations/%1_en.ts").arg(QLatin1String(name))));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QXmlStreamReader xml(&file);
        QStringList russian;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == u"source")
                russian = quotableLines(xml.readElementText());
            if (xml.name() != u"translation")
                continue;
            const QStringList english =
                quotableLines(xml.readElementText(QXmlStreamReader::IncludeChildElements));
            for (int i = 0; i < std::min(russian.size(), english.size()); ++i)
                texts.insert(pairOf(russian.at(i), english.at(i)));
        }
    }
    return texts;
}

void addLanguages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("Russian") << "ru";
    QTest::newRow("English") << "en";
}

} // namespace

class DocumentsTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void linksLeadSomewhere_data();
    void linksLeadSomewhere();
    void bothLanguagesHaveTheSameParts_data();
    void bothLanguagesHaveTheSameParts();
    void bothGuidesShowTheSamePictures();
    void headingsAreOfOneLanguage_data();
    void headingsAreOfOneLanguage();

    void everySampleImportsAsTheGuideSays_data();
    void everySampleImportsAsTheGuideSays();
    void linesOfSamplesAreThoseOfTheFiles_data();
    void linesOfSamplesAreThoseOfTheFiles();
    void referenceDataOfTheGuideAreRead_data();
    void referenceDataOfTheGuideAreRead();
    void finishedBarsAreKept_data();
    void finishedBarsAreKept();
    void filesOfBrokersAreImportedAsTheGuideSays();
    void unitsOfTheGuideAreThoseOfSystemd();

    void quotedTextsAreShownByThePrograms();
    void thePluginOfThePageIsTheOneThatIsBuilt();

private:
    QString path(const char* name) const { return m_dir->filePath(QString::fromUtf8(name)); }
    // Runs a command as it stands in a guide, with a tadata whose own store is empty at first.
    Outcome run(const QString& command, const QString& directory) const;
    Outcome import(const Page& page) const;
    Tree stored() const { return readTree(QDir(path("bin/user/tadata"))); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void DocumentsTest::init()
{
    failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("bin")));
    QVERIFY(QFile::copy(tadataProgram(), path("bin/tadata")));
}

void DocumentsTest::cleanup()
{
    m_dir.reset();
}

Outcome DocumentsTest::run(const QString& command, const QString& directory) const
{
    QProcessEnvironment environment = plainEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       path("bin") + u':' + environment.value(QStringLiteral("PATH")));
    QProcess shell;
    shell.setWorkingDirectory(directory);
    shell.setProcessEnvironment(environment);
    shell.start(QStringLiteral("sh"), {QStringLiteral("-ec"), command}, QIODevice::ReadOnly);
    Outcome outcome;
    if (shell.waitForFinished() && shell.exitStatus() == QProcess::NormalExit)
        outcome.exitCode = shell.exitCode();
    outcome.out = shell.readAllStandardOutput();
    outcome.err = shell.readAllStandardError();
    return outcome;
}

void DocumentsTest::linksLeadSomewhere_data()
{
    QTest::addColumn<QString>("document");
    QStringList documents = QDir(sourceFolder).entryList({QStringLiteral("*.md")}, QDir::Files);
    QDirIterator walk(sourcePath(QStringLiteral("docs")), {QStringLiteral("*.md")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        documents.append(QDir(sourceFolder).relativeFilePath(walk.next()));
    documents.sort();
    for (const QString& document : qAsConst(documents))
        QTest::newRow(qPrintable(document)) << document;
}

void DocumentsTest::linksLeadSomewhere()
{
    QFETCH(QString, document);
    const Page page = readPage(sourcePath(document));
    QStringList broken;
    const QStringList targets = page.links() + page.pictures();
    for (const QString& target : targets) {
        if (target.contains(QStringLiteral("://")) || target.startsWith(QStringLiteral("mailto:")))
            continue;
        const QUrl url(target);
        const QString file =
            url.path().isEmpty() ? page.path : QFileInfo(page.path).dir().filePath(url.path());
        if (!QFileInfo::exists(file) ||
            (url.hasFragment() && !readPage(file).anchors().contains(url.fragment())))
            broken.append(target);
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void DocumentsTest::bothLanguagesHaveTheSameParts_data()
{
    QTest::addColumn<QString>("russianFile");
    QTest::addColumn<QString>("englishFile");
    QTest::newRow("guide") << "docs/guide.ru.md"
                           << "docs/guide.en.md";
    QTest::newRow("store") << "docs/store-format.ru.md"
                           << "docs/store-format.md";
}

void DocumentsTest::bothLanguagesHaveTheSameParts()
{
    QFETCH(QString, russianFile);
    QFETCH(QString, englishFile);
    const Page russian = readPage(sourcePath(russianFile));
    const Page english = readPage(sourcePath(englishFile));
    QVERIFY(russian.sections.size() > 5);
    for (int i = 0; i < std::min(russian.sections.size(), english.sections.size()); ++i) {
        const Section& one = russian.sections.at(i);
        const Section& other = english.sections.at(i);
        const QByteArray where = (one.heading + QStringLiteral(" / ") + other.heading).toUtf8();
        QVERIFY2(one.level == other.level, where.constData());
        QVERIFY2(one.tableRows == other.tableRows, where.constData());
        QVERIFY2(one.listItems == other.listItems, where.constData());
        QVERIFY2(one.links.size() == other.links.size(), where.constData());
        QVERIFY2(one.boldTexts.size() == other.boldTexts.size(), where.constData());
        QVERIFY2(one.codes.size() == other.codes.size(), where.constData());
        for (int n = 0; n < one.codes.size(); ++n)
            QCOMPARE(one.codes.at(n).text, other.codes.at(n).text);
    }
    QCOMPARE(russian.sections.size(), english.sections.size());
}

void DocumentsTest::bothGuidesShowTheSamePictures()
{
    QStringList russian = guide(QStringLiteral("ru")).pictures();
    QVERIFY(russian.size() >= 6);
    russian.replaceInStrings(QStringLiteral("images/ru/"), QStringLiteral("images/en/"));
    QCOMPARE(guide(QStringLiteral("en")).pictures(), russian);
}

void DocumentsTest::headingsAreOfOneLanguage_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("isRussian");
    QTest::newRow("guide in Russian") << "docs/guide.ru.md" << true;
    QTest::newRow("guide in English") << "docs/guide.en.md" << false;
    QTest::newRow("store in Russian") << "docs/store-format.ru.md" << true;
    QTest::newRow("store in English") << "docs/store-format.md" << false;
}

// Nothing of the other one was left standing.
void DocumentsTest::headingsAreOfOneLanguage()
{
    QFETCH(QString, file);
    QFETCH(bool, isRussian);
    static const QRegularExpression cyrillic(QStringLiteral("[А-Яа-яЁё]"));
    const Page page = readPage(sourcePath(file));
    for (const Section& section : page.sections) {
        if (section.level > 0)
            QVERIFY2(section.heading.contains(cyrillic) == isRussian, qPrintable(section.heading));
    }
    const QString others = isRussian ? QStringLiteral("images/en/") : QStringLiteral("images/ru/");
    for (const QString& picture : page.pictures())
        QVERIFY2(!picture.contains(others), qPrintable(picture));
}

Outcome DocumentsTest::import(const Page& page) const
{
    const QStringList commands = page.codes(QStringLiteral("sh"));
    for (const QString& command : commands) {
        if (!command.contains(QStringLiteral("docs/samples/")))
            continue;
        const Outcome outcome = run(command, sourceFolder);
        if (outcome != succeeded())
            return outcome;
    }
    return succeeded();
}

void DocumentsTest::everySampleImportsAsTheGuideSays_data()
{
    addLanguages();
}

void DocumentsTest::everySampleImportsAsTheGuideSays()
{
    QFETCH(QString, language);
    const Page page = guide(language);
    const QStringList samples =
        QDir(sourcePath(QStringLiteral("docs/samples"))).entryList(QDir::Files);
    QVERIFY(!samples.isEmpty());
    const QString commands = page.codes(QStringLiteral("sh")).join(u'\n');
    for (const QString& sample : samples) {
        const QString word = QStringLiteral(" docs/samples/%1 ").arg(sample);
        QVERIFY2(commands.count(word) == 1, qPrintable(sample));
    }

    QCOMPARE(import(page), succeeded());
    const Tree files = stored();
    const Tree wanted = storedSamples();
    QCOMPARE(files.keys(), wanted.keys());
    for (auto file = wanted.begin(); file != wanted.end(); ++file)
        QCOMPARE(files.value(file.key()), file.value());
}

void DocumentsTest::linesOfSamplesAreThoseOfTheFiles_data()
{
    addLanguages();
}

void DocumentsTest::linesOfSamplesAreThoseOfTheFiles()
{
    QFETCH(QString, language);
    const Page page = guide(language);
    const QDir samples(sourcePath(QStringLiteral("docs/samples")));
    const QStringList names = samples.entryList(QDir::Files);
    for (const QString& name : names) {
        const Section* const section = sectionWith(page, QStringLiteral("samples/") + name);
        QVERIFY2(section, qPrintable(name));
        const auto shown =
            std::find_if(section->codes.begin(), section->codes.end(),
                         [](const Section::Code& code) { return code.language.isEmpty(); });
        QVERIFY2(shown != section->codes.end(), qPrintable(name));
        // A page shows a tab as blanks.
        const QString content = QString::fromUtf8(readFile(samples.filePath(name)))
                                    .replace(u'\t', QStringLiteral("    "));
        QVERIFY2(content.startsWith(shown->text + u'\n'), qPrintable(name));
    }
}

void DocumentsTest::referenceDataOfTheGuideAreRead_data()
{
    addLanguages();
}

void DocumentsTest::referenceDataOfTheGuideAreRead()
{
    QFETCH(QString, language);
    writeFile(path("bin/user/reference.json"),
              guide(language).codes(QStringLiteral("json")).value(0).toUtf8());
    const auto importAs = [this](const char* series) {
        return run(QStringLiteral("tadata import docs/samples/vega-minutes.csv --series %1 "
                                  "--columns date=2,time=3,open=4,high=5,low=6,close=7")
                       .arg(QLatin1String(series)),
                   sourceFolder);
    };
    QCOMPARE(importAs("NORD/MAIN/QUARTZ"), succeeded());
    QCOMPARE(readFile(path("bin/user/tadata/NORD/MAIN/QUARTZ/20240116_60.iss")),
             QByteArray("100100;121.000;121.400;120.950;121.300;0;0.000;0\n"
                        "100200;121.300;121.350;121.100;121.150;0;0.000;0\n"));
    // Those of the demonstration are gone.
    QCOMPARE(importAs("NORD/MAIN/VEGA").exitCode, 2);
}

void DocumentsTest::finishedBarsAreKept_data()
{
    addLanguages();
}

void DocumentsTest::finishedBarsAreKept()
{
    QFETCH(QString, language);
    const Page page = guide(language);
    QCOMPARE(import(page), succeeded());
    QCOMPARE(run(QStringLiteral("tadata export export.txt --series NORD/MAIN/VEGA "
                                "--from 2024-01-15 --to 2024-01-16 --timeframe 300"),
                 m_dir->path()),
             succeeded());

    const QStringList commands =
        page.codes(QStringLiteral("sh")).filter(QStringLiteral("export.txt > bars.txt"));
    QCOMPARE(commands.size(), 1);
    QCOMPARE(run(commands.first(), m_dir->path()), succeeded());
    QCOMPARE(readFile(path("bars.txt")),
             QByteArray(
                 "\xEF\xBB\xBF<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<VAL>,"
                 "<OPEN_INT>\n"
                 "VEGA,300,20240115,100500,120.00,120.20,119.90,120.05,3490,0.00,0\n"
                 "VEGA,300,20240116,100500,121.00,121.40,120.95,121.15,3000,0.00,0\n"));
}

void DocumentsTest::filesOfBrokersAreImportedAsTheGuideSays()
{
    const Tree files = filesOfBrokers();
    for (auto file = files.begin(); file != files.end(); ++file)
        writeFile(m_dir->filePath(file.key()), file.value());
    const QStringList commands = codesBelow("files-of-brokers", "sh");
    QVERIFY(commands.size() >= 7);
    for (const QString& command : commands) {
        const Outcome outcome = run(command, m_dir->path());
        QVERIFY2(outcome.exitCode == 0, (command.toUtf8() + '\n' + outcome.err).constData());
    }
    Tree wanted = storedFilesOfBrokers();
    QCOMPARE(stored(), wanted);
    QCOMPARE(readFile(path("rejects-1.csv")),
             QByteArray("17.01.24;10:01;1,08800;1,08810;1,08790;1,08805;7\n"));
    QVERIFY(!QFileInfo::exists(path("rejects-2.csv")));

    // The evening's import finds a file that was there and one more.
    writeFile(path("incoming/BORA.csv"), files.value(QStringLiteral("incoming/VEGA.csv")));
    static const QRegularExpression start(QStringLiteral("(?:^|\n)ExecStart=(.*)(?:\n|$)"));
    const QString service = codesBelow("files-of-brokers", "ini").value(0);
    QCOMPARE(run(start.match(service).captured(1), m_dir->path()).exitCode, 0);
    wanted.insert(QStringLiteral("NORD/MAIN/BORA/20240115_60.iss"),
                  "100100;88.0000;89.0000;87.0000;88.5000;2;0.0000;0\n");
    QCOMPARE(stored(), wanted);
}

void DocumentsTest::unitsOfTheGuideAreThoseOfSystemd()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("systemd-analyze"));
    if (program.isEmpty())
        QSKIP("systemd is missing");
    const QStringList units = codesBelow("files-of-brokers", "ini");
    QCOMPARE(units.size(), 2);
    writeFile(path("tadata-import.service"), units.at(0).toUtf8());
    writeFile(path("tadata-import.timer"), units.at(1).toUtf8());
    QCOMPARE(run(QStringLiteral("XDG_RUNTIME_DIR=$PWD systemd-analyze --user verify "
                                "./tadata-import.service ./tadata-import.timer"),
                 m_dir->path()),
             succeeded());
}

// What is bold in a guide is a text of the programs, and nothing else is; in the other guide stands
// its translation.
void DocumentsTest::quotedTextsAreShownByThePrograms()
{
    const QStringList russian = guide(QStringLiteral("ru")).boldTexts();
    const QStringList english = guide(QStringLiteral("en")).boldTexts();
    QCOMPARE(russian.size(), english.size());
    QVERIFY(russian.size() > 100);
    const QSet<QString> shown = shownTexts();
    QStringList unknown;
    for (int i = 0; i < russian.size(); ++i) {
        const QString quoted = pairOf(russian.at(i), english.at(i));
        if (!shown.contains(quoted) && !unknown.contains(quoted))
            unknown.append(quoted);
    }
    QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join(u'\n')));
}

void DocumentsTest::thePluginOfThePageIsTheOneThatIsBuilt()
{
    const Page page = readPage(sourcePath(QStringLiteral("docs/host-contract.md")));
    const auto code = [&page](const char* language) {
        return page.codes(QLatin1String(language)).value(0).toUtf8() + '\n';
    };
    const auto file = [](const char* name) {
        return readFile(
            sourcePath(QStringLiteral("tests/package/consumer/") + QLatin1String(name)));
    };
    QCOMPARE(code("cmake"), file("CMakeLists.txt"));
    QCOMPARE(code("json"), file("consumer.json"));
    QCOMPARE(code("cpp"), file("consumer.cpp"));
}

QTEST_GUILESS_MAIN(DocumentsTest)
#include "tst_documents.moc"
