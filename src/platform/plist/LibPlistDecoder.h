#pragma once

#include "platform/storage/PropertyListDecoder.h"

namespace tavro {

/// Property lists through libplist: XML and binary.
class LibPlistDecoder final : public PropertyListDecoder {
public:
    Result<PropertyList, std::string> decode(std::string_view bytes) const override;
};

} // namespace tavro
