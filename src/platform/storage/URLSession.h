#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tavro {

/// Fetches documents over HTTPS, and nothing over any other scheme.
class URLSession {
public:
    /// The document's bytes, or none when it could not be had.
    using CompletionHandler = std::function<void(std::optional<std::string> data)>;

    virtual ~URLSession() = default;
    /// Starts a GET without headers of its own and returns at once. The handler is called once, on the
    /// session's own queue, which need not be the main one. What takes too long or is too large is given up.
    virtual void dataTask(const std::string& url, CompletionHandler completionHandler) = 0;
};

} // namespace tavro
