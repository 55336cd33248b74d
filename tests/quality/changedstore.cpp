// SPDX-License-Identifier: MIT
#include "changedstore.h"

#include "support/filetree.h"

#include <vexdesk/history/storejob.h>

#include <QtTest/QTest>

namespace testsupport {

namespace {

void verify(const vexdesk::Outcome& outcome)
{
    QVERIFY2(outcome, qPrintable(outcome.message()));
}

} // namespace

QString changeStore(const QDir& root, const QString& by, const StoreFiles& files,
                    const QStringList& source)
{
    QStringList series;
    QStringList paths;
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        series.append(file.key().section(u'/', 0, 2));
        paths.append(root.filePath(file.key()));
    }
    vexdesk::StoreJob job({.by = by, .source = source});
    verify(job.begin(root, vexdesk::sortedByCodePoint(series)));
    verify(job.keeper()->keep(paths));
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        const QString path = root.filePath(file.key());
        if (file.value().isNull())
            QFile::remove(path);
        else
            writeFile(path, file.value());
    }
    verify(job.end());
    const auto points = vexdesk::restorePoints(*vexdesk::restorePlace(root));
    return points ? points->newest : QString();
}

} // namespace testsupport
