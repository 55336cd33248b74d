// SPDX-License-Identifier: MIT
#pragma once

#include "callrecord.h"

#include <vexdesk/iplugin.h>

/// What the test plug-ins have in common.
namespace desktest {

/// Records every call under its own name, such as "GOOD.init", and does nothing else.
class RecordingPlugin : public QObject, public IPlugin
{
public:
    ~RecordingPlugin() override { record("destroyed"); }

    QString author() const override { return QStringLiteral("Мастерская"); }
    QString version() const override { return QStringLiteral("1.0"); }
    QString description() const override { return name() + QStringLiteral(" для проверки"); }

    void init(ICore* /*core*/) override { record("init"); }
    void tini() override { record("tini"); }
    void initStage(InitStage stage) override
    {
        record(stage == InitStage::PluginsReady ? "PluginsReady" : "WindowShown");
    }

protected:
    explicit RecordingPlugin(const char* recordName)
        : m_recordName(recordName)
    {}

    void record(const char* call) const
    {
        recordCall(QStringLiteral("%1.%2").arg(QLatin1String(m_recordName), QLatin1String(call)));
    }

private:
    const char* m_recordName;
};

} // namespace desktest
