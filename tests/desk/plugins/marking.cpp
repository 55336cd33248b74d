// SPDX-License-Identifier: MIT
// A plug-in that works with the charts: it marks a day of a series, shows a moment of it, and finds
// out something new.
#include "recordingplugin.h"

#include <vexdesk/action.h>
#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icharts.h>
#include <vexdesk/icore.h>

#include <QtCore/QtPlugin>

#include <functional>

using vexdesk::ChartMark;
using vexdesk::ChartShown;
using vexdesk::SeriesName;

namespace {

SeriesName markedSeries()
{
    return {QStringLiteral("NORD"), QStringLiteral("MAIN"), QStringLiteral("ALFA")};
}

const QDate markedDay(2024, 1, 16);

} // namespace

class Marking final : public desktest::RecordingPlugin, public vexdesk::IChartMarks
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Marking")
    Q_INTERFACES(IPlugin)

public:
    Marking()
        : RecordingPlugin("MARKING")
    {}

    QByteArrayView code() const override { return "MARKING"; }
    QString name() const override { return QStringLiteral("Отметки"); }

    void init(ICore* core) override
    {
        RecordingPlugin::init(core);
        m_charts = core->charts();
        m_charts->addMarks(this);
        addCommand("MARKING.Show", QStringLiteral("&Показать"),
                   [this] { show(markedSeries(), markedDay, QTime(10, 30)); });
        addCommand("MARKING.ShowDay", QStringLiteral("Показать &день"),
                   [this] { show(markedSeries(), markedDay, QTime()); });
        addCommand("MARKING.ShowMissingDay", QStringLiteral("Показать д&ень, которого нет"),
                   [this] { show(markedSeries(), markedDay.addYears(1), QTime()); });
        addCommand("MARKING.ShowNothing", QStringLiteral("Показать &чего нет"), [this] {
            showNext({"NOTHING", "", ".", "..", "../MAIN/ALFA"});
        });
        addCommand("MARKING.Learn", QStringLiteral("&Узнать"), [this] {
            m_text = QStringLiteral("Сделки найдены");
            m_charts->marksChanged(markedSeries());
        });
    }

    void tini() override
    {
        RecordingPlugin::tini();
        m_charts->removeMarks(this);
    }

    QList<ChartMark> marks(const SeriesName& series, const QDate& first, const QDate& last) override
    {
        if (!(series == markedSeries()) || markedDay < first || markedDay > last)
            return {};
        return {{ChartMark::Kind::Warning, markedDay, QTime(10, 29), QTime(10, 31), m_text}};
    }

private:
    void addCommand(const QByteArray& id, const QString& text, const std::function<void()>& run)
    {
        auto* const command = new Command(id, this);
        command->setDefaultText(text);
        ActionManager::instance()
            ->container("TA", QStringLiteral("Тех. &анализ"), "MenuBar", "", "25")
            ->addCommand(command, "M", QByteArray());
        connect(new Action(id, this), &Action::triggered, this, run);
    }

    void show(const SeriesName& series, const QDate& day, const QTime& time)
    {
        m_charts->show(series, day, time, [this](ChartShown shown) { tell(shown); });
    }
    // One after the other: only the last one that is wanted counts.
    void showNext(QStringList securities)
    {
        if (securities.isEmpty())
            return;
        const SeriesName series{QStringLiteral("NORD"), QStringLiteral("MAIN"),
                                securities.takeFirst()};
        m_charts->show(series, markedDay, QTime(), [this, securities](ChartShown shown) {
            tell(shown);
            showNext(securities);
        });
    }
    void tell(ChartShown shown) const
    {
        if (shown == ChartShown::Moment)
            record("shown");
        else
            record(shown == ChartShown::NoDay ? "no day" : "not shown");
    }

    vexdesk::ICharts* m_charts = nullptr;
    QString m_text = QStringLiteral("Сделок не хватает");
};

#include "marking.moc"
