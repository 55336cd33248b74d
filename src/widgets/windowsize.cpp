// SPDX-License-Identifier: MIT
#include "windowsize.h"

#include <vexdesk/appsettings.h>

#include <QtGui/QScreen>
#include <QtWidgets/QLayout>
#include <QtWidgets/QWizard>
#include <QtWidgets/QWizardPage>

#include <algorithm>

namespace tadata {

namespace {

constexpr QLatin1String sizeKey("dialog_size");

// The widgets around the page, from the window inwards, get their places.
void layOut(const QWidget* widget)
{
    if (!widget->isWindow())
        layOut(widget->parentWidget());
    if (widget->layout())
        widget->layout()->activate();
}

} // namespace

void restoreSize(QWidget& window, QLatin1String settingsGroup)
{
    const AppSettings settings(settingsGroup);
    if (settings.contains(sizeKey))
        window.resize(settings.value(sizeKey, window.sizeHint()).toSize());
}

void saveSize(const QWidget& window, QLatin1String settingsGroup)
{
    AppSettings(settingsGroup).setValue(sizeKey, window.size());
}

void widenForPage(QWizard& wizard, int pageWidth)
{
    const QWizardPage* const page = wizard.currentPage();
    if (wizard.testAttribute(Qt::WA_Resized) || !page)
        return;
    layOut(page->parentWidget());
    const int besidePage = wizard.width() - page->width();
    const int wanted = std::min(pageWidth + besidePage, wizard.screen()->availableSize().width());
    wizard.resize(std::max(wizard.width(), wanted), wizard.height());
}

} // namespace tadata
