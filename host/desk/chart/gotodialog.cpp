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

#include <algorithm>

namespace vexdesk {

GoToDialog::GoToDialog(const QDate& first, const QDate& last, const QDate& proposed,
                       QWidget* parent)
    : QDialog(parent)
    , m_first(first)
    , m_last(last)
    , m_day(new QDateEdit)
    , m_reach(new QLabel)
    , m_hasTime(new QCheckBox(tr("&Время:")))
    , m_time(new QTimeEdit)
{
    setObjectName(QStringLiteral("goToDialog"));
    setWindowTitle(tr("Перейти к дате"));
    m_day->setObjectName(QStringLiteral("goToDay"));
    m_day->setCalendarPopup(true);
    m_day->setDisplayFormat(shownDateFormat(QLocale()));
    // No range: a day is typed part by part, and what lies between may be outside of it.
    m_day->setDate(proposed);
    m_hasTime->setObjectName(QStringLiteral("goToHasTime"));
    m_time->setObjectName(QStringLiteral("goToTime"));
    m_time->setAccessibleName(tr("Время"));
    m_time->setDisplayFormat(QStringLiteral("hh:mm:ss"));
    m_time->setEnabled(false);
    m_reach->setObjectName(QStringLiteral("goToReach"));
    showReach();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Перейти"));

    auto* const form = new QFormLayout(this);
    form->addRow(tr("&Дата:"), m_day);
    form->addRow(m_hasTime, m_time);
    form->addRow(m_reach);
    form->addRow(buttons);

    connect(m_day, &QDateEdit::dateChanged, this, &GoToDialog::showReach);
    connect(m_hasTime, &QCheckBox::toggled, m_time, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_day->setFocus();
    m_day->selectAll();
}

GoToDialog::~GoToDialog() = default;

void GoToDialog::showReach()
{
    const auto text = [](const QDate& day) { return dateText(wallTime(day)); };
    m_reach->setText(day() == m_day->date()
                         ? tr("Хранятся дни с %1 по %2").arg(text(m_first), text(m_last))
                         : tr("Этого дня нет, ближайший — %1").arg(text(day())));
}

QDate GoToDialog::day() const
{
    return std::clamp(m_day->date(), m_first, m_last);
}

QTime GoToDialog::time() const
{
    return m_hasTime->isChecked() ? m_time->time() : QTime();
}

} // namespace vexdesk
