#include "platform/simulated/process/Journal.h"

#include <algorithm>
#include <iterator>

namespace tavro {

std::vector<std::string> Journal::lines(std::string_view beginning) const {
    std::vector<std::string> matching;
    std::ranges::copy_if(m_lines, std::back_inserter(matching),
                         [&](const auto& line) { return line.starts_with(beginning); });
    return matching;
}

void Journal::write(std::ostream& line, Point point) {
    line << point.x << ',' << point.y;
}

void Journal::write(std::ostream& line, Rect rect) {
    line << rect.size.width << 'x' << rect.size.height << " at ";
    write(line, rect.origin);
}

void Journal::write(std::ostream& line, const PropertyList& value) {
    if (const auto* boolean = value.as<bool>())
        line << *boolean;
    else if (const auto* integer = value.as<std::int64_t>())
        line << *integer;
    else if (const auto* real = value.as<double>())
        line << *real;
    else if (const auto* text = value.as<std::string>())
        line << '"' << *text << '"';
    else
        line << "(a value)";
}

} // namespace tavro
