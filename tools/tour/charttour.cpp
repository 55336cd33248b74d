// SPDX-License-Identifier: MIT
#include "tour/charttour.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/chartdock.h"
#include "desk/chart/readout.h"
#include "desk/chart/seriesfeed.h"
#include "desk/chart/wallclock.h"
#include "desk/mainwindow.h"
#include "tour/demonstration.h"
#include "tour/settingsbefore.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <memory>

namespace vexdesk {

namespace {

constexpr int minute = 60;

// What the steps share: the window's chart, by the names of its widgets.
struct State
{
    explicit State(MainWindow& window)
        : dock(*window.findChild<ChartDock*>())
        , wasShown(!dock.isHidden())
    {}

    template <typename Widget>
    Widget* widget(const char* name) const
    {
        auto* const found = dock.findChild<Widget*>(QLatin1String(name));
        return found && found->isVisible() ? found : nullptr;
    }
    QWidget* chart() const { return widget<QWidget>("chartView"); }
    QString readout() const
    {
        return dock.findChild<QLabel*>(QStringLiteral("chartReadout"))->text();
    }

    // Moves the mouse over the chart from the left to the right until what is read out begins so.
    bool pointAt(const QString& time)
    {
        QWidget* const place = chart();
        for (int x = 0; place && x < place->width(); ++x) {
            mouse = QPoint(x, place->height() / 3);
            hover(place, mouse);
            if (readout().startsWith(time))
                return true;
        }
        return false;
    }

    void restore()
    {
        settings.restore();
        dock.setVisible(wasShown);
    }

    ChartDock& dock;
    bool wasShown;
    QPoint mouse; // over the chart
    SettingsBefore settings{
        QStringList{QStringLiteral("Desk/Chart/stock"), QStringLiteral("Desk/Chart/board"),
                    QStringLiteral("Desk/Chart/security"), QStringLiteral("Desk/Chart/timeframe")}};
};

// A bar of the demonstration, as the input file has it, and where it ends.
struct PointedBar
{
    QDate day{2024, 1, 15};
    QTime time{10, 20};

    QString timeText() const { return dateTimeText(wallTime(day, time), minute); }

    // What the chart has to say of it.
    QString readout() const
    {
        const QByteArray wanted = day.toString(QStringLiteral("dd.MM.yy")).toLatin1() + ';' +
                                  time.toString(QStringLiteral("hh:mm")).toLatin1() + ';';
        const QByteArrayList lines = makeDemonstration().input.split('\n');
        for (const QByteArray& line : lines) {
            if (!line.startsWith(wanted))
                continue;
            const QByteArrayList fields = line.split(';');
            Candle candle;
            candle.count = 1;
            candle.bar.time = wallTime(day, time);
            candle.bar.open = fields.at(2).toDouble();
            candle.bar.high = fields.at(3).toDouble();
            candle.bar.low = fields.at(4).toDouble();
            candle.bar.close = fields.at(5).toDouble();
            candle.bar.volume = fields.at(6).toLongLong();
            constexpr int decimals = 2;
            return readoutText(candle, minute, minute, decimals);
        }
        return QString();
    }
};

// Of the demonstration's series.
int entryOfSeries(const QComboBox& list)
{
    const SeriesKey series{QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA"),
                           minute};
    for (int i = 0; i < list.count(); ++i) {
        if (list.itemData(i).value<SeriesKey>().isSameSeriesAs(series))
            return i;
    }
    return -1;
}

void addOpening(Tour& tour, MainWindow& window, const std::shared_ptr<State>& state)
{
    tour.add({Tour::tr("график ещё не открыт"), {}, [state] { state->dock.hide(); }});
    addMenuSteps(tour, window, "Desk.Chart", QString(), QStringLiteral("chart-menu"));
    tour.add({Tour::tr("график открыт"), [state] {
                  return missingUnless(state->dock.isVisible(), Tour::tr("график не открылся"));
              }});
}

void addChoiceOfSeries(Tour& tour, const std::shared_ptr<State>& state)
{
    addChoice(
        tour, Tour::tr("серия графика"),
        [state] { return state->widget<QComboBox>("chartSeries"); }, entryOfSeries);
    addChoice(
        tour, Tour::tr("таймфрейм графика"),
        [state] { return state->widget<QComboBox>("chartTimeframe"); }, entryWith(minute));
    tour.add({Tour::tr("бары на графике"),
              [state] {
                  const bool isShown =
                      state->chart() &&
                      state->pointAt(dateText(wallTime(QDate(2024, 1, 17))) + u' ');
                  return missingUnless(isShown, Tour::tr("баров последнего дня нет"));
              },
              [state] { leave(state->chart()); }});
    addClick(
        tour, Tour::tr("показать всё"),
        [state] { return state->widget<QPushButton>("chartShowAll"); }, {},
        QStringLiteral("chart"));
}

void addZooming(Tour& tour, const std::shared_ptr<State>& state, const PointedBar& bar)
{
    const QString day = dateText(wallTime(bar.day));
    constexpr int wheelSteps = 16;
    for (int i = 0; i < wheelSteps; ++i) {
        tour.add({Tour::tr("приблизить колесом мыши"),
                  [state, day] {
                      return missingUnless(state->pointAt(day), Tour::tr("баров первого дня нет"));
                  },
                  [state] { turnWheel(state->chart(), state->mouse, 1); },
                  i == 0 ? QStringLiteral("chart-all") : QString()});
    }
    tour.add(
        {Tour::tr("прокрутить график"), {}, [state] { pressKey(state->chart(), Qt::Key_Right); }});
    tour.add({Tour::tr("навести на бар"),
              [state, bar] {
                  if (!state->pointAt(bar.timeText()))
                      return missing(Tour::tr("на графике нет бара %1").arg(bar.timeText()));
                  return missingUnless(
                      state->readout() == bar.readout(),
                      Tour::tr("вместо «%1» прочитано «%2»").arg(bar.readout(), state->readout()));
              },
              [state] { leave(state->chart()); }, QStringLiteral("chart-bar")});
    tour.add({Tour::tr("увести мышь с графика"), [state] {
                  return missingUnless(state->readout().isEmpty(), Tour::tr("бар ещё прочитан"));
              }});
}

void addLookAfterEdit(Tour& tour, const std::shared_ptr<State>& state)
{
    const QString deleted = PointedBar().timeText();
    const QString before = PointedBar{QDate(2024, 1, 15), QTime(10, 19)}.timeText();
    tour.add({Tour::tr("удалённых баров нет на графике"),
              [state, deleted, before] {
                  if (!state->chart())
                      return missing(Tour::tr("график не виден"));
                  if (state->pointAt(deleted))
                      return missing(Tour::tr("на графике удалённый бар %1").arg(deleted));
                  return missingUnless(state->pointAt(before),
                                       Tour::tr("на графике нет бара %1").arg(before));
              },
              [state] { leave(state->chart()); }, QStringLiteral("chart-edited")});
}

void addClosing(Tour& tour, MainWindow& window, const std::shared_ptr<State>& state)
{
    addMenuSteps(tour, window, "Desk.Chart");
    tour.add(
        {Tour::tr("график закрыт"),
         [state] { return missingUnless(state->dock.isHidden(), Tour::tr("график не закрылся")); },
         [state] { state->restore(); }});
}

} // namespace

void addChartTour(Tour& tour, MainWindow& window, const std::function<void()>& edit)
{
    const auto state = std::make_shared<State>(window);
    QObject::connect(&tour, &Tour::failed, &tour, [state] { state->restore(); });
    addOpening(tour, window, state);
    addChoiceOfSeries(tour, state);
    addZooming(tour, state, PointedBar());
    edit();
    addLookAfterEdit(tour, state);
    addClosing(tour, window, state);
}

} // namespace vexdesk
