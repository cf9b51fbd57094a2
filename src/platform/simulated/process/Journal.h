#pragma once

#include "platform/storage/PropertyList.h"
#include "platform/windows/Geometry.h"

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace tavro {

/// Every call that changed the machine, in order, one line each: the service and the call, then its
/// arguments.
class Journal {
public:
    template <class... Values>
    void record(std::string_view call, const Values&... values) {
        std::ostringstream line;
        line << std::boolalpha << call;
        ((line << ' ', write(line, values)), ...);
        m_lines.push_back(line.str());
    }

    const std::vector<std::string>& lines() const { return m_lines; }
    /// The lines that begin so, in order.
    std::vector<std::string> lines(std::string_view beginning) const;
    void clear() { m_lines.clear(); }

private:
    template <class Value>
    static void write(std::ostream& line, const Value& value) {
        line << value;
    }
    static void write(std::ostream& line, Point point);
    static void write(std::ostream& line, Rect rect);
    static void write(std::ostream& line, const PropertyList& value);

    std::vector<std::string> m_lines;
};

} // namespace tavro
