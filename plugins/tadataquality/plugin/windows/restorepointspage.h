// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/ioptionspage.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class RestorePointsForm;

/// The plug-in's page in the terminal's options dialog: how many restore points stay, and how much
/// room they may take. The plug-in object owns it; the widgets that it makes belong to the dialog.
class RestorePointsPage final : public QObject, public IOptionsPage
{
    Q_OBJECT
    Q_INTERFACES(IOptionsPage)

public:
    explicit RestorePointsPage(QObject* parent = nullptr);
    ~RestorePointsPage() override;

    QString id() const override;
    QString displayName() const override;
    QString category() const override;
    QString displayCategory() const override;
    QIcon categoryIcon() const override;
    bool matches(const QString& searchText) const override;
    QWidget* createPage(QWidget* parent) override;
    void apply() override;
    void finish() override;

private:
    QPointer<RestorePointsForm> m_form; // a dialog may go without a word
};
