// SPDX-License-Identifier: MIT
#include "changedstore.h"

#include "support/filetree.h"

#include <QtTest/QTest>

namespace testsupport {

namespace {

void verify(const vexdesk::Outcome& outcome)
{
    QVERIFY2(outcome, qPrintable(outcome.message()));
}

QString newestPoint(const QDir& root)
{
    const auto points = vexdesk::restorePoints(*vexdesk::restorePlace(root));
    return points ? points->newest : QString();
}

} // namespace

std::unique_ptr<vexdesk::StoreJob> beginCommand(const QDir& root, const QString& by,
                                                const StoreFiles& files, const QStringList& source)
{
    QStringList series;
    QStringList paths;
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        series.append(file.key().section(u'/', 0, 2));
        paths.append(root.filePath(file.key()));
    }
    auto job =
        std::make_unique<vexdesk::StoreJob>(vexdesk::StoreJobSettings{.by = by, .source = source});
    verify(job->begin(root, vexdesk::sortedByCodePoint(series)));
    verify(job->keeper()->keep(paths));
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        const QString path = root.filePath(file.key());
        if (file.value().isNull())
            QFile::remove(path);
        else
            writeFile(path, file.value());
    }
    return job;
}

QString changeStore(const QDir& root, const QString& by, const StoreFiles& files,
                    const QStringList& source)
{
    verify(beginCommand(root, by, files, source)->end());
    return newestPoint(root);
}

QString interruptCommand(const QDir& root, const QString& by, const StoreFiles& files)
{
    beginCommand(root, by, files).reset();
    return newestPoint(root);
}

} // namespace testsupport
