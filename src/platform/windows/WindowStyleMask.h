#pragma once

/// Bits of what a window has around its content.
namespace tavro::WindowStyleMask {

inline constexpr unsigned borderless = 0;
inline constexpr unsigned titled = 1;
inline constexpr unsigned closable = 2;
inline constexpr unsigned miniaturizable = 4;
inline constexpr unsigned fullSizeContentView = 0x8000;

} // namespace tavro::WindowStyleMask
