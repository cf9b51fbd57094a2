#include "platform/plist/PlistNode.h"

#include "platform/plist/PlistBounds.h"

#include <cmath>

namespace tavro {

namespace {

using CharPointer = std::unique_ptr<char, decltype(&std::free)>;

std::string textOf(plist_t node) {
    char* text = nullptr;
    plist_get_string_val(node, &text);
    const CharPointer owner(text, &std::free);
    return text ? std::string(text) : std::string();
}

PropertyList::Data dataOf(plist_t node) {
    std::uint64_t length = 0;
    const auto* bytes = plist_get_data_ptr(node, &length);
    return bytes ? PropertyList::Data(bytes, bytes + length) : PropertyList::Data();
}

PropertyList::Date dateOf(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return {seconds + microseconds / 1e6};
}

PropertyList::Array arrayOf(plist_t node, int levels) {
    PropertyList::Array array;
    for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i)
        if (auto value = fromPlist(plist_array_get_item(node, i), levels))
            array.push_back(std::move(*value));
    return array;
}

PropertyList::Dictionary dictionaryOf(plist_t node, int levels) {
    PropertyList::Dictionary dictionary;
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(node, &rawIterator);
    const std::unique_ptr<void, decltype(&std::free)> iterator(rawIterator, &std::free);
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &key, &item);
        const CharPointer keyOwner(key, &std::free);
        if (!item)
            return dictionary;
        if (auto value = fromPlist(item, levels))
            dictionary.insert_or_assign(key, std::move(*value));
    }
}

struct NodeMaker {
    plist_t operator()(bool value) const { return plist_new_bool(value); }
    plist_t operator()(std::int64_t value) const { return plist_new_uint(static_cast<std::uint64_t>(value)); }
    plist_t operator()(double value) const { return plist_new_real(value); }
    plist_t operator()(const std::string& value) const { return plist_new_string(value.c_str()); }
    plist_t operator()(const PropertyList::Data& value) const {
        return plist_new_data(reinterpret_cast<const char*>(value.data()), value.size());
    }
    plist_t operator()(PropertyList::Date value) const {
        const auto seconds = std::floor(value.seconds);
        return plist_new_date(static_cast<std::int32_t>(seconds),
                              static_cast<std::int32_t>((value.seconds - seconds) * 1e6));
    }
    plist_t operator()(const PropertyList::Array& value) const {
        auto* node = plist_new_array();
        for (const auto& item : value)
            plist_array_append_item(node, toPlist(item).release());
        return node;
    }
    plist_t operator()(const PropertyList::Dictionary& value) const {
        auto* node = plist_new_dict();
        for (const auto& [key, item] : value)
            plist_dict_set_item(node, key.c_str(), toPlist(item).release());
        return node;
    }
};

} // namespace

PlistNode parsePlist(std::string_view bytes) {
    if (!isWithinPlistBounds(bytes))
        return nullptr;
    plist_t node = nullptr;
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (plist_is_binary(bytes.data(), length))
        plist_from_bin(bytes.data(), length, &node);
    else
        plist_from_xml(bytes.data(), length, &node);
    return PlistNode(node);
}

std::string formatPlistXml(const PlistNode& node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node.get(), &bytes, &length);
    const std::unique_ptr<char, decltype(&plist_to_xml_free)> owner(bytes, &plist_to_xml_free);
    return bytes ? std::string(bytes, length) : std::string();
}

std::string formatPlistBinary(const PlistNode& node) {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(node.get(), &bytes, &length);
    const std::unique_ptr<char, decltype(&plist_to_bin_free)> owner(bytes, &plist_to_bin_free);
    return bytes ? std::string(bytes, length) : std::string();
}

PlistNode toPlist(const PropertyList& value) {
    return PlistNode(value.visit(NodeMaker{}));
}

std::optional<PropertyList> fromPlist(plist_t node, int levels) {
    if (levels == 0)
        return std::nullopt;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return PropertyList(value != 0);
    }
    case PLIST_UINT: {
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return PropertyList(static_cast<std::int64_t>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return PropertyList(value);
    }
    case PLIST_STRING:
        return PropertyList(textOf(node));
    case PLIST_DATA:
        return PropertyList(dataOf(node));
    case PLIST_DATE:
        return PropertyList(dateOf(node));
    case PLIST_ARRAY:
        return PropertyList(arrayOf(node, levels - 1));
    case PLIST_DICT:
        return PropertyList(dictionaryOf(node, levels - 1));
    default:
        return std::nullopt;
    }
}

} // namespace tavro
