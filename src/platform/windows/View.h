#pragma once

#include <utility>

namespace tavro {

/// What a window shows, as the logic knows it: the drawing half belongs to the toolkit of the machine, which
/// asks the view for its content each time it renders.
class View {
public:
    virtual ~View() = default;
};

/// Hosts a copy of a record whose fields the content is computed from.
template <class Record>
class HostingView final : public View {
public:
    explicit HostingView(Record record)
        : record(std::move(record)) {}
    const Record record;
};

} // namespace tavro
