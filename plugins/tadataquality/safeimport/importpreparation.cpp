// SPDX-License-Identifier: MIT
#include "importpreparation.h"

#include <QtConcurrent/QtConcurrentRun>

namespace tadata {

using vexdesk::Result;

using Outlooks = std::vector<FileOutlook>;

ImportPreparation::ImportPreparation(const QDir& root, QObject* parent)
    : QObject(parent)
    , m_root(root)
{
    connect(&m_layouts, &QFutureWatcherBase::finished, this, &ImportPreparation::takeLayouts);
    connect(&m_check, &QFutureWatcherBase::finished, this, &ImportPreparation::takeOutlook);
}

ImportPreparation::~ImportPreparation()
{
    leave();
    for (QFuture<void>& left : m_left)
        left.waitForFinished();
}

// What is under way goes on to its next line, and nobody hears of it.
void ImportPreparation::leave()
{
    *m_stop = true;
    m_left.removeIf([](const QFuture<void>& left) { return left.isFinished(); });
    if (m_layouts.isRunning())
        m_left.append(QFuture<void>(m_layouts.future()));
    if (m_check.isRunning())
        m_left.append(QFuture<void>(m_check.future()));
    m_layouts.setFuture({});
    m_check.setFuture({});
}

void ImportPreparation::setChoices(const ImportChoices& choices)
{
    m_choices = choices;
    begin();
}

void ImportPreparation::begin()
{
    leave();
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_files.clear();
    m_checked = {};
    m_isChecked = false;
    Q_EMIT begun();
    m_layouts.setFuture(QtConcurrent::run(m_pool.get(), [choices = m_choices, stop = m_stop] {
        return layOutFiles(choices.files, choices.given, *stop);
    }));
}

void ImportPreparation::takeLayouts()
{
    if (m_layouts.future().resultCount() == 0)
        return;
    m_files = m_layouts.result();
    const Stop stop = m_stop;
    Q_EMIT layoutsFound();
    // Whoever heard of it may have begun anew.
    if (stop == m_stop)
        check();
}

void ImportPreparation::check()
{
    const auto tell = [this, stop = m_stop](int percent) {
        QMetaObject::invokeMethod(
            this,
            [this, stop, percent] {
                if (stop == m_stop)
                    Q_EMIT progressed(percent);
            },
            Qt::QueuedConnection);
    };
    m_check.setFuture(QtConcurrent::run(
        m_pool.get(), [choices = m_choices, files = m_files, root = m_root, stop = m_stop, tell] {
            return addedUp(
                checkChoices(choices, files, root, mostProblems, tellingChanges(tell), *stop));
        }));
}

// Of thousands of series that takes its time.
ImportPreparation::Checked ImportPreparation::addedUp(Result<Outlooks> files)
{
    Checked checked;
    if (!files) {
        checked.failure = vexdesk::Outcome(files.failure()).wholeMessage();
        return checked;
    }
    checked.files = *std::move(files);
    checked.outlook = outlookOf(checked.files);
    for (FileOutlook& file : checked.files) {
        // A series that two files have is to be what it was for the first of them.
        for (auto stamp = file.stamps.cbegin(); stamp != file.stamps.cend(); ++stamp) {
            if (!checked.stamps.contains(stamp.key()))
                checked.stamps.insert(stamp.key(), stamp.value());
        }
        for (SeriesOutlook& series : file.series)
            series.check.days = {};
    }
    return checked;
}

void ImportPreparation::takeOutlook()
{
    if (m_check.future().resultCount() == 0)
        return;
    Checked checked = m_check.future().takeResult();
    if (!checked.failure.isNull()) {
        Q_EMIT failed(checked.failure);
        return;
    }
    m_checked = std::move(checked);
    m_isChecked = true;
    Q_EMIT this->checked();
}

} // namespace tadata
