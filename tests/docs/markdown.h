// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The documents of the project as their readers find them, as far as the tests look at them.
namespace testsupport {

/// A part of a page: from a heading to the next one, of whatever level.
struct Section
{
    struct Code
    {
        QString language; ///< empty for code that is only indented
        QString text;     ///< without the last line end
    };

    int level = 0; ///< of the heading; 0 for what stands before the first one
    QString heading;
    QString anchor; ///< by which links find the heading
    QStringList links;
    QStringList pictures;
    QList<Code> codes;
    QStringList boldTexts;
    int tableRows = 0;
    int listItems = 0;
};

struct Page
{
    QString path;
    QList<Section> sections;

    QStringList links() const;
    QStringList pictures() const;
    QStringList boldTexts() const;
    QStringList anchors() const;
    /// The fenced code of a language, in its order.
    QStringList codes(const QString& language) const;
};

/// Reads a page. Fails the test when there is none.
Page readPage(const QString& path);

} // namespace testsupport
