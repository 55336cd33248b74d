// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/ioptionspage.h>

namespace desktest {

/// An options page with names and nothing to show.
class EmptyPage final : public IOptionsPage
{
public:
    struct Names
    {
        QString id;
        QString page = QString();
        QString category = QString();
        QString shownCategory = QString();
    };

    explicit EmptyPage(Names names)
        : m_names(std::move(names))
    {}

    QString id() const override { return m_names.id; }
    QString displayName() const override { return m_names.page; }
    QString category() const override { return m_names.category; }
    QString displayCategory() const override { return m_names.shownCategory; }
    QIcon categoryIcon() const override { return QIcon(); }
    bool matches(const QString& /*searchText*/) const override { return false; }
    QWidget* createPage(QWidget* /*parent*/) override { return nullptr; }
    void apply() override {}
    void finish() override {}

private:
    Names m_names;
};

} // namespace desktest
