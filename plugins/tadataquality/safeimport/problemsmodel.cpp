// SPDX-License-Identifier: MIT
#include "problemsmodel.h"

#include "problemtitles.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

#include <algorithm>

namespace tadata {

namespace {

// The kinds are the rows without a parent; a line's index has the place of its kind, from 1.
constexpr quintptr noKind = 0;

bool isOfLines(ProblemKind kind)
{
    return kind < ProblemKind::Spacing;
}

} // namespace

ProblemsModel::ProblemsModel(QObject* parent)
    : QAbstractItemModel(parent)
{}

ProblemsModel::~ProblemsModel() = default;

void ProblemsModel::setOutlooks(const std::vector<FileOutlook>& files)
{
    std::array<Kind, problemKinds> kinds;
    for (const FileOutlook& file : files) {
        for (const SeriesOutlook& series : file.series) {
            for (size_t kind = 0; kind < problemKinds; ++kind)
                kinds[kind].count += series.check.counts[kind];
            for (const FileProblem& problem : series.check.problems) {
                if (problem.line)
                    kinds[static_cast<size_t>(problem.kind)].lines.push_back(
                        {file.path, *problem.line, problem.text});
            }
        }
    }
    beginResetModel();
    m_hasManyFiles = files.size() > 1;
    m_kinds.clear();
    for (size_t kind = 0; kind < problemKinds; ++kind) {
        kinds[kind].kind = static_cast<ProblemKind>(kind);
        if (kinds[kind].count > 0)
            m_kinds.push_back(std::move(kinds[kind]));
    }
    endResetModel();
}

QMap<qint64, QString> ProblemsModel::noticesOf(const QString& file) const
{
    QMap<qint64, QString> notices;
    for (const Kind& kind : m_kinds) {
        for (const Line& line : kind.lines) {
            if (line.file != file)
                continue;
            QString& notice = notices[line.number];
            const QString text = line.text.isEmpty() ? titleOf(kind.kind) : line.text;
            notice += notice.isEmpty() ? text : u'\n' + text;
        }
    }
    return notices;
}

QModelIndex ProblemsModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column,
                       parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : noKind);
}

QModelIndex ProblemsModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == noKind)
        return {};
    return createIndex(static_cast<int>(index.internalId()) - 1, 0, noKind);
}

// Behind the lines that are listed a last row says how many are not.
int ProblemsModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return static_cast<int>(m_kinds.size());
    if (parent.internalId() != noKind || parent.column() != 0)
        return 0;
    const Kind& kind = m_kinds[static_cast<size_t>(parent.row())];
    if (!isOfLines(kind.kind))
        return 0;
    return static_cast<int>(kind.lines.size()) + (kind.unlisted() > 0 ? 1 : 0);
}

int ProblemsModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ProblemsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (index.internalId() == noKind)
        return dataOfKind(m_kinds[static_cast<size_t>(index.row())], role);
    return dataOfLine(m_kinds[index.internalId() - 1], index.row(), role);
}

QString ProblemsModel::textOf(const Kind& kind)
{
    const QString title = titleOf(kind.kind);
    return isOfLines(kind.kind)
               ? QStringLiteral("%1: %2").arg(title, QLocale().toString(kind.count))
               : title;
}

QVariant ProblemsModel::dataOfKind(const Kind& kind, int role) const
{
    const bool isText = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    return isText ? QVariant(textOf(kind)) : QVariant();
}

QVariant ProblemsModel::dataOfLine(const Kind& kind, int row, int role) const
{
    const bool isListed = row < static_cast<int>(kind.lines.size());
    if (!isListed)
        return role == Qt::DisplayRole
                   ? QVariant(tr("… и ещё %1").arg(QLocale().toString(kind.unlisted())))
                   : QVariant();
    const Line& line = kind.lines[static_cast<size_t>(row)];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: {
        QString text = tr("строка %1").arg(line.number);
        if (m_hasManyFiles)
            text = QFileInfo(line.file).fileName() + QStringLiteral(", ") + text;
        return line.text.isEmpty() ? text : text + QStringLiteral(": ") + line.text;
    }
    case FileRole:
        return line.file;
    case LineRole:
        return line.number;
    default:
        return {};
    }
}

} // namespace tadata
