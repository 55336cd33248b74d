// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>
#include <vexdesk/icore.h>
#include <vexdesk/terminal/database.h>
#include <vexdesk/terminal/rawqueue.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <limits>
#include <memory>

/// For programs that embed the terminal's library: the core itself, and the identity under which
/// settings and data are found. Plug-ins use ICore.
namespace vexdesk {

/// Gives the application object its organisation and application name, so that every program of
/// the terminal finds the same data directory. Call it once after the application object exists.
VEXDESK_CORE_EXPORT void setApplicationIdentity();

/// Emits "aNewDay()", when its owner decides, and tells of problems that were reported to the core.
class VEXDESK_CORE_EXPORT Notifier final : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void aNewDay();
    /// Emitted from the thread that reported it; the core's problems() have it by then.
    void problemReported(const QString& text);
};

/// The core of a process. At most one lives at a time; ICore::instance() finds it.
class VEXDESK_CORE_EXPORT Core final : public ICore
{
public:
    Core();
    ~Core() override;

    void addOptionsPage(IOptionsPage* page) override;
    Notifier* notifier() const override;
    /// Empty at first: whoever feeds a table makes it.
    Database* database() const override;
    RawQueue* rawQueue() const override;
    void reportProblem(const QString& text) override;
    /// Those that were set, which stay their owner's.
    ICharts* charts() const override;
    void setCharts(ICharts* charts);

    /// What was reported and not yet forgotten, the oldest first. Any thread.
    QStringList problems() const;
    /// The user has read the oldest `count` of them, or all that there are. Any thread.
    void forgetProblems(qsizetype count = std::numeric_limits<qsizetype>::max());

    /// The pages in the order in which they were added.
    QList<IOptionsPage*> optionsPages() const;
    /// Forgets the pages of a plug-in that is about to go.
    void removeOptionsPage(IOptionsPage* page);

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};

} // namespace vexdesk
