// SPDX-License-Identifier: MIT
#include "problemtitles.h"

#include <QtCore/QCoreApplication>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ImportCheck)
};

} // namespace

QString titleOf(ProblemKind kind)
{
    switch (kind) {
    case ProblemKind::BadLine:
        return Text::tr("Ошибочные строки");
    case ProblemKind::DayAgain:
        return Text::tr("Файл возвращается к дню, прежние бары дня пропадут");
    case ProblemKind::OutOfOrder:
        return Text::tr("Время раньше, чем у предыдущего бара");
    case ProblemKind::Duplicate:
        return Text::tr("Бар с таким временем уже был");
    case ProblemKind::Prices:
        return Text::tr("Невозможные цены");
    case ProblemKind::Rounded:
        return Text::tr("Лишние знаки после точки будут округлены");
    case ProblemKind::Volume:
        return Text::tr("Объём больше 2147483647: графики и экспорт прочтут 0");
    case ProblemKind::Midnight:
        return Text::tr("Время 00:00:00 закрывает предыдущий день");
    case ProblemKind::Spacing:
        return Text::tr("Бары файла, похоже, не такой длины");
    case ProblemKind::DateOrder:
        break;
    }
    return Text::tr("В датах, похоже, переставлены день и месяц или день и год");
}

} // namespace tadata
