// SPDX-License-Identifier: MIT
#include "textformats.h"

#include <QtCore/QCoreApplication>

#include <span>

namespace tadata {

namespace {

struct Format
{
    const char* pattern;
    const char* onImportPage;
    const char* onExportPage;
};

constexpr Format dates[] = {{"yyyyMMdd", QT_TRANSLATE_NOOP("FormatImportPage", "ггггммдд"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "ггггммдд")},
                            {"yyMMdd", QT_TRANSLATE_NOOP("FormatImportPage", "ггммдд"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "ггммдд")},
                            {"ddMMyy", QT_TRANSLATE_NOOP("FormatImportPage", "ддммгг"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "ддммгг")},
                            {"dd.MM.yy", QT_TRANSLATE_NOOP("FormatImportPage", "дд.мм.гг"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "дд.мм.гг")},
                            {"dd/MM/yy", QT_TRANSLATE_NOOP("FormatImportPage", "дд/мм/гг"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "дд/мм/гг")}};

constexpr Format times[] = {{"hhmmss", QT_TRANSLATE_NOOP("FormatImportPage", "ччммсс"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "ччммсс")},
                            {"hhmm", QT_TRANSLATE_NOOP("FormatImportPage", "ччмм"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "ччмм")},
                            {"hh:mm:ss", QT_TRANSLATE_NOOP("FormatImportPage", "чч:мм:сс"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "чч:мм:сс")},
                            {"hh:mm", QT_TRANSLATE_NOOP("FormatImportPage", "чч:мм"),
                             QT_TRANSLATE_NOOP("FormatExportPage", "чч:мм")}};

constexpr Format separatorFormats[] = {
    {",", QT_TRANSLATE_NOOP("FormatImportPage", "запятая (,)"),
     QT_TRANSLATE_NOOP("FormatExportPage", "запятая (,)")},
    {";", QT_TRANSLATE_NOOP("FormatImportPage", "точка с запятой (;)"),
     QT_TRANSLATE_NOOP("FormatExportPage", "точка с запятой (;)")},
    {" ", QT_TRANSLATE_NOOP("FormatImportPage", "пробел ( )"),
     QT_TRANSLATE_NOOP("FormatExportPage", "пробел ( )")}};

QList<TextFormat> formatsOf(FormatPage page, std::span<const Format> formats)
{
    QList<TextFormat> list;
    for (const Format& format : formats) {
        const QString title =
            page == FormatPage::Import
                ? QCoreApplication::translate("FormatImportPage", format.onImportPage)
                : QCoreApplication::translate("FormatExportPage", format.onExportPage);
        list.append({QString::fromLatin1(format.pattern), title});
    }
    return list;
}

} // namespace

QList<TextFormat> dateFormats(FormatPage page)
{
    return formatsOf(page, dates);
}

QList<TextFormat> timeFormats(FormatPage page)
{
    return formatsOf(page, times);
}

QList<TextFormat> separators(FormatPage page)
{
    return formatsOf(page, separatorFormats);
}

} // namespace tadata
