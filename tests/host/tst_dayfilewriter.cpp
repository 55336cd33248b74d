// SPDX-License-Identifier: MIT
#include <vexdesk/history/dayfilewriter.h>
#include <vexdesk/history/recordline.h>

#include "support/faults.h"
#include "support/filesizelimit.h"
#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>

using testsupport::readFile;
using testsupport::writeFile;
using vexdesk::DayFileWriter;
using vexdesk::Outcome;

namespace {

const QString noFile = QStringLiteral("это не обычный файл");

// Each bar another one, in a line of this many bytes.
constexpr int lineLength = 28;

vexdesk::StoredBar bar(int number)
{
    vexdesk::StoredBar bar;
    bar.time = QTime(0, 0).addSecs(number);
    bar.open = bar.high = bar.low = bar.close = decimal(number % 90 + 10, 0);
    bar.volume = 1000 + number % 1000;
    return bar;
}

void write(DayFileWriter& writer, int count)
{
    for (int number = 0; number < count; ++number)
        writer.write(bar(number));
}

QByteArray lines(int count)
{
    std::array<char, vexdesk::maxRecordLine> line;
    QByteArray content;
    for (int number = 0; number < count; ++number)
        content.append(line.data(),
                       vexdesk::writeRecordLine(line.data(), bar(number)) - line.data());
    return content;
}

} // namespace

class TestDayFileWriter final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void writesOneFileAfterTheOther();
    void handsOverWholeLines();
    void aFullDiskLeavesWholeLines_data();
    void aFullDiskLeavesWholeLines();
    void whatIsKeptOnlyInPartIsSaidAtTheEnd_data();
    void whatIsKeptOnlyInPartIsSaidAtTheEnd();
    void writesNothingMoreAfterAFailure();
    void whatIsNoFileIsNotOpened();
    void aNewFileHasThePermissionsOfAnyFile();
    void closesTheFileWhenItGoes();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestDayFileWriter::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QCOMPARE(lines(2000).size(), 2000 * lineLength);
}

void TestDayFileWriter::writesOneFileAfterTheOther()
{
    DayFileWriter writer;
    QVERIFY(writer.path().isNull());
    QVERIFY(writer.close());
    writeFile(path("second"), lines(5));
    for (const char* name : {"first", "second"}) {
        QVERIFY(writer.open(path(name)));
        QCOMPARE(writer.path(), path(name));
        write(writer, 3);
        QVERIFY(writer.close());
        QCOMPARE(readFile(path(name)), lines(3));
        QVERIFY(writer.close());
    }
    QVERIFY(writer.open(path("empty")));
    QVERIFY(writer.close());
    QCOMPARE(readFile(path("empty")), QByteArray(""));
}

// Whoever reads the file meanwhile finds no half of one.
void TestDayFileWriter::handsOverWholeLines()
{
    const testsupport::WrittenPieces written(path("day"));
    DayFileWriter writer;
    QVERIFY(writer.open(path("day")));
    write(writer, 5000);
    QVERIFY(writer.close());
    QCOMPARE(readFile(path("day")), lines(5000));
    const QByteArrayList pieces = written.pieces();
    QVERIFY(pieces.size() > 2 && pieces.size() < 100);
    for (const QByteArray& piece : pieces)
        QVERIFY(piece.endsWith('\n'));
    QCOMPARE(pieces.join(), lines(5000));
}

void TestDayFileWriter::aFullDiskLeavesWholeLines_data()
{
    QTest::addColumn<int>("room");
    for (int room : {0, 1, lineLength - 1, lineLength, lineLength + 1, 50 * lineLength,
                     1000 * lineLength - 1, 1000 * lineLength, 1000 * lineLength + 1})
        QTest::addRow("%d bytes", room) << room;
}

// A part of a line would pass for a bar of other prices.
void TestDayFileWriter::aFullDiskLeavesWholeLines()
{
    QFETCH(const int, room);
    DayFileWriter writer;
    QVERIFY(writer.open(path("day")));
    Outcome closed;
    {
        const testsupport::FileSizeLimit full(static_cast<rlim_t>(room));
        write(writer, 2000);
        closed = writer.close();
    }
    QCOMPARE(closed.message(), qt_error_string(EFBIG));
    QCOMPARE(readFile(path("day")), lines(room / lineLength));
    // The next one may find room.
    QVERIFY(writer.open(path("next")));
    write(writer, 2000);
    QVERIFY(writer.close());
    QCOMPARE(readFile(path("next")), lines(2000));
}

void TestDayFileWriter::whatIsKeptOnlyInPartIsSaidAtTheEnd_data()
{
    QTest::addColumn<testsupport::SystemCall>("call");
    QTest::addColumn<int>("error");
    QTest::newRow("written") << testsupport::SystemCall::Write << EIO;
    QTest::newRow("closed") << testsupport::SystemCall::Close << ENOSPC;
}

void TestDayFileWriter::whatIsKeptOnlyInPartIsSaidAtTheEnd()
{
    QFETCH(const testsupport::SystemCall, call);
    QFETCH(const int, error);
    DayFileWriter writer;
    QVERIFY(writer.open(path("day")));
    write(writer, 3);
    const testsupport::Fault fault(call, path("day"), error);
    QCOMPARE(writer.close().message(), qt_error_string(error));
    QVERIFY(writer.close());
}

void TestDayFileWriter::writesNothingMoreAfterAFailure()
{
    DayFileWriter writer;
    QVERIFY(writer.open(path("day")));
    const auto writeOnABrokenDisk = [&] {
        const testsupport::Fault broken(testsupport::SystemCall::Write, path("day"), EIO);
        write(writer, 2000);
        return broken.failed();
    };
    QCOMPARE(writeOnABrokenDisk(), 1);
    write(writer, 2000);
    QCOMPARE(writer.close().message(), qt_error_string(EIO));
    QCOMPARE(readFile(path("day")), QByteArray(""));
}

void TestDayFileWriter::whatIsNoFileIsNotOpened()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    DayFileWriter writer;
    QCOMPARE(writer.open(path("pipe")).message(), noFile);
    QCOMPARE(writer.open(m_dir->path()).message(), noFile);
    QCOMPARE(writer.open(path("missing/day")).message(), qt_error_string(ENOENT));
    QVERIFY(writer.close());
    writeFile(path("target"), "old");
    QVERIFY(QFile::link(path("target"), path("link")));
    QVERIFY(writer.open(path("link")));
    write(writer, 1);
    QVERIFY(writer.close());
    QCOMPARE(readFile(path("target")), lines(1));
}

void TestDayFileWriter::aNewFileHasThePermissionsOfAnyFile()
{
    for (const mode_t mask : {0, 027}) {
        const QString name = path(mask == 0 ? "open" : "closed");
        const mode_t before = ::umask(mask);
        DayFileWriter writer;
        const Outcome opened = writer.open(name);
        ::umask(before);
        QVERIFY(opened && writer.close());
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(name).constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777, mode_t(0666) & ~mask);
    }
}

void TestDayFileWriter::closesTheFileWhenItGoes()
{
    {
        DayFileWriter writer;
        QVERIFY(writer.open(path("day")));
        write(writer, 1);
    }
    QCOMPARE(readFile(path("day")), lines(1));
}

QTEST_GUILESS_MAIN(TestDayFileWriter)
#include "tst_dayfilewriter.moc"
