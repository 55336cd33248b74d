// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSet>

class QWidget;

namespace vexdesk {

/// Keeps the windows and dialogs of the whole process, those of plug-ins too, on the screen: one
/// that is larger than the screen's free area when it is shown, or reaches beyond it, is made
/// smaller and moved; where its contents do not fit then, they scroll. So is a dialog that grows
/// while it is shown. What the user moves or resizes stays as it is, and so do popups.
///
/// An event filter of the application object. User-interface thread only.
class ScreenFitter final : public QObject
{
    Q_OBJECT

public:
    explicit ScreenFitter(QObject* parent = nullptr);
    ~ScreenFitter() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QSet<const QObject*> m_new; // shown and not active yet; never dereferenced
};

} // namespace vexdesk
