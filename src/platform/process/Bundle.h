#pragma once

#include "platform/storage/PropertyList.h"

#include <string>

namespace tavro {

/// What the running application says of itself.
struct Bundle {
    std::string bundleIdentifier;
    /// "CFBundleShortVersionString" names the version for people.
    PropertyList::Dictionary infoDictionary;
};

} // namespace tavro
