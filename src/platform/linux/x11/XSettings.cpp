#include "platform/linux/x11/XSettings.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavro {

namespace {

/// Takes one piece after the other, in the byte order that the first byte names.
class Reader {
public:
    explicit Reader(std::string_view bytes)
        : m_rest(bytes)
        , m_isBigEndian(!bytes.empty() && bytes.front() == 1) {}

    std::optional<std::string_view> take(std::size_t count) {
        if (count > m_rest.size())
            return std::nullopt;
        const auto taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }

    std::optional<std::uint32_t> number(std::size_t bytes) {
        const auto taken = take(bytes);
        if (!taken)
            return std::nullopt;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes; ++i)
            value = value << 8 | static_cast<unsigned char>((*taken)[m_isBigEndian ? i : bytes - 1 - i]);
        return value;
    }

    /// Padded to words.
    std::optional<std::string_view> text(std::optional<std::uint32_t> length) {
        const auto taken = length ? take(*length) : std::nullopt;
        const bool isWhole = taken && take(-*length % 4);
        return isWhole ? taken : std::nullopt;
    }

private:
    std::string_view m_rest;
    bool m_isBigEndian;
};

enum Type : std::uint32_t { integer, string, color };

} // namespace

std::map<std::string, std::string> textsOfXSettings(std::string_view bytes) {
    constexpr std::size_t beforeCount = 8, serial = 4, colorSize = 8;
    std::map<std::string, std::string> texts;
    Reader reader(bytes);
    auto count = reader.take(beforeCount) ? reader.number(4).value_or(0) : 0;
    for (; count > 0; --count) {
        const auto type = reader.number(1);
        const auto name = reader.take(1) ? reader.text(reader.number(2)) : std::nullopt;
        if (!name || !reader.take(serial))
            break;
        const auto value = type == string  ? reader.text(reader.number(4))
                           : type == color ? reader.take(colorSize)
                                           : reader.take(4);
        if (!value || *type > color)
            break;
        if (type == string)
            texts[std::string(*name)] = *value;
    }
    return texts;
}

} // namespace tavro
