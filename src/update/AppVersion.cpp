#include "update/AppVersion.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace tavro {

namespace {

using nlohmann::json;
using Failure = AppVersion::Failure;

/// Whether the text holds only characters that RFC 3986 allows.
bool isURL(const std::string& text) {
    constexpr std::string_view others = "-._~:/?#[]@!$&'()*+,;=%";
    return !text.empty() && std::ranges::all_of(text, [&](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               others.find(c) != others.npos;
    });
}

/// A member that is missing or null is absent.
Result<std::optional<std::string>, Failure> textAt(const json& record, const char* name) {
    const auto member = record.find(name);
    if (member == record.end() || member->is_null())
        return std::optional<std::string>();
    if (!member->is_string())
        return Failure{std::string("\"") + name + "\" is not a string"};
    return std::optional(member->get<std::string>());
}

Result<json, Failure> parse(std::string_view text) {
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        return Failure{"not JSON, at byte " + std::to_string(error.byte)};
    } catch (const json::exception&) {
        return Failure{"a number beyond all bounds"};
    }
}

} // namespace

Result<AppVersion, Failure> AppVersion::decode(std::string_view text) {
    const auto record = parse(text);
    if (!record)
        return record.error();
    if (!record->is_object())
        return Failure{"not an object"};
    const auto version = textAt(*record, "version");
    if (!version)
        return version.error();
    const auto url = textAt(*record, "url");
    if (!url)
        return url.error();
    if (*url && !isURL(**url))
        return Failure{"\"url\" is not a URL"};
    return AppVersion{*version, *url};
}

} // namespace tavro
