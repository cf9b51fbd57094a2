#include "platform/plist/PlistBounds.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavro {

namespace {

constexpr std::size_t mostBytes = 4 << 20; // of a file, and of all that the library will copy from it
constexpr int mostContainers = 4096;       // of a file in XML
constexpr int mostObjects = 65536;
constexpr int mostLevels = 128;

int occurrences(std::string_view text, std::string_view part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// Walks the objects of a binary property list as the library does: each as often as it is referred to. The
/// format: "bplist00", objects, a table of their offsets, and a trailer of 32 bytes.
class BinaryWalk {
public:
    explicit BinaryWalk(std::string_view bytes)
        : m_bytes(bytes) {}

    /// What is malformed is within bounds as well, as far as the library can get to it.
    bool isWithinBounds() {
        constexpr std::size_t trailerSize = 32;
        if (m_bytes.size() < trailerSize)
            return true;
        const auto trailer = m_bytes.size() - trailerSize;
        m_offsetSize = number(trailer + 6, 1).value();
        m_referenceSize = number(trailer + 7, 1).value();
        m_objects = number(trailer + 8, 8).value();
        m_table = number(trailer + 24, 8).value();
        return visit(number(trailer + 16, 8).value(), 0);
    }

private:
    /// Big-endian; none beyond the end.
    std::optional<std::uint64_t> number(std::uint64_t at, std::uint64_t size) const {
        if (size > 8 || at > m_bytes.size() || size > m_bytes.size() - at)
            return std::nullopt;
        std::uint64_t value = 0;
        for (const auto byte : m_bytes.substr(at, size))
            value = value << 8 | static_cast<std::uint8_t>(byte);
        return value;
    }

    bool visit(std::uint64_t object, int level) {
        if (level > mostLevels || ++m_visited > mostObjects)
            return false;
        if (object >= m_objects || object > m_bytes.size())
            return true;
        const auto at = number(m_table + object * m_offsetSize, m_offsetSize);
        const auto marker = at ? number(*at, 1) : std::nullopt;
        if (!marker)
            return true;
        auto content = *at + 1;
        auto count = *marker & 0xF;
        if (count == 0xF) { // the count follows, as an integer object
            const auto size = number(content, 1);
            const auto width = size ? std::uint64_t{1} << (*size & 0xF) : 0;
            count = number(content + 1, width).value_or(0);
            content += 1 + width;
        }
        constexpr std::uint64_t ascii = 0x5, utf16 = 0x6, array = 0xA, set = 0xC, dictionary = 0xD;
        const auto type = *marker >> 4;
        if (type == array || type == set || type == dictionary)
            return visitReferences(content, type == dictionary ? 2 * count : count, level);
        m_copied += count < m_bytes.size() ? 2 * count : 0; // of at most two bytes each
        const std::uint64_t width = type == utf16 ? 2 : 1;
        return m_copied <= mostBytes &&
               !((type == ascii || type == utf16) && holdsNul(content, count, width));
    }

    /// Whether one of so many characters of that width is NUL.
    bool holdsNul(std::uint64_t at, std::uint64_t count, std::uint64_t width) const {
        for (std::uint64_t i = 0; i < count; ++i, at += width) {
            const auto character = number(at, width);
            if (!character)
                return false; // the text ends beyond the file
            if (*character == 0)
                return true;
        }
        return false;
    }

    bool visitReferences(std::uint64_t at, std::uint64_t count, int level) {
        for (std::uint64_t i = 0; i < count; ++i, at += m_referenceSize) {
            const auto object = number(at, m_referenceSize);
            if (!object)
                return true;
            if (!visit(*object, level + 1))
                return false;
        }
        return true;
    }

    std::string_view m_bytes;
    std::uint64_t m_offsetSize = 0, m_referenceSize = 0, m_objects = 0, m_table = 0;
    std::uint64_t m_copied = 0;
    int m_visited = 0;
};

} // namespace

bool isWithinPlistBounds(std::string_view bytes) {
    if (bytes.size() > mostBytes)
        return false;
    if (bytes.starts_with("bplist"))
        return BinaryWalk(bytes).isWithinBounds();
    if (bytes.find('\0') != std::string_view::npos || bytes.find("&#0") != std::string_view::npos ||
        bytes.find("&#x0") != std::string_view::npos)
        return false;
    return occurrences(bytes, "<array") + occurrences(bytes, "<dict") <= mostContainers;
}

} // namespace tavro
