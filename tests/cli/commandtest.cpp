// SPDX-License-Identifier: MIT
#include "commandtest.h"

#include "support/filetree.h"
#include "support/strictlog.h"

#include <QtTest/QTest>

namespace testsupport {

namespace {

// The words, and of these options those that are not among them.
QStringList completed(QStringList line, const QStringList& more,
                      std::initializer_list<QStringList> usual)
{
    for (const QStringList& option : usual) {
        if (!more.contains(option.first()))
            line += option;
    }
    return line + more;
}

} // namespace

void CommandTest::init()
{
    failOnStrayWarnings();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void CommandTest::cleanup()
{
    m_dir.reset();
}

Tree CommandTest::stored() const
{
    return readTree(QDir(path("store")));
}

QStringList CommandTest::importLine(const QString& file, const QStringList& more) const
{
    QStringList line =
        completed(words("import") << file, more,
                  {words("--store") << path("store"), words("--series NORD/MAIN/ALFA"),
                   words("--columns date=0,time=1,open=2,high=3,low=4,close=5")});
    if (line.removeAll(QStringLiteral("header")) == 0 &&
        !line.contains(QStringLiteral("--no-header")))
        line += words("--no-header");
    return line;
}

QStringList CommandTest::exportLine(const QString& file, const QStringList& more) const
{
    return completed(words("export") << file, more,
                     {words("--store") << path("store"), words("--series NORD/MAIN/ALFA"),
                      words("--from 2024-01-15"), words("--to 2024-01-15")});
}

Outcome CommandTest::import(const QByteArray& content, const QStringList& more,
                            const QProcessEnvironment& environment) const
{
    writeFile(path("bars.csv"), content);
    return runTadata(importLine(path("bars.csv"), more), environment);
}

} // namespace testsupport
