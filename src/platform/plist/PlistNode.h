#pragma once

#include "platform/storage/PropertyList.h"

#include <plist/plist.h>

#include <memory>
#include <optional>
#include <string_view>

namespace tavro {

struct PlistDeleter {
    void operator()(void* node) const { plist_free(node); }
};

/// Owns a node of the property-list library with all that is below it.
using PlistNode = std::unique_ptr<void, PlistDeleter>;

/// Null when the bytes are neither an XML nor a binary property list, or one beyond all bounds.
PlistNode parsePlist(std::string_view bytes);
std::string formatPlistXml(const PlistNode& node);
std::string formatPlistBinary(const PlistNode& node);

PlistNode toPlist(const PropertyList& value);
/// None for a kind of node that property lists of applications do not hold, and for one that lies deeper than
/// so many levels.
std::optional<PropertyList> fromPlist(plist_t node, int levels = 128);

} // namespace tavro
