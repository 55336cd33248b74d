// SPDX-License-Identifier: MIT
#include <vexdesk/terminal/core.h>

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

namespace vexdesk {

void setApplicationIdentity()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vexdesk"));
    QCoreApplication::setApplicationName(QStringLiteral("Vexdesk"));
}

Core::Core()
    : m_notifier(std::make_unique<Notifier>())
    , m_database(std::make_unique<Database>())
    , m_rawQueue(std::make_unique<RawQueue>())
{}

Core::~Core() = default;

void Core::addOptionsPage(IOptionsPage* page)
{
    if (page && !m_optionsPages.contains(page))
        m_optionsPages.append(page);
}

void Core::removeOptionsPage(IOptionsPage* page)
{
    m_optionsPages.removeOne(page);
}

Notifier* Core::notifier() const
{
    return m_notifier.get();
}

void Core::reportProblem(const QString& text)
{
    {
        const QMutexLocker lock(&m_problemsMutex);
        m_problems.append(text);
    }
    Q_EMIT m_notifier->problemReported(text);
}

QStringList Core::problems() const
{
    const QMutexLocker lock(&m_problemsMutex);
    return m_problems;
}

void Core::forgetProblems(qsizetype count)
{
    const QMutexLocker lock(&m_problemsMutex);
    m_problems = m_problems.mid(std::min(count, m_problems.size()));
}

} // namespace vexdesk
