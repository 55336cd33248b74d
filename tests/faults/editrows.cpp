// SPDX-License-Identifier: MIT
// edit_rows STORE SERIES: removes the bars of a series as its editor does, without a window: the
// first row, and all of the last day. Prints what went wrong.

#include "editortadatamodel.h"

#include <vexdesk/history/seriesfiles.h>
#include <vexdesk/history/storejob.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

namespace {

QList<int> rowsToRemove(const EditorTADataModel& model)
{
    QList<int> rows{0};
    const int last = model.rowCount() - 1;
    const QString day = model.index(last, 0).data().toString().left(8);
    for (int row = last; row > 0; --row) {
        if (model.index(row, 0).data().toString().left(8) == day)
            rows.append(row);
    }
    return rows;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QDir root(words.value(1));
    EditorTADataModel model;
    model.load(QDir(root.filePath(words.value(2))), QDate(2024, 1, 1).startOfDay(),
               QDate(2024, 12, 31).endOfDay(), 60);
    model.delRows(rowsToRemove(model));

    vexdesk::StoreJob job({.by = QStringLiteral("edit")});
    QStringList problems;
    if (const auto begun = job.begin(root, {words.value(2)}); begun) {
        model.delRowsFromFiles(job.keeper());
        const auto ended = job.end();
        problems = model.takeProblems() + QStringList(ended.message());
    } else {
        problems.append(begun.message());
    }
    problems.removeAll(QString());
    for (const QString& problem : problems)
        QTextStream(stderr) << problem << '\n';
    return problems.isEmpty() ? 0 : 1;
}
