#pragma once

#include <functional>

class QObject;

namespace tavro {

/// Runs the handler, a little later, whenever a screen comes, goes or changes, as long as the object lives.
void onScreenChange(QObject& context, const std::function<void()>& handler);

} // namespace tavro
