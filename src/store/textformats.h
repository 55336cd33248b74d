#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// The notations of dates and times that external text files may have, in the order in which they
/// are offered. Any thread.
namespace tadata {

struct TextFormat
{
    QString pattern; ///< as QDate and QTime take it
    QString title;   ///< as the user sees it
};

QList<TextFormat> dateFormats();
QList<TextFormat> timeFormats();

} // namespace tadata
