// SPDX-License-Identifier: MIT
#include "pointwords.h"

#include <vexdesk/dateformat.h>
#include <vexdesk/history/restorepoint.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtCore/QLocale>

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

QString shortList(const QStringList& texts, qsizetype shown)
{
    if (texts.size() <= shown)
        return texts.join(QStringLiteral(", "));
    return Text::tr("%1 и ещё %L2")
        .arg(texts.first(shown).join(QStringLiteral(", ")))
        .arg(texts.size() - shown);
}

QString interruptionInWords(const vexdesk::RestorePointRecord& point)
{
    constexpr qsizetype shown = 3;
    return Text::tr("Команда была прервана на середине: %1, %2, серии: %3. Вернуть данные, какими "
                    "они были до неё, можно в окне «Точки восстановления».")
        .arg(makerOfPoint(point.by), vexdesk::shownMoment(point.when.toLocalTime()),
             shortList(point.series, shown));
}

QString sizeText(qint64 bytes)
{
    constexpr double step = 1024;
    const QLocale locale;
    if (bytes < static_cast<qint64>(step))
        return Text::tr("%1 Б").arg(locale.toString(bytes));
    double size = static_cast<double>(bytes) / step;
    if (size < step)
        return Text::tr("%1 КБ").arg(locale.toString(size, 'f', 1));
    size /= step;
    return size < step ? Text::tr("%1 МБ").arg(locale.toString(size, 'f', 1))
                       : Text::tr("%1 ГБ").arg(locale.toString(size / step, 'f', 1));
}

} // namespace tadata
