// SPDX-License-Identifier: MIT
#include "importtadatawizard.h"

#include "columnsimportpage.h"
#include "formatimportpage.h"
#include "importdetails.h"
#include "seriesimportpage.h"
#include "windowsize.h"

#include <QtGui/QShowEvent>

namespace {

constexpr QLatin1String settingsGroup("TADataManager/ImportWizard");

// Date, time, four prices, and the volume in pieces and in money.
constexpr int commonColumns = 8;

} // namespace

ImportTADataWizard::ImportTADataWizard(const QList<QString>& lines, QWidget* parent)
    : QWizard(parent)
{
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setWindowTitle(tr("Мастер импорта данных ТА"));
    m_seriesPageId = addPage(new SeriesImportPage);
    m_formatPageId = addPage(new FormatImportPage(lines));
    m_columnsPageId = addPage(new ColumnsImportPage(lines));

    tadata::restoreSize(*this, settingsGroup);
}

ImportTADataWizard::~ImportTADataWizard()
{
    tadata::saveSize(*this, settingsGroup);
}

void ImportTADataWizard::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        tadata::widenForPage(*this, columnsPage()->widthForColumns(commonColumns));
    QWizard::showEvent(event);
}

ImportDetails ImportTADataWizard::importDetails() const
{
    ImportDetails details;
    seriesPage()->getImportDetails(details);
    formatPage()->getImportDetails(details);
    columnsPage()->getImportDetails(details);
    return details;
}

QString ImportTADataWizard::columnSeparator() const
{
    return formatPage()->separator();
}

QString ImportTADataWizard::dateFormat() const
{
    return formatPage()->dateFormat();
}

QString ImportTADataWizard::timeFormat() const
{
    return formatPage()->timeFormat();
}

SeriesImportPage* ImportTADataWizard::seriesPage() const
{
    return static_cast<SeriesImportPage*>(page(m_seriesPageId));
}

FormatImportPage* ImportTADataWizard::formatPage() const
{
    return static_cast<FormatImportPage*>(page(m_formatPageId));
}

ColumnsImportPage* ImportTADataWizard::columnsPage() const
{
    return static_cast<ColumnsImportPage*>(page(m_columnsPageId));
}
