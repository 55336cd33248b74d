// SPDX-License-Identifier: MIT
#include "support/terminal.h"

#include "desk/mainwindow.h"
#include "desk/pluginloader.h"
#include "support/loadedplugin.h"

#include <vexdesk/terminal/core.h>

#include <QtCore/QFileInfo>
#include <QtTest/QTest>

namespace testsupport {

void verifyLoaded(const vexdesk::PluginLoader& loader)
{
    const QList<vexdesk::PluginRecord> records = loader.records();
    const QString searched = loader.directories().join(u' ');
    QVERIFY2(!records.isEmpty(), qPrintable(QStringLiteral("no library in ") + searched));
    for (const vexdesk::PluginRecord& record : records) {
        const QString said =
            QStringLiteral("%1: %2 %3").arg(record.path, record.reason, record.details);
        QVERIFY2(record.state == vexdesk::PluginRecord::State::Loaded, qPrintable(said));
    }
}

Terminal::Terminal(vexdesk::Language language, const QStringList& pluginDirectories)
    : m_core(std::make_unique<vexdesk::Core>())
    , m_loader(std::make_unique<vexdesk::PluginLoader>())
{
    m_loader->setLanguage(language);
    m_window = std::make_unique<vexdesk::MainWindow>(*m_loader);
    m_loader->load(pluginDirectories, m_core.get());
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QCoreApplication::processEvents(); // the menus follow with the next turn of the event loop
}

Terminal::~Terminal()
{
    m_loader->unload(); // the charts are there until then
    m_window.reset();
    m_loader.reset();
}

std::unique_ptr<Terminal> Terminal::withPlugin(vexdesk::Language language)
{
    const QStringList directories{QFileInfo(pluginFile()).path()};
    auto terminal = std::make_unique<Terminal>(language, directories);
    verifyLoaded(*terminal->m_loader);
    return terminal;
}

} // namespace testsupport
