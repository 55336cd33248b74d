// SPDX-License-Identifier: MIT
// edit_rows STORE SERIES: removes the bars of a series as its editor does, without a window: the
// first of 15 January 2024, and all of the day after. Prints what went wrong, and what it did not
// see.

#include "editortadatamodel.h"

#include <vexdesk/history/storejob.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QTextStream>

namespace {

QList<int> rowsToRemove(const EditorTADataModel& model)
{
    QList<int> rows;
    bool isFirst = true;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QString day = model.index(row, 0).data().toString().left(6);
        if (day == u"16 Jan" || (day == u"15 Jan" && isFirst))
            rows.append(row);
        isFirst = isFirst && day != u"15 Jan";
    }
    return rows;
}

QStringList removeRows(EditorTADataModel& model, const QDir& root, const QString& series)
{
    constexpr qsizetype wanted = 4;
    const QList<int> rows = rowsToRemove(model);
    QStringList problems = model.takeProblems();
    if (rows.size() != wanted)
        problems.append(QStringLiteral("Not all bars are shown: ") + root.filePath(series));
    if (rows.isEmpty())
        return problems;
    model.delRows(rows);
    // All points of a test stay.
    vexdesk::StoreJob job({.by = QStringLiteral("edit"), .limits = {.keep = 100'000}});
    if (const auto begun = job.begin(root, {series}); !begun)
        return problems + QStringList(begun.message());
    model.delRowsFromFiles(job.keeper());
    const auto ended = job.end();
    problems += model.takeProblems() + QStringList(ended.message());
    problems.removeAll(QString());
    return problems;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    const QStringList words = QCoreApplication::arguments();
    const QDir root(words.value(1));
    EditorTADataModel model;
    model.load(QDir(root.filePath(words.value(2))), QDate(2024, 1, 1).startOfDay(),
               QDate(2024, 12, 31).endOfDay(), 60);
    const QStringList problems = removeRows(model, root, words.value(2));
    for (const QString& problem : problems)
        QTextStream(stderr) << problem << '\n';
    return problems.isEmpty() ? 0 : 1;
}
