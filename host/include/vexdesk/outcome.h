// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>
#include <utility>
#include <variant>

namespace vexdesk {

/// Why something was not done: a whole text that the user can be shown. Becomes an Outcome or a
/// Result, so that a function says "return Failure{text};".
struct [[nodiscard]] Failure
{
    QString message;
    /// What the system says of it, where the text leaves that out.
    QString reason = {};

    bool operator==(const Failure& other) const = default;
};

/// Whether something was done, and if not, why. True when it was. A plain value: it owns its text,
/// and any thread may use it.
class [[nodiscard]] Outcome final
{
public:
    /// Done.
    Outcome() = default;
    Outcome(Failure failure) // NOLINT(google-explicit-constructor): for "return Failure{text};"
        : m_failure(std::move(failure))
    {}

    explicit operator bool() const { return !m_failure; }

    /// Null when it was done.
    QString message() const { return m_failure ? m_failure->message : QString(); }
    /// The message with the reason that it leaves out. Null when it was done.
    QString wholeMessage() const
    {
        const bool hasReason = m_failure && !m_failure->reason.isEmpty();
        return hasReason ? message() + QStringLiteral(": ") + m_failure->reason : message();
    }
    /// To pass it on as the failure of something larger. Only when it was not done.
    const Failure& failure() const
    {
        Q_ASSERT(m_failure);
        return *m_failure;
    }

    bool operator==(const Outcome& other) const = default;

private:
    std::optional<Failure> m_failure;
};

/// A value, or why there is none. True when there is one. A plain value as its T is.
template <typename T>
class [[nodiscard]] Result final
{
public:
    Result(T value) // NOLINT(google-explicit-constructor): for "return value;"
        : m_content(std::in_place_index<0>, std::move(value))
    {}
    Result(Failure failure) // NOLINT(google-explicit-constructor): for "return Failure{text};"
        : m_content(std::in_place_index<1>, std::move(failure))
    {}

    explicit operator bool() const { return m_content.index() == 0; }

    /// The value. Only when there is one.
    T& operator*() & { return value(*this); }
    const T& operator*() const& { return value(*this); }
    T&& operator*() && { return std::move(value(*this)); }
    T* operator->() { return &value(*this); }
    const T* operator->() const { return &value(*this); }
    /// The value, or another one where there is none.
    template <typename Other>
    T valueOr(Other&& other) const&
    {
        return *this ? value(*this) : T(std::forward<Other>(other));
    }

    /// Null when there is a value.
    QString message() const { return *this ? QString() : failure().message; }
    /// To pass it on as the failure of something larger. Only when there is no value.
    const Failure& failure() const
    {
        Q_ASSERT(!*this);
        return *std::get_if<1>(&m_content);
    }

    bool operator==(const Result& other) const = default;

private:
    template <typename Self>
    static auto& value(Self& self)
    {
        Q_ASSERT(self);
        return *std::get_if<0>(&self.m_content);
    }

    std::variant<T, Failure> m_content;
};

} // namespace vexdesk
