// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QDialog>

class QPlainTextEdit;

namespace vexdesk {

class Core;

/// The window "Ошибки": the texts that were reported to the core, the oldest first, to be read and
/// copied. What is reported while it is open joins them. Once it closes, what it has shown counts
/// as read.
class ProblemsDialog final : public QDialog
{
    Q_OBJECT

public:
    /// `core` must live as long as the dialog.
    explicit ProblemsDialog(Core& core, QWidget* parent = nullptr);
    ~ProblemsDialog() override;

    void done(int result) override;

private:
    void showNew();
    void copyAll();

    Core& m_core;
    QPlainTextEdit* m_texts;
    qsizetype m_shown = 0; // of the core's problems
};

} // namespace vexdesk
