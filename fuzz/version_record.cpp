// What the publisher's server says of the newest version.
#include "update/AppVersion.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    (void)tavro::AppVersion::decode({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
