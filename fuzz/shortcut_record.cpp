// The records of shortcuts in our own settings.
#include "KeyboardShortcuts/ShortcutRecord.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tavro::KeyboardShortcuts;
    const auto shortcut = decode({reinterpret_cast<const char*>(bytes), size});
    if (shortcut && decode(encode(*shortcut)) != shortcut)
        std::abort();
    return 0;
}
