// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/ioptionspage.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

class TADataManagerPropertiesForm;

/// The plug-in's page in the terminal's options dialog. The plug-in object owns it; the widgets
/// that it makes belong to the dialog.
class TADataManagerPropertiesPage final : public QObject, public IOptionsPage
{
    Q_OBJECT
    Q_INTERFACES(IOptionsPage)

public:
    explicit TADataManagerPropertiesPage(QObject* parent = nullptr);

    QString id() const override;
    QString displayName() const override;
    QString category() const override;
    QString displayCategory() const override;
    QIcon categoryIcon() const override;
    bool matches(const QString& searchText) const override;
    QWidget* createPage(QWidget* parent) override;
    void apply() override;
    void finish() override;

Q_SIGNALS:
    /// The settings were stored.
    void changed();

private:
    // The one that was made last; a dialog may go without a word.
    QPointer<TADataManagerPropertiesForm> m_form;
};
