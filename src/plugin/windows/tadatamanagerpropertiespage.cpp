// SPDX-License-Identifier: MIT
#include "tadatamanagerpropertiespage.h"

#include "purgesettings.h"
#include "tadatamanagerpropertiesform.h"

#include <vexdesk/appsettings.h>

namespace {

AppSettings settings()
{
    return AppSettings(QLatin1String(tadata::PurgeSettings::group));
}

} // namespace

TADataManagerPropertiesPage::TADataManagerPropertiesPage(QObject* parent)
    : QObject(parent)
{}

QString TADataManagerPropertiesPage::id() const
{
    return QStringLiteral("TADataManager.General");
}

QString TADataManagerPropertiesPage::displayName() const
{
    return tr("Общее");
}

QString TADataManagerPropertiesPage::category() const
{
    return QStringLiteral("TADataManager");
}

QString TADataManagerPropertiesPage::displayCategory() const
{
    return tr("Истор. данные ТА");
}

QIcon TADataManagerPropertiesPage::categoryIcon() const
{
    return QIcon(QStringLiteral(":/icons/preferences/tadatamanager.png"));
}

bool TADataManagerPropertiesPage::matches(const QString&) const
{
    // The page is found by its category; its one sentence has nothing to search for.
    return false;
}

QWidget* TADataManagerPropertiesPage::createPage(QWidget* parent)
{
    m_form = new TADataManagerPropertiesForm(parent);
    m_form->restore(settings());
    return m_form;
}

void TADataManagerPropertiesPage::apply()
{
    if (!m_form)
        return;
    AppSettings store = settings();
    m_form->store(store);
    Q_EMIT changed();
}

void TADataManagerPropertiesPage::finish()
{
    m_form = nullptr;
}
