// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <functional>

class QMessageBox;

namespace desktest {

/// Answers the message boxes that open while it lives, as a user would: notes the text and presses
/// Enter. The call that opened the box returns then.
class MessageBoxes final : public QObject
{
    Q_OBJECT

public:
    MessageBoxes();
    ~MessageBoxes() override;

    /// The texts of the boxes that were answered, the first one first.
    QStringList texts() const { return m_texts; }
    /// Their window titles.
    QStringList titles() const { return m_titles; }

    /// Runs something while a box is on the screen, before it is answered.
    void whileOpen(std::function<void(QMessageBox*)> action) { m_whileOpen = std::move(action); }

private:
    void answer();

    QTimer m_timer;
    QStringList m_texts;
    QStringList m_titles;
    std::function<void(QMessageBox*)> m_whileOpen;
    bool m_busy = false;
};

} // namespace desktest
