// SPDX-License-Identifier: MIT
#pragma once

#include "importoutlook.h"
#include "ownpool.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QObject>

#include <memory>

namespace tadata {

/// Finds out, in threads of its own, what the chosen files look like, and then what their
/// import would do. New choices end what is under way: only what is true of the last ones is told.
/// User-interface thread; the end of the object waits for its thread, which stops between two
/// lines.
class ImportPreparation final : public QObject
{
    Q_OBJECT

public:
    explicit ImportPreparation(const QDir& root, QObject* parent = nullptr);
    ~ImportPreparation() override;

    const ImportChoices& choices() const { return m_choices; }
    /// Begins anew with these.
    void setChoices(const ImportChoices& choices);
    /// Begins anew: a file or the store has changed.
    void begin();

    /// Of the last choices; empty until layoutsFound().
    const std::vector<LaidOutFile>& files() const { return m_files; }
    /// Whether the outlook is that of the last choices.
    bool isChecked() const { return m_isChecked; }
    const ImportOutlook& outlook() const { return m_checked.outlook; }
    /// The same of each file, without its days.
    const std::vector<FileOutlook>& outlooks() const { return m_checked.files; }

    /// Of the series that were checked, as they were then.
    const DayStamps& stamps() const { return m_checked.stamps; }

    /// So many problems of each file are listed.
    static constexpr qint64 mostProblems = 1000;

Q_SIGNALS:
    void begun();
    void layoutsFound();
    void progressed(int percent);
    void checked();
    /// A stored file cannot be read.
    void failed(const QString& message);

private:
    using Stop = std::shared_ptr<std::atomic<bool>>;
    struct Checked
    {
        std::vector<FileOutlook> files;
        ImportOutlook outlook;
        DayStamps stamps;
        QString failure; ///< null where all was checked
    };

    void leave();
    void takeLayouts();
    void check();
    static Checked addedUp(vexdesk::Result<std::vector<FileOutlook>> files);
    void takeOutlook();

    QDir m_root;
    ImportChoices m_choices;
    Stop m_stop = std::make_shared<std::atomic<bool>>(false);
    std::vector<LaidOutFile> m_files;
    Checked m_checked;
    bool m_isChecked = false;
    OwnPool m_pool;
    QFutureWatcher<std::vector<LaidOutFile>> m_layouts;
    QFutureWatcher<Checked> m_check;
    QList<QFuture<void>> m_left; ///< what was ended and may not have noticed yet
};

} // namespace tadata
