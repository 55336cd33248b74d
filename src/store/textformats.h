// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// The notations of dates and times, and the separators of columns, that external text files may
/// have, in the order in which they are offered. Any thread.
namespace tadata {

struct TextFormat
{
    QString pattern; ///< as QDate and QTime take it; of a separator, itself
    QString title;   ///< as the user sees it
};

/// The page that offers them: its translation says what the titles are in other languages.
enum class FormatPage { Import, Export };

QList<TextFormat> dateFormats(FormatPage page = FormatPage::Import);
QList<TextFormat> timeFormats(FormatPage page = FormatPage::Import);
QList<TextFormat> separators(FormatPage page);

} // namespace tadata
