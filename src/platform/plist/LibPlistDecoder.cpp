#include "platform/plist/LibPlistDecoder.h"

#include "platform/plist/PlistNode.h"

namespace tavro {

Result<PropertyList, std::string> LibPlistDecoder::decode(std::string_view bytes) const {
    if (const auto node = parsePlist(bytes))
        if (auto value = fromPlist(node.get()))
            return std::move(*value);
    return std::string("The data is not a property list");
}

} // namespace tavro
