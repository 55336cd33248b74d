// SPDX-License-Identifier: MIT
// Its init adds a page and a command, and throws what the application's property "throwType" says.
#include "emptypage.h"
#include "recordingplugin.h"

#include <vexdesk/actionmanager.h>
#include <vexdesk/command.h>
#include <vexdesk/commandcontainer.h>
#include <vexdesk/icharts.h>
#include <vexdesk/icore.h>

#include <QtCore/QtPlugin>

namespace {

// An exception whose code is in this library.
class OwnError final : public std::exception
{
public:
    const char* what() const noexcept override { return "собственная ошибка"; }
};

} // namespace

class Throwing final : public desktest::RecordingPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "qgui.plugin.desktest.Throwing")
    Q_INTERFACES(IPlugin)

public:
    Throwing()
        : RecordingPlugin("THROWING")
    {}

    QByteArrayView code() const override { return "THROWING"; }
    QString name() const override { return QStringLiteral("Бросающий модуль"); }
    QString version() const override { return QStringLiteral("0.1"); }
    QString description() const override { return QStringLiteral("Не запускается"); }

    void init(ICore* core) override
    {
        RecordingPlugin::init(core);
        core->addOptionsPage(&m_page);
        if (core->charts())
            core->charts()->addMarks(&m_marks);
        auto* const command = new Command("THROWING.Command", this);
        ActionManager::instance()->menuBar()->addCommand(command, "", "50");
        const QString type = qApp->property("throwType").toString();
        if (type == QLatin1String("exception"))
            throw OwnError();
        if (type == QLatin1String("text"))
            throw QStringLiteral("нет лицензии");
        throw 42;
    }

private:
    class Marks final : public vexdesk::IChartMarks
    {
    public:
        QList<vexdesk::ChartMark> marks(const vexdesk::SeriesName& /*series*/,
                                        const QDate& /*first*/, const QDate& /*last*/) override
        {
            qFatal("the plug-in that is asked for marks has gone");
        }
    };

    Marks m_marks;
    desktest::EmptyPage m_page{{.id = QStringLiteral("THROWING.General")}};
};

#include "throwing.moc"
