// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWidget>

#include <memory>

class Settings;
namespace Ui {
class TADataManagerPropertiesForm;
}

/// The widget of the plug-in's options page: whether, and after how many days, second history is
/// removed. The options dialog owns it.
class TADataManagerPropertiesForm final : public QWidget
{
    Q_OBJECT

public:
    explicit TADataManagerPropertiesForm(QWidget* parent = nullptr);
    ~TADataManagerPropertiesForm() override;

    /// Shows the stored values, or the defaults where there are none.
    void restore(const Settings& s);
    /// Stores what is shown.
    void store(Settings& s);

public Q_SLOTS:
    /// The days can be chosen while the box is checked (a Qt::CheckState).
    void on_deleteSeconds_stateChanged(int state);

private:
    std::unique_ptr<Ui::TADataManagerPropertiesForm> m_ui;
};
