#pragma once

#include "platform/process/Result.h"

#include <string>
#include <string_view>

namespace tavro {

class PropertyListDecoder;

/// The Notification Centre's preference file: a dictionary whose entry "dnd_prefs" is data, again an encoded
/// dictionary.
namespace NCPrefs {

/// Whether the inner dictionary has an entry "userPref", of whatever type; false where there is no inner
/// dictionary. A failure when what should be a property list is none.
Result<bool, std::string> hasUserPref(const PropertyListDecoder& decoder, std::string_view file);

} // namespace NCPrefs

} // namespace tavro
