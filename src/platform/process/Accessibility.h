#pragma once

namespace tavro {

/// The user's permission for applications to control the computer.
class Accessibility {
public:
    virtual ~Accessibility() = default;
    /// Whether this application has it. With `prompt`, the user is asked for it where it is lacking; the call
    /// does not wait for the answer.
    virtual bool isProcessTrusted(bool prompt) = 0;
};

} // namespace tavro
