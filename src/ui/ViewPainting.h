#pragma once

#include "toolkit/Views.h"

#include <memory>

namespace tavro {

/// What a view of the product shows that takes no input; nothing for one that it does not know.
ViewContent contentOf(const View& view);

/// A widget that shows a view of the product which takes input, and hands its taps on; null for one that it
/// does not know.
std::unique_ptr<QWidget> makeWidget(const View& view);

} // namespace tavro
