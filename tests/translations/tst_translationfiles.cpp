// SPDX-License-Identifier: MIT
// The translation files beside the sources: every text of the sources is in them, translated, and
// the translation agrees with its source in everything that is not language.

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDirIterator>
#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QTest>

namespace {

struct Message
{
    QString context;
    QString source;
    QString state; // "unfinished", "vanished", "obsolete"; empty when all is well
    bool isPlural = false;
    QStringList translations; // one for each plural form
};

QList<Message> readMessages(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    QList<Message> messages;
    QString context;
    Message message;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        const QString name = xml.name().toString();
        if (token == QXmlStreamReader::EndElement && name == u"message") {
            messages.append(message);
        } else if (token != QXmlStreamReader::StartElement) {
            continue;
        } else if (name == u"name") {
            context = xml.readElementText();
        } else if (name == u"message") {
            message = Message();
            message.context = context;
            message.isPlural = xml.attributes().value(QLatin1String("numerus")) == u"yes";
        } else if (name == u"source") {
            message.source = xml.readElementText();
        } else if (name == u"translation") {
            message.state = xml.attributes().value(QLatin1String("type")).toString();
            if (!message.isPlural)
                message.translations = QStringList{xml.readElementText()};
        } else if (name == u"numerusform") {
            message.translations.append(xml.readElementText());
        }
    }
    return xml.hasError() ? QList<Message>() : messages;
}

QString sourcePath(const QString& relative)
{
    return QStringLiteral(SOURCE_FOLDER "/") + relative;
}

QString fileOf(const QString& name)
{
    return sourcePath(QStringLiteral("translations/%1_en.ts").arg(name));
}

QStringList folders(const char* names)
{
    return QString::fromLatin1(names).split(u' ');
}

QStringList textFolders(const QString& name)
{
    if (name == u"vexdesk")
        return folders(TEXTS_vexdesk);
    if (name == u"tadataquality")
        return folders(TEXTS_tadataquality);
    return name == u"tadatamanager" ? folders(TEXTS_tadatamanager) : folders(TEXTS_tadata);
}

QStringList matches(const QString& text, const char* pattern)
{
    QStringList found;
    auto walk = QRegularExpression(QString::fromUtf8(pattern)).globalMatch(text);
    while (walk.hasNext())
        found.append(walk.next().captured());
    found.sort();
    return found;
}

// What stands at the end of a text and means something there.
QString ending(const QString& text)
{
    return matches(text, "(\\.\\.\\.|[:;])?\\s*$").value(0);
}

// A piece of C++ without its comments; literals stay.
QString withoutComments(const QString& code)
{
    static const QRegularExpression pieces(
        QStringLiteral("\"(?:[^\"\\\\\\n]|\\\\.)*\"|//[^\\n]*|/\\*.*?\\*/"),
        QRegularExpression::DotMatchesEverythingOption);
    QString result;
    qsizetype done = 0;
    auto walk = pieces.globalMatch(code);
    while (walk.hasNext()) {
        const auto piece = walk.next();
        result += code.mid(done, piece.capturedStart() - done);
        if (piece.captured().startsWith(u'"'))
            result += piece.captured();
        done = piece.capturedEnd();
    }
    return result + code.mid(done);
}

// The literals of a piece of code that hold a Russian letter, as they read.
QStringList russianLiterals(const QString& code)
{
    static const QRegularExpression russianLetter(QStringLiteral("[А-Яа-яЁё]"));
    QStringList found;
    const QStringList literals = matches(withoutComments(code), "\"(?:[^\"\\\\\\n]|\\\\.)*\"");
    for (const QString& literal : literals) {
        if (!russianLetter.match(literal).hasMatch())
            continue;
        QString text = literal.mid(1, literal.size() - 2);
        text.replace(QLatin1String("\\n"), QLatin1String("\n"));
        text.replace(QLatin1String("\\\""), QLatin1String("\""));
        text.replace(QLatin1String("\\\\"), QLatin1String("\\"));
        found.append(text);
    }
    return found;
}

} // namespace

class TestTranslationFiles final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void nothingIsMissingUnfinishedOrObsolete_data() { addFiles(); }
    void nothingIsMissingUnfinishedOrObsolete();
    void everyTextIsEnglish_data() { addFiles(); }
    void everyTextIsEnglish();
    void placeholdersAgree_data() { addFiles(); }
    void placeholdersAgree();
    void accessKeysAgree_data() { addFiles(); }
    void accessKeysAgree();
    void endsAgree_data() { addFiles(); }
    void endsAgree();
    void everyRussianLiteralCanBeTranslated_data() { addFiles(); }
    void everyRussianLiteralCanBeTranslated();

private:
    static void addFiles();
    /// What the question finds wrong, with the texts in question.
    template <typename Question>
    static QStringList faults(const Question& question);
};

void TestTranslationFiles::init()
{
    testsupport::failOnStrayWarnings();
}

void TestTranslationFiles::addFiles()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"vexdesk", "tadatamanager", "tadataquality", "tadata"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

template <typename Question>
QStringList TestTranslationFiles::faults(const Question& question)
{
    const QString name =
        *static_cast<QString*>(QTest::qData("name", qMetaTypeId<QString>())); // as QFETCH does
    const QList<Message> messages = readMessages(fileOf(name));
    QStringList found;
    if (messages.isEmpty())
        found.append(QStringLiteral("no texts in ") + fileOf(name));
    for (const Message& message : messages) {
        for (const QString& translation : message.translations) {
            if (!question(message.source, translation))
                found.append(message.context + QStringLiteral(": \"") + message.source +
                             QStringLiteral("\" - \"") + translation + u'"');
        }
    }
    return found;
}

void TestTranslationFiles::nothingIsMissingUnfinishedOrObsolete()
{
    QFETCH(const QString, name);
    const QTemporaryDir directory;
    const QString copy = directory.filePath(name + QStringLiteral("_en.ts"));
    QVERIFY(QFile::copy(fileOf(name), copy));
    QStringList words{QStringLiteral("-silent"), QStringLiteral("-locations"),
                      QStringLiteral("none")};
    const QStringList includes = folders(TEXT_INCLUDES);
    for (const QString& include : includes)
        words += {QStringLiteral("-I"), include};
    words += textFolders(name) + QStringList{QStringLiteral("-ts"), copy};

    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(SOURCE_FOLDER));
    lupdate.start(QStringLiteral(LUPDATE_PROGRAM), words);
    QVERIFY(lupdate.waitForFinished(120'000));
    QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
             lupdate.readAllStandardError().constData());

    const QList<Message> messages = readMessages(copy);
    QVERIFY(!messages.isEmpty());
    QStringList open;
    for (const Message& message : messages) {
        const bool isEmpty = message.translations.isEmpty() || message.translations.contains("");
        if (!message.state.isEmpty() || isEmpty)
            open.append(message.context + QStringLiteral(": \"") + message.source +
                        QStringLiteral("\" ") + message.state);
    }
    QVERIFY2(open.isEmpty(), qPrintable(open.join(u'\n')));
}

void TestTranslationFiles::everyTextIsEnglish()
{
    const QStringList found = faults([](const QString&, const QString& translation) {
        return matches(translation, "[А-Яа-яЁё«»]").isEmpty();
    });
    QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')));
}

void TestTranslationFiles::placeholdersAgree()
{
    const QStringList found = faults([](const QString& source, const QString& translation) {
        constexpr auto placeholder = "%(L?[0-9]+|n)";
        return matches(source, placeholder) == matches(translation, placeholder);
    });
    QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')));
}

void TestTranslationFiles::accessKeysAgree()
{
    const QStringList found = faults([](const QString& source, const QString& translation) {
        constexpr auto key = "(?<!&)&(?=[^&\\s])";
        return matches(source, key) == matches(translation, key);
    });
    QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')));
}

void TestTranslationFiles::endsAgree()
{
    const QStringList found = faults([](const QString& source, const QString& translation) {
        return ending(source) == ending(translation);
    });
    QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')));
}

void TestTranslationFiles::everyRussianLiteralCanBeTranslated()
{
    QFETCH(const QString, name);
    QStringList sources;
    const QList<Message> messages = readMessages(fileOf(name));
    for (const Message& message : messages)
        sources.append(message.source);
    const QString all = sources.join(u'\x1f');

    QStringList left;
    const QStringList textFoldersOfName = textFolders(name);
    for (const QString& folder : textFoldersOfName) {
        QDirIterator walk(sourcePath(folder), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                          QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            // The names of columns in files stay what they are.
            if (walk.fileName() == u"columnroles.cpp")
                continue;
            const QString code = QString::fromUtf8(testsupport::readFile(path));
            const QStringList literals = russianLiterals(code);
            for (const QString& literal : literals) {
                // The language's own name is the same in every language.
                if (!all.contains(literal) && literal != u"&Русский")
                    left.append(walk.fileName() + QStringLiteral(": ") + literal);
            }
        }
    }
    QVERIFY2(left.isEmpty(), qPrintable(left.join(u'\n')));
}

QTEST_GUILESS_MAIN(TestTranslationFiles)
#include "tst_translationfiles.moc"
