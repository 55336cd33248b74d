// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QTime>

#include <concepts>
#include <initializer_list>
#include <optional>
#include <utility>

namespace tadata {

/// Integers of 128 bits, for ratios that must be exact.
__extension__ typedef __int128 Wide;

/// A value of a report as JSON text: UTF-8 without blanks, the keys of an object in the order of
/// code points, and nothing escaped that need not be. The same values always give the same bytes. A
/// plain value; any thread.
class Json final
{
public:
    using Member = std::pair<QString, Json>;

    /// null
    Json();
    Json(std::nullopt_t);
    // Whatever a report holds is given as it is: Json::object({{"bars", 5}, {"day", day}}).
    // NOLINTBEGIN(google-explicit-constructor)
    template <std::integral Number>
    Json(Number number)
        : m_text(QByteArray::number(number))
    {}
    Json(bool yes);
    /// Halves of characters that have lost the other one stand as U+FFFD.
    Json(const QString& text);
    Json(const char* utf8);
    /// "2024-01-31"; null where it is no date.
    Json(const QDate& day);
    /// "10:30:00"; null where it is no time.
    Json(const QTime& time);
    template <typename T>
    Json(const std::optional<T>& value)
        : Json(value ? Json(*value) : Json())
    {}
    // NOLINTEND(google-explicit-constructor)

    /// "2024-01-31T10:30:00"; null where one of them is none.
    static Json moment(const QDate& day, const QTime& time);

    /// No key may occur twice.
    static Json object(std::initializer_list<Member> members);
    template <typename Members>
    static Json object(const Members& members)
    {
        return ofMembers({std::begin(members), std::end(members)});
    }

    /// A list of what becomes a value by itself.
    template <typename Values>
    static Json list(const Values& values)
    {
        return list(values, [](const auto& value) { return Json(value); });
    }
    template <typename Values, typename ToJson>
    static Json list(const Values& values, ToJson toJson)
    {
        Json list = startOfList();
        for (const auto& value : values)
            list.append(toJson(value));
        list.endList();
        return list;
    }

    const QByteArray& text() const { return m_text; }
    /// The text as a whole report: with the one line end that it has.
    QByteArray report() const { return m_text + '\n'; }

    bool operator==(const Json& other) const = default;

private:
    static Json ofMembers(QList<Member> members);
    static Json startOfList();
    void append(const Json& value);
    void endList();

    QByteArray m_text;
};

/// A ratio as reports have it: four digits after the point, halves up. Neither number is negative,
/// and each is less than 2^112; `whole` is not 0.
QString ratioText(Wide part, Wide whole);

} // namespace tadata
