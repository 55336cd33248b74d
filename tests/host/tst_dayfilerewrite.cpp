// SPDX-License-Identifier: MIT
#include "support/faults.h"
#include "support/filesizelimit.h"
#include "support/filetree.h"
#include "support/otheruser.h"
#include "support/strictlog.h"

#include <vexdesk/history/dayfilerewrite.h>
#include <vexdesk/history/filestate.h>
#include <vexdesk/history/recordline.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <memory>

using testsupport::Fault;
using testsupport::OtherUser;
using testsupport::readFile;
using testsupport::SystemCall;
using testsupport::writeFile;
using vexdesk::fileState;
using vexdesk::FileState;

using Tree = QMap<QString, QByteArray>;

namespace {

const QString name = QStringLiteral("20181214_60.iss");
const QByteArray sampleLine = "093000;1.50;1.70;-0.05;1.60;1234567;1975307.20;-42";
constexpr mode_t everybody = 0777;
constexpr mode_t nobodyWrites = 0555;

QByteArray rewritten(const QByteArray& line)
{
    QByteArray content;
    vexdesk::appendRewritten(content, *vexdesk::splitRecordLine(line));
    return content;
}

// Lines of more than one call's worth.
QByteArray manyLines(char character)
{
    QByteArray lines;
    for (int size = 1; lines.size() < qsizetype(3) * 1024 * 1024; size = size % 5000 + 7)
        lines += QByteArray(size, character) + '\n';
    return lines;
}

struct stat statusOf(const QString& path)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("%s cannot be looked at", qPrintable(path));
    return status;
}

void hardLink(const QString& from, const QString& to)
{
    QCOMPARE(::link(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()), 0);
}

} // namespace

class TestDayFileRewrite final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void rewritesWithValueBeforeVolume();
    void rewritingTwiceRestoresTheOrder();
    void rewritesFieldsAsTheyAre();
    void withoutRowsRemovesTheFile();
    void leavesADirectoryAlone();
    void neverWaitsForAPipe();
    void makesNoFile_data();
    void makesNoFile();

    void leavesAFileAloneThatHasChanged_data();
    void leavesAFileAloneThatHasChanged();
    void looksAgainBeforeItReplaces_data();
    void looksAgainBeforeItReplaces();
    void leavesAReadOnlyFileAlone_data();
    void leavesAReadOnlyFileAlone();

    void keepsPermissions_data();
    void keepsPermissions();
    void keepsTheOwner();
    void keepsAnAccessList();
    void writesInPlaceWhereItCannotKeepTheOwner();
    void followsALink();
    void leavesOtherHardLinksAlone();

    void isWholeOrNotAtAll();
    void leavesNothingBehindWhenACallFails_data();
    void leavesNothingBehindWhenACallFails();
    void writesInPlaceWhereTheDirectoryRefuses_data();
    void writesInPlaceWhereTheDirectoryRefuses();
    void writesInPlaceInAReadOnlyDirectory();
    void putsTheOldContentBack();
    void saysThatTheFileIsBroken_data();
    void saysThatTheFileIsBroken();
    void handsOverWholeLines_data();
    void handsOverWholeLines();

    void removingKeepsOtherHardLinks();
    void removingALinkEmptiesItsTarget();
    void emptiesWhatItCannotRemove_data();
    void emptiesWhatItCannotRemove();
    void emptiesTheTargetOfALinkThatItCannotRemove();
    void tellsWhatItCouldNotEmpty();

    void saysWhatToDo_data();
    void saysWhatToDo();
    void leavesAFileAloneThatIsCutMeanwhile();
    void rewritesOneByteInPlace();
    void saysWhatCannotBeLookedAt();
    void importsIntoNothingThatIsNoFile();
    void saysWhatMayNotBeOpened();
    void importsIntoTheFileThatWasRead_data();
    void importsIntoTheFileThatWasRead();
    void makesNoDirectory();
    void makesNoDirectoryBehindALink();

private:
    QDir dir() const { return QDir(m_store->path()); }
    QString path(const QString& file = name) const { return m_store->filePath(file); }
    Tree stored() const { return testsupport::readTree(dir()); }
    QString rewrite(const QByteArray& content) const
    {
        const std::optional<FileState> state = fileState(path());
        return vexdesk::rewriteDayFile(dir(), name, content, state.value_or(FileState())).message();
    }
    void becomeOtherUser(); ///< with a store of his own
    // A file of the store whose directory may not be written to by the one that runs the test.
    void makeReadOnlyDirectory(const QByteArray& content);
    // Whether a sentence tells of the file.
    bool isToldOf(const QString& problem) const
    {
        return problem.contains(path()) && problem.endsWith(u'.');
    }

    std::unique_ptr<QTemporaryDir> m_store;
    // In this order: first the directory may be written to again.
    std::unique_ptr<OtherUser> m_otherUser;
    std::unique_ptr<testsupport::Permissions> m_permissions;
};

void TestDayFileRewrite::init()
{
    testsupport::failOnStrayWarnings();
    m_store = std::make_unique<QTemporaryDir>();
    QVERIFY(m_store->isValid());
}

void TestDayFileRewrite::cleanup()
{
    m_permissions.reset();
    m_otherUser.reset();
    m_store.reset();
}

void TestDayFileRewrite::becomeOtherUser()
{
    m_store.reset();
    m_otherUser = std::make_unique<OtherUser>();
    m_store = std::make_unique<QTemporaryDir>();
}

void TestDayFileRewrite::makeReadOnlyDirectory(const QByteArray& content)
{
    becomeOtherUser();
    writeFile(path(), content);
    m_permissions = std::make_unique<testsupport::Permissions>(m_store->path(), nobodyWrites);
}

void TestDayFileRewrite::rewritesWithValueBeforeVolume()
{
    writeFile(path(), "old content that is longer than what comes\n");
    QCOMPARE(rewrite(rewritten(sampleLine)), QString());
    QCOMPARE(stored(), (Tree{{name, "093000;1.50;1.70;-0.05;1.60;1975307.20;1234567;-42\n"}}));
}

void TestDayFileRewrite::rewritingTwiceRestoresTheOrder()
{
    writeFile(path(), sampleLine + "\n");
    for (int pass = 0; pass < 2; ++pass)
        QCOMPARE(rewrite(rewritten(readFile(path()).chopped(1))), QString());
    QCOMPARE(readFile(path()), sampleLine + "\n");
}

void TestDayFileRewrite::rewritesFieldsAsTheyAre()
{
    QCOMPARE(rewritten(";;;;;;;"), QByteArray(";;;;;;;\n"));
    QCOMPARE(rewritten("t; o ;h;l;c;1e3;+5.;Ё\r"), QByteArray("t; o ;h;l;c;+5.;1e3;Ё\r\n"));
}

void TestDayFileRewrite::withoutRowsRemovesTheFile()
{
    writeFile(path(), sampleLine);
    QCOMPARE(rewrite(QByteArray()), QString());
    QVERIFY(stored().isEmpty());
}

void TestDayFileRewrite::leavesADirectoryAlone()
{
    QVERIFY(dir().mkdir(name));
    for (const QByteArray& content : {QByteArray(), QByteArray("new\n")})
        QVERIFY(isToldOf(rewrite(content)));
    QVERIFY(QFileInfo(path()).isDir());
}

// Nobody reads from it: to open it would be to wait for ever.
void TestDayFileRewrite::neverWaitsForAPipe()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    for (const QByteArray& content : {QByteArray(), QByteArray("new\n")})
        QVERIFY(isToldOf(rewrite(content)));
    QVERIFY(S_ISFIFO(statusOf(path()).st_mode));
}

void TestDayFileRewrite::makesNoFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("with rows") << rewritten(sampleLine);
    QTest::newRow("without rows") << QByteArray();
}

void TestDayFileRewrite::makesNoFile()
{
    QFETCH(const QByteArray, content);
    QVERIFY(isToldOf(rewrite(content)));
    QVERIFY(dir().isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    const QDir missing(dir().filePath(QStringLiteral("missing")));
    QVERIFY(!vexdesk::rewriteDayFile(missing, name, content, FileState()));
    QVERIFY(!missing.exists());
}

void TestDayFileRewrite::leavesAFileAloneThatHasChanged_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<QByteArray>("content");
    for (const char* what : {"size", "time", "file"}) {
        QTest::addRow("another %s, rows are left", what) << QByteArray(what) << QByteArray("new\n");
        QTest::addRow("another %s, none is left", what) << QByteArray(what) << QByteArray();
    }
}

void TestDayFileRewrite::leavesAFileAloneThatHasChanged()
{
    QFETCH(const QByteArray, what);
    QFETCH(const QByteArray, content);
    writeFile(path(), "old\n");
    FileState asRead = *fileState(path());
    if (what == "size")
        ++asRead.size;
    else if (what == "time")
        ++asRead.modified;
    else
        ++asRead.inode;
    const QString problem = vexdesk::rewriteDayFile(dir(), name, content, asRead).message();
    QVERIFY(isToldOf(problem));
    QVERIFY2(problem.contains(QStringLiteral("изменился")), qPrintable(problem));
    QCOMPARE(stored(), (Tree{{name, "old\n"}}));
}

void TestDayFileRewrite::looksAgainBeforeItReplaces_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<int>("refusal");
    const QString temporary = QStringLiteral(".tmp");
    QTest::newRow("whole") << SystemCall::Write << temporary << 0;
    QTest::newRow("in place") << SystemCall::Open << temporary << EACCES;
}

// An import that comes between.
void TestDayFileRewrite::looksAgainBeforeItReplaces()
{
    QFETCH(const SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const int, refusal);
    writeFile(path(), "old\n");
    const testsupport::Meanwhile meanwhile(call, pathEnd,
                                           [this] { writeFile(path(), "imported\n"); });
    std::unique_ptr<Fault> fault;
    if (refusal != 0)
        fault = std::make_unique<Fault>(call, pathEnd, refusal);
    QVERIFY(isToldOf(rewrite("new\n")));
    QCOMPARE(stored(), (Tree{{name, "imported\n"}}));
}

void TestDayFileRewrite::leavesAReadOnlyFileAlone_data()
{
    makesNoFile_data();
}

void TestDayFileRewrite::leavesAReadOnlyFileAlone()
{
    QFETCH(const QByteArray, content);
    becomeOtherUser();
    writeFile(path(), "old\n");
    const testsupport::Permissions readOnly(path(), 0444);
    QVERIFY(isToldOf(rewrite(content)));
    QCOMPARE(stored(), (Tree{{name, "old\n"}}));
}

void TestDayFileRewrite::keepsPermissions_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {0600, 0640, 0664, 0666, 0777})
        QTest::addRow("%o", static_cast<unsigned>(mode)) << mode;
}

void TestDayFileRewrite::keepsPermissions()
{
    QFETCH(const int, mode);
    writeFile(path(), "old\n");
    QCOMPARE(::chmod(QFile::encodeName(path()).constData(), static_cast<mode_t>(mode)), 0);
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(readFile(path()), QByteArray("new\n"));
    QCOMPARE(int(statusOf(path()).st_mode) & 07777, mode);
}

void TestDayFileRewrite::keepsTheOwner()
{
    if (::geteuid() != 0)
        QSKIP("Only the superuser gives files away.");
    constexpr uid_t user = 4711;
    constexpr gid_t group = 4712;
    writeFile(path(), "old\n");
    QCOMPARE(::chown(QFile::encodeName(path()).constData(), user, group), 0);
    const ino_t before = statusOf(path()).st_ino;
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QVERIFY(statusOf(path()).st_ino != before);
    QCOMPARE(statusOf(path()).st_uid, user);
    QCOMPARE(statusOf(path()).st_gid, group);
}

// The list names one more user who may read; a new file would not have it.
void TestDayFileRewrite::keepsAnAccessList()
{
    // Version 2, then five entries of tag, permissions and id: owner, user 4711, group, mask,
    // others.
    constexpr std::array<unsigned char, 44> list{
        2, 0,    0,    0,   1,   0,   6,  0, 255, 255, 255, 255, 2,   0,  4,
        0, 0x67, 0x12, 0,   0,   4,   0,  4, 0,   255, 255, 255, 255, 16, 0,
        4, 0,    255,  255, 255, 255, 32, 0, 0,   0,   255, 255, 255, 255};
    const char* const attribute = "system.posix_acl_access";
    const QByteArray file = QFile::encodeName(path());
    writeFile(path(), "old\n");
    if (::setxattr(file.constData(), attribute, list.data(), list.size(), 0) != 0)
        QSKIP("The file system has no access lists.");
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QCOMPARE(::getxattr(file.constData(), attribute, nullptr, 0), ssize_t(list.size()));
}

void TestDayFileRewrite::writesInPlaceWhereItCannotKeepTheOwner()
{
    if (::geteuid() != 0)
        QSKIP("Only the superuser has files of somebody else.");
    writeFile(path(), "old\n");
    const testsupport::Permissions store(m_store->path(), everybody);
    const testsupport::Permissions file(path(), 0666);
    const struct stat before = statusOf(path());
    {
        const OtherUser other;
        QCOMPARE(rewrite("new\n"), QString());
    }
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QCOMPARE(statusOf(path()).st_ino, before.st_ino);
    QCOMPARE(statusOf(path()).st_uid, before.st_uid);
}

// A series on another disk: the link stays one.
void TestDayFileRewrite::followsALink()
{
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("bars"));
    writeFile(target, "old\n");
    const ino_t before = statusOf(target).st_ino;
    QVERIFY(QFile::link(target, path()));
    QCOMPARE(rewrite("new\n"), QString());
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(readFile(target), QByteArray("new\n"));
    QVERIFY(statusOf(target).st_ino != before);
    QCOMPARE(testsupport::readTree(QDir(elsewhere.path())).size(), 1);
    QCOMPARE(stored().size(), 1);
}

void TestDayFileRewrite::leavesOtherHardLinksAlone()
{
    writeFile(path(), "old\n");
    const QTemporaryDir copies;
    hardLink(path(), copies.filePath(name));
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QCOMPARE(readFile(copies.filePath(name)), QByteArray("old\n"));
}

void TestDayFileRewrite::isWholeOrNotAtAll()
{
    const QByteArray old(50'000, 'o');
    writeFile(path(), old);
    QString problem;
    {
        const testsupport::FileSizeLimit limit(16'384);
        problem = rewrite(QByteArray(40'000, 'n'));
    }
    QVERIFY(isToldOf(problem));
    QCOMPARE(stored(), (Tree{{name, old}}));
}

void TestDayFileRewrite::leavesNothingBehindWhenACallFails_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<int>("error");
    const QString temporary = QStringLiteral(".tmp");
    QTest::newRow("making the file") << SystemCall::Open << temporary << ENOSPC;
    QTest::newRow("writing") << SystemCall::Write << temporary << EIO;
    QTest::newRow("closing") << SystemCall::Close << temporary << EDQUOT;
    QTest::newRow("renaming") << SystemCall::Rename << name << EIO;
}

void TestDayFileRewrite::leavesNothingBehindWhenACallFails()
{
    QFETCH(const SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const int, error);
    writeFile(path(), "old\n");
    const FileState before = *fileState(path());
    QString problem;
    {
        const Fault fault(call, pathEnd, error);
        problem = rewrite("new\n");
        QCOMPARE(fault.failed(), 1);
    }
    QVERIFY(isToldOf(problem));
    QVERIFY2(problem.contains(qt_error_string(error)), qPrintable(problem));
    QCOMPARE(stored(), (Tree{{name, "old\n"}}));
    QVERIFY(fileState(path())->isUnchanged(before));
}

void TestDayFileRewrite::writesInPlaceWhereTheDirectoryRefuses_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<QString>("pathEnd");
    QTest::addColumn<int>("error");
    const QString temporary = QStringLiteral(".tmp");
    QTest::newRow("no permission") << SystemCall::Open << temporary << EACCES;
    QTest::newRow("read-only") << SystemCall::Open << temporary << EROFS;
    QTest::newRow("files of others stay theirs") << SystemCall::Rename << name << EPERM;
    QTest::newRow("the file is a mount") << SystemCall::Rename << name << EBUSY;
}

void TestDayFileRewrite::writesInPlaceWhereTheDirectoryRefuses()
{
    QFETCH(const SystemCall, call);
    QFETCH(const QString, pathEnd);
    QFETCH(const int, error);
    writeFile(path(), "old and longer\n");
    const FileState before = *fileState(path());
    const Fault fault(call, pathEnd, error);
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(fault.failed(), 1);
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QVERIFY(fileState(path())->isSameFile(before));
}

void TestDayFileRewrite::writesInPlaceInAReadOnlyDirectory()
{
    makeReadOnlyDirectory("old and longer\n");
    const FileState before = *fileState(path());
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
    QVERIFY(fileState(path())->isSameFile(before));
}

void TestDayFileRewrite::putsTheOldContentBack()
{
    const QByteArray old = QByteArray(10'000, 'o') + '\n';
    makeReadOnlyDirectory(old);
    QString problem;
    {
        const testsupport::FileSizeLimit limit(16'384);
        problem = rewrite(QByteArray(40'000, 'n'));
    }
    QVERIFY(isToldOf(problem));
    QVERIFY2(!problem.contains(QStringLiteral("испорчен")), qPrintable(problem));
    QCOMPARE(stored(), (Tree{{name, old}}));
}

void TestDayFileRewrite::saysThatTheFileIsBroken_data()
{
    QTest::addColumn<SystemCall>("call");
    QTest::addColumn<int>("passed");
    QTest::newRow("writing") << SystemCall::Write << 1;
    QTest::newRow("closing") << SystemCall::Close << 0;
}

// The call goes on failing when the old content is put back.
void TestDayFileRewrite::saysThatTheFileIsBroken()
{
    QFETCH(const SystemCall, call);
    QFETCH(const int, passed);
    makeReadOnlyDirectory(manyLines('o'));
    const Fault fault(call, name, EIO, passed);
    const QString problem = rewrite(manyLines('n'));
    QVERIFY(isToldOf(problem));
    QVERIFY2(problem.contains(QStringLiteral("испорчен")), qPrintable(problem));
}

void TestDayFileRewrite::handsOverWholeLines_data()
{
    QTest::addColumn<bool>("inPlace");
    QTest::newRow("whole") << false;
    QTest::newRow("in place") << true;
}

void TestDayFileRewrite::handsOverWholeLines()
{
    QFETCH(const bool, inPlace);
    const QByteArray longLine = QByteArray(1'500'000, '7') + '\n';
    const QByteArray content = manyLines('n') + longLine + manyLines('m') + longLine.chopped(1);
    if (inPlace)
        makeReadOnlyDirectory("old\n");
    else
        writeFile(path(), "old\n");
    const testsupport::WrittenPieces written(inPlace ? name : QStringLiteral(".tmp"));
    QCOMPARE(rewrite(content), QString());
    const QByteArrayList pieces = written.pieces();
    QVERIFY(pieces.size() > 5);
    for (const QByteArray& piece : pieces.first(pieces.size() - 1))
        QVERIFY(piece.endsWith('\n'));
    QVERIFY(pieces.join() == content);
    QVERIFY(readFile(path()) == content);
}

void TestDayFileRewrite::removingKeepsOtherHardLinks()
{
    writeFile(path(), "old\n");
    const QTemporaryDir copies;
    hardLink(path(), copies.filePath(name));
    QCOMPARE(rewrite(QByteArray()), QString());
    QVERIFY(stored().isEmpty());
    QCOMPARE(readFile(copies.filePath(name)), QByteArray("old\n"));
}

// Else the bars would be back with the next link.
void TestDayFileRewrite::removingALinkEmptiesItsTarget()
{
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("bars"));
    writeFile(target, "old\n");
    hardLink(target, elsewhere.filePath(QStringLiteral("second")));
    QVERIFY(QFile::link(target, path()));
    QCOMPARE(rewrite(QByteArray()), QString());
    QVERIFY(!QFileInfo(path()).isSymLink());
    QCOMPARE(testsupport::readTree(QDir(elsewhere.path())),
             (Tree{{QStringLiteral("bars"), ""}, {QStringLiteral("second"), ""}}));
}

void TestDayFileRewrite::emptiesWhatItCannotRemove_data()
{
    QTest::addColumn<bool>("throughALink");
    QTest::newRow("the file") << false;
    QTest::newRow("a link's target") << true;
}

void TestDayFileRewrite::emptiesWhatItCannotRemove()
{
    QFETCH(const bool, throughALink);
    makeReadOnlyDirectory("old\n");
    if (!throughALink) {
        QCOMPARE(rewrite(QByteArray()), QString());
    } else {
        const QTemporaryDir series;
        QVERIFY(QFile::link(path(), series.filePath(name)));
        QCOMPARE(
            vexdesk::rewriteDayFile(QDir(series.path()), name, QByteArray(), *fileState(path()))
                .message(),
            QString());
        QVERIFY(!QFileInfo(series.filePath(name)).isSymLink());
    }
    QCOMPARE(stored(), (Tree{{name, ""}}));
}

void TestDayFileRewrite::emptiesTheTargetOfALinkThatItCannotRemove()
{
    becomeOtherUser();
    const QTemporaryDir elsewhere;
    writeFile(elsewhere.filePath(name), "old\n");
    QVERIFY(QFile::link(elsewhere.filePath(name), path()));
    const testsupport::Permissions series(m_store->path(), nobodyWrites);
    QCOMPARE(rewrite(QByteArray()), QString());
    QVERIFY(QFileInfo(path()).isSymLink());
    QCOMPARE(readFile(elsewhere.filePath(name)), QByteArray(""));
}

void TestDayFileRewrite::tellsWhatItCouldNotEmpty()
{
    makeReadOnlyDirectory("old\n");
    const Fault fault(SystemCall::Close, name, EIO);
    QVERIFY(isToldOf(rewrite(QByteArray())));
}

void TestDayFileRewrite::saysWhatToDo_data()
{
    QTest::addColumn<bool>("isImport");
    QTest::addColumn<bool>("hasChanged");
    QTest::addColumn<QString>("why");
    QTest::addColumn<QString>("advice");
    const QString disk = QStringLiteral("проверьте диск и права на файл и ");
    QTest::newRow("deletion, changed")
        << false << true << QStringLiteral("он изменился после того, как был показан")
        << QStringLiteral("покажите интервал ещё раз и повторите удаление");
    QTest::newRow("deletion, failed")
        << false << false << qt_error_string(EIO) << disk + QStringLiteral("повторите удаление");
    QTest::newRow("import, changed")
        << true << true << QStringLiteral("он изменился, пока его читали")
        << QStringLiteral("повторите импорт");
    QTest::newRow("import, failed")
        << true << false << qt_error_string(EIO) << disk + QStringLiteral("повторите импорт");
}

void TestDayFileRewrite::saysWhatToDo()
{
    QFETCH(const bool, isImport);
    QFETCH(const bool, hasChanged);
    QFETCH(const QString, why);
    QFETCH(const QString, advice);
    writeFile(path(), "old\n");
    FileState asRead = *fileState(path());
    asRead.size += hasChanged ? 1 : 0;
    const Fault fault(SystemCall::Write, QStringLiteral(".tmp"), EIO);
    const QString message = isImport
                                ? vexdesk::writeDayFile(path(), "new\n", asRead).message()
                                : vexdesk::rewriteDayFile(dir(), name, "new\n", asRead).message();
    QCOMPARE(message, QStringLiteral("Файл %1 не переписан: %2; %3.").arg(path(), why, advice));
}

// Before it is read for the case that it has to be put back.
void TestDayFileRewrite::leavesAFileAloneThatIsCutMeanwhile()
{
    writeFile(path(), "old and longer\n");
    const testsupport::Meanwhile meanwhile(SystemCall::Open, QStringLiteral(".tmp"),
                                           [this] { writeFile(path(), "o"); });
    const Fault fault(SystemCall::Open, QStringLiteral(".tmp"), EACCES);
    const QString message = rewrite("new\n");
    QVERIFY2(message.contains(QStringLiteral("изменился")), qPrintable(message));
    QCOMPARE(stored(), (Tree{{name, "o"}}));
}

void TestDayFileRewrite::rewritesOneByteInPlace()
{
    makeReadOnlyDirectory("o");
    QCOMPARE(rewrite("new\n"), QString());
    QCOMPARE(stored(), (Tree{{name, "new\n"}}));
}

// No file system has a name of that length.
void TestDayFileRewrite::saysWhatCannotBeLookedAt()
{
    const QString endless(300, u'x');
    for (const QString& message :
         {vexdesk::rewriteDayFile(dir(), endless, "new\n", FileState()).message(),
          vexdesk::writeDayFile(path(endless), "new\n", std::nullopt).message(),
          vexdesk::writeDayFile(path(endless), "new\n", FileState()).message()}) {
        QVERIFY2(message.contains(endless) && message.contains(qt_error_string(ENAMETOOLONG)),
                 qPrintable(message));
    }
}

void TestDayFileRewrite::importsIntoNothingThatIsNoFile()
{
    QVERIFY(dir().mkdir(name));
    const QString message = vexdesk::writeDayFile(path(), "new\n", std::nullopt).message();
    QVERIFY2(message.contains(QStringLiteral("это не обычный файл")), qPrintable(message));
    QVERIFY(dir().rmdir(name));
    QVERIFY(QFile::link(path(), path()));
    const QString circle = vexdesk::writeDayFile(path(), "new\n", std::nullopt).message();
    QVERIFY2(circle.contains(path()) && circle.contains(qt_error_string(ELOOP)),
             qPrintable(circle));
    QVERIFY(QFileInfo(path()).isSymLink());
}

void TestDayFileRewrite::saysWhatMayNotBeOpened()
{
    writeFile(path(), "old\n");
    const FileState asRead = *fileState(path());
    const Fault fault(SystemCall::Open, path(), EACCES);
    for (const QString& message : {vexdesk::rewriteDayFile(dir(), name, "new\n", asRead).message(),
                                   vexdesk::writeDayFile(path(), "new\n", asRead).message()}) {
        QVERIFY2(message.contains(path()) && message.contains(qt_error_string(EACCES)),
                 qPrintable(message));
    }
}

void TestDayFileRewrite::importsIntoTheFileThatWasRead_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<bool>("wasThere");
    QTest::addColumn<int>("more"); // bytes that it had when it was read
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("the same") << true << true << 0 << true;
    QTest::newRow("another") << true << true << 1 << false;
    QTest::newRow("made meanwhile") << true << false << 0 << false;
    QTest::newRow("removed meanwhile") << false << true << 0 << false;
    QTest::newRow("none") << false << false << 0 << true;
}

void TestDayFileRewrite::importsIntoTheFileThatWasRead()
{
    QFETCH(const bool, isThere);
    QFETCH(const bool, wasThere);
    QFETCH(const int, more);
    QFETCH(const bool, isWritten);
    writeFile(path(), "old\n");
    std::optional<FileState> asRead;
    if (wasThere) {
        asRead = fileState(path());
        asRead->size += more;
    }
    if (!isThere)
        QVERIFY(QFile::remove(path()));
    const Tree before = stored();
    const auto written = vexdesk::writeDayFile(path(), "new\n", asRead);
    QCOMPARE(bool(written), isWritten);
    QCOMPARE(stored(), isWritten ? (Tree{{name, "new\n"}}) : before);
    if (!isWritten)
        QVERIFY2(written.message().contains(QStringLiteral("изменился")),
                 qPrintable(written.message()));
}

void TestDayFileRewrite::makesNoDirectory()
{
    const QString below = path(QStringLiteral("S/B/X/") + name);
    const auto written = vexdesk::writeDayFile(below, "new\n", std::nullopt);
    QVERIFY2(written.message().contains(below), qPrintable(written.message()));
    QVERIFY(!QFileInfo::exists(path(QStringLiteral("S"))));
}

// The disk that it leads to is to be connected.
void TestDayFileRewrite::makesNoDirectoryBehindALink()
{
    const QString gone = path(QStringLiteral("gone"));
    QVERIFY(QFile::link(gone + QStringLiteral("/bars"), path()));
    const auto written = vexdesk::writeDayFile(path(), "new\n", std::nullopt);
    QVERIFY2(written.message().contains(qt_error_string(ENOENT)), qPrintable(written.message()));
    QVERIFY(!QFileInfo::exists(gone));
    QVERIFY(QDir().mkdir(gone));
    QVERIFY(vexdesk::writeDayFile(path(), "new\n", std::nullopt));
    QCOMPARE(readFile(gone + QStringLiteral("/bars")), QByteArray("new\n"));
    QVERIFY(QFileInfo(path()).isSymLink());
}

QTEST_GUILESS_MAIN(TestDayFileRewrite)
#include "tst_dayfilerewrite.moc"
