// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

namespace vexdesk {

/// Writes the dates in Qt's own file dialogs as the terminal's language has it (the default
/// QLocale); the dialog's model writes them in that of the system. Dialogs of the desktop, which
/// are not made of widgets, stay as they are.
///
/// An event filter of the application object. User-interface thread only.
class FileDialogDates final : public QObject
{
    Q_OBJECT

public:
    explicit FileDialogDates(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace vexdesk
