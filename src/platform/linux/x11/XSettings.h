#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tavro {

/// The texts among the desktop's settings, by their names, from the bytes of the property that the XSETTINGS
/// protocol describes. Bytes that are not as it says end the list.
std::map<std::string, std::string> textsOfXSettings(std::string_view bytes);

} // namespace tavro
