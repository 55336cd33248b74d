// SPDX-License-Identifier: MIT
#include "safeimportwindow.h"

SafeImportWindow::SafeImportWindow(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Безопасный импорт"));
}

SafeImportWindow::~SafeImportWindow() = default;

void SafeImportWindow::take(const tadata::SafeImportRequest& request)
{
    if (request.isEmpty())
        return;
}
