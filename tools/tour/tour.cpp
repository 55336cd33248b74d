// SPDX-License-Identifier: MIT
#include "tour/tour.h"

#include <QtCore/QTimer>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cstdio>

namespace vexdesk {

namespace {

constexpr int lookInterval = 20; // milliseconds
constexpr int patience = 20000;  // milliseconds until a step counts as failed

bool isBeside(const QWidget* window)
{
    return !window->isModal() && qobject_cast<const QDialog*>(window);
}

// From the back to the front: the window, or one that stands beside it and is what is looked at,
// dialogs over it, open lists and menus over these.
QList<QWidget*> visibleWindows()
{
    QList<QWidget*> windows;
    const QList<QWidget*> all = QApplication::topLevelWidgets();
    std::copy_if(all.begin(), all.end(), std::back_inserter(windows),
                 [](const QWidget* window) { return window->isVisible(); });
    if (std::any_of(windows.begin(), windows.end(), isBeside))
        windows.removeIf([](const QWidget* window) {
            return qobject_cast<const QMainWindow*>(window) != nullptr;
        });
    const auto depth = [](const QWidget* window) {
        if (window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip)
            return 2;
        return window->isModal() ? 1 : 0;
    };
    std::stable_sort(
        windows.begin(), windows.end(),
        [depth](const QWidget* left, const QWidget* right) { return depth(left) < depth(right); });
    return windows;
}

} // namespace

Tour::Tour(const QDir& pictures, QObject* parent)
    : QObject(parent)
    , m_pictures(pictures)
{}

void Tour::start()
{
    m_waiting.start();
    QTimer::singleShot(0, this, &Tour::look);
}

void Tour::look()
{
    if (m_current == m_steps.size()) {
        Q_EMIT finished();
        return;
    }
    const TourStep step = m_steps.at(m_current);
    if (const Outcome holds = step.check ? step.check() : Outcome(); !holds) {
        if (m_waiting.elapsed() > patience) {
            savePicture(QStringLiteral("failed.png"));
            Q_EMIT failed(tr("Шаг «%1»: %2").arg(step.title, holds.message()));
        } else {
            QTimer::singleShot(lookInterval, this, &Tour::look);
        }
        return;
    }

    ++m_current;
    QString line = step.title;
    if (!step.picture.isEmpty()) {
        const QString name =
            QStringLiteral("%1-%2.png")
                .arg(QString::number(++m_pictureCount).rightJustified(2, u'0'), step.picture);
        if (!savePicture(name)) {
            Q_EMIT failed(tr("Невозможно записать файл %1").arg(m_pictures.filePath(name)));
            return;
        }
        line += tr(" (картинка %1)").arg(name);
    }
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
    // Before acting: what the step does may not return before later steps close its dialog.
    m_waiting.restart();
    QTimer::singleShot(lookInterval, this, &Tour::look);
    if (step.act)
        step.act();
}

bool Tour::savePicture(const QString& name) const
{
    const QList<QWidget*> windows = visibleWindows();
    QRect area;
    for (const QWidget* window : windows)
        area |= window->geometry();
    if (area.isEmpty())
        return false;
    const qreal ratio = windows.first()->devicePixelRatioF();
    QPixmap picture(area.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    for (QWidget* const window : windows) {
        const QRect place = window->geometry().translated(-area.topLeft());
        painter.drawPixmap(place.topLeft(), window->grab());
        if (window->isModal()) {
            painter.setPen(window->palette().color(QPalette::Shadow));
            painter.drawRect(place.adjusted(-1, -1, 0, 0));
        }
    }
    painter.end();
    return picture.save(m_pictures.filePath(name));
}

} // namespace vexdesk
