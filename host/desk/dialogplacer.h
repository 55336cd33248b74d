// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

class QDialog;

namespace vexdesk {

/// Puts the dialogs of the whole process that have no parent, those of plug-ins too, into the
/// middle of the window in use, as Qt does with those that have one: they would stand in the middle
/// of the screen, however far the terminal is from it. One that was moved before it is shown stays
/// where it is.
///
/// An event filter of the application object. User-interface thread only.
class DialogPlacer final : public QObject
{
    Q_OBJECT

public:
    explicit DialogPlacer(QObject* parent = nullptr);
    ~DialogPlacer() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void begin(QDialog& dialog);
    void place();

    QPointer<QDialog> m_dialog; // that is being shown: it may resize itself there
    QPointer<QWidget> m_window; // in the middle of which it is to stand
};

} // namespace vexdesk
