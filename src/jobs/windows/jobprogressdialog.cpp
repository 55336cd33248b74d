// SPDX-License-Identifier: MIT
#include "jobprogressdialog.h"

#include <QtGui/QCloseEvent>

JobProgressDialog::JobProgressDialog(const QString& title, const QString& text)
{
    setCancelButton(nullptr);
    setWindowTitle(title);
    setLabelText(text);
    setRange(0, 100);
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint |
                   Qt::CustomizeWindowHint);
    // The end of the job closes the dialog, not its last value.
    setAutoReset(false);
    setAutoClose(false);
}

void JobProgressDialog::reject()
{
    // What Escape does to a dialog; the job goes on, and so does the dialog.
}

void JobProgressDialog::closeEvent(QCloseEvent* event)
{
    if (event->spontaneous())
        event->ignore();
    else
        QProgressDialog::closeEvent(event);
}
