#pragma once

#include "platform/process/Result.h"
#include "platform/storage/PropertyList.h"

#include <string>
#include <string_view>

namespace tavro {

/// Reads encoded property lists, of whatever format the system knows.
class PropertyListDecoder {
public:
    virtual ~PropertyListDecoder() = default;
    /// The value, or a description of why there is none. Any bytes may be given: what nests or grows beyond
    /// what property lists of programs do is none.
    virtual Result<PropertyList, std::string> decode(std::string_view bytes) const = 0;
};

} // namespace tavro
