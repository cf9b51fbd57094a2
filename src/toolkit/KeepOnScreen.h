#pragma once

class QWidget;

namespace tavro {

/// From now on the window is moved whenever the screens change and a part of it is on none of them: window
/// managers are content with a few pixels of it.
void keepOnScreen(QWidget& window);

} // namespace tavro
