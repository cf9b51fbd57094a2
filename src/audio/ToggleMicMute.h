#pragma once

namespace tavro {

/// Mutes or unmutes the microphone and says so on screen for a second. Ignored while the indicator stands.
void toggleMicMute();

} // namespace tavro
