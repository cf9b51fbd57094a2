#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tavro {

/// One value of the property-list family: what user defaults store, and what screens and windows describe
/// themselves with.
class PropertyList {
public:
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList>;
    using Data = std::vector<std::uint8_t>;
    /// Seconds since 2001-01-01T00:00:00Z.
    struct Date {
        double seconds = 0;
        bool operator==(const Date&) const = default;
    };

    PropertyList(bool value)
        : m_value(value) {}
    PropertyList(int value)
        : m_value(std::int64_t{value}) {}
    PropertyList(std::int64_t value)
        : m_value(value) {}
    PropertyList(std::uint32_t value)
        : m_value(std::int64_t{value}) {}
    PropertyList(double value)
        : m_value(value) {}
    PropertyList(const char* value)
        : m_value(std::string(value)) {}
    PropertyList(std::string value)
        : m_value(std::move(value)) {}
    PropertyList(Data value)
        : m_value(std::move(value)) {}
    PropertyList(Date value)
        : m_value(value) {}
    PropertyList(Array value)
        : m_value(std::move(value)) {}
    PropertyList(Dictionary value)
        : m_value(std::move(value)) {}

    bool operator==(const PropertyList&) const = default;

    /// The value if it is of exactly this type, else null.
    template <class T>
    const T* as() const {
        return std::get_if<T>(&m_value);
    }

    template <class Visitor>
    auto visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), m_value);
    }

    /// How a Boolean is read from a value of any type: numbers other than zero, and texts that begin with
    /// Y, y, T, t or a digit other than zero (after blanks, a sign and zeros), are true; all else is false.
    bool boolValue() const;

    /// A number that is exactly an unsigned 32-bit integer, else none.
    std::optional<std::uint32_t> exactUInt32() const;

private:
    std::variant<bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary> m_value;
};

} // namespace tavro
