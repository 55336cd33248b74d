// SPDX-License-Identifier: MIT
#include "desk/chart/gotodialog.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/daytext.h"
#include "desk/chart/wallclock.h"

#include <vexdesk/dateformat.h>

#include <QtCore/QLocale>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QCalendarWidget>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTimeEdit>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QWidgetAction>

#include <algorithm>
#include <utility>

namespace vexdesk {

namespace {

QString textOf(const QDate& day)
{
    return dateText(wallTime(day));
}

} // namespace

GoToDialog::GoToDialog(QList<QDate> days, const QDate& proposed, QWidget* parent)
    : QDialog(parent)
    , m_days(std::move(days))
    , m_proposed(offeredFor(proposed))
    , m_day(new QLineEdit)
    , m_calendarButton(new QToolButton)
    , m_calendar(new QCalendarWidget)
    , m_reach(new QLabel)
    , m_hasTime(new QCheckBox(tr("&Время:")))
    , m_time(new QTimeEdit)
{
    setObjectName(QStringLiteral("goToDialog"));
    setWindowTitle(tr("Перейти к дате"));
    m_hasTime->setObjectName(QStringLiteral("goToHasTime"));
    m_time->setObjectName(QStringLiteral("goToTime"));
    m_time->setAccessibleName(tr("Время"));
    m_time->setDisplayFormat(QStringLiteral("hh:mm:ss"));
    m_time->setEnabled(false);
    m_reach->setObjectName(QStringLiteral("goToReach"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_go = buttons->button(QDialogButtonBox::Ok);
    m_go->setText(tr("Перейти"));

    auto* const form = new QFormLayout(this);
    auto* const dayName = new QLabel(tr("&Дата:"));
    dayName->setBuddy(m_day);
    form->addRow(dayName, makeDayRow());
    form->addRow(m_hasTime, m_time);
    form->addRow(m_reach);
    form->addRow(buttons);
    makeCalendar();

    connect(m_day, &QLineEdit::textChanged, this, &GoToDialog::showReach);
    connect(m_hasTime, &QCheckBox::toggled, m_time, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showDay(m_proposed);
    m_day->setFocus();
}

GoToDialog::~GoToDialog() = default;

QWidget* GoToDialog::makeDayRow()
{
    m_day->setObjectName(QStringLiteral("goToDay"));
    m_day->setToolTip(
        tr("День, день и месяц или дата целиком: 29, 29.02, 29.02.2024; стрелки вверх "
           "и вниз — соседние дни"));
    m_day->installEventFilter(this);
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_day, 1);
    layout->addWidget(m_calendarButton);
    return row;
}

void GoToDialog::makeCalendar()
{
    m_calendar->setObjectName(QStringLiteral("goToCalendar"));
    m_calendar->setDateRange(m_days.constFirst(), m_days.constLast());
    m_calendar->setFirstDayOfWeek(Qt::Monday);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    auto* const menu = new QMenu(m_calendarButton);
    auto* const item = new QWidgetAction(menu);
    item->setDefaultWidget(m_calendar);
    menu->addAction(item);
    m_calendarButton->setObjectName(QStringLiteral("goToCalendarButton"));
    m_calendarButton->setText(tr("Календарь"));
    m_calendarButton->setMenu(menu);
    m_calendarButton->setPopupMode(QToolButton::InstantPopup);
    m_calendarButton->setFocusPolicy(Qt::StrongFocus);
    connect(menu, &QMenu::aboutToShow, this, [this] {
        m_calendar->setSelectedDate(day());
        m_calendar->setFocus();
    });
    const auto take = [this, menu](const QDate& day) {
        menu->close();
        showDay(day);
    };
    connect(m_calendar, &QCalendarWidget::clicked, this, take);
    connect(m_calendar, &QCalendarWidget::activated, this, take);
}

std::optional<QDate> GoToDialog::typed() const
{
    return dayOfText(m_day->text(), shownDateFormat(QLocale()),
                     {m_days.constFirst(), m_days.constLast(), m_proposed});
}

QDate GoToDialog::offeredFor(const QDate& day) const
{
    const auto next = std::lower_bound(m_days.begin(), m_days.end(), day);
    return next == m_days.end() ? m_days.constLast() : *next;
}

// From what was typed to the day before or after it among those that are offered.
void GoToDialog::step(int days)
{
    const auto next = std::lower_bound(m_days.begin(), m_days.end(), asked());
    const bool isBetween = next == m_days.end() || *next != asked();
    const qsizetype at = next - m_days.begin() + (days > 0 && isBetween ? days - 1 : days);
    showDay(m_days.at(std::clamp<qsizetype>(at, 0, m_days.size() - 1)));
}

void GoToDialog::showDay(const QDate& day)
{
    m_day->setText(textOf(day));
    m_day->selectAll();
    showReach();
}

// What was typed is said in full where it is not all of a date.
void GoToDialog::showReach()
{
    const std::optional<QDate> meant = typed();
    const QString first = textOf(m_days.constFirst());
    const QString last = textOf(m_days.constLast());
    m_go->setEnabled(meant.has_value());
    if (!meant)
        m_reach->setText(tr("Это не дата. Нужна, например, %1").arg(last));
    else if (*meant != day())
        m_reach->setText(
            tr("За %1 показать нечего: будет показан %2").arg(textOf(*meant), textOf(day())));
    else if (m_day->text() != textOf(*meant))
        m_reach->setText(tr("%1. Хранятся дни с %2 по %3").arg(textOf(*meant), first, last));
    else
        m_reach->setText(tr("Хранятся дни с %1 по %2").arg(first, last));
}

// The arrow keys go to the days beside it.
bool GoToDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_day || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return QDialog::eventFilter(watched, event);
    step(key == Qt::Key_Up ? 1 : -1);
    return true;
}

QDate GoToDialog::asked() const
{
    return typed().value_or(m_proposed);
}

QDate GoToDialog::day() const
{
    return offeredFor(asked());
}

QTime GoToDialog::time() const
{
    return m_hasTime->isChecked() ? m_time->time() : QTime();
}

} // namespace vexdesk
