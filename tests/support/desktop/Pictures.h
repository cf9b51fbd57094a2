#pragma once

#include "XServer.h"

/// Around all screens.
Rect wholeArea(const XClient& server);

/// Of all screens, when three in a row are the same.
Pixels stillPicture(XServer& server);

/// Whether two colours are further apart than that, of 255, in one of their parts.
bool differ(std::uint32_t one, std::uint32_t other, int most);

/// Where the screens no longer are as in the picture: in that area, or outside of it.
Rect changed(const XClient& server, const Pixels& before, const Rect& area, bool inside);

/// Whether something is drawn there on a ground of one colour, which is dark or light.
bool showsGround(const Pixels& pixels, bool isDark);
