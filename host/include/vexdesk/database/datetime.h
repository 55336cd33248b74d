// SPDX-License-Identifier: MIT
#pragma once

#include <vexdesk/export.h>

#include <QtCore/QString>

#include <compare>
#include <optional>

/// A moment in the database: milliseconds since 1970-01-01 00:00:00.
///
/// It carries no time zone. The columns of the market hold the venue's wall clock as if it were
/// UTC: what a deal's clock showed is what toString() prints, wherever the terminal runs.
///
/// The text form is "yyyy-MM-dd hh:mm:ss" or, with milliseconds, "yyyy-MM-dd hh:mm:ss.zzz": ASCII
/// digits, four for the year (0001 to 9999) and three for the milliseconds, and nothing around it.
///
/// A plain value: every function may run on any thread, locale plays no part.
class VEXDESK_CORE_EXPORT datetime
{
public:
    constexpr datetime() noexcept = default;
    explicit constexpr datetime(qint64 msecsSinceEpoch) noexcept
        : m_msecs(msecsSinceEpoch)
    {}

    /// Reads the text form. Throws Exception "Can't convert from '%1'' to %2" for any other text
    /// and for a date or a time that does not exist.
    explicit datetime(const QString& text);

    /// Reads what the constructor from text reads, without throwing: no value for any other text.
    static std::optional<datetime> fromText(QStringView text) noexcept;

    constexpr qint64 msecsSinceEpoch() const noexcept { return m_msecs; }

    /// The text form, without the milliseconds where they are 0. A moment outside of the years that
    /// the text form can name gives its milliseconds as a plain number.
    QString toString() const;

    friend constexpr bool operator==(const datetime&, const datetime&) noexcept = default;
    friend constexpr auto operator<=>(const datetime&, const datetime&) noexcept = default;

private:
    qint64 m_msecs = 0;
};

static_assert(sizeof(datetime) == sizeof(qint64));
Q_DECLARE_TYPEINFO(datetime, Q_PRIMITIVE_TYPE);
