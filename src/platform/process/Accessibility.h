#pragma once

#include <string>

namespace tavro {

/// The user's permission for applications to control the computer, and what users hear of who do not see.
class Accessibility {
public:
    virtual ~Accessibility() = default;
    /// Whether this application has it. With `prompt`, the user is asked for it where it is lacking; the call
    /// does not wait for the answer.
    virtual bool isProcessTrusted(bool prompt) = 0;
    /// Has assistive technology say a text, a key of the translations, where some is in use.
    virtual void announce(const std::string& text) = 0;
};

} // namespace tavro
