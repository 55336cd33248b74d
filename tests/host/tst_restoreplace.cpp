// SPDX-License-Identifier: MIT
#include <vexdesk/history/restoreplace.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <memory>

using testsupport::writeFile;
using vexdesk::makeRestorePlace;
using vexdesk::restorePlace;

class TestRestorePlace final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aStoreThatIsNotThereHasAPlace_data();
    void aStoreThatIsNotThereHasAPlace();
    void aStoreThatCannotBeLookedAtHasNone();
    void isInTheDataDirectoryOnceItIsMadeThere();
    void aPlaceThatCannotBeLookedAtIsNotMissing();
    void saysWhyItCanBeMadeNowhere();

private:
    QString inData() const
    {
        const QByteArray root = QFile::encodeName(m_root);
        const QByteArray sum = QCryptographicHash::hash(root, QCryptographicHash::Sha256);
        return m_user.filePath(QStringLiteral("restore/") + QString::fromLatin1(sum.toHex()));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QDir m_user;
    QString m_root;
    QString m_beside;
};

void TestRestorePlace::init()
{
    testsupport::failOnStrayWarnings();
    m_user = testsupport::newUserFolder();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("store")));
    m_root = QFileInfo(m_dir->filePath(QStringLiteral("store"))).canonicalFilePath();
    m_beside = m_root + QStringLiteral("-restore");
}

void TestRestorePlace::cleanup()
{
    m_dir.reset();
    QVERIFY(m_user.removeRecursively());
}

void TestRestorePlace::aStoreThatIsNotThereHasAPlace_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("root");
    QTest::newRow("below the root") << QStringLiteral("/nonexistent") << "/nonexistent";
    QTest::newRow("far below") << QStringLiteral("/nonexistent/a/b") << "/nonexistent/a/b";
    QTest::newRow("uncleaned") << QStringLiteral("/nonexistent/./a/../b/") << "/nonexistent/b";
}

void TestRestorePlace::aStoreThatIsNotThereHasAPlace()
{
    QFETCH(const QString, name);
    QFETCH(const QString, root);
    const auto place = restorePlace(QDir(name));
    QVERIFY(place);
    QCOMPARE(place->root, root);
    QCOMPARE(place->path, root + QStringLiteral("-restore"));
    QVERIFY(place->isBesideStore());
}

void TestRestorePlace::aStoreThatCannotBeLookedAtHasNone()
{
    // Longer than any name.
    const QString root = m_dir->filePath(QString(300, u'x'));
    const auto place = restorePlace(QDir(root));
    QVERIFY(!place);
    QVERIFY2(place.message().startsWith(QStringLiteral("Невозможно прочитать каталог ") + root),
             qPrintable(place.message()));
    QCOMPARE(place.failure().reason, qt_error_string(ENAMETOOLONG));
    QVERIFY(!makeRestorePlace(QDir(root)));
}

void TestRestorePlace::isInTheDataDirectoryOnceItIsMadeThere()
{
    QCOMPARE(restorePlace(QDir(m_root))->path, m_beside);
    QVERIFY(QDir().mkpath(inData()));
    QCOMPARE(restorePlace(QDir(m_root))->path, inData());
    QVERIFY(!restorePlace(QDir(m_root))->isBesideStore());
    // As for somebody who could make nothing beside the store.
    writeFile(m_beside, "in the way");
    QCOMPARE(restorePlace(QDir(m_root))->path, inData());
    QVERIFY(QFile::remove(m_beside));
    QVERIFY(QDir().mkpath(m_beside));
    QCOMPARE(makeRestorePlace(QDir(m_root))->path, m_beside);
}

// Locks in two places would lock nothing.
void TestRestorePlace::aPlaceThatCannotBeLookedAtIsNotMissing()
{
    // With what is added to it the name is too long.
    m_root = m_root.chopped(5) + QString(250, u'x');
    QVERIFY(QDir().mkpath(m_root));
    QVERIFY(QDir().mkpath(inData()));
    const QString beside = m_root + QStringLiteral("-restore");
    QCOMPARE(restorePlace(QDir(m_root))->path, beside);
    QVERIFY(m_user.removeRecursively());
    const auto made = makeRestorePlace(QDir(m_root));
    QVERIFY(!made);
    QVERIFY2(made.message().contains(beside) && made.message().contains(inData()),
             qPrintable(made.message()));
    QCOMPARE(made.failure().reason, qt_error_string(ENAMETOOLONG));
    QVERIFY(!QFileInfo::exists(inData()));
}

void TestRestorePlace::saysWhyItCanBeMadeNowhere()
{
    writeFile(m_beside, "in the way");
    writeFile(m_user.filePath(QStringLiteral("restore")), "in the way");
    const auto made = makeRestorePlace(QDir(m_root));
    QVERIFY(!made);
    QVERIFY2(made.message().contains(m_beside) && made.message().contains(inData()),
             qPrintable(made.message()));
    QCOMPARE(made.failure().reason,
             qt_error_string(EEXIST) + QStringLiteral("; ") + qt_error_string(ENOTDIR));
    // The same reason is said once.
    QVERIFY(QFile::remove(m_user.filePath(QStringLiteral("restore"))));
    writeFile(inData(), "in the way");
    QCOMPARE(makeRestorePlace(QDir(m_root)).failure().reason, qt_error_string(EEXIST));
}

QTEST_GUILESS_MAIN(TestRestorePlace)
#include "tst_restoreplace.moc"
