#pragma once

class QWidget;

namespace tavro {

/// A hairline across the parent.
QWidget* makeDivider(QWidget* parent);

} // namespace tavro
