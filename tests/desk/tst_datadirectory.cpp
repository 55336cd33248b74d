// SPDX-License-Identifier: MIT
#include "desk/datadirectory.h"
#include "desk/deskapplication.h"
#include "messageboxes.h"
#include "support/filetree.h"
#include "support/hands.h"
#include "support/modalsteps.h"
#include "support/otheruser.h"
#include "support/strictlog.h"
#include "support/userhands.h"

#include <vexdesk/icore.h>

#include <QtCore/QLockFile>
#include <QtCore/QProcess>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <unistd.h>

#include <sys/mount.h>
#include <sys/stat.h>

#include <optional>

using vexdesk::DataDirectory;

class TestDataDirectory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theFirstTerminalTakesIt();
    void theSecondIsAsked_data();
    void theSecondIsAsked();
    void enterEndsTheSecond();
    void whatAnEndedTerminalLeftIsInNobodysWay_data();
    void whatAnEndedTerminalLeftIsInNobodysWay();
    void aTerminalThatRunsForLongKeepsIt();
    void isFreeAgainAfterwards();

    void isMadeWhereThereIsNone();
    void canBeWritten();
    void aReadOnlyOneIsNamed();
    void aFullOneIsNamed();
    void aReadOnlyOneIsNobodys();

private:
    QString lockFile() const { return m_path + QStringLiteral("/vexdesk.lock"); }

    QString m_path;
};

void TestDataDirectory::init()
{
    testsupport::failOnStrayWarnings();
    m_path = QCoreApplication::applicationDirPath() + QStringLiteral("/user");
    QDir(m_path).removeRecursively();
    QVERIFY(QDir().mkpath(m_path));
}

void TestDataDirectory::cleanup()
{
    QDir(m_path).removeRecursively();
}

void TestDataDirectory::theFirstTerminalTakesIt()
{
    const testsupport::ModalSteps nothingIsAsked;
    const DataDirectory first;
    QVERIFY(!first.isTaken());
    QVERIFY(first.mayBeUsed());
    QCOMPARE(nothingIsAsked.complaint(), QString());
    const DataDirectory second;
    QVERIFY(second.isTaken());
}

void TestDataDirectory::theSecondIsAsked_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("end") << QStringLiteral("&Завершить") << false;
    QTest::newRow("go on") << QStringLiteral("&Продолжить") << true;
}

void TestDataDirectory::theSecondIsAsked()
{
    QFETCH(const QString, answer);
    QFETCH(const bool, goesOn);
    const DataDirectory first;
    const DataDirectory second;
    testsupport::ModalSteps steps;
    steps.on<QMessageBox>([this, &answer](QMessageBox* box) {
        QVERIFY2(box->text().contains(QDir::toNativeSeparators(m_path)), qPrintable(box->text()));
        QVERIFY2(box->text().contains(QString::number(QCoreApplication::applicationPid())),
                 qPrintable(box->text()));
        for (QAbstractButton* const button : box->buttons()) {
            if (button->text() == answer)
                return testsupport::click(button);
        }
    });
    QCOMPARE(second.mayBeUsed(), goesOn);
    QCOMPARE(steps.complaint(), QString());
}

void TestDataDirectory::enterEndsTheSecond()
{
    const DataDirectory first;
    const DataDirectory second;
    const desktest::MessageBoxes boxes; // presses Enter
    QVERIFY(!second.mayBeUsed());
    QCOMPARE(boxes.titles(), QStringList{QStringLiteral("Терминал уже запущен")});
    testsupport::ModalSteps steps;
    steps.on<QMessageBox>([](QMessageBox* box) { hands::keyClick(box, Qt::Key_Escape); });
    QVERIFY(!second.mayBeUsed());
}

void TestDataDirectory::whatAnEndedTerminalLeftIsInNobodysWay_data()
{
    QTest::addColumn<QByteArray>("left");
    // As the lock itself writes it, with the process of a program that has ended.
    QProcess ended;
    ended.start(QStringLiteral("true"), QStringList());
    QVERIFY(ended.waitForStarted());
    const QByteArray process = QByteArray::number(ended.processId());
    QVERIFY(ended.waitForFinished());
    QByteArray real;
    {
        init();
        const DataDirectory running;
        real = testsupport::readFile(lockFile());
    }
    const QByteArray own = QByteArray::number(QCoreApplication::applicationPid());
    QVERIFY(real.startsWith(own + '\n'));
    QTest::newRow("ended") << process + real.mid(own.size());
    QTest::newRow("another program has its number now")
        << QByteArray(real).replace("tst_datadirectory", "vexdesk-desk");
    QTest::newRow("cut") << QByteArray();
}

void TestDataDirectory::whatAnEndedTerminalLeftIsInNobodysWay()
{
    QFETCH(const QByteArray, left);
    testsupport::writeFile(lockFile(), left);
    const DataDirectory directory;
    QVERIFY(!directory.isTaken());
    QVERIFY(directory.mayBeUsed());
    const DataDirectory second;
    QVERIFY(second.isTaken());
}

void TestDataDirectory::aTerminalThatRunsForLongKeepsIt()
{
    const DataDirectory first;
    QFile lock(lockFile());
    QVERIFY(lock.open(QIODevice::ReadWrite));
    QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addDays(-30),
                             QFileDevice::FileModificationTime));
    lock.close();
    const DataDirectory second;
    QVERIFY(second.isTaken());
}

void TestDataDirectory::isFreeAgainAfterwards()
{
    std::optional<DataDirectory> first(std::in_place);
    first.reset();
    std::optional<DataDirectory> second(std::in_place);
    QVERIFY(!second->isTaken());
    second->giveBack();
    const DataDirectory third;
    QVERIFY(!third.isTaken());
}

// The first terminal of a user of an installed one.
void TestDataDirectory::isMadeWhereThereIsNone()
{
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.filePath(QStringLiteral("new/share"))));
    const QString installed =
        QCoreApplication::applicationDirPath() + QStringLiteral("/.installed");
    testsupport::writeFile(installed, "");
    const auto restore = qScopeGuard([&installed] {
        QFile::remove(installed);
        qunsetenv("XDG_DATA_HOME");
    });
    const QString path = ICore::getDir(QString(), false).absolutePath();
    QVERIFY2(path.startsWith(home.path()), qPrintable(path));
    QVERIFY(!QDir(path).exists());
    const DataDirectory first;
    QVERIFY(first.canKeep());
    QVERIFY(!first.isTaken());
    QVERIFY(QFile::exists(path + QStringLiteral("/vexdesk.lock")));
}

void TestDataDirectory::canBeWritten()
{
    const DataDirectory directory;
    QVERIFY(directory.canKeep());
    QCOMPARE(testsupport::readTree(QDir(m_path)).keys(),
             QStringList{QStringLiteral("vexdesk.lock")});
}

void TestDataDirectory::aReadOnlyOneIsNamed()
{
    // For root it would be none.
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                              QFile::ExeOther));
    std::optional<testsupport::OtherUser> user(std::in_place);
    const QString fault = DataDirectory().canKeep().message();
    user.reset();
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(fault, QStringLiteral("В каталог данных %1 нельзя писать: импорт, правка истории и "
                                   "настройки не сохранятся.")
                        .arg(m_path));
}

void TestDataDirectory::aFullOneIsNamed()
{
    if (::mount("none", qPrintable(m_path), "tmpfs", 0, "size=32k") != 0)
        QSKIP("only root can make a small disk");
    QString fault;
    {
        const DataDirectory directory;
        fault = directory.canKeep().message();
    }
    QCOMPARE(::umount(qPrintable(m_path)), 0);
    QCOMPARE(fault, QStringLiteral("На диске каталога данных %1 нет места: импорт, правка истории "
                                   "и настройки не сохранятся.")
                        .arg(m_path));
}

void TestDataDirectory::aReadOnlyOneIsNobodys()
{
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                              QFile::ExeOther));
    std::optional<testsupport::OtherUser> user(std::in_place);
    const bool isTaken = DataDirectory().isTaken();
    user.reset();
    QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY2(!isTaken, "two terminals that cannot write do each other no harm");
}

int main(int argc, char** argv)
{
    const vexdesk::DeskApplication application(argc, argv);
    TestDataDirectory test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_datadirectory.moc"
