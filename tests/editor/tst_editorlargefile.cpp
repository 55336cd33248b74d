// SPDX-License-Identifier: MIT
// Day files of a hundred megabytes: more than any day has, and the editor does not mind.

#include "editortadatamodel.h"

#include "support/dayfiles.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <algorithm>
#include <functional>
#include <numeric>

using testsupport::barLine;
using testsupport::dayFile;
using testsupport::editedBarLine;

namespace {

constexpr qint64 megabyte = qint64(1024) * 1024;
constexpr qint64 large = 100 * megabyte;
const QDate day(2023, 1, 5);

// Many bars have the same second.
QTime timeOf(int number, int count)
{
    constexpr qint64 secondsPerDay = qint64(24) * 60 * 60;
    return QTime(0, 0).addSecs(static_cast<int>(number * secondsPerDay / count));
}

} // namespace

class TestEditorLargeFile final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void initTestCase();
    void takesAsMuchMemoryAsTheFile();
    void loadsFindsRemovesAndRewrites();
    void loadsAPartOfIt();
    void showsALineOfAHundredMegabytesAsOneRow();
    void rewritesALongField();

private:
    void load(EditorTADataModel& model, const QTime& from, const QTime& to) const
    {
        model.load(QDir(m_store.path()), QDateTime(day, from), QDateTime(day, to), 1);
    }
    QString path() const { return m_store.filePath(dayFile(day, 1)); }

    QTemporaryDir m_store;
    QByteArray m_content;
    int m_count = 0;
};

void TestEditorLargeFile::initTestCase()
{
    const qint64 lineSize = barLine(QTime(0, 0), 1'000'000).size();
    m_count = static_cast<int>(large / lineSize);
    m_content.reserve(large + megabyte);
    for (int number = 0; number < m_count; ++number)
        m_content += barLine(timeOf(number, m_count), 1'000'000 + number);
    QVERIFY(m_content.size() > 99 * megabyte);
}

void TestEditorLargeFile::takesAsMuchMemoryAsTheFile()
{
    testsupport::writeFile(path(), m_content);
    EditorTADataModel model(nullptr);
    load(model, QTime(0, 0), QTime(23, 59, 59));
    QCOMPARE(model.rowCount(), m_count);
    constexpr qint64 bytesPerRow = 16;
    QVERIFY2(model.memory() <= m_content.size() + m_count * bytesPerRow + megabyte,
             qPrintable(QString::number(model.memory())));
    model.delRowsFromFiles();
    QVERIFY(model.memory() < megabyte);
}

void TestEditorLargeFile::loadsFindsRemovesAndRewrites()
{
    testsupport::writeFile(path(), m_content);
    EditorTADataModel model(nullptr);
    load(model, QTime(0, 0), QTime(23, 59, 59));
    QCOMPARE(model.rowCount(), m_count);
    for (const int row : {0, 1, m_count / 2, m_count - 1}) {
        QCOMPARE(model.index(row, 1).data().toString(),
                 QStringLiteral("%1.10").arg(1'000'000 + row));
    }
    const int noon = model.find(QStringLiteral("20230105 120000"));
    QCOMPARE(timeOf(noon, m_count), QTime(12, 0));
    QCOMPARE(timeOf(noon + 1, m_count), QTime(12, 0, 1));

    // Every thousandth bar, and a hundred thousand in the midst, last of all the first.
    QList<int> rows(100'000);
    std::iota(rows.begin(), rows.end(), noon);
    for (int row = 0; row < m_count; row += 1000) {
        if (row < noon || row >= noon + rows.size())
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end(), std::greater<>());
    model.delRows(rows);
    QCOMPARE(model.rowCount(), m_count - rows.size());
    model.delRowsFromFiles();

    QByteArray expected;
    expected.reserve(m_content.size());
    for (int number = 0; number < m_count; ++number) {
        if (!rows.isEmpty() && rows.last() == number)
            rows.removeLast();
        else
            expected += editedBarLine(timeOf(number, m_count), 1'000'000 + number);
    }
    QVERIFY(testsupport::readFile(path()) == expected);
}

void TestEditorLargeFile::loadsAPartOfIt()
{
    testsupport::writeFile(path(), m_content);
    EditorTADataModel model(nullptr);
    load(model, QTime(23, 0), QTime(23, 0));
    const int first = m_count - m_count / 24;
    QVERIFY(model.rowCount() > 0);
    QVERIFY(qAbs(model.index(0, 1).data().toString().section(u'.', 0, 0).toInt() - 1'000'000 -
                 first) <= 1);
    QVERIFY(model.memory() < megabyte);
}

void TestEditorLargeFile::showsALineOfAHundredMegabytesAsOneRow()
{
    testsupport::writeFile(path(), barLine(QTime(10, 0), 1) + "100030" + QByteArray(large, ';') +
                                       '\n' + barLine(QTime(10, 1), 2));
    EditorTADataModel model(nullptr);
    load(model, QTime(10, 0), QTime(11, 0));
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.index(1, 0).data().toString(), QString());
    QVERIFY(model.memory() < megabyte);
}

void TestEditorLargeFile::rewritesALongField()
{
    const QByteArray longField(large, '7');
    testsupport::writeFile(path(), barLine(QTime(10, 0), 1) + "100030;1;1;1;1;" + longField +
                                       ";6;7\n" + barLine(QTime(10, 1), 2));
    EditorTADataModel model(nullptr);
    load(model, QTime(10, 0), QTime(11, 0));
    QCOMPARE(model.rowCount(), 3);
    model.delRows({0});
    model.delRowsFromFiles();
    QVERIFY(testsupport::readFile(path()) ==
            "100030;1;1;1;1;6;" + longField + ";7\n" + editedBarLine(QTime(10, 1), 2));
}

QTEST_GUILESS_MAIN(TestEditorLargeFile)
#include "tst_editorlargefile.moc"
