#pragma once

#include "platform/linux/bus/GSettings.h"

namespace tavro {

/// The combinations among the settings at such places ("SCHEMA:PATH"), which also hold a name and a command.
GSettings::Settings bindingsAt(const GSettings& settings, const QStringList& places,
                               const QDeadlineTimer& deadline);

} // namespace tavro
