// SPDX-License-Identifier: MIT
#pragma once

#include "desk/pluginrecord.h"

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtWidgets/QDialog>

#include <memory>

namespace vexdesk {

namespace Ui {
class PluginsDialog;
}

class PluginModel;

/// The window "Модули": every library file that was looked at, what became of it, and all that is
/// known about the selected one. It shows a copy of the records.
class PluginsDialog final : public QDialog
{
    Q_OBJECT

public:
    /// `directories` are named when there is no record.
    PluginsDialog(const QList<PluginRecord>& records, const QStringList& directories,
                  QWidget* parent = nullptr);
    ~PluginsDialog() override;

private:
    void showDetails(int row);
    void resizeToContents();
    /// Where the table would be wider than `room`, sentences get more lines than one.
    void wrapSentences(int room);

    std::unique_ptr<Ui::PluginsDialog> m_ui;
    PluginModel* m_model;
};

} // namespace vexdesk
