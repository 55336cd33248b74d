// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QIcon>

#include <QtCore/QObject>
#include <QtCore/QString>

/// Where a page of the options dialog stands and what it is called. User-interface thread only.
class IOptionsPageBase
{
public:
    virtual ~IOptionsPageBase() = default;

    /// Unique among all pages, such as "TADataManager.General".
    virtual QString id() const = 0;
    /// The page's title for people.
    virtual QString displayName() const = 0;
    /// Pages of one category stand together.
    virtual QString category() const = 0;
    virtual QString displayCategory() const = 0;
    virtual QIcon categoryIcon() const = 0;
    /// Whether the page has something to offer for a text in the dialog's search field.
    virtual bool matches(const QString& searchText) const = 0;
};
