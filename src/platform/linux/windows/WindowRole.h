#pragma once

namespace tavro {

/// Tells assistive technology that a plain widget of the toolkit is a window where it is one. Any number of
/// calls is one.
void announceWindows();

} // namespace tavro
