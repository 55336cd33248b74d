// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>

/// What a Command does. An Action is tied to the Command with the same id by the ActionManager;
/// creating it is enough. Where several live with one id, the youngest answers.
///
/// The maker owns it. User-interface thread only.
class VEXDESK_GUI_EXPORT Action final : public QObject
{
    Q_OBJECT

public:
    explicit Action(const QByteArray& id, QObject* parent = nullptr);
    ~Action() override;

    QByteArray id() const { return m_id; }

    /// A disabled action shows its command disabled.
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// Emits triggered() when the action is enabled. An exception that leaves a slot leaves
    /// trigger().
    void trigger();

Q_SIGNALS:
    void triggered();
    void enabledChanged(bool enabled);

private:
    QByteArray m_id;
    bool m_enabled = true;
};
