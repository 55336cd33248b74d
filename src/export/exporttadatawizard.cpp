#include "export/exporttadatawizard.h"

#include "export/exportdetails.h"
#include "export/formatexportpage.h"
#include "export/seriesexportpage.h"

#include <vexdesk/appsettings.h>

#include <QtCore/QFile>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMessageBox>

namespace {

const char settingsGroup[] = "TADataManager/ExportWizard";
const char sizeKey[] = "dialog_size";

bool isPress(const QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress)
        return true;
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

ExportTADataWizard::ExportTADataWizard(QWidget* parent)
    : QWizard(parent)
{
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setWindowTitle(tr("Мастер экспорта данных ТА"));
    m_seriesPageId = addPage(new SeriesExportPage);
    m_formatPageId = addPage(new FormatExportPage);

    const AppSettings settings(QLatin1String{settingsGroup});
    if (settings.contains(QLatin1String(sizeKey)))
        resize(settings.value(QLatin1String(sizeKey), sizeHint()).toSize());
    button(QWizard::NextButton)->installEventFilter(this);
}

ExportTADataWizard::~ExportTADataWizard()
{
    AppSettings(QLatin1String(settingsGroup)).setValue(QLatin1String(sizeKey), size());
}

ExportDetails ExportTADataWizard::exportDetails() const
{
    ExportDetails details;
    seriesPage()->getExportDetails(details);
    formatPage()->getExportDetails(details);
    return details;
}

bool ExportTADataWizard::checkFileName()
{
    if (!QFile::exists(seriesPage()->fileName()))
        return true;
    return QMessageBox::question(this, tr("Файл существует"),
                                 tr("Файл с таким именем уже существует и будет перезаписан при "
                                    "экспорте. Все равно продолжить?"),
                                 QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::No) == QMessageBox::Yes;
}

bool ExportTADataWizard::eventFilter(QObject* watched, QEvent* event)
{
    const QAbstractButton* const next = button(QWizard::NextButton);
    if (watched != next || !next->isEnabled() || !showsSeriesPage() || !isPress(event))
        return QWizard::eventFilter(watched, event);
    // At the press already: the question would come between it and its release.
    this->next();
    return true;
}

bool ExportTADataWizard::validateCurrentPage()
{
    // Every way forward leads here: the button, its shortcut, and Return in a field of the page.
    return QWizard::validateCurrentPage() && (!showsSeriesPage() || checkFileName());
}

bool ExportTADataWizard::showsSeriesPage() const
{
    return currentId() == m_seriesPageId;
}

SeriesExportPage* ExportTADataWizard::seriesPage() const
{
    return static_cast<SeriesExportPage*>(page(m_seriesPageId));
}

FormatExportPage* ExportTADataWizard::formatPage() const
{
    return static_cast<FormatExportPage*>(page(m_formatPageId));
}
