// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/core.h>

#include <QtCore/QMutex>

#include <algorithm>

namespace {

ICore* theCore = nullptr;

} // namespace

ICore::ICore()
{
    Q_ASSERT_X(!theCore, "ICore", "a process has one core");
    theCore = this;
}

ICore::~ICore()
{
    theCore = nullptr;
}

ICore* ICore::instance()
{
    return theCore;
}

void ICore::reportProblem(const QString&)
{}

vexdesk::ICharts* ICore::charts() const
{
    return nullptr;
}

namespace vexdesk {

void setApplicationIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vexdesk"));
    QCoreApplication::setApplicationName(QStringLiteral("Vexdesk"));
}

struct Core::Private
{
    QList<IOptionsPage*> optionsPages;
    Notifier notifier;
    Database database;
    RawQueue rawQueue; // ends before the tables that it fills
    QMutex problemsMutex;
    QStringList problems;
    ICharts* charts = nullptr;
};

Core::Core()
    : m_d(new Private)
{}

Core::~Core() = default;

void Core::addOptionsPage(IOptionsPage* page)
{
    if (page && !m_d->optionsPages.contains(page))
        m_d->optionsPages.append(page);
}

void Core::removeOptionsPage(IOptionsPage* page)
{
    m_d->optionsPages.removeOne(page);
}

Notifier* Core::notifier() const
{
    return &m_d->notifier;
}

Database* Core::database() const
{
    return &m_d->database;
}

RawQueue* Core::rawQueue() const
{
    return &m_d->rawQueue;
}

QList<IOptionsPage*> Core::optionsPages() const
{
    return m_d->optionsPages;
}

void Core::reportProblem(const QString& text)
{
    {
        const QMutexLocker lock(&m_d->problemsMutex);
        m_d->problems.append(text);
    }
    Q_EMIT m_d->notifier.problemReported(text);
}

ICharts* Core::charts() const
{
    return m_d->charts;
}

void Core::setCharts(ICharts* charts)
{
    m_d->charts = charts;
}

QStringList Core::problems() const
{
    const QMutexLocker lock(&m_d->problemsMutex);
    return m_d->problems;
}

void Core::forgetProblems(qsizetype count)
{
    const QMutexLocker lock(&m_d->problemsMutex);
    m_d->problems = m_d->problems.mid(std::min(count, m_d->problems.size()));
}

} // namespace vexdesk
