// SPDX-License-Identifier: MIT
#pragma once

#include "tadatadescription.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// The series into which files are imported, by name. Any thread.
namespace tadata {

/// The codes of a series. Each is the name of a directory in the store.
struct SeriesCodes
{
    QString stock;
    QString board;
    QString security;

    /// "STOCK/BOARD/SECURITY"
    QString name() const;
    bool operator==(const SeriesCodes&) const = default;
};

/// The codes of "VENUE/BOARD/SECURITY"; no value for anything that would not be three directory
/// names.
std::optional<SeriesCodes> seriesFrom(const QString& name);

/// A name such as "NORD/{ticker}/{name}": the place "{name}" stands for the name of a file up to
/// its last dot, "{ticker}" for the code that a line of the file carries.
class SeriesPattern final
{
public:
    explicit SeriesPattern(const QString& text = QString());

    /// As it was given.
    QString text() const { return m_codes.join(u'/'); }
    bool hasTicker() const;
    /// No value where a code would be empty, "." or "..", or would not be one code.
    std::optional<SeriesCodes> codesOf(const QString& file,
                                       const QString& ticker = QString()) const;

private:
    QStringList m_codes;
};

/// Whether the reference data hold the security.
bool isKnown(const SeriesCodes& codes);

/// Fills in the codes and the ids that the reference data have for them.
void setSeries(TADataDescription& description, const SeriesCodes& codes);

} // namespace tadata
