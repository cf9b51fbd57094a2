#pragma once

#include <string>
#include <string_view>

namespace tavro {

/// A text as one line of a log. Others may have had a hand in it: what could break the line, steer a terminal
/// or change the order of letters is written as its number, as are bytes that are no UTF-8. It ends with "…"
/// where it would be longer than that many bytes.
std::string logText(std::string_view text, std::size_t atMost);

} // namespace tavro
