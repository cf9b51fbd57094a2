#pragma once

#include <QStringView>
#include <QVariant>

namespace tavro {

/// A value as GLib's tools print it (GVariant text format): 'text', "it's", ['a', 'b'], @as [], true. A
/// QString, a QStringList or a bool; invalid for values of other types and for what is not whole.
QVariant parseGVariant(QStringView text);

} // namespace tavro
