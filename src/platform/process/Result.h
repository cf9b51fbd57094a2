#pragma once

#include <utility>
#include <variant>

namespace tavro {

/// What an operation gives, or why it failed.
template <class Value, class Failure>
class [[nodiscard]] Result {
public:
    Result(Value value)
        : m_content(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure)
        : m_content(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return m_content.index() == 0; }
    /// Only where the operation succeeded.
    const Value& operator*() const { return std::get<0>(m_content); }
    /// The same, to be moved away.
    Value value() && { return std::move(std::get<0>(m_content)); }
    const Value* operator->() const { return &std::get<0>(m_content); }
    /// Only where it failed.
    const Failure& error() const { return std::get<1>(m_content); }

private:
    std::variant<Value, Failure> m_content;
};

} // namespace tavro
