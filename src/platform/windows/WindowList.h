#pragma once

#include "platform/storage/Image.h"
#include "platform/storage/PropertyList.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Identifiers.h"

#include <optional>

namespace tavro {

/// Which windows are meant; a union of these. The values are the platform's.
namespace WindowListOption {
inline constexpr unsigned onScreenOnly = 1;
inline constexpr unsigned onScreenBelowWindow = 4;
inline constexpr unsigned includingWindow = 8;
} // namespace WindowListOption

namespace WindowImageOption {
inline constexpr unsigned boundsIgnoreFraming = 1;
inline constexpr unsigned bestResolution = 8;
} // namespace WindowImageOption

namespace WindowListKey {
inline constexpr const char* ownerName = "kCGWindowOwnerName";
inline constexpr const char* name = "kCGWindowName";
inline constexpr const char* number = "kCGWindowNumber";
} // namespace WindowListKey

/// All windows of the session, and pictures of them. The desktop's wallpaper is a window of the owner "Dock",
/// its name beginning "Wallpaper-" (from version 14.0 on) or "Desktop" (before).
class WindowList {
public:
    virtual ~WindowList() = default;
    /// Front to back, one dictionary with the keys of `WindowListKey` for each window that the options
    /// select relative to the given window; none when the server has no list.
    virtual std::optional<PropertyList::Array> copyWindowInfo(unsigned options,
                                                              WindowNumber relativeTo) const = 0;
    /// What the selected window shows in an area given in display coordinates; none when the window is gone
    /// or cannot be read.
    virtual std::optional<Image> createImage(Rect area, unsigned options, WindowNumber window,
                                             unsigned imageOptions) const = 0;
};

} // namespace tavro
