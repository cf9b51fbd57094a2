// Properties of windows that are not ours: the desktop's settings, and names of applications.
#include "platform/linux/desktops/DesktopAppearance.h"
#include "platform/linux/x11/ClientWindow.h"
#include "platform/linux/x11/XSettings.h"

#include <QFont>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using namespace tavro;
    const std::string value(reinterpret_cast<const char*>(bytes), size);
    (void)className(value);
    (void)DesktopAppearance::fontOf(value);
    for (const auto& [name, text] : textsOfXSettings(value))
        (void)DesktopAppearance::fontOf(text);
    return 0;
}
