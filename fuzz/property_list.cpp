// Property lists: the Notification Centre's preferences, with the one inside, and our own settings file,
// which is written again.
#include "notifications/NCPrefs.h"
#include "platform/plist/LibPlistDecoder.h"
#include "platform/plist/PlistNode.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tavro;
    const std::string_view file(reinterpret_cast<const char*>(bytes), size);
    (void)NCPrefs::hasUserPref(LibPlistDecoder(), file);
    if (const auto node = parsePlist(file))
        (void)formatPlistXml(node);
    return 0;
}
