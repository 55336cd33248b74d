// SPDX-License-Identifier: MIT
#include "exporttadatawizard.h"

#include "exportdetails.h"
#include "formatexportpage.h"
#include "seriesexportpage.h"
#include "windowsize.h"

#include <QtCore/QFile>
#include <QtGui/QKeyEvent>
#include <QtGui/QShowEvent>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace {

constexpr QLatin1String settingsGroup("TADataManager/ExportWizard");

bool isReturn(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// Whether the user presses the button by what comes to it.
bool isPress(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::Shortcut:
        return true;
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(event);
        return isReturn(key) || key.key() == Qt::Key_Space;
    }
    default:
        return false;
    }
}

} // namespace

ExportTADataWizard::ExportTADataWizard(QWidget* parent)
    : QWizard(parent)
{
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setWindowTitle(tr("Мастер экспорта данных ТА"));
    m_seriesPageId = addPage(new SeriesExportPage);
    m_formatPageId = addPage(new FormatExportPage);

    tadata::restoreSize(*this, settingsGroup);
    button(QWizard::NextButton)->installEventFilter(this);
}

ExportTADataWizard::~ExportTADataWizard()
{
    tadata::saveSize(*this, settingsGroup);
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
    if (watched != next || !next->isEnabled() || !showsSeriesPage() || !isPress(*event))
        return QWizard::eventFilter(watched, event);
    // At the press already: the question would come between it and its release.
    goToFormat();
    return true;
}

void ExportTADataWizard::keyPressEvent(QKeyEvent* event)
{
    // Return in a field of the page, which presses the default button without an event of its own.
    const auto* const next = qobject_cast<QPushButton*>(button(QWizard::NextButton));
    if (isReturn(*event) && showsSeriesPage() && next && next->isDefault() && next->isEnabled())
        goToFormat();
    else
        QWizard::keyPressEvent(event);
}

void ExportTADataWizard::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        tadata::widenForPage(*this, formatPage()->sizeHint().width());
    QWizard::showEvent(event);
}

void ExportTADataWizard::goToFormat()
{
    if (checkFileName())
        next();
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
