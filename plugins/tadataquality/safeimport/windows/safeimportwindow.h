// SPDX-License-Identifier: MIT
#pragma once

#include "safeimportrequest.h"

#include <QtWidgets/QDialog>

/// The window "Безопасный импорт". User-interface thread.
class SafeImportWindow final : public QDialog
{
    Q_OBJECT

public:
    explicit SafeImportWindow(QWidget* parent = nullptr);
    ~SafeImportWindow() override;

    /// Takes over what is known of the import. An empty request changes nothing.
    void take(const tadata::SafeImportRequest& request);
};
