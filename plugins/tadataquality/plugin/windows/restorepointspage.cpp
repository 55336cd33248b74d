// SPDX-License-Identifier: MIT
#include "restorepointspage.h"

#include "restorepointsform.h"
#include "restoresettings.h"

RestorePointsPage::RestorePointsPage(QObject* parent)
    : QObject(parent)
{}

RestorePointsPage::~RestorePointsPage() = default;

QString RestorePointsPage::id() const
{
    return QStringLiteral("TADataQuality.RestorePoints");
}

QString RestorePointsPage::displayName() const
{
    return tr("Точки восстановления");
}

QString RestorePointsPage::category() const
{
    return QStringLiteral("TADataQuality");
}

QString RestorePointsPage::displayCategory() const
{
    return tr("Качество данных ТА");
}

QIcon RestorePointsPage::categoryIcon() const
{
    return QIcon(QStringLiteral(":/quality/icons/points.png"));
}

bool RestorePointsPage::matches(const QString& searchText) const
{
    const QStringList words{tr("точки восстановления"), tr("возврат"), tr("отмена импорта"),
                            tr("место на диске")};
    for (const QString& word : words) {
        if (word.contains(searchText, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

QWidget* RestorePointsPage::createPage(QWidget* parent)
{
    m_form = new RestorePointsForm(parent);
    m_form->show(tadata::restoreLimits());
    return m_form;
}

void RestorePointsPage::apply()
{
    if (m_form)
        tadata::setRestoreLimits(m_form->limits());
}

void RestorePointsPage::finish()
{
    m_form = nullptr;
}
