// Values as GLib's tools print them: what settings services and command-line tools of desktops say.
#include "platform/linux/bus/GVariantText.h"

#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    (void)tavro::parseGVariant(
        QString::fromUtf8(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}
