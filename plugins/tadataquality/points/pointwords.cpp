// SPDX-License-Identifier: MIT
#include "pointwords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PointWords)
};

} // namespace

QString makerOfPoint(const QString& by)
{
    const QHash<QString, QString> words{
        {QStringLiteral("import"), Text::tr("импорт")},
        {QStringLiteral("merge"), Text::tr("импорт со слиянием")},
        {QStringLiteral("fill"), Text::tr("дозаполнение")},
        {QStringLiteral("edit"), Text::tr("правка")},
        {QStringLiteral("delete"), Text::tr("удаление")},
        {QStringLiteral("copy"), Text::tr("копирование")},
        {QStringLiteral("rename"), Text::tr("переименование")},
        {QStringLiteral("undo"), Text::tr("возврат")},
    };
    return words.value(by, by);
}

} // namespace tadata
