// SPDX-License-Identifier: MIT
#include "dateeditors.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QDateEdit>

namespace tadata {

void setUpDateEditor(QDateTimeEdit& editor)
{
    editor.calendarWidget()->setFirstDayOfWeek(QLocale::system().firstDayOfWeek());
    editor.calendarWidget()->setGridVisible(true);
    editor.setDisplayFormat(qobject_cast<QDateEdit*>(&editor)
                                ? vexdesk::shownDateFormat(QLocale())
                                : vexdesk::shownMomentFormat(QLocale()));
}

} // namespace tadata
