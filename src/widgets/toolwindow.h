// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLatin1String>
#include <QtWidgets/QDialog>

namespace tadata {

/// A window that stays open beside the terminal's. Escape closes it; Return presses the button that
/// has the focus, and nothing where no button has. Its size is remembered in a group of the
/// terminal's settings. User-interface thread.
class ToolWindow : public QDialog
{
    Q_OBJECT

public:
    ToolWindow(const QString& title, QLatin1String settingsGroup, QWidget* parent);
    ~ToolWindow() override;

protected:
    /// The size that was remembered, or this one. For the constructor.
    void restoreSizeOr(const QSize& size);

    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QLatin1String m_group;
};

} // namespace tadata
