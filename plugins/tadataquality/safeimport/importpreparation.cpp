// SPDX-License-Identifier: MIT
#include "importpreparation.h"

#include <QtConcurrent/QtConcurrentRun>

namespace tadata {

using vexdesk::Result;

using Layouts = std::vector<LaidOutFile>;
using Outlooks = std::vector<FileOutlook>;

ImportPreparation::ImportPreparation(const QDir& root, QObject* parent)
    : QObject(parent)
    , m_root(root)
{
    connect(&m_layouts, &QFutureWatcherBase::finished, this, &ImportPreparation::takeLayouts);
    connect(&m_check, &QFutureWatcherBase::finished, this, &ImportPreparation::takeOutlooks);
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
    m_left.append(QFuture<void>(m_layouts.future()));
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
    m_outlooks.clear();
    m_isChecked = false;
    Q_EMIT begun();
    m_layouts.setFuture(QtConcurrent::run([choices = m_choices, stop = m_stop] {
        return layOutFiles(choices.files, choices.given, *stop);
    }));
}

void ImportPreparation::takeLayouts()
{
    if (m_layouts.future().resultCount() == 0)
        return;
    m_files = m_layouts.result();
    Q_EMIT layoutsFound();
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
        [choices = m_choices, files = m_files, root = m_root, stop = m_stop, tell] {
            return checkChoices(choices, files, root, mostProblems, tell, *stop);
        }));
}

void ImportPreparation::takeOutlooks()
{
    if (m_check.future().resultCount() == 0)
        return;
    const Result<Outlooks> outlooks = m_check.result();
    if (!outlooks) {
        Q_EMIT failed(outlooks.message());
        return;
    }
    m_outlooks = *outlooks;
    m_isChecked = true;
    Q_EMIT checked();
}

} // namespace tadata
