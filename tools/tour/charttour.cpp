// SPDX-License-Identifier: MIT
#include "tour/charttour.h"

#include "desk/chart/axisticks.h"
#include "desk/chart/charttabs.h"
#include "desk/chart/readout.h"
#include "desk/chart/wallclock.h"
#include "desk/mainwindow.h"
#include "tour/demonstration.h"
#include "tour/settingsbefore.h"
#include "tour/tour.h"
#include "tour/toursteps.h"
#include "tour/userinput.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>

#include <memory>

namespace vexdesk {

namespace {

// What the steps share: the window's charts, by the names of their widgets.
struct State
{
    explicit State(MainWindow& terminal)
        : window(terminal)
        , tabs(*terminal.findChild<ChartTabs*>())
        , dock(*terminal.findChild<QDockWidget*>(QStringLiteral("seriesDock")))
        , wasDockShown(!dock.isHidden())
    {}

    // Of the chart in front; null where there is none.
    template <typename Widget>
    Widget* widget(const char* name) const
    {
        const QWidget* const page = tabs.currentWidget();
        auto* const found = page ? page->findChild<Widget*>(QLatin1String(name)) : nullptr;
        return found && found->isVisible() ? found : nullptr;
    }
    QWidget* chart() const { return widget<QWidget>("chartView"); }
    QString readout() const
    {
        const auto* const label = widget<QLabel>("chartReadout");
        return label ? label->text() : QString();
    }
    QTreeView* series() const { return dock.findChild<QTreeView*>(QStringLiteral("seriesView")); }

    // Where the tree has the demonstration's series; not valid where it does not show it.
    QModelIndex seriesRow() const
    {
        QModelIndex row;
        for (const QString& code :
             {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")}) {
            const QAbstractItemModel& model = *series()->model();
            const QModelIndexList found =
                model.match(model.index(0, 0, row), Qt::DisplayRole, code, 1, Qt::MatchExactly);
            if (found.isEmpty())
                return QModelIndex();
            row = found.constFirst();
        }
        return row;
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
        dock.setVisible(wasDockShown);
        settings.restore();
    }

    MainWindow& window;
    ChartTabs& tabs;
    QDockWidget& dock;
    bool wasDockShown;
    QPoint mouse; // over the chart
    SettingsBefore settings{QStringList{QStringLiteral("Desk/Charts/recent"),
                                        QStringLiteral("Desk/Charts/tabs"),
                                        QStringLiteral("Desk/Charts/current")}};
};

using SharedState = std::shared_ptr<State>;

constexpr CandleKind minutes{Timeframe::Minute, 60};

// A bar of the demonstration, as the input file has it, and where it ends.
struct PointedBar
{
    QDate day{2024, 1, 15};
    QTime time{10, 20};

    QString timeText() const { return dateTimeText(wallTime(day, time), minutes.stored); }

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
            return readoutText(candle, minutes, decimals);
        }
        return QString();
    }
};

void addOpening(Tour& tour, const SharedState& state)
{
    tour.add({Tour::tr("дерево серий"), {}, [state] { state->dock.show(); }});
    tour.add({Tour::tr("открыть серию двойным щелчком"),
              [state] {
                  return missingUnless(state->seriesRow().isValid(),
                                       Tour::tr("в дереве нет импортированной серии"));
              },
              [state] {
                  QTreeView* const view = state->series();
                  view->scrollTo(state->seriesRow());
                  doubleClick(view->viewport(), view->visualRect(state->seriesRow()).center());
              },
              QStringLiteral("series-tree")});
    tour.add({Tour::tr("график открыт"),
              [state] { return missingUnless(state->chart(), Tour::tr("график не открылся")); }});
}

void addLook(Tour& tour, const SharedState& state)
{
    addChoice(
        tour, Tour::tr("таймфрейм графика"),
        [state] { return state->widget<QComboBox>("chartTimeframe"); },
        entryWith(static_cast<int>(Timeframe::Minute)));
    tour.add({Tour::tr("бары на графике"),
              [state] {
                  const bool isShown =
                      state->chart() &&
                      state->pointAt(dateText(wallTime(QDate(2024, 1, 17))) + u' ');
                  return missingUnless(isShown, Tour::tr("баров последнего дня нет"));
              },
              [state] { leave(state->chart()); }});
    addMenuSteps(tour, state->window, "Desk.Chart.Study.0", QStringLiteral("chart"));
    addClick(tour, Tour::tr("показать всё"),
             [state] { return state->widget<QPushButton>("chartShowAll"); });
}

void addZooming(Tour& tour, const SharedState& state, const PointedBar& bar)
{
    const QString day = dateText(wallTime(bar.day));
    constexpr int wheelSteps = 6;
    for (int i = 0; i < wheelSteps; ++i) {
        tour.add({Tour::tr("приблизить колесом мыши"),
                  [state, day] {
                      return missingUnless(state->pointAt(day), Tour::tr("баров первого дня нет"));
                  },
                  [state] { turnWheel(state->chart(), state->mouse, 1); },
                  i == 0 ? QStringLiteral("chart-all") : QString()});
    }
    tour.add({Tour::tr("навести на бар"),
              [state, bar] {
                  if (!state->pointAt(bar.timeText()))
                      return missing(Tour::tr("на графике нет бара %1").arg(bar.timeText()));
                  return missingUnless(
                      state->readout() == bar.readout(),
                      Tour::tr("вместо «%1» прочитано «%2»").arg(bar.readout(), state->readout()));
              },
              [state] { askForMenu(state->chart(), state->mouse); }, QStringLiteral("chart-bar")});
    tour.add({Tour::tr("контекстное меню графика"),
              [] {
                  return missingUnless(qobject_cast<QMenu*>(QApplication::activePopupWidget()),
                                       Tour::tr("меню не открыто"));
              },
              [] { pressKey(QApplication::activePopupWidget(), Qt::Key_Escape); },
              QStringLiteral("chart-menu")});
    tour.add({Tour::tr("увести мышь с графика"),
              [] {
                  return missingUnless(!QApplication::activePopupWidget(),
                                       Tour::tr("меню ещё открыто"));
              },
              [state] { leave(state->chart()); }});
    tour.add({Tour::tr("бар не прочитан"), [state] {
                  return missingUnless(state->readout().isEmpty(), Tour::tr("бар ещё прочитан"));
              }});
}

void addGoingToADay(Tour& tour, const SharedState& state, const PointedBar& bar)
{
    const QDate last(2024, 1, 17);
    addMenuSteps(tour, state->window, "Desk.Chart.GoTo");
    addTyping(
        tour, Tour::tr("дата, к которой перейти"),
        []() -> QWidget* { return inDialog<QLineEdit>("goToDay"); }, dateText(wallTime(last)));
    tour.add(
        {Tour::tr("перейти к дате"),
         [] { return missingUnless(inDialog<QLineEdit>("goToDay"), Tour::tr("окно не открыто")); },
         [] { pressKey(QApplication::activeModalWidget(), Qt::Key_Return); },
         QStringLiteral("chart-goto")});
    tour.add({Tour::tr("график у этой даты"), [state, last] {
                  const bool isThere = !QApplication::activeModalWidget() &&
                                       state->pointAt(dateText(wallTime(last)) + u' ');
                  return missingUnless(isThere, Tour::tr("баров последнего дня нет"));
              }});
    addMenuSteps(tour, state->window, "Desk.Chart.Back");
    tour.add({Tour::tr("график там же, где был"),
              [state, bar] {
                  return missingUnless(state->pointAt(bar.timeText()),
                                       Tour::tr("на графике нет бара %1").arg(bar.timeText()));
              },
              [state] { leave(state->chart()); }});
}

void addLookAfterEdit(Tour& tour, const SharedState& state)
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

void addClosing(Tour& tour, const SharedState& state)
{
    addMenuSteps(tour, state->window, "Desk.Chart.Close");
    tour.add({Tour::tr("график закрыт"),
              [state] { return missingUnless(!state->chart(), Tour::tr("график не закрылся")); },
              [state] { state->dock.setVisible(state->wasDockShown); }});
}

} // namespace

void addChartTour(Tour& tour, MainWindow& window, const std::function<void()>& edit)
{
    const auto state = std::make_shared<State>(window);
    const auto restore = [state] { state->restore(); };
    QObject::connect(&tour, &Tour::failed, &tour, restore);
    // Not earlier: the window remembers its charts when it is closed.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &tour, restore);
    addOpening(tour, state);
    addLook(tour, state);
    addZooming(tour, state, PointedBar());
    addGoingToADay(tour, state, PointedBar());
    edit();
    addLookAfterEdit(tour, state);
    addClosing(tour, state);
}

} // namespace vexdesk
