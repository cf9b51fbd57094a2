#include "notifications/NCPrefs.h"

#include "platform/storage/PropertyListDecoder.h"

namespace tavro {

namespace {

const PropertyList* entry(const PropertyList& value, const char* key) {
    const auto* dictionary = value.as<PropertyList::Dictionary>();
    const auto found = dictionary ? dictionary->find(key) : PropertyList::Dictionary::const_iterator();
    return dictionary && found != dictionary->end() ? &found->second : nullptr;
}

} // namespace

Result<bool, std::string> NCPrefs::hasUserPref(const PropertyListDecoder& decoder, std::string_view file) {
    const auto preferences = decoder.decode(file);
    if (!preferences)
        return preferences.error();
    const auto* encoded = entry(*preferences, "dnd_prefs");
    const auto* data = encoded ? encoded->as<PropertyList::Data>() : nullptr;
    if (!data)
        return false;
    const auto inner = decoder.decode({reinterpret_cast<const char*>(data->data()), data->size()});
    if (!inner)
        return inner.error();
    return entry(*inner, "userPref") != nullptr;
}

} // namespace tavro
