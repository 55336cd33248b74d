// SPDX-License-Identifier: MIT
#include "desk/chart/gotodialog.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

namespace vexdesk {

GoToDialog::GoToDialog(const QDate& first, const QDate& last, const QDate& proposed,
                       QWidget* parent)
    : QDialog(parent)
    , m_day(new QDateEdit)
    , m_hasTime(new QCheckBox(tr("&Время:")))
    , m_time(new QTimeEdit)
{
    setObjectName(QStringLiteral("goToDialog"));
    setWindowTitle(tr("Перейти к дате"));
    m_day->setObjectName(QStringLiteral("goToDay"));
    m_day->setCalendarPopup(true);
    m_day->setDisplayFormat(shownDateFormat(QLocale()));
    m_day->setDateRange(first, last);
    m_day->setDate(proposed);
    m_hasTime->setObjectName(QStringLiteral("goToHasTime"));
    m_time->setObjectName(QStringLiteral("goToTime"));
    m_time->setAccessibleName(tr("Время"));
    m_time->setDisplayFormat(QStringLiteral("hh:mm:ss"));
    m_time->setEnabled(false);
    auto* const reach = new QLabel(
        tr("Хранятся дни с %1 по %2").arg(dateText(wallTime(first)), dateText(wallTime(last))));
    reach->setObjectName(QStringLiteral("goToReach"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Перейти"));

    auto* const form = new QFormLayout(this);
    form->addRow(tr("&Дата:"), m_day);
    form->addRow(m_hasTime, m_time);
    form->addRow(reach);
    form->addRow(buttons);

    connect(m_hasTime, &QCheckBox::toggled, m_time, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_day->setFocus();
    m_day->selectAll();
}

GoToDialog::~GoToDialog() = default;

QDate GoToDialog::day() const
{
    return m_day->date();
}

QTime GoToDialog::time() const
{
    return m_hasTime->isChecked() ? m_time->time() : QTime();
}

} // namespace vexdesk
