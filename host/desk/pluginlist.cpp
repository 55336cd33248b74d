// SPDX-License-Identifier: MIT
#include "desk/pluginlist.h"

#include <QtCore/QStringList>

namespace vexdesk {

QString pluginList(const QList<PluginRecord>& records)
{
    QString text;
    for (const PluginRecord& record : records) {
        const bool isLoaded = record.state == PluginRecord::State::Loaded;
        const QStringList parts{isLoaded ? QStringLiteral("loaded") : QStringLiteral("refused"),
                                record.code, record.version, record.path,
                                QString(record.reason + u' ' + record.details).simplified()};
        text += parts.join(u'\t') + u'\n';
    }
    return text;
}

} // namespace vexdesk
