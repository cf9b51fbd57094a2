#include "platform/linux/desktops/GnomeBindings.h"

namespace tavro {

GSettings::Settings bindingsAt(const GSettings& settings, const QStringList& places,
                               const QDeadlineTimer& deadline) {
    auto found = settings.list(places, deadline);
    for (auto& [place, values] : found)
        values = {{"binding", values["binding"]}};
    return found;
}

} // namespace tavro
