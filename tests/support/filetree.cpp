// SPDX-License-Identifier: MIT
#include "support/filetree.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtTest/QTest>

namespace testsupport {

void writeFile(const QString& path, const QByteArray& content)
{
    QVERIFY2(QDir().mkpath(QFileInfo(path).path()), qPrintable(path));
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly | QIODevice::Truncate), qPrintable(path));
    QCOMPARE(file.write(content), content.size());
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    const QByteArray content = file.readAll();
    return content.isNull() ? QByteArray("") : content;
}

QDir userFolder()
{
    return QDir(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("user")));
}

QDir newUserFolder()
{
    QDir folder = userFolder();
    if (folder.exists()) {
        QTest::qFail("an earlier test has left its data directory", __FILE__, __LINE__);
        folder.removeRecursively();
    }
    return folder;
}

QMap<QString, QByteArray> readTree(const QDir& root)
{
    QMap<QString, QByteArray> files;
    QDirIterator walk(root.path(), QDir::Files | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        files.insert(root.relativeFilePath(path), readFile(path));
    }
    return files;
}

} // namespace testsupport
