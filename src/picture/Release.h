#pragma once

namespace tavro {

/// Lets a unique_ptr give back what a C library made.
template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};

} // namespace tavro
