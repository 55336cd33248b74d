// SPDX-License-Identifier: MIT
#include "calendarlegend.h"

#include "calendarcolors.h"
#include "calendardelegate.h"

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

namespace {

using State = CalendarModel::State;

// One cell as the calendar has them.
class Sample final : public QWidget
{
public:
    Sample(State state, double share, bool isWrong)
        : m_state(state)
        , m_share(share)
        , m_isWrong(isWrong)
    {
        const int side = fontMetrics().height();
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        CalendarDelegate::paintDay(painter, rect(), CalendarColors::of(palette()), m_state, m_share,
                                   m_isWrong);
    }

private:
    State m_state;
    double m_share;
    bool m_isWrong;
};

} // namespace

CalendarLegend::CalendarLegend(QWidget* parent)
    : QWidget(parent)
{
    struct Entry
    {
        QString text;
        State state = State::Stored;
        double share = 1;
        bool isWrong = false;
    };
    constexpr double almost = 0.99;
    const QList<Entry> entries{{tr("всё есть")},
                               {tr("почти всё"), State::Stored, almost},
                               {tr("почти ничего"), State::Stored, 0},
                               {tr("не с чем сравнить"), State::Unusual},
                               {tr("ошибки"), State::Stored, 1, true},
                               {tr("нет дня"), State::Missing},
                               {tr("под вопросом"), State::Unproven},
                               {tr("закрыто"), State::Closed}};
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    constexpr int gap = 3;
    line->setSpacing(gap);
    for (const Entry& entry : entries) {
        line->addWidget(new Sample(entry.state, entry.share, entry.isWrong));
        line->addWidget(new QLabel(entry.text));
        line->addSpacing(gap);
    }
    line->addStretch();
}

CalendarLegend::~CalendarLegend() = default;
