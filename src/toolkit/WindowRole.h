#pragma once

class QWidget;

namespace tavro {

/// Tells assistive technology that a plain widget is a window of the program, also where it has no title.
void announceAsWindow(QWidget& window);

} // namespace tavro
