// SPDX-License-Identifier: MIT
// The preview of a file: its lines by their numbers, and what an import says of them.
#include "previewmodel.h"

#include "importfiles.h"
#include "support/eventually.h"
#include "support/filetree.h"
#include "support/hold.h"
#include "support/strictlog.h"

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringConverter>
#include <QtCore/QTemporaryDir>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using tadata::LinePlaces;
using tadata::PreviewLayout;
using tadata::PreviewModel;
using tadata::ShownLine;
using testsupport::writeFile;

namespace {

PreviewLayout dividedByCommas()
{
    PreviewLayout layout;
    layout.details.separator = QStringLiteral(",");
    return layout;
}

} // namespace

class TestPreview final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void findsLines_data();
    void findsLines();
    void findsEachLineOfALargeFile();
    void readsOtherEncodings_data();
    void readsOtherEncodings();
    void cutsLongLines();
    void refusesAFileThatHasChanged();
    void dividesAndJudgesLines();
    void badTickersAreJudged();
    void theModelHoldsWhatIsInView();
    void anotherFileDoesNotWaitForTheOneBefore();
    void theModelTellsWhatIsWrong();
    void theModelForgetsAFileForTheNext();
    void theModelMayGoAtAnyTime();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    LinePlaces placesOf(const QString& file) const;
    QStringList textsOf(const QString& file, qint64 first, qint64 count) const;
    PreviewLayout layoutOf(const QString& file) const;

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestPreview::init()
{
    testsupport::failOnStrayWarnings();
    testsupport::knowSeries();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

LinePlaces TestPreview::placesOf(const QString& file) const
{
    LinePlaces places;
    const std::atomic<bool> goesOn = false;
    const auto found = tadata::findLines(
        file, [&places](const LinePlaces& more) { places = more; }, goesOn);
    if (!found)
        QTest::qFail(qPrintable(found.message()), __FILE__, __LINE__);
    return places;
}

QStringList TestPreview::textsOf(const QString& file, qint64 first, qint64 count) const
{
    const auto lines = tadata::readLines(file, placesOf(file), first, count);
    if (!lines)
        return {lines.message()};
    QStringList texts;
    for (const ShownLine& line : *lines)
        texts.append(line.text);
    return texts;
}

void TestPreview::findsLines_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty") << QByteArray() << QStringList();
    QTest::newRow("one") << QByteArray("a\n") << QStringList{"a"};
    QTest::newRow("no line end") << QByteArray("a\nb") << QStringList{"a", "b"};
    QTest::newRow("carriage returns") << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"};
    QTest::newRow("empty lines") << QByteArray("\n\na\n\n") << QStringList{"", "", "a", ""};
    QTest::newRow("mark") << QByteArray("\xef\xbb\xbf"
                                        "a\nb\n")
                          << QStringList{"a", "b"};
    QTest::newRow("mark alone") << QByteArray("\xef\xbb\xbf") << QStringList();
}

void TestPreview::findsLines()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QStringList, lines);
    writeFile(path("in.csv"), content);
    const LinePlaces places = placesOf(path("in.csv"));
    QVERIFY(places.isWhole);
    QCOMPARE(places.lines, lines.size());
    QCOMPARE(textsOf(path("in.csv"), 0, 100), lines);
    for (qsizetype line = 0; line < lines.size(); ++line)
        QCOMPARE(textsOf(path("in.csv"), line, 1), lines.mid(line, 1));
}

// Lines of all lengths, also such that are longer than what is read at a time.
void TestPreview::findsEachLineOfALargeFile()
{
    QByteArray content;
    qint64 count = 0;
    QRandomGenerator random(7);
    while (content.size() < 3'000'000) {
        const int length = count % 5000 == 4999 ? 400'000 : random.bounded(60);
        content += QByteArray::number(count++) + QByteArray(length, '.') + '\n';
    }
    writeFile(path("in.csv"), content);
    const LinePlaces places = placesOf(path("in.csv"));
    QCOMPARE(places.lines, count);
    QVERIFY(places.places.size() < 20);
    for (int i = 0; i < 300; ++i) {
        const qint64 line = i == 0 ? count - 1 : random.bounded(int(count));
        const auto read = tadata::readLines(path("in.csv"), places, line, 2);
        QVERIFY(bool(read));
        QCOMPARE(read->size(), line == count - 1 ? size_t(1) : size_t(2));
        QVERIFY(read->front().text.startsWith(QString::number(line)));
        QCOMPARE(read->front().text.count(u'.') == 0 ||
                     read->front().text.at(QString::number(line).size()) == u'.',
                 true);
    }
}

void TestPreview::readsOtherEncodings_data()
{
    QTest::addColumn<QStringConverter::Encoding>("encoding");
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE})
        QTest::newRow(QStringConverter::nameForEncoding(encoding)) << encoding;
}

// U+0A0A has the byte of a line feed twice, U+200A and U+0A20 at either end.
void TestPreview::readsOtherEncodings()
{
    QFETCH(const QStringConverter::Encoding, encoding);
    const QStringList lines{QStringLiteral("дата"), QStringLiteral("\u0a0a \u200a \u0a20"),
                            QStringLiteral("конец")};
    QStringEncoder encode(encoding, QStringConverter::Flag::WriteBom);
    const QByteArray content = encode(lines.join(u'\n'));
    writeFile(path("in.csv"), content);
    QCOMPARE(textsOf(path("in.csv"), 0, 10), lines);
    QCOMPARE(textsOf(path("in.csv"), 2, 10), lines.mid(2));
    writeFile(path("old.csv"), "\xe4\xe0\xf2\xe0\n");
    QCOMPARE(textsOf(path("old.csv"), 0, 1), lines.mid(0, 1));
}

void TestPreview::cutsLongLines()
{
    writeFile(path("in.csv"), QByteArray(1'000'000, 'x') + "\nshort\n");
    const auto lines = tadata::readLines(path("in.csv"), placesOf(path("in.csv")), 0, 5);
    QCOMPARE(lines->size(), size_t(2));
    QVERIFY(lines->front().isCut && lines->front().text.size() == 4096);
    QVERIFY(!lines->back().isCut);
    QCOMPARE(lines->back().text, QStringLiteral("short"));
}

void TestPreview::refusesAFileThatHasChanged()
{
    writeFile(path("in.csv"), "a\nb\n");
    const LinePlaces places = placesOf(path("in.csv"));
    writeFile(path("in.csv"), "a\nb\nc\n");
    QVERIFY(!tadata::readLines(path("in.csv"), places, 0, 1));
    QVERIFY(QFile::remove(path("in.csv")));
    QVERIFY(!tadata::readLines(path("in.csv"), places, 0, 1));
    const std::atomic<bool> goesOn = false;
    QVERIFY(!tadata::findLines(
        path("in.csv"), [](const LinePlaces&) {}, goesOn));
}

PreviewLayout TestPreview::layoutOf(const QString& file) const
{
    const auto choices = testsupport::choicesOf({file}, ImportMode::Merge);
    const auto order = testsupport::orderOf(choices, QDir(path("store")));
    return {tadata::detailsFor(order.files.front(), choices), {}, true};
}

void TestPreview::dividesAndJudgesLines()
{
    writeFile(path("in.csv"), testsupport::barFile({QDate(2024, 1, 15)}, 5, 100));
    const PreviewLayout layout = layoutOf(path("in.csv"));
    const std::vector<ShownLine> lines{{QStringLiteral("<DATE>,<TIME>")},
                                       {QStringLiteral("20240115,100000,1,2,1,2,3")},
                                       {QStringLiteral("20240115,100000,1,x,1,2,3")},
                                       {QStringLiteral("20240115,100000")}};
    const auto shown = tadata::previewLines(lines, 0, layout);
    QVERIFY(shown[0].isHeader && shown[0].fault.isNull());
    QCOMPARE(shown[1].fields.size(), 7);
    QVERIFY(shown[1].fault.isNull());
    QCOMPARE(shown[2].faultColumn, 3);
    QVERIFY(!shown[2].fault.isNull());
    QVERIFY(!shown[3].fault.isNull() && shown[3].faultColumn == -1);
    // The first of other lines is no header, and without roles nothing is wrong.
    QVERIFY(!tadata::previewLines(lines, 7, layout)[0].isHeader);
    PreviewLayout open = layout;
    open.isComplete = false;
    QVERIFY(tadata::previewLines(lines, 0, open)[3].fault.isNull());
}

void TestPreview::badTickersAreJudged()
{
    writeFile(path("in.csv"), testsupport::barFile({QDate(2024, 1, 15)}, 5, 100, "X"));
    const auto choices =
        testsupport::choicesOf({path("in.csv")}, ImportMode::Merge, "S/B/{ticker}");
    const auto order = testsupport::orderOf(choices, QDir(path("store")));
    const QString file = path("in.csv");
    const PreviewLayout layout{
        tadata::detailsFor(order.files.front(), choices), {}, true, [&](const QString& ticker) {
            return tadata::faultOfTicker(choices, file, ticker);
        }};
    std::vector<ShownLine> lines;
    for (const char* const ticker : {"X", "", "..", "A/B", "NONE"})
        lines.push_back({QStringLiteral("20240115,100000,1,2,1,2,3,") + QLatin1String(ticker)});
    const auto shown = tadata::previewLines(lines, 7, layout);
    QVERIFY2(shown[0].fault.isNull(), qPrintable(shown[0].fault));
    for (size_t line = 1; line < lines.size(); ++line) {
        QCOMPARE(shown[line].faultColumn, 7);
        QVERIFY(!shown[line].fault.isEmpty());
    }
    QVERIFY2(shown[4].fault.contains(QStringLiteral("S/B/NONE")), qPrintable(shown[4].fault));
    // In a series of its own the column says nothing.
    PreviewLayout chosen = layoutOf(path("in.csv"));
    chosen.faultOfTicker = layout.faultOfTicker;
    QVERIFY(tadata::previewLines(lines, 7, chosen)[4].fault.isNull());
}

void TestPreview::theModelHoldsWhatIsInView()
{
    QByteArray content;
    for (int line = 1; line <= 100'000; ++line)
        content += QByteArray::number(line) + ",b,c\n";
    writeFile(path("in.csv"), content);
    PreviewModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setLayout(dividedByCommas());
    model.setPageSize(20);
    model.setFile(path("in.csv"));
    EVENTUALLY(model.isWhole());
    QCOMPARE(model.lineCount(), 100'000);
    QCOMPARE(model.rowCount(), 20);
    EVENTUALLY_EQUAL(model.columnCount(), 3);
    EVENTUALLY_EQUAL(model.index(0, 0).data().toString(), QStringLiteral("1"));
    model.showFrom(70'000);
    QCOMPARE(model.headerData(0, Qt::Vertical).toInt(), 70'001);
    EVENTUALLY_EQUAL(model.index(0, 0).data().toString(), QStringLiteral("70001"));
    model.showFrom(1'000'000);
    QCOMPARE(model.firstLine(), 99'980);
    EVENTUALLY_EQUAL(model.index(19, 0).data().toString(), QStringLiteral("100000"));
    model.setPageSize(30);
    QCOMPARE(model.firstLine(), 99'970);
    EVENTUALLY_EQUAL(model.index(29, 1).data().toString(), QStringLiteral("b"));
}

void TestPreview::theModelTellsWhatIsWrong()
{
    writeFile(path("in.csv"), testsupport::barFile({QDate(2024, 1, 15)}, 30, 100) +
                                  "20240115,113000,bad,1,1,1,1\n");
    PreviewModel model;
    model.setPageSize(40);
    model.setLayout(layoutOf(path("in.csv")));
    model.setFile(path("in.csv"));
    EVENTUALLY(model.index(31, 2).data(PreviewModel::FaultRole).toBool());
    QVERIFY(!model.index(31, 1).data(PreviewModel::FaultRole).toBool());
    QVERIFY(!model.index(31, 2).data(Qt::ToolTipRole).toString().isEmpty());
    QVERIFY(model.index(0, 0).data(PreviewModel::HeaderRole).toBool());
    model.setNotices({{5, QStringLiteral("Странно")}});
    QVERIFY(model.index(4, 0).data(PreviewModel::NoticeRole).toBool());
    QCOMPARE(model.index(4, 0).data(Qt::ToolTipRole).toString(), QStringLiteral("Странно"));
    QVERIFY(!model.index(5, 0).data(PreviewModel::NoticeRole).toBool());
}

void TestPreview::theModelForgetsAFileForTheNext()
{
    writeFile(path("long.csv"), QByteArray("a,b\n").repeated(200'000));
    writeFile(path("short.csv"), "x,y,z\n");
    PreviewModel model;
    model.setLayout(dividedByCommas());
    model.setPageSize(5);
    QSignalSpy failures(&model, &PreviewModel::failed);
    for (int i = 0; i < 20; ++i) {
        model.setFile(path("long.csv"));
        if (i % 2 == 0)
            EVENTUALLY(model.lineCount() > 0);
        model.setFile(path("short.csv"));
    }
    EVENTUALLY(model.isWhole());
    QCOMPARE(model.lineCount(), 1);
    EVENTUALLY_EQUAL(model.index(0, 2).data().toString(), QStringLiteral("z"));
    QCOMPARE(failures.size(), 0);
    model.setFile(path("missing.csv"));
    EVENTUALLY_EQUAL(failures.size(), 1);
}

void TestPreview::theModelMayGoAtAnyTime()
{
    writeFile(path("in.csv"), QByteArray("a,b\n").repeated(500'000));
    for (int i = 0; i < 20; ++i) {
        PreviewModel model;
        model.setPageSize(5);
        model.setFile(path("in.csv"));
        if (i % 2 == 1)
            EVENTUALLY(model.lineCount() > 0);
    }
}

// Which may be on a disk that does not answer.
void TestPreview::anotherFileDoesNotWaitForTheOneBefore()
{
    const QString slow = m_dir->filePath(QStringLiteral("slow.csv"));
    const QString quick = m_dir->filePath(QStringLiteral("quick.csv"));
    writeFile(slow, "1\n2\n3\n");
    writeFile(quick, "1\n2\n");
    PreviewModel model;
    testsupport::Hold hold({testsupport::SystemCall::Read}, QStringLiteral("slow.csv"));
    model.setFile(slow);
    EVENTUALLY(hold.isReached());
    model.setFile(quick);
    EVENTUALLY_EQUAL(model.lineCount(), 2);
    hold.letGo();
}

QTEST_GUILESS_MAIN(TestPreview)
#include "tst_preview.moc"
