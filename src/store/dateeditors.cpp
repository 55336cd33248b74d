#include "store/dateeditors.h"

#include <QtCore/QLocale>

namespace tadata {

QString shownDateFormat(const QLocale& locale)
{
    // No language has been chosen, and what stands for none writes its months in English letters.
    if (locale.language() == QLocale::C)
        return QStringLiteral("dd.MM.yyyy");
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

} // namespace tadata
