// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>

#include <memory>

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

    QByteArray id() const;

    /// A disabled action shows its command disabled.
    bool isEnabled() const;
    void setEnabled(bool enabled);

    /// Emits triggered() when the action is enabled. An exception that leaves a slot leaves
    /// trigger().
    void trigger();

Q_SIGNALS:
    void triggered();
    void enabledChanged(bool enabled);

private:
    struct Private;
    const std::unique_ptr<Private> m_d;
};
