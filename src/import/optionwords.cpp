// SPDX-License-Identifier: MIT
#include "optionwords.h"

#include "columnroles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace tadata {

using vexdesk::Failure;
using vexdesk::Result;

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImportOptions)
};

// The roles up to that of the closing price, without which a line is no bar.
constexpr auto lastMandatory = static_cast<qint32>(ColumnRole::Close);
constexpr auto lastRole = static_cast<qint32>(ColumnRole::Ticker);

std::optional<ColumnRole> roleOf(const QString& name)
{
    for (qint32 number = 1; number <= lastRole; ++number) {
        if (name == roleWord(ColumnRole(number)))
            return ColumnRole(number);
    }
    return std::nullopt;
}

std::optional<int> columnOf(const QString& text)
{
    bool isNumber = false;
    const int column = text.toInt(&isNumber);
    return isNumber && column >= 0 ? std::optional(column) : std::nullopt;
}

} // namespace

Result<QMap<qint32, qint32>> columnsOfWord(const QString& word)
{
    QMap<qint32, qint32> columns;
    const QStringList parts = word.split(u',');
    for (const QString& part : parts) {
        const QString name = part.section(u'=', 0, 0);
        const std::optional<ColumnRole> role = roleOf(name);
        const std::optional<int> column = columnOf(part.section(u'=', 1));
        if (!role)
            return Failure{Text::tr("роли «%1» нет").arg(name)};
        if (!column)
            return Failure{Text::tr("«%1» не называет номера столбца").arg(part)};
        if (columns.contains(qint32(*role)))
            return Failure{Text::tr("роль «%1» названа дважды").arg(name)};
        if (columns.values().contains(*column))
            return Failure{Text::tr("столбец %1 назначен дважды").arg(*column)};
        columns.insert(qint32(*role), *column);
    }
    for (qint32 number = 1; number <= lastMandatory; ++number) {
        if (!columns.contains(number))
            return Failure{Text::tr("нет роли «%1»").arg(roleWord(ColumnRole(number)))};
    }
    return columns;
}

std::optional<QString> separatorOfWord(const QString& word)
{
    if (word == u"comma")
        return QStringLiteral(",");
    if (word == u"semicolon")
        return QStringLiteral(";");
    if (word == u"space")
        return QStringLiteral(" ");
    if (word == u"tab")
        return QStringLiteral("\t");
    const bool isNone = word.isEmpty() || word.contains(u'\n') || word.contains(u'\r');
    return isNone ? std::nullopt : std::optional(word);
}

QString modeWord(ImportMode mode)
{
    switch (mode) {
    case ImportMode::Merge:
        return QStringLiteral("merge");
    case ImportMode::Fill:
        return QStringLiteral("fill");
    case ImportMode::Replace:
        break;
    }
    return QStringLiteral("replace");
}

QString pointMaker(ImportMode mode)
{
    return mode == ImportMode::Replace ? QStringLiteral("import") : modeWord(mode);
}

} // namespace tadata
