// SPDX-License-Identifier: MIT
#include "importfailures.h"

#include "support/filetree.h"
#include "support/otheruser.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <sys/stat.h>

#include <cerrno>

class TestImportFailures final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhyAFileIsNotOpened();
    void keepsTheReasonThatItIsGiven();
    void namesTheFileAndWhatIsWrong();
};

void TestImportFailures::saysWhyAFileIsNotOpened()
{
    const testsupport::OtherUser nobody;
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("in.csv"));
    QCOMPARE(tadata::whyNotOpened(path), qt_error_string(ENOENT));
    QVERIFY(QDir().mkdir(path));
    QCOMPARE(tadata::whyNotOpened(path), qt_error_string(EISDIR));
    QVERIFY(QDir().rmdir(path));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QCOMPARE(tadata::whyNotOpened(path), QStringLiteral("это не обычный файл"));
    QVERIFY(QFile::remove(path));
    testsupport::writeFile(path, "text");
    QCOMPARE(tadata::whyNotOpened(path), QString());
    const testsupport::Permissions closed(path, 0200);
    QCOMPARE(tadata::whyNotOpened(path), qt_error_string(EACCES));
    const vexdesk::Failure failure = tadata::cannotOpen(path);
    QCOMPARE(failure.message, QStringLiteral("Невозможно открыть файл ") + path);
    QCOMPARE(failure.reason, qt_error_string(EACCES));
}

void TestImportFailures::keepsTheReasonThatItIsGiven()
{
    const QString missing = QStringLiteral("/missing/in.csv");
    QCOMPARE(tadata::cannotOpen(missing, QStringLiteral("so")).reason, QStringLiteral("so"));
    QCOMPARE(tadata::cannotWrite(missing, QStringLiteral("so")).reason, QStringLiteral("so"));
}

void TestImportFailures::namesTheFileAndWhatIsWrong()
{
    const QString path = QStringLiteral("/a/%2");
    const QString reason = QStringLiteral("%1");
    QCOMPARE(tadata::cannotRead(path, reason).message,
             QStringLiteral("Невозможно прочитать файл /a/%2: %1"));
    QCOMPARE(tadata::cannotMakeDir(path, reason).message,
             QStringLiteral("Невозможно создать каталог /a/%2: %1"));
    QCOMPARE(tadata::wrongLine(7, reason).message,
             QStringLiteral("Ошибка при импорте 7-й строки:\n%1."));
    QCOMPARE(tadata::wrongStoredLine(path, 7).message,
             QStringLiteral("Файл /a/%2, строка 7: не запись бара"));
    QCOMPARE(tadata::tickerComesAgain(7, QStringLiteral("X")).message,
             QStringLiteral("Ошибка при импорте 7-й строки:\nфайл возвращается к коду 'X', такой "
                            "файл импортируют с --mode merge."));
}

QTEST_GUILESS_MAIN(TestImportFailures)
#include "tst_importfailures.moc"
