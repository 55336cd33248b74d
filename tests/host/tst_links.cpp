// SPDX-License-Identifier: MIT
#include <vexdesk/history/links.h>

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

#include <cerrno>
#include <memory>

using namespace vexdesk;

class TestLinks final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dir.reset(); }
    void followsLinksToTheirEnd_data();
    void followsLinksToTheirEnd();
    void leavesLinksAmongTheDirectories();
    void knowsACircle();
    void followsAsManyAsTheSystem();
    void saysWhatCannotBeRead();
    void saysWhatHasNoLinks();
    void tellsALostLink_data();
    void tellsALostLink();

private:
    QString path(const char* name) const { return m_dir->filePath(QLatin1String(name)); }
    void link(const QString& target, const QString& name) const
    {
        QVERIFY(QFile::link(target, m_dir->filePath(name)));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestLinks::init()
{
    testsupport::failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    testsupport::writeFile(path("disk/day"), "x");
    QVERIFY(QDir(m_dir->path()).mkdir(QStringLiteral("series")));
    link(QStringLiteral("../disk/day"), QStringLiteral("series/relative"));
    link(QStringLiteral("relative"), QStringLiteral("series/chain"));
    link(path("disk/day"), QStringLiteral("series/absolute"));
    link(QStringLiteral("../disk/new"), QStringLiteral("series/new"));
    link(QStringLiteral("new"), QStringLiteral("series/chain-to-new"));
    link(QStringLiteral("../gone/day"), QStringLiteral("series/gone"));
    link(QStringLiteral("gone"), QStringLiteral("series/chain-to-gone"));
    link(QStringLiteral("../disk/day/below"), QStringLiteral("series/below-a-file"));
    link(QStringLiteral("circle"), QStringLiteral("series/circle"));
    link(QStringLiteral("other"), QStringLiteral("series/one"));
    link(QStringLiteral("one"), QStringLiteral("series/other"));
    link(QStringLiteral("../disk"), QStringLiteral("series/directory"));
}

void TestLinks::followsLinksToTheirEnd_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const char* expected) {
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(expected);
    };
    row("disk/day", "disk/day");
    row("disk/missing", "disk/missing");
    row("missing/day", "missing/day");
    row("disk/day/below", "disk/day/below");
    row("series/relative", "series/../disk/day");
    row("series/chain", "series/../disk/day");
    row("series/absolute", "disk/day");
    row("series/new", "series/../disk/new");
    row("series/chain-to-new", "series/../disk/new");
    row("series/gone", "series/../gone/day");
    row("series/below-a-file", "series/../disk/day/below");
}

void TestLinks::followsLinksToTheirEnd()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(behindLinks(m_dir->filePath(name)), std::optional(m_dir->filePath(expected)));
    // The working directory is where a name begins that says nothing else.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_dir->path()));
    const auto found = behindLinks(name);
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(found, std::optional(name == u"series/absolute" ? path("disk/day") : expected));
}

// The directory above a directory is another one than it looks where that is a link.
void TestLinks::leavesLinksAmongTheDirectories()
{
    testsupport::writeFile(path("far/deep/day"), "y");
    testsupport::writeFile(path("far/other"), "z");
    link(QStringLiteral("far/deep"), QStringLiteral("near"));
    link(QStringLiteral("../other"), QStringLiteral("far/deep/up"));
    const auto found = behindLinks(path("near/up"));
    QCOMPARE(found, std::optional(path("near/../other")));
    QCOMPARE(testsupport::readFile(*found), QByteArray("z"));
    QCOMPARE(withoutLinks(path("near/up")),
             std::optional(QFileInfo(path("far/other")).canonicalFilePath()));
}

void TestLinks::knowsACircle()
{
    for (const char* name : {"series/circle", "series/one", "series/other"}) {
        errno = 0;
        QCOMPARE(behindLinks(path(name)), std::nullopt);
        QCOMPARE(errno, ELOOP);
    }
}

void TestLinks::followsAsManyAsTheSystem()
{
    constexpr int most = 40;
    for (int i = 0; i <= most; ++i) {
        const QString name = QStringLiteral("disk/link%1").arg(i);
        link(i == 0 ? QStringLiteral("day") : QStringLiteral("link%1").arg(i - 1), name);
        const QString file = m_dir->filePath(name);
        const bool isFollowed = QFile::exists(file);
        QCOMPARE(behindLinks(file).has_value(), isFollowed);
        QCOMPARE(isFollowed, i < most);
    }
}

// The name is longer than that of any file, at the end of a link too.
void TestLinks::saysWhatCannotBeRead()
{
    const QString name(300, u'x');
    link(name, QStringLiteral("series/unknown"));
    for (const QString& file : {m_dir->filePath(name), path("series/unknown")}) {
        errno = 0;
        QCOMPARE(behindLinks(file), std::nullopt);
        QCOMPARE(errno, ENAMETOOLONG);
        QVERIFY(!isLostLink(file));
        QCOMPARE(
            mayBeMade(file).message(),
            QStringLiteral("Ссылка %1 не читается: %2").arg(file, qt_error_string(ENAMETOOLONG)));
    }
}

void TestLinks::saysWhatHasNoLinks()
{
    const QString root = QFileInfo(m_dir->path()).canonicalFilePath();
    for (const char* name : {"disk/day", "series/chain", "series/absolute", "series/directory/day"})
        QCOMPARE(withoutLinks(path(name)), std::optional(root + QStringLiteral("/disk/day")));
    errno = 0;
    QCOMPARE(withoutLinks(path("series/gone")), std::nullopt);
    QCOMPARE(errno, ENOENT);
    QCOMPARE(withoutLinks(path("series/circle")), std::nullopt);
    QCOMPARE(errno, ELOOP);
}

void TestLinks::tellsALostLink_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isLost");
    QTest::addColumn<bool>("canBeMade");
    const auto row = [](const char* name, bool isLost, bool canBeMade) {
        QTest::newRow(name) << QString::fromLatin1(name) << isLost << canBeMade;
    };
    row("disk/day", false, true);
    row("disk/missing", false, true);
    row("missing/day", false, true);
    row("series/chain", false, true);
    row("series/new", true, true);
    row("series/chain-to-new", true, true);
    row("series/gone", true, false);
    row("series/chain-to-gone", true, false);
    row("series/circle", true, false);
    row("series/one", true, false);
}

void TestLinks::tellsALostLink()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isLost);
    QFETCH(const bool, canBeMade);
    const QString file = m_dir->filePath(name);
    QCOMPARE(isLostLink(file), isLost);
    QCOMPARE(mayBeMade(file).message(), canBeMade ? QString() : lostLink(file).message);
    QVERIFY(lostLink(file).message.contains(file));
}

QTEST_GUILESS_MAIN(TestLinks)
#include "tst_links.moc"
