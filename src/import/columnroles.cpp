// SPDX-License-Identifier: MIT
#include "columnroles.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtCore/QStringView>

#include <array>

namespace tadata {

namespace {

struct RoleWords
{
    ColumnRole role;
    const char* word;
    const char* columnNames; ///< in lower case, separated by blanks
};

constexpr std::array roleWords{
    RoleWords{ColumnRole::Date, "date", "date дата day"},
    RoleWords{ColumnRole::Time, "time", "time время"},
    RoleWords{ColumnRole::Open, "open", "open откр открытие"},
    RoleWords{ColumnRole::High, "high", "high max макс максимум"},
    RoleWords{ColumnRole::Low, "low", "low min мин минимум"},
    RoleWords{ColumnRole::Close, "close", "close last закр закрытие"},
    RoleWords{ColumnRole::Volume, "volume", "vol volume объем объём qty"},
    RoleWords{ColumnRole::Value, "value", "val value turnover оборот"},
    RoleWords{ColumnRole::OpenInterest, "oi", "openint open_int open_interest oi"},
    RoleWords{ColumnRole::Ticker, "ticker", "ticker symbol тикер инструмент"},
};

QHash<QString, ColumnRole> rolesByName()
{
    QHash<QString, ColumnRole> roles;
    for (const RoleWords& words : roleWords) {
        const QStringList names = QString::fromUtf8(words.columnNames).split(u' ');
        for (const QString& name : names)
            roles.insert(name, words.role);
    }
    return roles;
}

QStringView withoutWrapping(QStringView name)
{
    static const QString wrapping = QStringLiteral("<>\"' \t\v\f\r");
    while (!name.empty() && wrapping.contains(name.first()))
        name = name.sliced(1);
    while (!name.empty() && wrapping.contains(name.last()))
        name.chop(1);
    return name;
}

} // namespace

QString roleWord(ColumnRole role)
{
    for (const RoleWords& words : roleWords) {
        if (words.role == role)
            return QLatin1String(words.word);
    }
    return {};
}

std::optional<ColumnRole> roleOfColumnName(const QString& name)
{
    static const QHash<QString, ColumnRole> roles = rolesByName();
    const auto role = roles.constFind(withoutWrapping(name).toString().toLower());
    return role == roles.cend() ? std::nullopt : std::optional(*role);
}

} // namespace tadata
