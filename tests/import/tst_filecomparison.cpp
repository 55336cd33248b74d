// SPDX-License-Identifier: MIT
#include "filecomparison.h"

#include "support/faults.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <memory>

using tadata::FileComparison;
using testsupport::writeFile;

class TestFileComparison final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }

    void findsTheVeryBytes_data();
    void findsTheVeryBytes();
    void comparesOneFileAfterTheOther();
    void failsForWhatIsNoFile();
    void failsForWhatCannotBeRead();

private:
    QString path() const { return m_dir->filePath(QStringLiteral("20240115_60.iss")); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

vexdesk::StoredBar barOf(int number)
{
    vexdesk::StoredBar bar;
    bar.time = QTime(0, 0).addSecs(number);
    bar.volume = number;
    return bar;
}

QByteArray linesOf(int bars)
{
    QByteArray lines;
    std::array<char, vexdesk::maxRecordLine> line;
    for (int number = 0; number < bars; ++number)
        lines.append(line.data(),
                     vexdesk::writeRecordLine(line.data(), barOf(number)) - line.data());
    return lines;
}

bool isSame(FileComparison& comparison, int bars)
{
    for (int number = 0; number < bars; ++number)
        comparison.write(barOf(number));
    const vexdesk::Result<bool> same = comparison.close();
    return same && *same;
}

} // namespace

void TestFileComparison::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestFileComparison::findsTheVeryBytes_data()
{
    QTest::addColumn<int>("bars");
    // More than are read at a time, too.
    for (const int bars : {0, 1, 2, 700, 5000})
        QTest::addRow("%d bars", bars) << bars;
}

void TestFileComparison::findsTheVeryBytes()
{
    QFETCH(const int, bars);
    const QByteArray lines = linesOf(bars);
    FileComparison comparison;
    const auto isSameAs = [&](const QByteArray& content) {
        writeFile(path(), content);
        return comparison.open(path()) && isSame(comparison, bars);
    };
    QVERIFY(isSameAs(lines));
    QVERIFY(!isSameAs(lines + '\n'));
    QVERIFY(!isSameAs(lines + linesOf(1)));
    if (bars == 0)
        return;
    QVERIFY(!isSameAs(lines.chopped(1)));
    QVERIFY(!isSameAs(QByteArray("")));
    for (qsizetype place = 0; place < lines.size();
         place += std::max<qsizetype>(97, lines.size() / 50)) {
        QByteArray other = lines;
        other[place] = other[place] == '1' ? '2' : '1';
        QVERIFY2(!isSameAs(other), qPrintable(QString::number(place)));
    }
}

void TestFileComparison::comparesOneFileAfterTheOther()
{
    const QString longer = m_dir->filePath(QStringLiteral("20240116_60.iss"));
    writeFile(path(), linesOf(2));
    writeFile(longer, linesOf(3));
    FileComparison comparison;
    QVERIFY(!comparison.isOpen());
    QVERIFY(comparison.open(longer));
    QVERIFY(comparison.isOpen());
    comparison.write(barOf(0));
    // What was left of the one before is not compared.
    QVERIFY(comparison.open(path()));
    QVERIFY(isSame(comparison, 2));
    QVERIFY(!comparison.isOpen());
    QVERIFY(comparison.open(longer));
    QVERIFY(!isSame(comparison, 2));
    QVERIFY(comparison.open(longer));
    QVERIFY(isSame(comparison, 3));
}

void TestFileComparison::failsForWhatIsNoFile()
{
    FileComparison comparison;
    const QString wanted = QStringLiteral("Невозможно открыть файл ") + path();
    QCOMPARE(comparison.open(path()).message(), wanted);
    QVERIFY(!comparison.isOpen());
    QVERIFY(QDir().mkpath(path()));
    QCOMPARE(comparison.open(path()).message(), wanted);
    QVERIFY(QDir().rmdir(path()));
    // Nobody writes into it, and nobody is waited for.
    QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    QCOMPARE(comparison.open(path()).message(), wanted);
}

void TestFileComparison::failsForWhatCannotBeRead()
{
    writeFile(path(), linesOf(3));
    FileComparison comparison;
    {
        const testsupport::Fault broken(testsupport::SystemCall::Read, path());
        QVERIFY(comparison.open(path()));
        comparison.write(barOf(0));
        const vexdesk::Result<bool> same = comparison.close();
        QVERIFY2(same.message().startsWith(QStringLiteral("Невозможно прочитать файл ") + path()),
                 qPrintable(same.message()));
        QVERIFY(!comparison.isOpen());
    }
    QVERIFY(comparison.open(path()));
    QVERIFY(isSame(comparison, 3));
}

QTEST_GUILESS_MAIN(TestFileComparison)
#include "tst_filecomparison.moc"
