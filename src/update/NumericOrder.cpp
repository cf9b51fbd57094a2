#include "update/NumericOrder.h"

#include <algorithm>

namespace tavro {

namespace {

/// Takes the digits that the text begins with, without the zeros in front of them.
std::string_view takeNumber(std::string_view& text) {
    constexpr std::string_view digits = "0123456789";
    const auto end = std::min(text.find_first_not_of(digits), text.size());
    auto number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

bool beginsWithDigit(std::string_view text) {
    return !text.empty() && text.front() >= '0' && text.front() <= '9';
}

std::weak_ordering compareValues(std::string_view left, std::string_view right) {
    const auto lengths = left.size() <=> right.size();
    return lengths != 0 ? lengths : left <=> right;
}

} // namespace

std::weak_ordering compareNumerically(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        std::weak_ordering order = std::weak_ordering::equivalent;
        if (beginsWithDigit(left) && beginsWithDigit(right)) {
            order = compareValues(takeNumber(left), takeNumber(right));
        } else {
            order = static_cast<unsigned char>(left.front()) <=> static_cast<unsigned char>(right.front());
            left.remove_prefix(1);
            right.remove_prefix(1);
        }
        if (order != 0)
            return order;
    }
    return left.size() <=> right.size(); // one of them is empty
}

} // namespace tavro
