// SPDX-License-Identifier: MIT
// Lines of a hundred million bytes, as files have them that are no text or lost their line ends:
// the line's own fault is told, and the memory that it takes stays in proportion to it.

#include "commandtest.h"

#include "support/filetree.h"
#include "support/instrumented.h"

#include <QtTest/QTest>

#include <sys/resource.h>

using namespace testsupport;

namespace {

// An instrumented allocator moves the whole line each time that it grows by one block of the file,
// which is a matter of minutes for the larger one.
constexpr qsizetype lineLength = isInstrumented ? 4'000'000 : 100'000'000;

constexpr char bar[] = "20240115,100000,1.5,1.7,1.4,1.6";
constexpr char record[] = "100000;1.50;1.70;1.40;1.60;0;0.00;0\n";

} // namespace

class TadataLongLineTest final : public CommandTest
{
    Q_OBJECT

private Q_SLOTS:
    void longLineIsOneLine_data();
    void longLineIsOneLine();
};

void TadataLongLineTest::longLineIsOneLine_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<QByteArray>("unit");
    const QByteArray nothing;
    const QByteArray wholeBar = QByteArray(bar) + ',';
    QTest::newRow("letters") << nothing << QByteArray("x");
    QTest::newRow("NUL bytes") << nothing << QByteArray(1, '\0');
    QTest::newRow("invalid UTF-8") << nothing << QByteArray("\xFF");
    QTest::newRow("carriage returns") << nothing << QByteArray("\r");
    QTest::newRow("bar before a long column") << wholeBar << QByteArray("x");
    QTest::newRow("bar before many empty columns") << wholeBar << QByteArray(",");
    QTest::newRow("bar before many columns") << wholeBar << QByteArray(",1");
    QTest::newRow("bars without line ends") << wholeBar << wholeBar;
}

void TadataLongLineTest::longLineIsOneLine()
{
    QFETCH(QByteArray, start);
    QFETCH(QByteArray, unit);
    const bool isBar = !start.isEmpty();

    const QByteArray normal = QByteArray(bar) + '\n';
    const Outcome outcome =
        import(normal + normal + start + unit.repeated(lineLength / unit.size()) + '\n' + normal);
    QCOMPARE(messageOf(outcome),
             isBar ? succeeded()
                   : failed(QStringLiteral("Ошибка при импорте 3-й строки:\n"
                                           "Недостаточное количество столбцов.")));
    QCOMPARE(readFile(path("store/NORD/MAIN/ALFA/20240115_60.iss")),
             QByteArray(record).repeated(isBar ? 4 : 2));

    if (!isInstrumented) {
        // The largest of the runs so far. The line, in two bytes for each character, stands in the
        // stream's buffer and by itself.
        rusage usage{};
        QCOMPARE(getrusage(RUSAGE_CHILDREN, &usage), 0);
        QVERIFY2(usage.ru_maxrss * qint64(1024) < 6 * lineLength,
                 qPrintable(QStringLiteral("%1 KB").arg(usage.ru_maxrss)));
    }
}

QTEST_GUILESS_MAIN(TadataLongLineTest)
#include "tst_tadatalongline.moc"
