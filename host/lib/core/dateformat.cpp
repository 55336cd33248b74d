// SPDX-License-Identifier: MIT
#include <vexdesk/dateformat.h>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

namespace vexdesk {

namespace {

// Two digits for every number: of a part that may have one, an editor that is looked at while it is
// typed into takes the first digit for the whole.
QString padded(QString format)
{
    for (const QChar part : {u'd', u'M', u'h', u'H'}) {
        if (format.count(part) == 1)
            format.replace(part, QString(2, part));
    }
    return format;
}

} // namespace

QString shownDateFormat(const QLocale& locale)
{
    // No language has been chosen, and what stands for none writes its months in English letters.
    if (locale.language() == QLocale::C)
        return QStringLiteral("dd.MM.yyyy");
    QString format = padded(locale.dateFormat(QLocale::ShortFormat));
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

QString shownMomentFormat(const QLocale& locale)
{
    QString time = padded(locale.timeFormat(QLocale::ShortFormat));
    if (!time.contains(u's'))
        time.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return shownDateFormat(locale) + u' ' + time;
}

QString shownDate(const QDate& date)
{
    return date.toString(shownDateFormat(QLocale()));
}

QString shownMoment(const QDateTime& moment)
{
    const QLocale locale;
    return locale.toString(moment, shownMomentFormat(locale));
}

} // namespace vexdesk
