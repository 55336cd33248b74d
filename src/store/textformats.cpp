#include "store/textformats.h"

#include <QtCore/QCoreApplication>

namespace tadata {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TextFormats)
};

} // namespace

QList<TextFormat> dateFormats()
{
    return {{QStringLiteral("yyyyMMdd"), Text::tr("ггггммдд")},
            {QStringLiteral("yyMMdd"), Text::tr("ггммдд")},
            {QStringLiteral("ddMMyy"), Text::tr("ддммгг")},
            {QStringLiteral("dd.MM.yy"), Text::tr("дд.мм.гг")},
            {QStringLiteral("dd/MM/yy"), Text::tr("дд/мм/гг")}};
}

QList<TextFormat> timeFormats()
{
    return {{QStringLiteral("hhmmss"), Text::tr("ччммсс")},
            {QStringLiteral("hhmm"), Text::tr("ччмм")},
            {QStringLiteral("hh:mm:ss"), Text::tr("чч:мм:сс")},
            {QStringLiteral("hh:mm"), Text::tr("чч:мм")}};
}

} // namespace tadata
