// The JSON files of the system's Focus database.
#include "notifications/FocusDatabase.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tavro;
    const auto file = FocusDatabase::parse({reinterpret_cast<const char*>(bytes), size});
    if (!file)
        return 0;
    (void)FocusDatabase::hasAssertion(*file);
    for (const int minute : {0, 12 * 60, 24 * 60 - 1})
        (void)FocusDatabase::scheduleCovers(*file, minute);
    return 0;
}
