#pragma once

#include "platform/process/Result.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavro {

/// The record of the newest published version. Members that are missing are absent.
struct AppVersion {
    /// In dotted form, such as 2.1.0.
    std::optional<std::string> version;
    std::optional<std::string> url;

    struct Failure {
        /// One short line.
        std::string description;
    };

    /// From a JSON object in UTF-8 (RFC 8259); members of other names are ignored.
    static Result<AppVersion, Failure> decode(std::string_view json);
};

} // namespace tavro
