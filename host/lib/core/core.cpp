#include <vexdesk/terminal/core.h>

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

} // namespace vexdesk
