// SPDX-License-Identifier: MIT
#include "tadatamanagerpropertiesform.h"

#include "purgesettings.h"
#include "ui_tadatamanagerpropertiesform.h"

TADataManagerPropertiesForm::TADataManagerPropertiesForm(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::TADataManagerPropertiesForm>())
{
    m_ui->setupUi(this);
}

TADataManagerPropertiesForm::~TADataManagerPropertiesForm() = default;

void TADataManagerPropertiesForm::restore(const Settings& s)
{
    const tadata::PurgeSettings values = tadata::PurgeSettings::from(s);
    m_ui->deleteSeconds->setChecked(values.deleteSeconds);
    m_ui->storeForDays->setValue(values.storeForDays);
}

void TADataManagerPropertiesForm::store(Settings& s)
{
    tadata::PurgeSettings values;
    values.deleteSeconds = m_ui->deleteSeconds->isChecked();
    values.storeForDays = m_ui->storeForDays->value();
    values.to(s);
}

void TADataManagerPropertiesForm::on_deleteSeconds_stateChanged(int state)
{
    m_ui->storeForDays->setEnabled(state == Qt::Checked);
}
